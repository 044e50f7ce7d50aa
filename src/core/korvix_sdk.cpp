#include "korvixsdk/korvix_sdk.h"

#include <utility>

#include "core/default_services.h"
#include "korvixsdk/sdk_factory.h"

namespace korvixsdk {

KorvixSDK::KorvixSDK()
    : services_(SdkFactory::CreateDefaultServices()), service_(services_->client_service) {}

KorvixSDK::KorvixSDK(std::shared_ptr<IClientService> service) : service_(std::move(service)) {
  if (service_) return;
  services_ = SdkFactory::CreateDefaultServices();
  service_ = services_->client_service;
}

KorvixSDK::~KorvixSDK() = default;
KorvixSDK::KorvixSDK(KorvixSDK&& other) noexcept = default;
KorvixSDK& KorvixSDK::operator=(KorvixSDK&& other) noexcept = default;

Error KorvixSDK::Init(const SDKConfig& config) {
  if (config.services || config.logger) {
    services_ = config.services ? config.services : std::make_shared<ServiceRegistry>();
    if (config.logger) services_->logger = config.logger;
    FillDefaultServices(services_);
    service_ = services_->client_service;
  }
  if (!service_) {
    services_ = SdkFactory::CreateDefaultServices();
    service_ = services_->client_service;
  }
  return service_->Init(config);
}

Result<std::string> KorvixSDK::GetDeviceId() { return service_->GetDeviceId(); }

Result<UpdateInfo> KorvixSDK::CheckForUpdate() { return service_->CheckForUpdate(); }

Result<ServerResult> KorvixSDK::ReportInstall() { return service_->ReportInstall(); }

Result<PreparedUpdate> KorvixSDK::PrepareUpdate(const UpdateInfo& info) {
  return service_->PrepareUpdate(info);
}

Error KorvixSDK::LaunchPreparedUpdate(const PreparedUpdate& prepared,
                                      const std::string& updater_path) {
  return service_->LaunchPreparedUpdate(prepared, updater_path);
}

std::string KorvixSDK::GetLastError() const {
  return service_ ? service_->GetLastError() : "Client service unavailable";
}

}  // namespace korvixsdk
