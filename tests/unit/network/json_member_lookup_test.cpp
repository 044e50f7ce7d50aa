#include "network/json_member_lookup.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace korvixsdk::test {
namespace {

using Found = std::optional<std::string>;

TEST(FindJsonMember, GivesAStringsContent) {
  EXPECT_EQ(FindJsonMember(R"({"version":"2.0.0"})", "version"), Found("2.0.0"));
}

TEST(FindJsonMember, GivesAnEmptyString) {
  EXPECT_EQ(FindJsonMember(R"({"version":""})", "version"), Found(""));
}

TEST(FindJsonMember, GivesALiteralOrNumberAsItsText) {
  EXPECT_EQ(FindJsonMember(R"({"k":true})", "k"), Found("true"));
  EXPECT_EQ(FindJsonMember(R"({"k":null,"l":2})", "k"), Found("null"));
  EXPECT_EQ(FindJsonMember(R"({"k":-1.5e3})", "k"), Found("-1.5e3"));
  EXPECT_EQ(FindJsonMember(R"({"k":1})", "k"), Found("1"));
}

TEST(FindJsonMember, FindsNothingWithoutTheQuotedKey) {
  for (const char* const text :
       {"", "{}", "plain text", R"({"versions":"1"})", R"({"aversion":"1"})", R"({"Version":"1"})",
        "{version:1}", R"({'version':'1'})", R"({"version : 1})"}) {
    EXPECT_EQ(FindJsonMember(text, "version"), Found()) << text;
  }
}

TEST(FindJsonMember, FindsNothingWithoutAColonBehindTheKey) {
  EXPECT_EQ(FindJsonMember(R"("k")", "k"), Found());
  EXPECT_EQ(FindJsonMember(R"(["k", "v"])", "k"), Found());
  EXPECT_EQ(FindJsonMember(R"({"a":1,"k"})", "k"), Found());
}

TEST(FindJsonMember, FindsNothingWhenTheTextEndsBehindTheColon) {
  EXPECT_EQ(FindJsonMember(R"({"k":)", "k"), Found());
  EXPECT_EQ(FindJsonMember("{\"k\": \t\n\v\f\r", "k"), Found());
}

TEST(FindJsonMember, TakesTheFirstColonBehindTheKeyWhereverItIs) {
  EXPECT_EQ(FindJsonMember(R"("k" = 5, "other": 7)", "k"), Found("7"));
  EXPECT_EQ(FindJsonMember("\"k\" \n\t : 7", "k"), Found("7"));
}

TEST(FindJsonMember, FindsAKeyAtAnyDepth) {
  EXPECT_EQ(FindJsonMember(R"({"data":{"list":[{"k":"deep"}]}})", "k"), Found("deep"));
}

TEST(FindJsonMember, TakesTheFirstOccurrenceOnly) {
  EXPECT_EQ(FindJsonMember(R"({"k":"first","k":"second"})", "k"), Found("first"));
  EXPECT_EQ(FindJsonMember(R"({"data":{"k":"inner"},"k":"outer"})", "k"), Found("inner"));
}

// A string value that is the key in quotation marks is taken for the key.
TEST(FindJsonMember, FindsTheKeyInsideAnEarlierStringValue) {
  EXPECT_EQ(FindJsonMember(R"({"kind":"version","since":"1.0","version":"2.0"})", "version"),
            Found("1.0"));
}

// No second try further on: the first occurrence is the only one.
TEST(FindJsonMember, FindsNothingWhenTheFirstOccurrenceHasNoValue) {
  EXPECT_EQ(FindJsonMember(R"({"a":"x","k")", "k"), Found());
  EXPECT_EQ(FindJsonMember(R"("k" "k")", "k"), Found());
}

TEST(FindJsonMember, ReadsNoEscapesInKeys) {
  EXPECT_EQ(FindJsonMember(R"({"\u006b":1})", "k"), Found());
}

TEST(FindJsonMember, SkipsTheSixWhiteSpaceCharactersBeforeTheValue) {
  EXPECT_EQ(FindJsonMember("\"k\": \t\n\v\f\r\"v\"", "k"), Found("v"));
  EXPECT_EQ(FindJsonMember("\"k\": \t\n\v\f\r7", "k"), Found("7"));
}

TEST(FindJsonMember, SkipsNoOtherByteBeforeTheValue) {
  EXPECT_EQ(FindJsonMember("\"k\":\xA0\"v\"", "k"), Found("\xA0\"v\""));
  EXPECT_EQ(FindJsonMember(std::string("\"k\":\0 7", 7), "k"), Found(std::string("\0 7", 3)));
}

TEST(FindJsonMember, DecodesTheFiveControlEscapes) {
  EXPECT_EQ(FindJsonMember(R"({"k":"\b\f\n\r\t"})", "k"), Found("\b\f\n\r\t"));
}

TEST(FindJsonMember, TakesEveryOtherEscapedCharacterForItself) {
  EXPECT_EQ(FindJsonMember(R"({"k":"\"\\\/\a\x\0\ "})", "k"), Found("\"\\/ax0 "));
}

