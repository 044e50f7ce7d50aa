#include "options.h"

#include <CLI/CLI.hpp>

namespace update_host {
namespace {

constexpr char kDescription[] =
    "A host application's update, from the command line: one step a line on standard output.";

constexpr char kFooter[] =
    "Exit status: 0, or the library's error code (1 to 11) of the step that failed, whose message\n"
    "is on standard error. An offer that is refused before `prepare` gives 51, and wrong usage a\n"
    "status above 100. That no update is offered, or that the service rejects the install report,\n"
    "is an answer and not a failure: the status is 0, and `update` goes on after a rejected "
    "report.\n"
    "With --json a line is {\"step\", \"code\", \"message\", \"value\"}, value being the step's "
    "record;\n"
    "a failed step has its line too. `launch` has no value. The steps `init` and `offer` show "
    "only\n"
    "if they fail.";

void AddOptions(CLI::App& app, Options& options) {
  korvixsdk::SDKConfig& config = options.config;
  app.add_option("--product", config.product_id, "Product identifier")->required();
  app.add_option("--version", config.version, "The host's own version, such as 1.4.0")->required();
  app.add_option("--cache", config.cache_dir, "Folder for downloaded packages, made when missing")
      ->required();
  app.add_option("--server", config.server_base_url,
                 "Base address of the service; mock:// is the built-in one")
      ->required();
  app.add_option("--fallback-id", config.fallback_device_id_path,
                 "File that keeps a generated identifier where the machine offers none");
  app.add_option("--updater", options.updater_path, "Program that `update` starts on the package");
  app.add_option("--package-url", options.package_url,
                 "Download from here instead of the offered address");
  app.add_option("--packages-from", options.packages_from,
                 "Address of another host than the service's that may offer packages");
  app.add_flag("--json", options.json, "One JSON object a step");
  app.add_flag("--verbose", options.verbose, "The library's log lines on standard error");
}

void AddCommands(CLI::App& app, Options& options) {
  const auto add = [&](const char* name, const char* description, Command command) {
    return app.add_subcommand(name, description)->callback([&options, command] {
      options.command = command;
    });
  };
  add("device-id", "Print this machine's identifier", Command::kDeviceId);
  add("report-install", "Report the installation to the service", Command::kReportInstall);
  add("check", "Ask for an update", Command::kCheck);
  add("prepare", "Ask for an update, download and verify it", Command::kPrepare);
  add("update", "All of these, then start the updater", Command::kUpdate)
      ->needs(app.get_option("--updater"));
}

}  // namespace

std::optional<Options> ReadOptions(int argc, char** argv, int* exit_status) {
  Options options;
  CLI::App app(kDescription, "update_host");
  app.fallthrough();
  app.require_subcommand(1);
  app.footer(kFooter);
  AddOptions(app, options);
  AddCommands(app, options);
  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& error) {
    *exit_status = app.exit(error);
    return std::nullopt;
  }
  return options;
}

}  // namespace update_host
