#ifndef KORVIXSDK_NETWORK_DEFAULT_NETWORK_CLIENT_H_
#define KORVIXSDK_NETWORK_DEFAULT_NETWORK_CLIENT_H_

#include <string>

#include "korvixsdk/network_client.h"

namespace korvixsdk {

/// The service over HTTP, or the mock server. No connection state: every exchange opens and closes
/// its own handle, so calls may run at once in several threads while the address stays as it is.
class DefaultNetworkClient : public INetworkClient {
 public:
  Result<ServerResult> ReportInstall(const std::string& product_id, const std::string& device_id,
                                     const std::string& version) override;
  Result<UpdateInfo> CheckForUpdate(const UpdateCheckRequest& request) override;

  /// Scheme, host and optional path prefix; empty means not configured. Set by initialisation.
  std::string server_base_url{};
};

}  // namespace korvixsdk

#endif  // KORVIXSDK_NETWORK_DEFAULT_NETWORK_CLIENT_H_
