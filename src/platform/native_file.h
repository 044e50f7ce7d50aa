#ifndef KORVIXSDK_PLATFORM_NATIVE_FILE_H_
#define KORVIXSDK_PLATFORM_NATIVE_FILE_H_

#include <filesystem>
#include <string>

namespace korvixsdk {

/// Whole files, for the file system provider and the fallback identifier.

enum class FileOutcome {
  kDone,
  kNotOpened,
  /// Opened, but reading or writing failed part-way.
  kFailed,
};

/// Appends nothing and replaces `content` with the file's bytes; empty unless `kDone`.
FileOutcome ReadWholeFile(const std::filesystem::path& path, std::string& content) noexcept;

/// Truncates and overwrites in place, without a buffer, so that a full disk is met by the write
/// itself and not by a close whose outcome nobody sees.
FileOutcome WriteWholeFile(const std::filesystem::path& path, const std::string& content) noexcept;

/// Creates the folder that `path` names a file in; nothing to do for a bare file name. Throws
/// std::bad_alloc where memory does not suffice to copy a path.
bool CreateParentDirectories(const std::filesystem::path& path);

}  // namespace korvixsdk

#endif  // KORVIXSDK_PLATFORM_NATIVE_FILE_H_
