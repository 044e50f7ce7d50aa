#include "support/open_handles.h"

#ifdef _WIN32
#include <windows.h>

#include <cstdint>
#else
#include <filesystem>
#include <iterator>
#endif

#include <algorithm>
#include <chrono>
#include <thread>

namespace korvixsdk::test {

#ifdef _WIN32
/// Handles are multiples of four, given out from the lowest free one on: behind this many free ones
/// there are no more.
static long CountHandlesByTrying() {
  constexpr std::uintptr_t kStep = 4;
  constexpr int kFreeOnesBehindTheLast = 128;
  long count = 0;
  int free_ones = 0;
  for (std::uintptr_t value = kStep; free_ones < kFreeOnesBehindTheLast; value += kStep) {
    DWORD flags = 0;
    // A handle is a number that Windows types as a pointer.
    if (GetHandleInformation(reinterpret_cast<HANDLE>(value), &flags)) {
      ++count;
      free_ones = 0;
    } else {
      ++free_ones;
    }
  }
  return count;
}
#endif

long OpenHandles() {
#ifdef _WIN32
  DWORD count = 0;
  GetProcessHandleCount(GetCurrentProcess(), &count);
  // Wine 8 answers 0, always.
  return count != 0 ? static_cast<long>(count) : CountHandlesByTrying();
#else
  const std::filesystem::directory_iterator open("/proc/self/fd");
  return std::distance(open, std::filesystem::directory_iterator());
#endif
}

long OpenHandlesAtRest() {
  long lowest = OpenHandles();
  for (int i = 0; i < 30; ++i) {
    std::this_thread::sleep_for(std::chrono::milliseconds(10));
    lowest = std::min(lowest, OpenHandles());
  }
  return lowest;
}

bool OpenHandlesFallTo(long limit) {
  const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(5);
  while (OpenHandles() > limit) {
    if (std::chrono::steady_clock::now() > deadline) return false;
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
  }
  return true;
}

}  // namespace korvixsdk::test
