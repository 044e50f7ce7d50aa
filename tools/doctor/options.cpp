#include "doctor/options.h"

#include <CLI/CLI.hpp>

namespace doctor {
namespace {

constexpr char kDescription[] =
    "Examines a machine and a KorvixSDK service from end to end and says what to do.";

constexpr char kFooter[] =
    "Exit status: 0, or 12 when a line is `fail`, and above 100 for wrong usage. With --json it\n"
    "prints one object. It reports the installation and downloads the package twice: once by\n"
    "itself and once through the library.";

void AddOptions(CLI::App& app, Options& options) {
  korvixsdk::SDKConfig& config = options.config;
  app.add_option("--product", config.product_id, "Product identifier")->required();
  app.add_option("--version", config.version, "The host's own version, such as 1.4.0")->required();
  app.add_option("--cache", config.cache_dir, "The host's folder for packages, made when missing")
      ->required();
  app.add_option("--server", config.server_base_url,
                 "Base address of the service; mock:// is the built-in one")
      ->required();
  app.add_option("--fallback-id", config.fallback_device_id_path,
                 "File that keeps a generated identifier where the machine offers none");
  app.add_option("--package-url", options.package_url,
                 "Download from here instead of the offered address");
  app.add_flag("--json", options.json, "The checks as JSON");
  app.add_flag("--verbose", options.verbose, "The library's log lines on standard error");
}

}  // namespace

std::optional<Options> ReadOptions(int argc, char** argv, int* exit_status) {
  Options options;
  CLI::App app(kDescription, "korvix-doctor");
  app.footer(kFooter);
  AddOptions(app, options);
  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& error) {
    *exit_status = app.exit(error);
    return std::nullopt;
  }
  return options;
}

}  // namespace doctor
