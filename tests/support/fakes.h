#ifndef KORVIXSDK_TESTS_SUPPORT_FAKES_H_
#define KORVIXSDK_TESTS_SUPPORT_FAKES_H_

#include <korvixsdk/korvixsdk.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace korvixsdk::test {

/// One fake for each service: it answers what the test put into it and records what it was asked.

class FakeTime : public ITimeProvider {
 public:
  std::int64_t NowUnixSeconds() override { return now; }
  std::int64_t now = 0;
};

class FakeDeviceId : public IDeviceIdProvider {
 public:
  Result<std::string> GetDeviceId() override {
    ++calls;
    return answer;
  }
  Result<std::vector<std::string>> CollectFingerprintSources() override { return {}; }

  Result<std::string> answer{"device-1", {}};
  int calls = 0;
};

class FakeNetwork : public INetworkClient {
 public:
  Result<ServerResult> ReportInstall(const std::string& product_id, const std::string& device_id,
                                     const std::string& version) override {
    installs.push_back({product_id, device_id, version});
    return install_answer;
  }
  Result<UpdateInfo> CheckForUpdate(const UpdateCheckRequest& request) override {
    checks.push_back(request);
    return check_answer;
  }

  Result<ServerResult> install_answer{};
  Result<UpdateInfo> check_answer{};
  std::vector<std::vector<std::string>> installs;
  std::vector<UpdateCheckRequest> checks;
};

class FakePackages : public IUpdatePackageService {
 public:
  Result<PreparedUpdate> Prepare(const UpdateInfo& info, const std::string& cache_dir) override {
    prepares.push_back({info.download_url, cache_dir});
    return prepare_answer;
  }
  Error Launch(const PreparedUpdate& prepared, const std::string& updater_path) override {
    launches.push_back({prepared.package_path, updater_path});
    return launch_answer;
  }

  Result<PreparedUpdate> prepare_answer{};
  Error launch_answer{};
  std::vector<std::vector<std::string>> prepares;
  std::vector<std::vector<std::string>> launches;
};

/// Counts the calls of each operation in the order in which they came.
class FakeFileSystem : public IFileSystemProvider {
 public:
  bool Exists(const std::string& path) override {
    calls.push_back("Exists " + path);
    for (const std::string& entry : existing) {
      if (entry == path) return true;
    }
    return false;
  }
  Result<std::string> ReadFile(const std::string& path) override {
    calls.push_back("ReadFile " + path);
    return {};
  }
  Error WriteFile(const std::string& path, const std::string& content) override {
    calls.push_back("WriteFile " + path);
    written = content;
    return write_answer;
  }
  Error CreateDirectories(const std::string& path) override {
    calls.push_back("CreateDirectories " + path);
    return create_answer;
  }

  std::vector<std::string> existing;
  Error write_answer{};
  Error create_answer{};
  std::string written;
  std::vector<std::string> calls;
};

class FakeCrypto : public ICryptoProvider {
 public:
  Result<std::string> Sha256Hex(const std::string& data) override {
    hashed.push_back(data);
    return answer;
  }

  Result<std::string> answer{"digest", {}};
  std::vector<std::string> hashed;
};

class FakePolicy : public IUpdatePolicy {
 public:
  bool IsNewerVersion(const std::string& current_version,
                      const std::string& candidate_version) override {
    asked.emplace_back(current_version, candidate_version);
    return answer;
  }

  bool answer = false;
  std::vector<std::pair<std::string, std::string>> asked;
};

class FakeClientService : public IClientService {
 public:
  Error Init(const SDKConfig& config) override {
    configs.push_back(config);
    return init_answer;
  }
  Result<std::string> GetDeviceId() override { return device_id_answer; }
  Result<UpdateInfo> CheckForUpdate() override { return check_answer; }
  Result<ServerResult> ReportInstall() override { return install_answer; }
  Result<PreparedUpdate> PrepareUpdate(const UpdateInfo& info) override {
    prepared_url = info.download_url;
    return prepare_answer;
  }
  Error LaunchPreparedUpdate(const PreparedUpdate& prepared,
                             const std::string& updater_path) override {
    launched = {prepared.package_path, updater_path};
    return launch_answer;
  }
  std::string GetLastError() const override { return last_error; }

  Error init_answer{};
  Result<std::string> device_id_answer{};
  Result<UpdateInfo> check_answer{};
  Result<ServerResult> install_answer{};
  Result<PreparedUpdate> prepare_answer{};
  Error launch_answer{};
  std::string last_error;
  std::vector<SDKConfig> configs;
  std::string prepared_url;
  std::vector<std::string> launched;
};

/// Breaks the two ownership cycles of a filled registry, so that a test leaves nothing behind.
class RegistryOwner {
 public:
  explicit RegistryOwner(std::shared_ptr<ServiceRegistry> services)
      : services_(std::move(services)) {}
  ~RegistryOwner() {
    services_->client_service.reset();
    services_->update_package_service.reset();
  }
  RegistryOwner(const RegistryOwner&) = delete;
  RegistryOwner& operator=(const RegistryOwner&) = delete;

  ServiceRegistry* operator->() const { return services_.get(); }
  const std::shared_ptr<ServiceRegistry>& get() const { return services_; }

 private:
  std::shared_ptr<ServiceRegistry> services_;
};

}  // namespace korvixsdk::test

#endif  // KORVIXSDK_TESTS_SUPPORT_FAKES_H_
