#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "host/hostile_service.h"

namespace korvixsdk::test {
namespace {

using namespace std::string_literals;

constexpr char kSmallHeader[] = "X-Flood: 0123456789\r\n";
constexpr std::size_t kMebibyte = std::size_t{1} << 20;

const Outcome kWeird = Outcome::Fails(CURLE_WEIRD_SERVER_REPLY);

HostileReply With(const std::string& headers, const Outcomes& outcomes) {
  return {"headers " + headers.substr(0, 60), {Reply(headers)}, outcomes};
}

TEST(HostileHeader, IsTakenFiveThousandTimes) {
  ExpectAll({With(Repeated(kSmallHeader, 5000), {Outcome::Sound()})});
}

TEST(HostileHeader, FailsAHundredThousandTimes) {
  ExpectAll({With(Repeated(kSmallHeader, 100000), TooManyHeaders())});
}

TEST(HostileHeader, FailsWithoutAnEnd) {
  const Script headers =
      Script().Send("HTTP/1.1 200 OK\r\n").SendForEver(Repeated(kSmallHeader, 1000));
  const Script line = Script().Send("HTTP/1.1 200 OK\r\nX: ").SendForEver(std::string(10000, 'x'));
  ExpectAll({{"headers without an end", {headers}, TooManyHeaders()},
             {"a header line without an end", {line}, LineTooLong()}});
}

TEST(HostileHeader, FailsWhenItsLineIsMegabytesLong) {
  ExpectAll({With("X: " + std::string(kMebibyte, 'x') + "\r\n", LineTooLong()),
             With(std::string(5 * kMebibyte, 'x') + ": y\r\n", LineTooLong()),
             With("Content-Length: " + std::string(kMebibyte, '0') + "\r\n", LineTooLong()),
             With("Location: /" + std::string(kMebibyte, 'x') + "\r\n", LineTooLong())});
}

TEST(HostileHeader, FailsWithAZeroByte) {
  ExpectAll({With("X: a\0b\r\n"s, {kWeird}), With("X\0Y: ab\r\n"s, {kWeird}),
             With("X: ab\0\r\n"s, {kWeird}), With("Location: /\0\r\n"s, {kWeird})});
}

// libcurl 7.88 takes a line that begins with a zero byte for the end of the head.
TEST(HostileHeader, EndsTheHeadOrFailsWhenAZeroByteIsFirst) {
  ExpectAll({With("\0\r\n"s, {Outcome::Body(""), kWeird})});
}

TEST(HostileHeader, IsTakenWithInvalidUtf8) {
  const std::string invalid = "\xc0\x80\xff\xed\xa0\x80";
  ExpectAll({With("X: " + invalid + "\r\n", {Outcome::Sound()}),
             With(invalid + ": x\r\n", {Outcome::Sound()})});
}

TEST(HostileHeader, FailsWithoutAColon) {
  ExpectAll({With("nothing\r\n", {kWeird}), With("\xff\xfe\r\n", {kWeird})});
}

TEST(HostileHeader, IsTakenOrFailsWhenTheFirstOneContinuesNone) {
  Outcomes outcomes = FailsWithOneOf({CURLE_BAD_FUNCTION_ARGUMENT, CURLE_WEIRD_SERVER_REPLY});
  outcomes.push_back(Outcome::Sound());
  ExpectAll({With(" X: a\r\n", outcomes)});
}

TEST(HostileHeader, IsTakenFoldedAndWithBareLineFeeds) {
  ExpectAll({With("X: a\r\n b\r\n\tc\r\n", {Outcome::Sound()}),
             {"bare line feeds",
              {Script().Send("HTTP/1.1 200 OK\nX: y\n\n" + kSoundBody)},
              {Outcome::Sound()}}});
}

TEST(HostileHeader, NeverComesWithBareCarriageReturns) {
  ExpectAll({{"bare carriage returns",
              {Script().Send("HTTP/1.1 200 OK\rX: y\r\r" + kSoundBody)},
              FailsWithOneOf({CURLE_GOT_NOTHING, CURLE_WEIRD_SERVER_REPLY})}});
}

TEST(HostileHeader, IsNotBelievedAboutACompressionNobodyAskedFor) {
  ExpectAll({With("Content-Encoding: gzip\r\n", {Outcome::Sound()}),
             With("Content-Encoding: " + Repeated("br, ", 100) + "gzip\r\n", {Outcome::Sound()})});
}

TEST(HostileHeader, FailsWithATransferEncodingThatIsNone) {
  const Outcomes outcomes = FailsWithOneOf({CURLE_BAD_CONTENT_ENCODING});
  ExpectAll({With("Transfer-Encoding: gzip\r\n", outcomes),
             With("Transfer-Encoding: nonsense\r\n", outcomes),
             With("Transfer-Encoding: " + Repeated("gzip, ", 50) + "chunked\r\n", outcomes)});
}

TEST(HostileHeader, MeansNothingToOneExchange) {
  ExpectAll({With("Set-Cookie: \xff=; Max-Age=-99999999999999999999\r\n", {Outcome::Sound()}),
             With("Retry-After: -99999999999999999999\r\n", {Outcome::Sound()}),
             With("Content-Range: bytes 9-1/-3\r\n", {Outcome::Sound()}),
             With("Last-Modified: never\r\nDate: \xff\r\n", {Outcome::Sound()}),
             With("Alt-Svc: h3=\":1\"\r\nStrict-Transport-Security: x\r\n", {Outcome::Sound()}),
             With("WWW-Authenticate: NTLM\r\nProxy-Authenticate: Basic\r\n", {Outcome::Sound()}),
             With("Connection: upgrade\r\nUpgrade: h2c\r\n", {Outcome::Sound()})});
}

}  // namespace
}  // namespace korvixsdk::test
