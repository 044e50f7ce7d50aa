#ifndef KORVIXSDK_TOOLS_DOCTOR_STDERR_LOGGER_H_
#define KORVIXSDK_TOOLS_DOCTOR_STDERR_LOGGER_H_

#include <korvixsdk/korvixsdk.h>

#include <iostream>
#include <string>

namespace doctor {

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

}  // namespace doctor

#endif  // KORVIXSDK_TOOLS_DOCTOR_STDERR_LOGGER_H_
