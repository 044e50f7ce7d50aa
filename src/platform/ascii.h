#ifndef KORVIXSDK_PLATFORM_ASCII_H_
#define KORVIXSDK_PLATFORM_ASCII_H_

#include <string>
#include <string_view>

namespace korvixsdk {

/// Space, tab, line feed, vertical tab, form feed, carriage return: the white space of the C
/// locale, whatever locale the host has set.
inline bool IsAsciiWhiteSpace(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

inline std::string_view TrimAsciiLeft(std::string_view text) {
  while (!text.empty() && IsAsciiWhiteSpace(text.front())) text.remove_prefix(1);
  return text;
}

/// `text` without white space at both ends.
inline std::string_view TrimAscii(std::string_view text) {
  text = TrimAsciiLeft(text);
  while (!text.empty() && IsAsciiWhiteSpace(text.back())) text.remove_suffix(1);
  return text;
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
