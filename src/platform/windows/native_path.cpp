#include "platform/native_path.h"

#include <locale.h>

#include <climits>
#include <utility>

#include "platform/windows/windows_headers.h"

namespace korvixsdk {
namespace {

/// The rule of the runtime's own narrow paths. MinGW's std::filesystem would take every narrow path
/// as UTF-8, so the library converts by itself.
UINT NarrowPathCodePage() {
  if (___lc_codepage_func() == CP_UTF8) return CP_UTF8;
  return AreFileApisANSI() ? CP_ACP : CP_OEMCP;
}

std::optional<std::filesystem::path> Widen(UINT code_page, const std::string& text) {
  if (text.find('\0') != std::string::npos) return std::nullopt;
  if (text.empty()) return std::filesystem::path();
  if (text.size() > INT_MAX) return std::nullopt;
  const int length = static_cast<int>(text.size());
  // Without the flag a wrong byte would become another character, and name another file.
  const int wide_length =
      MultiByteToWideChar(code_page, MB_ERR_INVALID_CHARS, text.data(), length, nullptr, 0);
  if (wide_length <= 0) return std::nullopt;
  std::wstring wide(static_cast<std::size_t>(wide_length), L'\0');
  if (MultiByteToWideChar(code_page, MB_ERR_INVALID_CHARS, text.data(), length, wide.data(),
                          wide_length) != wide_length) {
    return std::nullopt;
  }
  return std::filesystem::path(std::move(wide));
}

}  // namespace

std::optional<std::filesystem::path> NativePathFromNarrow(const std::string& text) {
  return Widen(NarrowPathCodePage(), text);
}

std::optional<std::filesystem::path> NativePathFromUtf8(const std::string& text) {
  return Widen(CP_UTF8, text);
}

std::optional<std::string> NarrowFromNativePath(const std::filesystem::path& path) {
  const std::wstring& wide = path.native();
  if (wide.empty()) return std::string();
  if (wide.size() > INT_MAX) return std::nullopt;
  const UINT code_page = NarrowPathCodePage();
  const int wide_length = static_cast<int>(wide.size());
  const int length =
      WideCharToMultiByte(code_page, 0, wide.data(), wide_length, nullptr, 0, nullptr, nullptr);
  if (length <= 0) return std::nullopt;
  std::string text(static_cast<std::size_t>(length), '\0');
  if (WideCharToMultiByte(code_page, 0, wide.data(), wide_length, text.data(), length, nullptr,
                          nullptr) != length) {
    return std::nullopt;
  }
  return text;
}

}  // namespace korvixsdk
