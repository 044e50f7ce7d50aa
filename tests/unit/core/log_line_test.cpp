#include "core/log_line.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <vector>

#include "support/recording_logger.h"

namespace korvixsdk {
namespace {

using test::RecordingLogger;

class Thrower : public RecordingLogger {
 public:
  void LogInfo(const std::string& /*message*/) override { throw std::runtime_error("no"); }
};

TEST(LogLine, HandsThePartsOnAsOneLineOfItsSeverity) {
  RecordingLogger logger;
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
