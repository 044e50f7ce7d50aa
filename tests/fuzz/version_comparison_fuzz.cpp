// The version comparison against one that compares components as decimal texts.
// Input: three versions.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "core/default_update_policy.h"
#include "fuzz/check.h"
#include "fuzz/fields.h"

namespace korvixsdk::test {
namespace {

const std::string kLargestComponent = "2147483647";

bool IsNewer(const std::string& current, const std::string& candidate) {
  return DefaultUpdatePolicy().IsNewerVersion(current, candidate);
}

/// Decimal numbers without leading zeros; zero is the empty text.
bool IsLess(const std::string& left, const std::string& right) {
  return left.size() != right.size() ? left.size() < right.size() : left < right;
}

/// The components without leading zeros and the version without its last zeros, so that equal
/// versions are equal lists; nothing for a text that is no version.
std::optional<std::vector<std::string>> Normalised(const std::string& text) {
  std::vector<std::string> components(1);
  bool digit_seen = false;
  for (const char c : text + '.') {
    if (c == '.') {
      if (!digit_seen || IsLess(kLargestComponent, components.back())) return std::nullopt;
      components.emplace_back();
      digit_seen = false;
    } else if (c >= '0' && c <= '9') {
      digit_seen = true;
      if (c != '0' || !components.back().empty()) components.back() += c;
    } else {
      return std::nullopt;
    }
  }
  while (!components.empty() && components.back().empty()) components.pop_back();
  return components;
}

bool ExpectedNewer(const std::string& current, const std::string& candidate) {
  const auto left = Normalised(current);
  const auto right = Normalised(candidate);
  return left && right &&
         std::lexicographical_compare(left->begin(), left->end(), right->begin(), right->end(),
                                      IsLess);
}

void CheckOrder(const std::string& a, const std::string& b, const std::string& c) {
  Check(!(IsNewer(a, b) && IsNewer(b, a)), "not both newer than the other");
  Check(!(IsNewer(a, b) && IsNewer(b, c)) || IsNewer(a, c), "newer than what is newer");
}

void CheckNeighbours(const std::string& version) {
  const bool valid = Normalised(version).has_value();
  Check(!IsNewer(version, version + ".0") && !IsNewer(version + ".0", version), "zero appended");
  Check(IsNewer(version, version + ".1") == valid, "one appended");
  Check(!IsNewer(version, version + ".2147483648"), "a component above the largest");
  Check(!IsNewer(version, version + "."), "a dot at the end");
}

}  // namespace
}  // namespace korvixsdk::test

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace korvixsdk::test;
  const std::vector<std::string> versions = SplitExactly(data, size, 3);
  for (const std::string& current : versions) {
    for (const std::string& candidate : versions) {
      Check(IsNewer(current, candidate) == ExpectedNewer(current, candidate), "newer or not");
    }
    CheckNeighbours(current);
  }
  CheckOrder(versions[0], versions[1], versions[2]);
  CheckOrder(versions[2], versions[1], versions[0]);
  return 0;
}
