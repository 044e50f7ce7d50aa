#ifndef KORVIXSDK_PLATFORM_NATIVE_FILE_H_
#define KORVIXSDK_PLATFORM_NATIVE_FILE_H_

#include <filesystem>
#include <string>

namespace korvixsdk {

/// Whole files and folder chains over the standard library, for the file system provider, the
/// fallback identifier file and the cache directory. Nothing here throws: running out of memory
/// ends as the failure of the step that needed it.

enum class FileOutcome {
  kDone,
  kNotOpened,
  /// Opened, but reading or writing failed part-way.
  kFailed,
};

/// Appends nothing and replaces `content` with the file's bytes; empty unless `kDone`.
FileOutcome ReadWholeFile(const std::filesystem::path& path, std::string& content) noexcept;

/// Truncates and overwrites in place. The stream is unbuffered, so a full disk is met by the write
/// itself and not by a close whose outcome nobody sees.
FileOutcome WriteWholeFile(const std::filesystem::path& path, const std::string& content) noexcept;

/// Creates the folder and its missing ancestors; true when it stands afterwards.
bool CreateDirectoryChain(const std::filesystem::path& path) noexcept;

/// Whether anything stands at `path`, links followed; false when that cannot be told. One answer a
/// platform, in its folder.
bool PathExists(const std::filesystem::path& path) noexcept;

/// "dir/" as "dir", roots left alone: the Windows runtime finds no folder by a name that ends in a
/// separator.
std::filesystem::path WithoutTrailingSeparators(const std::filesystem::path& path);

}  // namespace korvixsdk

#endif  // KORVIXSDK_PLATFORM_NATIVE_FILE_H_
