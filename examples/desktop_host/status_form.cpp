#include "status_form.h"

// After windows.h.
#include <commctrl.h>

#include "resource.h"
#include "text.h"

namespace desktop_host {

void StatusForm::SetBusy(bool busy, int button, int meanwhile) {
  SendMessageW(Control(IDC_PROGRESS), PBM_SETMARQUEE, busy ? TRUE : FALSE, 0);
  Show(IDC_PROGRESS, busy);
  // A disabled window that has the focus would swallow every key.
  if (busy && GetFocus() == Control(button)) {
    SetFocus(Control(meanwhile));
    focus_waits_ = true;
  }
  EnableWindow(Control(button), busy ? FALSE : TRUE);
  if (busy || !focus_waits_) return;
  focus_waits_ = false;
  if (GetFocus() == Control(meanwhile)) SetFocus(Control(button));
}

void StatusForm::ShowOutcome(const std::wstring& sentence) {
  SetText(IDC_OUTCOME, sentence);
  SetText(IDC_DETAILS, L"");
  ShowDetails(false);
  Show(IDC_DETAILS_BUTTON, false);
}

void StatusForm::ShowProblem(const Explanation& problem) {
  ShowOutcome(Wide(problem.sentence));
  SetText(IDC_DETAILS, Paragraphs(problem.details));
  Show(IDC_DETAILS_BUTTON, true);
}

void StatusForm::ToggleDetails() {
  ShowDetails(!IsShown(IDC_DETAILS));
  Arrange();
}

void StatusForm::PlaceButtonsAndDetails(Column& column, std::initializer_list<int> buttons) {
  column.Buttons({IDC_DETAILS_BUTTON}, buttons);
  if (!IsShown(IDC_DETAILS)) return;
  column.Gap(12);
  column.Text(IDC_DETAILS_LABEL);
  column.Gap(4);
  column.Field(IDC_DETAILS, 6);
}

void StatusForm::ShowDetails(bool shown) {
  Show(IDC_DETAILS_LABEL, shown);
  Show(IDC_DETAILS, shown);
  SetText(IDC_DETAILS_BUTTON, shown ? L"Hide &details" : L"&Details");
}

}  // namespace desktop_host
