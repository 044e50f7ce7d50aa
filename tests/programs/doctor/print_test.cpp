#include "doctor/print.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

namespace doctor {
namespace {

const std::vector<Check> kChecks = {
    Pass("library.init", "taken"),
    Warn("cache.space", "0 MiB are free", "Free some space"),
    NotTried("address.name", "no address"),
    NotTried("address.tls", "no address"),
    Fail("update.json", "is\nno JSON", "Answer with JSON"),
    NotTried("package.name", "no package is offered"),
};

TEST(Print, PutsFailuresFirstAndWhatWasNotTriedIntoOneLine) {
  std::ostringstream out;
  PrintText(kChecks, out);
  EXPECT_EQ(
      out.str(),
      "fail       Update reply is JSON (update.json): is no JSON\n"
      "           to do: Answer with JSON\n"
      "warn       Free space for packages (cache.space): 0 MiB are free\n"
      "           to do: Free some space\n"
      "pass       Start of the library (library.init): taken\n"
      "not tried  address.name, address.tls: no address; package.name: no package is offered\n"
      "pass: 1, warn: 1, fail: 1, not tried: 3\n");
}

TEST(Print, LeavesOutTheLineOfWhatWasNotTriedWhereAllWas) {
  std::ostringstream out;
  PrintText({Pass("library.init", "taken")}, out);
  EXPECT_EQ(out.str(),
            "pass       Start of the library (library.init): taken\n"
            "pass: 1, warn: 0, fail: 0, not tried: 0\n");
}

TEST(Print, TakesTheWorstStatusForTheWhole) {
  EXPECT_EQ(WorstOf(kChecks), Status::kFail);
  EXPECT_EQ(WorstOf({kChecks[0], kChecks[1], kChecks[2]}), Status::kWarn);
  EXPECT_EQ(WorstOf({kChecks[0], kChecks[2]}), Status::kPass);
}

}  // namespace
}  // namespace doctor
