#ifndef KORVIXSDK_EXAMPLES_UPDATE_HOST_DOCTOR_INSTALL_REPLY_CHECKS_H_
#define KORVIXSDK_EXAMPLES_UPDATE_HOST_DOCTOR_INSTALL_REPLY_CHECKS_H_

#include <string_view>
#include <vector>

#include "doctor/checklist.h"

namespace update_host::doctor {

/// Holds the body of an install reply, which the library reads strictly, against the rules:
/// install.json, install.members, install.agreement and install.answer.
std::vector<Check> CheckInstallReply(std::string_view body);

}  // namespace update_host::doctor

#endif  // KORVIXSDK_EXAMPLES_UPDATE_HOST_DOCTOR_INSTALL_REPLY_CHECKS_H_
