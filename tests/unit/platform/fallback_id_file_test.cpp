#include "platform/fallback_id_file.h"

#include <gtest/gtest.h>

#include <string>

#include "support/temp_folder.h"

namespace korvixsdk {
namespace {

using test::FileBytes;
using test::TempFolder;
using test::WriteBytes;

class StoredFallbackId : public testing::Test {
 protected:
  void SetUp() override { SetDefaultFallbackIdPath(""); }
  void TearDown() override { SetDefaultFallbackIdPath(""); }
};

TEST_F(StoredFallbackId, ReplacesProcessWidePathAlsoWithNone) {
  SetDefaultFallbackIdPath("somewhere");
  EXPECT_EQ(DefaultFallbackIdPath(), "somewhere");
  SetDefaultFallbackIdPath("");
  EXPECT_EQ(DefaultFallbackIdPath(), "");
}

TEST_F(StoredFallbackId, PrefersGivenPathToProcessWideOne) {
  const TempFolder folder;
  WriteBytes(folder.path() / "own", "own id");
  WriteBytes(folder.path() / "published", "published id");
  SetDefaultFallbackIdPath(folder.Entry("published"));
  EXPECT_EQ(FallbackId(folder.Entry("own")).value, "own id");
  EXPECT_EQ(FallbackId("").value, "published id");
}

TEST_F(StoredFallbackId, LeavesFileWithIdAsItIs) {
  const TempFolder folder;
  WriteBytes(folder.path() / "id", " some id\n");
  EXPECT_EQ(FallbackId(folder.Entry("id")).value, "some id");
  EXPECT_EQ(FileBytes(folder.path() / "id"), " some id\n");
}

TEST_F(StoredFallbackId, WritesWhatItReturns) {
  const TempFolder folder;
  const Result<std::string> id = FallbackId(folder.Entry("new/id"));
  EXPECT_TRUE(id.ok());
  EXPECT_EQ(id.value.substr(0, 5), "guid-");
  EXPECT_EQ(FileBytes(folder.path() / "new" / "id"), id.value);
}

TEST_F(StoredFallbackId, ReturnsNoIdThatItCouldNotWrite) {
  const TempFolder folder;
  const Result<std::string> id = FallbackId(folder.text());
  EXPECT_EQ(id.error.code, kPlatformError);
  EXPECT_EQ(id.error.message, "Failed to write fallback device id");
  EXPECT_EQ(id.value, "");
}

}  // namespace
}  // namespace korvixsdk
