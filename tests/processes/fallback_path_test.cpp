#include <gtest/gtest.h>
#include <korvixsdk/korvixsdk.h>

#include <algorithm>
#include <atomic>
#include <memory>
#include <string>
#include <vector>

#include "platform/fallback_id_file.h"
#include "platform/placeholder_device_id_provider.h"
#include "processes/run_in_threads.h"
#include "support/host_config.h"
#include "support/temp_folder.h"

namespace korvixsdk {
namespace {

using test::RunInThreads;
using test::TempFolder;
using test::WriteBytes;

/// Leaves the process without a path, as it was.
class FallbackPathInThreads : public testing::Test {
 protected:
  ~FallbackPathInThreads() override { SetDefaultFallbackIdPath(""); }

  /// Reaches for the fallback on every machine.
  static PlaceholderDeviceIdProvider Provider(const std::string& path) {
    PlaceholderDeviceIdProvider provider(path);
    provider.set_force_sources_unavailable(true);
    return provider;
  }

  SDKConfig Config(const std::string& fallback_path) const {
    SDKConfig config = test::LeastConfig(folder_.Entry("cache"));
    config.fallback_device_id_path = fallback_path;
    return config;
  }

  /// A file with an identifier, at a path whose text lies on the heap.
  std::string FileWithId(const std::string& name, const std::string& id) const {
    WriteBytes(folder_.path() / name, id);
    return folder_.Entry(name);
  }

  const TempFolder folder_;
};

TEST_F(FallbackPathInThreads, ReadersMeetOneOfThePublishedPathsWhole) {
  constexpr std::size_t kWriters = 4;
  constexpr std::size_t kReaders = 4;
  const std::vector<std::string> paths = {FileWithId("first", "id-1"),
                                          FileWithId(std::string(100, 's'), "id-2")};
  SetDefaultFallbackIdPath(paths[0]);
  std::atomic<std::size_t> writers_left{kWriters};
  PlaceholderDeviceIdProvider provider = Provider("");
  RunInThreads(kWriters + kReaders, [&](std::size_t thread) {
    if (thread < kWriters) {
      KorvixSDK sdk;
      for (std::size_t round = 0; round < 500; ++round) {
        EXPECT_TRUE(sdk.Init(Config(paths[(thread + round) % 2])).ok());
      }
      --writers_left;
      return;
    }
    int calls = 0;
    for (; writers_left > 0 || calls == 0; ++calls) {
      const Result<std::string> id = provider.GetDeviceId();
      EXPECT_TRUE(id.value == "id-1" || id.value == "id-2") << id.value << id.error.message;
    }
    EXPECT_GT(calls, 0);
  });
  EXPECT_TRUE(DefaultFallbackIdPath() == paths[0] || DefaultFallbackIdPath() == paths[1]);
}

TEST_F(FallbackPathInThreads, FacadesThatPublishTheSamePathKeepTheirIdentifier) {
  const std::string path = FileWithId("device-id", " kept\n");
  RunInThreads(6, [&](std::size_t) {
    const auto services = SdkFactory::CreateDefaultServices();
    services->device_id_provider = std::make_shared<PlaceholderDeviceIdProvider>(Provider(""));
    SDKConfig config = Config(path);
    config.services = services;
    KorvixSDK sdk;
    for (std::size_t round = 0; round < 50; ++round) {
      EXPECT_TRUE(sdk.Init(config).ok());
      EXPECT_EQ(sdk.GetDeviceId().value, "kept");
    }
  });
}

TEST_F(FallbackPathInThreads, FirstCallsOfAllThreadsLeaveOneIdentifierThatStays) {
  constexpr std::size_t kThreads = 8;
  const std::string path = folder_.Entry("new-folder") + "/device-id";
  PlaceholderDeviceIdProvider provider = Provider(path);
  std::vector<std::string> ids(kThreads);
  RunInThreads(kThreads, [&](std::size_t thread) {
    const Result<std::string> id = provider.GetDeviceId();
    EXPECT_TRUE(id.ok()) << id.error.message;
    ids[thread] = id.value;
  });
  const std::string kept = provider.GetDeviceId().value;
  EXPECT_EQ(kept.size(), std::string("guid-00000000-0000-0000-0000-000000000000").size());
  EXPECT_NE(std::find(ids.begin(), ids.end(), kept), ids.end()) << kept;
  EXPECT_EQ(provider.GetDeviceId().value, kept);
}

}  // namespace
}  // namespace korvixsdk
