#include "doctor/machine_checks.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "programs/doctor/find_check.h"

namespace doctor {
namespace {

using korvixsdk::Error;
using korvixsdk::kPlatformError;
using korvixsdk::Result;
using Sources = Result<std::vector<std::string>>;

TEST(MachineChecks, WarnBelowAGibibyteOfFreeSpace) {
  constexpr std::uint64_t kGibibyte = std::uint64_t{1} << 30;
  EXPECT_EQ(CheckFreeSpace(kGibibyte).status, Status::kPass);
  ExpectJudgement({"", "cache.space", Status::kWarn, "1023 MiB"}, CheckFreeSpace(kGibibyte - 1));
  ExpectJudgement({"", "cache.space", Status::kWarn, "0 MiB"}, CheckFreeSpace(0));
}

TEST(MachineChecks, TellWhichPropertiesTheMachineHas) {
  const char* const id = "device-id.sources";
  const std::string guid = "machine_guid:0c1d6a8e";
  const std::string name = "computer_name:desk-7";
  const Check both = CheckSources(Sources{{guid, name}, {}}, false);
  ExpectJudgement({"", id, Status::kPass, "machine GUID and computer name"}, both);
  EXPECT_EQ(both.reason.find("desk-7"), std::string::npos);
  ExpectJudgement({"", id, Status::kWarn, "the computer name alone"},
                  CheckSources(Sources{{name}, {}}, false));
  ExpectJudgement({"", id, Status::kWarn, "the machine GUID alone"},
                  CheckSources(Sources{{guid}, {}}, false));
}

TEST(MachineChecks, AskForAFallbackFileWhereThereAreNoProperties) {
  const Sources none{{}, Error{kPlatformError, "none at all"}};
  ExpectJudgement({"", "device-id.sources", Status::kFail, "none at all"},
                  CheckSources(none, false));
  ExpectJudgement({"", "device-id.sources", Status::kWarn, "none at all"},
                  CheckSources(none, true));
}

TEST(MachineChecks, TellWhereTheIdentifierComesFrom) {
  const auto check = [](const std::string& id) {
    return CheckDeviceId(Result<std::string>{id, {}});
  };
  const char* const id = "device-id.value";
  ExpectJudgement({"", id, Status::kPass, "from the machine's properties"}, check("win-294cbb8c"));
  ExpectJudgement({"", id, Status::kWarn, "from the fallback file"}, check("guid-0c1d6a8e"));
  ExpectJudgement({"", id, Status::kWarn, "a form that the library does not write"}, check("me"));
  ExpectJudgement({"", id, Status::kFail, "code 11: no text"},
                  CheckDeviceId(Result<std::string>{{}, Error{kPlatformError, "no text"}}));
}

}  // namespace
}  // namespace doctor
