#include <fstream>

#include "doctor/system.h"

namespace doctor {

std::string OperatingSystem() {
  const std::string key = "PRETTY_NAME=";
  std::ifstream release("/etc/os-release");
  for (std::string line; std::getline(release, line);) {
    if (line.rfind(key, 0) != 0) continue;
    std::string name = line.substr(key.size());
    if (name.size() > 1 && name.front() == '"') name = name.substr(1, name.size() - 2);
    return name;
  }
  return "Linux";
}

std::vector<std::string> SystemProxies() { return {}; }

}  // namespace doctor
