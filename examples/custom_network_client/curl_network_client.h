#ifndef KORVIXSDK_EXAMPLES_CUSTOM_NETWORK_CLIENT_CURL_NETWORK_CLIENT_H_
#define KORVIXSDK_EXAMPLES_CUSTOM_NETWORK_CLIENT_CURL_NETWORK_CLIENT_H_

#include <korvixsdk/korvixsdk.h>

#include <nlohmann/json.hpp>
#include <string>
#include <utility>
#include <vector>

namespace custom_network_client {

/// How the service is reached. Empty texts leave the matter to libcurl.
struct Connection {
  /// The service's base address. The default client reads it from `SDKConfig`; any other client
  /// must be told.
  std::string server_base_url{};
  /// "http://proxy.example.com:3128"
  std::string proxy{};
  /// The service's public key: "sha256//" and the base64 of its SHA-256, or a file that holds it.
  std::string pinned_key{};
  /// PEM file with the authorities to trust in place of the system's.
  std::string ca_file{};
};

using Query = std::vector<std::pair<const char*, std::string>>;

/// Talks to the service through a proxy and only to the holder of one private key. Codes and
/// messages are those of the default client. No state: any thread, once curl_global_init was
/// called.
class CurlNetworkClient final : public korvixsdk::INetworkClient {
 public:
  explicit CurlNetworkClient(Connection connection) : connection_(std::move(connection)) {}

  korvixsdk::Result<korvixsdk::ServerResult> ReportInstall(const std::string& product_id,
                                                           const std::string& device_id,
                                                           const std::string& version) override;

  /// Other than the default client, which takes a reply that it does not understand for one without
  /// an offer, this one fails then with `kInvalidResponse`.
  korvixsdk::Result<korvixsdk::UpdateInfo> CheckForUpdate(
      const korvixsdk::UpdateCheckRequest& request) override;

 private:
  /// The reply to a GET: a JSON object, or null where the body is none.
  korvixsdk::Result<nlohmann::json> Get(const char* path, const Query& query) const;

  Connection connection_;
};

}  // namespace custom_network_client

#endif  // KORVIXSDK_EXAMPLES_CUSTOM_NETWORK_CLIENT_CURL_NETWORK_CLIENT_H_
