#ifndef KORVIXSDK_BENCH_SPEED_MEASURE_H_
#define KORVIXSDK_BENCH_SPEED_MEASURE_H_

#include <benchmark/benchmark.h>

#include <string>

#include "allocation_counter.h"

namespace speed {

/// Registers the time of `work`, and the allocations of one run of it as the counter "allocations".
/// What `work` returns is looked at by nobody and computed all the same.
template <typename Work>
void Register(const std::string& name, Work work) {
  benchmark::RegisterBenchmark(name.c_str(), [work](benchmark::State& state) {
    for (auto _ : state) {
      auto answer = work();
      benchmark::DoNotOptimize(answer);
    }
    const auto allocations = AllocationsOf([&work] {
      auto answer = work();
      benchmark::DoNotOptimize(answer);
    });
    state.counters["allocations"] = static_cast<double>(allocations);
  });
}

}  // namespace speed

#endif  // KORVIXSDK_BENCH_SPEED_MEASURE_H_
