#include "platform/native_path.h"

#include <exception>

namespace korvixsdk {

std::optional<std::filesystem::path> NativePathFromNarrow(const std::string& text) noexcept {
  if (text.find('\0') != std::string::npos) return std::nullopt;
  try {
    return std::filesystem::path(text);
  } catch (const std::exception&) {
    return std::nullopt;
  }
}

std::optional<std::filesystem::path> NativePathFromUtf8(const std::string& text) noexcept {
  return NativePathFromNarrow(text);
}

std::optional<std::string> NarrowFromNativePath(const std::filesystem::path& path) noexcept {
  try {
    return path.native();
  } catch (const std::exception&) {
    return std::nullopt;
  }
}

}  // namespace korvixsdk
