#ifndef KORVIXSDK_PLATFORM_DIGEST_TEXT_H_
#define KORVIXSDK_PLATFORM_DIGEST_TEXT_H_

#include <string>
#include <vector>

namespace korvixsdk {

/// Two lowercase hexadecimal digits a byte, the most significant nibble first.
inline std::string DigestText(const std::vector<unsigned char>& digest) {
  constexpr char kDigits[] = "0123456789abcdef";
  std::string text;
  text.reserve(digest.size() * 2);
  for (const unsigned char byte : digest) {
    text += kDigits[byte >> 4];
    text += kDigits[byte & 0x0f];
  }
  return text;
}

}  // namespace korvixsdk

#endif  // KORVIXSDK_PLATFORM_DIGEST_TEXT_H_
