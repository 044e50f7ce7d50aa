#ifndef KORVIXSDK_EXAMPLES_DESKTOP_HOST_UPDATE_DIALOG_H_
#define KORVIXSDK_EXAMPLES_DESKTOP_HOST_UPDATE_DIALOG_H_

#include <korvixsdk/korvixsdk.h>

#include <memory>

#include "options.h"
#include "status_form.h"
#include "update_worker.h"

namespace desktop_host {

/// Offers an update, and downloads it and starts the updater if the user wants that.
class UpdateDialog final : public StatusForm, public std::enable_shared_from_this<UpdateDialog> {
 public:
  enum class Decision { kLater = 1, kCloseApplication = 2 };

  /// Blocks as modal dialogs do. The application is to be closed when the updater was started, or
  /// when a mandatory update was refused.
  static Decision Run(HWND owner, UpdateWorker& worker, const Options& options,
                      const korvixsdk::UpdateInfo& offer);

 private:
  UpdateDialog(UpdateWorker& worker, const Options& options, const korvixsdk::UpdateInfo& offer)
      : worker_(worker), options_(options), offer_(offer) {}

  void OnInit() override;
  void OnCommand(int id) override;
  int Width() const override { return 460; }
  void PlaceControls(Column& column) override;

  void DescribeOffer();
  void Prepare();
  void OnPrepared(const korvixsdk::Result<korvixsdk::PreparedUpdate>& prepared);
  void Launch(const korvixsdk::PreparedUpdate& prepared);
  void OnLaunched(const korvixsdk::Error& error);
  void Fail(const Explanation& problem);
  void SetWorking(bool working, const wchar_t* sentence);
  void End(Decision decision);

  UpdateWorker& worker_;
  const Options& options_;
  const korvixsdk::UpdateInfo offer_;
};

}  // namespace desktop_host

#endif  // KORVIXSDK_EXAMPLES_DESKTOP_HOST_UPDATE_DIALOG_H_
