#include "platform/null_logger.h"

#include <gtest/gtest.h>

#include <string>

namespace korvixsdk {
namespace {

TEST(NullLogger, AcceptsEveryMessage) {
  NullLogger logger;
  for (const std::string& message :
       {std::string(), std::string(100000, 'x'), std::string("\0", 1)}) {
    EXPECT_NO_THROW(logger.LogDebug(message));
    EXPECT_NO_THROW(logger.LogInfo(message));
    EXPECT_NO_THROW(logger.LogWarning(message));
    EXPECT_NO_THROW(logger.LogError(message));
  }
}

}  // namespace
}  // namespace korvixsdk
