#ifndef KORVIXSDK_NETWORK_WALL_CLOCK_H_
#define KORVIXSDK_NETWORK_WALL_CLOCK_H_

#include <chrono>
#include <cstdint>

namespace korvixsdk {

/// Whole seconds since 1970-01-01 UTC, for replies that carry no time of their own. Read from the
/// system directly: the host's clock service has no say in what the service answered.
inline std::int64_t WallClockSeconds() {
  const auto since_epoch = std::chrono::system_clock::now().time_since_epoch();
  return std::chrono::duration_cast<std::chrono::seconds>(since_epoch).count();
}

}  // namespace korvixsdk

#endif  // KORVIXSDK_NETWORK_WALL_CLOCK_H_
