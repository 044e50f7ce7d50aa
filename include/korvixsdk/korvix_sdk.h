#ifndef KORVIXSDK_KORVIX_SDK_H_
#define KORVIXSDK_KORVIX_SDK_H_

/// \file
/// \brief `KorvixSDK`: the facade through which a host uses the library.

#include <memory>
#include <string>

#include "korvixsdk/client_service.h"
#include "korvixsdk/export.h"
#include "korvixsdk/service_registry.h"

namespace korvixsdk {

/// The library's front: construct one, call `Init` once, then the operations.
///
/// Everything is synchronous on the caller's thread, and every failure is a value. Nothing throws
/// but a constructor where memory does not suffice (std::bad_alloc); what becomes of a service of
/// the host's that throws stands at `ServiceRegistry`. (Only libcurl looks names up in a thread of
/// its own, which ends before the call does.) The
/// facade takes no lock: use one facade from one thread at a time. Separate facades in separate
/// threads do not disturb each other while each has a registry of its own, but for the fallback
/// identifier path, which is one for the process and belongs to the `Init` that ran last. On Linux
/// libcurl ignores and restores SIGPIPE around every transfer; a host that calls from several
/// threads should ignore it itself.
///
/// Every operation but `Init` and `GetLastError` fails with `kInvalidState`,
/// "KorvixSDK is not initialized", before the first successful `Init`.
class KorvixSDK {
 public:
  /// A facade over new default services.
  KORVIXSDK_API KorvixSDK();

  /// A facade over the host's own core service; null gives the default services. An `Init` with
  /// `SDKConfig::logger` or `SDKConfig::services` drops it, unless it is in that registry.
  KORVIXSDK_API explicit KorvixSDK(std::shared_ptr<IClientService> service);

  /// Releases the facade's references. A filled registry and its core service keep each other
  /// alive, so the services outlive the facade on purpose.
  KORVIXSDK_API ~KorvixSDK();

  /// Moves both references. On the moved-from facade only `Init`, which gives it new default
  /// services, `GetLastError`, assignment and destruction are allowed.
  KORVIXSDK_API KorvixSDK(KorvixSDK&& other) noexcept;
  /// See the move constructor.
  KORVIXSDK_API KorvixSDK& operator=(KorvixSDK&& other) noexcept;
  KorvixSDK(const KorvixSDK&) = delete;
  KorvixSDK& operator=(const KorvixSDK&) = delete;

  /// Adopts `config.services` and `config.logger` where set, checks and keeps the configuration,
  /// publishes `config.fallback_device_id_path` for the process and creates `config.cache_dir`.
  ///
  /// May be called again. A later call that fails its checks changes nothing; one that cannot
  /// create the cache directory has already replaced the configuration and published the path.
  /// Neither makes an initialised service uninitialised. (When it also sets `services` or `logger`,
  /// the facade has moved to another core service, which counts for itself: also when it fails.)
  ///
  /// \return success, or
  ///   `kInvalidArgument` "SDKConfig.product_id must not be empty",
  ///   "SDKConfig.version must not be empty", "SDKConfig.cache_dir must not be empty";
  ///   `kInvalidState` "Required services are not configured",
  ///   "Failed to create cache directory: " + cache_dir, "Not enough memory to initialize".
  /// Blocks on the disk at most.
  KORVIXSDK_API Error Init(const SDKConfig& config);

  /// The machine's identifier; see `IDeviceIdProvider`.
  /// \return the identifier; the provider's error unchanged; or `kInvalidState`
  ///   "Device id provider is not configured".
  KORVIXSDK_API Result<std::string> GetDeviceId();

  /// Asks the service for an update and decides, by comparing versions, whether it is offered and
  /// whether it is mandatory. The check goes on without a device identifier when there is none.
  ///
  /// A service that rejects the request says why in `UpdateInfo::message`; its reply may still name
  /// a newer version.
  ///
  /// \return the decision; or the network client's error unchanged. Without a network client the
  ///   call succeeds, without an update, and `UpdateInfo::message` is
  ///   "Network client is not configured".
  /// Blocks for the request, with the default network client at most about 20 seconds, or until the
  /// system's resolver gives up; see `INetworkClient`.
  KORVIXSDK_API Result<UpdateInfo> CheckForUpdate();

  /// Reports this installation to the service. Logs nothing and leaves `GetLastError` alone.
  /// \return the service's answer; the device identifier provider's or network client's error
  ///   unchanged; or `kInvalidState` "Network client is not configured",
  ///   "Device id provider is not configured".
  /// Blocks for the request, with the default network client at most about 20 seconds, or until the
  /// system's resolver gives up; see `INetworkClient`.
  KORVIXSDK_API Result<ServerResult> ReportInstall();

  /// Downloads and verifies the package that `info` names; see `IUpdatePackageService::Prepare`.
  /// \return the package; the package service's result unchanged; or `kInvalidState`
  ///   "Update package service is not configured".
  /// Blocks for the transfer, with the default package service at most 30 seconds, or until the
  /// system's resolver gives up, and on the disk.
  KORVIXSDK_API Result<PreparedUpdate> PrepareUpdate(const UpdateInfo& info);

  /// Starts the updater on a prepared package; see `IUpdatePackageService::Launch`.
  /// \return success; the package service's error unchanged; or `kInvalidState`
  ///   "Update package service is not configured".
  /// Returns as soon as the process is started.
  KORVIXSDK_API Error LaunchPreparedUpdate(const PreparedUpdate& prepared,
                                           const std::string& updater_path);

  /// The message of the last `GetDeviceId`, `CheckForUpdate`, `PrepareUpdate` or
  /// `LaunchPreparedUpdate`, without a prefix: of its error, or, after a `CheckForUpdate` that
  /// succeeded, of its `UpdateInfo`; empty after any other success of these four, and after an
  /// `Init` that passed its checks. Unchanged by `ReportInstall`, and by the failures "KorvixSDK is
  /// not initialized" and "Update package service is not configured". "Client service unavailable"
  /// on a moved-from facade.
  KORVIXSDK_API std::string GetLastError() const;

 private:
  std::shared_ptr<ServiceRegistry> services_;
  std::shared_ptr<IClientService> service_;
};

}  // namespace korvixsdk

#endif  // KORVIXSDK_KORVIX_SDK_H_
