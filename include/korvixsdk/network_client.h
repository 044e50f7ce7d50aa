#ifndef KORVIXSDK_NETWORK_CLIENT_H_
#define KORVIXSDK_NETWORK_CLIENT_H_

/// \file
/// \brief `INetworkClient`: the two requests to the vendor's service.

#include <string>

#include "korvixsdk/result.h"
#include "korvixsdk/server_result.h"
#include "korvixsdk/update_info.h"

namespace korvixsdk {

/// What an update check sends.
struct UpdateCheckRequest {
  /// `SDKConfig::product_id`.
  std::string product_id{};
  /// `SDKConfig::version`.
  std::string version{};
  /// The device identifier; empty when none could be obtained.
  std::string device_id{};
};

/// Talks to the service. The default implementation sends one HTTP GET with libcurl, or answers
/// from the built-in mock server when the base address begins with "mock://".
///
/// The default implementation opens and closes one connection a call, retries nothing, follows
/// redirects, and blocks for at most about 10 seconds to connect and 20 seconds in all. One thing
/// may last longer: libcurl looks the service's name up in a thread of its own and waits for its
/// end, so that a call whose name servers do not answer ends when the system's resolver gives up.
/// Two calls may run at once in different threads while its base address is not changed.
/// Exceptions: see `ServiceRegistry`.
///
/// Failures of both operations of the default implementation, besides those named there:
/// `kNetworkError` with "Network client is not configured with server_base_url",
/// "Failed to initialize libcurl", "Failed to URL-encode query parameter",
/// "HTTP request failed: " + libcurl's text, "HTTP status is not successful: " + status, or
/// "Network request failed because the transport is unavailable" (mock server);
/// `kInvalidResponse` with "HTTP response body is empty".
class INetworkClient {
 public:
  virtual ~INetworkClient() = default;

  /// Tells the service that the product is installed on this device.
  /// \return the service's answer, be it acceptance or rejection; or `kInvalidResponse` with
  ///   "invalid JSON or install response schema" or "Mock install response is invalid".
  virtual Result<ServerResult> ReportInstall(const std::string& product_id,
                                             const std::string& device_id,
                                             const std::string& version) = 0;

  /// Asks the service for its current offer. Whether the offered version is newer than the host's
  /// is not decided here. A body that is not understood is a success without an offer.
  /// \return the offer; or, from the mock server, `kInvalidArgument` with
  ///   "Mock update request is missing required fields" or `kInvalidResponse` with
  ///   "Mock update response is invalid".
  virtual Result<UpdateInfo> CheckForUpdate(const UpdateCheckRequest& request) = 0;
};

}  // namespace korvixsdk

#endif  // KORVIXSDK_NETWORK_CLIENT_H_
