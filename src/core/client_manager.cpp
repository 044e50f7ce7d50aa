#include "korvixsdk/client_manager.h"

#include <utility>

#include "core/default_client_service.h"
#include "platform/fail.h"
#include "platform/or_else.h"

namespace korvixsdk {
namespace {

Failure NotInitialized() { return Fail(kInvalidState, "ClientManager is not initialized"); }

}  // namespace

ClientManager::ClientManager() : sdk_(std::make_unique<KorvixSDK>()) {}

ClientManager::~ClientManager() = default;

Error ClientManager::Init(const ClientManagerConfig& config) {
  // A new facade each time, so that nothing of an earlier configuration lives on. It takes the old
  // one's place only when it works, but the old one is not used again either: whoever asked for
  // another configuration must not go on with the last one unawares.
  initialized_ = false;
  Error error = OrElse(
      [&] {
        SDKConfig sdk_config = config.sdk_config;
        auto sdk = std::make_unique<KorvixSDK>();
        Error outcome = sdk->Init(sdk_config);
        if (!outcome.ok()) return outcome;
        sdk_ = std::move(sdk);
        config_ = std::move(sdk_config);
        return Error{};
      },
      [](const char*) { return InitOutOfMemoryError(); });
  // Nothing reads these two; they are part of the class's layout, and a debugger shows them.
  last_error_code_ = error.code;
  last_error_message_ = OrElse([&] { return error.message; }, std::string());
  initialized_ = error.ok();
  return error;
}

Result<std::string> ClientManager::GetDeviceId() {
  return initialized_ && sdk_ ? sdk_->GetDeviceId() : NotInitialized();
}

Result<ServerResult> ClientManager::ReportInstall() {
  return initialized_ && sdk_ ? sdk_->ReportInstall() : NotInitialized();
}

Result<UpdateInfo> ClientManager::CheckForUpdateLinkOnly() {
  return initialized_ && sdk_ ? sdk_->CheckForUpdate() : NotInitialized();
}

}  // namespace korvixsdk
