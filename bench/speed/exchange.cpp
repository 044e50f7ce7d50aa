#include "exchange.h"

#include <curl/curl.h>
#include <fcntl.h>
#include <unistd.h>

#include <initializer_list>
#include <string_view>
#include <utility>

#include "require.h"

namespace speed {
namespace {

constexpr char kProduct[] = "editor";
constexpr char kVersion[] = "1.4.0";

std::size_t Collect(char* data, std::size_t size, std::size_t count, void* body) {
  static_cast<std::string*>(body)->append(data, size * count);
  return size * count;
}

std::string Fetch(CURL* handle, const std::string& url) {
  std::string body;
  long status = 0;
  curl_easy_setopt(handle, CURLOPT_URL, url.c_str());
  curl_easy_setopt(handle, CURLOPT_FOLLOWLOCATION, 1L);
  curl_easy_setopt(handle, CURLOPT_CONNECTTIMEOUT, 10L);
  curl_easy_setopt(handle, CURLOPT_TIMEOUT, 20L);
  curl_easy_setopt(handle, CURLOPT_WRITEFUNCTION, &Collect);
  curl_easy_setopt(handle, CURLOPT_WRITEDATA, &body);
  const CURLcode result = curl_easy_perform(handle);
  curl_easy_getinfo(handle, CURLINFO_RESPONSE_CODE, &status);
  curl_easy_cleanup(handle);
  Require(result == CURLE_OK && status == 200 && !body.empty(), curl_easy_strerror(result));
  return body;
}

/// Where the identifier comes from, and nothing done with it.
void AskWhoTheMachineIs() {
  char machine_id[256];
  char name[256];
  const int file = open("/etc/machine-id", O_RDONLY | O_CLOEXEC);
  const ssize_t length = read(file, machine_id, sizeof(machine_id));
  close(file);
  Require(length > 0 && gethostname(name, sizeof(name)) == 0, "machine id and name by hand");
}

using Parameters = std::initializer_list<std::pair<const char*, std::string_view>>;

std::string RequestByHand(const std::string& address, Parameters parameters) {
  CURL* const handle = curl_easy_init();
  std::string url = address;
  char separator = '?';
  for (const auto& [key, value] : parameters) {
    char* const escaped = curl_easy_escape(handle, value.data(), static_cast<int>(value.size()));
    Require(escaped != nullptr, "curl_easy_escape");
    (((url += separator) += key) += '=') += escaped;
    separator = '&';
    curl_free(escaped);
  }
  return Fetch(handle, url);
}

}  // namespace

Host::Host(const std::string& server, const std::string& folder) {
  korvixsdk::SDKConfig config;
  config.product_id = kProduct;
  config.version = kVersion;
  config.cache_dir = folder;
  config.server_base_url = server;
  const korvixsdk::Error error = sdk_.Init(config);
  Require(error.ok(), "Init: " + error.message);
  const korvixsdk::Result<std::string> id = sdk_.GetDeviceId();
  Require(id.ok(), "GetDeviceId: " + id.error.message);
  server_ = server;
  device_id_ = id.value;
  update_url_ = server + "/API/v2/sdk/update/check/?product_id=" + kProduct +
                "&version=" + kVersion + "&device_id=" + id.value;
  install_url_ = server + "/API/v2/sdk/install/?product_id=" + kProduct + "&device_id=" + id.value +
                 "&version=" + kVersion;
}

korvixsdk::UpdateInfo Host::Check() {
  korvixsdk::Result<korvixsdk::UpdateInfo> check = sdk_.CheckForUpdate();
  if (!check.ok() || !check.value.has_update) Fail("CheckForUpdate: " + check.error.message);
  return std::move(check.value);
}

korvixsdk::ServerResult Host::Report() {
  korvixsdk::Result<korvixsdk::ServerResult> report = sdk_.ReportInstall();
  if (!report.ok() || !report.value.success) Fail("ReportInstall: " + report.error.message);
  return std::move(report.value);
}

std::string Host::CheckByHand() const {
  AskWhoTheMachineIs();
  return RequestByHand(
      server_ + "/API/v2/sdk/update/check/",
      {{"product_id", kProduct}, {"version", kVersion}, {"device_id", device_id_}});
}

std::string Host::ReportByHand() const {
  AskWhoTheMachineIs();
  return RequestByHand(
      server_ + "/API/v2/sdk/install/",
      {{"product_id", kProduct}, {"device_id", device_id_}, {"version", kVersion}});
}

std::string FetchByHand(const std::string& url) { return Fetch(curl_easy_init(), url); }

}  // namespace speed
