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
  /// The device identifier; empty if there is none.
  std::string device_id{};
};

/// Talks to the service. The default implementation sends one HTTP GET with libcurl. If the base
/// address begins with "mock://", the built-in mock server answers instead.
///
/// The default implementation opens a new connection for each call and closes it afterwards. It
/// follows redirects and never tries again. It takes about 10 seconds at most to connect, and 20
/// seconds in all. Only one thing may last longer: libcurl looks up the service's name in a thread
/// of its own and waits for it, so if the name servers do not answer, the call returns when the
/// system's resolver gives up. Two threads may call it at the same time, as long as nobody changes
/// its base address. Exceptions: see `ServiceRegistry`.
///
/// Both operations of the default implementation may fail in these ways, too:
/// `kNetworkError` with "Network client is not configured with server_base_url",
/// "Failed to initialize libcurl", "Failed to URL-encode query parameter",
/// "HTTP request failed: " + libcurl's text, "HTTP status is not successful: " + status, or
/// "Network request failed because the transport is unavailable" (mock server);
/// `kInvalidResponse` with "HTTP response body is empty".
class INetworkClient {
 public:
  virtual ~INetworkClient() = default;

  /// Tells the service that the product is installed on this device.
  /// \return the service's answer, also if it is a rejection; or `kInvalidResponse` with
  ///   "invalid JSON or install response schema" or "Mock install response is invalid".
  virtual Result<ServerResult> ReportInstall(const std::string& product_id,
                                             const std::string& device_id,
                                             const std::string& version) = 0;

  /// Asks the service what it offers. It is not decided here whether that is newer than the host. A
  /// reply that cannot be understood is a success without an offer.
  /// \return the offer; or, from the mock server, `kInvalidArgument` with
  ///   "Mock update request is missing required fields" or `kInvalidResponse` with
  ///   "Mock update response is invalid".
  virtual Result<UpdateInfo> CheckForUpdate(const UpdateCheckRequest& request) = 0;
};

}  // namespace korvixsdk

#endif  // KORVIXSDK_NETWORK_CLIENT_H_
