#include <korvixsdk/korvixsdk.h>

#include "offer_check.h"

int main() {
  korvixsdk::SDKConfig config;
  config.product_id = "editor";
  config.version = "1.4.0";
  config.cache_dir = "editor-cache";          // in a product an absolute path
  config.server_base_url = "mock://service";  // or the service's address

  korvixsdk::KorvixSDK sdk;
  if (const korvixsdk::Error error = sdk.Init(config); !error.ok()) return error.code;

  korvixsdk::Result<korvixsdk::UpdateInfo> check = sdk.CheckForUpdate();
  if (!check.ok()) return check.error.code;
  if (!check.value.has_update) return 0;
  // The library takes an offer as it comes: where from, under which name, with which digest?
  const korvixsdk::Error refused =
      offer_check::CheckOffer(check.value, {"https://downloads.example.com"});
  if (!refused.ok()) return refused.code;

  const korvixsdk::Result<korvixsdk::PreparedUpdate> prepared = sdk.PrepareUpdate(check.value);
  if (!prepared.ok()) return prepared.error.code;
  return sdk.LaunchPreparedUpdate(prepared.value, "editor-updater.exe").code;
}
