#ifndef KORVIXSDK_NETWORK_URL_H_
#define KORVIXSDK_NETWORK_URL_H_

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "korvixsdk/result.h"
#include "network/curl_handle.h"

namespace korvixsdk {

/// Key and value, in the order in which they are sent. The texts are the caller's.
using QueryParameters = std::vector<std::pair<std::string_view, std::string_view>>;

/// Joins base address, path and query. One slash is dropped where the base ends in one and the path
/// begins with one; nothing else is normalised. Values are percent-encoded (RFC 3986: all but the
/// unreserved characters), keys are not.
///
/// \param handle which escapes: the exchange's own, as a second one costs more than all the rest;
///   null is an error.
/// \return the URL, or kNetworkError "Failed to initialize libcurl" or
///   "Failed to URL-encode query parameter" (also where memory does not suffice for the URL).
Result<std::string> BuildUrl(const CurlHandle& handle, const std::string& server_base_url,
                             std::string_view path, const QueryParameters& params);

/// The same with a handle of its own.
inline Result<std::string> BuildUrl(const std::string& server_base_url, std::string_view path,
                                    const QueryParameters& params) {
  return BuildUrl(MakeCurlHandle(), server_base_url, path, params);
}

}  // namespace korvixsdk

#endif  // KORVIXSDK_NETWORK_URL_H_
