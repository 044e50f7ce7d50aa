#include <gtest/gtest.h>
#include <windows.h>

#include <string>
#include <vector>

#include "faults/wrapped_machine.h"
#include "platform/path_status.h"

namespace korvixsdk {
namespace {

using test::wrapped_machine;
using Folders = std::vector<std::wstring>;

/// What is tried when nothing of `path` is there and each folder fails with `error`.
Folders Tried(const std::wstring& path, unsigned long error) {
  wrapped_machine = {};
  wrapped_machine.folder_query_error = ERROR_PATH_NOT_FOUND;
  wrapped_machine.folder_creation_error = error;
  EXPECT_FALSE(CreateDirectoryChain(path));
  const Folders tried = wrapped_machine.folders_to_create;
  wrapped_machine = {};
  return tried;
}

/// Folders that are there, but with no right to look at them, are no reason to stop.
Folders Tried(const std::wstring& path) { return Tried(path, ERROR_ACCESS_DENIED); }

TEST(WindowsFolderChain, BeginsBelowTheShare) {
  EXPECT_EQ(Tried(L"\\\\server\\share\\a\\b"),
            (Folders{L"\\\\server\\share\\a", L"\\\\server\\share\\a\\b"}));
  EXPECT_EQ(Tried(L"//server/share/a"), Folders{L"//server/share/a"});
  EXPECT_EQ(Tried(L"\\\\?\\UNC\\server\\share\\a"), Folders{L"\\\\?\\UNC\\server\\share\\a"});
  EXPECT_EQ(Tried(L"\\\\?\\unc\\server\\share\\a"), Folders{L"\\\\?\\unc\\server\\share\\a"});
}

TEST(WindowsFolderChain, BeginsBelowTheDrive) {
  EXPECT_EQ(Tried(L"C:\\a\\b"), (Folders{L"C:\\a", L"C:\\a\\b"}));
  EXPECT_EQ(Tried(L"C:/a/b"), (Folders{L"C:/a", L"C:/a/b"}));
  EXPECT_EQ(Tried(L"C:name\\b"), (Folders{L"C:name", L"C:name\\b"}));
  EXPECT_EQ(Tried(L"\\\\?\\C:\\a\\b"), (Folders{L"\\\\?\\C:\\a", L"\\\\?\\C:\\a\\b"}));
  EXPECT_EQ(Tried(L"\\\\.\\C:\\a"), Folders{L"\\\\.\\C:\\a"});
  EXPECT_EQ(Tried(L"\\\\?\\Volume{0}\\a"), Folders{L"\\\\?\\Volume{0}\\a"});
}

TEST(WindowsFolderChain, BeginsWithTheFirstNameOfOtherPaths) {
  EXPECT_EQ(Tried(L"\\a\\b"), (Folders{L"\\a", L"\\a\\b"}));
  EXPECT_EQ(Tried(L"a\\b"), (Folders{L"a", L"a\\b"}));
  EXPECT_EQ(Tried(L"a"), Folders{L"a"});
}

TEST(WindowsFolderChain, TriesNoRoot) {
  for (const wchar_t* const root :
       {L"", L"C:", L"\\\\", L"\\\\server", L"\\\\server\\", L"\\\\server\\share", L"\\\\?",
        L"\\\\?\\", L"\\\\?\\C:", L"\\\\?\\UNC", L"\\\\?\\UNC\\server\\share"}) {
    EXPECT_EQ(Tried(root), Folders{}) << std::wstring(root);
  }
}

TEST(WindowsFolderChain, StopsAtTheFirstFolderThatProvesTheRestVain) {
  for (const unsigned long error :
       {ERROR_PATH_NOT_FOUND, ERROR_NOT_READY, ERROR_REM_NOT_LIST, ERROR_BAD_NETPATH,
        ERROR_BAD_NET_NAME, ERROR_SEM_TIMEOUT, ERROR_NO_NET_OR_BAD_PATH, ERROR_NETWORK_UNREACHABLE,
        ERROR_HOST_UNREACHABLE}) {
    EXPECT_EQ(Tried(L"\\\\server\\share\\a\\b\\c", error), Folders{L"\\\\server\\share\\a"})
        << error;
  }
}

TEST(WindowsFolderChain, TriesNothingWhereTheSystemReachesNoShare) {
  wrapped_machine = {};
  wrapped_machine.folder_query_error = ERROR_BAD_NETPATH;
  wrapped_machine.folder_creation_error = ERROR_BAD_NETPATH;
  EXPECT_FALSE(CreateDirectoryChain(L"\\\\server\\share\\a\\b\\c"));
  EXPECT_EQ(wrapped_machine.folders_to_create, Folders{});
  wrapped_machine = {};
}

}  // namespace
}  // namespace korvixsdk
