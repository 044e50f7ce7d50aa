#include "network/json_reader.h"

#include <charconv>
#include <exception>
#include <system_error>
#include <utility>

namespace korvixsdk {
namespace {

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
struct Key {
  char bytes[kKeyRoom] = {};
  std::size_t length = 0;
  void Append(std::string_view part) {
    for (const char c : part) {
      if (length == kKeyRoom) return;
      bytes[length++] = c;
    }
  }
  std::string_view view() const { return {bytes, length}; }
};

/// A cursor over the text that only moves forward. Every Parse function accepts at the cursor and
/// advances past what it accepted, or answers false, which abandons the whole text.
class Reader {
 public:
  explicit Reader(std::string_view text) : at_(text.data()), end_(text.data() + text.size()) {}

  bool ParseEnvelope(ResponseEnvelope& envelope) {
    SkipWhiteSpace();
    if (!ParseObject(1, &envelope)) return false;
    SkipWhiteSpace();
    return at_ == end_;
  }

 private:
  bool AtEnd() const { return at_ == end_; }

  bool Accept(char expected) {
    if (AtEnd() || *at_ != expected) return false;
    ++at_;
    return true;
  }

  void SkipWhiteSpace() {
    while (!AtEnd() && (*at_ == ' ' || *at_ == '\n' || *at_ == '\r' || *at_ == '\t')) ++at_;
  }

  /// `envelope` is null inside nested objects, whose keys are nobody's.
  bool ParseObject(int depth, ResponseEnvelope* envelope) {
    if (depth > kDeepestNesting || !Accept('{')) return false;
    SkipWhiteSpace();
    if (Accept('}')) return true;
    for (;;) {
      if (!ParseMember(depth, envelope)) return false;
      SkipWhiteSpace();
      if (Accept('}')) return true;
      if (!Accept(',')) return false;
      SkipWhiteSpace();
    }
  }

  bool ParseMember(int depth, ResponseEnvelope* envelope) {
    Key key;
    if (envelope == nullptr ? !ParseString(Discard{}) : !ParseString(key)) return false;
    SkipWhiteSpace();
    if (!Accept(':')) return false;
    SkipWhiteSpace();
    if (envelope == nullptr) return ParseValue(depth);
    return ParseEnvelopeValue(key.view(), depth, *envelope);
  }

  bool ParseEnvelopeValue(std::string_view key, int depth, ResponseEnvelope& envelope) {
    if (key == "allowed") return ParseKnown(envelope.allowed);
    if (key == "success") return ParseKnown(envelope.success);
    if (key == "code") return ParseKnown(envelope.code);
    if (key == "msg") return ParseKnown(envelope.msg);
    if (key == "server_time") return ParseKnown(envelope.server_time);
    return ParseValue(depth);
  }

  template <typename T>
  bool ParseKnown(std::optional<T>& member) {
    return !member.has_value() && ParseInto(member.emplace());
  }

  bool ParseInto(bool& value) {
    if (AcceptLiteral("true")) {
      value = true;
      return true;
    }
    value = false;
    return AcceptLiteral("false");
  }

  bool ParseInto(std::string& value) { return ParseString(AppendToText{value}); }

  template <typename Integer>
  bool ParseInto(Integer& value) {
    const char* const first = at_;
    if (!ParseNumber()) return false;
    // from_chars reads no fraction and no exponent, so either one leaves text behind.
    const std::from_chars_result end = std::from_chars(first, at_, value);
    return end.ec == std::errc{} && end.ptr == at_;
  }

  bool AcceptLiteral(std::string_view literal) {
    if (static_cast<std::size_t>(end_ - at_) < literal.size() ||
        std::string_view(at_, literal.size()) != literal) {
      return false;
    }
    at_ += literal.size();
    return true;
  }

