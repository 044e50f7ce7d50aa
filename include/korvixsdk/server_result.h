#ifndef KORVIXSDK_SERVER_RESULT_H_
#define KORVIXSDK_SERVER_RESULT_H_

/// \file
/// \brief `ServerResult`: the service's answer to an install report.

#include <cstdint>
#include <string>

namespace korvixsdk {

/// The service's answer to an install report. If the service rejects the report, the call itself
/// succeeds, and `success` is false.
struct ServerResult {
  /// The service accepted the report.
  bool success = false;
  /// The service's own status code: 400 and 401 mean accepted. Not an HTTP status.
  std::int32_t code = 0;
  /// The service's text, or a default text if it sent none.
  std::string message{};
  /// The flag with which the service accepts.
  bool allowed = false;
  /// The time of the service, in seconds since 1970-01-01 UTC, or of this machine if the service
  /// sent none.
  std::int64_t server_time = 0;
};

}  // namespace korvixsdk

#endif  // KORVIXSDK_SERVER_RESULT_H_
