#include <gtest/gtest.h>
#include <korvixsdk/korvixsdk.h>

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include "processes/awaited_file.h"
#include "processes/run_in_threads.h"
#include "support/host_config.h"
#include "support/mock_package.h"
#include "support/recording_logger.h"
#include "support/scripted_server.h"
#include "support/temp_folder.h"

namespace korvixsdk {
namespace {

using test::kMockPackage;
using test::kMockPackageDigest;
using test::RequestLine;
using test::RunInThreads;
using test::Script;
using test::ScriptedServer;
using test::TempFolder;

/// Product, version and folder of its own for every life.
SDKConfig Config(const TempFolder& folder, const std::string& life, const std::string& address) {
  SDKConfig config = test::HostConfig(folder, address);
  config.product_id += "-" + life;
  config.version = "1." + life;
  config.cache_dir += "-" + life;
  return config;
}

std::string DeviceId(const SDKConfig& config) {
  KorvixSDK sdk;
  EXPECT_TRUE(sdk.Init(config).ok());
  const Result<std::string> id = sdk.GetDeviceId();
  EXPECT_NE(id.value, "") << id.error.message;
  return id.value;
}

void LiveWithTheMockServer(SDKConfig config, const std::string& device_id) {
  const auto logger = std::make_shared<test::RecordingLogger>();
  config.logger = logger;
  KorvixSDK sdk;
  EXPECT_TRUE(sdk.Init(config).ok());
  EXPECT_EQ(sdk.GetDeviceId().value, device_id);
  EXPECT_EQ(sdk.ReportInstall().value.message, "Success");
  Result<UpdateInfo> check = sdk.CheckForUpdate();
  EXPECT_TRUE(check.value.has_update);
  EXPECT_EQ(check.value.min_supported_version, config.version);
  check.value.download_url = "mock://package-ok";
  const Result<PreparedUpdate> prepared = sdk.PrepareUpdate(check.value);
  EXPECT_TRUE(prepared.ok()) << prepared.error.message;
  EXPECT_EQ(test::FileBytes(prepared.value.package_path), kMockPackage);
  EXPECT_TRUE(sdk.LaunchPreparedUpdate(prepared.value, "mock://launch-ok").ok());
  EXPECT_EQ(sdk.LaunchPreparedUpdate(prepared.value, "mock://launch-fail").code, kInvalidState);
  EXPECT_EQ(sdk.GetLastError(), "Mock updater launch failed");

  const std::vector<std::string> expected = {
      "info Init requested for product_id=" + config.product_id + ", version=" + config.version,
      "info SDK init success, cache_dir=" + config.cache_dir,
      "info GetDeviceId succeeded",
      "info CheckForUpdate request started product_id=" + config.product_id +
          ", version=" + config.version + ", device_id_present=true",
      "info CheckForUpdate response latest_version=9.9.9, min_supported_version=" + config.version +
          ", force_update=false, download_url_present=true, last_error_present=false",
      "info CheckForUpdate detected a newer version: 9.9.9",
      "info PrepareUpdate succeeded: " + prepared.value.package_path,
      "info LaunchPreparedUpdate succeeded",
      "warning LaunchPreparedUpdate failed: Mock updater launch failed"};
  EXPECT_EQ(logger->lines, expected);
}

TEST(FacadesInThreads, LiveWithTheMockServer) {
  const TempFolder folder;
  const std::string device_id = DeviceId(Config(folder, "0", "mock://service"));
  RunInThreads(8, [&](std::size_t thread) {
    for (int life = 0; life < 10; ++life) {
      const std::string name = std::to_string(thread) + "." + std::to_string(life);
      LiveWithTheMockServer(Config(folder, name, "mock://service"), device_id);
    }
  });
}

void LiveWithTheService(const SDKConfig& config, const std::string& device_id) {
  KorvixSDK sdk;
  EXPECT_TRUE(sdk.Init(config).ok());
  EXPECT_EQ(sdk.GetDeviceId().value, device_id);
  EXPECT_EQ(sdk.ReportInstall().value.message, "Success");
  const Result<UpdateInfo> check = sdk.CheckForUpdate();
  EXPECT_TRUE(check.value.has_update) << check.error.message;
  const Result<PreparedUpdate> prepared = sdk.PrepareUpdate(check.value);
  EXPECT_TRUE(prepared.ok()) << prepared.error.message;
  EXPECT_EQ(prepared.value.actual_sha256, kMockPackageDigest);
  EXPECT_EQ(test::FileBytes(prepared.value.package_path), kMockPackage);

  ASSERT_TRUE(sdk.LaunchPreparedUpdate(prepared.value, KORVIXSDK_UPDATER).ok());
  const std::string report =
      test::AwaitedBytes(prepared.value.package_path + ".updater-report.txt");
  EXPECT_NE(report.find("argument 1: " + prepared.value.package_path), std::string::npos) << report;
  EXPECT_NE(report.find(kMockPackageDigest), std::string::npos) << report;
}

TEST(FacadesInThreads, LiveWithOneServiceAndStartTheirUpdaters) {
  constexpr std::size_t kThreads = 6;
  const TempFolder folder;
  const ScriptedServer packages(Script::Response(200, kMockPackage));
  const ScriptedServer server(Script::Response(
      200, R"({"code":400,"allowed":true,"version":"2.0.0","download_url":")" + packages.address() +
               R"(/editor.pkg","sha256":")" + kMockPackageDigest + R"("})"));
  const std::string device_id = DeviceId(Config(folder, "0", server.address()));
  RunInThreads(kThreads, [&](std::size_t thread) {
    LiveWithTheService(Config(folder, std::to_string(thread), server.address()), device_id);
  });

  std::vector<std::string> expected;
  for (std::size_t thread = 0; thread < kThreads; ++thread) {
    const std::string life = std::to_string(thread);
    const std::string product = "product_id=editor-" + life;
    expected.push_back("GET /API/v2/sdk/install/?" + product + "&device_id=" + device_id +
                       "&version=1." + life + " HTTP/1.1");
    expected.push_back("GET /API/v2/sdk/update/check/?" + product + "&version=1." + life +
                       "&device_id=" + device_id + " HTTP/1.1");
  }
  std::vector<std::string> lines;
  for (const std::string& request : server.requests()) lines.push_back(RequestLine(request));
  std::sort(expected.begin(), expected.end());
  std::sort(lines.begin(), lines.end());
  EXPECT_EQ(lines, expected);
  EXPECT_EQ(packages.requests().size(), kThreads);
}

TEST(ClientManagersInThreads, InitialiseAgainAndAgain) {
  const TempFolder folder;
  RunInThreads(6, [&](std::size_t thread) {
    ClientManager manager;
    for (int life = 0; life < 10; ++life) {
      ClientManagerConfig config;
      const std::string name = std::to_string(thread) + "." + std::to_string(life);
      config.sdk_config = Config(folder, name, "mock://service");
      EXPECT_TRUE(manager.Init(config).ok());
      EXPECT_EQ(manager.CheckForUpdateLinkOnly().value.min_supported_version,
                config.sdk_config.version);
      config.sdk_config.version.clear();
      EXPECT_EQ(manager.Init(config).message, "SDKConfig.version must not be empty");
      EXPECT_EQ(manager.GetDeviceId().error.message, "ClientManager is not initialized");
    }
  });
}

}  // namespace
}  // namespace korvixsdk
