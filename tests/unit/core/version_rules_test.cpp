#include "core/version_rules.h"

#include <gtest/gtest.h>

#include <string>

#include "core/default_update_policy.h"

namespace korvixsdk::test {
namespace {

bool IsNewer(const std::string& current, const std::string& candidate) {
  return IsNewerVersion(current, candidate);
}

TEST(VersionRules, ComparesComponentsAsNumbers) {
  EXPECT_TRUE(IsNewer("1.2.3", "1.2.10"));
  EXPECT_FALSE(IsNewer("1.2.10", "1.2.3"));
  EXPECT_FALSE(IsNewer("1.10", "1.9"));
  EXPECT_TRUE(IsNewer("1.9", "1.10"));
}

TEST(VersionRules, LetsTheFirstDifferenceDecide) {
  EXPECT_FALSE(IsNewer("2", "1.9.9"));
  EXPECT_FALSE(IsNewer("2.0.0", "1.9.9"));
  EXPECT_TRUE(IsNewer("1.9.9", "2.0.0"));
  EXPECT_FALSE(IsNewer("1.3.0", "1.2.9"));
}

TEST(VersionRules, SeesNothingNewerInAnEqualVersion) {
  EXPECT_FALSE(IsNewer("1.2.3", "1.2.3"));
  EXPECT_FALSE(IsNewer("0", "0"));
}

TEST(VersionRules, CountsAMissingComponentAsZero) {
  EXPECT_FALSE(IsNewer("1.2", "1.2.0"));
  EXPECT_FALSE(IsNewer("1.2", "1.2.0.0"));
  EXPECT_FALSE(IsNewer("1.2.0.0", "1.2"));
  EXPECT_TRUE(IsNewer("1.2", "1.2.0.1"));
  EXPECT_FALSE(IsNewer("1.2.0.1", "1.2"));
  EXPECT_TRUE(IsNewer("1.2.0", "1.2.1"));
}

TEST(VersionRules, IgnoresLeadingZeros) {
  EXPECT_TRUE(IsNewer("1.0", "01.1"));
  EXPECT_FALSE(IsNewer("1", "01"));
  EXPECT_FALSE(IsNewer("1.000", "1"));
  EXPECT_TRUE(IsNewer("1.09", "1.0000000000000000000010"));
}

TEST(VersionRules, AnswersFalseForAnEmptyCandidate) {
  EXPECT_FALSE(IsNewer("1.0", ""));
  EXPECT_FALSE(IsNewer("", ""));
  EXPECT_FALSE(IsNewer("not a version", ""));
}

TEST(VersionRules, AnswersFalseForAnEmptyCurrentVersion) { EXPECT_FALSE(IsNewer("", "1.0")); }

TEST(VersionRules, TakesTheLargestComponent) {
  EXPECT_TRUE(IsNewer("2147483646", "2147483647"));
  EXPECT_FALSE(IsNewer("2147483647", "2147483646"));
  EXPECT_TRUE(IsNewer("1.0.2147483646", "1.0.002147483647"));
}

TEST(VersionRules, AnswersFalseForAComponentAboveTheLargest) {
  for (const char* const too_large :
       {"2147483648", "1.2147483648", "4294967296", "9223372036854775808",
        "99999999999999999999999999999999999999"}) {
    EXPECT_FALSE(IsNewer("0", too_large)) << too_large;
    EXPECT_FALSE(IsNewer(too_large, "999999999")) << too_large;
  }
}

class InvalidVersion : public testing::TestWithParam<std::string> {};

TEST_P(InvalidVersion, IsNeverNewer) { EXPECT_FALSE(IsNewer("0", GetParam())); }

TEST_P(InvalidVersion, HasNothingNewer) { EXPECT_FALSE(IsNewer(GetParam(), "999999999")); }

INSTANTIATE_TEST_SUITE_P(DefaultUpdatePolicy, InvalidVersion,
                         testing::Values(".", "..", "1.", "1.0.", ".1", ".1.0", "1..0", "v1",
                                         "v1.0", "1.0-beta", "1.0-1", "1.0+build", "1.0a", "1.a",
                                         "-1", "1.-1", "+1", "1.+1", " 1", "1 ", "1. 0", "1 .0",
                                         "1,0", "0x1", "1e1", "1.0\n", "\t1", "\xD9\xA1",
                                         std::string("1\0", 2), std::string("1.0\0.1", 6)));

// An invalid component behind the first difference still makes the whole text no version.
TEST(VersionRules, ValidatesTheWholeTextBeforeItCompares) {
  EXPECT_FALSE(IsNewer("1.0", "2.x"));
  EXPECT_FALSE(IsNewer("1.x", "2.0"));
  EXPECT_FALSE(IsNewer("1.0", "2.0."));
}

TEST(VersionRules, ComparesVersionsOfManyComponents) {
  std::string current = "1";
  for (int i = 0; i < 1000; ++i) current += ".0";
  EXPECT_TRUE(IsNewer(current, current + ".1"));
  EXPECT_FALSE(IsNewer(current + ".1", current));
}

TEST(DefaultUpdatePolicy, FollowsTheVersionRules) {
  EXPECT_TRUE(DefaultUpdatePolicy().IsNewerVersion("1.9", "1.10"));
  EXPECT_FALSE(DefaultUpdatePolicy().IsNewerVersion("1.10", "1.9"));
}

}  // namespace
}  // namespace korvixsdk::test
