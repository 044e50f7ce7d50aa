// The flat lookup against its rules, written once more one character at a time.
// Input: key, text.

#include <cstddef>
#include <cstdint>
#include <limits>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "fuzz/check.h"
#include "fuzz/fields.h"
#include "network/json_member_lookup.h"

namespace korvixsdk::test {
namespace {

bool IsSpace(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

std::string Trimmed(std::string text) {
  while (!text.empty() && IsSpace(text.back())) text.pop_back();
  while (!text.empty() && IsSpace(text.front())) text.erase(0, 1);
  return text;
}

/// Where the text behind the first `"key"` begins, or nothing.
std::optional<std::size_t> BehindKey(const std::string& text, const std::string& key) {
  const std::string needle = '"' + key + '"';
  for (std::size_t at = 0; at + needle.size() <= text.size(); ++at) {
    if (text.compare(at, needle.size(), needle) == 0) return at + needle.size();
  }
  return std::nullopt;
}

std::string QuotedText(const std::string& text, std::size_t at) {
  const std::map<char, char> meanings = {
      {'b', '\x08'}, {'f', '\x0C'}, {'n', '\x0A'}, {'r', '\x0D'}, {'t', '\x09'}};
  std::string content;
  bool escaped = false;
  for (; at < text.size(); ++at) {
    const char c = text[at];
    if (escaped) {
      content += meanings.count(c) != 0 ? meanings.at(c) : c;
      escaped = false;
    } else if (c == '\\') {
      escaped = true;
    } else if (c == '"') {
      break;
    } else {
      content += c;
    }
  }
  return content;
}

std::optional<std::string> ExpectedMember(const std::string& text, const std::string& key) {
  const std::optional<std::size_t> behind = BehindKey(text, key);
  if (!behind) return std::nullopt;
  std::size_t at = *behind;
  while (at < text.size() && text[at] != ':') ++at;
  if (at == text.size()) return std::nullopt;
  ++at;
  while (at < text.size() && IsSpace(text[at])) ++at;
  if (at == text.size()) return std::nullopt;
  if (text[at] == '"') return QuotedText(text, at + 1);
  std::string raw;
  while (at < text.size() && text[at] != ',' && text[at] != '}') raw += text[at++];
  return Trimmed(raw);
}

std::optional<std::int32_t> ExpectedInt(const std::optional<std::string>& member) {
  if (!member) return std::nullopt;
  const std::string token = Trimmed(*member);
  if (token.empty()) return std::nullopt;
  std::int64_t value = 0;
  for (const char c : token) {
    if (c < '0' || c > '9') return std::nullopt;
    value = value * 10 + (c - '0');
    // Only grows from here, and must not grow out of its own type.
    if (value > std::numeric_limits<std::int32_t>::max()) value = std::int64_t{1} << 40;
  }
  if (value > std::numeric_limits<std::int32_t>::max()) return std::nullopt;
  return static_cast<std::int32_t>(value);
}

void CheckTokens(const std::string& token) {
  const std::string trimmed = Trimmed(token);
  Check(IsTrueToken(token) == (trimmed == "true" || trimmed == "1"), "true token");
  Check(IsFalseToken(token) == (trimmed == "false" || trimmed == "0"), "false token");
}

/// Two keys at once must give what each gives alone.
void CheckPair(const std::string& text, const std::string& key,
               const std::optional<std::string>& expected) {
  const std::string other = key == "version" ? "code" : "version";
  if (key.find('"') != std::string::npos) return;
  std::string value = "absent";
  std::string other_value = "absent";
  FindJsonMembers(text, {{key, value}, {other, other_value}});
  Check(value == expected.value_or("absent"), "the member's text beside another");
  Check(other_value == ExpectedMember(text, other).value_or("absent"), "the other member's text");
}

}  // namespace
}  // namespace korvixsdk::test

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace korvixsdk;
  using namespace korvixsdk::test;
  const std::vector<std::string> fields = SplitExactly(data, size, 2);
  const std::string& key = fields[0];
  const std::string& text = fields[1];
  const std::optional<std::string> expected = ExpectedMember(text, key);
  Check(FindJsonMember(text, key) == expected, "the member's text");
  Check(FindJsonInt(text, key) == ExpectedInt(expected), "the member's integer");
  CheckPair(text, key, expected);
  if (expected) CheckTokens(*expected);
  CheckTokens(text);
  return 0;
}
