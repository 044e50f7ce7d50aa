#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "platform/default_file_system_provider.h"
#include "platform/native_path.h"
#include "platform/placeholder_device_id_provider.h"
#include "platform/windows/windows_headers.h"
#include "support/temp_folder.h"
#include "update/package_path.h"

namespace korvixsdk {
namespace {

using test::TempFolder;

/// The names in a folder as the system stores them.
std::vector<std::wstring> WideNames(const std::filesystem::path& folder) {
  std::vector<std::wstring> names;
  for (const auto& entry : std::filesystem::directory_iterator(folder)) {
    names.push_back(entry.path().filename().wstring());
  }
  return names;
}

/// "é" in code page 1252, which is Wine's, and on machines with another one the byte's meaning.
std::wstring AnsiMeaning(char byte) {
  wchar_t wide = 0;
  EXPECT_EQ(MultiByteToWideChar(CP_ACP, 0, &byte, 1, &wide, 1), 1);
  return std::wstring(1, wide);
}

TEST(WindowsPaths, FileNameFollowsAnsiCodePage) {
  const TempFolder folder;
  DefaultFileSystemProvider files;
  const std::string path = folder.Entry("\xe9");
  EXPECT_TRUE(files.WriteFile(path, "x").ok());
  EXPECT_EQ(WideNames(folder.path()), (std::vector<std::wstring>{AnsiMeaning('\xe9')}));
  EXPECT_TRUE(files.Exists(path));
  EXPECT_EQ(files.ReadFile(path).value, "x");
}

TEST(WindowsPaths, FileNameFollowsOemCodePageWhenFileApisDo) {
  const TempFolder folder;
  wchar_t expected = 0;
  const char byte = '\x82';
  ASSERT_EQ(MultiByteToWideChar(CP_OEMCP, 0, &byte, 1, &expected, 1), 1);
  SetFileApisToOEM();
  const Error written = DefaultFileSystemProvider().WriteFile(folder.Entry("\x82"), "x");
  SetFileApisToANSI();
  EXPECT_TRUE(written.ok());
  EXPECT_EQ(WideNames(folder.path()), (std::vector<std::wstring>{std::wstring(1, expected)}));
}

TEST(WindowsPaths, FolderNamesFollowTheSameRule) {
  const TempFolder folder;
  EXPECT_TRUE(DefaultFileSystemProvider().CreateDirectories(folder.Entry("\xfc")).ok());
  EXPECT_EQ(WideNames(folder.path()), (std::vector<std::wstring>{AnsiMeaning('\xfc')}));
}

TEST(WindowsPaths, FallbackIdFileIsUtf8Always) {
  const TempFolder folder;
  PlaceholderDeviceIdProvider provider(folder.Entry("\xc3\xa9"));
  provider.set_force_sources_unavailable(true);
  const Result<std::string> id = provider.GetDeviceId();
  EXPECT_TRUE(id.ok()) << id.error.message;
  EXPECT_EQ(WideNames(folder.path()), (std::vector<std::wstring>{L"\u00e9"}));
  EXPECT_EQ(provider.GetDeviceId().value, id.value);
}

TEST(WindowsPaths, FallbackIdFileThatIsNoUtf8CannotBeWritten) {
  const TempFolder folder;
  PlaceholderDeviceIdProvider provider(folder.Entry("\xe9"));
  provider.set_force_sources_unavailable(true);
  EXPECT_EQ(provider.GetDeviceId().error.message, "Failed to write fallback device id");
  EXPECT_TRUE(WideNames(folder.path()).empty());
}

TEST(WindowsPaths, NarrowTextSurvivesBothWays) {
  std::string text;
  for (int byte = 0xa0; byte <= 0xff; ++byte) text += static_cast<char>(byte);
  const auto native = NativePathFromNarrow(text);
  ASSERT_TRUE(native.has_value());
  EXPECT_EQ(NarrowFromNativePath(*native), text);
}

TEST(WindowsPaths, EmptyTextIsEmptyPath) {
  EXPECT_EQ(NativePathFromNarrow(""), std::filesystem::path());
  EXPECT_EQ(NarrowFromNativePath({}), "");
}

TEST(WindowsPaths, PackageNameWithDriveOrRootReplacesFolder) {
  EXPECT_EQ(PackagePath("C:\\cache", "https://host/D:\\other\\name"), "D:\\other\\name");
  EXPECT_EQ(PackagePath("C:\\cache", "https://host/\\rooted"), "C:\\rooted");
}

TEST(WindowsPaths, DriveAndFolderOnDriveAreFolders) {
  const TempFolder folder;
  const std::filesystem::path before = std::filesystem::current_path();
  std::filesystem::current_path(folder.path());
  const std::string drive = folder.text().substr(0, 2);
  DefaultFileSystemProvider files;
  EXPECT_TRUE(files.Exists(drive));
  EXPECT_TRUE(files.CreateDirectories(drive).ok());
  EXPECT_TRUE(files.CreateDirectories(drive + "\\").ok());
  EXPECT_TRUE(files.CreateDirectories(drive + "a\\b").ok());
  EXPECT_TRUE(files.WriteFile(drive + "c\\file", "x").ok());
  EXPECT_TRUE(files.WriteFile(drive + "file", "x").ok());
  std::filesystem::current_path(before);
  EXPECT_TRUE(std::filesystem::is_directory(folder.path() / "a" / "b"));
  EXPECT_EQ(test::FileBytes(folder.path() / "c" / "file"), "x");
  EXPECT_EQ(test::FileBytes(folder.path() / "file"), "x");
}

TEST(WindowsPaths, PathsPastTheSystemsParsingAreTaken) {
  const TempFolder folder;
  const std::string root = "\\\\?\\" + folder.text();
  DefaultFileSystemProvider files;
  EXPECT_TRUE(files.Exists(root));
  EXPECT_TRUE(files.CreateDirectories(root).ok());
  EXPECT_TRUE(files.CreateDirectories(root + "\\a\\b").ok());
  EXPECT_TRUE(files.WriteFile(root + "\\c\\file", "x").ok());
  EXPECT_EQ(test::FileBytes(folder.path() / "c" / "file"), "x");
}

TEST(WindowsPaths, FolderOnMissingDriveCannotBeCreated) {
  EXPECT_EQ(DefaultFileSystemProvider().CreateDirectories("Q:\\folder").message,
            "Failed to create directories: Q:\\folder");
}

TEST(WindowsPaths, LongFileNameCannotBeOpened) {
  const TempFolder folder;
  const std::string path = folder.Entry(std::string(300, 'n'));
  EXPECT_EQ(DefaultFileSystemProvider().WriteFile(path, "x").message,
            "Failed to open file for write: " + path);
}

}  // namespace
}  // namespace korvixsdk
