#include "network/json_member_lookup.h"

#include <charconv>
#include <system_error>

#include "platform/ascii.h"

namespace korvixsdk {
namespace {

char EscapedCharacter(char escape) {
  switch (escape) {
    case 'b':
      return '\b';
    case 'f':
      return '\f';
    case 'n':
      return '\n';
    case 'r':
      return '\r';
    case 't':
      return '\t';
    default:
      return escape;
  }
}

/// `text` begins behind the opening quotation mark.
std::string StringContent(std::string_view text) {
  std::string content;
  for (std::size_t at = 0; at < text.size() && text[at] != '"'; ++at) {
    if (text[at] != '\\') {
      content += text[at];
    } else if (++at < text.size()) {
      content += EscapedCharacter(text[at]);
    }
  }
  return content;
}

/// The text behind the key's colon and the white space that follows it; nothing when there is none.
std::optional<std::string_view> ValueText(std::string_view text, std::string_view key) {
  const std::string needle = std::string("\"").append(key).append("\"");
  const std::size_t found = text.find(needle);
  if (found == std::string_view::npos) return std::nullopt;
  const std::size_t colon = text.find(':', found + needle.size());
  if (colon == std::string_view::npos) return std::nullopt;
  const std::size_t value = text.find_first_not_of(kAsciiWhiteSpace, colon + 1);
  if (value == std::string_view::npos) return std::nullopt;
  return text.substr(value);
}

}  // namespace

std::optional<std::string> FindJsonMember(std::string_view text, std::string_view key) {
  const std::optional<std::string_view> value = ValueText(text, key);
  if (!value) return std::nullopt;
  if (value->front() == '"') return StringContent(value->substr(1));
  return std::string(TrimAscii(value->substr(0, value->find_first_of(",}"))));
}

std::optional<std::int32_t> FindJsonInt(std::string_view text, std::string_view key) {
  const std::optional<std::string> member = FindJsonMember(text, key);
  if (!member) return std::nullopt;
  const std::string_view token = TrimAscii(*member);
  if (token.empty() || token.find_first_not_of("0123456789") != std::string_view::npos) {
    return std::nullopt;
  }
  std::int32_t value = 0;
  const std::from_chars_result end =
      std::from_chars(token.data(), token.data() + token.size(), value);
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
