#ifndef KORVIXSDK_TOOLS_DOCTOR_ADDRESS_CHECKS_H_
#define KORVIXSDK_TOOLS_DOCTOR_ADDRESS_CHECKS_H_

#include <string>
#include <vector>

#include "doctor/checklist.h"
#include "doctor/exchange.h"

namespace doctor {

/// "https" and the like in small letters; empty for what is no address.
std::string SchemeOf(const std::string& address);

/// address.form: an address to which the endpoints' paths can be appended.
Check CheckBaseAddress(const std::string& address);

/// address.proxy, from one attempt and from what the system's settings name.
Check CheckProxy(const Connection& connection, const std::vector<std::string>& system_proxies);

/// address.name, address.connection and address.tls, from one attempt. Those behind the first that
/// failed are not tried.
std::vector<Check> CheckConnection(const Connection& connection, bool tls);

}  // namespace doctor

#endif  // KORVIXSDK_TOOLS_DOCTOR_ADDRESS_CHECKS_H_
