#ifndef KORVIXSDK_NETWORK_INSTALL_ENDPOINT_H_
#define KORVIXSDK_NETWORK_INSTALL_ENDPOINT_H_

#include <string>

#include "korvixsdk/result.h"
#include "korvixsdk/server_result.h"

namespace korvixsdk {

/// Sends an install report and reads the service's answer.
///
/// \return the answer; `PerformGet`'s errors; or kInvalidResponse
///   "invalid JSON or install response schema".
Result<ServerResult> SendInstallReport(const std::string& server_base_url,
                                       const std::string& product_id, const std::string& device_id,
                                       const std::string& version);

/// The reading half: a reply's body into the record that the host gets.
Result<ServerResult> ReadInstallReply(const std::string& body);

}  // namespace korvixsdk

#endif  // KORVIXSDK_NETWORK_INSTALL_ENDPOINT_H_
