#include "processes/file_host.h"

#include <cctype>
#include <filesystem>
#include <memory>

#include "platform/placeholder_device_id_provider.h"
#include "support/host_config.h"

namespace korvixsdk::test {

FileHost::FileHost(const std::string& cache_dir, const std::string& fallback_id_path) {
  auto provider = std::make_shared<PlaceholderDeviceIdProvider>("");
  provider->set_force_sources_unavailable(true);
  SDKConfig config = LeastConfig(cache_dir);
  config.server_base_url = "mock://service";
  config.fallback_device_id_path = fallback_id_path;
  config.services = std::make_shared<ServiceRegistry>();
  config.services->device_id_provider = provider;
  init_ = sdk_.Init(config);
}

Result<PreparedUpdate> FileHost::Prepare(const std::string& url, const std::string& sha256) {
  UpdateInfo info;
  info.download_url = url;
  info.sha256 = sha256;
  return sdk_.PrepareUpdate(info);
}

bool IsFallbackId(const std::string& id) {
  const std::string form = "guid-xxxxxxxx-xxxx-xxxx-xxxx-xxxxxxxxxxxx";
  if (id.size() != form.size()) return false;
  for (std::size_t i = 0; i < form.size(); ++i) {
    const bool digit =
        std::isdigit(static_cast<unsigned char>(id[i])) || (id[i] >= 'a' && id[i] <= 'f');
    if (form[i] == 'x' ? !digit : id[i] != form[i]) return false;
  }
  return true;
}

std::string Join(const std::string& folder, const std::string& name) {
  return folder + static_cast<char>(std::filesystem::path::preferred_separator) + name;
}

}  // namespace korvixsdk::test
