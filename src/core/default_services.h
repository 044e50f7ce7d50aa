#ifndef KORVIXSDK_CORE_DEFAULT_SERVICES_H_
#define KORVIXSDK_CORE_DEFAULT_SERVICES_H_

#include <memory>

#include "korvixsdk/service_registry.h"

namespace korvixsdk {

/// Sets every member of the registry that is null to its default object, the core service last and
/// from this very registry. Never replaces one that is set. A null registry is left alone.
void FillDefaultServices(const std::shared_ptr<ServiceRegistry>& services);

}  // namespace korvixsdk

#endif  // KORVIXSDK_CORE_DEFAULT_SERVICES_H_
