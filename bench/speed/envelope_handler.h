#ifndef KORVIXSDK_BENCH_SPEED_ENVELOPE_HANDLER_H_
#define KORVIXSDK_BENCH_SPEED_ENVELOPE_HANDLER_H_

#include <cstdint>
#include <string>
#include <string_view>

#include "network/json_reader.h"

namespace speed {

/// What a handler of parse events does with them, whoever sends them: it keeps the known members of
/// the outermost object and lets all else pass. A known member of the wrong form ends the parse.
class EnvelopeHandler {
 public:
  void Begin() { *this = EnvelopeHandler(); }
  korvixsdk::ResponseEnvelope& envelope() { return envelope_; }

  bool Open() {
    ++depth_;
    return Other();
  }
  bool Close() {
    --depth_;
    return true;
  }

  bool OnKey(std::string_view key) {
    if (depth_ == 1) member_ = Find(key);
    return true;
  }

  bool OnBool(bool value) {
    switch (Take()) {
      case Member::kNone:
        return true;
      case Member::kAllowed:
        envelope_.allowed = value;
        return true;
      case Member::kSuccess:
        envelope_.success = value;
        return true;
      default:
        return false;
    }
  }

  bool OnInteger(std::int64_t value) {
    switch (Take()) {
      case Member::kNone:
        return true;
      case Member::kCode:
        envelope_.code = static_cast<std::int32_t>(value);
        return value == *envelope_.code;
      case Member::kServerTime:
        envelope_.server_time = value;
        return true;
      default:
        return false;
    }
  }

  bool OnString(std::string_view value) {
    const Member member = Take();
    if (member == Member::kMsg) envelope_.msg.emplace(value);
    return member == Member::kMsg || member == Member::kNone;
  }

  /// Null, a fraction, an object or an array.
  bool Other() { return Take() == Member::kNone; }

 private:
  enum class Member { kNone, kAllowed, kSuccess, kCode, kMsg, kServerTime };

  static Member Find(std::string_view key) {
    if (key == "allowed") return Member::kAllowed;
    if (key == "success") return Member::kSuccess;
    if (key == "code") return Member::kCode;
    if (key == "msg") return Member::kMsg;
    if (key == "server_time") return Member::kServerTime;
    return Member::kNone;
  }

  Member Take() {
    const Member member = member_;
    member_ = Member::kNone;
    return member;
  }

  korvixsdk::ResponseEnvelope envelope_{};
  Member member_ = Member::kNone;
  int depth_ = 0;
};

}  // namespace speed

#endif  // KORVIXSDK_BENCH_SPEED_ENVELOPE_HANDLER_H_
