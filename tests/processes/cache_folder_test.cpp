#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "processes/barren_folder.h"
#include "processes/expect_error.h"

namespace korvixsdk::test {
namespace {

void ExpectNoCacheFolder(const std::string& cache_dir) {
  ExpectError(FileHost(cache_dir).init(), kInvalidState,
              "Failed to create cache directory: " + cache_dir);
}

TEST(CacheFolder, FailsWhereFileStands) {
  const TempFolder folder;
  WriteBytes(folder.path() / "file", "x");
  ExpectNoCacheFolder(folder.Entry("file"));
  EXPECT_EQ(FileBytes(folder.path() / "file"), "x");
}

TEST(CacheFolder, FailsBelowFile) {
  const TempFolder folder;
  WriteBytes(folder.path() / "file", "x");
  ExpectNoCacheFolder(Join(folder.Entry("file"), "cache"));
}

TEST(CacheFolder, FailsWhereNothingCanBeCreated) {
  if (!std::filesystem::exists(kBarrenFolder)) GTEST_SKIP() << "no " << kBarrenFolder;
  ExpectNoCacheFolder(Join(kBarrenFolder, "korvixsdk"));
  ExpectNoCacheFolder(Join(Join(kBarrenFolder, "korvixsdk"), "cache"));
}

TEST(CacheFolder, FailsForNameLongerThanTheSystemTakes) {
  const TempFolder folder;
  ExpectNoCacheFolder(folder.Entry(std::string(300, 'n')));
  EXPECT_TRUE(std::filesystem::is_empty(folder.path()));
}

TEST(CacheFolder, FailsForPathLongerThanTheSystemTakes) {
  const TempFolder folder;
  ExpectNoCacheFolder(folder.Entry(std::string(40000, 'n')));
#ifndef _WIN32
  // On Windows the folders of such a path are created as far as the system goes.
  std::string path = folder.text();
  while (path.size() < 5000) path = Join(path, std::string(100, 'n'));
  ExpectNoCacheFolder(path);
#endif
  EXPECT_TRUE(std::filesystem::is_empty(folder.path()));
}

TEST(CacheFolder, IsTakenOnceTheObstacleIsGone) {
  const TempFolder folder;
  WriteBytes(folder.path() / "cache", "x");
  ExpectNoCacheFolder(folder.Entry("cache"));
  std::filesystem::remove(folder.path() / "cache");
  FileHost host(folder.Entry("cache"));
  EXPECT_TRUE(host.init().ok());
  EXPECT_TRUE(host.Prepare("mock://package-ok").ok());
}

}  // namespace
}  // namespace korvixsdk::test
