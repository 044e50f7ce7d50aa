#ifndef KORVIXSDK_TOOLS_DOCTOR_PACKAGE_CHECKS_H_
#define KORVIXSDK_TOOLS_DOCTOR_PACKAGE_CHECKS_H_

#include <korvixsdk/korvixsdk.h>

#include "doctor/checklist.h"
#include "doctor/subject.h"

namespace doctor {

/// The checks package.address to package.library: the package once downloaded by the doctor and
/// once by the library, which stores it in a folder of the doctor's own. Nothing that an updater
/// may be reading is touched.
void CheckPackage(Subject& subject, korvixsdk::UpdateInfo offer, Checklist& checklist);

}  // namespace doctor

#endif  // KORVIXSDK_TOOLS_DOCTOR_PACKAGE_CHECKS_H_
