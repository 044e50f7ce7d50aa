#include "network/default_network_client.h"

#include <exception>

#include "network/http_transport.h"
#include "network/install_endpoint.h"
#include "network/mock_server.h"
#include "network/update_check_endpoint.h"

namespace korvixsdk {

Result<ServerResult> DefaultNetworkClient::ReportInstall(const std::string& product_id,
                                                         const std::string& device_id,
                                                         const std::string& version) try {
  if (server_base_url.empty()) return {{}, TransportUnavailableError(server_base_url)};
  if (IsMockUrl(server_base_url)) {
    return MockReportInstall(server_base_url, product_id, device_id, version);
  }
  return SendInstallReport(server_base_url, product_id, device_id, version);
} catch (const std::exception&) {
  return {{}, TransportOutOfMemoryError()};
}

Result<UpdateInfo> DefaultNetworkClient::CheckForUpdate(const UpdateCheckRequest& request) try {
  if (server_base_url.empty()) return {{}, TransportUnavailableError(server_base_url)};
  if (IsMockUrl(server_base_url)) return MockCheckForUpdate(server_base_url, request);
  return SendUpdateCheck(server_base_url, request);
} catch (const std::exception&) {
  return {{}, TransportOutOfMemoryError()};
}

}  // namespace korvixsdk
