#ifndef KORVIXSDK_CORE_DEFAULT_UPDATE_POLICY_H_
#define KORVIXSDK_CORE_DEFAULT_UPDATE_POLICY_H_

#include <string>

#include "korvixsdk/update_policy.h"

namespace korvixsdk {

/// Numeric comparison of dotted versions. No state; any thread.
class DefaultUpdatePolicy : public IUpdatePolicy {
 public:
  bool IsNewerVersion(const std::string& current_version,
                      const std::string& candidate_version) override;
};

}  // namespace korvixsdk

#endif  // KORVIXSDK_CORE_DEFAULT_UPDATE_POLICY_H_
