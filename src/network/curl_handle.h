#ifndef KORVIXSDK_NETWORK_CURL_HANDLE_H_
#define KORVIXSDK_NETWORK_CURL_HANDLE_H_

#include <curl/curl.h>

#include <memory>
#include <string>

#include "platform/or_else.h"

namespace korvixsdk {

struct CurlHandleCleanup {
  void operator()(CURL* handle) const;
};

/// A libcurl easy handle with one owner.
using CurlHandle = std::unique_ptr<CURL, CurlHandleCleanup>;

/// Null when libcurl gives none, and once the library's teardown has begun. Any thread.
CurlHandle MakeCurlHandle();

/// Sets options one after the other and stops at the first that libcurl refuses, so that no
/// transfer runs without, say, a time limit.
class CurlOptions {
 public:
  explicit CurlOptions(const CurlHandle& handle) : handle_(handle.get()) {}

  template <typename T>
  CurlOptions& Set(CURLoption option, T value) {
    if (result_ == CURLE_OK) result_ = curl_easy_setopt(handle_, option, value);
    return *this;
  }

  /// libcurl takes C strings: an address with a zero byte would silently be a shorter one.
  CurlOptions& SetUrl(const std::string& url) {
    if (url.find('\0') != std::string::npos) result_ = CURLE_URL_MALFORMAT;
    return Set(CURLOPT_URL, url.c_str());
  }

  CURLcode result() const { return result_; }

 private:
  CURL* handle_;
  CURLcode result_ = CURLE_OK;
};

/// The status of the last exchange; 0 when libcurl knows none.
inline long HttpStatus(const CurlHandle& handle) {
  long status = 0;
  curl_easy_getinfo(handle.get(), CURLINFO_RESPONSE_CODE, &status);
  return status;
}

inline bool IsSuccessStatus(long status) { return status >= 200 && status <= 299; }

/// Appends a received block for a write callback. An exception must not cross libcurl's frames:
/// when memory runs out the answer is 0, at which libcurl ends the transfer with an error.
inline std::size_t AppendBlock(const char* data, std::size_t size, std::string& body) noexcept {
  return OrElse([&] { return body.append(data, size), size; }, std::size_t{0});
}

}  // namespace korvixsdk

#endif  // KORVIXSDK_NETWORK_CURL_HANDLE_H_
