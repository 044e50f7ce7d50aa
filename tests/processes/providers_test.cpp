#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "core/default_update_policy.h"
#include "platform/default_crypto_provider.h"
#include "platform/default_file_system_provider.h"
#include "platform/placeholder_device_id_provider.h"
#include "processes/run_in_threads.h"
#include "support/temp_folder.h"

namespace korvixsdk {
namespace {

using test::RunInThreads;
using test::TempFolder;

constexpr std::size_t kThreads = 8;

struct KnownDigest {
  std::string data;
  const char* digest;
};

// The first three are FIPS 180-4's own examples.
TEST(CryptoProviderInThreads, HashesEachTextAsAlone) {
  const std::vector<KnownDigest> known = {
      {"abc", "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad"},
      {"abcdbcdecdefdefgefghfghighijhijkijkljklmklmnlmnomnopnopq",
       "248d6a61d20638b8e5c026930c3e6039a33ce45964ff2167f6ecedd419db06c1"},
      {std::string(1000000, 'a'),
       "cdc76e5c9914fb9281a1c7e284d73e67f1809a48a497200e046d39ccc7112cd0"},
      {"", "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855"}};
  DefaultCryptoProvider crypto;
  RunInThreads(kThreads, [&](std::size_t thread) {
    for (std::size_t call = 0; call < 100; ++call) {
      const KnownDigest& expected = known[(thread + call) % known.size()];
      const Result<std::string> digest = crypto.Sha256Hex(expected.data);
      EXPECT_EQ(digest.value, expected.digest) << digest.error.message;
    }
  });
}

TEST(FileSystemProviderInThreads, WritesAndReadsFilesOfOneFolder) {
  const TempFolder folder;
  DefaultFileSystemProvider files;
  RunInThreads(kThreads, [&](std::size_t thread) {
    const std::string path = folder.Entry(std::to_string(thread));
    for (std::size_t call = 0; call < 50; ++call) {
      const std::string content(call * 997, static_cast<char>(thread));
      EXPECT_FALSE(files.Exists(path + "-none"));
      EXPECT_TRUE(files.WriteFile(path, content).ok());
      EXPECT_TRUE(files.Exists(path));
      EXPECT_EQ(files.ReadFile(path).value, content);
    }
  });
}

TEST(FileSystemProviderInThreads, CreatesOneChainOfFoldersFromEveryThread) {
  const TempFolder folder;
  DefaultFileSystemProvider files;
  for (int round = 0; round < 20; ++round) {
    const std::string chain = folder.Entry(std::to_string(round)) + "/a/b/c/d/e/f/g/h";
    RunInThreads(kThreads, [&](std::size_t thread) {
      if (thread % 2 == 0) {
        EXPECT_EQ(files.CreateDirectories(chain).message, "");
      } else {
        EXPECT_EQ(files.WriteFile(chain + "/" + std::to_string(thread), "x").message, "");
      }
    });
    EXPECT_TRUE(files.Exists(chain));
  }
}

TEST(UpdatePolicyInThreads, ComparesEachPairAsAlone) {
  DefaultUpdatePolicy policy;
  RunInThreads(kThreads, [&](std::size_t thread) {
    for (int number = 1; number < 1000; ++number) {
      const std::string version = std::to_string(thread) + "." + std::to_string(number);
      const std::string next = std::to_string(thread) + "." + std::to_string(number + 1);
      EXPECT_TRUE(policy.IsNewerVersion(version, next));
      EXPECT_FALSE(policy.IsNewerVersion(next, version));
      EXPECT_FALSE(policy.IsNewerVersion(version, version + ".0"));
      EXPECT_FALSE(policy.IsNewerVersion(version, next + "-beta"));
    }
  });
}

TEST(DeviceIdProviderInThreads, TellsEveryThreadTheSame) {
  const TempFolder folder;
  PlaceholderDeviceIdProvider provider(folder.Entry("device-id"));
  const std::string id = provider.GetDeviceId().value;
  EXPECT_NE(id, "");
  RunInThreads(kThreads, [&](std::size_t) {
    for (std::size_t call = 0; call < 100; ++call) EXPECT_EQ(provider.GetDeviceId().value, id);
  });
}

}  // namespace
}  // namespace korvixsdk
