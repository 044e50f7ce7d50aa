#ifndef KORVIXSDK_TESTS_SUPPORT_HOST_CONFIG_H_
#define KORVIXSDK_TESTS_SUPPORT_HOST_CONFIG_H_

#include <string>

#include "korvixsdk/sdk_config.h"
#include "support/temp_folder.h"

namespace korvixsdk::test {

/// The least that `Init` takes.
inline SDKConfig LeastConfig(const std::string& cache_dir) {
  SDKConfig config;
  config.product_id = "editor";
  config.version = "1.5";
  config.cache_dir = cache_dir;
  return config;
}

/// A host that keeps all its files in `folder`.
inline SDKConfig HostConfig(const TempFolder& folder,
                            const std::string& server = "mock://service") {
  SDKConfig config = LeastConfig(folder.Entry("cache"));
  config.server_base_url = server;
  config.fallback_device_id_path = folder.Entry("device-id");
  return config;
}

}  // namespace korvixsdk::test

#endif  // KORVIXSDK_TESTS_SUPPORT_HOST_CONFIG_H_
