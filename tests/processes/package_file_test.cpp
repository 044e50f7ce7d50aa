#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>

#include "processes/barren_folder.h"
#include "processes/expect_error.h"

namespace korvixsdk::test {
namespace {

TEST(PackageFile, FailsWhereFileStandsInPlaceOfItsFolder) {
  const TempFolder folder;
  WriteBytes(folder.path() / "updates", "x");
  FileHost host(folder.text());
  ExpectNoPackage(host, "mock://host/editor.pkg", kFileSystemError,
                  "Failed to create directories: " + folder.Entry("updates"));
}

TEST(PackageFile, FailsWhereFolderStandsInItsPlace) {
  const TempFolder folder;
  std::filesystem::create_directories(folder.path() / "updates" / "editor.pkg");
  FileHost host(folder.text());
  ExpectNoPackage(host, "mock://host/editor.pkg", kFileSystemError,
                  "Failed to open file for write: " + Join(folder.Entry("updates"), "editor.pkg"));
}

TEST(PackageFile, FailsWhereNothingCanBeCreated) {
  if (!std::filesystem::exists(kBarrenFolder)) GTEST_SKIP() << "no " << kBarrenFolder;
  FileHost host(kBarrenFolder);
  ASSERT_TRUE(host.init().ok()) << "an existing folder is no failure";
  ExpectNoPackage(host, "mock://host/editor.pkg", kFileSystemError,
                  "Failed to create directories: " + Join(kBarrenFolder, "updates"));
}

TEST(PackageFile, FailsForNameLongerThanTheSystemTakes) {
  const TempFolder folder;
  FileHost host(folder.text());
  const std::string name(300, 'n');
  ExpectNoPackage(host, "mock://host/" + name, kFileSystemError,
                  "Failed to open file for write: " + Join(folder.Entry("updates"), name));
}

TEST(PackageFile, FailsForPathLongerThanTheSystemTakes) {
  const TempFolder folder;
  FileHost host(folder.text());
  const std::string name(40000, 'n');
  ExpectNoPackage(host, "mock://host/" + name, kFileSystemError,
                  "Failed to open file for write: " + Join(folder.Entry("updates"), name));
}

TEST(PackageFile, FailsOnFullDisk) {
  const TempFolder folder;
  FileHost host(folder.text());
#ifdef _WIN32
  // A name with a drive replaces the folder; Wine shows Linux's device that is always full.
  const std::string path = "Z:\\dev\\full";
  if (!std::ifstream(path).is_open()) GTEST_SKIP() << "no disk that is always full";
  const std::string url = "mock://host/" + path;
#else
  std::filesystem::create_directory(folder.path() / "updates");
  std::filesystem::create_symlink("/dev/full", folder.path() / "updates" / "editor.pkg");
  const std::string path = Join(folder.Entry("updates"), "editor.pkg");
  const std::string url = "mock://host/editor.pkg";
#endif
  ExpectNoPackage(host, url, kFileSystemError, "Failed to write file: " + path);
}

TEST(PackageFile, IsWrittenOnceTheObstacleIsGone) {
  const TempFolder folder;
  const std::string path = Join(folder.Entry("updates"), "editor.pkg");
  std::filesystem::create_directories(path);
  FileHost host(folder.text());
  ExpectNoPackage(host, "mock://host/editor.pkg", kFileSystemError,
                  "Failed to open file for write: " + path);
  std::filesystem::remove(path);
  ExpectPackage(host, "mock://host/editor.pkg", path);
  EXPECT_EQ(FileBytes(path), kMockPackage);
  EXPECT_EQ(host.GetLastError(), "");
}

}  // namespace
}  // namespace korvixsdk::test
