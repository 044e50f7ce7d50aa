#include <gtest/gtest.h>
#include <korvixsdk/korvixsdk.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "support/host_config.h"
#include "support/mock_package.h"
#include "support/recording_logger.h"
#include "support/scripted_server.h"
#include "support/temp_folder.h"

namespace korvixsdk {
namespace {

using test::HostConfig;
using test::kMockPackage;
using test::kMockPackageDigest;
using test::RequestLine;
using test::Script;
using test::ScriptedServer;
using test::TempFolder;

TEST(HostLife, RunsWholeWithTheMockServer) {
  const TempFolder folder;
  KorvixSDK sdk;
  ASSERT_TRUE(sdk.Init(HostConfig(folder)).ok());
  EXPECT_TRUE(sdk.ReportInstall().value.success);
  Result<UpdateInfo> check = sdk.CheckForUpdate();
  ASSERT_TRUE(check.ok());
  EXPECT_TRUE(check.value.has_update);
  EXPECT_EQ(check.value.latest_version, "9.9.9");
  EXPECT_EQ(check.value.download_url, "https://downloads.example.com/mock-update.bin");

  check.value.download_url = "mock://package-ok";
  const Result<PreparedUpdate> prepared = sdk.PrepareUpdate(check.value);
  ASSERT_TRUE(prepared.ok()) << prepared.error.message;
  EXPECT_TRUE(sdk.LaunchPreparedUpdate(prepared.value, "mock://launch-ok").ok());
  EXPECT_EQ(sdk.GetLastError(), "");
}

TEST(HostLife, LogsEveryStepOfAWholeUpdate) {
  const TempFolder folder;
  auto logger = std::make_shared<test::RecordingLogger>();
  SDKConfig config = HostConfig(folder);
  config.logger = logger;
  KorvixSDK sdk;
  ASSERT_TRUE(sdk.Init(config).ok());
  Result<UpdateInfo> check = sdk.CheckForUpdate();
  check.value.download_url = "mock://package-ok";
  const Result<PreparedUpdate> prepared = sdk.PrepareUpdate(check.value);
  EXPECT_FALSE(sdk.LaunchPreparedUpdate(prepared.value, "mock://launch-fail").ok());
  const std::vector<std::string> expected = {
      "info Init requested for product_id=editor, version=1.5",
      "info SDK init success, cache_dir=" + config.cache_dir,
      "info CheckForUpdate request started product_id=editor, version=1.5, "
      "device_id_present=true",
      "info CheckForUpdate response latest_version=9.9.9, min_supported_version=1.5, "
      "force_update=false, download_url_present=true, last_error_present=false",
      "info CheckForUpdate detected a newer version: 9.9.9",
      "info PrepareUpdate succeeded: " + prepared.value.package_path,
      "warning LaunchPreparedUpdate failed: Mock updater launch failed"};
  EXPECT_EQ(logger->lines, expected);
}

TEST(HostLife, SpeaksToTheServiceAsDocumented) {
  const TempFolder folder;
  ScriptedServer server({Script::Response(200, R"({"code":400,"allowed":true})"),
                         Script::Response(200, R"({"code":400,"version":"2.0.0"})")});
  KorvixSDK sdk;
  ASSERT_TRUE(sdk.Init(HostConfig(folder, server.address() + "/prefix/")).ok());
  const Result<std::string> id = sdk.GetDeviceId();
  ASSERT_TRUE(id.ok());
  EXPECT_EQ(sdk.ReportInstall().value.message, "Success");
  EXPECT_TRUE(sdk.CheckForUpdate().value.has_update);

  const std::vector<std::string> requests = server.requests();
  ASSERT_EQ(requests.size(), 2u);
  EXPECT_EQ(RequestLine(requests[0]),
            "GET /prefix/API/v2/sdk/install/?product_id=editor&device_id=" + id.value +
                "&version=1.5 HTTP/1.1");
  EXPECT_EQ(RequestLine(requests[1]),
            "GET /prefix/API/v2/sdk/update/check/?product_id=editor&version=1.5&device_id=" +
                id.value + " HTTP/1.1");
  const std::string host = "Host: " + server.address().substr(std::string("http://").size());
  EXPECT_EQ(requests[0].substr(requests[0].find("\r\n")),
            "\r\n" + host + "\r\nAccept: */*\r\n\r\n");
}

TEST(HostLife, DownloadsVerifiesAndStartsTheUpdater) {
  const TempFolder folder;
  ScriptedServer packages(Script::Response(200, kMockPackage));
  ScriptedServer server(Script::Response(
      200, R"({"code":400,"version":"2.0.0","download_url":")" + packages.address() +
               R"(/editor 2.pkg?x=1","sha256":")" + kMockPackageDigest + R"("})"));
  KorvixSDK sdk;
  ASSERT_TRUE(sdk.Init(HostConfig(folder, server.address())).ok());
  Result<UpdateInfo> check = sdk.CheckForUpdate();
  ASSERT_TRUE(check.ok());
  // A blank may not stand in an address; the file name keeps what the address says.
  check.value.download_url.replace(check.value.download_url.find(' '), 1, "-");
  const Result<PreparedUpdate> prepared = sdk.PrepareUpdate(check.value);
  ASSERT_TRUE(prepared.ok()) << prepared.error.message;
  EXPECT_EQ(test::FileBytes(folder.path() / "cache" / "updates" / "editor-2.pkg"), kMockPackage);

