#ifndef KORVIXSDK_TOOLS_DOCTOR_PACKAGE_NAME_H_
#define KORVIXSDK_TOOLS_DOCTOR_PACKAGE_NAME_H_

#include <string>

#include "doctor/checklist.h"

namespace doctor {

/// package.name: whether the name under which the library stores the package of this address is a
/// file's name on Windows, wherever the doctor runs, as one reply goes to all machines.
Check CheckPackageName(const std::string& address);

}  // namespace doctor

#endif  // KORVIXSDK_TOOLS_DOCTOR_PACKAGE_NAME_H_