  /// Any value, checked and dropped; `depth` is that of the object or array around it.
  bool ParseValue(int depth) {
    if (AtEnd()) return false;
    switch (*at_) {
      case '"':
        return ParseString(Discard{});
      case '[':
        return ParseArray(depth + 1);
      case '{':
        return ParseObject(depth + 1, nullptr);
      case 't':
        return AcceptLiteral("true");
      case 'f':
        return AcceptLiteral("false");
      case 'n':
        return AcceptLiteral("null");
      default:
        return ParseNumber();
    }
  }

  bool ParseArray(int depth) {
    if (depth > kDeepestNesting || !Accept('[')) return false;
    SkipWhiteSpace();
    if (Accept(']')) return true;
    for (;;) {
      if (!ParseValue(depth)) return false;
      SkipWhiteSpace();
      if (Accept(']')) return true;
      if (!Accept(',')) return false;
      SkipWhiteSpace();
    }
  }

  bool ParseNumber() {
    Accept('-');
    if (!Accept('0') && !SkipDigits()) return false;
    if (Accept('.') && !SkipDigits()) return false;
    if (Accept('e') || Accept('E')) {
      if (!Accept('+')) Accept('-');
      if (!SkipDigits()) return false;
    }
    return true;
  }

  /// At least one.
  bool SkipDigits() {
    const char* const first = at_;
    while (!AtEnd() && IsDigit(*at_)) ++at_;
    return at_ != first;
  }

  /// Hands runs of plain characters to the sink as they stand, escapes decoded one by one.
  template <typename Sink>
  bool ParseString(Sink&& sink) {
    if (!Accept('"')) return false;
    for (;;) {
      const char* const run = at_;
      while (!AtEnd() && *at_ != '"' && *at_ != '\\' && static_cast<unsigned char>(*at_) >= 0x20) {
        ++at_;
      }
      sink.Append({run, static_cast<std::size_t>(at_ - run)});
      if (Accept('"')) return true;
      if (!Accept('\\') || !ParseEscape(sink)) return false;
    }
  }

  template <typename Sink>
  bool ParseEscape(Sink& sink) {
    if (AtEnd()) return false;
    constexpr std::string_view kEscapes = "\"/\\bfnrt";
    constexpr std::string_view kMeanings = "\"/\\\b\f\n\r\t";
    const char escape = *at_++;
    if (escape == 'u') return ParseCodePoint(sink);
    const std::size_t found = kEscapes.find(escape);
    if (found == std::string_view::npos) return false;
    sink.Append(kMeanings.substr(found, 1));
    return true;
  }

  template <typename Sink>
  bool ParseCodePoint(Sink& sink) {
    std::uint32_t code_point = 0;
    if (!ParseCodeUnit(code_point)) return false;
    if (code_point >= 0xDC00 && code_point <= 0xDFFF) return false;
    if (code_point >= 0xD800 && code_point <= 0xDBFF) {
      std::uint32_t low = 0;
      if (!AcceptLiteral("\\u") || !ParseCodeUnit(low)) return false;
      if (low < 0xDC00 || low > 0xDFFF) return false;
      code_point = 0x10000 + (code_point - 0xD800) * 0x400 + (low - 0xDC00);
    }
    AppendUtf8(code_point, sink);
    return true;
  }

  bool ParseCodeUnit(std::uint32_t& code_unit) {
    constexpr int kDigits = 4;
    if (end_ - at_ < kDigits) return false;
    const std::from_chars_result end = std::from_chars(at_, at_ + kDigits, code_unit, 16);
    if (end.ec != std::errc{} || end.ptr != at_ + kDigits) return false;
    at_ += kDigits;
    return true;
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

  const char* at_;
  const char* end_;
};

}  // namespace

ResponseEnvelope ReadResponseEnvelope(std::string_view text) noexcept {
  try {
    ResponseEnvelope envelope;
    if (!Reader(text).ParseEnvelope(envelope)) return ResponseEnvelope{};
    envelope.accepted = true;
    return envelope;
  } catch (const std::exception&) {
    return ResponseEnvelope{};
  }
}

}  // namespace korvixsdk
