#include "network/json_reader.h"

#include <array>
#include <charconv>
#include <cstring>
#include <system_error>

#include "network/json_escape.h"
#include "platform/or_else.h"

namespace korvixsdk {
namespace {

/// The reader calls itself for each level, and a reply must not decide how much stack that takes.
constexpr int kDeepestNesting = 64;
/// Room for the longest known key and one character more; a longer key is not known.
constexpr std::size_t kKeyRoom = 12;

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

/// Where the characters of a string go: nowhere, into a text, or into a key's few bytes.
struct Discard {
  void Append(std::string_view) {}
};
struct AppendToText {
  std::string& text;
  void Append(std::string_view part) { text.append(part); }
};
class DecodedKey {
 public:
  void Append(std::string_view part) { length_ += part.copy(bytes_ + length_, kKeyRoom - length_); }
  template <std::size_t kSize>
  bool Is(const char (&quoted)[kSize]) const {
    return std::string_view(bytes_, length_) == std::string_view(quoted + 1, kSize - 3);
  }

 private:
  char bytes_[kKeyRoom];
  std::size_t length_ = 0;
};

/// What stands for a character behind a backslash; zero where nothing does.
char MeaningOf(char escape) {
  const char meaning = EscapedCharacter(escape);
  const bool known = meaning != escape || escape == '"' || escape == '/' || escape == '\\';
  return known ? meaning : '\0';
}

/// For each byte, whether a string holds it as it stands: neither the end, nor an escape, nor a
/// control character. Looking up took an eighth less time than comparing three times, and eight
/// bytes in a word gained nothing, as most strings are short.
class PlainCharacters {
 public:
  constexpr PlainCharacters() {
    for (std::size_t byte = 0x20; byte < plain_.size(); ++byte) {
      plain_[byte] = byte != '"' && byte != '\\';
    }
  }
  bool operator[](char c) const { return plain_[static_cast<unsigned char>(c)]; }

 private:
  std::array<bool, 256> plain_{};
};
constexpr PlainCharacters kIsPlain;

/// A few members are wanted of an object whose form is known, so there is no tree: what is not
/// wanted is checked, as a text that is no JSON further on is not to be trusted before.
///
/// Every Parse function takes where it begins in the text and answers where it ended, or null when
/// the text is to be rejected. Passing the cursor by value keeps it in a register: as a member,
/// which a `char` may alias, it went through memory at each step, for a quarter of the time.
class Reader {
 public:
  explicit Reader(std::string_view text) : begin_(text.data()), end_(text.data() + text.size()) {}

  bool ParseEnvelope(ResponseEnvelope& envelope) const {
    const char* const at = ParseObject(
        SkipWhiteSpace(begin_), 1,
        [this, &envelope](const char* member) { return ParseEnvelopeMember(member, envelope); });
    return at != nullptr && SkipWhiteSpace(at) == end_;
  }

 private:
  bool IsAt(const char* at, char expected) const { return at != end_ && *at == expected; }

  const char* Accept(const char* at, char expected) const {
    return IsAt(at, expected) ? at + 1 : nullptr;
  }

  template <std::size_t kSize>
  const char* AcceptLiteral(const char* at, const char (&literal)[kSize]) const {
    constexpr std::size_t kLength = kSize - 1;
    if (static_cast<std::size_t>(end_ - at) < kLength) return nullptr;
    return std::memcmp(at, literal, kLength) == 0 ? at + kLength : nullptr;
  }

  const char* SkipWhiteSpace(const char* at) const {
    while (at != end_ && (*at == ' ' || *at == '\n' || *at == '\r' || *at == '\t')) ++at;
    return at;
  }

  /// `parse_member` takes key and value.
  template <typename ParseMember>
  const char* ParseObject(const char* at, int depth, ParseMember parse_member) const {
    if (depth > kDeepestNesting || !IsAt(at, '{')) return nullptr;
    at = SkipWhiteSpace(at + 1);
    if (IsAt(at, '}')) return at + 1;
    for (;;) {
      at = parse_member(at);
      if (at == nullptr) return nullptr;
      at = SkipWhiteSpace(at);
      if (IsAt(at, '}')) return at + 1;
      if (!IsAt(at, ',')) return nullptr;
      at = SkipWhiteSpace(at + 1);
    }
  }

  /// What stands between a key and its value.
  const char* ParseColon(const char* at) const {
    at = Accept(SkipWhiteSpace(at), ':');
    return at == nullptr ? nullptr : SkipWhiteSpace(at);
  }

  const char* ParseDiscardedObject(const char* at, int depth) const {
    return ParseObject(at, depth, [this, depth](const char* member) {
      const char* value = ParseString(member, Discard{});
      if (value != nullptr) value = ParseColon(value);
      return value == nullptr ? nullptr : ParseValue(value, depth);
    });
  }

