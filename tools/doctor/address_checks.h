#ifndef KORVIXSDK_TOOLS_DOCTOR_ADDRESS_CHECKS_H_
#define KORVIXSDK_TOOLS_DOCTOR_ADDRESS_CHECKS_H_

#include <string>
#include <vector>

#include "doctor/checklist.h"
#include "doctor/exchange.h"

namespace doctor {

/// Whether the library itself answers for this address, without a network.
bool IsMockAddress(const std::string& address);

/// "https" and the like in small letters; empty for what is no address.
std::string SchemeOf(const std::string& address);

/// address.form: an address to which the endpoints' paths can be appended.
Check CheckBaseAddress(const std::string& address);

/// package.address: an address that a package can be downloaded from.
/// \param base the service's.
Check CheckPackageAddress(const std::string& address, const std::string& base);

/// address.name, address.connection and address.tls, from one attempt. Those behind the first that
/// failed are not tried.
std::vector<Check> CheckConnection(const Connection& connection, bool tls);

}  // namespace doctor

#endif  // KORVIXSDK_TOOLS_DOCTOR_ADDRESS_CHECKS_H_
