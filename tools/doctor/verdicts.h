#ifndef KORVIXSDK_TOOLS_DOCTOR_VERDICTS_H_
#define KORVIXSDK_TOOLS_DOCTOR_VERDICTS_H_

#include <korvixsdk/korvixsdk.h>

#include <string>
#include <string_view>
#include <vector>

#include "doctor/checklist.h"

// What can be said of a service's replies without asking the service, so that a tool can look at
// one that is not served yet. No function here knows a network, a file or a clock. Any thread.

namespace doctor {

/// What an update reply is judged against.
struct ReplyContext {
  /// Of the host that asks; empty when it may be any.
  std::string host_version{};
};

/// Holds the body of an install reply, which the library reads strictly, against the rules:
/// install.json, install.members, install.agreement and install.answer.
std::vector<Check> CheckInstallReply(std::string_view body);

/// Holds the body of an update reply against the rules, and against what the library, which reads
/// it loosely, makes of it: update.json, update.lookup, update.types, update.escapes,
/// update.answer, update.digest and update.decision.
std::vector<Check> CheckUpdateReply(std::string_view body, const ReplyContext& context);

/// update.decision: whether a host that takes the offer is done with it.
Check CheckDecision(const korvixsdk::UpdateInfo& offer, const ReplyContext& context);

/// package.address: an address that a package can be downloaded from.
/// \param base the service's.
Check CheckPackageAddress(const std::string& address, const std::string& base);

/// package.name: whether the name under which the library stores the package of this address is a
/// file's name on Windows, wherever the doctor runs, as one reply goes to all machines.
Check CheckPackageName(const std::string& address);

}  // namespace doctor

#endif  // KORVIXSDK_TOOLS_DOCTOR_VERDICTS_H_
