#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "core/default_services.h"
#include "faults/whole_life.h"
#include "faults/wrapped_curl.h"
#include "faults/wrapped_machine.h"
#include "network/default_network_client.h"
#include "platform/default_file_system_provider.h"
#include "platform/fallback_id_file.h"
#include "platform/placeholder_device_id_provider.h"
#include "support/failing_calls.h"
#include "support/fakes.h"
#include "support/host_config.h"
#include "support/recording_logger.h"
#include "support/scripted_server.h"
#include "support/temp_folder.h"

namespace korvixsdk {
namespace {

using test::FailingCall;
using test::LifeAnswers;
using test::Script;
using test::ScriptedServer;
using test::TempFolder;

constexpr char kLarge[] = "large allocation";
/// Longer than any allocation that is left alone.
constexpr std::size_t kLong = 20000;

class LargeAllocations : public testing::TestWithParam<FailingCall::Span> {
 protected:
  LargeAllocations() {
    test::wrapped_machine = {};
    test::wrapped_curl = {};
#ifdef _WIN32
    test::wrapped_machine.record_processes = true;
#endif
  }
  ~LargeAllocations() override {
    test::wrapped_machine = {};
    test::wrapped_curl = {};
    SetDefaultFallbackIdPath("");
  }

  /// Calls `operation` with the first, second, ... large allocation failing until none is left.
  template <typename Operation>
  void FailOneAfterTheOther(Operation operation) {
    bool happened = true;
    int nth = 0;
    while (happened && ++nth < 1000 && !HasFailure()) {
      SCOPED_TRACE("allocation " + std::to_string(nth));
      EXPECT_NO_THROW(happened = operation(nth));
    }
    EXPECT_GT(nth, 1) << "nothing large was allocated";
    EXPECT_LT(nth, 1000);
  }
};

TEST_P(LargeAllocations, WholeLifeWithLongTextsEndsInDocumentedAnswers) {
  const TempFolder folder;
  const std::string text(kLong, 't');
  ScriptedServer packages(Script::Response(200, std::string(300000, 'p')));
  ScriptedServer server(Script::Response(
      200, R"({"code":400,"allowed":true,"msg":")" + text +
               R"(","version":"2.0","update_content":")" + text + R"(","min_supported_version":")" +
               text + R"(","download_url":")" + packages.address() + "/package?" + text + R"("})"));
  auto logger = std::make_shared<test::RecordingLogger>();
  test::RegistryOwner services(std::make_shared<ServiceRegistry>());
  services->logger = logger;
  SDKConfig config = test::HostConfig(folder, server.address());
  config.product_id = text;
  config.fallback_device_id_path = folder.Entry("id") + text;
  config.services = services.get();
  KorvixSDK sdk;
  ASSERT_TRUE(sdk.Init(config).ok());
  const LifeAnswers good = test::LiveOnce(sdk, config, "mock://launch-ok", nullptr);
  ASSERT_TRUE(good.ok()) << good.prepare.error.message;

