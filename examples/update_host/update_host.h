#ifndef KORVIXSDK_EXAMPLES_UPDATE_HOST_UPDATE_HOST_H_
#define KORVIXSDK_EXAMPLES_UPDATE_HOST_UPDATE_HOST_H_

#include <korvixsdk/korvixsdk.h>

#include "options.h"
#include "step_report.h"

namespace update_host {

/// The way of an update through the library, every step reported as soon as it is done.
class UpdateHost {
 public:
  explicit UpdateHost(const Options& options) : options_(options), report_(options.json) {}

  /// Runs the command. The outcome is that of its last step.
  korvixsdk::Error Run();

 private:
  korvixsdk::Error GetDeviceId();
  korvixsdk::Error ReportInstall();
  korvixsdk::Result<korvixsdk::UpdateInfo> Check();
  /// Packages may come from the service, or from where the command line says.
  korvixsdk::Error CheckOffer(const korvixsdk::UpdateInfo& offer) const;
  /// A success that is not `ready` means that no update is offered.
  korvixsdk::Result<korvixsdk::PreparedUpdate> CheckAndPrepare();
  korvixsdk::Error Launch(const korvixsdk::PreparedUpdate& prepared);
  korvixsdk::Error Update();

  Options options_;
  StepReport report_;
  korvixsdk::KorvixSDK sdk_;
};

}  // namespace update_host

#endif  // KORVIXSDK_EXAMPLES_UPDATE_HOST_UPDATE_HOST_H_
