#include "core/default_update_policy.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <string_view>

namespace korvixsdk {
namespace {

constexpr std::int64_t kLargestComponent = std::numeric_limits<std::int32_t>::max();
constexpr std::int64_t kNoVersion = -1;

/// Takes the next component and the dot behind it off the front; `kNoVersion` when there is none.
/// Decimal, at most 2147483647, leading zeros allowed; a dot stands between two components only.
std::int64_t NextComponent(std::string_view& version) {
  std::int64_t value = 0;
  std::size_t length = 0;
  for (; length < version.size() && version[length] != '.'; ++length) {
    const char c = version[length];
    if (c < '0' || c > '9') return kNoVersion;
    value = value * 10 + (c - '0');
    if (value > kLargestComponent) return kNoVersion;
  }
  if (length == 0 || length + 1 == version.size()) return kNoVersion;
  version.remove_prefix(std::min(length + 1, version.size()));
  return value;
}

}  // namespace

bool DefaultUpdatePolicy::IsNewerVersion(const std::string& current_version,
                                         const std::string& candidate_version) {
  if (current_version.empty() || candidate_version.empty()) return false;
  std::string_view current = current_version;
  std::string_view candidate = candidate_version;
  // The first difference decides, but only between two versions: both are read to their ends.
  std::int64_t difference = 0;
  while (!current.empty() || !candidate.empty()) {
    // An exhausted version goes on with zeros.
    const std::int64_t current_component = current.empty() ? 0 : NextComponent(current);
    const std::int64_t candidate_component = candidate.empty() ? 0 : NextComponent(candidate);
    if (current_component == kNoVersion || candidate_component == kNoVersion) return false;
    if (difference == 0) difference = candidate_component - current_component;
  }
  return difference > 0;
}

}  // namespace korvixsdk
