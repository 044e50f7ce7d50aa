#ifndef KORVIXSDK_FILE_SYSTEM_PROVIDER_H_
#define KORVIXSDK_FILE_SYSTEM_PROVIDER_H_

/// \file
/// \brief `IFileSystemProvider`: files and folders of packages.

#include <string>

#include "korvixsdk/error.h"
#include "korvixsdk/result.h"

namespace korvixsdk {

/// Reads and writes whole files. The library uses it for packages: to create their folder, to write
/// them, and to see whether package and updater exist before the updater is started. Two things are
/// done without it: `Init` creates the cache directory, and the device identifier provider reads
/// and writes its fallback file.
///
/// Paths are narrow text. On Windows the default implementation converts them with the code page
/// that the C++ runtime uses for narrow paths: UTF-8 if the runtime's locale is UTF-8, otherwise
/// the ANSI code page, or the OEM code page after `SetFileApisToOEM`. On Linux it uses the bytes as
/// they are. A text that cannot be converted, or that contains a zero byte, is treated like a path
/// that does not exist or cannot be opened. The contents of files are bytes and are never changed.
///
/// The default implementation has no state and may be called from any thread. A call waits for the
/// disk as long as that takes. If two threads write the same file, you must make sure that they do
/// it one after the other. Messages end with the path exactly as it was passed, and never contain
/// an error number of the system. Exceptions: see `ServiceRegistry`.
class IFileSystemProvider {
 public:
  virtual ~IFileSystemProvider() = default;

  /// Tells whether there is anything at `path`, be it a file, a folder or something else. Symbolic
  /// links are followed. False also if the system does not say (access denied, bad name).
  virtual bool Exists(const std::string& path) = 0;

  /// Reads the whole file at `path`; an empty file gives an empty text.
  /// \return the bytes, or `kFileSystemError` with "Failed to open file for read: " + path (also
  ///   for a folder) or "Failed to read file: " + path.
  virtual Result<std::string> ReadFile(const std::string& path) = 0;

  /// Writes `content` to `path`. Replaces an existing file, and creates missing parent folders.
  /// Not atomic: the file itself is emptied and then written, so a failure may leave a part of it.
  /// \return success, or `kFileSystemError` with "Failed to create parent directories: " + path,
  ///   "Failed to open file for write: " + path or "Failed to write file: " + path (a full disk).
  virtual Error WriteFile(const std::string& path, const std::string& content) = 0;

  /// Creates the folder `path` and all missing folders above it. If it exists, that is a success.
  /// \return success, or `kFileSystemError` with "Failed to create directories: " + path.
  virtual Error CreateDirectories(const std::string& path) = 0;
};

}  // namespace korvixsdk

#endif  // KORVIXSDK_FILE_SYSTEM_PROVIDER_H_
