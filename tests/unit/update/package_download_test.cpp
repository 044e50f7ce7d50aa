#include "update/package_download.h"

#include <curl/curl.h>
#include <gtest/gtest.h>

#include <chrono>
#include <string>
#include <vector>

#include "support/scripted_server.h"

namespace korvixsdk {
namespace {

using std::chrono::milliseconds;
using test::Script;
using test::ScriptedServer;

std::string TransferError(CURLcode code) {
  return std::string("Update download failed: ") + curl_easy_strerror(code);
}

void ExpectFailure(const Result<std::string>& package, const std::string& message) {
  EXPECT_EQ(package.error.code, kNetworkError);
  EXPECT_EQ(package.error.message, message);
  EXPECT_EQ(package.value, "");
}

TEST(PackageDownload, MockOfflineIsPrefix) {
  ExpectFailure(DownloadPackage("mock://offline"), "Mock update download is offline");
  ExpectFailure(DownloadPackage("mock://offline/and-more"), "Mock update download is offline");
}

TEST(PackageDownload, MockAlternateIsExactName) {
  EXPECT_EQ(DownloadPackage("mock://package-alt").value, "alternate mock update payload");
  EXPECT_EQ(DownloadPackage("mock://package-alt2").value, "mock update package payload");
}

TEST(PackageDownload, EveryOtherMockAddressServesThePayload) {
  for (const char* const url : {"mock://package-ok", "mock://", "mock://x/offline"}) {
    EXPECT_EQ(DownloadPackage(url).value, "mock update package payload");
  }
}

TEST(PackageDownload, MockSchemeIsCaseSensitive) {
  ExpectFailure(DownloadPackage("MOCK://package-ok"), TransferError(CURLE_UNSUPPORTED_PROTOCOL));
}

TEST(PackageDownload, AddressWithZeroByteIsMalformed) {
  ScriptedServer server(Script::Response(200, "not asked for"));
  ExpectFailure(DownloadPackage(server.address() + std::string("/a\0b", 4)),
                TransferError(CURLE_URL_MALFORMAT));
  EXPECT_TRUE(server.requests().empty());
}

TEST(PackageDownload, ReturnsBytesAsTheyCame) {
  std::string bytes;
  for (int i = 0; i < 200000; ++i) bytes += static_cast<char>(i * 31 + i / 253);
  ScriptedServer server(Script::Response(200, bytes));
  EXPECT_EQ(DownloadPackage(server.address() + "/package").value, bytes);
  EXPECT_EQ(test::RequestLine(server.requests().at(0)), "GET /package HTTP/1.1");
}

TEST(PackageDownload, MakesRoomForAnnouncedLengthOnce) {
  const std::string bytes(300001, 'p');
  ScriptedServer server(Script::Response(200, bytes));
  const Result<std::string> package = DownloadPackage(server.address() + "/package");
  EXPECT_EQ(package.value.size(), bytes.size());
  EXPECT_EQ(package.value.capacity(), bytes.size());
}

TEST(PackageDownload, DoesNotMakeRoomForLengthOfPageThatRedirects) {
  ScriptedServer target(Script::Response(200, "the package"));
  ScriptedServer server(Script().Send(
      "HTTP/1.1 302 Found\r\nContent-Length: 100000\r\nLocation: " + target.address() +
      "/new\r\n\r\n" + std::string(100000, 'r')));
  const Result<std::string> package = DownloadPackage(server.address() + "/old");
  EXPECT_EQ(package.value, "the package");
  EXPECT_LT(package.value.capacity(), 100000u);
}

TEST(PackageDownload, ReturnsBytesWithoutAnnouncedLength) {
  const std::string bytes(100000, 'p');
  ScriptedServer server(Script().Send("HTTP/1.0 200 OK\r\n\r\n" + bytes));
  EXPECT_EQ(DownloadPackage(server.address() + "/package").value, bytes);
}

TEST(PackageDownload, FollowsRedirect) {
  ScriptedServer target(Script::Response(200, "moved"));
  ScriptedServer server(Script::Redirect(target.address() + "/new"));
  EXPECT_EQ(DownloadPackage(server.address() + "/old").value, "moved");
}

TEST(PackageDownload, ReportsStatusOutside200To299) {
  for (const int status : {300, 304, 404, 500}) {
    ScriptedServer server(Script::Response(status, status == 304 ? "" : "a page"));
    ExpectFailure(DownloadPackage(server.address()),
                  "Update download returned HTTP status " + std::to_string(status));
  }
}

TEST(PackageDownload, ReportsBodyCutShort) {
  ScriptedServer server(Script().Send("HTTP/1.1 200 OK\r\nContent-Length: 100\r\n\r\nonly this"));
  ExpectFailure(DownloadPackage(server.address()), TransferError(CURLE_PARTIAL_FILE));
}

TEST(PackageDownload, ReportsReset) {
  ScriptedServer server(
      Script().Send("HTTP/1.1 200 OK\r\nContent-Length: 100\r\n\r\nonly").Reset());
  const Result<std::string> package = DownloadPackage(server.address());
  EXPECT_EQ(package.error.code, kNetworkError);
  EXPECT_EQ(package.error.message.rfind("Update download failed: ", 0), 0u);
  EXPECT_EQ(package.value, "");
}

TEST(PackageDownload, ReportsRefusedConnection) {
  const std::string address = "http://127.0.0.1:" + std::to_string(test::UnusedPort());
  ExpectFailure(DownloadPackage(address), TransferError(CURLE_COULDNT_CONNECT));
}

TEST(PackageDownload, DoesNotReserveLengthThatNoMachineHas) {
  ScriptedServer server(
      Script().Send("HTTP/1.1 200 OK\r\nContent-Length: 9000000000000000000\r\n\r\nshort"));
  ExpectFailure(DownloadPackage(server.address()), TransferError(CURLE_PARTIAL_FILE));
}

TEST(SlowPackageDownload, EndsAfterThirtySeconds) {
  ScriptedServer server(Script()
                            .Send("HTTP/1.1 200 OK\r\nContent-Length: 100\r\n\r\nbegun")
                            .Pause(milliseconds(90000)));
  const auto start = std::chrono::steady_clock::now();
  ExpectFailure(DownloadPackage(server.address()), TransferError(CURLE_OPERATION_TIMEDOUT));
  const auto taken = std::chrono::steady_clock::now() - start;
  EXPECT_GE(taken, milliseconds(28000));
  EXPECT_LE(taken, milliseconds(50000));
}

}  // namespace
}  // namespace korvixsdk
