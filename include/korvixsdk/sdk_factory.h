#ifndef KORVIXSDK_SDK_FACTORY_H_
#define KORVIXSDK_SDK_FACTORY_H_

/// \file
/// \brief `SdkFactory`: makes the default services.

#include <memory>

#include "korvixsdk/client_service.h"
#include "korvixsdk/export.h"
#include "korvixsdk/service_registry.h"

namespace korvixsdk {

/// Makes registries and core services filled with the defaults. No state; any thread; never blocks.
class SdkFactory {
 public:
  /// A new registry in which every member holds its default object. A host decorates a default by
  /// taking it out, wrapping it, and putting the wrapper in its place. The network client is the
  /// one exception: `Init` hands the service's address only to the default client itself, so wrap
  /// that one after `Init`, and mind that a later `Init` does not change the wrapped one's address.
  KORVIXSDK_API static std::shared_ptr<ServiceRegistry> CreateDefaultServices();

  /// The core service of a new default registry. The service keeps that registry alive.
  KORVIXSDK_API static std::shared_ptr<IClientService> CreateClientService();
};

}  // namespace korvixsdk

#endif  // KORVIXSDK_SDK_FACTORY_H_
