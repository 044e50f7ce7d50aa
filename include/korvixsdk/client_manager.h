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
  /// Handed to the facade.
  SDKConfig sdk_config{};
};

/// Owns one `KorvixSDK` and builds it anew at every `Init`, for hosts that want a single object and
/// the update check alone. Every `Init` leaves a filled registry to the end of the process, so it
/// is nothing for a retry loop. No lock: use one object from one thread at a time.
///
/// Every operation but `Init` fails with `kInvalidState`, "ClientManager is not initialized",
/// unless the last `Init` succeeded. (A failed `KorvixSDK::Init`, in contrast, leaves an
/// initialised facade initialised.)
class ClientManager {
 public:
  /// An object with a default facade, not initialised.
  KORVIXSDK_API ClientManager();
  /// Destroys the facade.
  KORVIXSDK_API ~ClientManager();
  ClientManager(const ClientManager&) = delete;
  ClientManager& operator=(const ClientManager&) = delete;

  /// Makes a new facade with new default services and initialises it. On success it replaces the
  /// earlier one; on failure this object becomes uninitialised.
  /// \return the outcome of `KorvixSDK::Init`, unchanged.
  KORVIXSDK_API Error Init(const ClientManagerConfig& config);

  /// See `KorvixSDK::GetDeviceId`.
  KORVIXSDK_API Result<std::string> GetDeviceId();
  /// See `KorvixSDK::ReportInstall`.
  KORVIXSDK_API Result<ServerResult> ReportInstall();
  /// See `KorvixSDK::CheckForUpdate`. The check alone: the caller gets the offer with its
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
