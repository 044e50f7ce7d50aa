#include <iostream>
#include <memory>
#include <optional>

#include "doctor/doctor.h"
#include "doctor/options.h"
#include "doctor/stderr_logger.h"

int main(int argc, char** argv) {
  int exit_status = 0;
  std::optional<doctor::Options> options = doctor::ReadOptions(argc, argv, &exit_status);
  if (!options) return exit_status;
  if (options->verbose) options->config.logger = std::make_shared<doctor::StderrLogger>();
  if (!options->json) std::cerr << "Examining. Where nobody answers, this takes a minute.\n";
  return doctor::Run(*options, std::cout);
}
