#include "network/mock_server.h"

#include <gtest/gtest.h>

#include <chrono>
#include <string>

#include "network/default_network_client.h"
#include "platform/default_crypto_provider.h"
#include "platform/mock_addresses.h"
#include "support/record_equality.h"

namespace korvixsdk::test {
namespace {

std::int64_t NowSeconds() {
  return std::chrono::duration_cast<std::chrono::seconds>(
             std::chrono::system_clock::now().time_since_epoch())
      .count();
}

DefaultNetworkClient ClientOf(const std::string& server_base_url) {
  DefaultNetworkClient client;
  client.server_base_url = server_base_url;
  return client;
}

Result<ServerResult> Install(const std::string& server_base_url,
                             const std::string& product_id = "editor",
                             const std::string& device_id = "device",
                             const std::string& version = "1.5") {
  return ClientOf(server_base_url).ReportInstall(product_id, device_id, version);
}

Result<UpdateInfo> Check(const std::string& server_base_url,
                         const UpdateCheckRequest& request = {"editor", "1.5", "device"}) {
  return ClientOf(server_base_url).CheckForUpdate(request);
}

/// The answer's fields but for its time, which must be that of the call.
void ExpectInstallAnswer(const std::string& server_base_url, const std::string& product_id,
                         const std::string& device_id, const std::string& version,
                         ServerResult expected) {
  const std::int64_t before = NowSeconds();
  const Result<ServerResult> result = Install(server_base_url, product_id, device_id, version);
  EXPECT_GE(result.value.server_time, before);
  EXPECT_LE(result.value.server_time, NowSeconds());
  expected.server_time = result.value.server_time;
  EXPECT_EQ(result.error, Error{});
  EXPECT_EQ(result.value, expected);
}

UpdateInfo CannedOffer(const std::string& version) {
  return {true,
          false,
          "9.9.9",
          version,
          "2026-01-20 10:48:48",
          "Mock update payload",
          "https://downloads.example.com/mock-update.bin",
          "25967fb5be05c8fdc451e754115e0e99fe165398e585b480b59a5c69428b1e16",
          ""};
}

TEST(MockInstall, AcceptsACompleteReport) {
  ExpectInstallAnswer("mock://service", "editor", "device", "1.5", {true, 400, "Success", true, 0});
}

// The code says accepted even when a field is missing.
TEST(MockInstall, AnswersAMissingFieldWithTheAcceptingCode) {
  const ServerResult missing{false, 400, "Missing mock install fields", false, 0};
  ExpectInstallAnswer("mock://", "", "device", "1.5", missing);
  ExpectInstallAnswer("mock://", "editor", "", "1.5", missing);
  ExpectInstallAnswer("mock://", "editor", "device", "", missing);
  ExpectInstallAnswer("mock://", "", "", "", missing);
}

TEST(MockInstall, IsNormalWithAWordInCapitals) {
  ExpectInstallAnswer("mock://OFFLINE", "editor", "device", "1.5", {true, 400, "Success", true, 0});
}

TEST(MockInstall, Rejects) {
  ExpectInstallAnswer("mock://reject", "editor", "device", "1.5",
                      {false, 202, "Mock server rejected install tracking request", false, 0});
}

TEST(MockInstall, RejectsWithoutLookingAtTheFields) {
  ExpectInstallAnswer("mock://reject/invalid", "", "", "",
                      {false, 202, "Mock server rejected install tracking request", false, 0});
}

TEST(MockInstall, FailsOffline) {
  const Result<ServerResult> result = Install("mock://offline");
  EXPECT_EQ(result.error,
            (Error{kNetworkError, "Network request failed because the transport is unavailable"}));
  EXPECT_EQ(result.value, ServerResult{});
}

TEST(MockInstall, FailsWithAnInvalidAnswer) {
  const Result<ServerResult> result = Install("mock://invalid");
  EXPECT_EQ(result.error, (Error{kInvalidResponse, "Mock install response is invalid"}));
  EXPECT_EQ(result.value, ServerResult{});
}

TEST(MockInstall, FailsBeforeItLooksAtTheFields) {
  EXPECT_EQ(Install("mock://offline", "", "", "").error.code, kNetworkError);
  EXPECT_EQ(Install("mock://invalid", "", "", "").error.code, kInvalidResponse);
}

TEST(MockUpdateCheck, OffersTheCannedVersion) {
  const Result<UpdateInfo> result = Check("mock://service");
  EXPECT_EQ(result.error, Error{});
  EXPECT_EQ(result.value, CannedOffer("1.5"));
}

TEST(MockUpdateCheck, RepeatsTheRequestsVersionAsMinimum) {
  EXPECT_EQ(Check("mock://", {"editor", "not a version", "device"}).value,
            CannedOffer("not a version"));
}

TEST(MockUpdateCheck, GivesTheSameAnswerTwice) {
  EXPECT_EQ(Check("mock://service").value, Check("mock://service").value);
}

// Unlike the install report, it has no rejection.
TEST(MockUpdateCheck, OffersTheCannedVersionInRejectModeToo) {
  const Result<UpdateInfo> result = Check("mock://reject");
  EXPECT_EQ(result.error, Error{});
  EXPECT_EQ(result.value, CannedOffer("1.5"));
}

TEST(MockUpdateCheck, NeedsNoDevice) {
  EXPECT_EQ(Check("mock://", {"editor", "1.5", ""}).value, CannedOffer("1.5"));
}

TEST(MockUpdateCheck, FailsWithoutProductOrVersion) {
  const Error missing{kInvalidArgument, "Mock update request is missing required fields"};
  for (const UpdateCheckRequest& request :
       {UpdateCheckRequest{"", "1.5", "device"}, UpdateCheckRequest{"editor", "", "device"},
        UpdateCheckRequest{"", "", ""}}) {
    const Result<UpdateInfo> result = Check("mock://", request);
    EXPECT_EQ(result.error, missing);
    EXPECT_EQ(result.value, UpdateInfo{});
    EXPECT_EQ(Check("mock://reject", request).error, missing);
  }
}

TEST(MockUpdateCheck, FailsOffline) {
  const Result<UpdateInfo> result = Check("mock://offline");
  EXPECT_EQ(result.error,
            (Error{kNetworkError, "Network request failed because the transport is unavailable"}));
  EXPECT_EQ(result.value, UpdateInfo{});
}

TEST(MockUpdateCheck, FailsWithAnInvalidAnswer) {
  const Result<UpdateInfo> result = Check("mock://invalid");
  EXPECT_EQ(result.error, (Error{kInvalidResponse, "Mock update response is invalid"}));
  EXPECT_EQ(result.value, UpdateInfo{});
}

TEST(MockUpdateCheck, FailsBeforeItLooksAtTheFields) {
  EXPECT_EQ(Check("mock://offline", {}).error.code, kNetworkError);
  EXPECT_EQ(Check("mock://invalid", {}).error.code, kInvalidResponse);
}

TEST(MockUpdateCheck, OffersTheDigestOfTheMockPackage) {
  const std::string payload = "mock update package payload";
  EXPECT_EQ(payload.size(), 27u);
  EXPECT_EQ(DefaultCryptoProvider().Sha256Hex(payload).value, Check("mock://").value.sha256);
}

// A host that wants the whole flow offline puts a mock package address in its place.
TEST(MockUpdateCheck, OffersAnOrdinaryPackageAddress) {
  EXPECT_FALSE(IsMockUrl(Check("mock://").value.download_url));
}

}  // namespace
}  // namespace korvixsdk::test
