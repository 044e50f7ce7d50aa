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

/// The class through which a host uses the library: make one object, call `Init` once, then the
/// other operations.
///
/// An operation works on the thread that calls it, and returns when it is done. (Only libcurl looks
/// up names in a thread of its own, which ends before the call returns.) Failures are returned. No
/// operation throws; a constructor throws std::bad_alloc if there is not enough memory. If a
/// service of your own throws, see `ServiceRegistry`.
///
/// There are no locks: use one facade from one thread at a time. Two facades may be used in two
/// threads if each has its own registry. They still share one thing: the path of the fallback
/// identifier is the same for the whole process, and the last `Init` sets it. On Linux libcurl
/// ignores SIGPIPE during every transfer and restores it afterwards; a host that calls from several
/// threads should ignore SIGPIPE itself.
///
/// Every operation but `Init` and `GetLastError` fails with `kInvalidState`,
/// "KorvixSDK is not initialized", before the first successful `Init`.
class KorvixSDK {
 public:
  /// Makes a facade with new default services.
  KORVIXSDK_API KorvixSDK();

  /// Makes a facade with the host's own core service, or with the default services if that is null.
  /// An `Init` with `SDKConfig::logger` or `SDKConfig::services` replaces that core service, unless
  /// the registry contains it.
  KORVIXSDK_API explicit KorvixSDK(std::shared_ptr<IClientService> service);

  /// Releases the facade's references. The services live on: a filled registry and its core service
  /// keep each other alive on purpose.
  KORVIXSDK_API ~KorvixSDK();

  /// Moves everything to the new facade. The old one may then only be destroyed, assigned to, asked
  /// for `GetLastError`, or initialised, which gives it new default services.
  KORVIXSDK_API KorvixSDK(KorvixSDK&& other) noexcept;
  /// See the move constructor.
  KORVIXSDK_API KorvixSDK& operator=(KorvixSDK&& other) noexcept;
  KorvixSDK(const KorvixSDK&) = delete;
  KorvixSDK& operator=(const KorvixSDK&) = delete;

  /// Takes over `config.services` and `config.logger` if they are set, checks the configuration and
  /// keeps a copy, sets `config.fallback_device_id_path` for the process and creates
  /// `config.cache_dir`.
  ///
  /// May be called again. If a check fails, nothing is changed. If the cache directory cannot be
  /// created, the new configuration and the new path are already in use. In both cases a service
  /// that was initialised stays initialised. (But if `services` or `logger` is set, the facade now
  /// has another core service, even if the call fails, and that one must be initialised first.)
  ///
  /// \return success, or
  ///   `kInvalidArgument` "SDKConfig.product_id must not be empty",
  ///   "SDKConfig.version must not be empty", "SDKConfig.cache_dir must not be empty";
  ///   `kInvalidState` "Required services are not configured",
  ///   "Failed to create cache directory: " + cache_dir, "Not enough memory to initialize".
  /// Waits for nothing but the disk.
  KORVIXSDK_API Error Init(const SDKConfig& config);

  /// Finds out the identifier of the machine; see `IDeviceIdProvider`.
  /// \return the identifier; the provider's error unchanged; or `kInvalidState`
  ///   "Device id provider is not configured".
  KORVIXSDK_API Result<std::string> GetDeviceId();

  /// Asks the service for an update. Then compares versions and decides whether there is an update
  /// for this host, and whether it is mandatory. If there is no device identifier, the check is
  /// made without it.
  ///
  /// If the service rejects the request, `UpdateInfo::message` says why. Even then the reply may
  /// contain a newer version.
  ///
  /// \return the decision; or the network client's error unchanged. Without a network client the
  ///   call succeeds, there is no update, and `UpdateInfo::message` is
  ///   "Network client is not configured".
  /// Blocks until the reply is there: with the default network client about 20 seconds at most, or
  /// until the system's resolver gives up; see `INetworkClient`.
  KORVIXSDK_API Result<UpdateInfo> CheckForUpdate();

  /// Reports this installation to the service. Logs nothing, and does not change `GetLastError`.
  /// \return the service's answer; the device identifier provider's or network client's error
  ///   unchanged; or `kInvalidState` "Network client is not configured",
  ///   "Device id provider is not configured".
  /// Blocks until the reply is there: with the default network client about 20 seconds at most, or
  /// until the system's resolver gives up; see `INetworkClient`.
  KORVIXSDK_API Result<ServerResult> ReportInstall();

  /// Downloads and verifies the package that `info` names; see `IUpdatePackageService::Prepare`.
  /// \return the package; the package service's result unchanged; or `kInvalidState`
  ///   "Update package service is not configured".
  /// Blocks until the package is there, with the default package service 30 seconds at most or
  /// until the system's resolver gives up, and then until it is on the disk.
  KORVIXSDK_API Result<PreparedUpdate> PrepareUpdate(const UpdateInfo& info);

  /// Starts the updater on a prepared package; see `IUpdatePackageService::Launch`.
  /// \return success; the package service's error unchanged; or `kInvalidState`
  ///   "Update package service is not configured".
  /// Returns as soon as the process is started.
  KORVIXSDK_API Error LaunchPreparedUpdate(const PreparedUpdate& prepared,
                                           const std::string& updater_path);

  /// Says what the last `GetDeviceId`, `CheckForUpdate`, `PrepareUpdate` or `LaunchPreparedUpdate`
  /// had to report: the message of its error; after a `CheckForUpdate` that succeeded, the message
  /// of its `UpdateInfo`; after any other success an empty text. An `Init` that passes its checks
  /// makes the text empty, too. `ReportInstall` does not change it, and neither do the failures
  /// "KorvixSDK is not initialized" and "Update package service is not configured". On a facade
  /// that was moved from it is "Client service unavailable".
  KORVIXSDK_API std::string GetLastError() const;

 private:
  std::shared_ptr<ServiceRegistry> services_;
  std::shared_ptr<IClientService> service_;
};

}  // namespace korvixsdk

#endif  // KORVIXSDK_KORVIX_SDK_H_
