#include "process_usage.h"

// psapi.h needs windows.h before it.
// clang-format off
#include <windows.h>
#include <psapi.h>
// clang-format on

#include <cstdint>
#include <stdexcept>

namespace soak {
namespace {

/// Handles are multiples of four, given out from the lowest free one on.
std::int64_t CountHandlesByTrying() {
  constexpr std::uintptr_t kStep = 4;
  constexpr std::uintptr_t kLast = 16384 * kStep;
  std::int64_t count = 0;
  for (std::uintptr_t value = kStep; value <= kLast; value += kStep) {
    DWORD flags = 0;
    // A handle is a number that Windows types as a pointer.
    if (GetHandleInformation(reinterpret_cast<HANDLE>(value), &flags)) ++count;
  }
  return count;
}

std::int64_t CountHandles() {
  DWORD count = 0;
  if (!GetProcessHandleCount(GetCurrentProcess(), &count)) {
    throw std::runtime_error("GetProcessHandleCount failed");
  }
  // Wine 8 answers 0, always.
  return count != 0 ? count : CountHandlesByTrying();
}

}  // namespace

ProcessUsage MeasureProcess() {
  PROCESS_MEMORY_COUNTERS memory{};
  if (!GetProcessMemoryInfo(GetCurrentProcess(), &memory, sizeof(memory))) {
    throw std::runtime_error("GetProcessMemoryInfo failed");
  }
  return {static_cast<std::int64_t>(memory.WorkingSetSize / 1024), CountHandles()};
}

}  // namespace soak
