#ifndef KORVIXSDK_NETWORK_HTTP_TRANSPORT_H_
#define KORVIXSDK_NETWORK_HTTP_TRANSPORT_H_

#include <string>
#include <string_view>

#include "korvixsdk/error.h"
#include "network/url.h"

namespace korvixsdk {

struct HttpResponse {
  /// Byte for byte as received; empty on failure.
  std::string body{};
  Error error{};
};

/// One HTTP GET, redirects followed, on a handle of its own: at most 10 seconds to connect and 20
/// in all, but for a look-up of the name, for whose end libcurl waits. Nothing is retried, nothing
/// is kept. Any thread.
///
/// \return a body that is not empty; or `BuildUrl`'s errors; kNetworkError
///   "HTTP request failed: " + libcurl's text, "HTTP status is not successful: " + status;
///   kInvalidResponse "HTTP response body is empty".
HttpResponse PerformGet(const std::string& server_base_url, std::string_view path,
                        const QueryParameters& params);

/// What an exchange fails with when memory does not suffice for its texts.
Error TransportOutOfMemoryError();

/// Why nothing can be sent: no address is configured, or the mock server plays an unreachable one.
Error TransportUnavailableError(const std::string& server_base_url);

}  // namespace korvixsdk

#endif  // KORVIXSDK_NETWORK_HTTP_TRANSPORT_H_
