#include <gtest/gtest.h>

#include <cstdio>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "network/json_reader.h"

namespace korvixsdk::test {
namespace {

/// What the reader makes of the raw inside of a string; nothing when it rejects it.
std::optional<std::string> Decoded(const std::string& inside) {
  const ResponseEnvelope envelope = ReadResponseEnvelope(R"({"msg":")" + inside + "\"}");
  EXPECT_EQ(envelope.accepted, envelope.msg.has_value());
  return envelope.msg;
}

using Text = std::optional<std::string>;

/// The strings that nobody reads follow the same rules; each place has its own path in the reader.
void ExpectRejectedEverywhere(const std::string& inside) {
  const std::string quoted = "\"" + inside + "\"";
  EXPECT_EQ(Decoded(inside), std::nullopt) << inside;
  EXPECT_FALSE(ReadResponseEnvelope("{\"x\":" + quoted + "}").accepted) << inside;
  EXPECT_FALSE(ReadResponseEnvelope("{" + quoted + ":1}").accepted) << inside;
  EXPECT_FALSE(ReadResponseEnvelope("{\"x\":{" + quoted + ":1}}").accepted) << inside;
  EXPECT_FALSE(ReadResponseEnvelope("{\"x\":[" + quoted + "]}").accepted) << inside;
}

void ExpectAcceptedEverywhere(const std::string& inside) {
  const std::string quoted = "\"" + inside + "\"";
  EXPECT_TRUE(ReadResponseEnvelope("{\"x\":" + quoted + "}").accepted) << inside;
  EXPECT_TRUE(ReadResponseEnvelope("{" + quoted + ":1}").accepted) << inside;
  EXPECT_TRUE(ReadResponseEnvelope("{\"x\":{" + quoted + ":1}}").accepted) << inside;
  EXPECT_TRUE(ReadResponseEnvelope("{\"x\":[" + quoted + "]}").accepted) << inside;
}

TEST(JsonString, KeepsPlainText) {
  EXPECT_EQ(Decoded(""), Text(""));
  EXPECT_EQ(Decoded("plain, {text}: [1]"), Text("plain, {text}: [1]"));
}

TEST(JsonString, KeepsALongText) {
  const std::string text(100000, 'a');
  EXPECT_EQ(Decoded(text), Text(text));
}

TEST(JsonString, RejectsEveryRawControlCharacter) {
  for (char c = 0; c < 0x20; ++c) ExpectRejectedEverywhere(std::string("a") + c + "b");
}

TEST(JsonString, AcceptsTheEscapeInPlaceOfARawTab) {
  ExpectRejectedEverywhere("a\tb");
  EXPECT_EQ(Decoded("a\\tb"), Text("a\tb"));
}

TEST(JsonString, KeepsEveryOtherRawByteUnchecked) {
  for (unsigned byte = 0x20; byte < 256; ++byte) {
    const char c = static_cast<char>(byte);
    if (c == '"' || c == '\\') continue;
    EXPECT_EQ(Decoded(std::string(1, c)), Text(std::string(1, c))) << byte;
    ExpectAcceptedEverywhere(std::string(1, c));
  }
}

TEST(JsonString, KeepsMultiByteSequencesAsTheyStand) {
  const std::string sound = "\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80";
  const std::string broken = "\xC3\x28\xFF\xED\xA0\xBD\xF0\x9F";
  EXPECT_EQ(Decoded(sound), Text(sound));
  EXPECT_EQ(Decoded(broken), Text(broken));
}

TEST(JsonString, DecodesTheEightSimpleEscapes) {
  const std::vector<std::pair<std::string, std::string>> rows = {
      {"\\\"", "\x22"}, {"\\/", "\x2F"}, {"\\\\", "\x5C"}, {"\\b", "\x08"},
      {"\\f", "\x0C"},  {"\\n", "\x0A"}, {"\\r", "\x0D"},  {"\\t", "\x09"}};
  for (const auto& [escape, byte] : rows) {
    EXPECT_EQ(Decoded(escape), Text(byte)) << escape;
    EXPECT_EQ(Decoded("a" + escape + "b" + escape), Text("a" + byte + "b" + byte)) << escape;
    ExpectAcceptedEverywhere(escape);
  }
}

TEST(JsonString, RejectsEveryOtherEscape) {
  const std::string known = "\"\\/bfnrtu";
  for (unsigned byte = 0; byte < 256; ++byte) {
    const char c = static_cast<char>(byte);
    if (known.find(c) == std::string::npos) ExpectRejectedEverywhere(std::string("\\") + c);
  }
}

TEST(JsonString, RejectsAStringThatIsNotClosed) {
  for (const char* const text :
       {R"({"msg":")", R"({"msg":"a)", R"({"msg":"a})", R"({"msg":"a\)", R"({"msg":"a\"})",
        R"({"msg":"\u)", R"({"msg":"\u00)", R"({"msg":"\ud83d)", R"({"msg":"\ud83d\)",
        R"({"msg":"\ud83d\u)", R"({"msg":"\ud83d\ude)", R"({"a)", R"({")"}) {
    EXPECT_FALSE(ReadResponseEnvelope(text).accepted) << text;
  }
}

TEST(JsonString, EndsAtAQuotationMarkBehindAnEscapedBackslash) {
  EXPECT_EQ(Decoded(R"(a\\)"), Text("a\\"));
}

TEST(JsonString, DecodesACodePointOfTwoBytes) { EXPECT_EQ(Decoded(R"(\u00e9)"), Text("\xC3\xA9")); }

TEST(JsonString, DecodesASurrogatePair) {
  EXPECT_EQ(Decoded(R"(\ud83d\ude00)"), Text("\xF0\x9F\x98\x80"));
}

TEST(JsonString, EncodesEachLengthOfUtf8AtItsBounds) {
  const std::vector<std::pair<std::string, std::string>> rows = {
      {R"(\u0000)", std::string(1, '\0')},
      {R"(\u0041)", "A"},
      {R"(\u007f)", "\x7F"},
      {R"(\u0080)", "\xC2\x80"},
      {R"(\u07ff)", "\xDF\xBF"},
      {R"(\u0800)", "\xE0\xA0\x80"},
      {R"(\ud7ff)", "\xED\x9F\xBF"},
      {R"(\ue000)", "\xEE\x80\x80"},
      {R"(\uffff)", "\xEF\xBF\xBF"},
      {R"(\ud800\udc00)", "\xF0\x90\x80\x80"},
      {R"(\ud800\udfff)", "\xF0\x90\x8F\xBF"},
      {R"(\udbff\udc00)", "\xF4\x8F\xB0\x80"},
      {R"(\udbff\udfff)", "\xF4\x8F\xBF\xBF"}};
  for (const auto& [escape, bytes] : rows) {
    EXPECT_EQ(Decoded(escape), Text(bytes)) << escape;
    ExpectAcceptedEverywhere(escape);
  }
}

TEST(JsonString, TakesHexadecimalDigitsInEitherCase) {
  EXPECT_EQ(Decoded(R"(\u00E9\u00e9\uABCD\uabcd\uD83D\uDE00)"),
            Text("\xC3\xA9\xC3\xA9\xEA\xAF\x8D\xEA\xAF\x8D\xF0\x9F\x98\x80"));
}

TEST(JsonString, TakesFourDigitsOnly) {
  EXPECT_EQ(Decoded(R"(\u00410)"), Text("A0"));
  EXPECT_EQ(Decoded(R"(\u0041f)"), Text("Af"));
}

TEST(JsonString, TakesSeveralPairsInARow) {
  EXPECT_EQ(Decoded(R"(\ud83d\ude00\ud83d\ude00)"), Text("\xF0\x9F\x98\x80\xF0\x9F\x98\x80"));
}

TEST(JsonString, RejectsAUEscapeWithoutFourHexadecimalDigits) {
  for (const char* const inside : {R"(\u)", R"(\u0)", R"(\u00)", R"(\u004)", R"(\u004g)",
                                   R"(\ug041)", R"(\u-041)", R"(\u+041)", R"(\u 041)", R"(\u0x41)",
                                   R"(\u00 1)", R"(\u{41})", R"(\U0041)", R"(\u004\u0041)"}) {
    ExpectRejectedEverywhere(inside);
  }
}

TEST(JsonString, RejectsEveryCharacterThatIsNoHexadecimalDigit) {
  const std::string digits = "0123456789abcdefABCDEF";
  for (unsigned byte = 0x20; byte < 256; ++byte) {
    const char c = static_cast<char>(byte);
    if (digits.find(c) != std::string::npos) continue;
    for (std::size_t at = 0; at < 4; ++at) {
      std::string units = "0041";
      units[at] = c;
      EXPECT_EQ(Decoded("\\u" + units), std::nullopt) << byte;
    }
  }
}

TEST(JsonString, RejectsALowSurrogateOnItsOwn) {
  for (const char* const inside : {R"(\ude00)", R"(\udc00)", R"(\udfff)", R"(a\udc00b)",
                                   R"(\udc00\ud800)", R"(\udc00\udc00)"}) {
    ExpectRejectedEverywhere(inside);
  }
}

TEST(JsonString, RejectsAHighSurrogateWithoutALowOneAtOnce) {
  for (const char* const inside :
       {R"(\ud83d)", R"(\ud800)", R"(\udbff)", R"(\ud83d )", R"(\ud83dx\ude00)", R"(\ud83d\n)",
        R"(\ud83d\u0041)", R"(\ud83d\ud83d)", R"(\ud83d\udbff)", R"(\ud83d\ue000)",
        R"(\ud83d\\ude00)", R"(\ud83d\Ude00)", R"(\ud83d\u)", R"(\ud83d\ude0)", R"(\ud83dude00)",
        R"(\ud83d\ud7ff)", "\\ud83d\xF0\x9F\x98\x80"}) {
    ExpectRejectedEverywhere(inside);
  }
}

// A loop over all code units, so that no bound of the surrogate ranges is off by one.
TEST(JsonString, AcceptsEveryCodeUnitButTheSurrogates) {
  for (unsigned unit = 0; unit <= 0xFFFF; ++unit) {
    char escape[7];
    std::snprintf(escape, sizeof(escape), "\\u%04x", unit & 0xFFFFu);
    const bool surrogate = unit >= 0xD800 && unit <= 0xDFFF;
    ASSERT_EQ(Decoded(escape).has_value(), !surrogate) << escape;
  }
}

}  // namespace
}  // namespace korvixsdk::test
