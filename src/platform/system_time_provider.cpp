#include "platform/system_time_provider.h"

#include <chrono>

namespace korvixsdk {

std::int64_t SystemTimeProvider::NowUnixSeconds() {
  const auto since_epoch = std::chrono::system_clock::now().time_since_epoch();
  return std::chrono::duration_cast<std::chrono::seconds>(since_epoch).count();
}

}  // namespace korvixsdk
