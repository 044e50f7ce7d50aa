#include "update/default_update_package_service.h"

#include <utility>

#include "platform/fail.h"
#include "platform/or_else.h"
#include "platform/service_call.h"
#include "update/package_download.h"
#include "update/package_path.h"
#include "update/updater_launch.h"

namespace korvixsdk {
namespace {

constexpr char kFileSystem[] = "File system service";
constexpr char kCryptoProvider[] = "Crypto provider";

/// An exact comparison: an expected digest in uppercase never matches. None at all skips it.
bool DigestMatches(const PreparedUpdate& prepared) {
  return prepared.expected_sha256.empty() || prepared.expected_sha256 == prepared.actual_sha256;
}

}  // namespace

DefaultUpdatePackageService::DefaultUpdatePackageService(std::shared_ptr<ServiceRegistry> services)
    : services_(std::move(services)) {}

Result<PreparedUpdate> DefaultUpdatePackageService::Prepare(const UpdateInfo& info,
                                                            const std::string& cache_dir) {
  // Addresses and paths can be so long that memory does not suffice for their copies.
  const auto failed = [](const char*) {
    return Result<PreparedUpdate>{{}, DownloadOutOfMemoryError()};
  };
  return OrElse([&] { return DownloadAndVerify(info, cache_dir); }, failed);
}

Result<PreparedUpdate> DefaultUpdatePackageService::DownloadAndVerify(
    const UpdateInfo& info, const std::string& cache_dir) const {
  if (info.download_url.empty()) {
    return Fail(kInvalidArgument, "UpdateInfo.download_url must not be empty");
  }
  if (!services_ || !services_->file_system || !services_->crypto) {
    return Fail(kInvalidState, "Update package service dependencies are not configured");
  }
  // The folder comes before the download, so that a cache that cannot be written costs no transfer.
  const std::string directory = PackageDirectory(cache_dir);
  Error created = CallService(kFileSystem,
                              [&] { return services_->file_system->CreateDirectories(directory); });
  if (!created.ok()) return {{}, std::move(created)};
  Result<std::string> package = DownloadPackage(info.download_url);
  if (!package.ok()) return {{}, std::move(package.error)};

  PreparedUpdate prepared;
  prepared.download_url = info.download_url;
  prepared.expected_sha256 = info.sha256;
  prepared.package_path = PackagePath(cache_dir, info.download_url);
  Error written = CallService(kFileSystem, [&] {
    return services_->file_system->WriteFile(prepared.package_path, package.value);
  });
  if (!written.ok()) return {{}, std::move(written)};
  // Of the bytes that came, not of the file: reading it again would take its time once more.
  Result<std::string> digest =
      CallService(kCryptoProvider, [&] { return services_->crypto->Sha256Hex(package.value); });
  if (!digest.ok()) return {{}, std::move(digest.error)};
  prepared.actual_sha256 = std::move(digest.value);

  // The only failure with a value: whoever looks into it wants both digests, and the file.
  if (!DigestMatches(prepared)) {
    prepared.message = "Downloaded update package sha256 mismatch";
    Error mismatch{kHashMismatch, prepared.message};
    return {std::move(prepared), std::move(mismatch)};
  }
  prepared.ready = true;
  prepared.sha256_verified = true;
  return {std::move(prepared), Error{}};
}

Error DefaultUpdatePackageService::Launch(const PreparedUpdate& prepared,
                                          const std::string& updater_path) {
  return LaunchUpdater(prepared, updater_path, services_ ? services_->file_system.get() : nullptr);
}

}  // namespace korvixsdk
