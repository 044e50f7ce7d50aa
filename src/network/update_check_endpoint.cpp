#include "network/update_check_endpoint.h"

#include <utility>

#include "network/http_transport.h"
#include "network/json_member_lookup.h"
#include "network/service_code.h"

namespace korvixsdk {
namespace {

constexpr char kUpdateCheckPath[] = "/API/v2/sdk/update/check/";

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

// Read loosely where the install reply is read strictly: what a host of today makes of a reply must
// hold when the service has moved, nested or added members, and a reply that makes no sense is best
// taken for "no update". A strict reader would leave old hosts without updates for good.
UpdateInfo ReadUpdateReply(const std::string& body) {
  UpdateInfo info;
  std::string force_update;
  std::string code_text;
  std::string message;
  FindJsonMembers(body, {{"force_update", force_update},
                         {"version", info.latest_version},
                         {"min_supported_version", info.min_supported_version},
                         {"publish_time", info.publish_time},
                         {"update_content", info.update_content},
                         {"download_url", info.download_url},
                         {"sha256", info.sha256},
                         {"code", code_text},
                         {"msg", message}});
  info.force_update = IsTrueToken(force_update);
  // Without a code it is an offer: a loose reading goes by what is there. The same goes for a
  // rejection, which keeps the fields of an offer beside its message.
  const std::int32_t code = IntFromToken(code_text).value_or(kServiceAccepted);

  if (code == kServiceAccepted) {
    // A message beside an offer is dropped: it is only reported for rejections.
    info.has_update = !info.latest_version.empty();
  } else {
    info.message = message.empty() ? "Server rejected update request" : std::move(message);
  }
  return info;
}

}  // namespace korvixsdk
