#include "network/json_reader.h"

#include <gtest/gtest.h>

#include <string>

namespace korvixsdk::test {
namespace {

bool Accepted(const std::string& text) { return ReadResponseEnvelope(text).accepted; }

/// A text that is accepted exactly when `value` is a sound value of a member that nobody knows.
std::string Unknown(const std::string& value) { return R"({"x":)" + value + "}"; }

std::string Repeat(const std::string& part, int count) {
  std::string text;
  for (int i = 0; i < count; ++i) text += part;
  return text;
}

std::string NestedArrays(int count) { return Repeat("[", count) + Repeat("]", count); }

std::string NestedObjects(int count) {
  return Repeat(R"({"a":)", count - 1) + "{}" + Repeat("}", count - 1);
}

void ExpectNothingPresent(const ResponseEnvelope& envelope) {
  EXPECT_FALSE(envelope.code.has_value());
  EXPECT_FALSE(envelope.allowed.has_value());
  EXPECT_FALSE(envelope.success.has_value());
  EXPECT_FALSE(envelope.msg.has_value());
  EXPECT_FALSE(envelope.server_time.has_value());
}

TEST(JsonReader, AcceptsAnEmptyObjectWithNothingPresent) {
  const ResponseEnvelope envelope = ReadResponseEnvelope("{}");
  EXPECT_TRUE(envelope.accepted);
  ExpectNothingPresent(envelope);
}

TEST(JsonReader, AcceptsAnEmptyObjectInWhiteSpace) {
  EXPECT_TRUE(Accepted("  {}\r\n"));
  EXPECT_TRUE(Accepted(" \t\n\r{ \t\n\r} \t\n\r"));
}

TEST(JsonReader, AcceptsTheFourWhiteSpaceCharactersBetweenAllTokens) {
  const std::string space = " \t\n\r";
  std::string text = space;
  for (const char* const token : {"{", "\"a\"", ":", "[", "1", ",", "true", ",", "{", "}", ",", "[",
                                  "]", "]", ",", "\"b\"", ":", "\"c\"", "}"}) {
    text += token + space;
  }
  EXPECT_TRUE(Accepted(text));
}

TEST(JsonReader, AcceptsWhiteSpaceAroundKnownMembers) {
  EXPECT_EQ(ReadResponseEnvelope("{ \"code\" \n:\t7\r}").code, 7);
}

TEST(JsonReader, RejectsEveryOtherWhiteSpace) {
  for (const std::string& space :
       {std::string("\v"), std::string("\f"), std::string(1, '\0'), std::string("\xEF\xBB\xBF"),
        std::string("\xC2\xA0"), std::string("\xE2\x80\xA8"), std::string("\x85")}) {
    EXPECT_FALSE(Accepted(space + "{}"));
    EXPECT_FALSE(Accepted("{" + space + "}"));
    EXPECT_FALSE(Accepted("{}" + space));
    EXPECT_FALSE(Accepted("{\"a\"" + space + ":1}"));
    EXPECT_FALSE(Accepted("{\"a\":" + space + "1}"));
    EXPECT_FALSE(Accepted("{\"a\":1" + space + "}"));
    EXPECT_FALSE(Accepted("{\"a\":[" + space + "]}"));
  }
}

TEST(JsonReader, RejectsComments) {
  EXPECT_FALSE(Accepted("/* */{}"));
  EXPECT_FALSE(Accepted("{}// end"));
}

TEST(JsonReader, RejectsATextWithoutAnObject) {
  EXPECT_FALSE(Accepted(""));
  EXPECT_FALSE(Accepted(" \n"));
}

TEST(JsonReader, RejectsAnyTopLevelButAnObject) {
  for (const char* const text :
       {"[]", "[{}]", "\"text\"", "1", "true", "null", "}", "plain text"}) {
    EXPECT_FALSE(Accepted(text)) << text;
  }
}

TEST(JsonReader, RejectsAnythingBehindTheObject) {
  for (const char* const text : {"{}x", "{}{}", "{} {}", "{},", "{}}", "{}1", "{} null", "{}\""}) {
    EXPECT_FALSE(Accepted(text)) << text;
  }
}

TEST(JsonReader, RejectsAZeroByteBehindTheObject) {
  EXPECT_FALSE(Accepted(std::string("{}\0", 3)));
}

TEST(JsonReader, RejectsTrailingCommaInObject) {
  EXPECT_FALSE(Accepted(R"({"a":1,})"));
  EXPECT_FALSE(Accepted(R"({"a":1 , })"));
  EXPECT_FALSE(Accepted(R"({"x":{"a":1,}})"));
}

TEST(JsonReader, RejectsTrailingCommaInArray) {
  EXPECT_FALSE(Accepted(Unknown("[1,]")));
  EXPECT_FALSE(Accepted(Unknown("[1 , ]")));
}

TEST(JsonReader, RejectsAMalformedObject) {
  for (const char* const text :
       {"{", "{,}", R"({,"a":1})", R"({"a"})", R"({"a",1})", R"({"a":})", R"({"a":1)", R"({"a":1,)",
        R"({"a":1 "b":2})", R"({"a":1,,"b":2})", R"({"a"::1})", R"({"a":1:2})", R"({a:1})",
        R"({'a':1})", R"({1:1})", R"({null:1})", R"({"a" 1})", R"({"a":1])"}) {
    EXPECT_FALSE(Accepted(text)) << text;
  }
}

TEST(JsonReader, AcceptsArraysOfAnyValues) {
  for (const char* const array :
       {"[]", "[ ]", "[1]", "[1,2]", "[ 1 , 2 ]", R"(["a",true,false,null,1.5,{},[]])"}) {
    EXPECT_TRUE(Accepted(Unknown(array))) << array;
  }
}

TEST(JsonReader, RejectsAMalformedArray) {
  for (const char* const array :
       {"[", "[1", "[1,", "[,]", "[,1]", "[1,,2]", "[1 2]", "[1}", "]", R"(["a":1])", "[1;2]"}) {
    EXPECT_FALSE(Accepted(Unknown(array))) << array;
  }
}

TEST(JsonReader, AcceptsTheThreeLiterals) {
  for (const char* const literal : {"true", "false", "null"}) {
    EXPECT_TRUE(Accepted(Unknown(literal))) << literal;
  }
}

TEST(JsonReader, RejectsEveryOtherWord) {
  for (const char* const word :
       {"True", "TRUE", "tru", "truee", "t", "False", "FALSE", "fals", "falsee", "Null", "NULL",
        "nul", "nulll", "nil", "NaN", "Infinity", "-Infinity", "undefined", "yes"}) {
    EXPECT_FALSE(Accepted(Unknown(word))) << word;
  }
}

TEST(JsonReader, RejectsALiteralCutByTheEnd) {
  EXPECT_FALSE(Accepted(R"({"x":tru)"));
  EXPECT_FALSE(Accepted(R"({"x":fals)"));
  EXPECT_FALSE(Accepted(R"({"x":nul)"));
  EXPECT_FALSE(Accepted(R"({"x":true)"));
}

TEST(JsonReader, AcceptsEveryFormOfNumber) {
  for (const char* const number :
       {"0",          "-0",       "1",
        "9",          "10",       "-1",
        "1234567890", "0.0",      "-0.5",
        "1.25",       "1.000",    "1e1",
        "1E1",        "1e+1",     "1e-1",
        "1E+01",      "0e0",      "0.5e10",
        "-1.5E-10",   "1e999999", "99999999999999999999999999999999999999999999"}) {
    EXPECT_TRUE(Accepted(Unknown(number))) << number;
  }
}

TEST(JsonReader, RejectsAMalformedNumber) {
  for (const char* const number :
       {"",     "-",   "+1",  "+",     "--1", "- 1", "01",  "-01",  "00",      "1.",    "-1.",
        ".5",   "-.5", ".",   "1.e1",  "1e",  "1E",  "1e+", "1e-",  "1e+-1",   "1e1.5", "1.5.5",
        "0x10", "1a",  "1 2", "1_000", "1,5", "e1",  "0.",  "1ee1", "\xD9\xA1"}) {
    EXPECT_FALSE(Accepted(Unknown(number))) << number;
  }
}

TEST(JsonReader, RejectsAnyValueThatBeginsWithAnotherCharacter) {
  for (unsigned byte = 0; byte < 256; ++byte) {
    const char c = static_cast<char>(byte);
    if ((c >= '0' && c <= '9') || c == ' ' || c == '\t' || c == '\n' || c == '\r') continue;
    EXPECT_FALSE(Accepted(Unknown(std::string(1, c)))) << byte;
  }
}

TEST(JsonReader, AcceptsArraysDownToDepth64) {
  EXPECT_TRUE(Accepted(Unknown(NestedArrays(63))));
  EXPECT_TRUE(Accepted(Unknown(Repeat("[0,", 63) + "1" + Repeat("]", 63))));
}

TEST(JsonReader, RejectsArraysAtDepth65) {
  EXPECT_FALSE(Accepted(Unknown(NestedArrays(64))));
  EXPECT_FALSE(Accepted(Unknown("[0," + NestedArrays(63) + "]")));
}

TEST(JsonReader, AcceptsObjectsDownToDepth64) { EXPECT_TRUE(Accepted(NestedObjects(64))); }

TEST(JsonReader, RejectsObjectsAtDepth65) { EXPECT_FALSE(Accepted(NestedObjects(65))); }

TEST(JsonReader, CountsArraysAndObjectsTogether) {
  const auto mixed = [](int pairs, const std::string& core) {
    return Repeat(R"({"a":[)", pairs) + core + Repeat("]}", pairs);
  };
  EXPECT_TRUE(Accepted(mixed(32, "1")));
  EXPECT_FALSE(Accepted(mixed(32, "[]")));
  EXPECT_FALSE(Accepted(mixed(32, "{}")));
  EXPECT_TRUE(Accepted(mixed(31, R"([{}])")));
  EXPECT_FALSE(Accepted(mixed(31, R"([[{}]])")));
}

TEST(JsonReader, CountsTheDepthOfEachBranchByItself) {
  const std::string deep = NestedArrays(63);
  EXPECT_TRUE(Accepted(R"({"a":)" + deep + R"(,"b":)" + deep + R"(,"c":{}})"));
}

TEST(JsonReader, SurvivesHostileNesting) {
  EXPECT_FALSE(Accepted(Unknown(std::string(1000000, '['))));
  EXPECT_FALSE(Accepted(Repeat(R"({"a":)", 1000000)));
}

TEST(JsonReader, AcceptsManyMembersAndElements) {
  EXPECT_TRUE(Accepted("{" + Repeat(R"("a":1,)", 10000) + R"("a":1})"));
  EXPECT_TRUE(Accepted(Unknown("[" + Repeat("0,", 10000) + "0]")));
}

TEST(JsonReader, RejectsEveryProperPrefixOfAText) {
  const std::string text =
      R"({"code":-12,"msg":"a\u00e9\ud83d\ude00\n","allowed":true,"success":false,)"
      R"("server_time":1700000000,"x":[1.5e-3,{"y":null},"z",[]]})";
  ASSERT_TRUE(Accepted(text));
  for (std::size_t length = 0; length < text.size(); ++length) {
    const ResponseEnvelope envelope = ReadResponseEnvelope(text.substr(0, length));
    EXPECT_FALSE(envelope.accepted) << length;
    ExpectNothingPresent(envelope);
  }
}

TEST(JsonReader, ReadsNoFurtherThanItsText) {
  const std::string text = R"({"code":12})";
  EXPECT_TRUE(ReadResponseEnvelope(std::string_view(text).substr(0, text.size())).accepted);
  EXPECT_FALSE(ReadResponseEnvelope(std::string_view(text).substr(0, text.size() - 1)).accepted);
}

TEST(JsonReader, LeavesNothingPresentInARejectedText) {
  const std::string members =
      R"({"code":1,"allowed":true,"success":true,"msg":"text","server_time":5)";
  EXPECT_TRUE(Accepted(members + "}"));
  for (const char* const end : {"", "} x", ",}", R"(,"x":tru})", R"(,"code":2})"}) {
    const ResponseEnvelope envelope = ReadResponseEnvelope(members + end);
    EXPECT_FALSE(envelope.accepted) << end;
    ExpectNothingPresent(envelope);
  }
}

}  // namespace
}  // namespace korvixsdk::test