  /// A known key is looked for as it is usually written, which spares a short reply a fifth of its
  /// time; a key with escapes is decoded first.
  const char* ParseEnvelopeMember(const char* at, ResponseEnvelope& envelope) const {
    const auto behind = [this, at](const auto& quoted) { return AcceptLiteral(at, quoted); };
    return ParseMemberOf(envelope, behind, [&] { return ParseDecodedMember(at, envelope); });
  }

  const char* ParseDecodedMember(const char* at, ResponseEnvelope& envelope) const {
    DecodedKey key;
    at = ParseString(at, key);
    if (at == nullptr) return nullptr;
    const auto behind = [&](const auto& quoted) { return key.Is(quoted) ? at : nullptr; };
    return ParseMemberOf(envelope, behind, [&] {
      at = ParseColon(at);
      return at == nullptr ? nullptr : ParseValue(at, 1);
    });
  }

  /// `behind` answers where the key ended if it is that one, and otherwise null.
  template <typename Behind, typename Otherwise>
  const char* ParseMemberOf(ResponseEnvelope& envelope, Behind behind, Otherwise otherwise) const {
    if (const char* at = behind("\"code\"")) return ParseKnown(at, envelope.code);
    if (const char* at = behind("\"allowed\"")) return ParseKnown(at, envelope.allowed);
    if (const char* at = behind("\"success\"")) return ParseKnown(at, envelope.success);
    if (const char* at = behind("\"msg\"")) return ParseKnown(at, envelope.msg);
    if (const char* at = behind("\"server_time\"")) return ParseKnown(at, envelope.server_time);
    return otherwise();
  }

  /// A member given twice is rejected: another reader on the way, such as a proxy that filters,
  /// might have gone by the other one.
  template <typename T>
  const char* ParseKnown(const char* at, std::optional<T>& member) const {
    at = ParseColon(at);
    return at == nullptr || member.has_value() ? nullptr : ParseInto(at, member);
  }

  const char* ParseInto(const char* at, std::optional<bool>& member) const {
    member = IsAt(at, 't');
    return *member ? AcceptLiteral(at, "true") : AcceptLiteral(at, "false");
  }

  const char* ParseInto(const char* at, std::optional<std::string>& member) const {
    if (!IsAt(at, '"')) return nullptr;
    const char* const plain_end = SkipPlain(at + 1);
    if (IsAt(plain_end, '"')) {
      member.emplace(at + 1, plain_end);
      return plain_end + 1;
    }
    member.emplace().reserve(RawStringLength(at));
    return ParseString(at, AppendToText{*member});
  }

  /// How much memory the string that begins here needs at most: escapes only make it shorter.
  /// Growing step by step asked for memory seven times for 2 KiB with escapes.
  std::size_t RawStringLength(const char* at) const {
    const std::string_view rest(at, static_cast<std::size_t>(end_ - at));
    std::size_t end = 1;
    while (end < rest.size() && rest[end] != '"') end += rest[end] == '\\' ? 2 : 1;
    return end - 1;
  }

  template <typename Integer>
  const char* ParseInto(const char* at, std::optional<Integer>& member) const {
    Integer& value = member.emplace();
    const std::from_chars_result read = std::from_chars(at, end_, value);
    if (read.ec != std::errc{}) return nullptr;
    // A fraction or an exponent stays behind, where only a comma or the object's end is accepted;
    // but a zero before other digits was read.
    const char* const digits = *at == '-' ? at + 1 : at;
    return *digits == '0' && read.ptr != digits + 1 ? nullptr : read.ptr;
  }

  /// Any value, checked and dropped; `depth` is that of the object or array around it.
  const char* ParseValue(const char* at, int depth) const {
    if (at == end_) return nullptr;
    switch (*at) {
      case '"':
        return ParseString(at, Discard{});
      case '[':
        return ParseArray(at, depth + 1);
      case '{':
        return ParseDiscardedObject(at, depth + 1);
      case 't':
        return AcceptLiteral(at, "true");
      case 'f':
        return AcceptLiteral(at, "false");
      case 'n':
        return AcceptLiteral(at, "null");
      default:
        return ParseNumber(at);
    }
  }

  const char* ParseArray(const char* at, int depth) const {
    if (depth > kDeepestNesting) return nullptr;
    at = SkipWhiteSpace(at + 1);
    if (IsAt(at, ']')) return at + 1;
    for (;;) {
      at = ParseValue(at, depth);
      if (at == nullptr) return nullptr;
      at = SkipWhiteSpace(at);
      if (IsAt(at, ']')) return at + 1;
      if (!IsAt(at, ',')) return nullptr;
      at = SkipWhiteSpace(at + 1);
    }
  }

