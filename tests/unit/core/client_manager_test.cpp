#include <gtest/gtest.h>
#include <korvixsdk/korvixsdk.h>

#include <filesystem>
#include <memory>
#include <type_traits>
#include <utility>

#include "support/fakes.h"
#include "support/host_config.h"
#include "support/record_equality.h"
#include "support/recording_logger.h"
#include "support/temp_folder.h"

namespace korvixsdk::test {
namespace {

const Error kNotInitialized{kInvalidState, "ClientManager is not initialized"};

ClientManagerConfig Config(const TempFolder& folder) {
  ClientManagerConfig config;
  config.sdk_config = HostConfig(folder);
  return config;
}

/// A registry without default services, hence without their ownership cycles, with `service` as its
/// core service.
std::shared_ptr<ServiceRegistry> RegistryOf(const std::shared_ptr<FakeClientService>& service) {
  auto services = std::make_shared<ServiceRegistry>();
  services->client_service = service;
  services->update_package_service = std::make_shared<FakePackages>();
  return services;
}

ClientManagerConfig ConfigOf(const std::shared_ptr<ServiceRegistry>& services) {
  ClientManagerConfig config;
  config.sdk_config.services = services;
  return config;
}

void ExpectNotInitialized(ClientManager& manager) {
  const Result<std::string> device_id = manager.GetDeviceId();
  EXPECT_EQ(device_id.error, kNotInitialized);
  EXPECT_EQ(device_id.value, "");
  const Result<ServerResult> install = manager.ReportInstall();
  EXPECT_EQ(install.error, kNotInitialized);
  EXPECT_EQ(install.value, ServerResult{});
  const Result<UpdateInfo> check = manager.CheckForUpdateLinkOnly();
  EXPECT_EQ(check.error, kNotInitialized);
  EXPECT_EQ(check.value, UpdateInfo{});
}

TEST(ClientManager, FailsEveryOperationBeforeInit) {
  ClientManager manager;
  ExpectNotInitialized(manager);
}

TEST(ClientManager, FailsEveryOperationAfterAFailedInit) {
  ClientManager manager;
  EXPECT_FALSE(manager.Init(ClientManagerConfig{}).ok());
  ExpectNotInitialized(manager);
}

TEST(ClientManager, PassesTheErrorOfInitUnchanged) {
  const auto service = std::make_shared<FakeClientService>();
  service->init_answer = Error{4711, "not today"};
  const RegistryOwner services(RegistryOf(service));
  ClientManager manager;
  EXPECT_EQ(manager.Init(ConfigOf(services.get())), (Error{4711, "not today"}));
}

TEST(ClientManager, PassesTheErrorOfTheDefaultCoreServiceUnchanged) {
  const TempFolder folder;
  ClientManager manager;
  ClientManagerConfig config;
  EXPECT_EQ(manager.Init(config),
            (Error{kInvalidArgument, "SDKConfig.product_id must not be empty"}));
  config = Config(folder);
  config.sdk_config.version.clear();
  EXPECT_EQ(manager.Init(config), (Error{kInvalidArgument, "SDKConfig.version must not be empty"}));
}

TEST(ClientManager, HandsTheConfigurationToTheFacade) {
  const auto service = std::make_shared<FakeClientService>();
  const RegistryOwner services(RegistryOf(service));
  ClientManagerConfig config = ConfigOf(services.get());
  config.sdk_config.product_id = "editor";
  config.sdk_config.server_base_url = "mock://service";
  ClientManager manager;
  EXPECT_EQ(manager.Init(config), Error{});
  ASSERT_EQ(service->configs.size(), 1u);
  EXPECT_EQ(service->configs[0].product_id, "editor");
  EXPECT_EQ(service->configs[0].server_base_url, "mock://service");
}

TEST(ClientManager, DropsAMessageBesideASuccess) {
  const auto service = std::make_shared<FakeClientService>();
  service->init_answer = Error{kOk, "welcome"};
  const RegistryOwner services(RegistryOf(service));
  ClientManager manager;
  EXPECT_EQ(manager.Init(ConfigOf(services.get())), Error{});
}

TEST(ClientManager, ForwardsItsOperationsUnchanged) {
  const auto service = std::make_shared<FakeClientService>();
  service->device_id_answer = {"half", Error{1001, "a"}};
  service->install_answer = {{true, 401, "m", true, 9}, Error{1002, "b"}};
  service->check_answer = {{true, true, "2", "1", "t", "c", "u", "s", "m"}, Error{1003, "c"}};
  const RegistryOwner services(RegistryOf(service));
  ClientManager manager;
  ASSERT_EQ(manager.Init(ConfigOf(services.get())), Error{});
  const Result<std::string> device_id = manager.GetDeviceId();
  EXPECT_EQ(device_id.value, "half");
  EXPECT_EQ(device_id.error, (Error{1001, "a"}));
  const Result<ServerResult> install = manager.ReportInstall();
  EXPECT_EQ(install.value, service->install_answer.value);
  EXPECT_EQ(install.error, (Error{1002, "b"}));
  const Result<UpdateInfo> check = manager.CheckForUpdateLinkOnly();
  EXPECT_EQ(check.value, service->check_answer.value);
  EXPECT_EQ(check.error, (Error{1003, "c"}));
}

TEST(ClientManager, WorksWithDefaultServices) {
  const TempFolder folder;
  ClientManager manager;
  ASSERT_EQ(manager.Init(Config(folder)), Error{});
  EXPECT_NE(manager.GetDeviceId().value, "");
  EXPECT_TRUE(manager.ReportInstall().value.success);
  EXPECT_EQ(manager.CheckForUpdateLinkOnly().value.latest_version, "9.9.9");
}

TEST(ClientManager, ChecksForAnUpdateAndDownloadsNothing) {
  const TempFolder folder;
  ClientManager manager;
  ASSERT_EQ(manager.Init(Config(folder)), Error{});
  EXPECT_EQ(manager.CheckForUpdateLinkOnly().value.download_url,
            "https://downloads.example.com/mock-update.bin");
  EXPECT_TRUE(std::filesystem::is_empty(folder.path() / "cache"));
}

TEST(ClientManager, IsUninitialisedByAFailedInitAfterASuccessfulOne) {
  const TempFolder folder;
  ClientManager manager;
  ASSERT_EQ(manager.Init(Config(folder)), Error{});
  ClientManagerConfig config = Config(folder);
  config.sdk_config.version.clear();
  EXPECT_FALSE(manager.Init(config).ok());
  ExpectNotInitialized(manager);
}

TEST(ClientManager, RecoversByASuccessfulInitAfterAFailedOne) {
  const TempFolder folder;
  ClientManager manager;
  EXPECT_FALSE(manager.Init(ClientManagerConfig{}).ok());
  ASSERT_EQ(manager.Init(Config(folder)), Error{});
  EXPECT_EQ(manager.CheckForUpdateLinkOnly().value.latest_version, "9.9.9");
}

TEST(ClientManager, StartsEveryInitFromNewServices) {
  const TempFolder folder;
  const auto logger = std::make_shared<RecordingLogger>();
  ClientManagerConfig config = Config(folder);
  config.sdk_config.logger = logger;
  ClientManager manager;
  ASSERT_EQ(manager.Init(config), Error{});
  EXPECT_EQ(logger->lines.size(), 2u);
  ASSERT_EQ(manager.Init(Config(folder)), Error{});
  EXPECT_TRUE(manager.GetDeviceId().ok());
  EXPECT_EQ(logger->lines.size(), 2u);
}

TEST(ClientManager, DestroysTheEarlierFacadeAtASuccessfulInit) {
  const auto first = std::make_shared<FakeClientService>();
  const auto second = std::make_shared<FakeClientService>();
  std::shared_ptr<ServiceRegistry> services = RegistryOf(first);
  const std::weak_ptr<ServiceRegistry> registry = services;
  ClientManager manager;
  ASSERT_EQ(manager.Init(ConfigOf(std::exchange(services, nullptr))), Error{});
  first->configs.clear();
  EXPECT_FALSE(registry.expired());
  ASSERT_EQ(manager.Init(ConfigOf(RegistryOf(second))), Error{});
  second->configs.clear();
  EXPECT_TRUE(registry.expired());
  EXPECT_EQ(first.use_count(), 1);
}

TEST(ClientManager, DestroysTheNewFacadeAndKeepsTheEarlierOneAtAFailedInit) {
  const auto first = std::make_shared<FakeClientService>();
  const auto second = std::make_shared<FakeClientService>();
  second->init_answer = Error{kInvalidState, "not today"};
  ClientManager manager;
  ASSERT_EQ(manager.Init(ConfigOf(RegistryOf(first))), Error{});
  first->configs.clear();
  EXPECT_FALSE(manager.Init(ConfigOf(RegistryOf(second))).ok());
  second->configs.clear();
  EXPECT_EQ(second.use_count(), 1);
  EXPECT_GT(first.use_count(), 1);
}

TEST(ClientManager, DestroysItsFacadeAtItsEnd) {
  const auto service = std::make_shared<FakeClientService>();
  {
    ClientManager manager;
    ASSERT_EQ(manager.Init(ConfigOf(RegistryOf(service))), Error{});
    service->configs.clear();
    EXPECT_GT(service.use_count(), 1);
  }
  EXPECT_EQ(service.use_count(), 1);
}

TEST(ClientManager, IsNeitherCopyableNorMovable) {
  EXPECT_FALSE(std::is_copy_constructible_v<ClientManager>);
  EXPECT_FALSE(std::is_copy_assignable_v<ClientManager>);
  EXPECT_FALSE(std::is_move_constructible_v<ClientManager>);
  EXPECT_FALSE(std::is_move_assignable_v<ClientManager>);
}

}  // namespace
}  // namespace korvixsdk::test
