#include "update/updater_launch.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "support/fakes.h"
#include "update/default_update_package_service.h"

namespace korvixsdk {
namespace {

using test::FakeFileSystem;

PreparedUpdate Ready(const std::string& package_path) {
  PreparedUpdate prepared;
  prepared.ready = true;
  prepared.package_path = package_path;
  return prepared;
}

void ExpectError(const Error& error, std::int32_t code, const std::string& message) {
  EXPECT_EQ(error.code, code);
  EXPECT_EQ(error.message, message);
}

TEST(UpdaterLaunch, NeedsReadyPackageWithPath) {
  FakeFileSystem files;
  PreparedUpdate not_ready = Ready("package");
  not_ready.ready = false;
  ExpectError(LaunchUpdater(not_ready, "updater", &files), kInvalidArgument,
              "Prepared update is not ready");
  ExpectError(LaunchUpdater(Ready(""), "updater", &files), kInvalidArgument,
              "Prepared update is not ready");
}

TEST(UpdaterLaunch, NeedsReadyPackageForMockLaunchesToo) {
  PreparedUpdate not_ready = Ready("package");
  not_ready.ready = false;
  ExpectError(LaunchUpdater(not_ready, "mock://launch-ok", nullptr), kInvalidArgument,
              "Prepared update is not ready");
}

TEST(UpdaterLaunch, LooksAtPackageBeforeUpdaterPath) {
  ExpectError(LaunchUpdater(Ready(""), "", nullptr), kInvalidArgument,
              "Prepared update is not ready");
}

TEST(UpdaterLaunch, NeedsUpdaterPath) {
  ExpectError(LaunchUpdater(Ready("package"), "", nullptr), kInvalidArgument,
              "updater_path must not be empty");
}

TEST(UpdaterLaunch, MockLaunchSucceedsWithoutPackageOnDiskAndWithoutFileSystem) {
  EXPECT_TRUE(LaunchUpdater(Ready("missing"), "mock://launch-ok", nullptr).ok());
}

TEST(UpdaterLaunch, MockLaunchIsPrefix) {
  EXPECT_TRUE(LaunchUpdater(Ready("missing"), "mock://launch-ok/and/more", nullptr).ok());
  ExpectError(LaunchUpdater(Ready("missing"), "mock://launch-fail/and/more", nullptr),
              kInvalidState, "Mock updater launch failed");
}

TEST(UpdaterLaunch, MockFailureFails) {
  ExpectError(LaunchUpdater(Ready("missing"), "mock://launch-fail", nullptr), kInvalidState,
              "Mock updater launch failed");
}

TEST(UpdaterLaunch, OtherMockPathsAreOrdinaryPaths) {
  FakeFileSystem files;
  files.existing = {"package"};
  ExpectError(LaunchUpdater(Ready("package"), "mock://launch", &files), kNotFound,
              "Updater executable was not found");
}

TEST(UpdaterLaunch, NeedsFileSystem) {
  ExpectError(LaunchUpdater(Ready("package"), "updater", nullptr), kInvalidState,
              "File system service is not configured");
}

TEST(UpdaterLaunch, NeedsPackageOnDiskFirst) {
  FakeFileSystem files;
  ExpectError(LaunchUpdater(Ready("package"), "updater", &files), kInvalidState,
              "Prepared update package does not exist");
  EXPECT_EQ(files.calls, (std::vector<std::string>{"Exists package"}));
}

TEST(UpdaterLaunch, NeedsUpdaterOnDisk) {
  FakeFileSystem files;
  files.existing = {"package"};
  ExpectError(LaunchUpdater(Ready("package"), "updater", &files), kNotFound,
              "Updater executable was not found");
  EXPECT_EQ(files.calls, (std::vector<std::string>{"Exists package", "Exists updater"}));
}

TEST(UpdaterLaunch, ReportsProgramThatTheSystemDoesNotStart) {
  FakeFileSystem files;
  files.existing = {"package", "no-such-updater-anywhere"};
  ExpectError(LaunchUpdater(Ready("package"), "no-such-updater-anywhere", &files), kInvalidState,
              "Failed to launch updater process");
}

TEST(UpdaterLaunch, ServiceReachesFileSystemThroughItsRegistry) {
  auto services = std::make_shared<ServiceRegistry>();
  DefaultUpdatePackageService service(services);
  ExpectError(service.Launch(Ready("package"), "updater"), kInvalidState,
              "File system service is not configured");
  services->file_system = std::make_shared<FakeFileSystem>();
  ExpectError(service.Launch(Ready("package"), "updater"), kInvalidState,
              "Prepared update package does not exist");
  ExpectError(DefaultUpdatePackageService(nullptr).Launch(Ready("package"), "updater"),
              kInvalidState, "File system service is not configured");
}

}  // namespace
}  // namespace korvixsdk
