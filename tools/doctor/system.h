#ifndef KORVIXSDK_TOOLS_DOCTOR_SYSTEM_H_
#define KORVIXSDK_TOOLS_DOCTOR_SYSTEM_H_

#include <string>
#include <vector>

namespace doctor {

/// Name and release, as the system gives them.
std::string OperatingSystem();

/// The proxies that the system's own settings name, each with the setting's name. Always empty on
/// Linux, which has no such settings.
std::vector<std::string> SystemProxies();

}  // namespace doctor

#endif  // KORVIXSDK_TOOLS_DOCTOR_SYSTEM_H_
