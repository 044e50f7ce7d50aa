#ifndef KORVIXSDK_SERVICE_REGISTRY_H_
#define KORVIXSDK_SERVICE_REGISTRY_H_

/// \file
/// \brief `ServiceRegistry`: one shared pointer for each service.

#include <memory>

#include "korvixsdk/client_service.h"
#include "korvixsdk/crypto_provider.h"
#include "korvixsdk/device_id_provider.h"
#include "korvixsdk/file_system_provider.h"
#include "korvixsdk/logger.h"
#include "korvixsdk/network_client.h"
#include "korvixsdk/time_provider.h"
#include "korvixsdk/update_package_service.h"
#include "korvixsdk/update_policy.h"

namespace korvixsdk {

/// The services that the library works with; null means that one is not set.
///
/// To replace services, make a registry, set those members, and put it into `SDKConfig::services`.
/// `KorvixSDK::Init` fills the other members with the defaults. It never replaces a member that is
/// set, except `logger` if `SDKConfig::logger` is set, too.
///
/// Ownership: the default core service and the default package service hold shared pointers to the
/// registry, and the registry holds them. So once it is filled, a registry lives until the process
/// ends, or until the host resets `client_service` and `update_package_service`.
///
/// Give each facade a registry of its own: with the same registry two facades have the same core
/// service, and so the same configuration and the same last error.
///
/// Exceptions: a service should return its failures and not throw. If it throws all the same, the
/// exception does not leave the library. The operation fails with `kInvalidState`; the message is
/// the service's name ("File system service", "Crypto provider", "Device id provider",
/// "Network client", "Update policy", "Update package service" or "Client service") and
/// " threw an exception", followed by ": " and its `what()` if it is a std::exception. It is kept
/// and logged like every other failure of that operation. Two cases are different: an update check
/// goes on without an identifier, as always when the provider fails, and if the logger throws, only
/// that line is lost.
///
/// Threads: there are no locks. Do not change a registry while a facade that uses it is in a call.
struct ServiceRegistry {
  /// Default: drops every line.
  std::shared_ptr<ILogger> logger{};
  /// Default: the system clock. Must be set, but is never called.
  std::shared_ptr<ITimeProvider> time_provider{};
  /// Default: the file system.
  std::shared_ptr<IFileSystemProvider> file_system{};
  /// Default: the operating system's SHA-256.
  std::shared_ptr<ICryptoProvider> crypto{};
  /// Default: machine GUID and computer name, with a file as fallback.
  std::shared_ptr<IDeviceIdProvider> device_id_provider{};
  /// Default: libcurl, or the mock server for "mock://" addresses.
  std::shared_ptr<INetworkClient> network_client{};
  /// Default: numeric comparison of dotted versions.
  std::shared_ptr<IUpdatePolicy> update_policy{};
  /// Default: download with libcurl, SHA-256 check, start of the updater.
  std::shared_ptr<IUpdatePackageService> update_package_service{};
  /// Default: the core service, which is made last and uses this registry.
  std::shared_ptr<IClientService> client_service{};
};

}  // namespace korvixsdk

#endif  // KORVIXSDK_SERVICE_REGISTRY_H_
