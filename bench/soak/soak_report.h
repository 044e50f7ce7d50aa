#ifndef KORVIXSDK_BENCH_SOAK_SOAK_REPORT_H_
#define KORVIXSDK_BENCH_SOAK_SOAK_REPORT_H_

#include <cstdint>

#include "soak.h"

namespace soak {

/// The table's head; a row is printed as soon as its stage has ended.
void PrintHead(const Options& options);
void PrintRow(const Sample& sample, const Sample& previous);

/// Prints and answers whether the run was as it should be.
bool PrintVerdict(const Sample& warmed_up, const Sample& end, std::int64_t memory_allowance_kib);

}  // namespace soak

#endif  // KORVIXSDK_BENCH_SOAK_SOAK_REPORT_H_
