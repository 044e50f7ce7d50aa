#include "progress_package_service.h"

#include <cstdio>
#include <exception>
#include <utility>

namespace package_progress {
namespace {

using korvixsdk::Error;
using korvixsdk::PreparedUpdate;
using korvixsdk::Result;

/// What follows the address's last slash, up to a question mark. A name that could lead out of the
/// folder, or that says nothing, is not used.
std::string FileName(const std::string& url) {
  std::string name = url.substr(url.rfind('/') + 1);
  name = name.substr(0, name.find('?'));
  const bool usable = name.find_first_not_of('.') != std::string::npos &&
                      name.find_first_of("\\:") == std::string::npos;
  return usable ? name : "update_package.bin";
}

/// Narrow names, as the file system provider takes them.
Error Rename(const std::string& from, const std::string& to) {
  if (std::rename(from.c_str(), to.c_str()) == 0) return {};
  // Windows renames onto no existing file: the package of an earlier try.
  std::remove(to.c_str());
  if (std::rename(from.c_str(), to.c_str()) == 0) return {};
  return {korvixsdk::kFileSystemError, "Failed to write file: " + to};
}

}  // namespace

Result<PreparedUpdate> ProgressPackageService::Prepare(const korvixsdk::UpdateInfo& info,
                                                       const std::string& cache_dir) try {
  // The library's own addresses for tests, which libcurl does not know.
  if (info.download_url.rfind("mock://", 0) == 0) return default_service_->Prepare(info, cache_dir);
  if (info.download_url.empty()) {
    return {{}, {korvixsdk::kInvalidArgument, "UpdateInfo.download_url must not be empty"}};
  }
  const std::string folder = cache_dir + "/updates";
  if (Error error = file_system_->CreateDirectories(folder); !error.ok()) return {{}, error};

  PreparedUpdate prepared;
  prepared.download_url = info.download_url;
  prepared.expected_sha256 = info.sha256;
  const std::string path = folder + "/" + FileName(info.download_url);
  // An unfinished or unverified file never bears the package's name.
  const std::string unfinished = path + ".part";
  Error error = DownloadToFile(info.download_url, unfinished, progress_);
  if (!error.ok()) return {{}, error};
  error = Verify(unfinished, prepared);
  if (error.ok()) error = Rename(unfinished, path);
  if (!error.ok()) {
    std::remove(unfinished.c_str());
    if (error.code != korvixsdk::kHashMismatch) prepared = {};
    return {std::move(prepared), error};
  }
  prepared.package_path = path;
  prepared.ready = true;
  prepared.sha256_verified = true;
  return {std::move(prepared), {}};
} catch (const std::exception&) {
  // The library expects that no service throws; what is left to throw is a lack of memory.
  return {{}, {korvixsdk::kNetworkError, "Update download failed: Out of memory"}};
}

Error ProgressPackageService::Verify(const std::string& path, PreparedUpdate& prepared) {
  // The provider takes the bytes in one piece. A host whose packages do not fit into memory hashes
  // them block by block while they are written.
  const Result<std::string> package = file_system_->ReadFile(path);
  if (!package.ok()) return package.error;
  const Result<std::string> digest = crypto_->Sha256Hex(package.value);
  if (!digest.ok()) return digest.error;
  prepared.actual_sha256 = digest.value;
  if (prepared.expected_sha256.empty() || prepared.expected_sha256 == prepared.actual_sha256) {
    return {};
  }
  prepared.message = "Downloaded update package sha256 mismatch";
  return {korvixsdk::kHashMismatch, prepared.message};
}

}  // namespace package_progress
