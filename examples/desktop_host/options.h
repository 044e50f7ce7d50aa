#ifndef KORVIXSDK_EXAMPLES_DESKTOP_HOST_OPTIONS_H_
#define KORVIXSDK_EXAMPLES_DESKTOP_HOST_OPTIONS_H_

#include <korvixsdk/korvixsdk.h>

#include <optional>
#include <string>

namespace desktop_host {

/// What is set when the application starts. Every option stands on the command line as "--name
/// value", or as "name=value" in the section [desktop_host] of desktop_host.ini beside the program;
/// the command line counts more.
struct Options {
  /// What the user knows the application by (--name).
  std::string product_name;
  /// --product, --version, --server, --cache and --fallback-id.
  korvixsdk::SDKConfig config;
  /// The program that installs packages (--updater).
  std::string updater_path;
  /// Download from here instead of from the offered address (--package-url).
  std::string package_url;
  /// Packages may be offered from this address's host too (--packages-from), and not only from the
  /// service's.
  std::string packages_from;
};

/// The process's options; nothing, with `problem` set, when the command line cannot be read.
std::optional<Options> ReadOptions(std::wstring* problem);

}  // namespace desktop_host

#endif  // KORVIXSDK_EXAMPLES_DESKTOP_HOST_OPTIONS_H_
