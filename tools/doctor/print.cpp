#include "doctor/print.h"

#include <korvixsdk/version.h>

#include <algorithm>
#include <cmath>
#include <ctime>
#include <iomanip>
#include <nlohmann/json.hpp>
#include <sstream>
#include <string>

#include "doctor/printable.h"
#include "doctor/system.h"

namespace doctor {
namespace {

constexpr int kStatusWidth = 9;
/// Grows when a member changes its meaning or goes; new ones may come at any time.
constexpr int kSchema = 1;

/// To a thousandth: that is as exact as libcurl's clock.
double Rounded(double milliseconds) { return std::round(milliseconds * 1000) / 1000; }

nlohmann::ordered_json ToJson(const Check& check) {
  nlohmann::ordered_json milliseconds;
  if (check.milliseconds) milliseconds = Rounded(*check.milliseconds);
  return {
      {"id", check.id},         {"title", TitleOf(check.id)}, {"status", StatusText(check.status)},
      {"reason", check.reason}, {"remedy", check.remedy},     {"milliseconds", milliseconds}};
}

nlohmann::ordered_json SubjectOf(const Options& options) {
  const korvixsdk::SDKConfig& config = options.config;
  return {{"product", config.product_id},     {"version", config.version},
          {"server", config.server_base_url}, {"package_url", options.package_url.value_or("")},
          {"cache", config.cache_dir},        {"fallback_id", config.fallback_device_id_path},
          {"library", KORVIXSDK_VERSION}};
}

std::string Now() {
  const std::time_t now = std::time(nullptr);
  std::ostringstream text;
  text << std::put_time(std::gmtime(&now), "%Y-%m-%dT%H:%M:%SZ");
  return text.str();
}

std::ostream& Begin(Status status, std::ostream& out) {
  return out << std::left << std::setw(kStatusWidth) << StatusText(status) << "  ";
}

void PrintLine(const Check& check, std::ostream& out) {
  Begin(check.status, out) << TitleOf(check.id) << " (" << check.id
                           << "): " << OneLine(check.reason);
  if (check.milliseconds) out << " [" << Rounded(*check.milliseconds) << " ms]";
  out << "\n";
  if (!check.remedy.empty()) {
    out << std::string(kStatusWidth + 2, ' ') << "to do: " << OneLine(check.remedy) << "\n";
  }
}

/// "address.name, address.tls: the reason; package.name: another".
std::string NotTriedText(const std::vector<Check>& checks) {
  std::string text;
  const std::string* reason = nullptr;
  for (const Check& check : checks) {
    if (check.status != Status::kNotTried) continue;
    if (reason != nullptr) text += *reason == check.reason ? ", " : ": " + *reason + "; ";
    text += check.id;
    reason = &check.reason;
  }
  return reason == nullptr ? text : text + ": " + *reason;
}

std::ptrdiff_t Count(const std::vector<Check>& checks, Status status) {
  return std::count_if(checks.begin(), checks.end(),
                       [status](const Check& check) { return check.status == status; });
}

}  // namespace

void PrintText(const std::vector<Check>& checks, std::ostream& out) {
  for (const Status status : {Status::kFail, Status::kWarn, Status::kPass}) {
    for (const Check& check : checks) {
      if (check.status == status) PrintLine(check, out);
    }
  }
  const std::string not_tried = OneLine(NotTriedText(checks));
  if (!not_tried.empty()) Begin(Status::kNotTried, out) << not_tried << "\n";
  const char* separator = "";
  for (const Status status : {Status::kPass, Status::kWarn, Status::kFail, Status::kNotTried}) {
    out << separator << StatusText(status) << ": " << Count(checks, status);
    separator = ", ";
  }
  out << std::endl;
}

void PrintJson(const Options& options, const std::vector<Check>& checks, std::ostream& out) {
  nlohmann::ordered_json list = nlohmann::ordered_json::array();
  for (const Check& check : checks) list.push_back(ToJson(check));
  const nlohmann::ordered_json report = {{"schema", kSchema},
                                         {"time", Now()},
                                         {"system", OperatingSystem()},
                                         {"subject", SubjectOf(options)},
                                         {"status", StatusText(WorstOf(checks))},
                                         {"checks", list}};
  out << Dump(report, 2) << std::endl;
}

}  // namespace doctor
