#ifndef KORVIXSDK_NETWORK_JSON_MEMBER_LOOKUP_H_
#define KORVIXSDK_NETWORK_JSON_MEMBER_LOOKUP_H_

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace korvixsdk {

/// Finds one member by searching the raw text for its quoted key, loosely on purpose: the first
/// occurrence wins at any depth, even inside another string, and nothing else is checked.
///
/// \return a string's content (only \b \f \n \r \t are decoded, any other escaped character stands
///   for itself, a string that is not closed ends with the text), or the raw text up to the next
///   "," or "}", trimmed; nothing when key or value is missing.
std::optional<std::string> FindJsonMember(std::string_view text, std::string_view key);

/// `FindJsonMember` for a member of decimal digits only, be it a number or a string; nothing for
/// any other value and for one that does not fit.
std::optional<std::int32_t> FindJsonInt(std::string_view text, std::string_view key);

/// A key, without quotation marks in it, and where the member's text goes.
struct JsonMember {
  std::string_view key;
  std::string& value;
  bool found = false;
};

/// `FindJsonMember` for several keys in one pass over the text. The value of a member that is not
/// there stays as it is.
void FindJsonMembers(std::string_view text, JsonMember* first, const JsonMember* last);

template <std::size_t kCount>
void FindJsonMembers(std::string_view text, JsonMember (&&members)[kCount]) {
  FindJsonMembers(text, members, members + kCount);
}

/// A looked-up value of decimal digits only, white space at both ends left aside; nothing for any
/// other and for one that does not fit.
std::optional<std::int32_t> IntFromToken(std::string_view token);

/// Whether a looked-up value is exactly "true" or "1", white space at both ends left aside.
bool IsTrueToken(std::string_view token);

/// Whether a looked-up value is exactly "false" or "0", white space at both ends left aside.
bool IsFalseToken(std::string_view token);

}  // namespace korvixsdk

#endif  // KORVIXSDK_NETWORK_JSON_MEMBER_LOOKUP_H_
