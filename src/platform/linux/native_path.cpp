#include "platform/native_path.h"

namespace korvixsdk {

std::optional<std::filesystem::path> NativePathFromNarrow(const std::string& text) {
  if (text.find('\0') != std::string::npos) return std::nullopt;
  return std::filesystem::path(text);
}

std::optional<std::filesystem::path> NativePathFromUtf8(const std::string& text) {
  return NativePathFromNarrow(text);
}

std::optional<std::string> NarrowFromNativePath(const std::filesystem::path& path) {
  return path.native();
}

}  // namespace korvixsdk
