#include "update_host.h"

#include "offer_check.h"

namespace update_host {

using korvixsdk::Error;
using korvixsdk::PreparedUpdate;
using korvixsdk::Result;
using korvixsdk::UpdateInfo;

Error UpdateHost::Run() {
  if (Error error = sdk_.Init(options_.config); !error.ok()) {
    report_.Print("init", error, "");
    return error;
  }
  switch (options_.command) {
    case Command::kDeviceId:
      return GetDeviceId();
    case Command::kReportInstall:
      return ReportInstall();
    case Command::kCheck:
      return Check().error;
    case Command::kPrepare:
      return CheckAndPrepare().error;
    case Command::kUpdate:
      return Update();
  }
  return Error{};
}

Error UpdateHost::GetDeviceId() {
  const Result<std::string> device_id = sdk_.GetDeviceId();
  report_.Print("device-id", device_id);
  return device_id.error;
}

Error UpdateHost::ReportInstall() {
  const Result<korvixsdk::ServerResult> answer = sdk_.ReportInstall();
  report_.Print("report-install", answer);
  return answer.error;
}

Result<UpdateInfo> UpdateHost::Check() {
  Result<UpdateInfo> check = sdk_.CheckForUpdate();
  report_.Print("check", check);
  return check;
}

Error UpdateHost::CheckOffer(const UpdateInfo& offer) const {
  return offer_check::CheckOffer(offer, {options_.config.server_base_url, options_.packages_from,
                                         options_.package_url.value_or("")});
}

Result<PreparedUpdate> UpdateHost::CheckAndPrepare() {
  Result<UpdateInfo> check = Check();
  if (!check.ok() || !check.value.has_update) return {{}, check.error};
  if (options_.package_url) check.value.download_url = *options_.package_url;
  if (Error refused = CheckOffer(check.value); !refused.ok()) {
    report_.Print("offer", refused, "");
    return {{}, refused};
  }
  Result<PreparedUpdate> prepared = sdk_.PrepareUpdate(check.value);
  report_.Print("prepare", prepared);
  return prepared;
}

Error UpdateHost::Launch(const PreparedUpdate& prepared) {
  Error error = sdk_.LaunchPreparedUpdate(prepared, options_.updater_path);
  report_.Print("launch", error, options_.updater_path + " started");
  return error;
}

Error UpdateHost::Update() {
  if (Error error = GetDeviceId(); !error.ok()) return error;
  // A rejection is for the service to mind: the host still gets its update.
  if (Error error = ReportInstall(); !error.ok()) return error;
  const Result<PreparedUpdate> prepared = CheckAndPrepare();
  if (!prepared.ok() || !prepared.value.ready) return prepared.error;
  return Launch(prepared.value);
}

}  // namespace update_host
