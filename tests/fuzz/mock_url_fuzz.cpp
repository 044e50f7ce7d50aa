// The choice of the mock server's mode, and what follows from it for both requests.
// Input: base address, product, version, device.

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "fuzz/check.h"
#include "fuzz/fields.h"
#include "network/mock_server.h"
#include "platform/mock_addresses.h"

namespace korvixsdk::test {
namespace {

bool Holds(const std::string& text, const std::string& word) {
  for (std::size_t at = 0; at + word.size() <= text.size(); ++at) {
    if (text.substr(at, word.size()) == word) return true;
  }
  return false;
}

MockMode ExpectedMode(const std::string& url) {
  return Holds(url, "offline")   ? MockMode::kOffline
         : Holds(url, "reject")  ? MockMode::kReject
         : Holds(url, "invalid") ? MockMode::kInvalid
                                 : MockMode::kNormal;
}

/// What both requests answer in this mode, whatever they hold.
ErrorCode ExpectedCode(MockMode mode) {
  if (mode == MockMode::kOffline) return kNetworkError;
  if (mode == MockMode::kInvalid) return kInvalidResponse;
  return kOk;
}

void CheckInstall(const std::string& url, MockMode mode, const std::string& product,
                  const std::string& device, const std::string& version) {
  const Result<ServerResult> result = MockReportInstall(url, product, device, version);
  const bool complete = !(product.empty() || device.empty() || version.empty());
  const bool accepted = mode == MockMode::kNormal && complete;
  Check(result.error.code == ExpectedCode(mode), "install report: code of the error");
  Check(result.value.success == accepted && result.value.allowed == accepted,
        "install report: accepted");
  const std::int32_t service_code = !result.ok() ? 0 : mode == MockMode::kReject ? 202 : 400;
  Check(result.value.code == service_code, "install report: code of the service");
}

void CheckUpdateCheck(const std::string& url, MockMode mode, const UpdateCheckRequest& request) {
  const Result<UpdateInfo> result = MockCheckForUpdate(url, request);
  const bool complete = !(request.product_id.empty() || request.version.empty());
  const ErrorCode failure = ExpectedCode(mode);
  Check(result.error.code == (failure == kOk && !complete ? kInvalidArgument : failure),
        "update check: code of the error");
  Check(result.value.has_update == result.ok(), "update check: an offer unless it fails");
  Check(result.value.min_supported_version == (result.ok() ? request.version : ""),
        "update check: the request's version as minimum");
}

}  // namespace
}  // namespace korvixsdk::test

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace korvixsdk;
  using namespace korvixsdk::test;
  const std::vector<std::string> fields = SplitExactly(data, size, 4);
  const std::string& url = fields[0];
  const MockMode mode = ExpectedMode(url);
  Check(IsMockUrl(url) == (url.substr(0, 7) == "mock://"), "a mock address or not");
  Check(ClassifyMockUrl(url) == mode, "the mode");
  CheckInstall(url, mode, fields[1], fields[3], fields[2]);
  CheckUpdateCheck(url, mode, {fields[1], fields[2], fields[3]});
  return 0;
}
