#include "core/version_rules.h"

#include <algorithm>
#include <cstdint>
#include <limits>

#include "korvixsdk/result.h"
#include "platform/service_call.h"

namespace korvixsdk {
namespace {

/// Held in 64 bits, in which ten times the largest and one digit more cannot overflow.
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

/// What the policy, which must be there, says.
Result<bool> Ask(IUpdatePolicy& policy, const std::string& current, const std::string& candidate) {
  const auto ask = [&] { return Result<bool>{policy.IsNewerVersion(current, candidate), {}}; };
  return CallService("Update policy", ask);
}

}  // namespace

bool IsNewerVersion(std::string_view current, std::string_view candidate) noexcept {
  if (current.empty() || candidate.empty()) return false;
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

Error DecideUpdate(const std::string& current_version, IUpdatePolicy* policy, UpdateInfo& info) {
  // Without a policy no order is known. Another version then is an offer, as the service would not
  // name it for nothing, and a minimum cannot be missed.
  Result<bool> newer;
  if (!info.latest_version.empty()) {
    newer = policy != nullptr ? Ask(*policy, current_version, info.latest_version)
                              : Result<bool>{info.latest_version != current_version, {}};
  }
  if (!newer.ok()) return std::move(newer.error);
  Result<bool> below_minimum;
  if (policy != nullptr && !info.min_supported_version.empty()) {
    below_minimum = Ask(*policy, current_version, info.min_supported_version);
  }
  if (!below_minimum.ok()) return std::move(below_minimum.error);
  if (below_minimum.value) {
    // Only raised: what the service calls mandatory stays so. A reply that names the minimum alone
    // offers that, as a host must have a version to show.
    info.force_update = true;
    if (info.latest_version.empty()) info.latest_version = info.min_supported_version;
  }
  info.has_update = newer.value || below_minimum.value;
  return Error{};
}

}  // namespace korvixsdk
