#ifndef KORVIXSDK_EXAMPLES_DESKTOP_HOST_MAIN_WINDOW_H_
#define KORVIXSDK_EXAMPLES_DESKTOP_HOST_MAIN_WINDOW_H_

#include <korvixsdk/korvixsdk.h>

#include <optional>
#include <string>

#include "options.h"
#include "status_form.h"
#include "update_worker.h"

namespace desktop_host {

/// The application's window. Closing it ends the message loop.
class MainWindow final : public StatusForm {
 public:
  explicit MainWindow(Options options) : options_(std::move(options)) {}

  bool Open();

 private:
  /// What the start of the library gave: its own outcome, and the machine's identifier.
  struct Started {
    korvixsdk::Error error;
    korvixsdk::Result<std::string> device_id;
  };

  void OnInit() override;
  void OnCommand(int id) override;
  bool OnMessage(UINT message, WPARAM w, LPARAM l) override;
  int Width() const override { return 380; }
  void PlaceControls(Column& column) override;

  void Start();
  void OnStarted(const Started& started);
  void Check();
  void OnChecked(const korvixsdk::Result<korvixsdk::UpdateInfo>& check);
  void Offer(const korvixsdk::UpdateInfo& offer);
  void Close();
  void ShowBusy();

  const Options options_;
  bool started_ = false;
  /// Goes last, after the windows: it waits for a call that runs.
  std::optional<UpdateWorker> worker_;
};

}  // namespace desktop_host

#endif  // KORVIXSDK_EXAMPLES_DESKTOP_HOST_MAIN_WINDOW_H_
