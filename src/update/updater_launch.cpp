#include "update/updater_launch.h"

#include "platform/detached_process.h"
#include "platform/fail.h"
#include "platform/mock_addresses.h"
#include "platform/service_call.h"

namespace korvixsdk {
namespace {

Result<bool> Exists(IFileSystemProvider& file_system, const std::string& path) {
  const auto exists = [&] { return Result<bool>{file_system.Exists(path), Error{}}; };
  return CallService("File system service", exists);
}

}  // namespace

Error LaunchUpdater(const PreparedUpdate& prepared, const std::string& updater_path,
                    IFileSystemProvider* file_system) {
  if (!prepared.ready || prepared.package_path.empty()) {
    return Fail(kInvalidArgument, "Prepared update is not ready");
  }
  if (updater_path.empty()) return Fail(kInvalidArgument, "updater_path must not be empty");
  // Mock paths come before the files are looked at: a mock launch needs no package on disk.
  if (IsMockLaunchOk(updater_path)) return Error{};
  if (IsMockLaunchFail(updater_path)) {
    return Fail(kInvalidState, "Mock updater launch failed");
  }
  // The package first: without one the updater's path does not matter.
  if (file_system == nullptr) return Fail(kInvalidState, "File system service is not configured");
  const Result<bool> has_package = Exists(*file_system, prepared.package_path);
  if (!has_package.ok()) return has_package.error;
  if (!has_package.value) {
    return Fail(kInvalidState, "Prepared update package does not exist");
  }
  const Result<bool> has_updater = Exists(*file_system, updater_path);
  if (!has_updater.ok()) return has_updater.error;
  if (!has_updater.value) return Fail(kNotFound, "Updater executable was not found");
  if (!StartDetachedProcess(updater_path, prepared.package_path)) {
    return Fail(kInvalidState, "Failed to launch updater process");
  }
  return Error{};
}

}  // namespace korvixsdk
