#ifndef KORVIXSDK_EXAMPLES_DESKTOP_HOST_STATUS_FORM_H_
#define KORVIXSDK_EXAMPLES_DESKTOP_HOST_STATUS_FORM_H_

#include "explanations.h"
#include "form.h"

namespace desktop_host {

/// A window that tells how a library call went: one sentence, a bar that moves while the library
/// works, and after a failure the library's own words behind a button.
class StatusForm : public Form {
 protected:
  /// The library works: the button that started it is disabled, and the focus, if the button had
  /// it, waits on the control `meanwhile`.
  void SetBusy(bool busy, int button, int meanwhile);

  /// A sentence that is no failure. Takes effect with `Arrange`, like the next one.
  void ShowOutcome(const std::wstring& sentence);
  void ShowProblem(const Explanation& problem);

  /// For OnCommand: shows the details or hides them again.
  void ToggleDetails();
  /// For PlaceControls: the row of buttons with "Details" at its left end, and the details.
  void PlaceButtonsAndDetails(Column& column, std::initializer_list<int> buttons);

 private:
  void ShowDetails(bool shown);

  bool focus_waits_ = false;
};

}  // namespace desktop_host

#endif  // KORVIXSDK_EXAMPLES_DESKTOP_HOST_STATUS_FORM_H_
