#include "process_usage.h"

// psapi.h needs windows.h before it.
// clang-format off
#include <windows.h>
#include <psapi.h>
// clang-format on

#include <stdexcept>

#include "support/open_handles.h"

namespace soak {

ProcessUsage MeasureProcess() {
  PROCESS_MEMORY_COUNTERS memory{};
  if (!GetProcessMemoryInfo(GetCurrentProcess(), &memory, sizeof(memory))) {
    throw std::runtime_error("GetProcessMemoryInfo failed");
  }
  return {static_cast<std::int64_t>(memory.WorkingSetSize / 1024), korvixsdk::test::OpenHandles()};
}

}  // namespace soak
