#ifndef KORVIXSDK_TESTS_PROGRAMS_DOCTOR_FIND_CHECK_H_
#define KORVIXSDK_TESTS_PROGRAMS_DOCTOR_FIND_CHECK_H_

#include <gtest/gtest.h>

#include <ostream>
#include <string>
#include <vector>

#include "doctor/checklist.h"

namespace doctor {

inline void PrintTo(Status status, std::ostream* out) { *out << StatusText(status); }

/// The line of this identifier; a failure of the test when there is none.
inline Check Find(const std::vector<Check>& checks, const std::string& id) {
  for (const Check& check : checks) {
    if (check.id == id) return check;
  }
  ADD_FAILURE() << "there is no line " << id;
  return {};
}

/// What a text comes to at one check.
struct Judgement {
  std::string text{};
  const char* id = "";
  Status status = Status::kPass;
  /// Part of the reason.
  std::string reason{};
};

inline void ExpectJudgement(const Judgement& expected, const Check& check) {
  SCOPED_TRACE(expected.text.substr(0, 200) + " at " + expected.id);
  EXPECT_EQ(check.status, expected.status) << check.reason;
  EXPECT_NE(check.reason.find(expected.reason), std::string::npos) << check.reason;
  const bool asks_for_action = check.status == Status::kWarn || check.status == Status::kFail;
  EXPECT_EQ(check.remedy.empty(), !asks_for_action) << check.remedy;
}

inline bool AllPass(const std::vector<Check>& checks) {
  for (const Check& check : checks) {
    if (check.status != Status::kPass) return false;
  }
  return !checks.empty();
}

}  // namespace doctor

#endif  // KORVIXSDK_TESTS_PROGRAMS_DOCTOR_FIND_CHECK_H_
