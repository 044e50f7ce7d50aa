#include "network/json_member_lookup.h"

#include <algorithm>
#include <charconv>
#include <system_error>
#include <utility>

#include "network/json_escape.h"
#include "platform/ascii.h"

namespace korvixsdk {
namespace {

/// The bit of a length in a set of lengths; all beyond the last bit share that.
std::uint64_t LengthBit(std::size_t length) {
  return std::uint64_t{1} << std::min<std::size_t>(length, 63);
}

/// How many of the first characters are neither an escape nor the end of a string.
std::size_t PlainLength(std::string_view text) {
  std::size_t length = 0;
  while (length < text.size() && text[length] != '"' && text[length] != '\\') ++length;
  return length;
}

/// `text` begins behind the opening quotation mark.
std::string StringContent(std::string_view text) {
  std::size_t at = PlainLength(text);
  std::string content(text.substr(0, at));
  while (at < text.size() && text[at] == '\\') {
    if (++at == text.size()) break;
    content += EscapedCharacter(text[at++]);
    const std::size_t run = PlainLength(text.substr(at));
    content.append(text, at, run);
    at += run;
  }
  return content;
}

/// Whatever stands between key and colon is passed over, and a nested value is cut at its first
/// comma or brace: flat members are all that this is for. `text` begins behind the quoted key;
/// nothing when there is no colon or no value.
std::optional<std::string> MemberBehind(std::string_view text) {
  const std::size_t colon = text.find(':');
  if (colon == std::string_view::npos) return std::nullopt;
  const std::string_view value = TrimAsciiLeft(text.substr(colon + 1));
  if (value.empty()) return std::nullopt;
  if (value.front() == '"') return StringContent(value.substr(1));
  const auto ends = [](char c) { return c == ',' || c == '}'; };
  const char* const end = std::find_if(value.data(), value.data() + value.size(), ends);
  return std::string(TrimAscii({value.data(), static_cast<std::size_t>(end - value.data())}));
}

JsonMember* MissingMember(std::string_view key, JsonMember* first, const JsonMember* last) {
  for (; first != last; ++first) {
    if (first->key == key && !first->found) return first;
  }
  return nullptr;
}

}  // namespace

std::optional<std::string> FindJsonMember(std::string_view text, std::string_view key) {
  const std::string needle = std::string("\"").append(key).append("\"");
  const std::size_t found = text.find(needle);
  if (found == std::string_view::npos) return std::nullopt;
  return MemberBehind(text.substr(found + needle.size()));
}

std::optional<std::int32_t> FindJsonInt(std::string_view text, std::string_view key) {
  const std::optional<std::string> member = FindJsonMember(text, key);
  return member ? IntFromToken(*member) : std::nullopt;
}

// A quoted key stands between two neighbouring quotation marks, and most of what stands so has
// another length than any key. One comparison a byte: marks are so close together that looking for
// each with std::string_view::find took a quarter more time.
void FindJsonMembers(std::string_view text, JsonMember* first, const JsonMember* last) {
  std::uint64_t lengths = 0;
  for (const JsonMember* member = first; member != last; ++member) {
    lengths |= LengthBit(member->key.size());
  }
  std::ptrdiff_t missing = last - first;
  const char* const end = text.data() + text.size();
  const char* mark = std::find(text.data(), end, '"');
  while (mark != end && missing != 0) {
    const char* const word = mark + 1;
    mark = std::find(word, end, '"');
    const std::size_t length = static_cast<std::size_t>(mark - word);
    if ((lengths & LengthBit(length)) == 0 || mark == end) continue;
    JsonMember* const member = MissingMember({word, length}, first, last);
    if (member == nullptr) continue;
    member->found = true;
    --missing;
    std::optional<std::string> value =
        MemberBehind({mark + 1, static_cast<std::size_t>(end - mark - 1)});
    if (value) member->value = std::move(*value);
  }
}

std::optional<std::int32_t> IntFromToken(std::string_view token) {
  const std::string_view digits = TrimAscii(token);
  // No sign, fraction or exponent: what is no plain number is read as not there.
  if (digits.empty() || digits.find_first_not_of("0123456789") != std::string_view::npos) {
    return std::nullopt;
  }
  std::int32_t value = 0;
  const std::from_chars_result end =
      std::from_chars(digits.data(), digits.data() + digits.size(), value);
  if (end.ec != std::errc{}) return std::nullopt;
  return value;
}

bool IsTrueToken(std::string_view token) {
  const std::string_view trimmed = TrimAscii(token);
  return trimmed == "true" || trimmed == "1";
}

bool IsFalseToken(std::string_view token) {
  const std::string_view trimmed = TrimAscii(token);
  return trimmed == "false" || trimmed == "0";
}

}  // namespace korvixsdk
