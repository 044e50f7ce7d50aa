#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "platform/native_file.h"
#include "support/failing_calls.h"
#include "support/temp_folder.h"

namespace korvixsdk {
namespace {

using test::FailingCall;
using test::TempFolder;

/// Longer than one step of reading.
std::string LongText() {
  std::string text;
  for (int i = 0; i < 60000; ++i) text += std::to_string(i);
  return text;
}

TEST(NativeFileFaults, WriteThatTheSystemCutsShortGoesOn) {
  const TempFolder folder;
  const std::filesystem::path path = folder.path() / "file";
  const FailingCall cut("write cut short");
  EXPECT_EQ(WriteWholeFile(path, LongText()), FileOutcome::kDone);
  EXPECT_TRUE(cut.happened());
  EXPECT_EQ(test::FileBytes(path), LongText());
}

TEST(NativeFileFaults, WriteThatTakesNothingFailsAndLeavesWhatWasTaken) {
  const TempFolder folder;
  const std::filesystem::path path = folder.path() / "file";
  // Of ten bytes 5, 2, 1 and 1 are taken, and half of the last one is none.
  const FailingCall cut("write cut short", 1, FailingCall::Span::kForEver);
  EXPECT_EQ(WriteWholeFile(path, "0123456789"), FileOutcome::kFailed);
  EXPECT_EQ(test::FileBytes(path), "012345678");
}

#ifndef _WIN32
TEST(NativeFileFaults, InterruptedWriteIsMadeAgain) {
  const TempFolder folder;
  const std::filesystem::path path = folder.path() / "file";
  const FailingCall interrupted("write interrupted");
  EXPECT_EQ(WriteWholeFile(path, "text"), FileOutcome::kDone);
  EXPECT_TRUE(interrupted.happened());
  EXPECT_EQ(test::FileBytes(path), "text");
}
#endif

TEST(NativeFileFaults, FileOfUnknownLengthIsReadToItsEnd) {
  const TempFolder folder;
  const std::filesystem::path path = folder.path() / "file";
  test::WriteBytes(path, LongText());
#ifdef _WIN32
  const FailingCall unknown("_filelengthi64");
#else
  const FailingCall unknown("fstat");
#endif
  std::string content;
  EXPECT_EQ(ReadWholeFile(path, content), FileOutcome::kDone);
  EXPECT_TRUE(unknown.happened());
  EXPECT_EQ(content, LongText());
}

TEST(NativeFileFaults, ReadThatFailsPartWayLeavesNothing) {
  const TempFolder folder;
  const std::filesystem::path path = folder.path() / "file";
  test::WriteBytes(path, "text");
  // The first gives the text, the second would find the end.
  const FailingCall fail("read", 2);
  std::string content = "before";
  EXPECT_EQ(ReadWholeFile(path, content), FileOutcome::kFailed);
  EXPECT_TRUE(fail.happened());
  EXPECT_EQ(content, "");
}

}  // namespace
}  // namespace korvixsdk
