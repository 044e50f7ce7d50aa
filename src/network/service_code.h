#ifndef KORVIXSDK_NETWORK_SERVICE_CODE_H_
#define KORVIXSDK_NETWORK_SERVICE_CODE_H_

#include <cstdint>

namespace korvixsdk {

/// The service's own status codes, which stand inside a reply's body. They share nothing with HTTP
/// statuses but the looks.
inline constexpr std::int32_t kServiceAccepted = 400;
/// Accepted too, by the install endpoint only.
inline constexpr std::int32_t kServiceAlsoAccepted = 401;

}  // namespace korvixsdk

#endif  // KORVIXSDK_NETWORK_SERVICE_CODE_H_
