#include "platform/default_file_system_provider.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "support/temp_folder.h"

namespace korvixsdk {
namespace {

using test::FileBytes;
using test::TempFolder;
using test::WriteBytes;

const std::string kZeroByte("a\0b", 3);

TEST(FileSystemProvider, FindsFileAndFolder) {
  const TempFolder folder;
  WriteBytes(folder.path() / "file", "x");
  DefaultFileSystemProvider files;
  EXPECT_TRUE(files.Exists(folder.Entry("file")));
  EXPECT_TRUE(files.Exists(folder.text()));
}

TEST(FileSystemProvider, FindsFolderByNameWithTrailingSeparators) {
  const TempFolder folder;
  DefaultFileSystemProvider files;
  EXPECT_TRUE(files.Exists(folder.text() + "/"));
  EXPECT_TRUE(files.Exists(folder.Entry("")));
}

TEST(FileSystemProvider, DoesNotFindMissingFile) {
  const TempFolder folder;
  EXPECT_FALSE(DefaultFileSystemProvider().Exists(folder.Entry("missing")));
}

TEST(FileSystemProvider, DoesNotFindFileInMissingFolder) {
  const TempFolder folder;
  EXPECT_FALSE(DefaultFileSystemProvider().Exists(folder.Entry("missing/file")));
}

TEST(FileSystemProvider, DoesNotFindFileBelowFile) {
  const TempFolder folder;
  WriteBytes(folder.path() / "file", "x");
  EXPECT_FALSE(DefaultFileSystemProvider().Exists(folder.Entry("file/below")));
}

TEST(FileSystemProvider, DoesNotFindNamesThatAreNone) {
  const TempFolder folder;
  WriteBytes(folder.path() / "a", "x");
  DefaultFileSystemProvider files;
  EXPECT_FALSE(files.Exists(""));
  EXPECT_FALSE(files.Exists(folder.Entry("<>:\"|?*")));
  EXPECT_FALSE(files.Exists(folder.Entry(kZeroByte)));
  EXPECT_FALSE(files.Exists(folder.Entry(std::string(10000, 'n'))));
}

TEST(FileSystemProvider, ReadsEmptyFileAsEmptyText) {
  const TempFolder folder;
  WriteBytes(folder.path() / "empty", "");
  const Result<std::string> read = DefaultFileSystemProvider().ReadFile(folder.Entry("empty"));
  EXPECT_TRUE(read.ok());
  EXPECT_EQ(read.value, "");
}

TEST(FileSystemProvider, ReadsWholeFileBeyondAnyBuffer) {
  const TempFolder folder;
  std::string bytes;
  for (int i = 0; i < 300000; ++i) bytes += static_cast<char>(i * 7 + i / 251);
  WriteBytes(folder.path() / "large", bytes);
  const Result<std::string> read = DefaultFileSystemProvider().ReadFile(folder.Entry("large"));
  EXPECT_TRUE(read.ok());
  EXPECT_EQ(read.value, bytes);
}

TEST(FileSystemProvider, FailsToOpenWhatCannotBeRead) {
  const TempFolder folder;
  DefaultFileSystemProvider files;
  for (const std::string& path : {folder.text(), folder.Entry("missing"), folder.Entry(kZeroByte),
                                  folder.Entry(std::string(10000, 'n')), std::string()}) {
    const Result<std::string> read = files.ReadFile(path);
    EXPECT_EQ(read.error.code, kFileSystemError);
    EXPECT_EQ(read.error.message, "Failed to open file for read: " + path);
    EXPECT_EQ(read.value, "");
  }
}

TEST(FileSystemProvider, KeepsLineEndsAndZeroBytes) {
  const TempFolder folder;
  const std::string bytes("\r\n\0\n\x1a\xff", 6);
  DefaultFileSystemProvider files;
  EXPECT_TRUE(files.WriteFile(folder.Entry("file"), bytes).ok());
  EXPECT_EQ(FileBytes(folder.path() / "file"), bytes);
  EXPECT_EQ(files.ReadFile(folder.Entry("file")).value, bytes);
}

TEST(FileSystemProvider, CreatesThreeMissingFoldersForFile) {
  const TempFolder folder;
  EXPECT_TRUE(DefaultFileSystemProvider().WriteFile(folder.Entry("a/b/c/file"), "deep").ok());
  EXPECT_EQ(FileBytes(folder.path() / "a" / "b" / "c" / "file"), "deep");
}

TEST(FileSystemProvider, WritesBareFileNameIntoWorkingDirectory) {
  const TempFolder folder;
  const std::filesystem::path before = std::filesystem::current_path();
  std::filesystem::current_path(folder.path());
  const Error error = DefaultFileSystemProvider().WriteFile("bare", "x");
  std::filesystem::current_path(before);
  EXPECT_TRUE(error.ok());
  EXPECT_EQ(FileBytes(folder.path() / "bare"), "x");
}

TEST(FileSystemProvider, ReplacesLongerFileWhole) {
  const TempFolder folder;
  WriteBytes(folder.path() / "file", "a longer content");
  EXPECT_TRUE(DefaultFileSystemProvider().WriteFile(folder.Entry("file"), "short").ok());
  EXPECT_EQ(FileBytes(folder.path() / "file"), "short");
}

TEST(FileSystemProvider, TruncatesFileForEmptyContent) {
  const TempFolder folder;
  WriteBytes(folder.path() / "file", "content");
  EXPECT_TRUE(DefaultFileSystemProvider().WriteFile(folder.Entry("file"), "").ok());
  EXPECT_EQ(FileBytes(folder.path() / "file"), "");
}

TEST(FileSystemProvider, FailsToCreateParentBelowFile) {
  const TempFolder folder;
  WriteBytes(folder.path() / "file", "x");
  const std::string path = folder.Entry("file/folder/name");
  const Error error = DefaultFileSystemProvider().WriteFile(path, "x");
  EXPECT_EQ(error.code, kFileSystemError);
  EXPECT_EQ(error.message, "Failed to create parent directories: " + path);
}

TEST(FileSystemProvider, FailsToOpenWhatCannotBeWritten) {
  const TempFolder folder;
  DefaultFileSystemProvider files;
  for (const std::string& path : {folder.text(), folder.Entry(kZeroByte),
                                  folder.Entry(std::string(10000, 'n')), std::string()}) {
    const Error error = files.WriteFile(path, "x");
    EXPECT_EQ(error.code, kFileSystemError);
    EXPECT_EQ(error.message, "Failed to open file for write: " + path);
  }
}

TEST(FileSystemProvider, CreatesFolderChain) {
  const TempFolder folder;
  DefaultFileSystemProvider files;
  EXPECT_TRUE(files.CreateDirectories(folder.Entry("a/b/c")).ok());
  EXPECT_TRUE(std::filesystem::is_directory(folder.path() / "a" / "b" / "c"));
}

TEST(FileSystemProvider, AcceptsFolderThatExists) {
  const TempFolder folder;
  DefaultFileSystemProvider files;
  EXPECT_TRUE(files.CreateDirectories(folder.text()).ok());
  EXPECT_TRUE(files.CreateDirectories(folder.text() + "/").ok());
  EXPECT_TRUE(files.CreateDirectories(folder.Entry("")).ok());
}

TEST(FileSystemProvider, FailsToCreateFolders) {
  const TempFolder folder;
  WriteBytes(folder.path() / "file", "x");
  DefaultFileSystemProvider files;
  for (const std::string& path :
       {folder.Entry("file"), folder.Entry("file/below"), folder.Entry(kZeroByte),
        folder.Entry(std::string(10000, 'n')), std::string()}) {
    const Error error = files.CreateDirectories(path);
    EXPECT_EQ(error.code, kFileSystemError);
    EXPECT_EQ(error.message, "Failed to create directories: " + path);
  }
}

TEST(FileSystemProvider, TakesNamesWithSpaces) {
  const TempFolder folder;
  DefaultFileSystemProvider files;
  const std::string path = folder.Entry("Program Files/my package.bin");
  EXPECT_TRUE(files.WriteFile(path, "spaced").ok());
  EXPECT_TRUE(files.Exists(path));
  EXPECT_EQ(files.ReadFile(path).value, "spaced");
}

#ifndef _WIN32

TEST(FileSystemProvider, SeesFullDiskInTheWrite) {
  const TempFolder folder;
  std::filesystem::create_symlink("/dev/full", folder.path() / "package");
  const std::string path = folder.Entry("package");
  const Error error = DefaultFileSystemProvider().WriteFile(path, "one byte would do");
  EXPECT_EQ(error.code, kFileSystemError);
  EXPECT_EQ(error.message, "Failed to write file: " + path);
}

TEST(FileSystemProvider, ReportsReadThatFailsAfterOpening) {
  // Opens, but nothing is mapped at its start, so that reading fails.
  const std::string path = "/proc/self/mem";
  const Result<std::string> read = DefaultFileSystemProvider().ReadFile(path);
  EXPECT_EQ(read.error.code, kFileSystemError);
  EXPECT_EQ(read.error.message, "Failed to read file: " + path);
  EXPECT_EQ(read.value, "");
}

TEST(FileSystemProvider, ReadsFileWhoseLengthTheSystemDoesNotTell) {
  const Result<std::string> read = DefaultFileSystemProvider().ReadFile("/proc/self/status");
  EXPECT_TRUE(read.ok());
  EXPECT_NE(read.value.find("VmPeak"), std::string::npos);
}

TEST(FileSystemProvider, FollowsLinks) {
  const TempFolder folder;
  WriteBytes(folder.path() / "file", "x");
  std::filesystem::create_symlink("file", folder.path() / "link");
  std::filesystem::create_symlink("missing", folder.path() / "dangling");
  std::filesystem::create_symlink("loop", folder.path() / "loop");
  DefaultFileSystemProvider files;
  EXPECT_TRUE(files.Exists(folder.Entry("link")));
  EXPECT_FALSE(files.Exists(folder.Entry("dangling")));
  EXPECT_FALSE(files.Exists(folder.Entry("loop")));
}

TEST(FileSystemProvider, TakesAnyBytesAsName) {
  const TempFolder folder;
  DefaultFileSystemProvider files;
  const std::string path = folder.Entry("bytes \xff\x80\xc3");
  EXPECT_TRUE(files.WriteFile(path, "x").ok());
  EXPECT_TRUE(files.Exists(path));
}

#endif

}  // namespace
}  // namespace korvixsdk
