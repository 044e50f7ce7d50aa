#include <gtest/gtest.h>

#include <filesystem>

#include "network/default_network_client.h"
#include "platform/fallback_id_file.h"
#include "support/record_equality.h"
#include "unit/core/client_service_bench.h"

namespace korvixsdk::test {
namespace {

/// A network client that is the default one at run time, though of a further class.
class DerivedNetworkClient : public DefaultNetworkClient {};

TEST(DefaultClientServiceInit, RejectsAnEmptyProductId) {
  ClientServiceBench bench;
  SDKConfig config = bench.Config();
  config.product_id.clear();
  EXPECT_EQ(bench.service.Init(config),
            (Error{kInvalidArgument, "SDKConfig.product_id must not be empty"}));
  EXPECT_EQ(bench.logger->lines,
            (Lines{"error Init failed: SDKConfig.product_id must not be empty"}));
}

TEST(DefaultClientServiceInit, RejectsAnEmptyVersion) {
  ClientServiceBench bench;
  SDKConfig config = bench.Config();
  config.version.clear();
  EXPECT_EQ(bench.service.Init(config),
            (Error{kInvalidArgument, "SDKConfig.version must not be empty"}));
  EXPECT_EQ(bench.logger->lines, (Lines{"error Init failed: SDKConfig.version must not be empty"}));
}

TEST(DefaultClientServiceInit, RejectsAnEmptyCacheDirectory) {
  ClientServiceBench bench;
  SDKConfig config = bench.Config();
  config.cache_dir.clear();
  EXPECT_EQ(bench.service.Init(config),
            (Error{kInvalidArgument, "SDKConfig.cache_dir must not be empty"}));
  EXPECT_EQ(bench.logger->lines,
            (Lines{"error Init failed: SDKConfig.cache_dir must not be empty"}));
}

TEST(DefaultClientServiceInit, NamesTheProductIdFirstWhenEveryTextIsEmpty) {
  ClientServiceBench bench;
  EXPECT_EQ(bench.service.Init(SDKConfig{}).message, "SDKConfig.product_id must not be empty");
}

TEST(DefaultClientServiceInit, NamesTheVersionBeforeTheCacheDirectory) {
  ClientServiceBench bench;
  SDKConfig config;
  config.product_id = "editor";
  EXPECT_EQ(bench.service.Init(config).message, "SDKConfig.version must not be empty");
}

TEST(DefaultClientServiceInit, ChecksTheTextsBeforeTheServices) {
  ClientServiceBench bench;
  bench.services->time_provider.reset();
  SDKConfig config = bench.Config();
  config.cache_dir.clear();
  EXPECT_EQ(bench.service.Init(config).message, "SDKConfig.cache_dir must not be empty");
}

// The returned text begins with a capital letter, the logged one does not.
TEST(DefaultClientServiceInit, RejectsARegistryWithoutTimeProvider) {
  ClientServiceBench bench;
  bench.services->time_provider.reset();
  EXPECT_EQ(bench.service.Init(bench.Config()),
            (Error{kInvalidState, "Required services are not configured"}));
  EXPECT_EQ(bench.logger->lines,
            (Lines{"error Init failed: required services are not configured"}));
}

TEST(DefaultClientServiceInit, RejectsAMissingRegistry) {
  const ClientServiceBench bench;
  DefaultClientService service(nullptr);
  EXPECT_EQ(service.Init(bench.Config()),
            (Error{kInvalidState, "Required services are not configured"}));
}

TEST(DefaultClientServiceInit, NamesAnEmptyTextEvenWithoutARegistry) {
  DefaultClientService service(nullptr);
  EXPECT_EQ(service.Init(SDKConfig{}),
            (Error{kInvalidArgument, "SDKConfig.product_id must not be empty"}));
}

TEST(DefaultClientServiceInit, ChecksTheServicesBeforeTheCacheDirectoryIsCreated) {
  ClientServiceBench bench;
  bench.services->time_provider.reset();
  EXPECT_FALSE(bench.service.Init(bench.Config()).ok());
  EXPECT_FALSE(std::filesystem::exists(bench.Config().cache_dir));
}

TEST(DefaultClientServiceInit, SucceedsAndLogsTheRequestAndTheSuccess) {
  ClientServiceBench bench;
  const SDKConfig config = bench.Config();
  EXPECT_EQ(bench.service.Init(config), Error{});
  EXPECT_EQ(bench.logger->lines, (Lines{"info Init requested for product_id=editor, version=1.5",
                                        "info SDK init success, cache_dir=" + config.cache_dir}));
}

TEST(DefaultClientServiceInit, NeedsNoServiceButTheTimeProvider) {
  const ClientServiceBench bench;
  const auto services = std::make_shared<ServiceRegistry>();
  services->time_provider = bench.time;
  DefaultClientService service(services);
  EXPECT_EQ(service.Init(bench.Config()), Error{});
}

TEST(DefaultClientServiceInit, FailsWithoutALoggerAsWithOne) {
  ClientServiceBench bench;
  bench.services->logger.reset();
  EXPECT_EQ(bench.service.Init(SDKConfig{}),
            (Error{kInvalidArgument, "SDKConfig.product_id must not be empty"}));
}

TEST(DefaultClientServiceInit, CallsNoService) {
  ClientServiceBench bench;
  bench.Init();
  EXPECT_EQ(bench.device_id->calls, 0);
  EXPECT_TRUE(bench.network->installs.empty());
  EXPECT_TRUE(bench.network->checks.empty());
}

TEST(DefaultClientServiceInit, CreatesACacheDirectoryUnderMissingParents) {
  ClientServiceBench bench;
  SDKConfig config = bench.Config();
  const std::filesystem::path nested = bench.folder.path() / "one" / "two" / "three";
  config.cache_dir = nested.string();
  EXPECT_EQ(bench.service.Init(config), Error{});
  EXPECT_TRUE(std::filesystem::is_directory(nested));
}

TEST(DefaultClientServiceInit, AcceptsAnExistingCacheDirectory) {
  ClientServiceBench bench;
  SDKConfig config = bench.Config();
  config.cache_dir = bench.folder.text();
  EXPECT_EQ(bench.service.Init(config), Error{});
}

// The directory is made by the service itself, not by the registry's file system.
TEST(DefaultClientServiceInit, LeavesTheFileSystemServiceAlone) {
  ClientServiceBench bench;
  const auto file_system = std::make_shared<FakeFileSystem>();
  file_system->create_answer = Error{kFileSystemError, "refused"};
  bench.services->file_system = file_system;
  EXPECT_EQ(bench.service.Init(bench.Config()), Error{});
  EXPECT_TRUE(file_system->calls.empty());
}

TEST(DefaultClientServiceInit, FailsWhenAParentOfTheCacheDirectoryIsAFile) {
  ClientServiceBench bench;
  WriteBytes(bench.folder.path() / "file", "");
  SDKConfig config = bench.Config();
  config.cache_dir = bench.folder.Entry("file") + "/below";
  const std::string text = "Failed to create cache directory: " + config.cache_dir;
  EXPECT_EQ(bench.service.Init(config), (Error{kInvalidState, text}));
  EXPECT_EQ(bench.logger->lines,
            (Lines{"info Init requested for product_id=editor, version=1.5", "error " + text}));
}

TEST(DefaultClientServiceInit, FailsWhenTheCacheDirectoryIsAFile) {
  ClientServiceBench bench;
  SDKConfig config = bench.Config();
  config.cache_dir = bench.folder.Entry("file");
  WriteBytes(config.cache_dir, "");
  EXPECT_EQ(bench.service.Init(config),
            (Error{kInvalidState, "Failed to create cache directory: " + config.cache_dir}));
}

TEST(DefaultClientServiceInit, FailsWhenTheCacheDirectoryHoldsAZeroByte) {
  ClientServiceBench bench;
  SDKConfig config = bench.Config();
  config.cache_dir += std::string("\0tail", 5);
  EXPECT_EQ(bench.service.Init(config),
            (Error{kInvalidState, "Failed to create cache directory: " + config.cache_dir}));
  EXPECT_FALSE(std::filesystem::exists(bench.Config().cache_dir));
}

TEST(DefaultClientServiceInit, DoesNotInitialiseWhenTheCacheDirectoryFails) {
  ClientServiceBench bench;
  SDKConfig config = bench.Config();
  config.cache_dir = bench.folder.Entry("file");
  WriteBytes(config.cache_dir, "");
  EXPECT_FALSE(bench.service.Init(config).ok());
  EXPECT_EQ(bench.service.GetDeviceId().error,
            (Error{kInvalidState, "KorvixSDK is not initialized"}));
}

TEST(DefaultClientServiceInit, RecordsNoneOfItsFailures) {
  ClientServiceBench bench;
  EXPECT_FALSE(bench.service.Init(SDKConfig{}).ok());
  EXPECT_EQ(bench.service.GetLastError(), "");
  SDKConfig config = bench.Config();
  config.cache_dir = bench.folder.Entry("file");
  WriteBytes(config.cache_dir, "");
  EXPECT_FALSE(bench.service.Init(config).ok());
  EXPECT_EQ(bench.service.GetLastError(), "");
}

TEST(DefaultClientServiceInit, ClearsTheLastErrorOnSuccess) {
  ClientServiceBench bench;
  bench.Init();
  bench.FailGetDeviceId("broken");
  EXPECT_EQ(bench.service.GetLastError(), "broken");
  bench.Init();
  EXPECT_EQ(bench.service.GetLastError(), "");
}

TEST(DefaultClientServiceInit, KeepsTheLastErrorWhenAnArgumentIsRejected) {
  ClientServiceBench bench;
  bench.Init();
  bench.FailGetDeviceId("broken");
  EXPECT_FALSE(bench.service.Init(SDKConfig{}).ok());
  EXPECT_EQ(bench.service.GetLastError(), "broken");
}

TEST(DefaultClientServiceInit, KeepsTheLastErrorWhenAServiceIsMissing) {
  ClientServiceBench bench;
  bench.Init();
  bench.FailGetDeviceId("broken");
  bench.services->time_provider.reset();
  EXPECT_FALSE(bench.service.Init(bench.Config()).ok());
  EXPECT_EQ(bench.service.GetLastError(), "broken");
}

TEST(DefaultClientServiceInit, ClearsTheLastErrorWhenOnlyTheCacheDirectoryFails) {
  ClientServiceBench bench;
  bench.Init();
  bench.FailGetDeviceId("broken");
  SDKConfig config = bench.Config();
  config.cache_dir = bench.folder.Entry("file");
  WriteBytes(config.cache_dir, "");
  EXPECT_FALSE(bench.service.Init(config).ok());
  EXPECT_EQ(bench.service.GetLastError(), "");
}

TEST(DefaultClientServiceInit, StaysInitialisedWithTheOldConfigurationWhenAnArgumentIsRejected) {
  ClientServiceBench bench;
  bench.Init();
  SDKConfig config = bench.Config();
  config.product_id = "other";
  config.version.clear();
  EXPECT_EQ(bench.service.Init(config),
            (Error{kInvalidArgument, "SDKConfig.version must not be empty"}));
  EXPECT_EQ(bench.service.GetDeviceId().value, "device-1");
  EXPECT_TRUE(bench.service.CheckForUpdate().ok());
  ASSERT_EQ(bench.network->checks.size(), 1u);
  EXPECT_EQ(bench.network->checks[0], (UpdateCheckRequest{"editor", "1.5", "device-1"}));
}

TEST(DefaultClientServiceInit, StaysInitialisedWithTheNewConfigurationWhenTheCacheDirectoryFails) {
  ClientServiceBench bench;
  bench.Init();
  SDKConfig config = bench.Config();
  config.product_id = "other";
  config.version = "2.0";
  config.cache_dir = bench.folder.Entry("file");
  WriteBytes(config.cache_dir, "");
  EXPECT_FALSE(bench.service.Init(config).ok());
  EXPECT_TRUE(bench.service.CheckForUpdate().ok());
  ASSERT_EQ(bench.network->checks.size(), 1u);
  EXPECT_EQ(bench.network->checks[0], (UpdateCheckRequest{"other", "2.0", "device-1"}));
}

TEST(DefaultClientServiceInit, ReplacesTheWholeConfiguration) {
  ClientServiceBench bench;
  bench.Init();
  SDKConfig config = bench.Config();
  config.product_id = "other";
  config.version = "2.0";
  config.cache_dir = bench.folder.Entry("other-cache");
  EXPECT_EQ(bench.service.Init(config), Error{});
  EXPECT_TRUE(bench.service.ReportInstall().ok());
  EXPECT_TRUE(bench.service.PrepareUpdate(UpdateInfo{}).ok());
  EXPECT_EQ(bench.network->installs.at(0), (Lines{"other", "device-1", "2.0"}));
  EXPECT_EQ(bench.packages->prepares.at(0), (Lines{"", config.cache_dir}));
}

TEST(DefaultClientServiceInit, PublishesTheFallbackPathForTheProcess) {
  ClientServiceBench bench;
  SetDefaultFallbackIdPath("earlier");
  SDKConfig config = bench.Config();
  config.fallback_device_id_path = "fallback-id";
  EXPECT_EQ(bench.service.Init(config), Error{});
  EXPECT_EQ(DefaultFallbackIdPath(), "fallback-id");
}

TEST(DefaultClientServiceInit, PublishesAnEmptyFallbackPathToo) {
  ClientServiceBench bench;
  SetDefaultFallbackIdPath("earlier");
  bench.Init();
  EXPECT_EQ(DefaultFallbackIdPath(), "");
}

TEST(DefaultClientServiceInit, KeepsTheFallbackPathWhenAnArgumentIsRejected) {
  ClientServiceBench bench;
  SetDefaultFallbackIdPath("earlier");
  SDKConfig config = bench.Config();
  config.fallback_device_id_path = "fallback-id";
  config.cache_dir.clear();
  EXPECT_FALSE(bench.service.Init(config).ok());
  EXPECT_EQ(DefaultFallbackIdPath(), "earlier");
}

TEST(DefaultClientServiceInit, KeepsTheFallbackPathWhenAServiceIsMissing) {
  ClientServiceBench bench;
  SetDefaultFallbackIdPath("earlier");
  bench.services->time_provider.reset();
  SDKConfig config = bench.Config();
  config.fallback_device_id_path = "fallback-id";
  EXPECT_FALSE(bench.service.Init(config).ok());
  EXPECT_EQ(DefaultFallbackIdPath(), "earlier");
}

TEST(DefaultClientServiceInit, PublishesTheFallbackPathEvenWhenTheCacheDirectoryFails) {
  ClientServiceBench bench;
  SetDefaultFallbackIdPath("earlier");
  SDKConfig config = bench.Config();
  config.fallback_device_id_path = "fallback-id";
  config.cache_dir = bench.folder.Entry("file");
  WriteBytes(config.cache_dir, "");
  EXPECT_FALSE(bench.service.Init(config).ok());
  EXPECT_EQ(DefaultFallbackIdPath(), "fallback-id");
}

TEST(DefaultClientServiceInit, GivesTheDefaultNetworkClientTheBaseAddress) {
  ClientServiceBench bench;
  const auto client = std::make_shared<DefaultNetworkClient>();
  bench.services->network_client = client;
  SDKConfig config = bench.Config();
  config.server_base_url = "mock://service";
  EXPECT_EQ(bench.service.Init(config), Error{});
  EXPECT_EQ(client->server_base_url, "mock://service");
}

TEST(DefaultClientServiceInit, GivesTheBaseAddressByTheRunTimeType) {
  ClientServiceBench bench;
  const auto client = std::make_shared<DerivedNetworkClient>();
  bench.services->network_client = client;
  SDKConfig config = bench.Config();
  config.server_base_url = "mock://service";
  EXPECT_EQ(bench.service.Init(config), Error{});
  EXPECT_EQ(client->server_base_url, "mock://service");
}

TEST(DefaultClientServiceInit, EmptiesTheBaseAddressWithAnEmptyOne) {
  ClientServiceBench bench;
  const auto client = std::make_shared<DefaultNetworkClient>();
  client->server_base_url = "mock://earlier";
  bench.services->network_client = client;
  bench.Init();
  EXPECT_EQ(client->server_base_url, "");
}

TEST(DefaultClientServiceInit, KeepsTheBaseAddressWhenTheCacheDirectoryFails) {
  ClientServiceBench bench;
  const auto client = std::make_shared<DefaultNetworkClient>();
  client->server_base_url = "mock://earlier";
  bench.services->network_client = client;
  SDKConfig config = bench.Config();
  config.server_base_url = "mock://service";
  config.cache_dir = bench.folder.Entry("file");
  WriteBytes(config.cache_dir, "");
  EXPECT_FALSE(bench.service.Init(config).ok());
  EXPECT_EQ(client->server_base_url, "mock://earlier");
}

TEST(DefaultClientServiceInit, SucceedsWithoutANetworkClient) {
  ClientServiceBench bench;
  bench.services->network_client.reset();
  EXPECT_EQ(bench.service.Init(bench.Config()), Error{});
}

}  // namespace
}  // namespace korvixsdk::test
