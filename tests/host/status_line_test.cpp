#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "host/hostile_service.h"
#include "support/host_config.h"

namespace korvixsdk::test {
namespace {

using namespace std::string_literals;

HostileReply Bytes(const std::string& bytes, const Outcomes& outcomes) {
  return {"bytes " + bytes.substr(0, 60), {Script().Send(bytes)}, outcomes};
}

/// A sound reply below this first line.
HostileReply Line(const std::string& line, const Outcomes& outcomes) {
  return Bytes(line + "\r\n\r\n" + kSoundBody, outcomes);
}

Outcomes And(Outcomes outcomes, const Outcome& other) {
  outcomes.push_back(other);
  return outcomes;
}

const Outcomes kSound = {Outcome::Sound()};

TEST(StatusLine, FailsWhenThereIsNone) {
  HostOfHostileService host;
  for (const std::string& bytes :
       {kSoundBody, "hello"s, "\r\n\r\n"s, "\n"s, std::string(6, '\0'), "\xff\xfe\xfd"s,
        "SSH-2.0-Scripted\r\n"s, "\x15\x03\x01\x00\x02\x02\x28"s, std::string(1 << 20, 'x'),
        std::string(1 << 20, '\n')}) {
    host.Expect(Bytes(bytes, NoHttp()));
  }
}

TEST(StatusLine, FailsWhenOfAnotherProtocolOrVersion) {
  HostOfHostileService host;
  for (const std::string line :
       {"HTTP/0.9 200 OK", "HTTP/1.2 200 OK", "HTTP/9.9 200 OK", "HTTP/11 200 OK",
        "HTTP/1,1 200 OK", "HTTP/1.1200 OK", "ICY 200 OK", "RTSP/1.0 200 OK", "SIP/2.0 200 OK",
        " HTTP/1.1 200 OK", "HTTP/1.1"}) {
    host.Expect(Line(line, NoHttp()));
  }
}

TEST(StatusLine, FailsWhenMegabytesLong) {
  ExpectAll({Bytes("HTTP/1.1 200 " + std::string(1 << 20, 'x') + "\r\n\r\n", LineTooLong()),
             Bytes("HTTP/1.1 " + std::string(1 << 20, ' ') + "\r\n\r\n", LineTooLong())});
}

TEST(StatusLine, FailsWithAZeroByte) {
  ExpectAll({Line("HTTP/1.1 200 O\0K"s, FailsWithOneOf({CURLE_WEIRD_SERVER_REPLY})),
             Line("HTTP/1.1 2\0 OK"s, NoHttp())});
}

TEST(StatusLine, IsTakenInTheseForms) {
  ExpectAll({Line("HTTP/1.0 200 OK", kSound), Line("HTTP/1.1 200", kSound),
             Line("http/1.1 200 ok", kSound), Line("HTTP/1.1 200 \xff\xfe", kSound)});
}

TEST(StatusLine, FailsWithACodeThatIsNone) {
  HostOfHostileService host;
  for (const std::string code : {"000", "001", "99", "099", "1000", "0200", "+200", "-1", "-200",
                                 "2", "20", "2 00", "2xx", "20x", "0x200", "OK", "two hundred"}) {
    host.Expect(Line("HTTP/1.1 " + code + " Odd", NoHttp()));
  }
  host.Expect(Line("HTTP/1.1 9999999999999999999999 Odd", And(NoHttp(), Outcome::Status(999))));
}

TEST(StatusLine, FailsWithTheCodeOutside200To299) {
  HostOfHostileService host;
  for (const long code : {300L, 304L, 399L, 400L, 401L, 407L, 416L, 429L, 503L, 599L, 600L, 999L}) {
    host.Expect(Line("HTTP/1.1 " + std::to_string(code) + " Odd", {Outcome::Status(code)}));
  }
}

TEST(StatusLine, IsTakenOrFailsWithACodeAndMore) {
  HostOfHostileService host;
  for (const std::string code : {"200OK", "200.0", "200,200", "200;", "200\t"}) {
    host.Expect(Line("HTTP/1.1 " + code, And(NoHttp(), Outcome::Sound())));
  }
}

// A libcurl that can HTTP/2 reads its name without asking for it, and any number as its code, or
// none.
TEST(StatusLine, OfHttp2IsTakenOrFails) {
  HostOfHostileService host;
  for (const std::string line : {"HTTP/2 200", "HTTP/3 200"}) {
    host.Expect(Line(line, And(NoHttp(), Outcome::Sound())));
  }
  const std::vector<std::pair<std::string, long>> codes = {
      {"000", 0}, {"2xx", 2}, {"-1", -1}, {"20", 20}, {"1000", 1000}};
  for (const auto& [text, code] : codes) {
    host.Expect(
        Line("HTTP/2 " + text, And(And(NoHttp(), Outcome::Status(code)), Outcome::Sound())));
  }
}

TEST(InformationalStatus, IsSkippedAThousandTimes) {
  HostOfHostileService host;
  for (const std::string code : {"100", "102", "103", "199"}) {
    const std::string flood = Repeated("HTTP/1.1 " + code + " Wait\r\n\r\n", 1000);
    host.Expect(Bytes(flood + "HTTP/1.1 200 OK\r\n\r\n" + kSoundBody, kSound));
  }
}

TEST(InformationalStatus, FailsAHundredThousandTimes) {
  const std::string wait = "HTTP/1.1 100 Wait\r\n\r\n";
  ExpectAll(
      {Bytes(Repeated(wait, 100000) + "HTTP/1.1 200 OK\r\n\r\n" + kSoundBody, TooManyHeaders()),
       {"no end", {Script().SendForEver(Repeated(wait, 100))}, TooManyHeaders()}});
}

TEST(InformationalStatus, FailsWhenNothingFollows) {
  HostOfHostileService host;
  for (const std::string code : {"100", "101", "103", "199"}) {
    host.Expect(Bytes("HTTP/1.1 " + code + " Wait\r\n\r\n",
                      FailsWithOneOf({CURLE_GOT_NOTHING, CURLE_WEIRD_SERVER_REPLY})));
  }
}

TEST(InformationalStatus, FailsWhenItSwitchesToAProtocolNobodyAskedFor) {
  ExpectAll(
      {Bytes("HTTP/1.1 101 Switch\r\nUpgrade: h2c\r\n\r\nHTTP/1.1 200 OK\r\n\r\n" + kSoundBody,
             {Outcome::Status(101), Outcome::Fails(CURLE_WEIRD_SERVER_REPLY)})});
}

// The other way round: nothing of HTTP gets that far.
TEST(TlsHandshake, FailsAtAServiceThatSpeaksNone) {
  HostOfHostileService host;
  host.server().Play(Script().WithoutReading().Send("HTTP/1.1 400 No TLS here\r\n\r\n"));
  const std::string address = "https" + host.server().address().substr(4);
  ASSERT_TRUE(host.sdk().Init(HostConfig(host.folder(), address)).ok());
  const std::string text = curl_easy_strerror(CURLE_SSL_CONNECT_ERROR);
  const Result<UpdateInfo> check = host.sdk().CheckForUpdate();
  EXPECT_EQ(check.error.code, kNetworkError);
  EXPECT_EQ(check.error.message, "HTTP request failed: " + text);
  const Result<PreparedUpdate> prepared = host.sdk().PrepareUpdate(OfferAt(address));
  EXPECT_EQ(prepared.error.code, kNetworkError);
  EXPECT_EQ(prepared.error.message, "Update download failed: " + text);
}

}  // namespace
}  // namespace korvixsdk::test
