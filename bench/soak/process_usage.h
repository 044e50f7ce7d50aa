#ifndef KORVIXSDK_BENCH_SOAK_PROCESS_USAGE_H_
#define KORVIXSDK_BENCH_SOAK_PROCESS_USAGE_H_

#include <cstdint>

namespace soak {

/// What this process holds of the system.
struct ProcessUsage {
  std::int64_t resident_kib = 0;
  /// Open descriptors, or handles on Windows.
  std::int64_t descriptors = 0;
};

/// Throws `std::runtime_error` when the system does not tell.
ProcessUsage MeasureProcess();

}  // namespace soak

#endif  // KORVIXSDK_BENCH_SOAK_PROCESS_USAGE_H_
