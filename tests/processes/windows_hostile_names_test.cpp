// What names in an offer do on Windows. The library takes them as they come; SECURITY.md says so,
// and examples/offer_check refuses every one of them.

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <string>
#include <thread>

#include "processes/expect_error.h"

namespace korvixsdk::test {
namespace {

constexpr char kWrongDigest[] = "00";

/// A cache folder two folders deep, which is the working directory as well.
class HostileName : public testing::Test {
 protected:
  void SetUp() override {
    std::filesystem::create_directory(inner_);
    before_ = std::filesystem::current_path();
    std::filesystem::current_path(inner_);
  }
  void TearDown() override { std::filesystem::current_path(before_); }

  /// The package at `path` fails its check, and stays, outside the cache folder.
  void ExpectLeftOutside(const std::string& cache, const std::string& name,
                         const std::filesystem::path& path) {
    SCOPED_TRACE(name);
    FileHost host(cache);
    const Result<PreparedUpdate> prepared = host.Prepare("mock://host/" + name, kWrongDigest);
    ExpectError(prepared.error, kHashMismatch, "Downloaded update package sha256 mismatch");
    EXPECT_EQ(FileBytes(path), kMockPackage);
    EXPECT_TRUE(std::filesystem::is_empty(cache_ / "updates"));
  }

  const TempFolder folder_;
  const std::filesystem::path inner_ = folder_.path() / "inner";
  const std::filesystem::path cache_ = inner_ / "cache";
  std::filesystem::path before_;
};

TEST_F(HostileName, WithBackslashesLeadsToAnyFolderAndStays) {
  const std::string cache = cache_.string();
  ExpectLeftOutside(cache, "..\\..\\out.txt", inner_ / "out.txt");
  ExpectLeftOutside(cache, "..\\..\\..\\out.txt", folder_.path() / "out.txt");
  ExpectLeftOutside(cache, "\\" + (folder_.path() / "rooted.txt").relative_path().string(),
                    folder_.path() / "rooted.txt");
}

TEST_F(HostileName, WithDriveLeadsToAnyFolderAndStays) {
  ExpectLeftOutside(cache_.string(), (folder_.path() / "out.txt").string(),
                    folder_.path() / "out.txt");
}

/// The working directory of that drive, where the cache folder is on no drive or on another one.
TEST_F(HostileName, WithDriveAloneLeadsToItsWorkingDirectoryAndStays) {
  const std::string name = inner_.root_name().string() + "low.txt";
  ExpectLeftOutside("cache", name, inner_ / "low.txt");
  FileHost host(cache_.string());
  ExpectPackage(host, "mock://host/" + name, Join(Join(cache_.string(), "updates"), "low.txt"));
}

TEST_F(HostileName, OfAShareStaysOneWhereTheCacheFolderHasNoDrive) {
  const std::string name = "\\\\server-that-is-none.invalid\\share\\out.txt";
  FileHost host("cache");
  ExpectNoPackage(host, "mock://host/" + name, kFileSystemError,
                  "Failed to create parent directories: " + name);
}

TEST_F(HostileName, OfTheNullDeviceSucceedsAndLeavesNoFile) {
  const std::filesystem::path updater = inner_ / "updater.exe";
  WriteBytes(updater, "none");
  FileHost host(cache_.string());
  for (const std::string name : {"NUL", "nul.pkg"}) {
    SCOPED_TRACE(name);
    const Result<PreparedUpdate> prepared = host.Prepare("mock://host/" + name);
    ExpectError(prepared.error, kOk, "");
    EXPECT_TRUE(prepared.value.ready);
    EXPECT_TRUE(std::filesystem::is_empty(cache_ / "updates"));
    ExpectError(host.Launch(prepared.value, updater.string()), kInvalidState,
                "Prepared update package does not exist");
  }
}

TEST_F(HostileName, LosesItsDotsAndSpacesAtTheEnd) {
  FileHost host(cache_.string());
  const Result<PreparedUpdate> prepared = host.Prepare("mock://host/editor.pkg. .");
  ExpectError(prepared.error, kOk, "");
  EXPECT_TRUE(std::filesystem::exists(cache_ / "updates" / "editor.pkg"));
}

/// cmd.exe reads the name once more where the file uses it without quotation marks.
TEST_F(HostileName, IsInPartACommandOfAnUpdaterThatIsABatchFile) {
  const std::filesystem::path updater = inner_ / "updater.bat";
  WriteBytes(updater, "@echo off\r\nset package=%~1\r\n");
  FileHost host(cache_.string());
  const Result<PreparedUpdate> prepared =
      host.Prepare("mock://host/editor&copy updater.bat copied.txt&rem .pkg");
  ExpectError(prepared.error, kOk, "");
  ExpectError(host.Launch(prepared.value, updater.string()), kOk, "");
  const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(60);
  while (!std::filesystem::exists(inner_ / "copied.txt") &&
         std::chrono::steady_clock::now() < deadline) {
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
  }
  EXPECT_TRUE(std::filesystem::exists(inner_ / "copied.txt"));
}

}  // namespace
}  // namespace korvixsdk::test
