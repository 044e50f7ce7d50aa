#include <gtest/gtest.h>

#include <string>

#include "faults/wrapped_machine.h"
#include "platform/machine_identity.h"
#include "platform/placeholder_device_id_provider.h"
#include "platform/windows/windows_headers.h"
#include "support/failing_calls.h"
#include "support/temp_folder.h"

namespace korvixsdk {
namespace {

using test::FailingCall;
using test::wrapped_machine;

class WindowsMachineIdentity : public testing::Test {
 protected:
  void SetUp() override { wrapped_machine = {}; }
  void TearDown() override { wrapped_machine = {}; }
};

TEST_F(WindowsMachineIdentity, MachineGuidIsTheRegistrysOwn) {
  char expected[64] = {};
  DWORD size = sizeof(expected);
  ASSERT_EQ(RegGetValueA(HKEY_LOCAL_MACHINE, "SOFTWARE\\Microsoft\\Cryptography", "MachineGuid",
                         RRF_RT_REG_SZ, nullptr, expected, &size),
            ERROR_SUCCESS);
  EXPECT_EQ(ReadMachineGuid().value, expected);
}

TEST_F(WindowsMachineIdentity, MachineGuidIsReadWithTheDocumentedArguments) {
  // The wrapper answers only to key, value and flags as documented.
  wrapped_machine.machine_guid = std::string("abc\0", 4);
  EXPECT_EQ(ReadMachineGuid().value, "abc");
}

TEST_F(WindowsMachineIdentity, MachineGuidIsUnavailableWhenSizeIsNotTold) {
  const FailingCall fail("RegGetValueW", 1);
  EXPECT_EQ(ReadMachineGuid().error.message, "Registry value is unavailable");
}

TEST_F(WindowsMachineIdentity, MachineGuidIsUnavailableWhenSizeIsZero) {
  wrapped_machine.machine_guid = "";
  EXPECT_EQ(ReadMachineGuid().error.message, "Registry value is unavailable");
}

TEST_F(WindowsMachineIdentity, MachineGuidIsUnavailableWhenReadingFails) {
  const FailingCall fail("RegGetValueW", 2);
  EXPECT_EQ(ReadMachineGuid().error.message, "Failed to read registry value");
}

TEST_F(WindowsMachineIdentity, MachineGuidIsUnavailableWhenOnlyZerosAreLeft) {
  wrapped_machine.machine_guid = std::string(3, '\0');
  EXPECT_EQ(ReadMachineGuid().error.message, "Registry value is empty");
}

TEST_F(WindowsMachineIdentity, MachineGuidLosesEveryTerminatingZero) {
  wrapped_machine.machine_guid = std::string("abc\0\0\0", 6);
  EXPECT_EQ(ReadMachineGuid().value, "abc");
}

TEST_F(WindowsMachineIdentity, MachineGuidIsUnavailableWhenConversionFails) {
  for (const int nth : {1, 2}) {
    const FailingCall fail("WideCharToMultiByte", nth);
    EXPECT_EQ(ReadMachineGuid().error.message, "Failed to convert registry value to UTF-8");
  }
}

TEST_F(WindowsMachineIdentity, ComputerNameIsTheSystemsOwn) {
  char expected[MAX_COMPUTERNAME_LENGTH + 1] = {};
  DWORD size = sizeof(expected);
  ASSERT_TRUE(GetComputerNameA(expected, &size));
  EXPECT_EQ(ReadComputerName().value, expected);
}

TEST_F(WindowsMachineIdentity, ComputerNameTakesFifteenBytes) {
  wrapped_machine.computer_name = "ABCDEFGHIJKLMNO";
  EXPECT_EQ(ReadComputerName().value, "ABCDEFGHIJKLMNO");
}

TEST_F(WindowsMachineIdentity, ComputerNameIsUnavailableWhenCallFails) {
  const FailingCall fail("GetComputerNameA");
  EXPECT_EQ(ReadComputerName().error.message, "Failed to read computer name");
}

TEST_F(WindowsMachineIdentity, ComputerNameIsUnavailableWhenEmpty) {
  wrapped_machine.computer_name = "";
  EXPECT_EQ(ReadComputerName().error.message, "Failed to read computer name");
}

TEST_F(WindowsMachineIdentity, FallbackIdFailsAtEveryStepOfTheNewGuid) {
  const test::TempFolder folder;
  PlaceholderDeviceIdProvider provider(folder.Entry("id"));
  provider.set_force_sources_unavailable(true);
  for (const char* const function : {"CoCreateGuid", "StringFromGUID2", "WideCharToMultiByte"}) {
    const FailingCall fail(function);
    const Result<std::string> id = provider.GetDeviceId();
    EXPECT_TRUE(fail.happened()) << function;
    EXPECT_EQ(id.error.code, kPlatformError);
    EXPECT_EQ(id.error.message, "Failed to generate fallback device id") << function;
  }
}

}  // namespace
}  // namespace korvixsdk
