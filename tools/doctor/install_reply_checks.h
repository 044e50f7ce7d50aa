#ifndef KORVIXSDK_TOOLS_DOCTOR_INSTALL_REPLY_CHECKS_H_
#define KORVIXSDK_TOOLS_DOCTOR_INSTALL_REPLY_CHECKS_H_

#include <string_view>
#include <vector>

#include "doctor/checklist.h"

namespace doctor {

/// Holds the body of an install reply, which the library reads strictly, against the rules:
/// install.json, install.members, install.agreement and install.answer.
std::vector<Check> CheckInstallReply(std::string_view body);

}  // namespace doctor

#endif  // KORVIXSDK_TOOLS_DOCTOR_INSTALL_REPLY_CHECKS_H_
