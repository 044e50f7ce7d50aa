// A built URL must decode to what it was built from.
// Input: base address, path, then keys and values in turn.

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "fuzz/check.h"
#include "fuzz/fields.h"
#include "network/url.h"

namespace korvixsdk::test {
namespace {

constexpr std::size_t kMostParameters = 4;
const std::string kUnreserved =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-._~";

bool IsUnreserved(char c) { return kUnreserved.find(c) != std::string::npos; }

unsigned UpperCaseNibble(char c) {
  const std::size_t value = std::string("0123456789ABCDEF").find(c);
  Check(value != std::string::npos, "two upper-case hexadecimal digits behind a percent sign");
  return static_cast<unsigned>(value);
}

/// Takes texts off the front of a URL.
class UrlReader {
 public:
  explicit UrlReader(const std::string& url) : url_(url) {}

  void Take(const std::string& text, const char* claim) {
    Check(url_.compare(at_, text.size(), text) == 0, claim);
    at_ += text.size();
  }

  /// Up to the first character that no encoded value holds.
  std::string TakeEncoded() {
    std::string value;
    while (at_ < url_.size() && (IsUnreserved(url_[at_]) || url_[at_] == '%')) {
      value += TakeEncodedByte();
    }
    return value;
  }

  bool AtEnd() const { return at_ == url_.size(); }

 private:
  char TakeEncodedByte() {
    if (url_[at_] != '%') return url_[at_++];
    Check(at_ + 2 < url_.size(), "two digits behind a percent sign");
    const char byte =
        static_cast<char>(UpperCaseNibble(url_[at_ + 1]) * 16 + UpperCaseNibble(url_[at_ + 2]));
    Check(!IsUnreserved(byte), "unreserved characters left as they are");
    at_ += 3;
    return byte;
  }

  const std::string& url_;
  std::size_t at_ = 0;
};

std::string Joined(const std::string& base, const std::string& path) {
  const bool two_slashes =
      !base.empty() && !path.empty() && base[base.size() - 1] == '/' && path[0] == '/';
  return base + (two_slashes ? path.substr(1) : path);
}

QueryParameters Parameters(const std::vector<std::string>& fields) {
  QueryParameters params;
  for (std::size_t i = 2; i + 1 < fields.size(); i += 2) {
    params.emplace_back(fields[i], fields[i + 1]);
  }
  return params;
}

}  // namespace
}  // namespace korvixsdk::test

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace korvixsdk;
  using namespace korvixsdk::test;
  std::vector<std::string> fields = SplitFields(data, size, 2 + 2 * kMostParameters);
  if (fields.size() < 2) fields.resize(2);
  const QueryParameters params = Parameters(fields);
  const Result<std::string> url = BuildUrl(fields[0], fields[1], params);
  Check(url.ok(), "every URL can be built");

  UrlReader reader(url.value);
  reader.Take(Joined(fields[0], fields[1]), "base and path unchanged, but for one slash");
  std::string separator = "?";
  for (const auto& [key, value] : params) {
    reader.Take(separator, "separator");
    reader.Take(std::string(key), "key unchanged");
    reader.Take("=", "equals sign");
    Check(reader.TakeEncoded() == value, "decodes to the value");
    separator = "&";
  }
  Check(reader.AtEnd(), "nothing behind the last value");
  return 0;
}
