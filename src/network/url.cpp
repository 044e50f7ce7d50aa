#include "network/url.h"

#include <climits>
#include <memory>

#include "platform/fail.h"
#include "platform/or_else.h"

namespace korvixsdk {
namespace {

constexpr char kNotEncoded[] = "Failed to URL-encode query parameter";

struct CurlFree {
  void operator()(char* text) const { curl_free(text); }
};
using CurlText = std::unique_ptr<char, CurlFree>;

/// The length is given, so that zero bytes are encoded too; libcurl counts in int.
CurlText PercentEncode(const CurlHandle& handle, std::string_view value) {
  if (value.size() > INT_MAX) return nullptr;
  return CurlText(curl_easy_escape(handle.get(), value.data(), static_cast<int>(value.size())));
}

Result<std::string> Assemble(const CurlHandle& handle, const std::string& server_base_url,
                             std::string_view path, const QueryParameters& params) {
  std::size_t length = server_base_url.size() + path.size();
  for (const auto& [key, value] : params) length += key.size() + value.size() + 2;
  std::string url;
  url.reserve(length);
  url = server_base_url;
  if (!url.empty() && url.back() == '/' && !path.empty() && path.front() == '/') url.pop_back();
  url += path;

  char separator = '?';
  for (const auto& [key, value] : params) {
    url += separator;
    url += key;  // The library's own, of characters that need no escape.
    url += '=';
    separator = '&';
    if (value.empty()) continue;  // To libcurl a length of zero means "up to the zero byte".
    const CurlText encoded = PercentEncode(handle, value);
    if (!encoded) return Fail(kNetworkError, kNotEncoded);
    url += encoded.get();
  }
  return {std::move(url), Error{}};
}

}  // namespace

Result<std::string> BuildUrl(const CurlHandle& handle, const std::string& server_base_url,
                             std::string_view path, const QueryParameters& params) {
  if (!handle) return Fail(kNetworkError, "Failed to initialize libcurl");
  return OrElse([&] { return Assemble(handle, server_base_url, path, params); },
                [](const char*) { return Fail(kNetworkError, kNotEncoded); });
}

}  // namespace korvixsdk
