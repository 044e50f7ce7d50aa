#ifndef KORVIXSDK_BENCH_SOAK_OPTIONS_H_
#define KORVIXSDK_BENCH_SOAK_OPTIONS_H_

#include <cstdint>
#include <optional>
#include <string>

namespace soak {

struct Options {
  std::string server;
  /// Each thread gets a cache folder below it.
  std::string folder;
  /// Update checks in all threads together; each comes with an install report.
  std::int64_t checks = 100000;
  std::int64_t downloads = 1000;
  std::int64_t threads = 1;
  /// Checks before the first measurement.
  std::int64_t warm_up = 1000;
  std::int64_t memory_allowance_kib = 4096;
};

/// Nothing, and the exit status, when the program is to end: wrong usage, or help was asked for.
std::optional<Options> ReadOptions(int argc, char** argv, int* exit_status);

}  // namespace soak

#endif  // KORVIXSDK_BENCH_SOAK_OPTIONS_H_
