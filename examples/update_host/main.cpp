#include <korvixsdk/version.h>

#include <CLI/CLI.hpp>
#include <memory>

#include "stderr_logger.h"
#include "update_host.h"

namespace {

using update_host::Options;
using update_host::UpdateHost;
using Command = korvixsdk::Error (UpdateHost::*)();

constexpr char kDescription[] =
    "A host application's update, from the command line: one step a line on standard output.";

constexpr char kFooter[] =
    "Exit status: 0, or the library's error code (1 to 11) of the step that failed, whose message\n"
    "is on standard error. An offer that is refused before `prepare` gives 51, and wrong usage a\n"
    "status above 100. That no update is offered, or that the service rejects the install report,\n"
    "is an answer and not a failure.";

void AddOptions(CLI::App& app, Options& options, bool& verbose) {
  korvixsdk::SDKConfig& config = options.config;
  app.add_option("--product", config.product_id, "Product identifier")->required();
  app.add_option("--version", config.version, "The host's own version, such as 1.4.0")->required();
  app.add_option("--cache", config.cache_dir, "Folder for packages, made when missing")->required();
  app.add_option("--server", config.server_base_url, "Base address of the service, or mock://x")
      ->required();
  app.add_option("--fallback-id", config.fallback_device_id_path,
                 "File that keeps a generated identifier where the machine offers none");
  app.add_option("--updater", options.updater_path, "Program that `update` starts on the package");
  app.add_option("--package-url", options.package_url,
                 "Download from here instead of the offered address");
  app.add_option("--packages-from", options.packages_from,
                 "Address of another host than the service's that may offer packages");
  app.add_flag("--verbose", verbose, "The library's log lines on standard error");
}

void AddCommands(CLI::App& app, Command& command) {
  const auto add = [&](const char* name, const char* description, Command its_command) {
    return app.add_subcommand(name, description)->callback([&command, its_command] {
      command = its_command;
    });
  };
  add("device-id", "Print this machine's identifier", &UpdateHost::PrintDeviceId);
  add("report-install", "Report the installation to the service", &UpdateHost::ReportInstall);
  add("check", "Ask for an update", &UpdateHost::Check);
  add("prepare", "Ask for an update, download and verify it", &UpdateHost::Prepare);
  add("update", "All of these, then start the updater", &UpdateHost::Update)
      ->needs(app.get_option("--updater"));
}

}  // namespace

int main(int argc, char** argv) {
  Options options;
  bool verbose = false;
  Command command = &UpdateHost::Check;
  CLI::App app(kDescription, "update_host");
  app.fallthrough();
  app.require_subcommand(1);
  app.footer(kFooter);
  AddOptions(app, options, verbose);
  AddCommands(app, command);
  CLI11_PARSE(app, argc, argv);
  if (verbose) {
    options.config.logger = std::make_shared<update_host::StderrLogger>();
    options.config.logger->LogInfo("KorvixSDK " KORVIXSDK_VERSION ", service " +
                                   options.config.server_base_url);
  }

  UpdateHost host(options);
  if (const korvixsdk::Error error = host.Init(); !error.ok()) return error.code;
  return (host.*command)().code;
}
