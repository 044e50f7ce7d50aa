#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "processes/expect_error.h"

namespace korvixsdk::test {
namespace {

/// The three links of each test: to nothing in a folder that is there, to nothing in a folder that
/// is not, and to itself.
void MakeLinks(const std::filesystem::path& folder) {
  std::filesystem::create_directories(folder);
  std::filesystem::create_symlink("target", folder / "dangling");
  std::filesystem::create_symlink("missing/target", folder / "far");
  std::filesystem::create_symlink("loop", folder / "loop");
}

TEST(Links, ToNowhereAndToThemselvesAreNoCacheFolder) {
  const TempFolder folder;
  MakeLinks(folder.path());
  for (const char* link : {"dangling", "far", "loop", "loop/cache"}) {
    const std::string path = folder.Entry(link);
    ExpectError(FileHost(path).init(), kInvalidState, "Failed to create cache directory: " + path);
  }
  EXPECT_FALSE(std::filesystem::exists(folder.path() / "target"));
}

TEST(Links, ToNowhereAndToThemselvesAreNoUpdatesFolder) {
  for (const char* target : {"missing", "updates"}) {
    const TempFolder folder;
    std::filesystem::create_symlink(target, folder.path() / "updates");
    FileHost host(folder.text());
    ExpectNoPackage(host, "mock://host/editor.pkg", kFileSystemError,
                    "Failed to create directories: " + folder.Entry("updates"));
  }
}

TEST(Links, PackageIsWrittenToWhatItsLinkPointsTo) {
  const TempFolder folder;
  MakeLinks(folder.path() / "updates");
  FileHost host(folder.text());
  ExpectPackage(host, "mock://host/dangling", folder.Entry("updates/dangling"));
  EXPECT_EQ(FileBytes(folder.path() / "updates" / "target"), kMockPackage);
}

TEST(Links, PackageCannotBeWrittenWhereItsLinkLeadsNowhere) {
  const TempFolder folder;
  MakeLinks(folder.path() / "updates");
  FileHost host(folder.text());
  for (const std::string link : {"far", "loop"}) {
    ExpectNoPackage(host, "mock://host/" + link, kFileSystemError,
                    "Failed to open file for write: " + folder.Entry("updates/" + link));
  }
}

TEST(Links, FallbackIdIsKeptInWhatItsLinkPointsTo) {
  const TempFolder folder;
  MakeLinks(folder.path());
  FileHost host(folder.Entry("cache"), folder.Entry("dangling"));
  const Result<std::string> id = host.GetDeviceId();
  EXPECT_TRUE(IsFallbackId(id.value)) << id.error.message;
  EXPECT_EQ(FileBytes(folder.path() / "target"), id.value);
}

TEST(Links, FallbackIdCannotBeWrittenWhereItsLinkLeadsNowhere) {
  const TempFolder folder;
  MakeLinks(folder.path());
  for (const char* link : {"far", "loop"}) {
    FileHost host(folder.Entry("cache"), folder.Entry(link));
    ExpectNoId(host, "Failed to write fallback device id");
  }
  for (const char* link : {"dangling/id", "far/id", "loop/id"}) {
    FileHost host(folder.Entry("cache"), folder.Entry(link));
    ExpectNoId(host, "Failed to create fallback device id directory");
  }
}

}  // namespace
}  // namespace korvixsdk::test
