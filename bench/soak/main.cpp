#include <csignal>
#include <exception>
#include <iostream>
#include <string>

#include "options.h"
#include "soak.h"
#include "soak_report.h"

namespace {

/// Rows of the table after the warm-up's: a leak shows as a slope.
constexpr int kStages = 10;

int Run(const soak::Options& options) {
  soak::Soak soak(options);
  std::string failure;
  if (!soak.Init(&failure)) {
    std::cerr << "soak: " << failure << '\n';
    return 1;
  }
  PrintHead(options);
  const double warm_up = static_cast<double>(options.warm_up) / static_cast<double>(options.checks);
  const soak::Sample warmed_up = soak.RunTo(warm_up);
  PrintRow(warmed_up, {});
  soak::Sample last = warmed_up;
  for (int stage = 1; stage <= kStages; ++stage) {
    const soak::Sample next = soak.RunTo(warm_up + (1 - warm_up) * stage / kStages);
    PrintRow(next, last);
    last = next;
  }
  for (const std::string& text : soak.Failures()) std::cerr << "soak: " << text << '\n';
  return PrintVerdict(warmed_up, last, options.memory_allowance_kib) ? 0 : 1;
}

}  // namespace

int main(int argc, char** argv) {
#ifndef _WIN32
  // As a host with several threads should.
  std::signal(SIGPIPE, SIG_IGN);
#endif
  int exit_status = 0;
  const std::optional<soak::Options> options = soak::ReadOptions(argc, argv, &exit_status);
  if (!options) return exit_status;
  try {
    return Run(*options);
  } catch (const std::exception& error) {
    std::cerr << "soak: " << error.what() << '\n';
    return 1;
  }
}
