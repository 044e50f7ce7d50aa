#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "faults/wrapped_machine.h"
#include "support/failing_calls.h"
#include "support/fakes.h"
#include "update/updater_launch.h"
#ifdef _WIN32
#include "platform/windows/windows_headers.h"
#endif

namespace korvixsdk {
namespace {

using test::FailingCall;
using test::wrapped_machine;

constexpr char kUpdater[] = "D:\\Apps\\upd.exe";
constexpr char kPackage[] = "D:\\cache\\updates\\pkg.bin";

PreparedUpdate ReadyPackage() {
  PreparedUpdate prepared;
  prepared.ready = true;
  prepared.package_path = kPackage;
  return prepared;
}

class UpdaterLaunchFaults : public testing::Test {
 protected:
  void SetUp() override {
    wrapped_machine = {};
    files_.existing = {kUpdater, kPackage};
  }
  void TearDown() override { wrapped_machine = {}; }

  test::FakeFileSystem files_;
};

TEST_F(UpdaterLaunchFaults, FailsWhenProcessCannotBeCreated) {
  for (const int nth : {1, 2}) {
    const FailingCall fail("start process", nth);
    const Error error = LaunchUpdater(ReadyPackage(), kUpdater, &files_);
    EXPECT_EQ(error.code, kInvalidState);
    EXPECT_EQ(error.message, "Failed to launch updater process");
  }
}

TEST_F(UpdaterLaunchFaults, FailsForPathsWithZeroByte) {
  wrapped_machine.record_processes = true;
  PreparedUpdate prepared = ReadyPackage();
  prepared.package_path += std::string("\0x", 2);
  files_.existing.push_back(prepared.package_path);
  const Error error = LaunchUpdater(prepared, kUpdater, &files_);
  EXPECT_EQ(error.code, kInvalidState);
  EXPECT_EQ(error.message, "Failed to launch updater process");
  EXPECT_TRUE(wrapped_machine.processes.empty());
}

#ifdef _WIN32

TEST_F(UpdaterLaunchFaults, CommandLineHoldsBothPathsInQuotesAndNothingElse) {
  wrapped_machine.record_processes = true;
  EXPECT_TRUE(LaunchUpdater(ReadyPackage(), kUpdater, &files_).ok());
  EXPECT_EQ(wrapped_machine.processes,
            (std::vector<std::string>{"\"D:\\Apps\\upd.exe\" \"D:\\cache\\updates\\pkg.bin\""}));
}

TEST_F(UpdaterLaunchFaults, CommandLineEscapesNothing) {
  wrapped_machine.record_processes = true;
  const std::string odd = "D:\\My Apps\\a\"b";
  files_.existing.push_back(odd);
  EXPECT_TRUE(LaunchUpdater(ReadyPackage(), odd, &files_).ok());
  EXPECT_EQ(wrapped_machine.processes.back(),
            "\"D:\\My Apps\\a\"b\" \"D:\\cache\\updates\\pkg.bin\"");
}

TEST_F(UpdaterLaunchFaults, LaunchLeavesNoHandleOpen) {
  wrapped_machine.record_processes = true;
  EXPECT_TRUE(LaunchUpdater(ReadyPackage(), kUpdater, &files_).ok());
  DWORD before = 0;
  ASSERT_TRUE(GetProcessHandleCount(GetCurrentProcess(), &before));
  for (int i = 0; i < 20; ++i) {
    EXPECT_TRUE(LaunchUpdater(ReadyPackage(), kUpdater, &files_).ok());
  }
  DWORD after = 0;
  ASSERT_TRUE(GetProcessHandleCount(GetCurrentProcess(), &after));
  EXPECT_EQ(after, before);
}

#endif

}  // namespace
}  // namespace korvixsdk
