// A host that shows how far the download of a package is and lets the user stop it with Ctrl-C.
//
// Exit status: 0, the library's error code, 50 after a cancellation, 51 for an offer that is
// refused, or above 100 for wrong usage.

#include <curl/curl.h>
#include <korvixsdk/korvixsdk.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <csignal>
#include <iostream>
#include <memory>
#include <string>

#include "offer_check.h"
#include "progress_package_service.h"

namespace {

using korvixsdk::Error;
using korvixsdk::PreparedUpdate;
using korvixsdk::Result;
using korvixsdk::UpdateInfo;

volatile std::sig_atomic_t interrupted = 0;

struct Options {
  korvixsdk::SDKConfig config{};
  std::string updater_path{};
  std::string package_url{};
  std::string packages_from{};
  std::int64_t cancel_after = -1;
  bool with_signature = false;
};

/// libcurl's global state. Where program and library share one libcurl it counts; where each has
/// its own, as on Windows, the program must see to its own.
struct CurlGlobal {
  CurlGlobal() { curl_global_init(CURL_GLOBAL_ALL); }
  ~CurlGlobal() { curl_global_cleanup(); }
  CurlGlobal(const CurlGlobal&) = delete;
  CurlGlobal& operator=(const CurlGlobal&) = delete;
};

int Fail(const char* step, const Error& error) {
  std::cerr << "package_progress: " << step << " failed with code " << error.code << ": "
            << error.message << std::endl;
  return error.code;
}

/// Draws only what has changed: a fast transfer calls thousands of times.
class ProgressBar {
 public:
  void Show(std::int64_t received, std::int64_t total) {
    const std::int64_t percent =
        total > 0 ? std::min<std::int64_t>(received * 100 / total, 100) : 0;
    const std::int64_t shown = total > 0 ? percent : received / 1024;
    if (received == 0 || shown == shown_) return;
    shown_ = shown;
    if (total > 0) {
      const auto filled = static_cast<std::size_t>(percent) * kWidth / 100;
      std::cerr << "\r[" << std::string(filled, '#') << std::string(kWidth - filled, ' ') << "] "
                << percent << " %" << std::flush;
    } else {
      std::cerr << "\r" << received / 1024 << " KiB" << std::flush;
    }
  }

 private:
  static constexpr std::size_t kWidth = 40;
  std::int64_t shown_ = -1;
};

package_progress::Progress MakeProgress(std::int64_t cancel_after) {
  return [bar = ProgressBar(), cancel_after](std::int64_t received, std::int64_t total) mutable {
    bar.Show(received, total);
    return interrupted == 0 && (cancel_after < 0 || received < cancel_after);
  };
}

void AddOptions(CLI::App& app, Options& options) {
  korvixsdk::SDKConfig& config = options.config;
  app.add_option("--product", config.product_id, "Product identifier")->required();
  app.add_option("--version", config.version, "The host's own version, such as 1.4.0")->required();
  app.add_option("--cache", config.cache_dir, "Folder for downloaded packages")->required();
  app.add_option("--server", config.server_base_url, "Base address of the service")->required();
  app.add_option("--updater", options.updater_path, "Program to start on the package");
  app.add_option("--package-url", options.package_url,
                 "Download from here instead of the offered address");
  app.add_option("--packages-from", options.packages_from,
                 "Address of another host than the service's that may offer packages");
  app.add_option("--cancel-after", options.cancel_after, "Stop after this many bytes")
      ->check(CLI::NonNegativeNumber);
  app.add_flag("--with-signature", options.with_signature,
               "Download the package's address + \".sig\" first, for an updater that checks it");
}

/// An offer announces no digest of the signature, and it needs none: it stands for itself.
Error PrepareSignature(korvixsdk::KorvixSDK& sdk, UpdateInfo info) {
  info.download_url += ".sig";
  info.sha256.clear();
  return sdk.PrepareUpdate(info).error;
}

int Run(Options options) {
  options.config.services = korvixsdk::SdkFactory::CreateDefaultServices();
  korvixsdk::ServiceRegistry& services = *options.config.services;
  services.update_package_service = std::make_shared<package_progress::ProgressPackageService>(
      services, MakeProgress(options.cancel_after));

  korvixsdk::KorvixSDK sdk;
  if (const Error error = sdk.Init(options.config); !error.ok()) return Fail("init", error);
  Result<UpdateInfo> check = sdk.CheckForUpdate();
  if (!check.ok()) return Fail("check", check.error);
  if (!check.value.has_update) {
    std::cout << "no update is offered" << std::endl;
    return 0;
  }
  if (!options.package_url.empty()) check.value.download_url = options.package_url;
  const Error refused = offer_check::CheckOffer(
      check.value, {options.config.server_base_url, options.packages_from, options.package_url});
  if (!refused.ok()) return Fail("offer", refused);

  if (options.with_signature) {
    const Error error = PrepareSignature(sdk, check.value);
    std::cerr << "\n";
    if (!error.ok()) return Fail("signature", error);
  }
  const Result<PreparedUpdate> prepared = sdk.PrepareUpdate(check.value);
  std::cerr << "\n";
  if (!prepared.ok()) return Fail("prepare", prepared.error);
  std::cout << "prepared: " << prepared.value.package_path << std::endl;

  if (options.updater_path.empty()) return 0;
  const Error error = sdk.LaunchPreparedUpdate(prepared.value, options.updater_path);
  if (!error.ok()) return Fail("launch", error);
  std::cout << "started: " << options.updater_path << std::endl;
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  Options options;
  CLI::App app("An update whose download shows its progress and can be stopped with Ctrl-C.");
  AddOptions(app, options);
  CLI11_PARSE(app, argc, argv);
  std::signal(SIGINT, [](int) { interrupted = 1; });
  const CurlGlobal curl_global;
  return Run(std::move(options));
}
