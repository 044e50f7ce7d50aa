#include "update_host.h"

#include <algorithm>
#include <iostream>

#include "offer_check.h"

namespace update_host {
namespace {

using korvixsdk::Error;
using korvixsdk::PreparedUpdate;
using korvixsdk::Result;
using korvixsdk::UpdateInfo;

/// Texts of the service may hold line ends, or what a terminal would obey.
std::string OneLine(std::string text) {
  const auto is_control = [](unsigned char byte) { return byte < 0x20 || byte == 0x7f; };
  std::replace_if(text.begin(), text.end(), is_control, ' ');
  return text;
}

/// The step's line; `text` is for a success.
void Print(const char* step, const Error& error, const std::string& text) {
  if (error.ok()) {
    std::cout << step << ": " << OneLine(text) << std::endl;
  } else {
    std::cerr << "update_host: " << step << " failed with code " << error.code << ": "
              << OneLine(error.message) << std::endl;
  }
}

std::string Describe(const UpdateInfo& info) {
  std::string text = "no update is offered";
  if (info.has_update) {
    text = "version " + info.latest_version + " is offered, " +
           (info.force_update ? "mandatory" : "optional") + ", at " + info.download_url + ": " +
           info.update_content;
  }
  // A service that rejects the request may still send an offer.
  return info.message.empty() ? text : text + "; the service says: " + info.message;
}

std::string Describe(const PreparedUpdate& prepared) {
  const bool compared = !prepared.expected_sha256.empty();
  return prepared.package_path + ", SHA-256 " + prepared.actual_sha256 +
         (compared ? ", as announced" : ", none was announced to compare it with");
}

}  // namespace

Error UpdateHost::Init() {
  Error error = sdk_.Init(options_.config);
  if (!error.ok()) Print("init", error, {});
  return error;
}

Error UpdateHost::PrintDeviceId() {
  const Result<std::string> id = sdk_.GetDeviceId();
  Print("device-id", id.error, id.value);
  return id.error;
}

Error UpdateHost::ReportInstall() {
  const Result<korvixsdk::ServerResult> answer = sdk_.ReportInstall();
  Print("report-install", answer.error,
        std::string(answer.value.success ? "accepted" : "the service rejected the report") +
            " (code " + std::to_string(answer.value.code) + "): " + answer.value.message);
  return answer.error;
}

Result<UpdateInfo> UpdateHost::AskForUpdate() {
  Result<UpdateInfo> check = sdk_.CheckForUpdate();
  Print("check", check.error, Describe(check.value));
  return check;
}

Result<PreparedUpdate> UpdateHost::CheckAndPrepare() {
  Result<UpdateInfo> check = AskForUpdate();
  if (!check.ok() || !check.value.has_update) return {{}, check.error};
  if (options_.package_url) check.value.download_url = *options_.package_url;
  // Packages may come from the service, or from where the command line says.
  const Error refused = offer_check::CheckOffer(
      check.value,
      {options_.config.server_base_url, options_.packages_from, options_.package_url.value_or("")});
  if (!refused.ok()) {
    Print("offer", refused, {});
    return {{}, refused};
  }
  Result<PreparedUpdate> prepared = sdk_.PrepareUpdate(check.value);
  Print("prepare", prepared.error, Describe(prepared.value));
  return prepared;
}

Error UpdateHost::Update() {
  if (Error error = PrintDeviceId(); !error.ok()) return error;
  // A rejection is for the service to mind: the host still gets its update.
  if (Error error = ReportInstall(); !error.ok()) return error;
  const Result<PreparedUpdate> prepared = CheckAndPrepare();
  if (!prepared.ok() || !prepared.value.ready) return prepared.error;
  Error error = sdk_.LaunchPreparedUpdate(prepared.value, options_.updater_path);
  Print("launch", error, options_.updater_path + " started");
  return error;
}

}  // namespace update_host
