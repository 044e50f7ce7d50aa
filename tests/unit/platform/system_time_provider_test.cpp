#include "platform/system_time_provider.h"

#include <gtest/gtest.h>

#include <chrono>
#include <ctime>

namespace korvixsdk {
namespace {

TEST(SystemTimeProvider, TellsWholeSecondsOfTheSystemClock) {
  const std::int64_t before = static_cast<std::int64_t>(std::time(nullptr));
  const std::int64_t now = SystemTimeProvider().NowUnixSeconds();
  const std::int64_t after = static_cast<std::int64_t>(std::time(nullptr));
  // The C library may read a coarser clock, which is behind by less than a second.
  EXPECT_GE(now, before);
  EXPECT_LE(now, after + 1);
}

TEST(SystemTimeProvider, AnswersTheSameWithinOneSecond) {
  using std::chrono::system_clock;
  SystemTimeProvider clock;
  for (int i = 0; i < 100; ++i) {
    const auto second = system_clock::now().time_since_epoch() / std::chrono::seconds(1);
    const std::int64_t first = clock.NowUnixSeconds();
    const std::int64_t later = clock.NowUnixSeconds();
    if (system_clock::now().time_since_epoch() / std::chrono::seconds(1) != second) continue;
    EXPECT_EQ(first, later);
    EXPECT_EQ(first, second);
    return;
  }
  FAIL() << "no two readings fell into one second";
}

}  // namespace
}  // namespace korvixsdk