  const char* ParseNumber(const char* at) const {
    if (IsAt(at, '-')) ++at;
    at = IsAt(at, '0') ? at + 1 : ParseDigits(at);
    if (at != nullptr && IsAt(at, '.')) at = ParseDigits(at + 1);
    if (at != nullptr && (IsAt(at, 'e') || IsAt(at, 'E'))) {
      ++at;
      if (IsAt(at, '+') || IsAt(at, '-')) ++at;
      at = ParseDigits(at);
    }
    return at;
  }

  /// At least one.
  const char* ParseDigits(const char* at) const {
    const char* const first = at;
    while (at != end_ && IsDigit(*at)) ++at;
    return at == first ? nullptr : at;
  }

  const char* SkipPlain(const char* at) const {
    while (at != end_ && kIsPlain[*at]) ++at;
    return at;
  }

  /// Hands runs of plain characters to the sink as they stand, escapes decoded one by one.
  template <typename Sink>
  const char* ParseString(const char* at, Sink&& sink) const {
    if (!IsAt(at, '"')) return nullptr;
    ++at;
    for (;;) {
      const char* const run = at;
      at = SkipPlain(at);
      sink.Append({run, static_cast<std::size_t>(at - run)});
      if (IsAt(at, '"')) return at + 1;
      if (!IsAt(at, '\\')) return nullptr;
      at = ParseEscape(at + 1, sink);
      if (at == nullptr) return nullptr;
    }
  }

  template <typename Sink>
  const char* ParseEscape(const char* at, Sink& sink) const {
    if (at == end_) return nullptr;
    if (*at == 'u') return ParseCodePoint(at + 1, sink);
    const char meaning = MeaningOf(*at);
    if (meaning == '\0') return nullptr;
    sink.Append({&meaning, 1});
    return at + 1;
  }

  template <typename Sink>
  const char* ParseCodePoint(const char* at, Sink& sink) const {
    std::uint32_t code_point = 0;
    at = ParseCodeUnit(at, code_point);
    if (at == nullptr || (code_point >= 0xDC00 && code_point <= 0xDFFF)) return nullptr;
    // Above 0xFFFF a character is written as two units; half of one stands for nothing.
    if (code_point >= 0xD800 && code_point <= 0xDBFF) {
      std::uint32_t low = 0;
      at = AcceptLiteral(at, "\\u");
      if (at != nullptr) at = ParseCodeUnit(at, low);
      if (at == nullptr || low < 0xDC00 || low > 0xDFFF) return nullptr;
      code_point = 0x10000 + (code_point - 0xD800) * 0x400 + (low - 0xDC00);
    }
    AppendUtf8(code_point, sink);
    return at;
  }

  const char* ParseCodeUnit(const char* at, std::uint32_t& code_unit) const {
    constexpr int kDigits = 4;
    if (end_ - at < kDigits) return nullptr;
    const std::from_chars_result read = std::from_chars(at, at + kDigits, code_unit, 16);
    return read.ec == std::errc{} && read.ptr == at + kDigits ? read.ptr : nullptr;
  }

  template <typename Sink>
  static void AppendUtf8(std::uint32_t code_point, Sink& sink) {
    const auto continuation = [code_point](int shift) {
      return static_cast<char>(0x80 | ((code_point >> shift) & 0x3F));
    };
    const auto lead = [code_point](int mark, int shift) {
      return static_cast<char>(static_cast<std::uint32_t>(mark) | (code_point >> shift));
    };
    if (code_point < 0x80) {
      const char bytes[] = {static_cast<char>(code_point)};
      sink.Append({bytes, sizeof(bytes)});
    } else if (code_point < 0x800) {
      const char bytes[] = {lead(0xC0, 6), continuation(0)};
      sink.Append({bytes, sizeof(bytes)});
    } else if (code_point < 0x10000) {
      const char bytes[] = {lead(0xE0, 12), continuation(6), continuation(0)};
      sink.Append({bytes, sizeof(bytes)});
    } else {
      const char bytes[] = {lead(0xF0, 18), continuation(12), continuation(6), continuation(0)};
      sink.Append({bytes, sizeof(bytes)});
    }
  }

  const char* begin_;
  const char* end_;
};

}  // namespace

ResponseEnvelope ReadResponseEnvelope(std::string_view text) noexcept {
  ResponseEnvelope envelope;
  envelope.accepted = OrElse([&] { return Reader(text).ParseEnvelope(envelope); }, false);
  if (!envelope.accepted) envelope = ResponseEnvelope{};
  return envelope;
}

}  // namespace korvixsdk
