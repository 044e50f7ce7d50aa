// What becomes of an exception that a service of the host's throws: from every operation, for each
// of the nine interfaces, through the shipped library.
#include <gtest/gtest.h>
#include <korvixsdk/korvixsdk.h>

#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "support/fakes.h"
#include "support/host_config.h"
#include "support/recording_logger.h"
#include "support/temp_folder.h"

namespace korvixsdk {
namespace {

using test::RegistryOwner;
using test::TempFolder;

struct RuntimeError {
  static std::runtime_error Make() { return std::runtime_error("out of order"); }
  static constexpr char kName[] = "RuntimeError";
  static constexpr char kText[] = " threw an exception: out of order";
};
/// Nothing derived from std::exception, and so without a text.
struct Number {
  static int Make() { return 42; }
  static constexpr char kName[] = "Number";
  static constexpr char kText[] = " threw an exception";
};

template <typename Thrown>
struct Throwing {
  class Logger : public ILogger {
   public:
    void LogDebug(const std::string&) override { throw Thrown::Make(); }
    void LogInfo(const std::string&) override { throw Thrown::Make(); }
    void LogWarning(const std::string&) override { throw Thrown::Make(); }
    void LogError(const std::string&) override { throw Thrown::Make(); }
  };
  class Time : public ITimeProvider {
   public:
    std::int64_t NowUnixSeconds() override { throw Thrown::Make(); }
  };
  class FileSystem : public IFileSystemProvider {
   public:
    bool Exists(const std::string&) override { throw Thrown::Make(); }
    Result<std::string> ReadFile(const std::string&) override { throw Thrown::Make(); }
    Error WriteFile(const std::string&, const std::string&) override { throw Thrown::Make(); }
    Error CreateDirectories(const std::string&) override {
      if (creates) return {};
      throw Thrown::Make();
    }
    bool creates = false;
  };
  class Crypto : public ICryptoProvider {
   public:
    Result<std::string> Sha256Hex(const std::string&) override { throw Thrown::Make(); }
  };
  class DeviceId : public IDeviceIdProvider {
   public:
    Result<std::string> GetDeviceId() override { throw Thrown::Make(); }
    Result<std::vector<std::string>> CollectFingerprintSources() override { throw Thrown::Make(); }
  };
  class Network : public INetworkClient {
   public:
    Result<ServerResult> ReportInstall(const std::string&, const std::string&,
                                       const std::string&) override {
      throw Thrown::Make();
    }
    Result<UpdateInfo> CheckForUpdate(const UpdateCheckRequest&) override { throw Thrown::Make(); }
  };
  class Policy : public IUpdatePolicy {
   public:
    bool IsNewerVersion(const std::string&, const std::string&) override { throw Thrown::Make(); }
  };
  class Packages : public IUpdatePackageService {
   public:
    Result<PreparedUpdate> Prepare(const UpdateInfo&, const std::string&) override {
      throw Thrown::Make();
    }
    Error Launch(const PreparedUpdate&, const std::string&) override { throw Thrown::Make(); }
  };
  class Client : public IClientService {
   public:
    Error Init(const SDKConfig&) override { throw Thrown::Make(); }
    Result<std::string> GetDeviceId() override { throw Thrown::Make(); }
    Result<UpdateInfo> CheckForUpdate() override { throw Thrown::Make(); }
    Result<ServerResult> ReportInstall() override { throw Thrown::Make(); }
    Result<PreparedUpdate> PrepareUpdate(const UpdateInfo&) override { throw Thrown::Make(); }
    Error LaunchPreparedUpdate(const PreparedUpdate&, const std::string&) override {
      throw Thrown::Make();
    }
    std::string GetLastError() const override { throw Thrown::Make(); }
  };
};

/// A host whose services are the default ones, but for the mock server, a logger that records, and
/// what a test replaces.
class Host {
 public:
  Host() {
    services->logger = logger;
    config = test::HostConfig(folder);
    config.services = services.get();
    offer.download_url = "mock://package-ok";
    prepared.ready = true;
    prepared.package_path = folder.Entry("package");
    test::WriteBytes(folder.path() / "package", "bytes");
  }

  Error Init() { return sdk.Init(config); }
  Error Launch() { return sdk.LaunchPreparedUpdate(prepared, folder.Entry("no-updater")); }

