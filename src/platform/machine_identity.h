#ifndef KORVIXSDK_PLATFORM_MACHINE_IDENTITY_H_
#define KORVIXSDK_PLATFORM_MACHINE_IDENTITY_H_

#include <string>

#include "korvixsdk/result.h"

namespace korvixsdk {

/// What each operating system knows about the machine. A failure only makes the property
/// unavailable; its message is for tests and debuggers and reaches no host.

/// The installation's GUID: the registry's MachineGuid (Windows), /etc/machine-id (Linux).
Result<std::string> ReadMachineGuid();

/// The computer's name, at most 15 bytes on Windows (NetBIOS).
Result<std::string> ReadComputerName();

/// A new random GUID in its 8-4-4-4-12 form without braces, in either case; empty on failure.
std::string NewGuidText();

}  // namespace korvixsdk

#endif  // KORVIXSDK_PLATFORM_MACHINE_IDENTITY_H_
