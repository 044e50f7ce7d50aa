#include "doctor/print.h"

#include <algorithm>
#include <cmath>
#include <iomanip>
#include <nlohmann/json.hpp>

#include "doctor/printable.h"

namespace doctor {
namespace {

constexpr int kStatusWidth = 9;

/// To a thousandth: that is as exact as libcurl's clock.
double Rounded(double milliseconds) { return std::round(milliseconds * 1000) / 1000; }

nlohmann::ordered_json ToJson(const Check& check) {
  nlohmann::ordered_json milliseconds;
  if (check.milliseconds) milliseconds = Rounded(*check.milliseconds);
  return {
      {"id", check.id},         {"title", TitleOf(check.id)}, {"status", StatusText(check.status)},
      {"reason", check.reason}, {"remedy", check.remedy},     {"milliseconds", milliseconds}};
}

}  // namespace

void PrintLine(const Check& check, std::ostream& out) {
  out << std::left << std::setw(kStatusWidth) << StatusText(check.status) << "  "
      << TitleOf(check.id) << " (" << check.id << "): " << OneLine(check.reason);
  if (check.milliseconds) out << " [" << Rounded(*check.milliseconds) << " ms]";
  out << "\n";
  if (!check.remedy.empty()) {
    out << std::string(kStatusWidth + 2, ' ') << "to do: " << OneLine(check.remedy) << "\n";
  }
  out.flush();
}

void PrintSummary(const std::vector<Check>& checks, std::ostream& out) {
  const char* separator = "";
  for (const Status status : {Status::kPass, Status::kWarn, Status::kFail, Status::kNotTried}) {
    out << separator << StatusText(status) << ": "
        << std::count_if(checks.begin(), checks.end(),
                         [status](const Check& check) { return check.status == status; });
    separator = ", ";
  }
  out << std::endl;
}

void PrintJson(const std::vector<Check>& checks, std::ostream& out) {
  nlohmann::ordered_json list = nlohmann::ordered_json::array();
  for (const Check& check : checks) list.push_back(ToJson(check));
  out << Dump(list, 2) << std::endl;
}

}  // namespace doctor
