#ifndef KORVIXSDK_TOOLS_DOCTOR_DOCTOR_H_
#define KORVIXSDK_TOOLS_DOCTOR_DOCTOR_H_

#include <ostream>

#include "doctor/options.h"

namespace doctor {

/// The exit status when a line is "fail": none of the library's codes.
constexpr int kSomethingFailed = 12;

/// Examines machine and service from end to end and prints the checklist.
/// \return the exit status: 0 when no line is "fail".
int Run(const Options& options, std::ostream& out);

}  // namespace doctor

#endif  // KORVIXSDK_TOOLS_DOCTOR_DOCTOR_H_
