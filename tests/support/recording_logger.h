#ifndef KORVIXSDK_TESTS_SUPPORT_RECORDING_LOGGER_H_
#define KORVIXSDK_TESTS_SUPPORT_RECORDING_LOGGER_H_

#include <korvixsdk/logger.h>

#include <string>
#include <vector>

namespace korvixsdk::test {

/// Keeps every line as its severity and text: "info SDK init success, cache_dir=...".
class RecordingLogger : public ILogger {
 public:
  void LogDebug(const std::string& message) override { lines.push_back("debug " + message); }
  void LogInfo(const std::string& message) override { lines.push_back("info " + message); }
  void LogWarning(const std::string& message) override { lines.push_back("warning " + message); }
  void LogError(const std::string& message) override { lines.push_back("error " + message); }

  std::vector<std::string> lines;
};

}  // namespace korvixsdk::test

#endif  // KORVIXSDK_TESTS_SUPPORT_RECORDING_LOGGER_H_
