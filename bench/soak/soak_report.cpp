#include "soak_report.h"

#include <initializer_list>
#include <iomanip>
#include <iostream>
#include <string>

namespace soak {
namespace {

#ifdef _WIN32
constexpr char kDescriptors[] = "handles";
#else
constexpr char kDescriptors[] = "descriptors";
#endif

constexpr int kWidth = 12;

template <typename T>
void PrintCells(std::initializer_list<T> cells) {
  for (const T& cell : cells) std::cout << std::setw(kWidth) << cell;
}

std::int64_t Operations(const Counts& counts) {
  return counts.checks + counts.reports + counts.downloads;
}

}  // namespace

void PrintHead(const Options& options) {
  std::cout << options.checks << " update checks and install reports, " << options.downloads
            << " downloads, " << options.threads << " thread(s), " << options.server << '\n';
  PrintCells(
      {"checks", "reports", "downloads", "failures", "a second", "memory KiB", kDescriptors});
  std::cout << std::endl;
}

void PrintRow(const Sample& sample, const Sample& previous) {
  const auto operations =
      static_cast<double>(Operations(sample.counts) - Operations(previous.counts));
  PrintCells({sample.counts.checks, sample.counts.reports, sample.counts.downloads,
              sample.counts.failures, static_cast<std::int64_t>(operations / sample.seconds),
              sample.usage.resident_kib, sample.usage.descriptors});
  std::cout << std::endl;
}

bool PrintVerdict(const Sample& warmed_up, const Sample& end, std::int64_t memory_allowance_kib) {
  const std::int64_t memory = end.usage.resident_kib - warmed_up.usage.resident_kib;
  const std::int64_t descriptors = end.usage.descriptors - warmed_up.usage.descriptors;
  const bool good = end.counts.failures == 0 && memory <= memory_allowance_kib && descriptors <= 0;
  std::cout << (good ? "passed: " : "FAILED: ") << end.counts.failures << " failures, memory "
            << std::showpos << memory << " KiB (allowed " << memory_allowance_kib << "), "
            << kDescriptors << ' ' << descriptors << std::noshowpos << " after the warm-up"
            << std::endl;
  return good;
}

}  // namespace soak
