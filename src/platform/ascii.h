#ifndef KORVIXSDK_PLATFORM_ASCII_H_
#define KORVIXSDK_PLATFORM_ASCII_H_

#include <string>
#include <string_view>

namespace korvixsdk {

/// The white space of the C locale, whatever locale the host has set.
inline constexpr std::string_view kAsciiWhiteSpace = " \t\n\v\f\r";

/// `text` without white space at both ends.
inline std::string_view TrimAscii(std::string_view text) {
  const std::size_t first = text.find_first_not_of(kAsciiWhiteSpace);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(kAsciiWhiteSpace) - first + 1);
}

inline bool StartsWith(std::string_view text, std::string_view prefix) {
  return text.substr(0, prefix.size()) == prefix;
}

/// "A" to "Z" as "a" to "z"; every other byte unchanged.
inline std::string FoldAsciiToLower(std::string text) {
  for (char& c : text) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  }
  return text;
}

}  // namespace korvixsdk

#endif  // KORVIXSDK_PLATFORM_ASCII_H_
