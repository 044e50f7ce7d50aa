#include <gtest/gtest.h>

#include "core/default_services.h"
#include "support/host_config.h"
#include "support/mock_package.h"
#include "support/record_equality.h"
#include "unit/core/client_service_bench.h"

namespace korvixsdk::test {
namespace {

UpdateInfo Package(const std::string& download_url, const std::string& sha256 = "") {
  UpdateInfo info;
  info.download_url = download_url;
  info.sha256 = sha256;
  return info;
}

/// The core service of a registry of defaults, but for the logger.
struct DefaultBench {
  DefaultBench() {
    services->logger = logger;
    FillDefaultServices(services.get());
    EXPECT_EQ(services->client_service->Init(LeastConfig(folder.Entry("cache"))), Error{});
    logger->lines.clear();
  }

  std::string PackagePath(const std::string& name) const {
    return (folder.path() / "cache" / "updates" / name).string();
  }

  TempFolder folder;
  std::shared_ptr<RecordingLogger> logger = std::make_shared<RecordingLogger>();
  RegistryOwner services{std::make_shared<ServiceRegistry>()};
};

TEST(DefaultClientServicePrepareUpdate, HandsOfferAndCacheDirectoryToThePackageService) {
  ClientServiceBench bench;
  bench.Init();
  EXPECT_TRUE(bench.service.PrepareUpdate(Package("https://host/package")).ok());
  ASSERT_EQ(bench.packages->prepares.size(), 1u);
  EXPECT_EQ(bench.packages->prepares[0], (Lines{"https://host/package", bench.Config().cache_dir}));
}

TEST(DefaultClientServicePrepareUpdate, PassesThePackageAndLogsItsPath) {
  ClientServiceBench bench;
  bench.Init();
  bench.packages->prepare_answer.value = {true, true, "url", "e", "a", "the/path", "", ""};
  const Result<PreparedUpdate> result = bench.service.PrepareUpdate(UpdateInfo{});
  EXPECT_EQ(result.error, Error{});
  EXPECT_EQ(result.value, bench.packages->prepare_answer.value);
  EXPECT_EQ(bench.logger->lines, (Lines{"info PrepareUpdate succeeded: the/path"}));
}

TEST(DefaultClientServicePrepareUpdate, PassesAFailureWithItsValueAndLogsAWarning) {
  ClientServiceBench bench;
  bench.Init();
  bench.packages->prepare_answer = {{false, false, "url", "e", "a", "the/path", "", "mismatch"},
                                    Error{kHashMismatch, "mismatch"}};
  const Result<PreparedUpdate> result = bench.service.PrepareUpdate(UpdateInfo{});
  EXPECT_EQ(result.error, (Error{kHashMismatch, "mismatch"}));
  EXPECT_EQ(result.value, bench.packages->prepare_answer.value);
  EXPECT_EQ(bench.service.GetLastError(), "mismatch");
  EXPECT_EQ(bench.logger->lines, (Lines{"warning PrepareUpdate failed: mismatch"}));
}

TEST(DefaultClientServicePrepareUpdate, ClearsTheLastErrorOnSuccess) {
  ClientServiceBench bench;
  bench.Init();
  bench.FailGetDeviceId("earlier");
  EXPECT_TRUE(bench.service.PrepareUpdate(UpdateInfo{}).ok());
  EXPECT_EQ(bench.service.GetLastError(), "");
}

TEST(DefaultClientServicePrepareUpdate, FailsWithoutAPackageServiceAndLeavesNoTrace) {
  ClientServiceBench bench;
  bench.Init();
  bench.FailGetDeviceId("earlier");
  bench.services->update_package_service.reset();
  const Result<PreparedUpdate> result = bench.service.PrepareUpdate(UpdateInfo{});
  EXPECT_EQ(result.error, (Error{kInvalidState, "Update package service is not configured"}));
  EXPECT_EQ(result.value, PreparedUpdate{});
  EXPECT_EQ(bench.service.GetLastError(), "earlier");
  EXPECT_TRUE(bench.logger->lines.empty());
}

TEST(DefaultClientServicePrepareUpdate, KeepsTheLastErrorWhenNotInitialised) {
  ClientServiceBench bench;
  EXPECT_FALSE(bench.service.PrepareUpdate(UpdateInfo{}).ok());
  EXPECT_EQ(bench.service.GetLastError(), "");
  EXPECT_TRUE(bench.logger->lines.empty());
}

TEST(DefaultClientServicePrepareUpdate, PreparesTheMockPackageInTheFolderUpdates) {
  DefaultBench bench;
  const Result<PreparedUpdate> result = bench.services->client_service->PrepareUpdate(
      Package("mock://package-ok", kMockPackageDigest));
  const std::string path = bench.PackagePath("package-ok");
  EXPECT_EQ(result.error, Error{});
  EXPECT_EQ(result.value, (PreparedUpdate{true, true, "mock://package-ok", kMockPackageDigest,
                                          kMockPackageDigest, path, "", ""}));
  EXPECT_EQ(bench.logger->lines, (Lines{"info PrepareUpdate succeeded: " + path}));
}

TEST(DefaultClientServicePrepareUpdate, ReturnsPathAndDigestsAfterAHashMismatch) {
  DefaultBench bench;
  const Result<PreparedUpdate> result = bench.services->client_service->PrepareUpdate(
      Package("mock://package-alt", kMockPackageDigest));
  const std::string text = "Downloaded update package sha256 mismatch";
  EXPECT_EQ(result.error, (Error{kHashMismatch, text}));
  EXPECT_FALSE(result.value.ready);
  EXPECT_FALSE(result.value.sha256_verified);
  EXPECT_EQ(result.value.download_url, "mock://package-alt");
  EXPECT_EQ(result.value.expected_sha256, kMockPackageDigest);
  EXPECT_EQ(result.value.actual_sha256.size(), 64u);
  EXPECT_NE(result.value.actual_sha256, kMockPackageDigest);
  EXPECT_EQ(result.value.package_path, bench.PackagePath("package-alt"));
  EXPECT_EQ(result.value.message, text);
  EXPECT_EQ(bench.logger->lines, (Lines{"warning PrepareUpdate failed: " + text}));
}

TEST(DefaultClientServiceLaunch, HandsPackageAndUpdaterToThePackageService) {
  ClientServiceBench bench;
  bench.Init();
  PreparedUpdate prepared;
  prepared.package_path = "the/path";
  EXPECT_EQ(bench.service.LaunchPreparedUpdate(prepared, "the/updater"), Error{});
  ASSERT_EQ(bench.packages->launches.size(), 1u);
  EXPECT_EQ(bench.packages->launches[0], (Lines{"the/path", "the/updater"}));
}

// All checks are the package service's.
TEST(DefaultClientServiceLaunch, ChecksNeitherPackageNorUpdater) {
  ClientServiceBench bench;
  bench.Init();
  EXPECT_EQ(bench.service.LaunchPreparedUpdate(PreparedUpdate{}, ""), Error{});
  EXPECT_EQ(bench.packages->launches.size(), 1u);
}

TEST(DefaultClientServiceLaunch, LogsTheSuccessAndClearsTheLastError) {
  ClientServiceBench bench;
  bench.Init();
  bench.FailGetDeviceId("earlier");
  EXPECT_EQ(bench.service.LaunchPreparedUpdate(PreparedUpdate{}, "updater"), Error{});
  EXPECT_EQ(bench.service.GetLastError(), "");
  EXPECT_EQ(bench.logger->lines, (Lines{"info LaunchPreparedUpdate succeeded"}));
}

TEST(DefaultClientServiceLaunch, DropsAMessageBesideASuccess) {
  ClientServiceBench bench;
  bench.Init();
  bench.packages->launch_answer = Error{kOk, "started"};
  EXPECT_EQ(bench.service.LaunchPreparedUpdate(PreparedUpdate{}, "updater"), Error{});
}

TEST(DefaultClientServiceLaunch, PassesAFailureAndLogsAWarning) {
  ClientServiceBench bench;
  bench.Init();
  bench.packages->launch_answer = Error{4711, "no updater"};
  EXPECT_EQ(bench.service.LaunchPreparedUpdate(PreparedUpdate{}, "updater"),
            (Error{4711, "no updater"}));
  EXPECT_EQ(bench.service.GetLastError(), "no updater");
  EXPECT_EQ(bench.logger->lines, (Lines{"warning LaunchPreparedUpdate failed: no updater"}));
}

TEST(DefaultClientServiceLaunch, FailsWithoutAPackageServiceAndLeavesNoTrace) {
  ClientServiceBench bench;
  bench.Init();
  bench.FailGetDeviceId("earlier");
  bench.services->update_package_service.reset();
  EXPECT_EQ(bench.service.LaunchPreparedUpdate(PreparedUpdate{}, "updater"),
            (Error{kInvalidState, "Update package service is not configured"}));
  EXPECT_EQ(bench.service.GetLastError(), "earlier");
  EXPECT_TRUE(bench.logger->lines.empty());
}

TEST(DefaultClientServiceLaunch, LeavesItsMessageUntilAPreparationSucceeds) {
  DefaultBench bench;
  IClientService& service = *bench.services->client_service;
  const Result<PreparedUpdate> prepared = service.PrepareUpdate(Package("mock://package-ok"));
  ASSERT_EQ(prepared.error, Error{});
  bench.logger->lines.clear();
  EXPECT_EQ(service.LaunchPreparedUpdate(prepared.value, bench.folder.Entry("no-updater")).code,
            kNotFound);
  EXPECT_EQ(service.GetLastError(), "Updater executable was not found");
  EXPECT_EQ(bench.logger->lines,
            (Lines{"warning LaunchPreparedUpdate failed: Updater executable was not found"}));
  EXPECT_TRUE(service.PrepareUpdate(Package("mock://package-ok")).ok());
  EXPECT_EQ(service.GetLastError(), "");
}

TEST(DefaultClientServicePackages, WorkWithoutALogger) {
  ClientServiceBench bench;
  bench.Init();
  bench.services->logger.reset();
  EXPECT_EQ(bench.service.PrepareUpdate(UpdateInfo{}).error, Error{});
  bench.packages->launch_answer = Error{kNotFound, "no updater"};
  EXPECT_FALSE(bench.service.LaunchPreparedUpdate(PreparedUpdate{}, "updater").ok());
  EXPECT_EQ(bench.service.GetLastError(), "no updater");
}

}  // namespace
}  // namespace korvixsdk::test
