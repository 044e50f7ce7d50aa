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

/// Downloads and verifies a package and starts the host's updater on it.
///
/// The default implementation holds the whole package in memory and takes no lock; two threads that
/// prepare the same address at once write the same file. Exceptions:
/// see `ServiceRegistry`.
class IUpdatePackageService {
 public:
  virtual ~IUpdatePackageService() = default;

  /// Downloads `info.download_url` into the folder "updates" under `cache_dir` and compares its
  /// SHA-256 with `info.sha256`; an empty `info.sha256` skips the comparison. The file is named
  /// after what follows the address's last slash, up to a question mark ("update_package.bin" where
  /// nothing does). The name is not cleaned: on Windows one with backslashes or a drive leads out
  /// of the folder, so the service's addresses must be trusted.
  ///
  /// \return the package, or
  ///   `kInvalidArgument` "UpdateInfo.download_url must not be empty";
  ///   `kInvalidState` "Update package service dependencies are not configured";
  ///   `kNetworkError` "Failed to initialize libcurl for update download",
  ///   "Update download failed: " + libcurl's text,
  ///   "Update download returned HTTP status " + status, "Mock update download is offline";
  ///   the file system's or the crypto provider's error, unchanged;
  ///   `kHashMismatch` "Downloaded update package sha256 mismatch", in which case the value is
  ///   filled (both flags false) and the file stays in place.
  /// Blocks for the transfer (at most 30 seconds, or until the system's resolver gives up, see
  /// `INetworkClient`; on Linux without a limit for a "file:" address), then on the disk.
  virtual Result<PreparedUpdate> Prepare(const UpdateInfo& info, const std::string& cache_dir) = 0;

  /// Starts `updater_path` with the package's path as its only argument and returns at once; the
  /// updater is never waited for. Paths that begin with "mock://launch-ok" or "mock://launch-fail"
  /// select that outcome without starting anything.
  ///
  /// The updater starts in the host's working directory with its environment; on Linux it gets a
  /// session of its own and the host's standard streams. Pass an absolute path: a relative one is
  /// looked for in the working directory, but Windows starts one beside the host's program first.
  ///
  /// \param prepared `ready` and `package_path` are read.
  /// \param updater_path narrow text, handed to the operating system as it is.
  /// \return success, or
  ///   `kInvalidArgument` "Prepared update is not ready", "updater_path must not be empty";
  ///   `kInvalidState` "Mock updater launch failed", "File system service is not configured",
  ///   "Prepared update package does not exist", "Failed to launch updater process";
  ///   `kNotFound` "Updater executable was not found".
  virtual Error Launch(const PreparedUpdate& prepared, const std::string& updater_path) = 0;
};

}  // namespace korvixsdk

#endif  // KORVIXSDK_UPDATE_PACKAGE_SERVICE_H_
