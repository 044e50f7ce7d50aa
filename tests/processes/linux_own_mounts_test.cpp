#include "support/linux_own_mounts.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <functional>
#include <string>

#include "processes/expect_error.h"

namespace korvixsdk::test {
namespace {

constexpr char kUrl[] = "mock://host/editor.pkg";

void ExpectToPassWithOwnMounts(const std::function<void()>& steps) {
  const MountedRun run = RunWithOwnMounts(steps);
  if (run == MountedRun::kNotAllowed) GTEST_SKIP() << "this process may not mount anything";
  EXPECT_EQ(run, MountedRun::kPassed);
}

/// Fills the disk with one file, so that nothing more can be written.
void FillWithBytes(const std::string& folder) {
  std::ofstream filler(Join(folder, "filler"), std::ios::binary);
  while (filler << 'x' << std::flush) continue;
}

/// Fills the disk with empty files, so that nothing more can be created.
void FillWithFiles(const std::string& folder) {
  for (int i = 0; std::ofstream(Join(folder, "filler-" + std::to_string(i))).is_open(); ++i)
    continue;
}

TEST(FullDisk, TakesNoCacheFolder) {
  const TempFolder folder;
  ExpectToPassWithOwnMounts([&] {
    MountSmallDisk(folder.text());
    FillWithFiles(folder.text());
    const std::string path = folder.Entry("cache");
    ExpectError(FileHost(path).init(), kInvalidState, "Failed to create cache directory: " + path);
  });
}

TEST(FullDisk, TakesNoPackageUntilThereIsRoomAgain) {
  const TempFolder folder;
  ExpectToPassWithOwnMounts([&] {
    MountSmallDisk(folder.text());
    FillWithBytes(folder.text());
    FileHost host(folder.text());
    const std::string path = Join(folder.Entry("updates"), "editor.pkg");
    ExpectNoPackage(host, kUrl, kFileSystemError, "Failed to write file: " + path);
    std::filesystem::remove(folder.path() / "filler");
    ExpectPackage(host, kUrl, path);
    EXPECT_EQ(FileBytes(path), kMockPackage);
  });
}

TEST(FullDisk, TakesNoPackageFolder) {
  const TempFolder folder;
  ExpectToPassWithOwnMounts([&] {
    MountSmallDisk(folder.text());
    FillWithFiles(folder.text());
    FileHost host(folder.text());
    ExpectNoPackage(host, kUrl, kFileSystemError,
                    "Failed to create directories: " + folder.Entry("updates"));
  });
}

TEST(FullDisk, TakesNoPackageFile) {
  const TempFolder folder;
  ExpectToPassWithOwnMounts([&] {
    MountSmallDisk(folder.text());
    std::filesystem::create_directory(folder.path() / "updates");
    FillWithFiles(folder.text());
    FileHost host(folder.text());
    ExpectNoPackage(
        host, kUrl, kFileSystemError,
        "Failed to open file for write: " + Join(folder.Entry("updates"), "editor.pkg"));
  });
}

TEST(FullDisk, TakesNoFallbackIdUntilThereIsRoomAgain) {
  const TempFolder folder;
  ExpectToPassWithOwnMounts([&] {
    MountSmallDisk(folder.text());
    FillWithBytes(folder.text());
    FileHost host(folder.Entry("cache"), folder.Entry("id"));
    ExpectNoId(host, "Failed to persist fallback device id");
    std::filesystem::remove(folder.path() / "filler");
    const Result<std::string> id = host.GetDeviceId();
    EXPECT_TRUE(IsFallbackId(id.value)) << id.error.message;
    EXPECT_EQ(host.GetDeviceId().value, id.value);
  });
}

TEST(FullDisk, TakesNoFallbackIdFileAndNoFolderForIt) {
  const TempFolder folder;
  ExpectToPassWithOwnMounts([&] {
    MountSmallDisk(folder.text());
    FillWithFiles(folder.text());
    FileHost file(folder.text(), folder.Entry("id"));
    ExpectNoId(file, "Failed to write fallback device id");
    FileHost below(folder.text(), Join(folder.Entry("folder"), "id"));
    ExpectNoId(below, "Failed to create fallback device id directory");
  });
}

TEST(ReadOnlyFolder, TakesNoCacheFolder) {
  const TempFolder folder;
  ExpectToPassWithOwnMounts([&] {
    MountReadOnly(folder.text());
    const std::string path = folder.Entry("cache");
    ExpectError(FileHost(path).init(), kInvalidState, "Failed to create cache directory: " + path);
  });
}

TEST(ReadOnlyFolder, TakesNoPackageFolder) {
  const TempFolder folder;
  ExpectToPassWithOwnMounts([&] {
    MountReadOnly(folder.text());
    FileHost host(folder.text());
    EXPECT_TRUE(host.init().ok()) << "an existing folder is no failure";
    ExpectNoPackage(host, kUrl, kFileSystemError,
                    "Failed to create directories: " + folder.Entry("updates"));
  });
}

TEST(ReadOnlyFolder, TakesNoPackageAndKeepsTheOneThereIs) {
  const TempFolder folder;
  const std::string path = Join(folder.Entry("updates"), "editor.pkg");
  std::filesystem::create_directory(folder.path() / "updates");
  WriteBytes(path, "an earlier package");
  ExpectToPassWithOwnMounts([&] {
    MountReadOnly(folder.text());
    FileHost host(folder.text());
    ExpectNoPackage(host, kUrl, kFileSystemError, "Failed to open file for write: " + path);
    ExpectNoPackage(host, "mock://host/other.pkg", kFileSystemError,
                    "Failed to open file for write: " + Join(folder.Entry("updates"), "other.pkg"));
    EXPECT_EQ(FileBytes(path), "an earlier package");
  });
}

TEST(ReadOnlyFolder, TakesNoFallbackIdFileAndNoFolderForIt) {
  const TempFolder folder;
  ExpectToPassWithOwnMounts([&] {
    MountReadOnly(folder.text());
    FileHost file(folder.text(), folder.Entry("id"));
    ExpectNoId(file, "Failed to write fallback device id");
    FileHost below(folder.text(), Join(folder.Entry("folder"), "id"));
    ExpectNoId(below, "Failed to create fallback device id directory");
  });
}

TEST(ReadOnlyFolder, LetsTheStoredIdBeRead) {
  const TempFolder folder;
  WriteBytes(folder.path() / "id", "guid-of-an-earlier-run");
  ExpectToPassWithOwnMounts([&] {
    MountReadOnly(folder.text());
    FileHost host(folder.text(), folder.Entry("id"));
    EXPECT_EQ(host.GetDeviceId().value, "guid-of-an-earlier-run");
  });
}

}  // namespace
}  // namespace korvixsdk::test
