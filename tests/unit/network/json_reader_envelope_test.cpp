#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <optional>
#include <string>

#include "network/json_reader.h"

namespace korvixsdk::test {
namespace {

ResponseEnvelope Read(const std::string& key, const std::string& value) {
  return ReadResponseEnvelope("{\"" + key + "\":" + value + "}");
}

TEST(ResponseEnvelope, HoldsEveryKnownMember) {
  const ResponseEnvelope envelope = ReadResponseEnvelope(
      R"({"code":400,"allowed":true,"success":false,"msg":"text","server_time":1700000000})");
  EXPECT_TRUE(envelope.accepted);
  EXPECT_EQ(envelope.code, 400);
  EXPECT_EQ(envelope.allowed, true);
  EXPECT_EQ(envelope.success, false);
  EXPECT_EQ(envelope.msg, "text");
  EXPECT_EQ(envelope.server_time, 1700000000);
}

TEST(ResponseEnvelope, TakesItsMembersInAnyOrderBetweenOthers) {
  const ResponseEnvelope envelope =
      ReadResponseEnvelope(R"({"x":[1],"success":true,"y":{"z":1},"code":1,"w":null})");
  EXPECT_TRUE(envelope.accepted);
  EXPECT_EQ(envelope.success, true);
  EXPECT_EQ(envelope.code, 1);
}

TEST(ResponseEnvelope, LeavesAbsentMembersAbsent) {
  const ResponseEnvelope envelope = ReadResponseEnvelope(R"({"code":1})");
  EXPECT_TRUE(envelope.accepted);
  EXPECT_FALSE(envelope.allowed.has_value());
  EXPECT_FALSE(envelope.success.has_value());
  EXPECT_FALSE(envelope.msg.has_value());
  EXPECT_FALSE(envelope.server_time.has_value());
}

TEST(ResponseEnvelope, MarksAnEmptyMessageAsPresent) {
  const ResponseEnvelope envelope = Read("msg", "\"\"");
  EXPECT_EQ(envelope.msg, "");
  EXPECT_TRUE(envelope.msg.has_value());
}

TEST(ResponseEnvelope, ReadsCodeInItsWholeRange) {
  EXPECT_EQ(Read("code", "0").code, 0);
  EXPECT_EQ(Read("code", "-0").code, 0);
  EXPECT_EQ(Read("code", "-1").code, -1);
  EXPECT_EQ(Read("code", "2147483647").code, std::numeric_limits<std::int32_t>::max());
  EXPECT_EQ(Read("code", "-2147483648").code, std::numeric_limits<std::int32_t>::min());
}

TEST(ResponseEnvelope, RejectsACodeOutOfRange) {
  for (const char* const value :
       {"2147483648", "-2147483649", "4294967296", "9999999999999999999"}) {
    EXPECT_FALSE(Read("code", value).accepted) << value;
  }
}

TEST(ResponseEnvelope, ReadsServerTimeInItsWholeRange) {
  EXPECT_EQ(Read("server_time", "0").server_time, 0);
  EXPECT_EQ(Read("server_time", "-1").server_time, -1);
  EXPECT_EQ(Read("server_time", "2147483648").server_time, 2147483648);
  EXPECT_EQ(Read("server_time", "9223372036854775807").server_time,
            std::numeric_limits<std::int64_t>::max());
  EXPECT_EQ(Read("server_time", "-9223372036854775808").server_time,
            std::numeric_limits<std::int64_t>::min());
}

TEST(ResponseEnvelope, RejectsAServerTimeOutOfRange) {
  for (const char* const value :
       {"9223372036854775808", "-9223372036854775809", "18446744073709551616"}) {
    EXPECT_FALSE(Read("server_time", value).accepted) << value;
  }
}

class IntegerMember : public testing::TestWithParam<const char*> {};

TEST_P(IntegerMember, RejectsEveryValueThatIsNoInteger) {
  for (const char* const value :
       {"200.0",    "2e2",  "2E2",  "0.0",   "0e0",  "1e0", "-1.5",  "1.",   "1e",
        "\"400\"",  "\"\"", "true", "false", "null", "[]",  "[400]", "{}",   "NaN",
        "Infinity", "-",    "+1",   ".5",    "01",   "-01", "0x10",  "4 00", ""}) {
    EXPECT_FALSE(Read(GetParam(), value).accepted) << value;
  }
}

INSTANTIATE_TEST_SUITE_P(ResponseEnvelope, IntegerMember, testing::Values("code", "server_time"));

class BooleanMember : public testing::TestWithParam<const char*> {};

TEST_P(BooleanMember, RejectsEveryValueThatIsNoBoolean) {
  for (const char* const value :
       {"\"true\"", "\"false\"", "\"1\"", "1", "0", "null", "True", "TRUE", "tru", "truee", "False",
        "FALSE", "fals", "falsee", "[]", "[true]", "{}", "yes", ""}) {
    EXPECT_FALSE(Read(GetParam(), value).accepted) << value;
  }
}

INSTANTIATE_TEST_SUITE_P(ResponseEnvelope, BooleanMember, testing::Values("allowed", "success"));

TEST(ResponseEnvelope, ReadsBothBooleans) {
  EXPECT_EQ(Read("allowed", "true").allowed, true);
  EXPECT_EQ(Read("allowed", "false").allowed, false);
  EXPECT_EQ(Read("success", "true").success, true);
  EXPECT_EQ(Read("success", "false").success, false);
}

TEST(ResponseEnvelope, RejectsAMessageThatIsNoString) {
  for (const char* const value :
       {"1", "null", "true", "[]", "[\"text\"]", "{}", "text", "'text'", ""}) {
    EXPECT_FALSE(Read("msg", value).accepted) << value;
  }
}

class KnownMember : public testing::TestWithParam<std::pair<const char*, const char*>> {};

TEST_P(KnownMember, RejectsTheTextWhenItOccursTwice) {
  const auto& [key, value] = GetParam();
  const std::string member = std::string("\"") + key + "\":" + value;
  EXPECT_TRUE(ReadResponseEnvelope("{" + member + "}").accepted);
  EXPECT_FALSE(ReadResponseEnvelope("{" + member + "," + member + "}").accepted);
  EXPECT_FALSE(ReadResponseEnvelope("{" + member + ",\"x\":1," + member + "}").accepted);
}

TEST_P(KnownMember, FillsNothingFromANestedObject) {
  const auto& [key, value] = GetParam();
  const std::string nested = std::string("{\"") + key + "\":" + value + "}";
  for (const std::string& text : {"{\"x\":" + nested + "}", "{\"x\":[" + nested + "]}",
                                  "{\"x\":[[{\"y\":" + nested + "}]]}"}) {
    const ResponseEnvelope envelope = ReadResponseEnvelope(text);
    EXPECT_TRUE(envelope.accepted) << text;
    EXPECT_FALSE(envelope.code || envelope.allowed || envelope.success || envelope.msg ||
                 envelope.server_time)
        << text;
  }
}

TEST_P(KnownMember, MayOccurInTheEnvelopeAndInNestedObjects) {
  const auto& [key, value] = GetParam();
  const std::string member = std::string("\"") + key + "\":" + value;
  EXPECT_TRUE(
      ReadResponseEnvelope("{" + member + ",\"x\":{" + member + "," + member + "}}").accepted);
  EXPECT_TRUE(ReadResponseEnvelope("{\"x\":{" + member + "}," + member + "}").accepted);
}

TEST_P(KnownMember, MayHaveAnyFormInANestedObject) {
  const std::string key = GetParam().first;
  for (const char* const value : {"\"text\"", "1.5", "null", "[true]", "{\"a\":1}"}) {
    EXPECT_TRUE(ReadResponseEnvelope("{\"x\":{\"" + key + "\":" + value + "}}").accepted) << value;
  }
}

TEST_P(KnownMember, IsRejectedAsNull) { EXPECT_FALSE(Read(GetParam().first, "null").accepted); }

INSTANTIATE_TEST_SUITE_P(ResponseEnvelope, KnownMember,
                         testing::Values(std::pair("code", "400"), std::pair("allowed", "true"),
                                         std::pair("success", "false"), std::pair("msg", "\"a\""),
                                         std::pair("server_time", "5")));

TEST(ResponseEnvelope, RejectsAFalseMemberThatOccursTwice) {
  EXPECT_FALSE(ReadResponseEnvelope(R"({"success":false,"success":true})").accepted);
  EXPECT_FALSE(ReadResponseEnvelope(R"({"code":0,"code":0})").accepted);
  EXPECT_FALSE(ReadResponseEnvelope(R"({"msg":"","msg":""})").accepted);
}

TEST(ResponseEnvelope, AcceptsAnUnknownMemberThatOccursTwice) {
  EXPECT_TRUE(ReadResponseEnvelope(R"({"x":1,"x":2})").accepted);
}

TEST(ResponseEnvelope, ReadsEscapesInKeys) {
  EXPECT_EQ(ReadResponseEnvelope(R"({"\u0063ode":7})").code, 7);
  EXPECT_EQ(ReadResponseEnvelope(R"({"\u0063\u006F\u0064\u0065":7})").code, 7);
  EXPECT_EQ(ReadResponseEnvelope(R"({"server\u005ftime":7})").server_time, 7);
}

TEST(ResponseEnvelope, RejectsAMemberThatOccursTwiceInDifferentSpellings) {
  EXPECT_FALSE(ReadResponseEnvelope(R"({"code":7,"\u0063ode":7})").accepted);
}

TEST(ResponseEnvelope, RejectsAWrongFormUnderAnEscapedKey) {
  EXPECT_FALSE(ReadResponseEnvelope(R"({"\u0063ode":"7"})").accepted);
}

TEST(ResponseEnvelope, ComparesKeysByteForByte) {
  for (const char* const key : {"",
                                "Code",
                                "CODE",
                                "cod",
                                "codes",
                                "ode",
                                " code",
                                "code ",
                                "code\\u0000",
                                "c\\u0000ode",
                                "\\u0000code",
                                "code\\n",
                                "server_tim",
                                "server_times",
                                "server_time_of_the_service",
                                "server_time\\u0000",
                                "Server_Time",
                                "message",
                                "msgs",
                                "allowed_",
                                "success\\u00e9"}) {
    const ResponseEnvelope envelope = Read(key, "\"of any form\"");
    EXPECT_TRUE(envelope.accepted) << key;
    EXPECT_FALSE(envelope.code || envelope.msg || envelope.server_time) << key;
  }
}

TEST(ResponseEnvelope, SkipsKeysOfAnyLength) {
  const std::string long_key(100000, 'k');
  const ResponseEnvelope envelope =
      ReadResponseEnvelope("{\"" + long_key + "\":1,\"code" + long_key + "\":\"a\",\"code\":3}");
  EXPECT_TRUE(envelope.accepted);
  EXPECT_EQ(envelope.code, 3);
}

TEST(ResponseEnvelope, IsRejectedWithABadCodeEvenWhenEverythingElseIsSound) {
  const ResponseEnvelope envelope =
      ReadResponseEnvelope(R"({"allowed":true,"msg":"text","code":200.0})");
  EXPECT_FALSE(envelope.accepted);
  EXPECT_FALSE(envelope.allowed.has_value());
  EXPECT_FALSE(envelope.msg.has_value());
}

}  // namespace
}  // namespace korvixsdk::test
