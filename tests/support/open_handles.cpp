#include "support/open_handles.h"

#ifdef _WIN32
#include <windows.h>
#else
#include <filesystem>
#include <iterator>
#endif

#include <chrono>
#include <thread>

namespace korvixsdk::test {

long OpenHandles() {
#ifdef _WIN32
  DWORD count = 0;
  GetProcessHandleCount(GetCurrentProcess(), &count);
  return static_cast<long>(count);
#else
  const std::filesystem::directory_iterator open("/proc/self/fd");
  return std::distance(open, std::filesystem::directory_iterator());
#endif
}

bool OpenHandlesFallTo(long limit) {
  const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(20);
  while (OpenHandles() > limit) {
    if (std::chrono::steady_clock::now() > deadline) return false;
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
  }
  return true;
}

}  // namespace korvixsdk::test
