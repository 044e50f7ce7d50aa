#include <gtest/gtest.h>

#include "core/default_update_policy.h"
#include "support/record_equality.h"
#include "unit/core/client_service_bench.h"

namespace korvixsdk::test {
namespace {

using Questions = std::vector<std::pair<std::string, std::string>>;

/// Checks for an update against an answer of the service, with the default policy. The host is 1.5.
UpdateInfo Decided(const UpdateInfo& received) {
  ClientServiceBench bench;
  bench.services->update_policy = std::make_shared<DefaultUpdatePolicy>();
  bench.network->check_answer.value = received;
  bench.Init();
  const Result<UpdateInfo> result = bench.service.CheckForUpdate();
  EXPECT_EQ(result.error, Error{});
  return result.value;
}

UpdateInfo Offer(const std::string& latest_version, const std::string& min_supported_version = "") {
  UpdateInfo info;
  info.latest_version = latest_version;
  info.min_supported_version = min_supported_version;
  return info;
}

TEST(DefaultClientServiceCheckForUpdate, SendsProductVersionAndDevice) {
  ClientServiceBench bench;
  bench.Init();
  EXPECT_TRUE(bench.service.CheckForUpdate().ok());
  ASSERT_EQ(bench.network->checks.size(), 1u);
  EXPECT_EQ(bench.network->checks[0], (UpdateCheckRequest{"editor", "1.5", "device-1"}));
}

TEST(DefaultClientServiceCheckForUpdate, LogsRequestResponseAndANewerVersion) {
  ClientServiceBench bench;
  bench.policy->answer = true;
  bench.network->check_answer.value = {false, true,  "2.0",         "1.0",   "today",
                                       "new", "url", "digest text", "a word"};
  bench.Init();
  EXPECT_TRUE(bench.service.CheckForUpdate().ok());
  EXPECT_EQ(bench.logger->lines,
            (Lines{"info CheckForUpdate request started product_id=editor, version=1.5, "
                   "device_id_present=true",
                   "info CheckForUpdate response latest_version=2.0, min_supported_version=1.0, "
                   "force_update=true, download_url_present=true, last_error_present=true",
                   "info CheckForUpdate detected a newer version: 2.0"}));
}

TEST(DefaultClientServiceCheckForUpdate, LogsRequestResponseAndNoNewerVersion) {
  ClientServiceBench bench;
  bench.Init();
  EXPECT_TRUE(bench.service.CheckForUpdate().ok());
  EXPECT_EQ(bench.logger->lines,
            (Lines{"info CheckForUpdate request started product_id=editor, version=1.5, "
                   "device_id_present=true",
                   "info CheckForUpdate response latest_version=, min_supported_version=, "
                   "force_update=false, download_url_present=false, last_error_present=false",
                   "info CheckForUpdate found no newer version"}));
}

// The response line shows what came, the last line what was made of it.
TEST(DefaultClientServiceCheckForUpdate, LogsTheAnswerAsReceivedBeforeTheDecision) {
  ClientServiceBench bench;
  bench.policy->answer = true;
  bench.network->check_answer.value = Offer("", "2.0");
  bench.Init();
  EXPECT_TRUE(bench.service.CheckForUpdate().value.force_update);
  ASSERT_EQ(bench.logger->lines.size(), 3u);
  EXPECT_EQ(bench.logger->lines[1],
            "info CheckForUpdate response latest_version=, min_supported_version=2.0, "
            "force_update=false, download_url_present=false, last_error_present=false");
  EXPECT_EQ(bench.logger->lines[2], "info CheckForUpdate detected a newer version: 2.0");
}

TEST(DefaultClientServiceCheckForUpdate, SucceedsWithATextWithoutANetworkClient) {
  ClientServiceBench bench;
  bench.Init();
  bench.services->network_client.reset();
  const Result<UpdateInfo> result = bench.service.CheckForUpdate();
  UpdateInfo expected;
  expected.message = "Network client is not configured";
  EXPECT_EQ(result.error, Error{});
  EXPECT_EQ(result.value, expected);
  EXPECT_EQ(bench.service.GetLastError(), "Network client is not configured");
  EXPECT_EQ(bench.logger->lines, (Lines{"warning Network client is not configured"}));
}

TEST(DefaultClientServiceCheckForUpdate, AsksNoProviderWithoutANetworkClient) {
  ClientServiceBench bench;
  bench.Init();
  bench.services->network_client.reset();
  EXPECT_TRUE(bench.service.CheckForUpdate().ok());
  EXPECT_EQ(bench.device_id->calls, 0);
}

TEST(DefaultClientServiceCheckForUpdate, GoesOnWithAnEmptyIdentifierWhenTheProviderFails) {
  ClientServiceBench bench;
  bench.Init();
  bench.device_id->answer = {"half an identifier", Error{kPlatformError, "no sources"}};
  EXPECT_EQ(bench.service.CheckForUpdate().error, Error{});
  ASSERT_EQ(bench.network->checks.size(), 1u);
  EXPECT_EQ(bench.network->checks[0], (UpdateCheckRequest{"editor", "1.5", ""}));
  EXPECT_EQ(bench.service.GetLastError(), "");
  ASSERT_EQ(bench.logger->lines.size(), 3u);
  EXPECT_EQ(bench.logger->lines[0],
            "info CheckForUpdate request started product_id=editor, version=1.5, "
            "device_id_present=false");
}

TEST(DefaultClientServiceCheckForUpdate, GoesOnWithoutAProvider) {
  ClientServiceBench bench;
  bench.Init();
  bench.services->device_id_provider.reset();
  EXPECT_EQ(bench.service.CheckForUpdate().error, Error{});
  ASSERT_EQ(bench.network->checks.size(), 1u);
  EXPECT_EQ(bench.network->checks[0].device_id, "");
}

TEST(DefaultClientServiceCheckForUpdate, PassesTheClientsErrorWithAnEmptyValue) {
  ClientServiceBench bench;
  bench.Init();
  bench.network->check_answer = {Offer("9.0", "8.0"), Error{4711, "down"}};
  const Result<UpdateInfo> result = bench.service.CheckForUpdate();
  EXPECT_EQ(result.error, (Error{4711, "down"}));
  EXPECT_EQ(result.value, UpdateInfo{});
  EXPECT_EQ(bench.service.GetLastError(), "down");
  EXPECT_EQ(bench.logger->lines,
            (Lines{"info CheckForUpdate request started product_id=editor, version=1.5, "
                   "device_id_present=true",
                   "warning CheckForUpdate failed: down"}));
  EXPECT_TRUE(bench.policy->asked.empty());
}

TEST(DefaultClientServiceCheckForUpdate, KeepsTheServicesMessageAsLastError) {
  ClientServiceBench bench;
  bench.network->check_answer.value.message = "rejected";
  bench.Init();
  const Result<UpdateInfo> result = bench.service.CheckForUpdate();
  EXPECT_EQ(result.error, Error{});
  EXPECT_EQ(result.value.message, "rejected");
  EXPECT_EQ(bench.service.GetLastError(), "rejected");
}

TEST(DefaultClientServiceCheckForUpdate, KeepsTheServicesMessageAsLastErrorBesideAnUpdateToo) {
  ClientServiceBench bench;
  bench.policy->answer = true;
  bench.network->check_answer.value = Offer("2.0");
  bench.network->check_answer.value.message = "rejected";
  bench.Init();
  EXPECT_TRUE(bench.service.CheckForUpdate().value.has_update);
  EXPECT_EQ(bench.service.GetLastError(), "rejected");
}

TEST(DefaultClientServiceCheckForUpdate, ClearsTheLastErrorWhenTheServiceSentNoMessage) {
  ClientServiceBench bench;
  bench.Init();
  bench.FailGetDeviceId("earlier");
  EXPECT_TRUE(bench.service.CheckForUpdate().ok());
  EXPECT_EQ(bench.service.GetLastError(), "");
}

TEST(DefaultClientServiceCheckForUpdate, DropsAnErrorMessageBesideASuccess) {
  ClientServiceBench bench;
  bench.network->check_answer.error = Error{kOk, "after a redirect"};
  bench.Init();
  EXPECT_EQ(bench.service.CheckForUpdate().error, Error{});
  EXPECT_EQ(bench.service.GetLastError(), "");
}

TEST(DefaultClientServiceCheckForUpdate, WorksWithoutALogger) {
  ClientServiceBench bench;
  bench.Init();
  bench.services->logger.reset();
  EXPECT_TRUE(bench.service.CheckForUpdate().ok());
  EXPECT_EQ(bench.network->checks.size(), 1u);
}

TEST(DefaultClientServiceDecision, AsksThePolicyForTheLatestAndTheMinimumVersion) {
  ClientServiceBench bench;
  bench.network->check_answer.value = Offer("2.0", "1.0");
  bench.Init();
  EXPECT_TRUE(bench.service.CheckForUpdate().ok());
  EXPECT_EQ(bench.policy->asked, (Questions{{"1.5", "2.0"}, {"1.5", "1.0"}}));
}

TEST(DefaultClientServiceDecision, AsksThePolicyNothingAboutEmptyVersions) {
  ClientServiceBench bench;
  bench.policy->answer = true;
  bench.Init();
  EXPECT_FALSE(bench.service.CheckForUpdate().value.has_update);
  EXPECT_TRUE(bench.policy->asked.empty());
}

TEST(DefaultClientServiceDecision, OffersANewerVersionWithoutForce) {
  const UpdateInfo decided = Decided(Offer("1.6", "1.0"));
  EXPECT_TRUE(decided.has_update);
  EXPECT_FALSE(decided.force_update);
  EXPECT_EQ(decided.latest_version, "1.6");
}

TEST(DefaultClientServiceDecision, ReplacesTheServicesOfferOfTheRunningVersion) {
  UpdateInfo received = Offer("1.5");
  received.has_update = true;
  EXPECT_FALSE(Decided(received).has_update);
}

TEST(DefaultClientServiceDecision, ReplacesTheServicesDenialOfANewerVersion) {
  UpdateInfo received = Offer("1.6");
  received.has_update = false;
  EXPECT_TRUE(Decided(received).has_update);
}

TEST(DefaultClientServiceDecision, OffersNoOlderVersion) {
  EXPECT_FALSE(Decided(Offer("1.4.9")).has_update);
}

TEST(DefaultClientServiceDecision, KeepsTheServicesForceWithoutAnUpdate) {
  UpdateInfo received = Offer("1.5");
  received.force_update = true;
  const UpdateInfo decided = Decided(received);
  EXPECT_FALSE(decided.has_update);
  EXPECT_TRUE(decided.force_update);
}

TEST(DefaultClientServiceDecision, ForcesTheMinimumVersionWhenNoLatestIsGiven) {
  const UpdateInfo decided = Decided(Offer("", "2.0"));
  EXPECT_TRUE(decided.has_update);
  EXPECT_TRUE(decided.force_update);
  EXPECT_EQ(decided.latest_version, "2.0");
  EXPECT_EQ(decided.min_supported_version, "2.0");
}

TEST(DefaultClientServiceDecision, KeepsTheLatestVersionBelowTheMinimum) {
  const UpdateInfo decided = Decided(Offer("3.0", "2.0"));
  EXPECT_TRUE(decided.has_update);
  EXPECT_TRUE(decided.force_update);
  EXPECT_EQ(decided.latest_version, "3.0");
}

TEST(DefaultClientServiceDecision, ForcesBelowTheMinimumEvenWhenTheLatestIsNotNewer) {
  const UpdateInfo decided = Decided(Offer("1.5", "2.0"));
  EXPECT_TRUE(decided.has_update);
  EXPECT_TRUE(decided.force_update);
  EXPECT_EQ(decided.latest_version, "1.5");
}

TEST(DefaultClientServiceDecision, ForcesNothingAtTheMinimum) {
  const UpdateInfo decided = Decided(Offer("", "1.5"));
  EXPECT_FALSE(decided.has_update);
  EXPECT_FALSE(decided.force_update);
  EXPECT_EQ(decided.latest_version, "");
}

TEST(DefaultClientServiceDecision, SeesNoUpdateInAnInvalidVersion) {
  EXPECT_FALSE(Decided(Offer("2.0-beta")).has_update);
  EXPECT_FALSE(Decided(Offer("", "2.0-beta")).force_update);
  EXPECT_FALSE(Decided(Offer("99999999999")).has_update);
}

TEST(DefaultClientServiceDecision, LeavesEveryOtherFieldAsReceived) {
  UpdateInfo received{true, true, "1.6", "1.0", "today", "new", "url", "digest", "message"};
  EXPECT_EQ(Decided(received), received);
}

TEST(DefaultClientServiceDecision, TakesAnyOtherVersionAsNewerWithoutAPolicy) {
  ClientServiceBench bench;
  bench.services->update_policy.reset();
  bench.network->check_answer.value = Offer("1.0");
  bench.Init();
  EXPECT_TRUE(bench.service.CheckForUpdate().value.has_update);
}

TEST(DefaultClientServiceDecision, ComparesByteForByteWithoutAPolicy) {
  ClientServiceBench bench;
  bench.services->update_policy.reset();
  bench.network->check_answer.value = Offer("1.5");
  bench.network->check_answer.value.has_update = true;
  bench.Init();
  EXPECT_FALSE(bench.service.CheckForUpdate().value.has_update);
  bench.network->check_answer.value = Offer("1.5.0");
  EXPECT_TRUE(bench.service.CheckForUpdate().value.has_update);
}

TEST(DefaultClientServiceDecision, IgnoresTheMinimumWithoutAPolicy) {
  ClientServiceBench bench;
  bench.services->update_policy.reset();
  bench.network->check_answer.value = Offer("", "2.0");
  bench.Init();
  const UpdateInfo decided = bench.service.CheckForUpdate().value;
  EXPECT_FALSE(decided.has_update);
  EXPECT_FALSE(decided.force_update);
  EXPECT_EQ(decided.latest_version, "");
}

}  // namespace
}  // namespace korvixsdk::test
