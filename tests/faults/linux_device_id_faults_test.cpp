#include <gtest/gtest.h>

#include "faults/wrapped_machine.h"
#include "platform/machine_identity.h"
#include "support/failing_calls.h"

namespace korvixsdk {
namespace {

using test::FailingCall;
using test::wrapped_machine;

class LinuxMachineIdentity : public testing::Test {
 protected:
  void SetUp() override { wrapped_machine = {}; }
  void TearDown() override { wrapped_machine = {}; }
};

TEST_F(LinuxMachineIdentity, MachineGuidIsFirstLine) {
  wrapped_machine.machine_guid = "0123\nsecond line\n";
  EXPECT_EQ(ReadMachineGuid().value, "0123");
}

TEST_F(LinuxMachineIdentity, MachineGuidNeedsNoLineEnd) {
  wrapped_machine.machine_guid = "0123";
  EXPECT_EQ(ReadMachineGuid().value, "0123");
}

TEST_F(LinuxMachineIdentity, MachineGuidIsUnavailableWhenFileIsEmpty) {
  wrapped_machine.machine_guid = "\n";
  EXPECT_EQ(ReadMachineGuid().error.message, "Machine id file is empty");
}

TEST_F(LinuxMachineIdentity, MachineGuidIsUnavailableDuringFirstBoot) {
  wrapped_machine.machine_guid = "uninitialized\n";
  EXPECT_EQ(ReadMachineGuid().error.message, "Machine id file is empty");
}

TEST_F(LinuxMachineIdentity, MachineGuidIsUnavailableWhenFileDoesNotOpen) {
  const FailingCall fail("open");
  EXPECT_EQ(ReadMachineGuid().error.message, "Machine id file is unavailable");
}

TEST_F(LinuxMachineIdentity, MachineGuidIsUnavailableWhenReadingFails) {
  wrapped_machine.machine_guid = "0123";
  const FailingCall fail("read");
  EXPECT_EQ(ReadMachineGuid().error.message, "Machine id file is unavailable");
}

TEST_F(LinuxMachineIdentity, MachineGuidIsReadAgainAfterInterruption) {
  wrapped_machine.machine_guid = "0123";
  const FailingCall fail("read interrupted");
  EXPECT_EQ(ReadMachineGuid().value, "0123");
  EXPECT_TRUE(fail.happened());
}

TEST_F(LinuxMachineIdentity, ComputerNameIsUnavailableWhenCallFails) {
  const FailingCall fail("gethostname");
  EXPECT_EQ(ReadComputerName().error.message, "Failed to read computer name");
}

TEST_F(LinuxMachineIdentity, ComputerNameIsUnavailableWhenEmpty) {
  wrapped_machine.computer_name = "";
  EXPECT_EQ(ReadComputerName().error.message, "Failed to read computer name");
}

}  // namespace
}  // namespace korvixsdk
