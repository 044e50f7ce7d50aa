#ifndef KORVIXSDK_UPDATE_DEFAULT_UPDATE_PACKAGE_SERVICE_H_
#define KORVIXSDK_UPDATE_DEFAULT_UPDATE_PACKAGE_SERVICE_H_

#include <memory>
#include <string>

#include "korvixsdk/service_registry.h"
#include "korvixsdk/update_package_service.h"

namespace korvixsdk {

/// Downloads into memory, writes, verifies, launches. Takes no lock.
class DefaultUpdatePackageService : public IUpdatePackageService {
 public:
  /// \param services the registry that owns this service and through which it reaches files and
  ///   hashing. The reference is strong on purpose: the pair lives until the process ends.
  explicit DefaultUpdatePackageService(std::shared_ptr<ServiceRegistry> services);

  Result<PreparedUpdate> Prepare(const UpdateInfo& info, const std::string& cache_dir) override;
  Error Launch(const PreparedUpdate& prepared, const std::string& updater_path) override;

 private:
  Result<PreparedUpdate> DownloadAndVerify(const UpdateInfo& info,
                                           const std::string& cache_dir) const;

  std::shared_ptr<ServiceRegistry> services_;
};

}  // namespace korvixsdk

#endif  // KORVIXSDK_UPDATE_DEFAULT_UPDATE_PACKAGE_SERVICE_H_
