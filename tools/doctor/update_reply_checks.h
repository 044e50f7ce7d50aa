#ifndef KORVIXSDK_TOOLS_DOCTOR_UPDATE_REPLY_CHECKS_H_
#define KORVIXSDK_TOOLS_DOCTOR_UPDATE_REPLY_CHECKS_H_

#include <string_view>
#include <vector>

#include "doctor/checklist.h"

namespace doctor {

/// Holds the body of an update reply against the rules, and against what the library, which reads
/// it loosely, makes of it: update.json, update.lookup, update.types, update.escapes, update.answer
/// and update.digest.
std::vector<Check> CheckUpdateReply(std::string_view body);

}  // namespace doctor

#endif  // KORVIXSDK_TOOLS_DOCTOR_UPDATE_REPLY_CHECKS_H_
