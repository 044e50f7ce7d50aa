#include "curl_network_client.h"

#include <curl/curl.h>

#include <ctime>
#include <exception>
#include <limits>
#include <memory>

namespace custom_network_client {
namespace {

using korvixsdk::Error;
using korvixsdk::Result;
using korvixsdk::ServerResult;
using korvixsdk::UpdateInfo;
using nlohmann::json;

constexpr long kConnectTimeoutSeconds = 10;
constexpr long kTimeoutSeconds = 20;
/// Whoever answers instead of the service shall not fill the memory.
constexpr std::size_t kLargestReply = 1 << 20;

/// The service's own codes; no HTTP statuses.
constexpr std::int32_t kAccepted = 400;
constexpr std::int32_t kInstallAlsoAccepted = 401;

struct CurlCleanup {
  void operator()(CURL* handle) const { curl_easy_cleanup(handle); }
};
using CurlHandle = std::unique_ptr<CURL, CurlCleanup>;

struct CurlFree {
  void operator()(char* text) const { curl_free(text); }
};

/// No exception may cross libcurl's frames. Any other answer than `count` ends the transfer.
std::size_t CollectBody(char* data, std::size_t, std::size_t count, void* context) noexcept {
  std::string& body = *static_cast<std::string*>(context);
  if (count > kLargestReply - body.size()) return 0;
  try {
    body.append(data, count);
    return count;
  } catch (const std::exception&) {
    return 0;
  }
}

Error OutOfMemory() {
  return {korvixsdk::kNetworkError,
          std::string("HTTP request failed: ") + curl_easy_strerror(CURLE_OUT_OF_MEMORY)};
}

/// Sets options until libcurl refuses one: a request without its pin must not be sent.
class Options {
 public:
  explicit Options(CURL* handle) : handle_(handle) {}

  template <typename T>
  Options& Set(CURLoption option, T value) {
    if (result_ == CURLE_OK) result_ = curl_easy_setopt(handle_, option, value);
    return *this;
  }
  Options& SetUnlessEmpty(CURLoption option, const std::string& value) {
    return value.empty() ? *this : Set(option, value.c_str());
  }
  CURLcode result() const { return result_; }

