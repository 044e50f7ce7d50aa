#ifndef KORVIXSDK_TOOLS_DOCTOR_PRINT_H_
#define KORVIXSDK_TOOLS_DOCTOR_PRINT_H_

#include <ostream>
#include <vector>

#include "doctor/checklist.h"
#include "doctor/options.h"

namespace doctor {

/// For people: failures first, then warnings, each with what to do; what was not tried in one line.
void PrintText(const std::vector<Check>& checks, std::ostream& out);

/// For programs: one object with who was examined where and when, and all checks in their order.
void PrintJson(const Options& options, const std::vector<Check>& checks, std::ostream& out);

}  // namespace doctor

#endif  // KORVIXSDK_TOOLS_DOCTOR_PRINT_H_
