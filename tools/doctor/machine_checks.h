#ifndef KORVIXSDK_TOOLS_DOCTOR_MACHINE_CHECKS_H_
#define KORVIXSDK_TOOLS_DOCTOR_MACHINE_CHECKS_H_

#include <cstdint>
#include <string>
#include <vector>

#include "doctor/checklist.h"
#include "doctor/subject.h"

namespace doctor {

/// Everything that needs no network: the checks library.version to device-id.stable. Initialises
/// the subject's facade.
void CheckMachine(Subject& subject, Checklist& checklist);

/// cache.space.
Check CheckFreeSpace(std::uint64_t available_bytes);

/// device-id.sources, from what the provider collected.
Check CheckSources(const korvixsdk::Result<std::vector<std::string>>& sources, bool has_fallback);

/// device-id.value.
Check CheckDeviceId(const korvixsdk::Result<std::string>& id);

}  // namespace doctor

#endif  // KORVIXSDK_TOOLS_DOCTOR_MACHINE_CHECKS_H_