 private:
  CURL* handle_;
  CURLcode result_ = CURLE_OK;
};

CURLcode Prepare(CURL* handle, const Connection& connection, const std::string& url,
                 std::string& body) {
  // A redirect to http: would get around the pin, which has a meaning for TLS only.
  const char* const protocols = connection.pinned_key.empty() ? "http,https" : "https";
  Options options(handle);
  options.Set(CURLOPT_URL, url.c_str())
      .Set(CURLOPT_PROTOCOLS_STR, protocols)
      .Set(CURLOPT_FOLLOWLOCATION, 1L)
      .Set(CURLOPT_NOSIGNAL, 1L)
      .Set(CURLOPT_CONNECTTIMEOUT, kConnectTimeoutSeconds)
      .Set(CURLOPT_TIMEOUT, kTimeoutSeconds)
      .Set(CURLOPT_WRITEFUNCTION, &CollectBody)
      .Set(CURLOPT_WRITEDATA, &body)
      .SetUnlessEmpty(CURLOPT_PROXY, connection.proxy)
      .SetUnlessEmpty(CURLOPT_PINNEDPUBLICKEY, connection.pinned_key)
      .SetUnlessEmpty(CURLOPT_CAINFO, connection.ca_file);
  // The environment's no_proxy must not lead around a proxy that was asked for.
  if (!connection.proxy.empty()) options.Set(CURLOPT_NOPROXY, "");
  // On Windows a list of revoked certificates is asked for, which authorities of one's own seldom
  // have.
  if (!connection.ca_file.empty()) {
    options.Set(CURLOPT_SSL_OPTIONS, long{CURLSSLOPT_REVOKE_BEST_EFFORT});
  }
  return options.result();
}

/// One slash between the address and the path, whether or not the address ends in one. Empty when
/// a value cannot be encoded.
std::string BuildUrl(CURL* handle, std::string url, const char* path, const Query& query) {
  if (url.back() == '/') url.pop_back();
  url += path;
  char separator = '?';
  for (const auto& [name, value] : query) {
    const std::unique_ptr<char, CurlFree> encoded(curl_easy_escape(handle, value.c_str(), 0));
    if (!encoded) return "";
    url.append(1, separator).append(name).append("=").append(encoded.get());
    separator = '&';
  }
  return url;
}

Result<json> Failure(const std::string& message) {
  return {{}, {korvixsdk::kNetworkError, message}};
}

/// A missing member, or one of another type, counts as empty.
std::string TextMember(const json& object, const char* name) {
  const auto member = object.find(name);
  return member != object.end() && member->is_string() ? member->get<std::string>() : "";
}

bool FlagMember(const json& object, const char* name, bool fallback) {
  const auto member = object.find(name);
  return member != object.end() && member->is_boolean() ? member->get<bool>() : fallback;
}

std::int64_t NumberMember(const json& object, const char* name, std::int64_t fallback) {
  const auto member = object.find(name);
  return member != object.end() && member->is_number_integer() ? member->get<std::int64_t>()
                                                               : fallback;
}

}  // namespace

Result<json> CurlNetworkClient::Get(const char* path, const Query& query) const {
  if (connection_.server_base_url.empty()) {
    return Failure("Network client is not configured with server_base_url");
  }
  const CurlHandle handle(curl_easy_init());
  if (!handle) return Failure("Failed to initialize libcurl");
  const std::string url = BuildUrl(handle.get(), connection_.server_base_url, path, query);
  if (url.empty()) return Failure("Failed to URL-encode query parameter");

  std::string body;
  CURLcode result = Prepare(handle.get(), connection_, url, body);
  if (result == CURLE_OK) result = curl_easy_perform(handle.get());
  if (result != CURLE_OK) {
    return Failure(std::string("HTTP request failed: ") + curl_easy_strerror(result));
  }
  long status = 0;
  curl_easy_getinfo(handle.get(), CURLINFO_RESPONSE_CODE, &status);
  if (status < 200 || status > 299) {
    return Failure("HTTP status is not successful: " + std::to_string(status));
  }
  if (body.empty()) return {{}, {korvixsdk::kInvalidResponse, "HTTP response body is empty"}};
  json reply = json::parse(body, nullptr, /*allow_exceptions=*/false);
  return {reply.is_object() ? std::move(reply) : json(), {}};
}

Result<ServerResult> CurlNetworkClient::ReportInstall(const std::string& product_id,
                                                      const std::string& device_id,
                                                      const std::string& version) try {
  const Result<json> reply =
      Get("/API/v2/sdk/install/",
          {{"product_id", product_id}, {"device_id", device_id}, {"version", version}});
  if (!reply.ok()) return {{}, reply.error};
  const json& object = reply.value;
  const std::int64_t code = NumberMember(object, "code", 0);
  const bool allowed = FlagMember(object, "allowed", false);
  const bool accepted = code == kAccepted || code == kInstallAlsoAccepted;
  // Code and flag must say the same, or the reply is not one of this service.
  if (code <= 0 || code > std::numeric_limits<std::int32_t>::max() || !object.contains("allowed") ||
      allowed != accepted) {
    return {{}, {korvixsdk::kInvalidResponse, "invalid JSON or install response schema"}};
  }
  ServerResult result;
  result.success = FlagMember(object, "success", allowed);
  result.code = static_cast<std::int32_t>(code);
  result.allowed = allowed;
  result.message = TextMember(object, "msg");
  if (result.message.empty()) {
    result.message = result.success ? "Success" : "Server rejected install tracking request";
  }
  result.server_time = NumberMember(object, "server_time", std::time(nullptr));
  return {std::move(result), {}};
} catch (const std::exception&) {
  // The library expects that no service throws.
  return {{}, OutOfMemory()};
}

Result<UpdateInfo> CurlNetworkClient::CheckForUpdate(
    const korvixsdk::UpdateCheckRequest& request) try {
  const Result<json> reply = Get("/API/v2/sdk/update/check/", {{"product_id", request.product_id},
                                                               {"version", request.version},
                                                               {"device_id", request.device_id}});
  if (!reply.ok()) return {{}, reply.error};
  const json& object = reply.value;
  const std::int64_t code = NumberMember(object, "code", 0);
  if (code == 0) {
    return {{}, {korvixsdk::kInvalidResponse, "invalid JSON or update response schema"}};
  }
  UpdateInfo info;
  info.force_update = FlagMember(object, "force_update", false);
  info.latest_version = TextMember(object, "version");
  info.min_supported_version = TextMember(object, "min_supported_version");
  info.publish_time = TextMember(object, "publish_time");
  info.update_content = TextMember(object, "update_content");
  info.download_url = TextMember(object, "download_url");
  info.sha256 = TextMember(object, "sha256");
  // Whether the version is newer than the host's is for the library to say.
  info.has_update = code == kAccepted && !info.latest_version.empty();
  if (code != kAccepted) {
    info.message = TextMember(object, "msg");
    if (info.message.empty()) info.message = "Server rejected update request";
  }
  return {std::move(info), {}};
} catch (const std::exception&) {
  return {{}, OutOfMemory()};
}

}  // namespace custom_network_client
