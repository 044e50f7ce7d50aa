#ifndef KORVIXSDK_EXAMPLES_UPDATE_HOST_DOCTOR_SERVICE_CHECKS_H_
#define KORVIXSDK_EXAMPLES_UPDATE_HOST_DOCTOR_SERVICE_CHECKS_H_

#include <korvixsdk/korvixsdk.h>

#include "doctor/checklist.h"
#include "doctor/subject.h"

namespace update_host::doctor {

/// The checks address.form to update.library: one connection, then each endpoint once by the doctor
/// and once by the library.
/// \return the offer, as the library reads it; empty when there is none.
korvixsdk::UpdateInfo CheckService(Subject& subject, Checklist& checklist);

}  // namespace update_host::doctor

#endif  // KORVIXSDK_EXAMPLES_UPDATE_HOST_DOCTOR_SERVICE_CHECKS_H_
