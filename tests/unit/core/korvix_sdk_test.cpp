#include <gtest/gtest.h>
#include <korvixsdk/korvixsdk.h>

#include <memory>
#include <type_traits>
#include <utility>

#include "core/default_client_service.h"
#include "platform/null_logger.h"
#include "support/fakes.h"
#include "support/host_config.h"
#include "support/record_equality.h"
#include "support/recording_logger.h"
#include "support/temp_folder.h"

namespace korvixsdk::test {
namespace {

using Lines = std::vector<std::string>;

const Error kNotInitialized{kInvalidState, "KorvixSDK is not initialized"};

TEST(KorvixSdk, ForwardsInitWithTheConfigurationAndPassesItsError) {
  const auto service = std::make_shared<FakeClientService>();
  service->init_answer = Error{4711, "not today"};
  KorvixSDK sdk(service);
  SDKConfig config;
  config.product_id = "editor";
  config.cache_dir = "cache";
  EXPECT_EQ(sdk.Init(config), (Error{4711, "not today"}));
  ASSERT_EQ(service->configs.size(), 1u);
  EXPECT_EQ(service->configs[0].product_id, "editor");
  EXPECT_EQ(service->configs[0].cache_dir, "cache");
}

TEST(KorvixSdk, CallsTheServicesInitEveryTime) {
  const auto service = std::make_shared<FakeClientService>();
  KorvixSDK sdk(service);
  EXPECT_TRUE(sdk.Init(SDKConfig{}).ok());
  EXPECT_TRUE(sdk.Init(SDKConfig{}).ok());
  EXPECT_EQ(service->configs.size(), 2u);
}

TEST(KorvixSdk, ForwardsGetDeviceIdUnchanged) {
  const auto service = std::make_shared<FakeClientService>();
  service->device_id_answer = {"half", Error{4711, "text"}};
  const Result<std::string> result = KorvixSDK(service).GetDeviceId();
  EXPECT_EQ(result.value, "half");
  EXPECT_EQ(result.error, (Error{4711, "text"}));
}

TEST(KorvixSdk, ForwardsCheckForUpdateUnchanged) {
  const auto service = std::make_shared<FakeClientService>();
  service->check_answer = {{true, true, "2", "1", "t", "c", "u", "s", "m"}, Error{4711, "text"}};
  const Result<UpdateInfo> result = KorvixSDK(service).CheckForUpdate();
  EXPECT_EQ(result.value, service->check_answer.value);
  EXPECT_EQ(result.error, (Error{4711, "text"}));
}

TEST(KorvixSdk, ForwardsReportInstallUnchanged) {
  const auto service = std::make_shared<FakeClientService>();
  service->install_answer = {{true, 401, "m", true, 9}, Error{4711, "text"}};
  const Result<ServerResult> result = KorvixSDK(service).ReportInstall();
  EXPECT_EQ(result.value, service->install_answer.value);
  EXPECT_EQ(result.error, (Error{4711, "text"}));
}

TEST(KorvixSdk, ForwardsPrepareUpdateUnchanged) {
  const auto service = std::make_shared<FakeClientService>();
  service->prepare_answer = {{true, true, "u", "e", "a", "p", "r", "m"}, Error{4711, "text"}};
  UpdateInfo info;
  info.download_url = "https://host/package";
  const Result<PreparedUpdate> result = KorvixSDK(service).PrepareUpdate(info);
  EXPECT_EQ(service->prepared_url, "https://host/package");
  EXPECT_EQ(result.value, service->prepare_answer.value);
  EXPECT_EQ(result.error, (Error{4711, "text"}));
}

TEST(KorvixSdk, ForwardsLaunchPreparedUpdateUnchanged) {
  const auto service = std::make_shared<FakeClientService>();
  service->launch_answer = Error{4711, "text"};
  PreparedUpdate prepared;
  prepared.package_path = "package";
  EXPECT_EQ(KorvixSDK(service).LaunchPreparedUpdate(prepared, "updater"), (Error{4711, "text"}));
  EXPECT_EQ(service->launched, (Lines{"package", "updater"}));
}

TEST(KorvixSdk, ForwardsGetLastErrorUnchanged) {
  const auto service = std::make_shared<FakeClientService>();
  service->last_error = "the last one";
  EXPECT_EQ(KorvixSDK(service).GetLastError(), "the last one");
}

TEST(KorvixSdk, ReleasesTheHostsServiceAtItsEnd) {
  const auto service = std::make_shared<FakeClientService>();
  {
    const KorvixSDK sdk(service);
    EXPECT_EQ(service.use_count(), 2);
  }
  EXPECT_EQ(service.use_count(), 1);
}

TEST(KorvixSdk, IsMovableAndNotCopyable) {
  EXPECT_FALSE(std::is_copy_constructible_v<KorvixSDK>);
  EXPECT_FALSE(std::is_copy_assignable_v<KorvixSDK>);
  EXPECT_TRUE(std::is_nothrow_move_constructible_v<KorvixSDK>);
  EXPECT_TRUE(std::is_nothrow_move_assignable_v<KorvixSDK>);
}

TEST(KorvixSdk, FailsEveryOperationBeforeInit) {
  KorvixSDK sdk;
  EXPECT_EQ(sdk.GetDeviceId().error, kNotInitialized);
  EXPECT_EQ(sdk.CheckForUpdate().error, kNotInitialized);
  EXPECT_EQ(sdk.ReportInstall().error, kNotInitialized);
  EXPECT_EQ(sdk.PrepareUpdate(UpdateInfo{}).error, kNotInitialized);
  EXPECT_EQ(sdk.LaunchPreparedUpdate(PreparedUpdate{}, "updater"), kNotInitialized);
  EXPECT_EQ(sdk.GetLastError(), "");
}

TEST(KorvixSdk, WorksWithItsDefaults) {
  const TempFolder folder;
  KorvixSDK sdk;
  ASSERT_EQ(sdk.Init(HostConfig(folder)), Error{});
  EXPECT_NE(sdk.GetDeviceId().value, "");
  EXPECT_EQ(sdk.CheckForUpdate().value.latest_version, "9.9.9");
  EXPECT_TRUE(sdk.ReportInstall().value.success);
  EXPECT_EQ(sdk.GetLastError(), "");
}

TEST(KorvixSdk, WorksLikeADefaultOneWhenGivenNoService) {
  const TempFolder folder;
  KorvixSDK sdk(nullptr);
  EXPECT_EQ(sdk.GetDeviceId().error, kNotInitialized);
  ASSERT_EQ(sdk.Init(HostConfig(folder)), Error{});
  EXPECT_EQ(sdk.CheckForUpdate().value.latest_version, "9.9.9");
}

TEST(KorvixSdk, KeepsItsServiceWhenInitSetsNeitherLoggerNorRegistry) {
  const TempFolder folder;
  KorvixSDK sdk;
  ASSERT_EQ(sdk.Init(HostConfig(folder)), Error{});
  SDKConfig config = HostConfig(folder);
  config.version.clear();
  EXPECT_FALSE(sdk.Init(config).ok());
  EXPECT_TRUE(sdk.GetDeviceId().ok());
}

TEST(KorvixSdk, KeepsTheLoggerOfAnEarlierInitWhenALaterOneSetsNone) {
  const TempFolder folder;
  const auto logger = std::make_shared<RecordingLogger>();
  SDKConfig config = HostConfig(folder);
  config.logger = logger;
  KorvixSDK sdk;
  ASSERT_EQ(sdk.Init(config), Error{});
  logger->lines.clear();
  ASSERT_EQ(sdk.Init(HostConfig(folder)), Error{});
  EXPECT_EQ(logger->lines, (Lines{"info Init requested for product_id=editor, version=1.5",
                                  "info SDK init success, cache_dir=" + config.cache_dir}));
}

TEST(KorvixSdk, LogsToTheConfiguredLogger) {
  const TempFolder folder;
  const auto logger = std::make_shared<RecordingLogger>();
  SDKConfig config = HostConfig(folder);
  config.logger = logger;
  KorvixSDK sdk;
  ASSERT_EQ(sdk.Init(config), Error{});
  EXPECT_TRUE(sdk.GetDeviceId().ok());
  EXPECT_EQ(logger->lines, (Lines{"info Init requested for product_id=editor, version=1.5",
                                  "info SDK init success, cache_dir=" + config.cache_dir,
                                  "info GetDeviceId succeeded"}));
}

TEST(KorvixSdk, MovesToANewServiceWhenInitSetsALogger) {
  const TempFolder folder;
  KorvixSDK sdk;
  ASSERT_EQ(sdk.Init(HostConfig(folder)), Error{});
  SDKConfig config;
  const auto logger = std::make_shared<RecordingLogger>();
  config.logger = logger;
  EXPECT_FALSE(sdk.Init(config).ok());
  EXPECT_EQ(logger->lines, (Lines{"error Init failed: SDKConfig.product_id must not be empty"}));
  EXPECT_EQ(sdk.GetDeviceId().error, kNotInitialized);
}

TEST(KorvixSdk, LeavesTheHostsServiceWhenInitSetsALogger) {
  const TempFolder folder;
  const auto service = std::make_shared<FakeClientService>();
  KorvixSDK sdk(service);
  SDKConfig config = HostConfig(folder);
  config.logger = std::make_shared<RecordingLogger>();
  ASSERT_EQ(sdk.Init(config), Error{});
  EXPECT_TRUE(service->configs.empty());
  EXPECT_EQ(service.use_count(), 1);
  EXPECT_EQ(sdk.CheckForUpdate().value.latest_version, "9.9.9");
}

TEST(KorvixSdk, AdoptsTheConfiguredRegistryAndFillsItsEmptyMembers) {
  const TempFolder folder;
  const RegistryOwner services(std::make_shared<ServiceRegistry>());
  const auto network = std::make_shared<FakeNetwork>();
  services->network_client = network;
  SDKConfig config = HostConfig(folder);
  config.services = services.get();
  KorvixSDK sdk;
  ASSERT_EQ(sdk.Init(config), Error{});
  EXPECT_EQ(services->network_client, network);
  EXPECT_NE(std::dynamic_pointer_cast<NullLogger>(services->logger), nullptr);
  EXPECT_NE(std::dynamic_pointer_cast<DefaultClientService>(services->client_service), nullptr);
  EXPECT_NE(services->time_provider, nullptr);
  EXPECT_NE(services->file_system, nullptr);
  EXPECT_NE(services->crypto, nullptr);
  EXPECT_NE(services->device_id_provider, nullptr);
  EXPECT_NE(services->update_policy, nullptr);
  EXPECT_NE(services->update_package_service, nullptr);
  EXPECT_TRUE(sdk.CheckForUpdate().ok());
  EXPECT_EQ(network->checks.size(), 1u);
}

TEST(KorvixSdk, UsesTheCoreServiceOfTheConfiguredRegistry) {
  const auto services = std::make_shared<ServiceRegistry>();
  const RegistryOwner owner(services);
  const auto service = std::make_shared<FakeClientService>();
  services->client_service = service;
  SDKConfig config;
  config.services = services;
  KorvixSDK sdk;
  EXPECT_EQ(sdk.Init(config), Error{});
  EXPECT_EQ(service->configs.size(), 1u);
}

TEST(KorvixSdk, KeepsTheRegistrysLoggerWhenInitSetsNone) {
  const TempFolder folder;
  const RegistryOwner services(std::make_shared<ServiceRegistry>());
  const auto logger = std::make_shared<RecordingLogger>();
  services->logger = logger;
  SDKConfig config = HostConfig(folder);
  config.services = services.get();
  KorvixSDK sdk;
  ASSERT_EQ(sdk.Init(config), Error{});
  EXPECT_EQ(services->logger, logger);
  EXPECT_EQ(logger->lines.size(), 2u);
}

TEST(KorvixSdk, PutsTheConfiguredLoggerIntoTheConfiguredRegistry) {
  const TempFolder folder;
  const RegistryOwner services(std::make_shared<ServiceRegistry>());
  const auto replaced = std::make_shared<RecordingLogger>();
  const auto logger = std::make_shared<RecordingLogger>();
  services->logger = replaced;
  SDKConfig config = HostConfig(folder);
  config.services = services.get();
  config.logger = logger;
  KorvixSDK sdk;
  ASSERT_EQ(sdk.Init(config), Error{});
  EXPECT_EQ(services->logger, logger);
  EXPECT_TRUE(replaced->lines.empty());
  EXPECT_EQ(logger->lines.size(), 2u);
}

// The facade has moved to another core service, which counts for itself.
TEST(KorvixSdk, AdoptsTheConfiguredRegistryEvenWhenInitFails) {
  const TempFolder folder;
  KorvixSDK sdk;
  ASSERT_EQ(sdk.Init(HostConfig(folder)), Error{});
  const RegistryOwner services(std::make_shared<ServiceRegistry>());
  SDKConfig config = HostConfig(folder);
  config.services = services.get();
  config.version.clear();
  EXPECT_EQ(sdk.Init(config), (Error{kInvalidArgument, "SDKConfig.version must not be empty"}));
  EXPECT_EQ(sdk.GetDeviceId().error, kNotInitialized);
}

TEST(KorvixSdk, HoldsTheConfiguredRegistryUntilItsEnd) {
  auto services = std::make_shared<ServiceRegistry>();
  const auto service = std::make_shared<FakeClientService>();
  services->client_service = service;
  services->update_package_service = std::make_shared<FakePackages>();
  const std::weak_ptr<ServiceRegistry> registry = services;
  {
    KorvixSDK sdk;
    SDKConfig config;
    config.services = std::move(services);
    EXPECT_EQ(sdk.Init(config), Error{});
    config.services.reset();
    service->configs.clear();
    EXPECT_FALSE(registry.expired());
  }
  EXPECT_TRUE(registry.expired());
}

TEST(KorvixSdk, MovesItsServiceToTheNewFacade) {
  const auto service = std::make_shared<FakeClientService>();
  service->last_error = "kept";
  KorvixSDK source(service);
  const KorvixSDK target(std::move(source));
  EXPECT_EQ(target.GetLastError(), "kept");
  EXPECT_EQ(service.use_count(), 2);
}

TEST(KorvixSdk, MovesItsServiceByAssignment) {
  const auto released = std::make_shared<FakeClientService>();
  const auto service = std::make_shared<FakeClientService>();
  service->last_error = "kept";
  KorvixSDK source(service);
  KorvixSDK target(released);
  target = std::move(source);
  EXPECT_EQ(target.GetLastError(), "kept");
  EXPECT_EQ(released.use_count(), 1);
}

TEST(KorvixSdk, TellsThatItsServiceIsUnavailableWhenMovedFrom) {
  KorvixSDK constructed_from(std::make_shared<FakeClientService>());
  const KorvixSDK target(std::move(constructed_from));
  EXPECT_EQ(constructed_from.GetLastError(), "Client service unavailable");
  KorvixSDK assigned_from(std::make_shared<FakeClientService>());
  KorvixSDK other(std::make_shared<FakeClientService>());
  other = std::move(assigned_from);
  EXPECT_EQ(assigned_from.GetLastError(), "Client service unavailable");
}

TEST(KorvixSdk, InitialisesNewDefaultsWhenMovedFrom) {
  const TempFolder folder;
  const auto service = std::make_shared<FakeClientService>();
  KorvixSDK sdk(service);
  const KorvixSDK target(std::move(sdk));
  ASSERT_EQ(sdk.Init(HostConfig(folder)), Error{});
  EXPECT_TRUE(service->configs.empty());
  EXPECT_EQ(sdk.GetLastError(), "");
  EXPECT_EQ(sdk.CheckForUpdate().value.latest_version, "9.9.9");
}

TEST(KorvixSdk, PassesTheErrorOfNewDefaultsWhenMovedFrom) {
  KorvixSDK sdk(std::make_shared<FakeClientService>());
  const KorvixSDK target(std::move(sdk));
  EXPECT_EQ(sdk.Init(SDKConfig{}),
            (Error{kInvalidArgument, "SDKConfig.product_id must not be empty"}));
  EXPECT_EQ(sdk.GetDeviceId().error, kNotInitialized);
}

TEST(KorvixSdk, AdoptsTheConfiguredRegistryWhenMovedFrom) {
  const auto services = std::make_shared<ServiceRegistry>();
  const RegistryOwner owner(services);
  const auto service = std::make_shared<FakeClientService>();
  services->client_service = service;
  KorvixSDK sdk(std::make_shared<FakeClientService>());
  const KorvixSDK target(std::move(sdk));
  SDKConfig config;
  config.services = services;
  EXPECT_EQ(sdk.Init(config), Error{});
  EXPECT_EQ(service->configs.size(), 1u);
}

}  // namespace
}  // namespace korvixsdk::test
