#include "network/http_transport.h"

#include <utility>

#include "network/curl_handle.h"
#include "platform/fail.h"

namespace korvixsdk {
namespace {

/// The shorter limit leaves a service that is there, but slow, half of the time for its answer.
constexpr long kConnectTimeoutSeconds = 10;
constexpr long kTimeoutSeconds = 20;

Error TransferError(CURLcode code) {
  return Fail(kNetworkError, std::string("HTTP request failed: ") + curl_easy_strerror(code));
}

std::size_t CollectBody(char* data, std::size_t size, std::size_t count, void* body) noexcept {
  if (body == nullptr) return 0;
  return AppendBlock(data, size * count, *static_cast<std::string*>(body));
}

}  // namespace

HttpResponse PerformGet(const std::string& server_base_url, std::string_view path,
                        const QueryParameters& params) {
  HttpResponse response;
  long status = 0;
  // Of the exchange only body and status are needed: connection and buffers are given back before
  // the caller reads the body.
  {
    const CurlHandle handle = MakeCurlHandle();
    Result<std::string> url = BuildUrl(handle, server_base_url, path, params);
    if (!url.ok()) return {{}, std::move(url.error)};
    // What is not named here stays as libcurl has it: certificates are verified, no header and no
    // name of a client is added.
    CURLcode result = CurlOptions(handle)
                          .SetUrl(url.value)
                          .Set(CURLOPT_FOLLOWLOCATION, 1L)
                          .Set(CURLOPT_CONNECTTIMEOUT, kConnectTimeoutSeconds)
                          .Set(CURLOPT_TIMEOUT, kTimeoutSeconds)
                          .Set(CURLOPT_WRITEFUNCTION, &CollectBody)
                          .Set(CURLOPT_WRITEDATA, &response.body)
                          .result();
    if (result == CURLE_OK) result = curl_easy_perform(handle.get());
    if (result != CURLE_OK) return {{}, TransferError(result)};
    status = HttpStatus(handle);
  }
  if (!IsSuccessStatus(status)) {
    return {{}, Fail(kNetworkError, "HTTP status is not successful: " + std::to_string(status))};
  }
  // Also with status 204: both endpoints have something to say.
  if (response.body.empty()) return {{}, Fail(kInvalidResponse, "HTTP response body is empty")};
  return response;
}

Error TransportOutOfMemoryError() { return TransferError(CURLE_OUT_OF_MEMORY); }

Error TransportUnavailableError(const std::string& server_base_url) {
  if (server_base_url.empty()) {
    return Fail(kNetworkError, "Network client is not configured with server_base_url");
  }
  return Fail(kNetworkError, "Network request failed because the transport is unavailable");
}

}  // namespace korvixsdk
