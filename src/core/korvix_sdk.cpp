#include "korvixsdk/korvix_sdk.h"

#include <utility>

#include "core/default_client_service.h"
#include "core/default_services.h"
#include "korvixsdk/sdk_factory.h"
#include "platform/or_else.h"
#include "platform/service_call.h"

namespace korvixsdk {
namespace {

constexpr char kClientService[] = "Client service";

}  // namespace

KorvixSDK::KorvixSDK()
    : services_(SdkFactory::CreateDefaultServices()), service_(services_->client_service) {}

// A core service of the host's brings its own services, so there is no registry beside it.
KorvixSDK::KorvixSDK(std::shared_ptr<IClientService> service) : service_(std::move(service)) {
  if (service_) return;
  services_ = SdkFactory::CreateDefaultServices();
  service_ = services_->client_service;
}

KorvixSDK::~KorvixSDK() = default;
KorvixSDK::KorvixSDK(KorvixSDK&& other) noexcept = default;
KorvixSDK& KorvixSDK::operator=(KorvixSDK&& other) noexcept = default;

Error KorvixSDK::Init(const SDKConfig& config) {
  const Error adopted = OrElse(
      [&] {
        // A logger alone starts from a new registry, too: the services of the old one may be in use
        // elsewhere and keep the logger that they have. With neither, everything stays.
        if (config.services || config.logger) {
          services_ = config.services ? config.services : std::make_shared<ServiceRegistry>();
          if (config.logger) services_->logger = config.logger;
          FillDefaultServices(services_);
          service_ = services_->client_service;
        }
        if (!service_) {  // The facade was moved from.
          services_ = SdkFactory::CreateDefaultServices();
          service_ = services_->client_service;
        }
        return Error{};
      },
      [](const char*) { return InitOutOfMemoryError(); });
  if (!adopted.ok()) return adopted;
  return CallService(kClientService, [&] { return service_->Init(config); });
}

Result<std::string> KorvixSDK::GetDeviceId() {
  return CallService(kClientService, [this] { return service_->GetDeviceId(); });
}

Result<UpdateInfo> KorvixSDK::CheckForUpdate() {
  return CallService(kClientService, [this] { return service_->CheckForUpdate(); });
}

Result<ServerResult> KorvixSDK::ReportInstall() {
  return CallService(kClientService, [this] { return service_->ReportInstall(); });
}

Result<PreparedUpdate> KorvixSDK::PrepareUpdate(const UpdateInfo& info) {
  return CallService(kClientService, [&] { return service_->PrepareUpdate(info); });
}

Error KorvixSDK::LaunchPreparedUpdate(const PreparedUpdate& prepared,
                                      const std::string& updater_path) {
  return CallService(kClientService,
                     [&] { return service_->LaunchPreparedUpdate(prepared, updater_path); });
}

// The only operation that looks for the service: a host asks it when something went wrong.
std::string KorvixSDK::GetLastError() const {
  if (!service_) return "Client service unavailable";
  const auto ask = [this] { return Result<std::string>{service_->GetLastError(), {}}; };
  // The text, or what became of the question for it.
  Result<std::string> text = CallService(kClientService, ask);
  return text.ok() ? std::move(text.value) : std::move(text.error.message);
}

}  // namespace korvixsdk
