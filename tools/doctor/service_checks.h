#ifndef KORVIXSDK_TOOLS_DOCTOR_SERVICE_CHECKS_H_
#define KORVIXSDK_TOOLS_DOCTOR_SERVICE_CHECKS_H_

#include <korvixsdk/korvixsdk.h>

#include "doctor/checklist.h"
#include "doctor/subject.h"

namespace doctor {

/// The checks address.form to update.library: one connection, then each endpoint once by the doctor
/// and once by the library.
/// \return the offer, as the library reads it; empty when there is none.
korvixsdk::UpdateInfo CheckService(Subject& subject, Checklist& checklist);

}  // namespace doctor

#endif  // KORVIXSDK_TOOLS_DOCTOR_SERVICE_CHECKS_H_
