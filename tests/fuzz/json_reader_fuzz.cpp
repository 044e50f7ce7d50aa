// The strict reader against an independent JSON parser.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <nlohmann/json.hpp>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "fuzz/check.h"
#include "network/json_reader.h"

namespace korvixsdk::test {
namespace {

constexpr int kDeepestNesting = 64;
const std::set<std::string> kKnownKeys = {"code", "allowed", "success", "msg", "server_time"};

/// Follows the parser's events and adds what the reader demands beyond the grammar. An event
/// answers false to reject the text.
class Judge : public nlohmann::json_sax<nlohmann::json> {
 public:
  ResponseEnvelope envelope{};
  /// A sound number that no `double` holds, at which the parser gave up, and where it ends.
  std::string overflow{};
  std::size_t overflow_end = 0;

  bool start_object(std::size_t) override { return Other() && ++depth_ <= kDeepestNesting; }
  bool start_array(std::size_t) override { return Inner() && ++depth_ <= kDeepestNesting; }
  bool end_object() override { return --depth_ >= 0; }
  bool end_array() override { return --depth_ >= 0; }

  bool key(std::string& text) override {
    if (depth_ != 1) return true;
    key_ = text;
    return kKnownKeys.count(text) == 0 || seen_.insert(text).second;
  }

  bool null() override { return Inner(); }

  bool boolean(bool value) override {
    if (IsMember("allowed")) return Store(envelope.allowed, value);
    if (IsMember("success")) return Store(envelope.success, value);
    return Inner();
  }

  bool number_integer(std::int64_t value) override {
    using Code = std::numeric_limits<std::int32_t>;
    if (IsMember("server_time")) return Store(envelope.server_time, value);
    if (!IsMember("code")) return Inner();
    return value >= Code::min() && value <= Code::max() &&
           Store(envelope.code, static_cast<std::int32_t>(value));
  }

  bool number_unsigned(std::uint64_t value) override {
    if (value > std::uint64_t{std::numeric_limits<std::int64_t>::max()}) return Inner();
    return number_integer(static_cast<std::int64_t>(value));
  }

  /// Fractions, exponents and integers of more than 64 bits.
  bool number_float(double, const std::string&) override { return Inner(); }

  bool string(std::string& text) override {
    return IsMember("msg") ? Store(envelope.msg, text) : Inner();
  }

  bool binary(binary_t&) override { return false; }

  bool parse_error(std::size_t position, const std::string& token,
                   const nlohmann::detail::exception& error) override {
    constexpr int kNumberOverflow = 406;
    if (error.id == kNumberOverflow) {
      overflow = token;
      overflow_end = position;
    }
    return false;
  }

 private:
  bool IsMember(const char* key) const { return depth_ == 1 && key_ == key; }
  /// Whether a value that is no known member's may stand here, and below the top level.
  bool Other() const { return depth_ != 1 || kKnownKeys.count(key_) == 0; }
  bool Inner() const { return depth_ > 0 && Other(); }

  template <typename T>
  static bool Store(std::optional<T>& member, const T& value) {
    member = value;
    return true;
  }

  int depth_ = 0;
  std::string key_{};
  std::set<std::string> seen_{};
};

/// The parser skips a byte-order mark, ends at a zero byte, and refuses numbers that no `double`
/// holds; the reader does none of that.
ResponseEnvelope Expected(std::string text) {
  if (text.find('\0') != std::string::npos || text.rfind("\xEF\xBB\xBF", 0) == 0) return {};
  for (;;) {
    Judge judge;
    if (nlohmann::json::sax_parse(text, &judge)) {
      judge.envelope.accepted = true;
      return judge.envelope;
    }
    if (judge.overflow.empty()) return {};
    const std::size_t begin = judge.overflow_end - judge.overflow.size();
    Check(text.compare(begin, judge.overflow.size(), judge.overflow) == 0, "overflow located");
    // Like the number it replaces, it is nothing that an integer member takes; and with an exponent
    // it ends where it ends, whatever follows.
    text.replace(begin, judge.overflow.size(), "1e0");
  }
}

bool IsAscii(char c) { return static_cast<unsigned char>(c) < 0x80; }

/// Every byte that is not ASCII as one that is, and that stands for nothing else.
std::string Masked(std::string text) {
  for (char& c : text) {
    if (!IsAscii(c)) c = '\x7F';
  }
  return text;
}

ResponseEnvelope Masked(ResponseEnvelope envelope) {
  if (envelope.msg) envelope.msg = Masked(*envelope.msg);
  return envelope;
}

void CheckSame(const ResponseEnvelope& read, const ResponseEnvelope& expected) {
  // Does not compile when the reader learns a member that is not known in here.
  const auto& [accepted, code, allowed, success, msg, server_time] = read;
  Check(accepted == expected.accepted, "accepted as the independent parser says");
  Check(code == expected.code, "code");
  Check(allowed == expected.allowed, "allowed");
  Check(success == expected.success, "success");
  Check(msg == expected.msg, "msg");
  Check(server_time == expected.server_time, "server_time");
}

}  // namespace
}  // namespace korvixsdk::test

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace korvixsdk;
  using namespace korvixsdk::test;
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  const ResponseEnvelope read = ReadResponseEnvelope(text);
  const ResponseEnvelope expected = Expected(std::string(text));
  const bool ascii = std::all_of(text.begin(), text.end(), IsAscii);
  if (ascii || expected.accepted) CheckSame(read, expected);
  // The parser accepts UTF-8 only, the reader any bytes: the rest of the text is still compared.
  if (!ascii) CheckSame(Masked(read), Masked(Expected(Masked(std::string(text)))));
  return 0;
}
