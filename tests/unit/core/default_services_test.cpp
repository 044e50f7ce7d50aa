#include "core/default_services.h"

#include <gtest/gtest.h>
#include <korvixsdk/korvixsdk.h>

#include <memory>
#include <type_traits>

#include "core/default_client_service.h"
#include "core/default_update_policy.h"
#include "network/default_network_client.h"
#include "platform/default_crypto_provider.h"
#include "platform/default_file_system_provider.h"
#include "platform/fallback_id_file.h"
#include "platform/null_logger.h"
#include "platform/placeholder_device_id_provider.h"
#include "platform/system_time_provider.h"
#include "support/fakes.h"
#include "support/host_config.h"
#include "support/record_equality.h"
#include "support/recording_logger.h"
#include "support/temp_folder.h"
#include "update/default_update_package_service.h"

namespace korvixsdk::test {
namespace {

template <typename Type, typename Interface>
bool Is(const std::shared_ptr<Interface>& service) {
  return std::dynamic_pointer_cast<Type>(service) != nullptr;
}

void ExpectDefaults(const ServiceRegistry& services) {
  EXPECT_TRUE(Is<NullLogger>(services.logger));
  EXPECT_TRUE(Is<SystemTimeProvider>(services.time_provider));
  EXPECT_TRUE(Is<DefaultFileSystemProvider>(services.file_system));
  EXPECT_TRUE(Is<DefaultCryptoProvider>(services.crypto));
  EXPECT_TRUE(Is<PlaceholderDeviceIdProvider>(services.device_id_provider));
  EXPECT_TRUE(Is<DefaultNetworkClient>(services.network_client));
  EXPECT_TRUE(Is<DefaultUpdatePolicy>(services.update_policy));
  EXPECT_TRUE(Is<DefaultUpdatePackageService>(services.update_package_service));
  EXPECT_TRUE(Is<DefaultClientService>(services.client_service));
}

/// A registry in which the caller set every member.
std::shared_ptr<ServiceRegistry> HostRegistry() {
  auto services = std::make_shared<ServiceRegistry>();
  services->logger = std::make_shared<RecordingLogger>();
  services->time_provider = std::make_shared<FakeTime>();
  services->file_system = std::make_shared<FakeFileSystem>();
  services->crypto = std::make_shared<FakeCrypto>();
  services->device_id_provider = std::make_shared<FakeDeviceId>();
  services->network_client = std::make_shared<FakeNetwork>();
  services->update_policy = std::make_shared<FakePolicy>();
  services->update_package_service = std::make_shared<FakePackages>();
  services->client_service = std::make_shared<FakeClientService>();
  return services;
}

void ExpectSameMembers(const ServiceRegistry& left, const ServiceRegistry& right) {
  EXPECT_EQ(left.logger, right.logger);
  EXPECT_EQ(left.time_provider, right.time_provider);
  EXPECT_EQ(left.file_system, right.file_system);
  EXPECT_EQ(left.crypto, right.crypto);
  EXPECT_EQ(left.device_id_provider, right.device_id_provider);
  EXPECT_EQ(left.network_client, right.network_client);
  EXPECT_EQ(left.update_policy, right.update_policy);
  EXPECT_EQ(left.update_package_service, right.update_package_service);
  EXPECT_EQ(left.client_service, right.client_service);
}

TEST(ServiceRegistry, IsEmptyByDefault) {
  ExpectSameMembers(ServiceRegistry{}, {nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                                        nullptr, nullptr, nullptr});
}

TEST(ServiceRegistry, HasItsMembersInTheFixedOrder) {
  const std::shared_ptr<ServiceRegistry> host = HostRegistry();
  const auto& [logger, time, files, crypto, device_id, network, policy, packages, client] = *host;
  EXPECT_EQ(logger, host->logger);
  EXPECT_EQ(time, host->time_provider);
  EXPECT_EQ(files, host->file_system);
  EXPECT_EQ(crypto, host->crypto);
  EXPECT_EQ(device_id, host->device_id_provider);
  EXPECT_EQ(network, host->network_client);
  EXPECT_EQ(policy, host->update_policy);
  EXPECT_EQ(packages, host->update_package_service);
  EXPECT_EQ(client, host->client_service);
}

TEST(DefaultServices, FillEveryEmptyMember) {
  const RegistryOwner services(std::make_shared<ServiceRegistry>());
  FillDefaultServices(services.get());
  ExpectDefaults(*services.get());
}

TEST(DefaultServices, KeepEveryMemberThatIsSet) {
  const std::shared_ptr<ServiceRegistry> services = HostRegistry();
  const ServiceRegistry before = *services;
  FillDefaultServices(services);
  ExpectSameMembers(*services, before);
}

TEST(DefaultServices, KeepALoggerAndFillTheRest) {
  const RegistryOwner services(std::make_shared<ServiceRegistry>());
  const auto logger = std::make_shared<RecordingLogger>();
  services->logger = logger;
  FillDefaultServices(services.get());
  EXPECT_EQ(services->logger, logger);
  services->logger = std::make_shared<NullLogger>();
  ExpectDefaults(*services.get());
}

TEST(DefaultServices, KeepACallersCoreServiceAndFillTheRest) {
  const RegistryOwner services(std::make_shared<ServiceRegistry>());
  const auto client = std::make_shared<FakeClientService>();
  services->client_service = client;
  FillDefaultServices(services.get());
  EXPECT_EQ(services->client_service, client);
  EXPECT_TRUE(Is<DefaultUpdatePackageService>(services->update_package_service));
}

TEST(DefaultServices, CreateNothingTheSecondTime) {
  const RegistryOwner services(std::make_shared<ServiceRegistry>());
  FillDefaultServices(services.get());
  const ServiceRegistry first = *services.get();
  FillDefaultServices(services.get());
  ExpectSameMembers(*services.get(), first);
}

TEST(DefaultServices, LeaveAMissingRegistryAlone) {
  const std::shared_ptr<ServiceRegistry> none;
  FillDefaultServices(none);
  EXPECT_EQ(none, nullptr);
}

TEST(DefaultServices, BuildTheCoreServiceFromTheRegistryItself) {
  const TempFolder folder;
  const RegistryOwner services(std::make_shared<ServiceRegistry>());
  const auto logger = std::make_shared<RecordingLogger>();
  const auto network = std::make_shared<FakeNetwork>();
  services->logger = logger;
  services->network_client = network;
  FillDefaultServices(services.get());
  EXPECT_EQ(services->client_service->Init(LeastConfig(folder.Entry("cache"))), Error{});
  EXPECT_TRUE(services->client_service->CheckForUpdate().ok());
  EXPECT_FALSE(logger->lines.empty());
  EXPECT_EQ(network->checks.size(), 1u);
}

TEST(DefaultServices, GiveThePackageServiceTheRegistrysFilesAndHashing) {
  const RegistryOwner services(std::make_shared<ServiceRegistry>());
  const auto files = std::make_shared<FakeFileSystem>();
  const auto crypto = std::make_shared<FakeCrypto>();
  services->file_system = files;
  services->crypto = crypto;
  FillDefaultServices(services.get());
  UpdateInfo info;
  info.download_url = "mock://package-ok";
  EXPECT_EQ(services->update_package_service->Prepare(info, "cache").error, Error{});
  EXPECT_EQ(files->written, "mock update package payload");
  EXPECT_EQ(crypto->hashed.size(), 1u);
}

TEST(DefaultServices, GiveTheNetworkClientNoBaseAddress) {
  const RegistryOwner services(std::make_shared<ServiceRegistry>());
  FillDefaultServices(services.get());
  const auto client = std::dynamic_pointer_cast<DefaultNetworkClient>(services->network_client);
  ASSERT_NE(client, nullptr);
  EXPECT_EQ(client->server_base_url, "");
  EXPECT_EQ(client->CheckForUpdate({"editor", "1.5", ""}).error,
            (Error{kNetworkError, "Network client is not configured with server_base_url"}));
}

TEST(DefaultServices, GiveTheDeviceIdProviderNoFallbackPathOfItsOwn) {
  const TempFolder folder;
  const RegistryOwner services(std::make_shared<ServiceRegistry>());
  FillDefaultServices(services.get());
  const auto provider =
      std::dynamic_pointer_cast<PlaceholderDeviceIdProvider>(services->device_id_provider);
  ASSERT_NE(provider, nullptr);
  provider->set_force_sources_unavailable(true);
  SetDefaultFallbackIdPath("");
  EXPECT_EQ(provider->GetDeviceId().error.code, kPlatformError);
  WriteBytes(folder.path() / "id", "guid-of-the-process");
  SetDefaultFallbackIdPath(folder.Entry("id"));
  EXPECT_EQ(provider->GetDeviceId().value, "guid-of-the-process");
  SetDefaultFallbackIdPath("");
}

TEST(SdkFactory, CreatesARegistryOfDefaults) {
  const RegistryOwner services(SdkFactory::CreateDefaultServices());
  ExpectDefaults(*services.get());
}

TEST(SdkFactory, CreatesANewRegistryAtEveryCall) {
  const RegistryOwner first(SdkFactory::CreateDefaultServices());
  const RegistryOwner second(SdkFactory::CreateDefaultServices());
  EXPECT_NE(first.get(), second.get());
  EXPECT_NE(first->network_client, second->network_client);
  EXPECT_NE(first->client_service, second->client_service);
}

// Registry and core service keep each other alive on purpose.
TEST(SdkFactory, CreatesARegistryThatItsServicesKeepAlive) {
  std::shared_ptr<ServiceRegistry> services = SdkFactory::CreateDefaultServices();
  const std::weak_ptr<ServiceRegistry> registry = services;
  services.reset();
  ASSERT_FALSE(registry.expired());
  RegistryOwner{registry.lock()};
  EXPECT_TRUE(registry.expired());
}

TEST(SdkFactory, CreatesARegistryThatTheCoreServiceAloneKeepsAlive) {
  std::shared_ptr<ServiceRegistry> services = SdkFactory::CreateDefaultServices();
  const std::weak_ptr<ServiceRegistry> registry = services;
  services->update_package_service.reset();
  services.reset();
  ASSERT_FALSE(registry.expired());
  registry.lock()->client_service.reset();
  EXPECT_TRUE(registry.expired());
}

TEST(SdkFactory, CreatesARegistryThatThePackageServiceAloneKeepsAlive) {
  std::shared_ptr<ServiceRegistry> services = SdkFactory::CreateDefaultServices();
  const std::weak_ptr<ServiceRegistry> registry = services;
  services->client_service.reset();
  services.reset();
  ASSERT_FALSE(registry.expired());
  registry.lock()->update_package_service.reset();
  EXPECT_TRUE(registry.expired());
}

TEST(SdkFactory, CreatesACoreServiceThatWorksWithoutTheCallersRegistry) {
  const TempFolder folder;
  const std::shared_ptr<IClientService> service = SdkFactory::CreateClientService();
  ASSERT_TRUE(Is<DefaultClientService>(service));
  SDKConfig config = LeastConfig(folder.Entry("cache"));
  config.server_base_url = "mock://service";
  EXPECT_EQ(service->Init(config), Error{});
  EXPECT_EQ(service->CheckForUpdate().value.latest_version, "9.9.9");
}

TEST(SdkFactory, CreatesANewCoreServiceAtEveryCall) {
  EXPECT_NE(SdkFactory::CreateClientService(), SdkFactory::CreateClientService());
}

TEST(SdkFactory, HasNoState) {
  EXPECT_TRUE(std::is_empty_v<SdkFactory>);
  EXPECT_TRUE(std::is_copy_assignable_v<SdkFactory>);
  EXPECT_TRUE(std::is_move_assignable_v<SdkFactory>);
}

}  // namespace
}  // namespace korvixsdk::test
