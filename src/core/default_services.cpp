#include "core/default_services.h"

#include <string>
#include <utility>

#include "core/default_client_service.h"
#include "core/default_update_policy.h"
#include "network/default_network_client.h"
#include "platform/default_crypto_provider.h"
#include "platform/default_file_system_provider.h"
#include "platform/null_logger.h"
#include "platform/placeholder_device_id_provider.h"
#include "platform/system_time_provider.h"
#include "update/default_update_package_service.h"

namespace korvixsdk {
namespace {

/// Object and reference counts in one allocation.
template <typename Default, typename Interface, typename... Arguments>
void FillMember(std::shared_ptr<Interface>& member, Arguments&&... arguments) {
  if (!member) member = std::make_shared<Default>(std::forward<Arguments>(arguments)...);
}

}  // namespace

void FillDefaultServices(const std::shared_ptr<ServiceRegistry>& services) {
  if (!services) return;
  FillMember<NullLogger>(services->logger);
  FillMember<SystemTimeProvider>(services->time_provider);
  FillMember<DefaultFileSystemProvider>(services->file_system);
  FillMember<DefaultCryptoProvider>(services->crypto);
  FillMember<PlaceholderDeviceIdProvider>(services->device_id_provider, std::string());
  FillMember<DefaultNetworkClient>(services->network_client);
  FillMember<DefaultUpdatePolicy>(services->update_policy);
  // These two get the registry and not its members, so that they use what stands there when they
  // are called. They keep it alive, and it keeps them.
  FillMember<DefaultUpdatePackageService>(services->update_package_service, services);
  FillMember<DefaultClientService>(services->client_service, services);
}

}  // namespace korvixsdk
