#include <climits>
#include <cstdint>
#include <memory>
#include <string_view>

#include "benches.h"
#include "core/default_update_policy.h"
#include "measure.h"
#include "require.h"

namespace speed {
namespace {

/// Takes one component and the dot behind it; false when there is none, or one beyond the range.
bool TakeComponent(const char*& at, const char* end, bool& more, std::uint64_t& value) {
  const char* const first = at;
  value = 0;
  while (at != end && *at >= '0' && *at <= '9') {
    value = value * 10 + static_cast<std::uint64_t>(*at++ - '0');
    if (value > INT_MAX) return false;
  }
  if (at == first) return false;
  more = at != end;
  return !more || *at++ == '.';
}

/// Both versions side by side, every byte looked at once.
bool IsNewerByHand(std::string_view current, std::string_view candidate) {
  const char* ours = current.data();
  const char* theirs = candidate.data();
  bool ours_left = true;
  bool theirs_left = true;
  int order = 0;
  while (ours_left || theirs_left) {
    std::uint64_t a = 0;
    std::uint64_t b = 0;
    if (ours_left && !TakeComponent(ours, current.data() + current.size(), ours_left, a)) {
      return false;
    }
    if (theirs_left &&
        !TakeComponent(theirs, candidate.data() + candidate.size(), theirs_left, b)) {
      return false;
    }
    if (order == 0 && a != b) order = a < b ? 1 : -1;
  }
  return order > 0;
}

void RequireSameAnswers() {
  korvixsdk::DefaultUpdatePolicy policy;
  const std::string versions[] = {
      "1.4.0", "1.4",  "1.10",       "2",    "01.04",        "1..2",      "1.2.",   "",
      ".1",    "1.2a", "2147483647", "1.-2", "2147483648.1", "1.4.0.0.1", "1.4.0.0"};
  for (const std::string& current : versions) {
    for (const std::string& candidate : versions) {
      Require(policy.IsNewerVersion(current, candidate) == IsNewerByHand(current, candidate),
              "\"" + current + "\" and \"" + candidate + "\"");
    }
  }
}

void RegisterPair(const std::string& current, const std::string& candidate,
                  const std::string& name) {
  Require(IsNewerByHand(current, candidate), "the newer of two versions");
  const auto pair = std::make_shared<const std::pair<std::string, std::string>>(current, candidate);
  Register("versions/ours/" + name, [pair] {
    return korvixsdk::DefaultUpdatePolicy().IsNewerVersion(pair->first, pair->second);
  });
  Register("versions/by_hand/" + name, [pair] { return IsNewerByHand(pair->first, pair->second); });
}

}  // namespace

void RegisterVersions() {
  RequireSameAnswers();
  // Different in the last component only: nothing can be skipped.
  RegisterPair("10.4.117", "10.4.118", "3");
  const std::string many = "10.4.117.2026.1.20.8.33.5120.7.10.4.117.2026.1.20.8.33.5120";
  RegisterPair(many + ".7", many + ".8", "20");
}

}  // namespace speed
