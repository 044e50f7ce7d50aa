#ifndef KORVIXSDK_TOOLS_DOCTOR_EXCHANGE_H_
#define KORVIXSDK_TOOLS_DOCTOR_EXCHANGE_H_

#include <curl/curl.h>

#include <string>

namespace doctor {

/// libcurl's words for a failure, with what it knows beyond them.
struct Failure {
  CURLcode code = CURLE_OK;
  std::string text{};
};

/// A connection that was made and closed again, as far as it came.
struct Connection {
  Failure failure{};
  /// Each step's own time; negative when the step was not finished.
  double name_milliseconds = -1;
  double connect_milliseconds = -1;
  double tls_milliseconds = -1;
  /// "127.0.0.1:8080", of the proxy where there is one.
  std::string peer{};
  /// Empty when none is used; otherwise as the variable of the environment has it.
  std::string proxy{};
  std::string proxy_variable{};
  /// Not 0 when the certificate was not accepted, where the TLS library tells.
  long verify_result = 0;
};

Connection Connect(const std::string& url);

/// An HTTP GET, as the library sends it.
struct Exchange {
  Failure failure{};
  long status = 0;
  std::string body{};
  std::string content_encoding{};
  /// Of the body; -1 when none was announced.
  curl_off_t announced_length = -1;
  long redirects = 0;
  /// After the redirects.
  std::string final_url{};
  double milliseconds = 0;
};

/// \param connect_seconds 0 for libcurl's own limit.
Exchange Get(const std::string& url, long connect_seconds, long seconds);

}  // namespace doctor

#endif  // KORVIXSDK_TOOLS_DOCTOR_EXCHANGE_H_
