#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>

#include "processes/expect_error.h"
#include "support/child_process.h"

namespace korvixsdk::test {
namespace {

/// Some Linux kernels (6.11, 6.12) let the file of a running program be written.
bool SystemProtects(const std::string& program) {
  return !std::ofstream(program, std::ios::in | std::ios::out | std::ios::binary).is_open();
}

TEST(RunningPackage, CannotBeWrittenUntilItHasEnded) {
  const TempFolder folder;
  const std::string path = Join(folder.Entry("updates"), "editor.exe");
  std::filesystem::create_directory(folder.path() / "updates");
  ASSERT_TRUE(std::filesystem::copy_file(KORVIXSDK_FILES_PARTNER, path));
  const std::uintmax_t size = std::filesystem::file_size(path);
  ChildProcess package({path, "wait"});
  ASSERT_EQ(package.ReadLine(), "ready");
  if (!SystemProtects(path)) GTEST_SKIP() << "running programs can be written here";

  FileHost host(folder.text());
  ExpectNoPackage(host, "mock://host/editor.exe", kFileSystemError,
                  "Failed to open file for write: " + path);
  EXPECT_EQ(std::filesystem::file_size(path), size);
  package.Kill();
  ExpectPackage(host, "mock://host/editor.exe", path);
  EXPECT_EQ(FileBytes(path), kMockPackage);
}

}  // namespace
}  // namespace korvixsdk::test