  TempFolder folder;
  std::shared_ptr<test::RecordingLogger> logger = std::make_shared<test::RecordingLogger>();
  RegistryOwner services{std::make_shared<ServiceRegistry>()};
  SDKConfig config;
  UpdateInfo offer;
  PreparedUpdate prepared;
  KorvixSDK sdk;
};

void ExpectFailure(const Error& error, const std::string& message) {
  EXPECT_EQ(error.code, kInvalidState);
  EXPECT_EQ(error.message, message);
}

template <typename Thrown>
class ThrowingService : public testing::Test {
 protected:
  using Fakes = Throwing<Thrown>;

  static std::string Of(const std::string& service) { return service + Thrown::kText; }

  /// The failure was kept and logged as any other failure is.
  void ExpectRecorded(const std::string& operation, const std::string& message) {
    EXPECT_EQ(host_.sdk.GetLastError(), message);
    ASSERT_FALSE(host_.logger->lines.empty());
    EXPECT_EQ(host_.logger->lines.back(), "warning " + operation + " failed: " + message);
  }

  Host host_;
};
using AllThrown = testing::Types<RuntimeError, Number>;
struct NameOfThrown {
  template <typename Thrown>
  static std::string GetName(int) {
    return Thrown::kName;
  }
};
TYPED_TEST_SUITE(ThrowingService, AllThrown, NameOfThrown);

TYPED_TEST(ThrowingService, LoggerLosesItsLinesAndNothingElse) {
  Host& host = this->host_;
  host.services->logger = std::make_shared<typename TestFixture::Fakes::Logger>();
  ASSERT_EQ(host.Init().message, "");
  EXPECT_TRUE(host.sdk.GetDeviceId().ok());
  EXPECT_TRUE(host.sdk.CheckForUpdate().value.has_update);
  EXPECT_TRUE(host.sdk.ReportInstall().ok());
  EXPECT_TRUE(host.sdk.PrepareUpdate(host.offer).ok());
  EXPECT_EQ(host.Launch().message, "Updater executable was not found");
  EXPECT_EQ(host.sdk.GetLastError(), "Updater executable was not found");
  EXPECT_TRUE(host.sdk.LaunchPreparedUpdate(host.prepared, "mock://launch-ok").ok());
  host.config.version.clear();
  EXPECT_EQ(host.Init().message, "SDKConfig.version must not be empty");
}

TYPED_TEST(ThrowingService, ClockIsNeverAsked) {
  Host& host = this->host_;
  host.services->time_provider = std::make_shared<typename TestFixture::Fakes::Time>();
  ASSERT_TRUE(host.Init().ok());
  EXPECT_TRUE(host.sdk.CheckForUpdate().ok());
  EXPECT_TRUE(host.sdk.ReportInstall().ok());
  EXPECT_TRUE(host.sdk.PrepareUpdate(host.offer).ok());
}

TYPED_TEST(ThrowingService, FileSystemFailsPreparationAndLaunch) {
  Host& host = this->host_;
  const auto files = std::make_shared<typename TestFixture::Fakes::FileSystem>();
  host.services->file_system = files;
  ASSERT_TRUE(host.Init().ok());
  const std::string message = TestFixture::Of("File system service");
  for (const bool creates : {false, true}) {
    files->creates = creates;
    ExpectFailure(host.sdk.PrepareUpdate(host.offer).error, message);
    this->ExpectRecorded("PrepareUpdate", message);
  }
  ExpectFailure(host.Launch(), message);
  this->ExpectRecorded("LaunchPreparedUpdate", message);
}

TYPED_TEST(ThrowingService, CryptoProviderFailsPreparation) {
  Host& host = this->host_;
  host.services->crypto = std::make_shared<typename TestFixture::Fakes::Crypto>();
  ASSERT_TRUE(host.Init().ok());
  const std::string message = TestFixture::Of("Crypto provider");
  ExpectFailure(host.sdk.PrepareUpdate(host.offer).error, message);
  this->ExpectRecorded("PrepareUpdate", message);
}

TYPED_TEST(ThrowingService, DeviceIdProviderIsLikeOneThatFails) {
  Host& host = this->host_;
  host.services->device_id_provider = std::make_shared<typename TestFixture::Fakes::DeviceId>();
  ASSERT_TRUE(host.Init().ok());
  const std::string message = TestFixture::Of("Device id provider");
  ExpectFailure(host.sdk.GetDeviceId().error, message);
  this->ExpectRecorded("GetDeviceId", message);
  const std::size_t lines = host.logger->lines.size();
  ExpectFailure(host.sdk.ReportInstall().error, message);
  EXPECT_EQ(host.logger->lines.size(), lines);
  // The check goes on without an identifier.
  EXPECT_TRUE(host.sdk.CheckForUpdate().value.has_update);
  EXPECT_EQ(host.logger->lines[lines],
            "info CheckForUpdate request started product_id=editor, version=1.5, "
            "device_id_present=false");
}

TYPED_TEST(ThrowingService, NetworkClientFailsCheckAndReport) {
  Host& host = this->host_;
  host.services->network_client = std::make_shared<typename TestFixture::Fakes::Network>();
  ASSERT_TRUE(host.Init().ok());
  const std::string message = TestFixture::Of("Network client");
  ExpectFailure(host.sdk.CheckForUpdate().error, message);
  this->ExpectRecorded("CheckForUpdate", message);
  const std::size_t lines = host.logger->lines.size();
  ExpectFailure(host.sdk.ReportInstall().error, message);
  EXPECT_EQ(host.logger->lines.size(), lines);
}

TYPED_TEST(ThrowingService, UpdatePolicyFailsCheck) {
  Host& host = this->host_;
  host.services->update_policy = std::make_shared<typename TestFixture::Fakes::Policy>();
  ASSERT_TRUE(host.Init().ok());
  const std::string message = TestFixture::Of("Update policy");
  const Result<UpdateInfo> check = host.sdk.CheckForUpdate();
  ExpectFailure(check.error, message);
  EXPECT_EQ(check.value.latest_version, "");
  this->ExpectRecorded("CheckForUpdate", message);
}

TYPED_TEST(ThrowingService, UpdatePolicyFailsCheckThatOnlyNamesAMinimum) {
  Host& host = this->host_;
  host.services->update_policy = std::make_shared<typename TestFixture::Fakes::Policy>();
  const auto network = std::make_shared<test::FakeNetwork>();
  network->check_answer.value.min_supported_version = "2.0.0";
  host.services->network_client = network;
  ASSERT_TRUE(host.Init().ok());
  ExpectFailure(host.sdk.CheckForUpdate().error, TestFixture::Of("Update policy"));
}

TYPED_TEST(ThrowingService, PackageServiceFailsPreparationAndLaunch) {
  Host& host = this->host_;
  host.services->update_package_service = std::make_shared<typename TestFixture::Fakes::Packages>();
  ASSERT_TRUE(host.Init().ok());
  const std::string message = TestFixture::Of("Update package service");
  ExpectFailure(host.sdk.PrepareUpdate(host.offer).error, message);
  this->ExpectRecorded("PrepareUpdate", message);
  ExpectFailure(host.Launch(), message);
  this->ExpectRecorded("LaunchPreparedUpdate", message);
}

TYPED_TEST(ThrowingService, ClientServiceFailsEveryOperation) {
  Host& host = this->host_;
  const std::string message = TestFixture::Of("Client service");
  KorvixSDK sdk(std::make_shared<typename TestFixture::Fakes::Client>());
  ExpectFailure(sdk.Init(SDKConfig{}), message);
  ExpectFailure(sdk.GetDeviceId().error, message);
  ExpectFailure(sdk.CheckForUpdate().error, message);
  ExpectFailure(sdk.ReportInstall().error, message);
  ExpectFailure(sdk.PrepareUpdate(host.offer).error, message);
  ExpectFailure(sdk.LaunchPreparedUpdate(host.prepared, "mock://launch-ok"), message);
  EXPECT_EQ(sdk.GetLastError(), message);
}

TYPED_TEST(ThrowingService, ClientServiceOfTheRegistryFailsBothFronts) {
  Host& host = this->host_;
  host.services->client_service = std::make_shared<typename TestFixture::Fakes::Client>();
  const std::string message = TestFixture::Of("Client service");
  ExpectFailure(host.Init(), message);
  ClientManager manager;
  ExpectFailure(manager.Init({host.config}), message);
  ExpectFailure(manager.GetDeviceId().error, "ClientManager is not initialized");
}

}  // namespace
}  // namespace korvixsdk
