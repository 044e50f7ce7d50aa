#include <unistd.h>

#include <fstream>
#include <stdexcept>

#include "process_usage.h"
#include "support/open_handles.h"

namespace soak {
namespace {

std::int64_t ResidentKib() {
  std::ifstream statm("/proc/self/statm");
  std::int64_t total_pages = 0;
  std::int64_t resident_pages = 0;
  statm >> total_pages >> resident_pages;
  if (!statm) throw std::runtime_error("/proc/self/statm cannot be read");
  return resident_pages * sysconf(_SC_PAGESIZE) / 1024;
}

}  // namespace

ProcessUsage MeasureProcess() { return {ResidentKib(), korvixsdk::test::OpenHandles()}; }

}  // namespace soak
