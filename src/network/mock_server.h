#ifndef KORVIXSDK_NETWORK_MOCK_SERVER_H_
#define KORVIXSDK_NETWORK_MOCK_SERVER_H_

#include <string>

#include "korvixsdk/network_client.h"

namespace korvixsdk {

/// A service without a network: the answers to both requests for the base addresses of
/// mock_addresses.h. No state; any thread; never touches libcurl.

Result<ServerResult> MockReportInstall(const std::string& server_base_url,
                                       const std::string& product_id, const std::string& device_id,
                                       const std::string& version);

Result<UpdateInfo> MockCheckForUpdate(const std::string& server_base_url,
                                      const UpdateCheckRequest& request);

}  // namespace korvixsdk

#endif  // KORVIXSDK_NETWORK_MOCK_SERVER_H_
