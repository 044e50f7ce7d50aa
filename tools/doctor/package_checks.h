#ifndef KORVIXSDK_EXAMPLES_UPDATE_HOST_DOCTOR_PACKAGE_CHECKS_H_
#define KORVIXSDK_EXAMPLES_UPDATE_HOST_DOCTOR_PACKAGE_CHECKS_H_

#include <korvixsdk/korvixsdk.h>

#include "doctor/checklist.h"
#include "doctor/subject.h"

namespace update_host::doctor {

/// The checks package.address to package.library: the package once downloaded by the doctor and
/// once by the library, which stores it in a folder of the doctor's own. Nothing that an updater
/// may be reading is touched.
void CheckPackage(Subject& subject, korvixsdk::UpdateInfo offer, Checklist& checklist);

}  // namespace update_host::doctor

#endif  // KORVIXSDK_EXAMPLES_UPDATE_HOST_DOCTOR_PACKAGE_CHECKS_H_
