#include "doctor/loose_lookup.h"

#include <gtest/gtest.h>

namespace doctor {
namespace {

TEST(LooseLookup, TellsAMembersNameFromAText) {
  EXPECT_TRUE(LookUpLoosely(R"({"version" : 1})", "version")->names_a_member);
  EXPECT_FALSE(LookUpLoosely(R"({"kind":"version","x":1})", "version")->names_a_member);
  EXPECT_FALSE(LookUpLoosely(R"({"x":1})", "version"));
}

TEST(LooseLookup, TellsWhereTheNameIs) {
  EXPECT_EQ(LookUpLoosely(R"({"a":{"version":1}})", "version")->key_at, 6u);
}

}  // namespace
}  // namespace doctor
