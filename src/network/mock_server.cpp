#include "network/mock_server.h"

#include <cstdint>

#include "network/http_transport.h"
#include "network/service_code.h"
#include "network/wall_clock.h"
#include "platform/fail.h"
#include "platform/mock_addresses.h"

namespace korvixsdk {
namespace {

/// Any code but the two that accept would do.
constexpr std::int32_t kMockRejected = 202;

ServerResult InstallAnswer(bool accepted, std::int32_t code, const char* message) {
  ServerResult result;
  result.success = accepted;
  result.code = code;
  result.message = message;
  result.allowed = accepted;
  result.server_time = WallClockSeconds();
  return result;
}

/// The address is an ordinary one: a host that wants the whole flow offline puts a mock package
/// address in its place.
UpdateInfo CannedOffer(const std::string& current_version) {
  UpdateInfo info;
  info.has_update = true;
  info.latest_version = "9.9.9";
  info.min_supported_version = current_version;  // Never mandatory: no host is below its own.
  info.publish_time = "2026-01-20 10:48:48";
  info.update_content = "Mock update payload";
  info.download_url = "https://downloads.example.com/mock-update.bin";
  info.sha256 = kMockPackageSha256;
  return info;
}

}  // namespace

Result<ServerResult> MockReportInstall(const std::string& server_base_url,
                                       const std::string& product_id, const std::string& device_id,
                                       const std::string& version) {
  switch (ClassifyMockUrl(server_base_url)) {
    case MockMode::kOffline:
      return {{}, TransportUnavailableError(server_base_url)};
    case MockMode::kInvalid:
      return Fail(kInvalidResponse, "Mock install response is invalid");
    case MockMode::kReject:
      return {InstallAnswer(false, kMockRejected, "Mock server rejected install tracking request"),
              Error{}};
    case MockMode::kNormal:
      break;
  }
  const bool complete = !product_id.empty() && !device_id.empty() && !version.empty();
  // The code says accepted even when a field is missing.
  return {InstallAnswer(complete, kServiceAccepted,
                        complete ? "Success" : "Missing mock install fields"),
          Error{}};
}

Result<UpdateInfo> MockCheckForUpdate(const std::string& server_base_url,
                                      const UpdateCheckRequest& request) {
  switch (ClassifyMockUrl(server_base_url)) {
    case MockMode::kOffline:
      return {{}, TransportUnavailableError(server_base_url)};
    case MockMode::kInvalid:
      return Fail(kInvalidResponse, "Mock update response is invalid");
    case MockMode::kReject:  // Of reports only: a host tries both requests at one address.
    case MockMode::kNormal:
      break;
  }
  // An identifier is not asked for, as a check goes on without one.
  if (request.product_id.empty() || request.version.empty()) {
    return Fail(kInvalidArgument, "Mock update request is missing required fields");
  }
  return {CannedOffer(request.version), Error{}};
}

}  // namespace korvixsdk
