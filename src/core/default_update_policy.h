#ifndef KORVIXSDK_CORE_DEFAULT_UPDATE_POLICY_H_
#define KORVIXSDK_CORE_DEFAULT_UPDATE_POLICY_H_

#include <string>

#include "core/version_rules.h"
#include "korvixsdk/update_policy.h"

namespace korvixsdk {

/// The comparison of version_rules.h, for whoever replaces or decorates it. No state; any thread.
class DefaultUpdatePolicy : public IUpdatePolicy {
 public:
  bool IsNewerVersion(const std::string& current_version,
                      const std::string& candidate_version) override {
    return korvixsdk::IsNewerVersion(current_version, candidate_version);
  }
};

}  // namespace korvixsdk

#endif  // KORVIXSDK_CORE_DEFAULT_UPDATE_POLICY_H_
