#include <gtest/gtest.h>
#ifndef _WIN32
#include <sys/stat.h>
#endif

#include <filesystem>
#include <string>

#include "files/barren_folder.h"
#include "files/expect_error.h"

namespace korvixsdk::test {
namespace {

constexpr char kNoFolder[] = "Failed to create fallback device id directory";
constexpr char kNotOpened[] = "Failed to write fallback device id";
constexpr char kNotWritten[] = "Failed to persist fallback device id";

TEST(FallbackIdFile, FailsWhereFileStandsInPlaceOfItsFolder) {
  const TempFolder folder;
  WriteBytes(folder.path() / "file", "x");
  FileHost host(folder.Entry("cache"), Join(folder.Entry("file"), "id"));
  ExpectNoId(host, kNoFolder);
}

TEST(FallbackIdFile, FailsWhereFolderStandsInItsPlace) {
  const TempFolder folder;
  std::filesystem::create_directory(folder.path() / "id");
  FileHost host(folder.Entry("cache"), folder.Entry("id"));
  ExpectNoId(host, kNotOpened);
}

TEST(FallbackIdFile, FailsWhereNothingCanBeCreated) {
  if (!std::filesystem::exists(kBarrenFolder)) GTEST_SKIP() << "no " << kBarrenFolder;
  const TempFolder folder;
  FileHost host(folder.Entry("cache"), Join(kBarrenFolder, "korvixsdk-id"));
  ExpectNoId(host, kNotOpened);
}

TEST(FallbackIdFile, FailsWhereItsFolderCannotBeCreated) {
  if (!std::filesystem::exists(kBarrenFolder)) GTEST_SKIP() << "no " << kBarrenFolder;
  const TempFolder folder;
  FileHost host(folder.Entry("cache"), Join(Join(kBarrenFolder, "korvixsdk"), "id"));
  ExpectNoId(host, kNoFolder);
}

TEST(FallbackIdFile, FailsForNameLongerThanTheSystemTakes) {
  const TempFolder folder;
  FileHost file(folder.Entry("cache"), folder.Entry(std::string(300, 'n')));
  ExpectNoId(file, kNotOpened);
  FileHost below(folder.Entry("cache"), Join(folder.Entry(std::string(300, 'n')), "id"));
  ExpectNoId(below, kNoFolder);
}

TEST(FallbackIdFile, FailsForPathLongerThanTheSystemTakes) {
  const TempFolder folder;
  FileHost file(folder.Entry("cache"), folder.Entry(std::string(40000, 'n')));
  ExpectNoId(file, kNotOpened);
  FileHost below(folder.Entry("cache"), Join(folder.Entry(std::string(40000, 'n')), "id"));
  ExpectNoId(below, kNoFolder);
}

TEST(FallbackIdFile, FailsOnFullDisk) {
  const TempFolder folder;
#ifdef _WIN32
  // Wine shows Linux's file that opens, holds nothing and takes no text.
  const std::string path = "Z:\\proc\\self\\clear_refs";
  if (!std::filesystem::exists(path)) GTEST_SKIP() << "no file that takes no text";
#else
  std::filesystem::create_symlink("/dev/full", folder.path() / "id");
  const std::string path = folder.Entry("id");
#endif
  FileHost host(folder.Entry("cache"), path);
  ExpectNoId(host, kNotWritten);
}

#ifndef _WIN32
TEST(FallbackIdFile, FailsAtOnceForPipeThatNobodyReads) {
  const TempFolder folder;
  ASSERT_EQ(mkfifo((folder.path() / "id").c_str(), 0600), 0);
  FileHost host(folder.Entry("cache"), folder.Entry("id"));
  ExpectNoId(host, kNotOpened);
}
#endif

TEST(FallbackIdFile, IsWrittenOnceTheObstacleIsGone) {
  const TempFolder folder;
  std::filesystem::create_directory(folder.path() / "id");
  FileHost host(folder.Entry("cache"), folder.Entry("id"));
  ExpectNoId(host, kNotOpened);
  std::filesystem::remove(folder.path() / "id");
  const Result<std::string> id = host.GetDeviceId();
  EXPECT_TRUE(IsFallbackId(id.value)) << id.error.message;
  EXPECT_EQ(FileBytes(folder.path() / "id"), id.value);
  EXPECT_EQ(host.GetLastError(), "");
}

}  // namespace
}  // namespace korvixsdk::test
