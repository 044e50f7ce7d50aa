#include "network/install_endpoint.h"

#include <utility>

#include "network/http_transport.h"
#include "network/json_reader.h"
#include "network/service_code.h"
#include "network/wall_clock.h"
#include "platform/fail.h"

namespace korvixsdk {
namespace {

constexpr char kInstallPath[] = "/API/v2/sdk/install/";

/// What is reported is counted, so a reply that contradicts itself is none. The accept flag must
/// say the same three times: as "allowed", as code and, where given, as "success".
bool IsConsistent(const ResponseEnvelope& envelope) {
  if (!envelope.accepted || !envelope.code || !envelope.allowed) return false;
  const bool accepting_code =
      *envelope.code == kServiceAccepted || *envelope.code == kServiceAlsoAccepted;
  if (*envelope.allowed != accepting_code) return false;
  return !envelope.success || *envelope.success == *envelope.allowed;
}

/// Hosts show the text, so there is always one.
const char* DefaultMessage(bool success) {
  return success ? "Success" : "Server rejected install tracking request";
}

}  // namespace

Result<ServerResult> SendInstallReport(const std::string& server_base_url,
                                       const std::string& product_id, const std::string& device_id,
                                       const std::string& version) {
  HttpResponse response =
      PerformGet(server_base_url, kInstallPath,
                 {{"product_id", product_id}, {"device_id", device_id}, {"version", version}});
  if (!response.error.ok()) return {{}, std::move(response.error)};
  return ReadInstallReply(response.body);
}

Result<ServerResult> ReadInstallReply(const std::string& body) {
  // A rejection gets through here: the service has understood, and its answer is the result.
  ResponseEnvelope envelope = ReadResponseEnvelope(body);
  if (!IsConsistent(envelope)) {
    return Fail(kInvalidResponse, "invalid JSON or install response schema");
  }
  ServerResult result;
  result.code = *envelope.code;
  result.allowed = *envelope.allowed;
  result.success = envelope.success.value_or(result.allowed);
  result.message = std::move(envelope.msg).value_or(std::string());
  if (result.message.empty()) result.message = DefaultMessage(result.success);
  result.server_time = envelope.server_time ? *envelope.server_time : WallClockSeconds();
  return {std::move(result), Error{}};
}

}  // namespace korvixsdk
