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

/// The services that the library works with; null means unset.
///
/// A host that puts its own registry into `SDKConfig::services` sets the members it wants to
/// replace; `KorvixSDK::Init` fills the others with the defaults and never replaces one that is
/// set, but for `logger` when `SDKConfig::logger` is set too.
///
/// Ownership: the default core service and the default package service hold a strong reference to
/// the registry that owns them. A filled registry therefore lives until the process ends, or until
/// the host resets `client_service` and `update_package_service`.
///
/// Two facades that are given one registry share its core service, and with it configuration and
/// last error: give each its own.
///
/// Exceptions: a service answers with values and should not throw. Where one does, nothing leaves
/// the library. The operation fails with `kInvalidState`; the message is the service's name
/// ("File system service", "Crypto provider", "Device id provider", "Network client",
/// "Update policy", "Update package service" or "Client service") and " threw an exception",
/// followed, where it is a std::exception, by ": " and its `what()`. It is kept and logged like
/// every other failure of that operation. An update check goes on without an identifier, as it does
/// whenever the provider fails. A logger that throws loses the line, and nothing else changes.
///
/// Threads: no lock. Do not change a registry while a facade that uses it is in a call.
struct ServiceRegistry {
  /// Default: drops every line.
  std::shared_ptr<ILogger> logger{};
  /// Default: the system clock. Must be there, and is never asked.
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
  /// Default: libcurl download, SHA-256 check, detached start.
  std::shared_ptr<IUpdatePackageService> update_package_service{};
  /// Default: the core service, built last, from this very registry.
  std::shared_ptr<IClientService> client_service{};
};

}  // namespace korvixsdk

#endif  // KORVIXSDK_SERVICE_REGISTRY_H_
