#ifndef KORVIXSDK_CORE_DEFAULT_CLIENT_SERVICE_H_
#define KORVIXSDK_CORE_DEFAULT_CLIENT_SERVICE_H_

#include <memory>
#include <string>

#include "korvixsdk/client_service.h"
#include "korvixsdk/service_registry.h"

namespace korvixsdk {

/// Carries out each operation by combining the registry's services, with logging and the text of
/// the last error. Takes no lock: one thread at a time.
class DefaultClientService : public IClientService {
 public:
  /// \param services never replaced. A strong reference on purpose: the registry holds this service
  ///   as strongly, so both live until the process ends.
  explicit DefaultClientService(std::shared_ptr<ServiceRegistry> services);

  Error Init(const SDKConfig& config) override;
  Result<std::string> GetDeviceId() override;
  Result<UpdateInfo> CheckForUpdate() override;
  Result<ServerResult> ReportInstall() override;
  Result<PreparedUpdate> PrepareUpdate(const UpdateInfo& info) override;
  Error LaunchPreparedUpdate(const PreparedUpdate& prepared,
                             const std::string& updater_path) override;
  std::string GetLastError() const override;

 private:
  Error CheckAndAdopt(const SDKConfig& config);
  Result<UpdateInfo> CheckAndDecide();
  /// True after a successful Init; otherwise fills `error`, where one is given. Leaves no trace.
  bool IsInitialized(Error* error) const;
  Result<std::string> ResolveDeviceId();
  /// Keeps the message as the last error and logs it behind the operation's name.
  void RecordFailure(const char* operation, const std::string& message);
  /// The registry's, asked anew for each line; null where there is none.
  ILogger* logger() const;

  std::shared_ptr<ServiceRegistry> services_;
  SDKConfig config_;
  std::string last_error_;
  bool initialized_ = false;
};

/// What an initialisation fails with when memory does not suffice for its copies.
Error InitOutOfMemoryError();

}  // namespace korvixsdk

#endif  // KORVIXSDK_CORE_DEFAULT_CLIENT_SERVICE_H_
