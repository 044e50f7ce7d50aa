#include "network/update_check_endpoint.h"

#include <utility>

#include "network/http_transport.h"
#include "network/json_member_lookup.h"
#include "network/service_code.h"

namespace korvixsdk {
namespace {

constexpr char kUpdateCheckPath[] = "/API/v2/sdk/update/check/";

std::string TextMember(const std::string& body, const char* key) {
  return FindJsonMember(body, key).value_or(std::string());
}

}  // namespace

Result<UpdateInfo> SendUpdateCheck(const std::string& server_base_url,
                                   const UpdateCheckRequest& request) {
  // The order differs from the install report's, where the device comes before the version.
  HttpResponse response = PerformGet(server_base_url, kUpdateCheckPath,
                                     {{"product_id", request.product_id},
                                      {"version", request.version},
                                      {"device_id", request.device_id}});
  if (!response.error.ok()) return {{}, std::move(response.error)};
  return {ReadUpdateReply(response.body), Error{}};
}

UpdateInfo ReadUpdateReply(const std::string& body) {
  UpdateInfo info;
  info.force_update = IsTrueToken(TextMember(body, "force_update"));
  info.latest_version = TextMember(body, "version");
  info.min_supported_version = TextMember(body, "min_supported_version");
  info.publish_time = TextMember(body, "publish_time");
  info.update_content = TextMember(body, "update_content");
  info.download_url = TextMember(body, "download_url");
  info.sha256 = TextMember(body, "sha256");
  const std::int32_t code = FindJsonInt(body, "code").value_or(kServiceAccepted);
  std::string message = TextMember(body, "msg");

  if (code == kServiceAccepted) {
    // A message beside an offer is dropped: it is only reported for rejections.
    info.has_update = !info.latest_version.empty();
  } else {
    info.message = message.empty() ? "Server rejected update request" : std::move(message);
  }
  return info;
}

}  // namespace korvixsdk
