#ifndef KORVIXSDK_EXAMPLES_PACKAGE_PROGRESS_PROGRESS_PACKAGE_SERVICE_H_
#define KORVIXSDK_EXAMPLES_PACKAGE_PROGRESS_PROGRESS_PACKAGE_SERVICE_H_

#include <korvixsdk/korvixsdk.h>

#include <memory>
#include <string>

#include "file_download.h"

namespace package_progress {

/// Downloads packages straight into a file, tells how far it is and can be cancelled. The file gets
/// its name only after the check of its SHA-256; nothing else is left behind. The rest is the
/// default service's work.
class ProgressPackageService final : public korvixsdk::IUpdatePackageService {
 public:
  /// Takes what it needs out of a filled registry, and not the registry itself: the two would keep
  /// each other alive.
  ProgressPackageService(const korvixsdk::ServiceRegistry& defaults, Progress progress)
      : file_system_(defaults.file_system),
        crypto_(defaults.crypto),
        default_service_(defaults.update_package_service),
        progress_(std::move(progress)) {}

  /// Codes and messages of the default service, and `kDownloadCancelled` "Update download
  /// cancelled". After a mismatch `package_path` is empty, as there is no file.
  korvixsdk::Result<korvixsdk::PreparedUpdate> Prepare(const korvixsdk::UpdateInfo& info,
                                                       const std::string& cache_dir) override;

  korvixsdk::Error Launch(const korvixsdk::PreparedUpdate& prepared,
                          const std::string& updater_path) override {
    return default_service_->Launch(prepared, updater_path);
  }

 private:
  /// Fills in the digest and compares it.
  korvixsdk::Error Verify(const std::string& path, korvixsdk::PreparedUpdate& prepared);

  std::shared_ptr<korvixsdk::IFileSystemProvider> file_system_;
  std::shared_ptr<korvixsdk::ICryptoProvider> crypto_;
  std::shared_ptr<korvixsdk::IUpdatePackageService> default_service_;
  Progress progress_;
};

}  // namespace package_progress

#endif  // KORVIXSDK_EXAMPLES_PACKAGE_PROGRESS_PROGRESS_PACKAGE_SERVICE_H_
