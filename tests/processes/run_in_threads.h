#ifndef KORVIXSDK_TESTS_PROCESSES_RUN_IN_THREADS_H_
#define KORVIXSDK_TESTS_PROCESSES_RUN_IN_THREADS_H_

#include <cstddef>
#include <future>
#include <thread>
#include <vector>

namespace korvixsdk::test {

/// Calls `work(0)`, `work(1)`, ... each in a thread of its own, lets them go together and returns
/// when all have ended.
template <typename Work>
void RunInThreads(std::size_t count, const Work& work) {
  std::promise<void> start;
  const std::shared_future<void> started = start.get_future().share();
  std::vector<std::thread> threads;
  for (std::size_t index = 0; index < count; ++index) {
    threads.emplace_back([started, index, &work] {
      started.wait();
      work(index);
    });
  }
  start.set_value();
  for (std::thread& thread : threads) thread.join();
}

}  // namespace korvixsdk::test

#endif  // KORVIXSDK_TESTS_PROCESSES_RUN_IN_THREADS_H_
