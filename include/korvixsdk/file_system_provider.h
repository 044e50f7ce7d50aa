#ifndef KORVIXSDK_FILE_SYSTEM_PROVIDER_H_
#define KORVIXSDK_FILE_SYSTEM_PROVIDER_H_

/// \file
/// \brief `IFileSystemProvider`: files and folders of packages.

#include <string>

#include "korvixsdk/error.h"
#include "korvixsdk/result.h"

namespace korvixsdk {

/// Whole files in, whole files out. The library writes packages through it, makes their folder and
/// looks whether package and updater are there. `Init` creates the cache directory, and the device
/// identifier provider keeps its fallback file, without it.
///
/// Paths are narrow text. The default implementation converts them on Windows in the code page that
/// the C++ runtime uses for narrow paths: UTF-8 when the runtime's locale is UTF-8, otherwise the
/// ANSI code page, or the OEM one after `SetFileApisToOEM`. Elsewhere the bytes are used as they
/// are. A text that cannot be converted, or that holds a zero byte, behaves like a path that does
/// not exist or cannot be opened. File contents are bytes and pass unchanged.
///
/// The default implementation has no state and may be called from any thread; calls block on the
/// disk without a limit. Two threads that write one file at once must order their own calls.
/// Messages end in the path exactly as it was passed and never carry a system error number.
/// Exceptions: see `ServiceRegistry`.
class IFileSystemProvider {
 public:
  virtual ~IFileSystemProvider() = default;

  /// Whether something of any kind stands at `path`, symbolic links followed. False also when the
  /// question could not be answered (access denied, bad name).
  virtual bool Exists(const std::string& path) = 0;

  /// Reads the whole file at `path`; an empty file gives an empty text.
  /// \return the bytes, or `kFileSystemError` with "Failed to open file for read: " + path (also
  ///   for a folder) or "Failed to read file: " + path.
  virtual Result<std::string> ReadFile(const std::string& path) = 0;

  /// Writes `content` to `path`, replacing an existing file and creating missing parent folders.
  /// Not atomic: the file is truncated and overwritten in place, so a failure part-way leaves a
  /// partial file.
  /// \return success, or `kFileSystemError` with "Failed to create parent directories: " + path,
  ///   "Failed to open file for write: " + path or "Failed to write file: " + path (a full disk).
  virtual Error WriteFile(const std::string& path, const std::string& content) = 0;

  /// Creates the folder `path` and its missing ancestors; an existing folder is a success.
  /// \return success, or `kFileSystemError` with "Failed to create directories: " + path.
  virtual Error CreateDirectories(const std::string& path) = 0;
};

}  // namespace korvixsdk

#endif  // KORVIXSDK_FILE_SYSTEM_PROVIDER_H_
