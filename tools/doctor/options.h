#ifndef KORVIXSDK_TOOLS_DOCTOR_OPTIONS_H_
#define KORVIXSDK_TOOLS_DOCTOR_OPTIONS_H_

#include <korvixsdk/korvixsdk.h>

#include <optional>
#include <string>

namespace doctor {

struct Options {
  /// What the host gives to the library.
  korvixsdk::SDKConfig config{};
  /// Takes the place of the address that the service offers.
  std::optional<std::string> package_url{};
  bool json = false;
  bool verbose = false;
};

/// Reads the command line. When there is nothing left to do (help was asked for, or the usage is
/// wrong) it prints what there is to say, sets `exit_status` and returns nothing.
std::optional<Options> ReadOptions(int argc, char** argv, int* exit_status);

}  // namespace doctor

#endif  // KORVIXSDK_TOOLS_DOCTOR_OPTIONS_H_
