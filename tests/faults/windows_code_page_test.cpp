#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "faults/wrapped_machine.h"
#include "platform/default_file_system_provider.h"
#include "platform/native_path.h"
#include "support/temp_folder.h"
#include "update/package_path.h"

namespace korvixsdk {
namespace {

constexpr unsigned int kUtf8 = 65001;

class WindowsUtf8Locale : public testing::Test {
 protected:
  void SetUp() override {
    test::wrapped_machine = {};
    test::wrapped_machine.locale_code_page = kUtf8;
  }
  void TearDown() override { test::wrapped_machine = {}; }
};

TEST_F(WindowsUtf8Locale, TakesNarrowPathsAsUtf8) {
  const test::TempFolder folder;
  EXPECT_TRUE(DefaultFileSystemProvider().WriteFile(folder.Entry("\xc3\xa9"), "x").ok());
  EXPECT_TRUE(std::filesystem::exists(folder.path() / L"\u00e9"));
}

TEST_F(WindowsUtf8Locale, GivesNarrowPathsAsUtf8) {
  EXPECT_EQ(NarrowFromNativePath(std::filesystem::path(L"\u00e9")), "\xc3\xa9");
}

TEST_F(WindowsUtf8Locale, TextThatIsNoUtf8BehavesLikePathThatDoesNotOpen) {
  DefaultFileSystemProvider files;
  const std::string path = "C:\\\xe9";
  EXPECT_FALSE(files.Exists(path));
  EXPECT_EQ(files.ReadFile(path).error.message, "Failed to open file for read: " + path);
  EXPECT_EQ(files.WriteFile(path, "x").message, "Failed to open file for write: " + path);
  EXPECT_EQ(files.CreateDirectories(path).message, "Failed to create directories: " + path);
}

TEST_F(WindowsUtf8Locale, PackageFolderThatIsNoUtf8IsJoinedAsText) {
  EXPECT_EQ(PackagePath("C:\\\xe9", "https://host/name"), "C:\\\xe9\\updates\\name");
}

TEST_F(WindowsUtf8Locale, OtherLocaleFollowsTheAnsiCodePage) {
  test::wrapped_machine.locale_code_page = 1252;
  EXPECT_TRUE(NativePathFromNarrow("\xe9").has_value());
}

}  // namespace
}  // namespace korvixsdk
