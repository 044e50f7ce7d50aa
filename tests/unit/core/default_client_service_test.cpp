#include <gtest/gtest.h>

#include "network/default_network_client.h"
#include "support/record_equality.h"
#include "unit/core/client_service_bench.h"

namespace korvixsdk::test {
namespace {

const Error kNotInitialized{kInvalidState, "KorvixSDK is not initialized"};

TEST(DefaultClientService, CallsNoServiceDuringConstruction) {
  const ClientServiceBench bench;
  EXPECT_EQ(bench.device_id->calls, 0);
  EXPECT_TRUE(bench.logger->lines.empty());
}

TEST(DefaultClientService, HasNoLastErrorAtFirst) {
  const ClientServiceBench bench;
  EXPECT_EQ(bench.service.GetLastError(), "");
}

TEST(DefaultClientService, HoldsItsRegistryStrongly) {
  auto services = std::make_shared<ServiceRegistry>();
  const std::weak_ptr<ServiceRegistry> registry = services;
  const DefaultClientService service(std::move(services));
  EXPECT_FALSE(registry.expired());
}

TEST(DefaultClientService, FailsEveryOperationBeforeInit) {
  ClientServiceBench bench;
  EXPECT_EQ(bench.service.GetDeviceId().error, kNotInitialized);
  EXPECT_EQ(bench.service.ReportInstall().error, kNotInitialized);
  EXPECT_EQ(bench.service.CheckForUpdate().error, kNotInitialized);
  EXPECT_EQ(bench.service.PrepareUpdate(UpdateInfo{}).error, kNotInitialized);
  EXPECT_EQ(bench.service.LaunchPreparedUpdate(PreparedUpdate{}, "updater"), kNotInitialized);
}

TEST(DefaultClientService, GivesDefaultValuesBeforeInit) {
  ClientServiceBench bench;
  EXPECT_EQ(bench.service.GetDeviceId().value, "");
  EXPECT_EQ(bench.service.ReportInstall().value, ServerResult{});
  EXPECT_EQ(bench.service.CheckForUpdate().value, UpdateInfo{});
  EXPECT_EQ(bench.service.PrepareUpdate(UpdateInfo{}).value, PreparedUpdate{});
}

TEST(DefaultClientService, CallsNoServiceAndLeavesNoTraceBeforeInit) {
  ClientServiceBench bench;
  EXPECT_FALSE(bench.service.GetDeviceId().ok());
  EXPECT_FALSE(bench.service.ReportInstall().ok());
  EXPECT_FALSE(bench.service.CheckForUpdate().ok());
  EXPECT_FALSE(bench.service.PrepareUpdate(UpdateInfo{}).ok());
  EXPECT_FALSE(bench.service.LaunchPreparedUpdate(PreparedUpdate{}, "updater").ok());
  EXPECT_EQ(bench.service.GetLastError(), "");
  EXPECT_TRUE(bench.logger->lines.empty());
  EXPECT_EQ(bench.device_id->calls, 0);
  EXPECT_TRUE(bench.network->installs.empty());
  EXPECT_TRUE(bench.network->checks.empty());
  EXPECT_TRUE(bench.packages->prepares.empty());
  EXPECT_TRUE(bench.packages->launches.empty());
}

// The missing initialisation is told before a missing service.
TEST(DefaultClientService, TellsTheMissingInitBeforeAMissingService) {
  DefaultClientService service(nullptr);
  EXPECT_EQ(service.GetDeviceId().error, kNotInitialized);
  EXPECT_EQ(service.ReportInstall().error, kNotInitialized);
  EXPECT_EQ(service.CheckForUpdate().error, kNotInitialized);
  EXPECT_EQ(service.PrepareUpdate(UpdateInfo{}).error, kNotInitialized);
  EXPECT_EQ(service.LaunchPreparedUpdate(PreparedUpdate{}, "updater"), kNotInitialized);
}

TEST(DefaultClientServiceGetDeviceId, GivesTheProvidersIdentifierAndLogsTheSuccess) {
  ClientServiceBench bench;
  bench.Init();
  const Result<std::string> result = bench.service.GetDeviceId();
  EXPECT_EQ(result.error, Error{});
  EXPECT_EQ(result.value, "device-1");
  EXPECT_EQ(bench.logger->lines, (Lines{"info GetDeviceId succeeded"}));
}

TEST(DefaultClientServiceGetDeviceId, AsksTheProviderAtEveryCall) {
  ClientServiceBench bench;
  bench.Init();
  EXPECT_TRUE(bench.service.GetDeviceId().ok());
  bench.device_id->answer.value = "device-2";
  EXPECT_EQ(bench.service.GetDeviceId().value, "device-2");
  EXPECT_EQ(bench.device_id->calls, 2);
}

TEST(DefaultClientServiceGetDeviceId, PassesTheProvidersErrorAndLogsAWarning) {
  ClientServiceBench bench;
  bench.Init();
  bench.device_id->answer = {"half an identifier", Error{4711, "no sources"}};
  const Result<std::string> result = bench.service.GetDeviceId();
  EXPECT_EQ(result.error, (Error{4711, "no sources"}));
  EXPECT_EQ(result.value, "");
  EXPECT_EQ(bench.logger->lines, (Lines{"warning GetDeviceId failed: no sources"}));
}

TEST(DefaultClientServiceGetDeviceId, FailsWithoutAProvider) {
  ClientServiceBench bench;
  bench.Init();
  bench.services->device_id_provider.reset();
  const Result<std::string> result = bench.service.GetDeviceId();
  EXPECT_EQ(result.error, (Error{kInvalidState, "Device id provider is not configured"}));
  EXPECT_EQ(result.value, "");
  EXPECT_EQ(bench.logger->lines,
            (Lines{"warning GetDeviceId failed: Device id provider is not configured"}));
  EXPECT_EQ(bench.service.GetLastError(), "Device id provider is not configured");
}

TEST(DefaultClientServiceGetDeviceId, FailsWithAnEmptyIdentifierAsWithoutAProvider) {
  ClientServiceBench bench;
  bench.Init();
  bench.device_id->answer = {"", Error{}};
  EXPECT_EQ(bench.service.GetDeviceId().error,
            (Error{kInvalidState, "Device id provider is not configured"}));
  EXPECT_EQ(bench.logger->lines,
            (Lines{"warning GetDeviceId failed: Device id provider is not configured"}));
  EXPECT_EQ(bench.service.GetLastError(), "Device id provider is not configured");
}

TEST(DefaultClientServiceGetDeviceId, KeepsTheMessageWithoutThePrefixAsLastError) {
  ClientServiceBench bench;
  bench.Init();
  bench.device_id->answer = {{}, Error{kPlatformError, "no sources"}};
  EXPECT_FALSE(bench.service.GetDeviceId().ok());
  EXPECT_EQ(bench.service.GetLastError(), "no sources");
}

TEST(DefaultClientServiceGetDeviceId, ClearsTheLastErrorOnSuccess) {
  ClientServiceBench bench;
  bench.Init();
  bench.FailGetDeviceId("broken");
  EXPECT_TRUE(bench.service.GetDeviceId().ok());
  EXPECT_EQ(bench.service.GetLastError(), "");
}

TEST(DefaultClientServiceGetDeviceId, DropsAMessageBesideASuccess) {
  ClientServiceBench bench;
  bench.Init();
  bench.device_id->answer = {"device-1", Error{kOk, "from the file"}};
  EXPECT_EQ(bench.service.GetDeviceId().error, Error{});
  EXPECT_EQ(bench.service.GetLastError(), "");
}

TEST(DefaultClientServiceGetDeviceId, WorksWithoutALogger) {
  ClientServiceBench bench;
  bench.Init();
  bench.services->logger.reset();
  EXPECT_EQ(bench.service.GetDeviceId().value, "device-1");
  bench.device_id->answer = {{}, Error{kPlatformError, "no sources"}};
  EXPECT_FALSE(bench.service.GetDeviceId().ok());
  EXPECT_EQ(bench.service.GetLastError(), "no sources");
}

TEST(DefaultClientServiceReportInstall, SendsProductDeviceAndVersion) {
  ClientServiceBench bench;
  bench.Init();
  EXPECT_TRUE(bench.service.ReportInstall().ok());
  ASSERT_EQ(bench.network->installs.size(), 1u);
  EXPECT_EQ(bench.network->installs[0], (Lines{"editor", "device-1", "1.5"}));
}

TEST(DefaultClientServiceReportInstall, PassesTheClientsAnswerUnchanged) {
  ClientServiceBench bench;
  bench.Init();
  bench.network->install_answer.value = ServerResult{false, 202, "not today", true, 1234567890123};
  const Result<ServerResult> result = bench.service.ReportInstall();
  EXPECT_EQ(result.value, bench.network->install_answer.value);
  EXPECT_EQ(result.error, Error{});
}

TEST(DefaultClientServiceReportInstall, PassesTheClientsFailureUnchanged) {
  ClientServiceBench bench;
  bench.Init();
  bench.network->install_answer = {ServerResult{true, 1, "odd", true, 2}, Error{4711, "down"}};
  const Result<ServerResult> result = bench.service.ReportInstall();
  EXPECT_EQ(result.value, bench.network->install_answer.value);
  EXPECT_EQ(result.error, (Error{4711, "down"}));
}

TEST(DefaultClientServiceReportInstall, FailsWithoutANetworkClientBeforeTheProviderIsAsked) {
  ClientServiceBench bench;
  bench.Init();
  bench.services->network_client.reset();
  const Result<ServerResult> result = bench.service.ReportInstall();
  EXPECT_EQ(result.error, (Error{kInvalidState, "Network client is not configured"}));
  EXPECT_EQ(result.value, ServerResult{});
  EXPECT_EQ(bench.device_id->calls, 0);
}

TEST(DefaultClientServiceReportInstall, PassesTheProvidersErrorAndSendsNothing) {
  ClientServiceBench bench;
  bench.Init();
  bench.device_id->answer = {"half an identifier", Error{4711, "no sources"}};
  const Result<ServerResult> result = bench.service.ReportInstall();
  EXPECT_EQ(result.error, (Error{4711, "no sources"}));
  EXPECT_EQ(result.value, ServerResult{});
  EXPECT_TRUE(bench.network->installs.empty());
}

TEST(DefaultClientServiceReportInstall, FailsWithoutAProvider) {
  ClientServiceBench bench;
  bench.Init();
  bench.services->device_id_provider.reset();
  const Result<ServerResult> result = bench.service.ReportInstall();
  EXPECT_EQ(result.error, (Error{kInvalidState, "Device id provider is not configured"}));
  EXPECT_EQ(result.value, ServerResult{});
}

TEST(DefaultClientServiceReportInstall, FailsWithAnEmptyIdentifierAsWithoutAProvider) {
  ClientServiceBench bench;
  bench.Init();
  bench.device_id->answer = {"", Error{}};
  EXPECT_EQ(bench.service.ReportInstall().error,
            (Error{kInvalidState, "Device id provider is not configured"}));
  EXPECT_TRUE(bench.network->installs.empty());
}

TEST(DefaultClientServiceReportInstall, LogsNothingAndKeepsTheLastErrorWhateverTheOutcome) {
  ClientServiceBench bench;
  bench.Init();
  bench.FailGetDeviceId("earlier");
  EXPECT_TRUE(bench.service.ReportInstall().ok());
  bench.network->install_answer.error = Error{kNetworkError, "down"};
  EXPECT_FALSE(bench.service.ReportInstall().ok());
  bench.device_id->answer = {{}, Error{kPlatformError, "no sources"}};
  EXPECT_FALSE(bench.service.ReportInstall().ok());
  bench.services->device_id_provider.reset();
  EXPECT_FALSE(bench.service.ReportInstall().ok());
  bench.services->network_client.reset();
  EXPECT_FALSE(bench.service.ReportInstall().ok());
  EXPECT_EQ(bench.service.GetLastError(), "earlier");
  EXPECT_TRUE(bench.logger->lines.empty());
}

// The default network client reads the wall clock; the clock service is not asked.
TEST(DefaultClientServiceReportInstall, TakesNoServerTimeFromTheClockService) {
  ClientServiceBench bench;
  bench.time->now = 7;
  bench.services->network_client = std::make_shared<DefaultNetworkClient>();
  SDKConfig config = bench.Config();
  config.server_base_url = "mock://service";
  ASSERT_EQ(bench.service.Init(config), Error{});
  const Result<ServerResult> result = bench.service.ReportInstall();
  EXPECT_TRUE(result.value.success);
  EXPECT_NE(result.value.server_time, 7);
}

}  // namespace
}  // namespace korvixsdk::test
