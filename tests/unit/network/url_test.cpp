#include "network/url.h"

#include <gtest/gtest.h>

#include <string>

#include "support/record_equality.h"

namespace korvixsdk::test {
namespace {

std::string Url(const std::string& base, const std::string& path,
                const QueryParameters& params = {}) {
  const Result<std::string> url = BuildUrl(base, path, params);
  EXPECT_EQ(url.error, Error{});
  return url.value;
}

TEST(BuildUrl, DropsTheSlashOfTheBaseBeforeThatOfThePath) {
  EXPECT_EQ(Url("https://host/", "/API/v2/sdk/install/"), "https://host/API/v2/sdk/install/");
}

TEST(BuildUrl, JoinsABaseWithoutSlashAsItIs) {
  EXPECT_EQ(Url("https://host", "/API/v2/sdk/install/"), "https://host/API/v2/sdk/install/");
}

TEST(BuildUrl, DropsOnlyOneOfTwoSlashes) {
  EXPECT_EQ(Url("https://host//", "/API/v2/sdk/install/"), "https://host//API/v2/sdk/install/");
}

TEST(BuildUrl, KeepsThePathPrefixOfTheBase) {
  EXPECT_EQ(Url("https://host/app/", "/x"), "https://host/app/x");
  EXPECT_EQ(Url("https://host/app", "/x"), "https://host/app/x");
}

TEST(BuildUrl, AppendsAPathWithoutLeadingSlashDirectly) {
  EXPECT_EQ(Url("https://host", "x"), "https://hostx");
  EXPECT_EQ(Url("https://host/", "x"), "https://host/x");
}

TEST(BuildUrl, LeavesTheSlashesOfThePathAlone) {
  EXPECT_EQ(Url("https://host/", "//x"), "https://host//x");
}

TEST(BuildUrl, TakesEmptyPartsAsTheyAre) {
  EXPECT_EQ(Url("", ""), "");
  EXPECT_EQ(Url("", "/x"), "/x");
  EXPECT_EQ(Url("https://host/", ""), "https://host/");
  EXPECT_EQ(Url("/", "/"), "/");
}

TEST(BuildUrl, NormalisesNothingElse) {
  EXPECT_EQ(Url("HTTPS://Host:443/a/../b", "/./x y"), "HTTPS://Host:443/a/../b/./x y");
}

TEST(BuildUrl, AddsNoQuestionMarkWithoutParameters) {
  EXPECT_EQ(Url("https://host", "/x"), "https://host/x");
}

TEST(BuildUrl, PutsParametersInTheirOrder) {
  EXPECT_EQ(Url("https://host", "/x", {{"one", "1"}}), "https://host/x?one=1");
  EXPECT_EQ(Url("https://host", "/x", {{"z", "1"}, {"a", "2"}, {"z", "3"}}),
            "https://host/x?z=1&a=2&z=3");
}

TEST(BuildUrl, EncodesSpaceAndAmpersandInValues) {
  EXPECT_EQ(Url("https://host", "/x", {{"k", "a b&c"}}), "https://host/x?k=a%20b%26c");
}

TEST(BuildUrl, EncodesNoKey) {
  EXPECT_EQ(Url("https://host", "/x", {{"a b&c=%", "1"}}), "https://host/x?a b&c=%=1");
}

TEST(BuildUrl, WritesAnEmptyValueAsKeyAndEqualsSign) {
  EXPECT_EQ(Url("https://host", "/x", {{"a", ""}, {"b", ""}}), "https://host/x?a=&b=");
}

TEST(BuildUrl, KeepsTheUnreservedCharacters) {
  const std::string unreserved =
      "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-._~";
  EXPECT_EQ(Url("", "", {{"k", unreserved}}), "?k=" + unreserved);
}

TEST(BuildUrl, EncodesEveryOtherByteWithTwoUpperCaseDigits) {
  const std::string unreserved =
      "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-._~";
  const std::string digits = "0123456789ABCDEF";
  for (unsigned byte = 0; byte < 256; ++byte) {
    const char c = static_cast<char>(byte);
    if (unreserved.find(c) != std::string::npos) continue;
    const std::string expected{'?', 'k', '=', '%', digits[byte / 16], digits[byte % 16]};
    EXPECT_EQ(Url("", "", {{"k", std::string(1, c)}}), expected);
  }
}

TEST(BuildUrl, EncodesZeroBytesInsideAValue) {
  EXPECT_EQ(Url("", "", {{"k", std::string("a\0b\0", 4)}}), "?k=a%00b%00");
}

TEST(BuildUrl, EncodesUtf8ByteByByte) {
  EXPECT_EQ(Url("", "", {{"k", "\xC3\xA9\xF0\x9F\x98\x80"}}), "?k=%C3%A9%F0%9F%98%80");
}

TEST(BuildUrl, EncodesAnEncodedValueAgain) {
  EXPECT_EQ(Url("", "", {{"k", "%20+"}}), "?k=%2520%2B");
}

}  // namespace
}  // namespace korvixsdk::test
