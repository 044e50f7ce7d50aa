#ifndef KORVIXSDK_CLIENT_MANAGER_H_
#define KORVIXSDK_CLIENT_MANAGER_H_

/// \file
/// \brief `ClientManager`: one object that owns a facade.

#include <cstdint>
#include <memory>
#include <string>

#include "korvixsdk/export.h"
#include "korvixsdk/korvix_sdk.h"

namespace korvixsdk {

/// The configuration of a `ClientManager`.
struct ClientManagerConfig {
  /// What the facade is initialised with.
  SDKConfig sdk_config{};
};

/// For hosts that want a single object and only the update check. Owns one `KorvixSDK`, and makes a
/// new one at every `Init`. The services of each stay in memory until the process ends, so do not
/// call `Init` in a retry loop. There are no locks: use one object from one thread at a time.
///
/// Every operation but `Init` fails with `kInvalidState`, "ClientManager is not initialized",
/// unless the last `Init` succeeded. (`KorvixSDK` is different: a facade that was initialised stays
/// initialised when a later `Init` fails.)
class ClientManager {
 public:
  /// Makes an object with a default facade that is not initialised yet.
  KORVIXSDK_API ClientManager();
  /// Destroys the facade.
  KORVIXSDK_API ~ClientManager();
  ClientManager(const ClientManager&) = delete;
  ClientManager& operator=(const ClientManager&) = delete;

  /// Makes a new facade with new default services and initialises it. If that succeeds, it replaces
  /// the earlier facade. If it fails, this object is not initialised any more.
  /// \return the outcome of `KorvixSDK::Init`, unchanged.
  KORVIXSDK_API Error Init(const ClientManagerConfig& config);

  /// See `KorvixSDK::GetDeviceId`.
  KORVIXSDK_API Result<std::string> GetDeviceId();
  /// See `KorvixSDK::ReportInstall`.
  KORVIXSDK_API Result<ServerResult> ReportInstall();
  /// See `KorvixSDK::CheckForUpdate`. Only the check: the caller gets the offer with its
  /// `download_url`, and nothing is downloaded.
  KORVIXSDK_API Result<UpdateInfo> CheckForUpdateLinkOnly();

 private:
  std::unique_ptr<KorvixSDK> sdk_;
  SDKConfig config_;
  std::int32_t last_error_code_ = kOk;
  std::string last_error_message_;
  bool initialized_ = false;
};

}  // namespace korvixsdk

#endif  // KORVIXSDK_CLIENT_MANAGER_H_
