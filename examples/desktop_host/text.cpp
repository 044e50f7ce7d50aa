#include "text.h"

#include <windows.h>

#include <algorithm>

namespace desktop_host {
namespace {

constexpr std::size_t kLongestText = 20000;
constexpr std::size_t kLongestLine = 40;

std::string Narrow(const std::wstring& wide, UINT code_page) {
  const int length = static_cast<int>(wide.size());
  const int size =
      WideCharToMultiByte(code_page, 0, wide.data(), length, nullptr, 0, nullptr, nullptr);
  std::string narrow(static_cast<std::size_t>(size), '\0');
  WideCharToMultiByte(code_page, 0, wide.data(), length, narrow.data(), size, nullptr, nullptr);
  return narrow;
}

bool IsControl(wchar_t character) { return character < 0x20 || character == 0x7f; }

void Shorten(std::wstring& text, std::size_t longest) {
  if (text.size() <= longest) return;
  // Not between the halves of a surrogate pair.
  if (IS_HIGH_SURROGATE(text[longest - 1])) --longest;
  text.resize(longest);
  text += L'\u2026';
}

}  // namespace

std::wstring Wide(const std::string& utf8) {
  const int length = static_cast<int>(utf8.size());
  const int size = MultiByteToWideChar(CP_UTF8, 0, utf8.data(), length, nullptr, 0);
  std::wstring wide(static_cast<std::size_t>(size), L'\0');
  MultiByteToWideChar(CP_UTF8, 0, utf8.data(), length, wide.data(), size);
  return wide;
}

std::string Utf8(const std::wstring& wide) { return Narrow(wide, CP_UTF8); }

std::string NarrowPath(const std::wstring& wide) { return Narrow(wide, CP_ACP); }

std::wstring Paragraphs(const std::string& utf8) {
  std::wstring text = Wide(utf8.substr(0, 4 * kLongestText));
  Shorten(text, kLongestText);
  std::wstring shown;
  for (const wchar_t character : text) {
    if (character == L'\n') {
      shown += L"\r\n";
    } else if (character != L'\r') {
      shown += IsControl(character) ? L' ' : character;
    }
  }
  return shown;
}

std::wstring ShortLine(const std::string& utf8) {
  std::wstring text = Wide(utf8.substr(0, 4 * kLongestLine + 4));
  std::replace_if(text.begin(), text.end(), IsControl, L' ');
  Shorten(text, kLongestLine);
  return text;
}

}  // namespace desktop_host
