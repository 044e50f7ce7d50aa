#ifndef KORVIXSDK_PLATFORM_NATIVE_PATH_H_
#define KORVIXSDK_PLATFORM_NATIVE_PATH_H_

#include <filesystem>
#include <optional>
#include <string>

namespace korvixsdk {

/// The one place that decides how text becomes a path and back. Each function answers nothing for
/// a text that is no path: one that cannot be converted, or that holds a zero byte, at which the
/// operating system would cut it. Callers treat that like a path that does not exist or does not
/// open. Where memory does not suffice they throw std::bad_alloc, and the operation that asked
/// answers with its own failure.

/// Narrow text in the code page of the file APIs (Windows), or bytes as they are (POSIX).
std::optional<std::filesystem::path> NativePathFromNarrow(const std::string& text);

/// UTF-8 text, whatever the code page of the process.
std::optional<std::filesystem::path> NativePathFromUtf8(const std::string& text);

/// The inverse of `NativePathFromNarrow`.
std::optional<std::string> NarrowFromNativePath(const std::filesystem::path& path);

}  // namespace korvixsdk

#endif  // KORVIXSDK_PLATFORM_NATIVE_PATH_H_
