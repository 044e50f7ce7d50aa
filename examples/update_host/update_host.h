#ifndef KORVIXSDK_EXAMPLES_UPDATE_HOST_UPDATE_HOST_H_
#define KORVIXSDK_EXAMPLES_UPDATE_HOST_UPDATE_HOST_H_

#include <korvixsdk/korvixsdk.h>

#include <optional>
#include <string>
#include <utility>

namespace update_host {

struct Options {
  korvixsdk::SDKConfig config{};
  std::string updater_path{};
  /// Takes the place of the address that the service offers.
  std::optional<std::string> package_url{};
  /// Packages may be offered from this address's host too, and not only from the service's.
  std::string packages_from{};
};

/// The way of an update through the library, every step printed as soon as it is done. What an
/// operation answers is the outcome of its last step.
class UpdateHost {
 public:
  explicit UpdateHost(Options options) : options_(std::move(options)) {}

  /// Comes before all others.
  korvixsdk::Error Init();
  korvixsdk::Error PrintDeviceId();
  korvixsdk::Error ReportInstall();
  korvixsdk::Error Check() { return AskForUpdate().error; }
  korvixsdk::Error Prepare() { return CheckAndPrepare().error; }
  korvixsdk::Error Update();

 private:
  korvixsdk::Result<korvixsdk::UpdateInfo> AskForUpdate();
  /// A success that is not `ready` means that no update is offered.
  korvixsdk::Result<korvixsdk::PreparedUpdate> CheckAndPrepare();

  Options options_;
  korvixsdk::KorvixSDK sdk_;
};

}  // namespace update_host

#endif  // KORVIXSDK_EXAMPLES_UPDATE_HOST_UPDATE_HOST_H_
