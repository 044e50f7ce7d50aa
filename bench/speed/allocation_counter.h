#ifndef KORVIXSDK_BENCH_SPEED_ALLOCATION_COUNTER_H_
#define KORVIXSDK_BENCH_SPEED_ALLOCATION_COUNTER_H_

#include <cstdint>

namespace speed {

/// How often this thread has called operator new, which the program that links this replaces.
std::int64_t AllocationCount();

/// The calls of operator new that one run of `work` makes.
template <typename Work>
std::int64_t AllocationsOf(Work&& work) {
  const std::int64_t before = AllocationCount();
  work();
  return AllocationCount() - before;
}

}  // namespace speed

#endif  // KORVIXSDK_BENCH_SPEED_ALLOCATION_COUNTER_H_
