#ifndef KORVIXSDK_SERVER_RESULT_H_
#define KORVIXSDK_SERVER_RESULT_H_

/// \file
/// \brief `ServerResult`: the service's answer to an install report.

#include <cstdint>
#include <string>

namespace korvixsdk {

/// The service's answer to an install report. A rejection by the service is a successful call whose
/// `success` is false.
struct ServerResult {
  /// The service accepted the report.
  bool success = false;
  /// The service's own status code: 400 and 401 mean accepted. Not an HTTP status.
  std::int32_t code = 0;
  /// The service's text, or a default text where it sent none.
  std::string message{};
  /// The service's accept flag.
  bool allowed = false;
  /// The service's clock, seconds since 1970-01-01 UTC; the local clock where it sent none.
  std::int64_t server_time = 0;
};

}  // namespace korvixsdk

#endif  // KORVIXSDK_SERVER_RESULT_H_