  FailOneAfterTheOther([&](int nth) {
    LifeAnswers answers;
    bool happened = false;
    {
      const FailingCall fail(kLarge, nth, GetParam());
      answers = test::LiveOnce(sdk, config, "mock://launch-ok", &good);
      happened = fail.happened();
    }
    test::ExpectDocumentedAnswers(answers);
    EXPECT_TRUE(test::LiveOnce(sdk, config, "mock://launch-ok", nullptr).ok());
    return happened;
  });
}

TEST_P(LargeAllocations, FileOperationsOnLongPathsFailAsDocumented) {
  const std::string path(kLong, 'n');
  DefaultFileSystemProvider files;
  FailOneAfterTheOther([&](int nth) {
    const FailingCall fail(kLarge, nth, GetParam());
    EXPECT_FALSE(files.Exists(path));
    const std::string messages[] = {files.ReadFile(path).error.message,
                                    files.WriteFile(path, "x").message,
                                    files.CreateDirectories(path).message};
    // Where the path does not fit any more, the message is its fixed beginning.
    EXPECT_EQ(messages[0].rfind("Failed to open file for read: ", 0), 0u);
    EXPECT_TRUE(messages[1].rfind("Failed to open file for write: ", 0) == 0 ||
                messages[1].rfind("Failed to create parent directories: ", 0) == 0);
    EXPECT_EQ(messages[2].rfind("Failed to create directories: ", 0), 0u);
    return fail.happened();
  });
}

TEST_P(LargeAllocations, ReadingLongFileFailsAsDocumented) {
  const TempFolder folder;
  const std::string bytes(300000, 'f');
  test::WriteBytes(folder.path() / "file", bytes);
  const std::string path = folder.Entry("file");
  DefaultFileSystemProvider files;
  FailOneAfterTheOther([&](int nth) {
    const FailingCall fail(kLarge, nth, GetParam());
    const Result<std::string> read = files.ReadFile(path);
    if (read.ok()) {
      EXPECT_EQ(read.value, bytes);
    } else {
      EXPECT_EQ(read.error.message, "Failed to read file: " + path);
      EXPECT_EQ(read.value, "");
    }
    return fail.happened();
  });
}

TEST_P(LargeAllocations, LongFallbackPathOrContentFailsAsDocumented) {
  const TempFolder folder;
  const std::string stored(kLong, 's');
  test::WriteBytes(folder.path() / "id", stored);
  for (const std::string& path : {folder.Entry("id"), std::string(kLong, 'n')}) {
    PlaceholderDeviceIdProvider provider(path);
    provider.set_force_sources_unavailable(true);
    FailOneAfterTheOther([&](int nth) {
      const FailingCall fail(kLarge, nth, GetParam());
      const Result<std::string> id = provider.GetDeviceId();
      EXPECT_TRUE(id.ok() || id.error.code == kPlatformError);
      return fail.happened();
    });
  }
}

TEST_P(LargeAllocations, MockServerWithLongVersionFailsAsTheTransportDoes) {
  DefaultNetworkClient client;
  client.server_base_url = "mock://service";
  const UpdateCheckRequest request{"editor", std::string(kLong, '1'), ""};
  FailOneAfterTheOther([&](int nth) {
    const FailingCall fail(kLarge, nth, GetParam());
    const Result<UpdateInfo> offer = client.CheckForUpdate(request);
    EXPECT_TRUE(offer.ok() || offer.error.code == kNetworkError);
    return fail.happened();
  });
}

SDKConfig LongConfiguration(const TempFolder& folder) {
  SDKConfig config = test::HostConfig(folder, "mock://service/" + std::string(kLong, 's'));
  config.product_id = std::string(kLong, 'p');
  config.fallback_device_id_path = folder.Entry("id") + std::string(kLong, 'f');
  return config;
}

/// The directory can be created all the time: no answer may say otherwise.
TEST_P(LargeAllocations, InitWithLongConfigurationBlamesTheMemory) {
  const TempFolder folder;
  const SDKConfig config = LongConfiguration(folder);
  KorvixSDK sdk;
  FailOneAfterTheOther([&](int nth) {
    const FailingCall fail(kLarge, nth, GetParam());
    const Error error = sdk.Init(config);
    EXPECT_TRUE(error.ok() || error.message == "Not enough memory to initialize") << error.message;
    return fail.happened();
  });
  EXPECT_TRUE(sdk.Init(config).ok());
}

TEST_P(LargeAllocations, ClientManagerWithLongConfigurationBlamesTheMemory) {
  const TempFolder folder;
  const ClientManagerConfig config{LongConfiguration(folder)};
  ClientManager manager;
  FailOneAfterTheOther([&](int nth) {
    const FailingCall fail(kLarge, nth, GetParam());
    const Error error = manager.Init(config);
    EXPECT_TRUE(error.ok() || error.message == "Not enough memory to initialize") << error.message;
    EXPECT_EQ(manager.GetDeviceId().ok(), error.ok());
    return fail.happened();
  });
}

INSTANTIATE_TEST_SUITE_P(Faults, LargeAllocations,
                         testing::Values(FailingCall::Span::kOnce, FailingCall::Span::kForEver),
                         [](const testing::TestParamInfo<FailingCall::Span>& span) {
                           return span.param == FailingCall::Span::kOnce ? "Once" : "ForEver";
                         });

}  // namespace
}  // namespace korvixsdk
