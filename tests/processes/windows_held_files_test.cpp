#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "processes/expect_error.h"
#include "support/child_process.h"

namespace korvixsdk::test {
namespace {

/// While it lives, another process has the file open and shares it with no one.
class HeldFile {
 public:
  explicit HeldFile(const std::string& path) : process_({KORVIXSDK_FILES_PARTNER, "hold", path}) {
    EXPECT_EQ(process_.ReadLine(), "ready");
  }

 private:
  ChildProcess process_;
};

TEST(HeldFiles, PackageInUseElsewhereIsWrittenOnceItIsFree) {
  const TempFolder folder;
  const std::string path = Join(folder.Entry("updates"), "editor.pkg");
  std::filesystem::create_directory(folder.path() / "updates");
  WriteBytes(path, "an earlier package");
  FileHost host(folder.text());
  {
    const HeldFile held(path);
    ExpectNoPackage(host, "mock://host/editor.pkg", kFileSystemError,
                    "Failed to open file for write: " + path);
  }
  EXPECT_EQ(FileBytes(path), "an earlier package");
  ExpectPackage(host, "mock://host/editor.pkg", path);
  EXPECT_EQ(FileBytes(path), kMockPackage);
}

TEST(HeldFiles, FallbackIdInUseElsewhereIsReadOnceItIsFree) {
  const TempFolder folder;
  WriteBytes(folder.path() / "id", "guid-of-an-earlier-run");
  FileHost host(folder.Entry("cache"), folder.Entry("id"));
  {
    const HeldFile held(folder.Entry("id"));
    ExpectNoId(host, "Failed to write fallback device id");
  }
  EXPECT_EQ(host.GetDeviceId().value, "guid-of-an-earlier-run");
}

}  // namespace
}  // namespace korvixsdk::test
