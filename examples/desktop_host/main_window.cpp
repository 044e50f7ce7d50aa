#include "main_window.h"

#include <array>

#include "resource.h"
#include "text.h"
#include "update_dialog.h"

namespace desktop_host {
namespace {

using korvixsdk::Error;
using korvixsdk::KorvixSDK;
using korvixsdk::Result;
using korvixsdk::UpdateInfo;

/// The worker has answers.
constexpr UINT kAnswersWait = WM_APP + 1;

std::wstring Now() {
  std::array<wchar_t, 128> date{};
  std::array<wchar_t, 128> time{};
  GetDateFormatEx(LOCALE_NAME_USER_DEFAULT, DATE_LONGDATE, nullptr, nullptr, date.data(),
                  static_cast<int>(date.size()), nullptr);
  GetTimeFormatEx(LOCALE_NAME_USER_DEFAULT, TIME_NOSECONDS, nullptr, nullptr, time.data(),
                  static_cast<int>(time.size()));
  return std::wstring(date.data()) + L", " + time.data();
}

}  // namespace

bool MainWindow::Open() {
  if (!Create(IDD_MAIN)) return false;
  ShowWindow(window(), SW_SHOW);
  return true;
}

void MainWindow::OnInit() {
  const std::wstring product = Wide(options_.product_name);
  SetWindowTextW(window(), product.c_str());
  SetText(IDC_HEADING, product);
  SetText(IDC_SUBHEADING, L"Version " + Wide(options_.config.version));
  ShowOutcome(L"Not checked yet.");
  SetFocus(Control(IDC_CHECK));
  worker_.emplace([window = window()] { PostMessageW(window, kAnswersWait, 0, 0); });
  Start();
}

void MainWindow::PlaceControls(Column& column) {
  column.Header(IDC_PICTURE, IDC_HEADING, IDC_SUBHEADING);
  column.Gap(12);
  column.Rule(IDC_LINE);
  column.Gap(12);
  column.Text(IDC_IDENTIFIER_LABEL);
  column.Gap(4);
  column.Field(IDC_IDENTIFIER, 1);
  column.Gap(12);
  column.Text(IDC_OUTCOME_LABEL);
  column.Gap(4);
  column.Texts({IDC_OUTCOME, IDC_TIME}, 3);
  column.Gap(10);
  column.Bar(IDC_PROGRESS);
  column.Gap(14);
  PlaceButtonsAndDetails(column, {IDC_CHECK, IDCANCEL});
}

void MainWindow::OnCommand(int id) {
  switch (id) {
    case IDC_CHECK:
      return started_ ? Check() : Start();
    case IDC_DETAILS_BUTTON:
      return ToggleDetails();
    case IDCANCEL:
      return Close();
    default:
      return;
  }
}

bool MainWindow::OnMessage(UINT message, WPARAM, LPARAM) {
  switch (message) {
    case kAnswersWait:
      worker_->Deliver();
      // An answer may have closed the window.
      if (window() != nullptr) ShowBusy();
      return true;
    case WM_DESTROY:
      PostQuitMessage(0);
      return true;
    default:
      return false;
  }
}

void MainWindow::Start() {
  worker_->Run(
      [config = options_.config](KorvixSDK& sdk) {
        Started started;
        started.error = sdk.Init(config);
        if (started.error.ok()) started.device_id = sdk.GetDeviceId();
        return started;
      },
      [this](const Started& started) { OnStarted(started); });
  ShowBusy();
}

void MainWindow::OnStarted(const Started& started) {
  started_ = started.error.ok();
  if (!started_) {
    ShowProblem(Explain(Step::kStart, started.error, options_.product_name));
  } else if (!started.device_id.ok()) {
    ShowProblem(Explain(Step::kIdentify, started.device_id.error, options_.product_name));
  } else {
    ShowOutcome(L"Not checked yet.");
  }
  SetText(IDC_IDENTIFIER, Wide(started.device_id.value));
  Arrange();
}

void MainWindow::Check() {
  ShowOutcome(L"Checking for updates\u2026");
  SetText(IDC_TIME, L"");
  worker_->Run([](KorvixSDK& sdk) { return sdk.CheckForUpdate(); },
               [this](const Result<UpdateInfo>& check) { OnChecked(check); });
  ShowBusy();
  Arrange();
}

void MainWindow::OnChecked(const Result<UpdateInfo>& check) {
  SetText(IDC_TIME, Now());
  const UpdateInfo& info = check.value;
  if (!check.ok()) {
    ShowProblem(Explain(Step::kCheck, check.error, options_.product_name));
  } else if (info.has_update) {
    // Also when the service rejected the request, if its reply names a newer version.
    ShowOutcome(L"Version " + ShortLine(info.latest_version) + L" is available.");
  } else if (!info.message.empty()) {
    ShowProblem(ExplainRejection(info.message));
  } else {
    ShowOutcome(Wide(options_.product_name) + L" is up to date.");
  }
  ShowBusy();
  Arrange();
  if (check.ok() && info.has_update) Offer(info);
}

void MainWindow::Offer(const UpdateInfo& offer) {
  const auto decision = UpdateDialog::Run(window(), *worker_, options_, offer);
  if (decision == UpdateDialog::Decision::kCloseApplication) Close();
}

void MainWindow::Close() {
  if (window() != nullptr) DestroyWindow(window());
}

void MainWindow::ShowBusy() { SetBusy(worker_->busy(), IDC_CHECK, IDC_IDENTIFIER); }

}  // namespace desktop_host
