#include "options.h"

#include <CLI/CLI.hpp>

namespace soak {
namespace {

constexpr char kDescription[] =
    "Update checks, install reports and package downloads without end, and what they cost.";

constexpr char kFooter[] =
    "Exit status: 0; 1 when an operation failed, when memory grew by more than the allowance or\n"
    "when descriptors (Windows: handles) grew after the warm-up. Wrong usage gives a status above\n"
    "100.";

constexpr std::int64_t kMost = 1000000000;

void AddOptions(CLI::App& app, Options& options) {
  app.add_option("--server", options.server, "Base address of the service")->required();
  app.add_option("--folder", options.folder, "Folder for the threads' cache folders")->required();
  app.add_option("--checks", options.checks, "Update checks, each with an install report")
      ->check(CLI::Range(std::int64_t{1}, kMost))
      ->capture_default_str();
  app.add_option("--downloads", options.downloads, "Package downloads, spread over the checks")
      ->check(CLI::Range(std::int64_t{0}, kMost))
      ->capture_default_str();
  app.add_option("--threads", options.threads, "Threads, each with a facade of its own")
      ->check(CLI::Range(std::int64_t{1}, std::int64_t{256}))
      ->capture_default_str();
  app.add_option("--warm-up", options.warm_up, "Checks before memory is measured first")
      ->check(CLI::Range(std::int64_t{1}, kMost))
      ->capture_default_str();
  app.add_option("--memory-allowance", options.memory_allowance_kib,
                 "KiB by which resident memory may grow after the warm-up")
      ->check(CLI::Range(std::int64_t{0}, kMost))
      ->capture_default_str();
}

}  // namespace

std::optional<Options> ReadOptions(int argc, char** argv, int* exit_status) {
  Options options;
  CLI::App app(kDescription, "soak");
  app.footer(kFooter);
  AddOptions(app, options);
  try {
    app.parse(argc, argv);
    if (options.checks <= options.warm_up) {
      throw CLI::ValidationError("--checks", "must be above --warm-up");
    }
  } catch (const CLI::ParseError& error) {
    *exit_status = app.exit(error);
    return std::nullopt;
  }
  return options;
}

}  // namespace soak
