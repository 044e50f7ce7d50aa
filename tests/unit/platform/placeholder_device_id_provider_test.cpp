#include "platform/placeholder_device_id_provider.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <filesystem>
#include <string>

#include "platform/fallback_id_file.h"
#include "support/temp_folder.h"

namespace korvixsdk {
namespace {

using test::FileBytes;
using test::TempFolder;
using test::WriteBytes;

bool IsFallbackId(const std::string& id) {
  constexpr char kForm[] = "guid-xxxxxxxx-xxxx-xxxx-xxxx-xxxxxxxxxxxx";
  if (id.size() != 41) return false;
  for (std::size_t i = 0; i < id.size(); ++i) {
    const bool digit = (id[i] >= '0' && id[i] <= '9') || (id[i] >= 'a' && id[i] <= 'f');
    if (kForm[i] == 'x' ? !digit : id[i] != kForm[i]) return false;
  }
  return true;
}

/// What needs no other machine than this one.
class DeviceId : public testing::Test {
 protected:
  void SetUp() override { SetDefaultFallbackIdPath(""); }
  void TearDown() override { SetDefaultFallbackIdPath(""); }

  static Result<std::string> FallbackIdAt(const std::string& path) {
    PlaceholderDeviceIdProvider provider(path);
    provider.set_force_sources_unavailable(true);
    return provider.GetDeviceId();
  }
  static void ExpectFailure(const Result<std::string>& id, const std::string& message) {
    EXPECT_EQ(id.error.code, kPlatformError);
    EXPECT_EQ(id.error.message, message);
    EXPECT_EQ(id.value, "");
  }
};

TEST_F(DeviceId, FailsToCollectWhenForced) {
  PlaceholderDeviceIdProvider provider("");
  provider.set_force_sources_unavailable(true);
  const auto sources = provider.CollectFingerprintSources();
  EXPECT_EQ(sources.error.code, kPlatformError);
  EXPECT_EQ(sources.error.message, "Device fingerprint sources are forced unavailable");
}

TEST_F(DeviceId, IsTheSameOnThisMachineEveryTime) {
  const Result<std::string> first = PlaceholderDeviceIdProvider("").GetDeviceId();
  EXPECT_TRUE(first.ok());
  EXPECT_EQ(first.value.rfind("win-", 0), 0u);
  EXPECT_EQ(PlaceholderDeviceIdProvider("").GetDeviceId().value, first.value);
}

TEST_F(DeviceId, HashMatchesPublishedVectorsOfFnv1a) {
  EXPECT_EQ(Fnv1a64(""), 0xcbf29ce484222325u);
  EXPECT_EQ(Fnv1a64("a"), 0xaf63dc4c8601ec8cu);
  EXPECT_EQ(Fnv1a64("foobar"), 0x85944171f73967e8u);
}

TEST_F(DeviceId, FailsWithoutSourcesAndWithoutFallbackFile) {
  ExpectFailure(FallbackIdAt(""), "No stable device fingerprint sources are available");
}

TEST_F(DeviceId, TakesStoredIdTrimmedWhateverItsForm) {
  const TempFolder folder;
  WriteBytes(folder.path() / "id", "  any text at all \r\n");
  EXPECT_EQ(FallbackIdAt(folder.Entry("id")).value, "any text at all");
}

TEST_F(DeviceId, WritesNewFallbackIdAndKeepsIt) {
  const TempFolder folder;
  const Result<std::string> first = FallbackIdAt(folder.Entry("a/b/id"));
  EXPECT_TRUE(first.ok());
  EXPECT_TRUE(IsFallbackId(first.value)) << first.value;
  EXPECT_EQ(FileBytes(folder.path() / "a" / "b" / "id"), first.value);
  EXPECT_EQ(FallbackIdAt(folder.Entry("a/b/id")).value, first.value);
}

TEST_F(DeviceId, MakesDifferentFallbackIds) {
  const TempFolder folder;
  EXPECT_NE(FallbackIdAt(folder.Entry("1")).value, FallbackIdAt(folder.Entry("2")).value);
}

TEST_F(DeviceId, OverwritesBlankFallbackFile) {
  const TempFolder folder;
  WriteBytes(folder.path() / "id", " \r\n\t " + std::string(100, ' '));
  const Result<std::string> id = FallbackIdAt(folder.Entry("id"));
  EXPECT_TRUE(IsFallbackId(id.value));
  EXPECT_EQ(FileBytes(folder.path() / "id"), id.value);
}

TEST_F(DeviceId, FollowsProcessWidePathWithoutOneOfItsOwn) {
  const TempFolder folder;
  WriteBytes(folder.path() / "own", "own id");
  WriteBytes(folder.path() / "published", "published id");
  SetDefaultFallbackIdPath(folder.Entry("published"));
  EXPECT_EQ(FallbackIdAt("").value, "published id");
  EXPECT_EQ(FallbackIdAt(folder.Entry("own")).value, "own id");
}

TEST_F(DeviceId, FailsWhenFolderCannotBeCreated) {
  const TempFolder folder;
  WriteBytes(folder.path() / "file", "x");
  ExpectFailure(FallbackIdAt(folder.Entry("file/below/id")),
                "Failed to create fallback device id directory");
}

TEST_F(DeviceId, FailsWhenFileCannotBeOpened) {
  const TempFolder folder;
  ExpectFailure(FallbackIdAt(folder.text()), "Failed to write fallback device id");
  ExpectFailure(FallbackIdAt(std::string("a\0b", 3)), "Failed to write fallback device id");
}

#ifndef _WIN32
TEST_F(DeviceId, FailsWhenDiskIsFull) {
  const TempFolder folder;
  std::filesystem::create_symlink("/dev/full", folder.path() / "id");
  ExpectFailure(FallbackIdAt(folder.Entry("id")), "Failed to persist fallback device id");
}
#endif

}  // namespace
}  // namespace korvixsdk
