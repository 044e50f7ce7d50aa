// A host that reaches its service through a proxy and knows the service's public key.
//
// Exit status: 0, the library's error code, or a status above 100 for wrong usage.

#include <curl/curl.h>
#include <korvixsdk/korvixsdk.h>

#include <CLI/CLI.hpp>
#include <iostream>
#include <memory>
#include <string>

#include "curl_network_client.h"

namespace {

using custom_network_client::Connection;
using korvixsdk::Error;
using korvixsdk::Result;

/// libcurl's global state. Where program and library share one libcurl it counts; where each has
/// its own, as on Windows, the program must see to its own.
struct CurlGlobal {
  CurlGlobal() { curl_global_init(CURL_GLOBAL_ALL); }
  ~CurlGlobal() { curl_global_cleanup(); }
  CurlGlobal(const CurlGlobal&) = delete;
  CurlGlobal& operator=(const CurlGlobal&) = delete;
};

int Fail(const char* step, const Error& error) {
  std::cerr << "custom_network_client: " << step << " failed with code " << error.code << ": "
            << error.message << std::endl;
  return error.code;
}

void AddOptions(CLI::App& app, korvixsdk::SDKConfig& config, Connection& connection) {
  app.add_option("--product", config.product_id, "Product identifier")->required();
  app.add_option("--version", config.version, "The host's own version, such as 1.4.0")->required();
  app.add_option("--cache", config.cache_dir, "Folder for downloaded packages")->required();
  app.add_option("--server", connection.server_base_url, "Base address of the service")->required();
  app.add_option("--proxy", connection.proxy, "Proxy, such as http://proxy.example.com:3128");
  app.add_option("--pinned-key", connection.pinned_key,
                 "The service's public key: sha256//BASE64, or a file");
  app.add_option("--ca-file", connection.ca_file,
                 "Authorities to trust in place of the system's, PEM");
}

int Run(korvixsdk::SDKConfig config, const Connection& connection) {
  // The library fills in all that is not set here.
  config.services = std::make_shared<korvixsdk::ServiceRegistry>();
  config.services->network_client =
      std::make_shared<custom_network_client::CurlNetworkClient>(connection);

  korvixsdk::KorvixSDK sdk;
  if (const Error error = sdk.Init(config); !error.ok()) return Fail("init", error);
  const Result<korvixsdk::ServerResult> report = sdk.ReportInstall();
  if (!report.ok()) return Fail("report-install", report.error);
  std::cout << "report-install: code " << report.value.code << ", " << report.value.message
            << std::endl;
  const Result<korvixsdk::UpdateInfo> check = sdk.CheckForUpdate();
  if (!check.ok()) return Fail("check", check.error);
  std::cout << "check: "
            << (check.value.has_update ? "version " + check.value.latest_version + " is offered"
                                       : "no update is offered")
            << std::endl;
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  korvixsdk::SDKConfig config;
  Connection connection;
  CLI::App app("An update check through a proxy, from a service with a pinned public key.");
  AddOptions(app, config, connection);
  CLI11_PARSE(app, argc, argv);
  const CurlGlobal curl_global;
  return Run(config, connection);
}
