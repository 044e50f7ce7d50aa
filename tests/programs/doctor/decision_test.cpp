#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "doctor/verdicts.h"
#include "programs/doctor/find_check.h"

namespace doctor {
namespace {

/// What becomes of a host of version 1.4.0, or of this one.
struct Case {
  std::string version;
  std::string minimum;
  bool forced;
  Status status;
  std::string reason;
  std::string host = "1.4.0";
};

void ExpectDecisions(const std::vector<Case>& cases) {
  for (const Case& one : cases) {
    korvixsdk::UpdateInfo offer;
    offer.latest_version = one.version;
    offer.min_supported_version = one.minimum;
    offer.force_update = one.forced;
    offer.download_url = "https://h/p";
    ExpectJudgement({one.version + " " + one.minimum, "update.decision", one.status, one.reason},
                    CheckDecision(offer, {one.host}));
  }
}

TEST(Decision, PassesWhatEndsWithTheUpdate) {
  ExpectDecisions({
      {"", "", false, Status::kPass, "no update from 1.4.0"},
      {"2.0.0", "", false, Status::kPass, "optional update from 1.4.0 to 2.0.0"},
      {"2.0.0", "", true, Status::kPass, "mandatory update from 1.4.0 to 2.0.0"},
      {"2.0.0", "1.4.1", false, Status::kPass, "mandatory update from 1.4.0 to 2.0.0"},
      {"2.0.0", "2.0", false, Status::kPass, "mandatory update from 1.4.0 to 2.0.0"},
      {"", "1.5.0", false, Status::kPass, "mandatory update from 1.4.0 to 1.5.0"},
      {"1.3.0", "", false, Status::kPass, "no update from 1.4.0"},
      {"1.4.0", "1.4.0", true, Status::kPass, "no update from 1.4.0"},
  });
}

TEST(Decision, FailsWhenTheMandatoryVersionIsOlder) {
  ExpectDecisions({
      {"1.3.0", "", true, Status::kFail, "older than the host's 1.4.0: hosts do not go back"},
      {"1.3.0", "1.5.0", false, Status::kFail, "older than the host's 1.4.0: hosts go back to it"},
  });
}

TEST(Decision, FailsWhenTheOfferIsBelowTheMinimum) {
  ExpectDecisions({
      {"2.0.0", "2.1.0", false, Status::kFail, "2.0.0 is below \"min_supported_version\" 2.1.0"},
      {"1.4.0", "1.5.0", false, Status::kFail, "without end"},
      {"2.0.0", "2.1.0", false, Status::kFail, "without end", ""},
      {"2.0.0", "1.0.0", false, Status::kNotTried, "the host's version is not known", ""},
  });
}

TEST(Decision, FailsWhenTheMinimumComesWithoutAnAddress) {
  korvixsdk::UpdateInfo offer;
  offer.min_supported_version = "1.5.0";
  ExpectJudgement({"", "update.decision", Status::kFail, "must update to 1.5.0, and there is no"},
                  CheckDecision(offer, {"1.4.0"}));
  ExpectJudgement({"", "update.decision", Status::kPass, "no update from 1.6.0"},
                  CheckDecision(offer, {"1.6.0"}));
}

}  // namespace
}  // namespace doctor
