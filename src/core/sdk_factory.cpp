#include "korvixsdk/sdk_factory.h"

#include "core/default_services.h"

namespace korvixsdk {

std::shared_ptr<ServiceRegistry> SdkFactory::CreateDefaultServices() {
  auto services = std::make_shared<ServiceRegistry>();
  FillDefaultServices(services);
  return services;
}

std::shared_ptr<IClientService> SdkFactory::CreateClientService() {
  return CreateDefaultServices()->client_service;
}

}  // namespace korvixsdk
