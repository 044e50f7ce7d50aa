#include <korvixsdk/korvixsdk.h>

#include <cstdio>

/// Goes through a whole update offline; exit status 0 when every step succeeds.
int main() {
  korvixsdk::SDKConfig config;
  config.product_id = "consumer";
  config.version = "1.0.0";
  config.cache_dir = "consumer-cache";
  config.server_base_url = "mock://service";

  korvixsdk::KorvixSDK sdk;
  if (const korvixsdk::Error error = sdk.Init(config); !error.ok()) return error.code;
  const korvixsdk::Result<korvixsdk::ServerResult> report = sdk.ReportInstall();
  if (!report.ok()) return report.error.code;
  korvixsdk::Result<korvixsdk::UpdateInfo> check = sdk.CheckForUpdate();
  if (!check.ok()) return check.error.code;
  check.value.download_url = "mock://package-ok";
  const korvixsdk::Result<korvixsdk::PreparedUpdate> prepared = sdk.PrepareUpdate(check.value);
  if (!prepared.ok()) return prepared.error.code;
  std::printf("%s is ready\n", prepared.value.package_path.c_str());
  return sdk.LaunchPreparedUpdate(prepared.value, "mock://launch-ok").code;
}
