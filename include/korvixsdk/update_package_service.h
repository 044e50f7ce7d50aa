#ifndef KORVIXSDK_UPDATE_PACKAGE_SERVICE_H_
#define KORVIXSDK_UPDATE_PACKAGE_SERVICE_H_

/// \file
/// \brief `IUpdatePackageService`: from an offer to a running updater.

#include <string>

#include "korvixsdk/error.h"
#include "korvixsdk/prepared_update.h"
#include "korvixsdk/result.h"
#include "korvixsdk/update_info.h"

namespace korvixsdk {

/// Downloads a package, verifies it, and starts the host's updater with it.
///
/// The default implementation keeps the whole package in memory. It has no locks: two threads that
/// prepare the same address at the same time write the same file. Exceptions: see
/// `ServiceRegistry`.
class IUpdatePackageService {
 public:
  virtual ~IUpdatePackageService() = default;

  /// Downloads `info.download_url` into the folder "updates" in `cache_dir`. Then compares its
  /// SHA-256 with `info.sha256`, unless that is empty. The name of the file is what follows the
  /// last slash of the address, up to a question mark, or "update_package.bin" if that is nothing.
  /// The name is not checked: on Windows a name with backslashes or a drive leads out of the
  /// folder, so the host must be able to trust the service's addresses.
  ///
  /// \return the package, or
  ///   `kInvalidArgument` "UpdateInfo.download_url must not be empty";
  ///   `kInvalidState` "Update package service dependencies are not configured";
  ///   `kNetworkError` "Failed to initialize libcurl for update download",
  ///   "Update download failed: " + libcurl's text,
  ///   "Update download returned HTTP status " + status, "Mock update download is offline";
  ///   the file system's or the crypto provider's error, unchanged;
  ///   `kHashMismatch` "Downloaded update package sha256 mismatch"; the value is then filled, with
  ///   both flags false, and the file stays.
  /// Blocks until the package is there (30 seconds at most, or until the system's resolver gives
  /// up, see `INetworkClient`; on Linux without a limit for a "file:" address), and then until it
  /// is on the disk.
  virtual Result<PreparedUpdate> Prepare(const UpdateInfo& info, const std::string& cache_dir) = 0;

  /// Starts `updater_path` with the path of the package as its only argument. Returns at once, and
  /// nobody waits for the end of the updater. If the path begins with "mock://launch-ok" or
  /// "mock://launch-fail", nothing is started, and the operation succeeds or fails.
  ///
  /// The updater has the working directory and the environment of the host; on Linux it has a
  /// session of its own and the standard streams of the host. Use an absolute path: the library
  /// looks for a relative one in the working directory, but Windows first looks for it beside the
  /// host's program.
  ///
  /// \param prepared only `ready` and `package_path` are used.
  /// \param updater_path narrow text, which is passed to the operating system unchanged.
  /// \return success, or
  ///   `kInvalidArgument` "Prepared update is not ready", "updater_path must not be empty";
  ///   `kInvalidState` "Mock updater launch failed", "File system service is not configured",
  ///   "Prepared update package does not exist", "Failed to launch updater process";
  ///   `kNotFound` "Updater executable was not found".
  virtual Error Launch(const PreparedUpdate& prepared, const std::string& updater_path) = 0;
};

}  // namespace korvixsdk

#endif  // KORVIXSDK_UPDATE_PACKAGE_SERVICE_H_
