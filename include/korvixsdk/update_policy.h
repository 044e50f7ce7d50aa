#ifndef KORVIXSDK_UPDATE_POLICY_H_
#define KORVIXSDK_UPDATE_POLICY_H_

/// \file
/// \brief `IUpdatePolicy`: which of two versions is newer.

#include <string>

namespace korvixsdk {

/// Compares versions. The default implementation has no state, may be called from any thread and
/// never blocks. Exceptions: see `ServiceRegistry`.
class IUpdatePolicy {
 public:
  virtual ~IUpdatePolicy() = default;

  /// True when `candidate_version` is strictly newer than `current_version`.
  ///
  /// The default compares the numbers between the dots, from left to right. A missing number counts
  /// as zero: "1.2" equals "1.2.0". A text that contains anything but digits and single dots
  /// between them, or a number above 2147483647, is not a version; then the answer is false.
  virtual bool IsNewerVersion(const std::string& current_version,
                              const std::string& candidate_version) = 0;
};

}  // namespace korvixsdk

#endif  // KORVIXSDK_UPDATE_POLICY_H_
