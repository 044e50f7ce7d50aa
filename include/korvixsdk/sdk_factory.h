#ifndef KORVIXSDK_SDK_FACTORY_H_
#define KORVIXSDK_SDK_FACTORY_H_

/// \file
/// \brief `SdkFactory`: makes the default services.

#include <memory>

#include "korvixsdk/client_service.h"
#include "korvixsdk/export.h"
#include "korvixsdk/service_registry.h"

namespace korvixsdk {

/// Makes the default services. It has no state, may be called from any thread and never blocks.
class SdkFactory {
 public:
  /// Makes a new registry in which every member is the default. To change what a default does, take
  /// it out, wrap it in a service of your own, and put that into its place. The network client is
  /// different: `Init` gives the address of the service only to the default client, and not to a
  /// wrapper. So wrap it after `Init`; a later `Init` then does not change its address.
  KORVIXSDK_API static std::shared_ptr<ServiceRegistry> CreateDefaultServices();

  /// Makes a new default registry and returns its core service, which keeps the registry alive.
  KORVIXSDK_API static std::shared_ptr<IClientService> CreateClientService();
};

}  // namespace korvixsdk

#endif  // KORVIXSDK_SDK_FACTORY_H_
