#include <korvixsdk/version.h>

#include <memory>
#include <optional>

#include "options.h"
#include "stderr_logger.h"
#include "update_host.h"

int main(int argc, char** argv) {
  int exit_status = 0;
  std::optional<update_host::Options> options = update_host::ReadOptions(argc, argv, &exit_status);
  if (!options) return exit_status;
  if (options->verbose) {
    options->config.logger = std::make_shared<update_host::StderrLogger>();
    options->config.logger->LogInfo("KorvixSDK " KORVIXSDK_VERSION ", service " +
                                    options->config.server_base_url);
  }
  return update_host::UpdateHost(*options).Run().code;
}
