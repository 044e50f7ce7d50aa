#ifndef KORVIXSDK_CLIENT_SERVICE_H_
#define KORVIXSDK_CLIENT_SERVICE_H_

/// \file
/// \brief `IClientService`: the core service behind the facade.

#include <string>

#include "korvixsdk/error.h"
#include "korvixsdk/prepared_update.h"
#include "korvixsdk/result.h"
#include "korvixsdk/sdk_config.h"
#include "korvixsdk/server_result.h"
#include "korvixsdk/update_info.h"

namespace korvixsdk {

/// The operations to which `KorvixSDK` forwards its own; see there for what they do and how they
/// fail. A host that passes its own implementation to `KorvixSDK` must do all of that itself.
///
/// The default implementation has no locks: do not call one service from two threads at the same
/// time. Exceptions: see `ServiceRegistry`.
class IClientService {
 public:
  virtual ~IClientService() = default;

  /// See `KorvixSDK::Init`.
  virtual Error Init(const SDKConfig& config) = 0;
  /// See `KorvixSDK::GetDeviceId`.
  virtual Result<std::string> GetDeviceId() = 0;
  /// See `KorvixSDK::CheckForUpdate`.
  virtual Result<UpdateInfo> CheckForUpdate() = 0;
  /// See `KorvixSDK::ReportInstall`.
  virtual Result<ServerResult> ReportInstall() = 0;
  /// See `KorvixSDK::PrepareUpdate`.
  virtual Result<PreparedUpdate> PrepareUpdate(const UpdateInfo& info) = 0;
  /// See `KorvixSDK::LaunchPreparedUpdate`.
  virtual Error LaunchPreparedUpdate(const PreparedUpdate& prepared,
                                     const std::string& updater_path) = 0;
  /// See `KorvixSDK::GetLastError`.
  virtual std::string GetLastError() const = 0;
};

}  // namespace korvixsdk

#endif  // KORVIXSDK_CLIENT_SERVICE_H_
