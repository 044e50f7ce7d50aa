#include "doctor/json_object.h"

#include <algorithm>
#include <nlohmann/json.hpp>

namespace doctor {
namespace {

constexpr std::string_view kWhiteSpace = " \t\r\n";
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

/// Walks through the outermost object of a text that is known to be JSON.
class Walk {
 public:
  explicit Walk(std::string_view text) : text_(text) {}

  void Into(JsonObject& object) {
    object.depth = 1;
    at_ = text_.find('{') + 1;
    for (SkipWhiteSpace(); text_[at_] != '}'; SkipWhiteSpace()) {
      if (text_[at_] == ',') {
        ++at_;
      } else {
        object.members.push_back(NextMember(object.depth));
      }
    }
  }

 private:
  void SkipWhiteSpace() { at_ = text_.find_first_not_of(kWhiteSpace, at_); }

  JsonMember NextMember(int& depth) {
    JsonMember member;
    member.key_at = at_;
    SkipString();
    member.key = TextOf(std::string(text_.substr(member.key_at, at_ - member.key_at))).value_or("");
    at_ = text_.find(':', at_) + 1;
    SkipWhiteSpace();
    const std::size_t value_at = at_;
    SkipValue(depth);
    member.raw = text_.substr(value_at, at_ - value_at);
    member.end = at_;
    return member;
  }

  void SkipString() {
    for (++at_; text_[at_] != '"'; ++at_) {
      if (text_[at_] == '\\') ++at_;
    }
    ++at_;
  }

  void SkipValue(int& deepest) {
    int depth = 1;
    do {
      const char first = text_[at_];
      if (first == '"') {
        SkipString();
      } else if (depth == 1 && first != '{' && first != '[') {
        at_ = text_.find_first_of(",} \t\r\n", at_);
      } else {
        if (first == '{' || first == '[') deepest = std::max(deepest, ++depth);
        if (first == '}' || first == ']') --depth;
        ++at_;
      }
    } while (depth > 1);
  }

  std::string_view text_;
  std::size_t at_ = 0;
};

/// Empty when there is none.
std::string ProblemOf(std::string_view text, bool& undecided) {
  // The parser itself would skip the one and stop at the other.
  if (text.substr(0, kByteOrderMark.size()) == kByteOrderMark)
    return "begins with a byte order mark";
  if (text.find('\0') != std::string_view::npos) return "holds a zero byte";
  if (text.find_first_not_of(kWhiteSpace) == std::string_view::npos) return "is nothing but space";
  try {
    if (!nlohmann::json::parse(text).is_object()) return "is JSON, but no object";
  } catch (const nlohmann::json::parse_error& error) {
    return "is no JSON, as byte " + std::to_string(error.byte) + " shows";
  } catch (const nlohmann::json::out_of_range&) {
    undecided = true;
    return "holds a number beyond what JSON readers take";
  }
  return {};
}

}  // namespace

const JsonMember* JsonObject::Find(std::string_view key) const {
  const auto found = std::find_if(members.begin(), members.end(),
                                  [key](const JsonMember& member) { return member.key == key; });
  return found == members.end() ? nullptr : &*found;
}

std::size_t JsonObject::Count(std::string_view key) const {
  return static_cast<std::size_t>(
      std::count_if(members.begin(), members.end(),
                    [key](const JsonMember& member) { return member.key == key; }));
}

JsonObject ReadJsonObject(std::string_view text) {
  JsonObject object;
  object.problem = ProblemOf(text, object.undecided);
  if (object.problem.empty()) Walk(text).Into(object);
  return object;
}

bool IsUtf8(std::string_view text) try {
  return !nlohmann::json(text).dump().empty();
} catch (const nlohmann::json::exception&) {
  return false;
}

std::string Readable(std::string_view text) {
  std::string readable(text);
  if (IsUtf8(text)) return readable;
  std::replace_if(
      readable.begin(), readable.end(),
      [](char character) { return static_cast<unsigned char>(character) >= 0x80; }, '?');
  return readable;
}

std::optional<std::string> TextOf(const std::string& raw) {
  const nlohmann::json value = nlohmann::json::parse(raw, nullptr, false);
  if (!value.is_string()) return std::nullopt;
  return value.get<std::string>();
}

}  // namespace doctor
