#include "core/default_update_policy.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <string_view>
#include <system_error>

namespace korvixsdk {
namespace {

bool IsComponent(std::string_view text) {
  std::int32_t value = 0;
  const char* const end = text.data() + text.size();
  if (text.empty() || text.front() == '-') return false;
  const std::from_chars_result read = std::from_chars(text.data(), end, value);
  return read.ec == std::errc{} && read.ptr == end;
}

/// Takes the next component off the front. An exhausted version goes on with zeros.
std::int32_t NextComponent(std::string_view& version) {
  const std::size_t length = std::min(version.find('.'), version.size());
  std::int32_t value = 0;
  std::from_chars(version.data(), version.data() + length, value);
  version.remove_prefix(std::min(length + 1, version.size()));
  return value;
}

/// Decimal components of at most 2147483647, one dot between two of them, leading zeros allowed.
bool IsVersion(std::string_view text) {
  for (;;) {
    const std::size_t dot = text.find('.');
    if (!IsComponent(text.substr(0, dot))) return false;
    if (dot == std::string_view::npos) return true;
    text.remove_prefix(dot + 1);
  }
}

}  // namespace

bool DefaultUpdatePolicy::IsNewerVersion(const std::string& current_version,
                                         const std::string& candidate_version) {
  if (!IsVersion(current_version) || !IsVersion(candidate_version)) return false;
  std::string_view current = current_version;
  std::string_view candidate = candidate_version;
  while (!current.empty() || !candidate.empty()) {
    const std::int32_t current_component = NextComponent(current);
    const std::int32_t candidate_component = NextComponent(candidate);
    if (current_component != candidate_component) return candidate_component > current_component;
  }
  return false;
}

}  // namespace korvixsdk
