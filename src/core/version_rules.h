#ifndef KORVIXSDK_CORE_VERSION_RULES_H_
#define KORVIXSDK_CORE_VERSION_RULES_H_

#include <string>
#include <string_view>

#include "korvixsdk/error.h"
#include "korvixsdk/update_info.h"
#include "korvixsdk/update_policy.h"

namespace korvixsdk {

/// Whether `candidate` is strictly newer than `current`: dotted decimal components compared as
/// numbers; see `IUpdatePolicy::IsNewerVersion`. Never throws.
bool IsNewerVersion(std::string_view current, std::string_view candidate) noexcept;

/// Decides `has_update` and `force_update` of what the service answered; its own `has_update` is
/// replaced.
///
/// \param policy may be the host's, and null: then every other version counts as newer, and the
///   minimum is ignored.
/// \return success, or what became of a policy that threw.
Error DecideUpdate(const std::string& current_version, IUpdatePolicy* policy, UpdateInfo& info);

}  // namespace korvixsdk

#endif  // KORVIXSDK_CORE_VERSION_RULES_H_