TEST(FindJsonMember, DecodesNoCodePoint) {
  EXPECT_EQ(FindJsonMember(R"({"k":"\u00e9"})", "k"), Found("u00e9"));
}

TEST(FindJsonMember, EndsAStringAtAQuotationMarkBehindAnEscapedBackslash) {
  EXPECT_EQ(FindJsonMember(R"({"k":"a\\","l":"b"})", "k"), Found("a\\"));
}

TEST(FindJsonMember, KeepsCommasBracesAndWhiteSpaceInsideAString) {
  EXPECT_EQ(FindJsonMember(R"({"k":" a,b}c "})", "k"), Found(" a,b}c "));
}

TEST(FindJsonMember, KeepsEveryRawByteInsideAString) {
  const std::string bytes("\0\x01\n\x7F\x80\xC3\xA9\xFF", 8);
  EXPECT_EQ(FindJsonMember("\"k\":\"" + bytes + "\"", "k"), Found(bytes));
}

TEST(FindJsonMember, KeepsWhatItReadOfAStringThatIsNotClosed) {
  EXPECT_EQ(FindJsonMember(R"({"k":"abc)", "k"), Found("abc"));
  EXPECT_EQ(FindJsonMember(R"({"k":")", "k"), Found(""));
  EXPECT_EQ(FindJsonMember(R"({"k":"abc\")", "k"), Found("abc\""));
}

TEST(FindJsonMember, DropsABackslashAtTheEndOfTheText) {
  EXPECT_EQ(FindJsonMember("{\"k\":\"abc\\", "k"), Found("abc"));
  EXPECT_EQ(FindJsonMember("{\"k\":\"\\", "k"), Found(""));
}

TEST(FindJsonMember, EndsARawValueAtACommaABraceOrTheEnd) {
  EXPECT_EQ(FindJsonMember(R"({"k":12,"l":3})", "k"), Found("12"));
  EXPECT_EQ(FindJsonMember(R"({"k":12})", "k"), Found("12"));
  EXPECT_EQ(FindJsonMember(R"("k":12)", "k"), Found("12"));
  EXPECT_EQ(FindJsonMember(R"("k":12] x)", "k"), Found("12] x"));
}

TEST(FindJsonMember, TrimsARawValue) {
  EXPECT_EQ(FindJsonMember("\"k\": 1 2 \t\n\v\f\r,", "k"), Found("1 2"));
}

TEST(FindJsonMember, GivesAnEmptyRawValue) {
  EXPECT_EQ(FindJsonMember(R"({"k":})", "k"), Found(""));
  EXPECT_EQ(FindJsonMember(R"({"k": ,"l":1})", "k"), Found(""));
}

TEST(FindJsonMember, CutsANestedObjectOrArrayAtItsFirstCommaOrBrace) {
  EXPECT_EQ(FindJsonMember(R"({"k":{"a":1,"b":2}})", "k"), Found(R"({"a":1)"));
  EXPECT_EQ(FindJsonMember(R"({"k":{"a":1}})", "k"), Found(R"({"a":1)"));
  EXPECT_EQ(FindJsonMember(R"({"k":[1,2]})", "k"), Found("[1"));
  EXPECT_EQ(FindJsonMember(R"({"k":["a}b"]})", "k"), Found(R"(["a)"));
}

TEST(FindJsonMember, ChecksNothingElseOfTheText) {
  EXPECT_EQ(FindJsonMember(R"(]]} junk "k" junk : "v" ,,, {)", "k"), Found("v"));
}

TEST(FindJsonMember, StopsAtNoZeroByte) {
  EXPECT_EQ(FindJsonMember(std::string("\0\"k\":\"v\"", 8), "k"), Found("v"));
}

TEST(FindJsonMembers, FindsThemInAnyOrder) {
  std::string version = "none";
  std::string code;
  std::string message;
  FindJsonMembers(R"({"msg":"text","version":"2.0.0","other":[1],"code":400})",
                  {{"version", version}, {"code", code}, {"msg", message}});
  EXPECT_EQ(version, "2.0.0");
  EXPECT_EQ(code, "400");
  EXPECT_EQ(message, "text");
}

TEST(FindJsonMembers, LeavesAValueWithoutAMember) {
  for (const char* const text : {"", "\"", "k", "\"k", "k\"", R"({"l":1})", R"({"K":1})", R"({"k")",
                                 R"({"k":)", R"({"\u006b":1})"}) {
    std::string value = "as it was";
    FindJsonMembers(text, {{"k", value}});
    EXPECT_EQ(value, "as it was") << text;
  }
}

// While another one is still looked for.
TEST(FindJsonMembers, TakesTheFirstOccurrenceOnly) {
  std::string k;
  std::string absent;
  FindJsonMembers(R"({"data":{"k":"inner"},"k":"outer"})", {{"k", k}, {"absent", absent}});
  EXPECT_EQ(k, "inner");
  FindJsonMembers(R"({"kind":"k","since":"1.0","k":"2.0"})", {{"k", k}, {"absent", absent}});
  EXPECT_EQ(k, "1.0");
}

// The mark before a key may end what stands before it, and that behind it may begin the next text.
TEST(FindJsonMembers, FindsAKeyBetweenAnyTwoMarks) {
  std::string k;
  std::string l;
  FindJsonMembers(R"("a"k"l":1)", {{"k", k}, {"l", l}});
  EXPECT_EQ(k, "1");
  EXPECT_EQ(l, "1");
}

TEST(FindJsonMembers, TellsLongKeysOfOneBeginningApart) {
  const std::string name(70, 'k');
  const std::string text = "{\"" + name + "kk\":2,\"" + name + "\":0,\"" + name + "k\":1}";
  std::string values[3];
  const std::string longer = name + 'k';
  const std::string longest = longer + 'k';
  FindJsonMembers(text, {{name, values[0]}, {longer, values[1]}, {longest, values[2]}});
  EXPECT_EQ(values[0], "0");
  EXPECT_EQ(values[1], "1");
  EXPECT_EQ(values[2], "2");
}

TEST(IsTrueToken, TakesTrueAndOneOnly) {
  for (const char* const token : {"true", "1", " true ", "\t\n\v\f\r1\t\n\v\f\r"}) {
    EXPECT_TRUE(IsTrueToken(token)) << token;
  }
  for (const char* const token : {"", " ", "TRUE", "True", "tru", "truee", "yes", "11", "01", "1.0",
                                  "\"true\"", "false", "0", "tr ue"}) {
    EXPECT_FALSE(IsTrueToken(token)) << token;
  }
}

TEST(IsFalseToken, TakesFalseAndZeroOnly) {
  for (const char* const token : {"false", "0", " false ", "\t\n\v\f\r0\t\n\v\f\r"}) {
    EXPECT_TRUE(IsFalseToken(token)) << token;
  }
  for (const char* const token : {"", " ", "FALSE", "False", "fals", "falsee", "no", "00", "0.0",
                                  "\"false\"", "true", "1", "-0"}) {
    EXPECT_FALSE(IsFalseToken(token)) << token;
  }
}

TEST(IsTrueToken, TakesTheLookedUpTokenOfANumberOne) {
  EXPECT_TRUE(IsTrueToken(FindJsonMember(R"({"force_update": 1 })", "force_update").value()));
}

TEST(IsTrueToken, TakesNoCapitalsAndNeitherDoesIsFalseToken) {
  const std::string token = FindJsonMember(R"({"force_update":TRUE})", "force_update").value();
  EXPECT_FALSE(IsTrueToken(token));
  EXPECT_FALSE(IsFalseToken(token));
}

TEST(FindJsonInt, ReadsDecimalDigits) {
  const std::vector<std::pair<std::string, std::int32_t>> rows = {
      {R"({"code":400})", 400},       {R"({"code":0})", 0},
      {R"({"code":007})", 7},         {R"({"code": 400 ,"x":1})", 400},
      {R"({"code":"400"})", 400},     {R"({"code":" 400 "})", 400},
      {R"({"code":"\t400\n"})", 400}, {R"({"code":2147483647})", 2147483647},
      {R"("code":400)", 400},         {R"({"code":00000000000000000000001})", 1}};
  for (const auto& [text, value] : rows) {
    EXPECT_EQ(FindJsonInt(text, "code"), std::optional<std::int32_t>(value)) << text;
  }
}

TEST(FindJsonInt, ReadsEverythingElseAsAbsent) {
  for (const char* const text :
       {R"({})", R"({"code":})", R"({"code":""})", R"({"code":" "})", R"({"code":-1})",
        R"({"code":+1})", R"({"code":1.0})", R"({"code":1e2})", R"({"code":0x1})",
        R"({"code":"-1"})", R"({"code":1 2})", R"({"code":true})", R"({"code":null})",
        R"({"code":[400]})", R"({"code":400]})", R"({"code":2147483648})",
        R"({"code":99999999999999999999999})", R"({"code":"four"})", R"({"code":)"}) {
    EXPECT_EQ(FindJsonInt(text, "code"), std::nullopt) << text;
  }
}

TEST(FindJsonMember, FindsKeyBehindItsOwnBeginnings) {
  EXPECT_EQ(FindJsonMember(R"("ma"mama"mam"mamam":"x","mamama":"y")", "mamama"), "y");
  EXPECT_EQ(FindJsonMember(R"(""""k":1)", "k"), "1");
  EXPECT_EQ(FindJsonMember(R"(xkey"key":1)", "key"), "1");
}

TEST(FindJsonMember, FindsKeyOfAnyLengthAtAnyPlace) {
  for (std::size_t length = 0; length < 600; ++length) {
    const std::string key(length, 'k');
    const std::string text = std::string(length, 'k') + "\"k" + std::string(length % 7, '"') + '"' +
                             key + "\":\"found\"";
    EXPECT_EQ(FindJsonMember(text, key).value_or("nothing"), "found") << length;
    EXPECT_EQ(FindJsonMember(text, key + "j"), std::nullopt) << length;
  }
}

}  // namespace
}  // namespace korvixsdk::test
