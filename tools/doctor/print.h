#ifndef KORVIXSDK_TOOLS_DOCTOR_PRINT_H_
#define KORVIXSDK_TOOLS_DOCTOR_PRINT_H_

#include <ostream>
#include <vector>

#include "doctor/checklist.h"

namespace doctor {

/// One line for people, and a second one with the remedy where there is one.
void PrintLine(const Check& check, std::ostream& out);

/// How many lines passed and how many did not.
void PrintSummary(const std::vector<Check>& checks, std::ostream& out);

/// All lines for programs: a list of {id, title, status, reason, remedy, milliseconds}.
void PrintJson(const std::vector<Check>& checks, std::ostream& out);

}  // namespace doctor

#endif  // KORVIXSDK_TOOLS_DOCTOR_PRINT_H_
