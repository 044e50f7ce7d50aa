#ifndef KORVIXSDK_NETWORK_MOCK_SERVER_H_
#define KORVIXSDK_NETWORK_MOCK_SERVER_H_

#include <cstdint>
#include <string>

#include "korvixsdk/network_client.h"

namespace korvixsdk {

/// A service without a network: the answers to both requests for base addresses that begin with
/// "mock://". No state; any thread; never touches libcurl.

enum class MockMode : std::int32_t { kNormal = 0, kReject = 1, kOffline = 2, kInvalid = 3 };

/// Whether the built-in mock server answers for this base address. Case matters.
bool IsMockUrl(const std::string& server_base_url);

/// The first of the words "offline", "reject" and "invalid" that stands anywhere in the address.
MockMode ClassifyMockUrl(const std::string& server_base_url);

Result<ServerResult> MockReportInstall(const std::string& server_base_url,
                                       const std::string& product_id, const std::string& device_id,
                                       const std::string& version);

Result<UpdateInfo> MockCheckForUpdate(const std::string& server_base_url,
                                      const UpdateCheckRequest& request);

}  // namespace korvixsdk

#endif  // KORVIXSDK_NETWORK_MOCK_SERVER_H_
