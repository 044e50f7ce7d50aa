#ifndef KORVIXSDK_PLATFORM_NULL_LOGGER_H_
#define KORVIXSDK_PLATFORM_NULL_LOGGER_H_

#include <string>

#include "korvixsdk/logger.h"

namespace korvixsdk {

/// Drops every line. No state; any thread.
class NullLogger : public ILogger {
 public:
  void LogDebug(const std::string& /*message*/) override {}
  void LogInfo(const std::string& /*message*/) override {}
  void LogWarning(const std::string& /*message*/) override {}
  void LogError(const std::string& /*message*/) override {}
};

}  // namespace korvixsdk

#endif  // KORVIXSDK_PLATFORM_NULL_LOGGER_H_
