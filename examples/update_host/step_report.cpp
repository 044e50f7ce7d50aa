#include "step_report.h"

#include <iostream>

namespace update_host {
namespace {

/// Texts of the service may hold line ends, or what a terminal would obey.
std::string OneLine(std::string text) {
  for (char& character : text) {
    const auto byte = static_cast<unsigned char>(character);
    if (byte < 0x20 || byte == 0x7f) character = ' ';
  }
  return text;
}

/// A service may send bytes that are not UTF-8, and a file name may hold some.
std::string Dump(const nlohmann::ordered_json& line) {
  return line.dump(-1, ' ', false, nlohmann::ordered_json::error_handler_t::replace);
}

}  // namespace

void StepReport::PrintLine(const std::string& step, const korvixsdk::Error& error,
                           const nlohmann::ordered_json& more_members,
                           const std::string& text) const {
  if (json_) {
    nlohmann::ordered_json line = {
        {"step", step}, {"code", error.code}, {"message", error.message}};
    line.update(more_members);
    std::cout << Dump(line) << std::endl;
  } else if (error.ok()) {
    std::cout << step << ": " << OneLine(text) << std::endl;
  }
  if (!error.ok()) {
    std::cerr << "update_host: " << step << " failed with code " << error.code << ": "
              << OneLine(error.message) << std::endl;
  }
}

}  // namespace update_host
