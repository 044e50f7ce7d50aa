// What `late_host` loads, and the library with it.
#include <korvixsdk/korvixsdk.h>

#include <iostream>

#include "support/host_config.h"

#ifdef _WIN32
#define LATE_REQUESTS_API __declspec(dllexport)
#else
#define LATE_REQUESTS_API __attribute__((visibility("default")))
#endif

/// Makes an update check and says what came of it.
extern "C" LATE_REQUESTS_API void MakeRequest(const char* server, const char* folder) {
  static korvixsdk::KorvixSDK& sdk = *new korvixsdk::KorvixSDK;
  korvixsdk::SDKConfig config = korvixsdk::test::LeastConfig(folder);
  config.server_base_url = server;
  korvixsdk::Error error = sdk.Init(config);
  if (error.ok()) error = sdk.CheckForUpdate().error;
  std::cout << error.code << ' ' << error.message << std::endl;
}
