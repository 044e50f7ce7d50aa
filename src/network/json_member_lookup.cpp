#include "network/json_member_lookup.h"

#include <array>
#include <charconv>
#include <system_error>
#include <utility>

#include "network/json_escape.h"
#include "platform/ascii.h"

namespace korvixsdk {
namespace {

constexpr std::size_t kLongestNeedle = 255;

/// `text` begins behind the opening quotation mark.
std::string StringContent(std::string_view text) {
  std::string content;
  std::size_t run = 0;
  std::size_t at = 0;
  for (; at < text.size() && text[at] != '"'; ++at) {
    if (text[at] != '\\') continue;
    content.append(text, run, at - run);
    if (++at < text.size()) content += EscapedCharacter(text[at]);
    run = at + 1;
  }
  if (run < at) content.append(text, run, at - run);
  return content;
}

/// Where `needle`, of two bytes at least, stands first, by Horspool's search with pairs of bytes: a
/// pair that the needle lacks lets it skip nearly its whole length, and as most are, the processor
/// need not wait for the table. std::string_view::find stops at each quotation mark instead, and
/// nine searches of a reply took eight times as long.
std::size_t Find(std::string_view text, std::string_view needle) {
  if (needle.size() > kLongestNeedle) return text.find(needle);
  const auto pair_at = [](std::string_view bytes, std::size_t at) {
    return static_cast<unsigned char>(bytes[at] * 8 + bytes[at + 1]);
  };
  const std::size_t last_pair = needle.size() - 2;
  // One more than the last place of each pair in the needle; 0 for those that it lacks.
  std::array<unsigned char, 256> places{};
  for (std::size_t i = 0; i < last_pair; ++i) {
    places[pair_at(needle, i)] = static_cast<unsigned char>(i + 1);
  }
  const std::size_t place_before_last =
      std::exchange(places[pair_at(needle, last_pair)], static_cast<unsigned char>(last_pair + 1));
  for (std::size_t at = last_pair; at + 1 < text.size();) {
    const std::size_t place = places[pair_at(text, at)];
    if (place == 0) {
      at += last_pair + 1;
    } else if (place <= last_pair) {
      at += last_pair + 1 - place;
    } else if (text.compare(at - last_pair, needle.size(), needle) == 0) {
      return at - last_pair;
    } else {
      at += last_pair + 1 - place_before_last;
    }
  }
  return std::string_view::npos;
}

/// The text behind the key's colon and the white space that follows it; nothing when there is none.
std::optional<std::string_view> ValueText(std::string_view text, std::string_view key) {
  const std::string needle = std::string("\"").append(key).append("\"");
  const std::size_t found = Find(text, needle);
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
