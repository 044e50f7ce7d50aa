#include <gtest/gtest.h>
#include <windows.h>

#include "faults/wrapped_machine.h"
#include "platform/path_status.h"
#include "support/failing_calls.h"
#include "support/open_handles.h"
#include "support/temp_folder.h"

namespace korvixsdk {
namespace {

using test::FailingCall;
using test::TempFolder;
using test::wrapped_machine;

/// Everything is a link; opening it leads to what is really there.
void PlayLinks(unsigned long kind = 0) {
  wrapped_machine = {};
  wrapped_machine.added_attributes = FILE_ATTRIBUTE_REPARSE_POINT | kind;
}

TEST(WindowsLinks, LinkToFolderIsFolder) {
  const TempFolder folder;
  PlayLinks();
  EXPECT_TRUE(PathExists(folder.path()));
  EXPECT_TRUE(IsFolder(folder.path()));
  EXPECT_TRUE(CreateDirectoryChain(folder.path()));
}

TEST(WindowsLinks, DirectoryLinkToFileExistsAndIsNoFolder) {
  const TempFolder folder;
  const std::filesystem::path file = folder.path() / "file";
  test::WriteBytes(file, "x");
  PlayLinks(FILE_ATTRIBUTE_DIRECTORY);
  EXPECT_TRUE(PathExists(file));
  EXPECT_FALSE(IsFolder(file));
  EXPECT_FALSE(CreateDirectoryChain(file));
}

TEST(WindowsLinks, DanglingDirectoryLinkIsNothing) {
  const TempFolder folder;
  PlayLinks(FILE_ATTRIBUTE_DIRECTORY);
  const FailingCall dangling("CreateFileW", 1, FailingCall::Span::kForEver);
  EXPECT_FALSE(PathExists(folder.path()));
  EXPECT_FALSE(IsFolder(folder.path()));
  EXPECT_FALSE(CreateDirectoryChain(folder.path()));
}

TEST(WindowsLinks, LinkWhoseTargetTellsNothingIsNothingAndStaysClosed) {
  const TempFolder folder;
  PlayLinks(FILE_ATTRIBUTE_DIRECTORY);
  const long open = test::OpenHandles();
  const FailingCall failing("GetFileInformationByHandle", 1, FailingCall::Span::kForEver);
  EXPECT_FALSE(PathExists(folder.path()));
  EXPECT_FALSE(IsFolder(folder.path()));
  EXPECT_EQ(test::OpenHandles(), open);
}

}  // namespace
}  // namespace korvixsdk
