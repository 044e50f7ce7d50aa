// A host whose log file tells what the library did.
//
// Exit status: 0, the library's error code, 51 for an offer that is refused, or 64 for wrong usage.

#include <korvixsdk/korvixsdk.h>

#include <iostream>
#include <memory>
#include <string>

#include "file_logger.h"
#include "offer_check.h"

namespace {

using korvixsdk::Error;
using korvixsdk::Result;

constexpr int kWrongUsage = 64;

int Fail(const char* step, const Error& error) {
  std::cerr << "custom_logger: " << step << " failed with code " << error.code << ": "
            << error.message << std::endl;
  return error.code;
}

int Run(const korvixsdk::SDKConfig& config) {
  korvixsdk::KorvixSDK sdk;
  if (const Error error = sdk.Init(config); !error.ok()) return Fail("init", error);
  const Result<korvixsdk::UpdateInfo> check = sdk.CheckForUpdate();
  if (!check.ok()) return Fail("check", check.error);
  if (!check.value.has_update) return 0;
  const Error refused = offer_check::CheckOffer(check.value, {config.server_base_url});
  if (!refused.ok()) return Fail("offer", refused);
  const Result<korvixsdk::PreparedUpdate> prepared = sdk.PrepareUpdate(check.value);
  if (!prepared.ok()) return Fail("prepare", prepared.error);
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 5) {
    std::cerr << "usage: custom_logger LOG-FILE PRODUCT CACHE-FOLDER SERVER\n";
    return kWrongUsage;
  }
  Result<std::shared_ptr<custom_logger::FileLogger>> logger =
      custom_logger::FileLogger::Open(argv[1]);
  if (!logger.ok()) return Fail("log", logger.error);

  korvixsdk::SDKConfig config;
  config.product_id = argv[2];
  config.version = "1.4.0";
  config.cache_dir = argv[3];
  config.server_base_url = argv[4];
  config.logger = logger.value;
  custom_logger::LogStart(*config.logger, config);
  return Run(config);
}
