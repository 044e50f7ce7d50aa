#include "update_dialog.h"

#include "offer_check.h"
#include "resource.h"
#include "text.h"

namespace desktop_host {

using korvixsdk::Error;
using korvixsdk::KorvixSDK;
using korvixsdk::PreparedUpdate;
using korvixsdk::Result;
using korvixsdk::UpdateInfo;

UpdateDialog::Decision UpdateDialog::Run(HWND owner, UpdateWorker& worker, const Options& options,
                                         const UpdateInfo& offer) {
  const std::shared_ptr<UpdateDialog> dialog(new UpdateDialog(worker, options, offer));
  const INT_PTR decision = dialog->RunModal(IDD_UPDATE, owner);
  // Anything else: the owner was destroyed, and the dialog with it.
  return decision == static_cast<INT_PTR>(Decision::kLater) ? Decision::kLater
                                                            : Decision::kCloseApplication;
}

void UpdateDialog::OnInit() {
  DescribeOffer();
  SetWorking(false, L"");
  SetFocus(Control(IDC_UPDATE));
}

void UpdateDialog::DescribeOffer() {
  const std::wstring product = Wide(options_.product_name);
  const std::wstring version = ShortLine(offer_.latest_version);
  SetWindowTextW(window(), (product + L" Update").c_str());
  SetText(IDC_HEADING, product + L" " + version + L" is available");
  std::wstring subheading = L"You have version " + Wide(options_.config.version) + L".";
  if (!offer_.publish_time.empty()) {
    subheading += L" Released " + ShortLine(offer_.publish_time) + L".";
  }
  SetText(IDC_SUBHEADING, subheading);
  SetText(IDC_NOTES, Paragraphs(offer_.update_content));
  if (!offer_.force_update) return;
  SetText(IDC_HEADING, product + L" " + version + L" is required");
  SetText(IDC_REASON,
          Paragraphs(WhyMandatory(offer_, options_.product_name, options_.config.version)));
  Show(IDC_REASON, true);
  SetText(IDCANCEL, L"&Close " + product);
}

void UpdateDialog::PlaceControls(Column& column) {
  column.Header(IDC_PICTURE, IDC_HEADING, IDC_SUBHEADING);
  column.Gap(14);
  if (IsShown(IDC_REASON)) {
    column.Text(IDC_REASON);
    column.Gap(14);
  }
  column.Text(IDC_NOTES_LABEL);
  column.Gap(4);
  column.Field(IDC_NOTES, 7);
  column.Gap(10);
  column.Text(IDC_OUTCOME);
  column.Gap(6);
  column.Bar(IDC_PROGRESS);
  column.Gap(14);
  PlaceButtonsAndDetails(column, {IDC_UPDATE, IDCANCEL});
}

void UpdateDialog::OnCommand(int id) {
  switch (id) {
    case IDC_UPDATE:
      return Prepare();
    case IDC_DETAILS_BUTTON:
      return ToggleDetails();
    case IDCANCEL:
      return End(offer_.force_update ? Decision::kCloseApplication : Decision::kLater);
    default:
      return;
  }
}

// The answers come through a weak pointer: the dialog may be closed while the library works.

void UpdateDialog::Prepare() {
  UpdateInfo wanted = offer_;
  if (!options_.package_url.empty()) wanted.download_url = options_.package_url;
  const Error refused = offer_check::CheckOffer(
      wanted, {options_.config.server_base_url, options_.packages_from, options_.package_url});
  if (!refused.ok()) return Fail(Explain(Step::kPrepare, refused, options_.product_name));
  SetWorking(true, L"The update is being downloaded and verified\u2026");
  worker_.Run([wanted](KorvixSDK& sdk) { return sdk.PrepareUpdate(wanted); },
              [weak = weak_from_this()](const Result<PreparedUpdate>& prepared) {
                const auto self = weak.lock();
                if (self && self->window()) self->OnPrepared(prepared);
              });
}

void UpdateDialog::OnPrepared(const Result<PreparedUpdate>& prepared) {
  if (prepared.ok()) return Launch(prepared.value);
  Fail(prepared.error.code == korvixsdk::kHashMismatch
           ? ExplainMismatch(prepared, options_.product_name)
           : Explain(Step::kPrepare, prepared.error, options_.product_name));
}

void UpdateDialog::Launch(const PreparedUpdate& prepared) {
  SetWorking(true, L"The update is being started\u2026");
  worker_.Run([prepared, updater = options_.updater_path](
                  KorvixSDK& sdk) { return sdk.LaunchPreparedUpdate(prepared, updater); },
              [weak = weak_from_this()](const Error& error) {
                const auto self = weak.lock();
                if (self && self->window()) self->OnLaunched(error);
              });
}

void UpdateDialog::OnLaunched(const Error& error) {
  // The updater replaces files of this application, which therefore must go at once.
  if (error.ok()) return End(Decision::kCloseApplication);
  Fail(Explain(Step::kLaunch, error, options_.product_name));
}

void UpdateDialog::Fail(const Explanation& problem) {
  SetWorking(false, L"");
  ShowProblem(problem);
  SetText(IDC_UPDATE, L"&Try again");
  Arrange();
}

void UpdateDialog::SetWorking(bool working, const wchar_t* sentence) {
  ShowOutcome(sentence);
  SetBusy(working, IDC_UPDATE, IDC_NOTES);
  Arrange();
}

void UpdateDialog::End(Decision decision) { EndDialog(window(), static_cast<INT_PTR>(decision)); }

}  // namespace desktop_host
