#ifndef KORVIXSDK_PLATFORM_PATH_STATUS_H_
#define KORVIXSDK_PLATFORM_PATH_STATUS_H_

#include <filesystem>

namespace korvixsdk {

/// What stands at a path, and the folders that make one. The C++ library's own answers are good
/// enough on Linux only, so each platform has its own in its folder.

/// Creates the folder and its missing ancestors; true when it stands afterwards. Throws
/// std::bad_alloc where memory does not suffice to copy a path.
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

#endif  // KORVIXSDK_PLATFORM_PATH_STATUS_H_
