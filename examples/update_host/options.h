#ifndef KORVIXSDK_EXAMPLES_UPDATE_HOST_OPTIONS_H_
#define KORVIXSDK_EXAMPLES_UPDATE_HOST_OPTIONS_H_

#include <korvixsdk/korvixsdk.h>

#include <optional>
#include <string>

namespace update_host {

enum class Command { kDeviceId, kReportInstall, kCheck, kPrepare, kUpdate };

struct Options {
  Command command = Command::kCheck;
  korvixsdk::SDKConfig config{};
  std::string updater_path{};
  /// Takes the place of the address that the service offers.
  std::optional<std::string> package_url{};
  /// Packages may be offered from this address's host too, and not only from the service's.
  std::string packages_from{};
  bool json = false;
  bool verbose = false;
};

/// Reads the command line. When there is nothing left to do (help was asked for, or the usage is
/// wrong) it prints what there is to say, sets `exit_status` and returns nothing.
std::optional<Options> ReadOptions(int argc, char** argv, int* exit_status);

}  // namespace update_host

#endif  // KORVIXSDK_EXAMPLES_UPDATE_HOST_OPTIONS_H_
