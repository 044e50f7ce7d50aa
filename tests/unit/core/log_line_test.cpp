#include "core/log_line.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <vector>

namespace korvixsdk {
namespace {

class Keeper : public ILogger {
 public:
  void LogDebug(const std::string& message) override { lines.push_back("debug " + message); }
  void LogInfo(const std::string& message) override { lines.push_back("info " + message); }
  void LogWarning(const std::string& message) override { lines.push_back("warning " + message); }
  void LogError(const std::string& message) override { lines.push_back("error " + message); }

  std::vector<std::string> lines;
};

class Thrower : public Keeper {
 public:
  void LogInfo(const std::string& /*message*/) override { throw std::runtime_error("no"); }
};

TEST(LogLine, HandsThePartsOnAsOneLineOfItsSeverity) {
  Keeper logger;
  LogInfo(&logger, {"a", "", "bc"});
  LogWarning(&logger, {"d", "e"});
  LogError(&logger, {std::string(100, 'f')});
  EXPECT_EQ(logger.lines,
            (std::vector<std::string>{"info abc", "warning de", "error " + std::string(100, 'f')}));
}

TEST(LogLine, IsDroppedWithoutLogger) { EXPECT_NO_THROW(LogInfo(nullptr, {"a"})); }

TEST(LogLine, IsLostWhereTheLoggerThrows) {
  Thrower logger;
  LogInfo(&logger, {"a"});
  LogError(&logger, {"b"});
  EXPECT_EQ(logger.lines, (std::vector<std::string>{"error b"}));
}

}  // namespace
}  // namespace korvixsdk