  ASSERT_TRUE(sdk.LaunchPreparedUpdate(prepared.value, KORVIXSDK_UPDATER).ok());
  const std::filesystem::path report = prepared.value.package_path + ".updater-report.txt";
  const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(60);
  // Windows shows a file that is being renamed before it lets anybody open it.
  while (!std::ifstream(report).is_open() && std::chrono::steady_clock::now() < deadline) {
    std::this_thread::sleep_for(std::chrono::milliseconds(10));
  }
  const std::string written = test::FileBytes(report);
  EXPECT_NE(written.find(prepared.value.package_path), std::string::npos) << written;
  EXPECT_NE(written.find(kMockPackageDigest), std::string::npos) << written;
}

TEST(HostLife, ReportsUpdaterThatIsMissing) {
  const TempFolder folder;
  KorvixSDK sdk;
  ASSERT_TRUE(sdk.Init(HostConfig(folder)).ok());
  UpdateInfo info;
  info.download_url = "mock://package-ok";
  const Result<PreparedUpdate> prepared = sdk.PrepareUpdate(info);
  const Error error = sdk.LaunchPreparedUpdate(prepared.value, folder.Entry("no-updater"));
  EXPECT_EQ(error.code, kNotFound);
  EXPECT_EQ(error.message, "Updater executable was not found");
  EXPECT_EQ(sdk.GetLastError(), "Updater executable was not found");
}

TEST(HostLife, ClientManagerChecksOnly) {
  const TempFolder folder;
  ClientManager manager;
  EXPECT_EQ(manager.GetDeviceId().error.message, "ClientManager is not initialized");
  ClientManagerConfig config;
  config.sdk_config = HostConfig(folder);
  ASSERT_TRUE(manager.Init(config).ok());
  EXPECT_TRUE(manager.ReportInstall().ok());
  EXPECT_EQ(manager.CheckForUpdateLinkOnly().value.download_url,
            "https://downloads.example.com/mock-update.bin");
  EXPECT_FALSE(std::filesystem::exists(folder.path() / "cache" / "updates"));
}

TEST(HostLife, HostDecoratesDefaultService) {
  class CountingFiles : public IFileSystemProvider {
   public:
    explicit CountingFiles(std::shared_ptr<IFileSystemProvider> inner) : inner_(std::move(inner)) {}
    bool Exists(const std::string& path) override { return inner_->Exists(path); }
    Result<std::string> ReadFile(const std::string& path) override {
      return inner_->ReadFile(path);
    }
    Error WriteFile(const std::string& path, const std::string& content) override {
      written.push_back(content);
      return inner_->WriteFile(path, content);
    }
    Error CreateDirectories(const std::string& path) override {
      return inner_->CreateDirectories(path);
    }
    std::vector<std::string> written;

   private:
    std::shared_ptr<IFileSystemProvider> inner_;
  };
  const TempFolder folder;
  auto services = SdkFactory::CreateDefaultServices();
  auto files = std::make_shared<CountingFiles>(services->file_system);
  services->file_system = files;
  SDKConfig config = HostConfig(folder);
  config.services = services;
  KorvixSDK sdk;
  ASSERT_TRUE(sdk.Init(config).ok());
  UpdateInfo info;
  info.download_url = "mock://package-ok";
  EXPECT_TRUE(sdk.PrepareUpdate(info).ok());
  EXPECT_EQ(files->written, (std::vector<std::string>{kMockPackage}));
}

// void GiveEverythingBack(korvixsdk::SDKConfig config), as docs/embedding.md writes it.
#include "everything_back.inc"

TEST(HostLife, DocumentedExampleGivesEverythingBackWhateverInitAnswers) {
  const TempFolder folder;
  for (const char* const product : {"editor", ""}) {
    const auto logger = std::make_shared<test::RecordingLogger>();
    SDKConfig config = HostConfig(folder);
    config.product_id = product;
    config.logger = logger;
    GiveEverythingBack(std::move(config));
    EXPECT_FALSE(logger->lines.empty());
    EXPECT_EQ(logger.use_count(), 1) << "the registry of \"" << product << "\" still lives";
  }
}

TEST(HostLife, FactoryMakesCoreServiceThatKeepsItsRegistry) {
  const TempFolder folder;
  const std::shared_ptr<IClientService> service = SdkFactory::CreateClientService();
  ASSERT_NE(service, nullptr);
  EXPECT_TRUE(service->Init(HostConfig(folder)).ok());
  EXPECT_TRUE(service->CheckForUpdate().value.has_update);
}

}  // namespace
}  // namespace korvixsdk
