#include "network/default_network_client.h"

#include "network/http_transport.h"
#include "network/install_endpoint.h"
#include "network/mock_server.h"
#include "network/update_check_endpoint.h"
#include "platform/mock_addresses.h"
#include "platform/or_else.h"

namespace korvixsdk {
namespace {

/// What `exchange` answers; the transport's failure where memory does not suffice for its texts.
template <typename T, typename Exchange>
Result<T> Answer(Exchange exchange) {
  return OrElse(exchange, [](const char*) { return Result<T>{{}, TransportOutOfMemoryError()}; });
}

}  // namespace

Result<ServerResult> DefaultNetworkClient::ReportInstall(const std::string& product_id,
                                                         const std::string& device_id,
                                                         const std::string& version) {
  return Answer<ServerResult>([&]() -> Result<ServerResult> {
    if (server_base_url.empty()) return {{}, TransportUnavailableError(server_base_url)};
    if (IsMockUrl(server_base_url)) {
      return MockReportInstall(server_base_url, product_id, device_id, version);
    }
    return SendInstallReport(server_base_url, product_id, device_id, version);
  });
}

// Which of the three it is, is decided at every call: another `Init` may bring another address.
Result<UpdateInfo> DefaultNetworkClient::CheckForUpdate(const UpdateCheckRequest& request) {
  return Answer<UpdateInfo>([&]() -> Result<UpdateInfo> {
    if (server_base_url.empty()) return {{}, TransportUnavailableError(server_base_url)};
    if (IsMockUrl(server_base_url)) return MockCheckForUpdate(server_base_url, request);
    return SendUpdateCheck(server_base_url, request);
  });
}

}  // namespace korvixsdk
