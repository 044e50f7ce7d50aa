#include "doctor/service_checks.h"

#include <optional>
#include <string>

#include "doctor/address_checks.h"
#include "doctor/exchange.h"
#include "doctor/system.h"
#include "doctor/verdicts.h"
#include "network/update_check_endpoint.h"
#include "network/url.h"
#include "platform/mock_addresses.h"

namespace doctor {
namespace {

using korvixsdk::Result;
using korvixsdk::ServerResult;
using korvixsdk::UpdateInfo;

constexpr long kConnectSeconds = 10;
constexpr long kSeconds = 20;
constexpr char kInstallPath[] = "/API/v2/sdk/install/";
constexpr char kUpdatePath[] = "/API/v2/sdk/update/check/";
constexpr char kOtherReply[] =
    "Look whether several servers answer in turn, or whether the reply changes with the time";

/// install.request or update.request.
Check CheckExchange(const char* id, const std::string& url, const Exchange& exchange) {
  Findings findings;
  if (exchange.failure.code != CURLE_OK) {
    findings.Fail(exchange.failure.text, "Look at the service's log, and for a proxy in between");
  } else if (exchange.status < 200 || exchange.status > 299) {
    findings.Fail("HTTP status " + std::to_string(exchange.status),
                  "Answer with 200 at " + url.substr(0, url.find('?')));
  } else if (exchange.body.empty()) {
    findings.Fail("the reply has no body", "Answer with a JSON object");
  } else if (!exchange.content_encoding.empty()) {
    findings.Fail("Content-Encoding is " + exchange.content_encoding + ", which hosts do not undo",
                  "Send the reply without compression, whoever asks");
  }
  if (SchemeOf(url) == "https" && SchemeOf(exchange.final_url) == "http") {
    findings.Warn("redirected from HTTPS to plain HTTP", "Redirect to https: addresses only");
  } else if (exchange.redirects > 0) {
    findings.Warn("redirected to " + exchange.final_url, "Give hosts the final address");
  }
  Check check = findings.As(id, "HTTP status " + std::to_string(exchange.status) + ", " +
                                    std::to_string(exchange.body.size()) + " bytes");
  check.milliseconds = exchange.milliseconds;
  return check;
}

/// False when the service cannot be asked.
bool CheckAddress(const std::string& address, Checklist& checklist) {
  checklist.Add(CheckBaseAddress(address));
  if (korvixsdk::IsMockUrl(address)) {
    checklist.AddNotTried({"address.proxy", "address.name", "address.connection", "address.tls"},
                          kMockReason);
    return false;
  }
  if (checklist.Failed({"address.form"})) {
    checklist.AddNotTried({"address.proxy", "address.name", "address.connection", "address.tls"},
                          "the address is not well formed");
    return false;
  }
  const Connection connection = Connect(address);
  checklist.Add(CheckProxy(connection, SystemProxies()));
  checklist.Add(CheckConnection(connection, SchemeOf(address) == "https"));
  return !checklist.Failed({"address.name", "address.connection", "address.tls"});
}

// --- The install report

void CheckInstallByDoctor(const Subject& subject, Checklist& checklist) {
  const korvixsdk::SDKConfig& config = subject.options.config;
  const std::string url = korvixsdk::BuildUrl(config.server_base_url, kInstallPath,
                                              {{"product_id", config.product_id},
                                               {"device_id", subject.device_id},
                                               {"version", config.version}})
                              .value;
  const Exchange exchange = Get(url, kConnectSeconds, kSeconds);
  checklist.Add(CheckExchange("install.request", url, exchange));
  if (checklist.Failed({"install.request"})) {
    checklist.AddNotTried(
        {"install.json", "install.members", "install.agreement", "install.answer"},
        "there is no reply to read");
  } else {
    checklist.Add(CheckInstallReply(exchange.body));
  }
}

Check CheckInstallByLibrary(Subject& subject, const Checklist& checklist) {
  const char* const id = "install.library";
  const Result<ServerResult> answer = subject.sdk.ReportInstall();
  if (!answer.ok()) {
    return Fail(id, Describe(answer.error),
                "See the failures above; docs/errors.md tells the rest");
  }
  if (checklist.Failed(
          {"install.request", "install.json", "install.members", "install.agreement"})) {
    return Warn(id, "the library got a sound reply where the doctor did not", kOtherReply);
  }
  return Pass(id, std::string(answer.value.success ? "accepted" : "rejected") + " with code " +
                      std::to_string(answer.value.code) + ": " + answer.value.message);
}

// --- The update check

UpdateInfo CheckUpdateByDoctor(const Subject& subject, Checklist& checklist) {
  const korvixsdk::SDKConfig& config = subject.options.config;
  const std::string url = korvixsdk::BuildUrl(config.server_base_url, kUpdatePath,
                                              {{"product_id", config.product_id},
                                               {"version", config.version},
                                               {"device_id", subject.device_id}})
                              .value;
  const Exchange exchange = Get(url, kConnectSeconds, kSeconds);
  checklist.Add(CheckExchange("update.request", url, exchange));
  if (checklist.Failed({"update.request"})) {
    checklist.AddNotTried({"update.json", "update.lookup", "update.types", "update.escapes",
                           "update.answer", "update.digest", "update.decision"},
                          "there is no reply to read");
    return {};
  }
  checklist.Add(CheckUpdateReply(exchange.body, {config.version}));
  return korvixsdk::ReadUpdateReply(exchange.body);
}

/// The first member in which two offers differ; empty when they do not.
std::string Difference(const UpdateInfo& one, const UpdateInfo& other) {
  if (one.latest_version != other.latest_version) return "version";
  if (one.min_supported_version != other.min_supported_version) return "min_supported_version";
  if (one.publish_time != other.publish_time) return "publish_time";
  if (one.update_content != other.update_content) return "update_content";
  if (one.download_url != other.download_url) return "download_url";
  if (one.sha256 != other.sha256) return "sha256";
  if (one.message != other.message) return "msg";
  return {};
}

std::string Decision(const UpdateInfo& info, const std::string& version) {
  std::string text = "no update for version " + version;
  if (info.has_update) {
    text = (info.force_update ? "mandatory" : "optional") + std::string(" update from ") + version +
           " to " + info.latest_version;
  }
  return info.message.empty() ? text : text + "; the service says: " + info.message;
}

/// \param expected the doctor's reading; nothing where the doctor sent no request.
Check CheckUpdateByLibrary(const Subject& subject, const Result<UpdateInfo>& check,
                           const std::optional<UpdateInfo>& expected, bool request_failed) {
  const char* const id = "update.library";
  if (!check.ok()) {
    return Fail(id, Describe(check.error), "See the failures above; docs/errors.md tells the rest");
  }
  if (request_failed) {
    return Warn(id, "the library got a reply where the doctor did not", kOtherReply);
  }
  const std::string member = expected ? Difference(*expected, check.value) : "";
  if (!member.empty()) {
    return Warn(id, "the library read another \"" + member + "\" than the doctor", kOtherReply);
  }
  return Pass(id, Decision(check.value, subject.options.config.version));
}

void CheckInstall(Subject& subject, bool reachable, const char* why_not, Checklist& checklist) {
  if (reachable) {
    CheckInstallByDoctor(subject, checklist);
  } else {
    checklist.AddNotTried({"install.request", "install.json", "install.members",
                           "install.agreement", "install.answer"},
                          why_not);
  }
}

UpdateInfo CheckUpdate(Subject& subject, bool reachable, const char* why_not,
                       Checklist& checklist) {
  if (reachable) return CheckUpdateByDoctor(subject, checklist);
  checklist.AddNotTried({"update.request", "update.json", "update.lookup", "update.types",
                         "update.escapes", "update.answer", "update.digest", "update.decision"},
                        why_not);
  return {};
}

}  // namespace

UpdateInfo CheckService(Subject& subject, Checklist& checklist) {
  const std::string& address = subject.options.config.server_base_url;
  const bool mock = korvixsdk::IsMockUrl(address);
  const bool reachable = CheckAddress(address, checklist);
  const char* const why_not = mock ? kMockReason : "the service cannot be reached";
  const char* const why_not_library = subject.initialised ? why_not : kNoFacade;
  const bool asks_library = subject.initialised && (mock || reachable);

  CheckInstall(subject, reachable, why_not, checklist);
  checklist.Add(asks_library ? CheckInstallByLibrary(subject, checklist)
                             : NotTried("install.library", why_not_library));
  UpdateInfo offer = CheckUpdate(subject, reachable, why_not, checklist);
  if (!asks_library) {
    checklist.AddNotTried({"update.library"}, why_not_library);
    return offer;
  }
  const Result<UpdateInfo> check = subject.sdk.CheckForUpdate();
  checklist.Add(CheckUpdateByLibrary(subject, check, mock ? std::nullopt : std::optional(offer),
                                     checklist.Failed({"update.request"})));
  return mock ? check.value : offer;
}

}  // namespace doctor
