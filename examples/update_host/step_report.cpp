#include "step_report.h"

#include <iostream>

#include "printable.h"

namespace update_host {

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
