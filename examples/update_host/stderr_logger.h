#ifndef KORVIXSDK_EXAMPLES_UPDATE_HOST_STDERR_LOGGER_H_
#define KORVIXSDK_EXAMPLES_UPDATE_HOST_STDERR_LOGGER_H_

#include <korvixsdk/korvixsdk.h>

#include <iostream>
#include <string>

namespace update_host {

/// Prints the library's log lines to standard error, each after its severity.
class StderrLogger final : public korvixsdk::ILogger {
 public:
  void LogDebug(const std::string& message) override { Print("debug", message); }
  void LogInfo(const std::string& message) override { Print("info", message); }
  void LogWarning(const std::string& message) override { Print("warning", message); }
  void LogError(const std::string& message) override { Print("error", message); }

 private:
  static void Print(const char* severity, const std::string& message) {
    std::cerr << "[" << severity << "] " << message << "\n";
  }
};

}  // namespace update_host

#endif  // KORVIXSDK_EXAMPLES_UPDATE_HOST_STDERR_LOGGER_H_
