#ifndef KORVIXSDK_PLATFORM_NATIVE_FILE_H_
#define KORVIXSDK_PLATFORM_NATIVE_FILE_H_

#include <filesystem>
#include <string>

namespace korvixsdk {

/// Whole files and folder chains, for the file system provider, the fallback identifier file and
/// the cache directory. What must copy a path throws std::bad_alloc where memory does not suffice;
/// the rest throws nothing.

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

/// Creates the folder that `path` names a file in; nothing to do for a bare file name.
bool CreateParentDirectories(const std::filesystem::path& path);

/// Creates the folder and its missing ancestors; true when it stands afterwards. One answer a
/// platform, in its folder, as are the next four.
bool CreateDirectoryChain(const std::filesystem::path& path);

/// Whether anything stands at `path`, links followed; false when that cannot be told.
bool PathExists(const std::filesystem::path& path) noexcept;

/// Whether a folder stands at `path`; false when that cannot be told.
bool IsFolder(const std::filesystem::path& path) noexcept;

/// Whether `path` is a device or a pipe, which a reader might never see the end of; on Windows also
/// whether its name is one.
bool ReadingMightNotEnd(const std::filesystem::path& path) noexcept;

/// Whether opening `path` for writing, or writing to it, might wait for somebody to read: a pipe, a
/// terminal, and on Windows any device.
bool WritingMightNotEnd(const std::filesystem::path& path) noexcept;

}  // namespace korvixsdk

#endif  // KORVIXSDK_PLATFORM_NATIVE_FILE_H_
