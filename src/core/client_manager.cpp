#include "korvixsdk/client_manager.h"

#include <exception>
#include <utility>

namespace korvixsdk {
namespace {

template <typename T>
Result<T> NotInitialized() {
  return {{}, Error{kInvalidState, "ClientManager is not initialized"}};
}

}  // namespace

ClientManager::ClientManager() : sdk_(std::make_unique<KorvixSDK>()) {}

ClientManager::~ClientManager() = default;

Error ClientManager::Init(const ClientManagerConfig& config) try {
  initialized_ = false;
  SDKConfig sdk_config = config.sdk_config;
  auto sdk = std::make_unique<KorvixSDK>();
  Error error = sdk->Init(sdk_config);
  last_error_code_ = error.code;
  last_error_message_ = error.message;
  if (!error.ok()) return error;

  sdk_ = std::move(sdk);
  config_ = std::move(sdk_config);
  last_error_message_.clear();
  initialized_ = true;
  return Error{};
} catch (const std::exception&) {
  last_error_code_ = kInvalidState;
  last_error_message_ = "Failed to create cache directory: ";
  return Error{last_error_code_, last_error_message_};
}

Result<std::string> ClientManager::GetDeviceId() {
  return initialized_ && sdk_ ? sdk_->GetDeviceId() : NotInitialized<std::string>();
}

Result<ServerResult> ClientManager::ReportInstall() {
  return initialized_ && sdk_ ? sdk_->ReportInstall() : NotInitialized<ServerResult>();
}

Result<UpdateInfo> ClientManager::CheckForUpdateLinkOnly() {
  return initialized_ && sdk_ ? sdk_->CheckForUpdate() : NotInitialized<UpdateInfo>();
}

}  // namespace korvixsdk
