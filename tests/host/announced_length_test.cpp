#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "host/hostile_service.h"

namespace korvixsdk::test {
namespace {

const std::string kLength = std::to_string(kSoundBody.size());

HostileReply Announcing(const std::string& length, const Outcomes& outcomes) {
  return {"length " + length, {Reply("Content-Length: " + length + "\r\n")}, outcomes};
}

HostileReply AnnouncingBoth(const std::string& first, const std::string& second,
                            const Outcomes& outcomes) {
  return {"lengths " + first + " and " + second,
          {Reply("Content-Length: " + first + "\r\nContent-Length: " + second + "\r\n")},
          outcomes};
}

/// What is left of the sound body; its version is read nevertheless when only the last byte went.
Outcome CutTo(std::size_t length) {
  const Outcome cut = Outcome::Body(kSoundBody.substr(0, length));
  return length + 1 == kSoundBody.size() ? cut.ReadAs(SoundUpdate()) : cut;
}

const Outcome kWeird = Outcome::Fails(CURLE_WEIRD_SERVER_REPLY);
const Outcome kPartial = Outcome::Fails(CURLE_PARTIAL_FILE);

TEST(AnnouncedLength, FailsWhenNegative) {
  ExpectAll({Announcing("-1", {kWeird}), Announcing("-" + kLength, {kWeird}),
             Announcing("-9223372036854775808", {kWeird}),
             Announcing("-18446744073709551616", {kWeird})});
}

TEST(AnnouncedLength, IsNoLengthBeyondSixtyFourBits) {
  const Outcomes outcomes = {Outcome::Sound(), kWeird};
  ExpectAll({Announcing("9223372036854775808", outcomes),
             Announcing("18446744073709551615", outcomes),
             Announcing("18446744073709551616", outcomes),
             Announcing("18446744073709551616" + kLength, outcomes),
             Announcing("1" + std::string(400, '0'), outcomes)});
}

TEST(AnnouncedLength, FailsWhenTooLarge) {
  ExpectAll({Announcing(std::to_string(kSoundBody.size() + 1), {kPartial}),
             Announcing("1073741824", {kPartial}), Announcing("1073741825", {kPartial}),
             Announcing("4294967296", {kPartial}), Announcing("4611686018427387904", {kPartial}),
             Announcing("9223372036854775807", {kPartial})});
}

TEST(AnnouncedLength, CutsTheBodyWhenTooSmall) {
  ExpectAll({Announcing("1", {CutTo(1)}), Announcing("40", {CutTo(40)}),
             Announcing(std::to_string(kSoundBody.size() - 1), {CutTo(kSoundBody.size() - 1)})});
}

TEST(AnnouncedLength, EmptiesTheBodyWhenZero) { ExpectAll({Announcing("0", {CutTo(0)})}); }

TEST(AnnouncedLength, KeepsASecondReplyOut) {
  const std::string second = "HTTP/1.1 500 Second\r\n\r\nsecond";
  ExpectAll({{"a second reply behind the first",
              {Reply("Content-Length: " + kLength + "\r\n", kSoundBody + second)},
              {Outcome::Sound()}}});
}

TEST(AnnouncedLength, CountsTheLastOneWhenGivenTwice) {
  const std::string one_more = std::to_string(kSoundBody.size() + 1);
  ExpectAll({AnnouncingBoth(kLength, kLength, {Outcome::Sound(), kWeird}),
             AnnouncingBoth("5", kLength, {Outcome::Sound(), kWeird}),
             AnnouncingBoth(kLength, "5", {CutTo(5), kWeird}),
             AnnouncingBoth(kLength, one_more, {kPartial, kWeird}),
             AnnouncingBoth(one_more, kLength, {Outcome::Sound(), kWeird}),
             AnnouncingBoth("-1", kLength, {kWeird}), AnnouncingBoth(kLength, "-1", {kWeird})});
}

TEST(AnnouncedLength, FailsWithoutADigit) {
  ExpectAll({Announcing("", {kWeird}), Announcing("many", {kWeird}),
             Announcing("\xff\xfe", {kWeird}), Announcing(std::string(1, '\0') + kLength, {kWeird}),
             Announcing(std::string(10000, 'x'), {kWeird})});
}

TEST(AnnouncedLength, CountsItsLeadingDigits) {
  ExpectAll({Announcing(kLength + "abc", {Outcome::Sound(), kWeird}),
             Announcing(kLength + ".0", {Outcome::Sound(), kWeird}),
             Announcing(kLength + ", 5", {Outcome::Sound(), kWeird}),
             Announcing("5, " + kLength, {CutTo(5), kWeird}),
             Announcing("0x10", {CutTo(0), kWeird}), Announcing("1e3", {CutTo(1), kWeird})});
}

TEST(AnnouncedLength, DoesNotCountBesideChunks) {
  HostOfHostileService host;
  const std::string chunks = Chunk(kSoundBody) + "0\r\n\r\n";
  for (const std::string length : {"1", "100000"}) {
    host.Expect(
        {"length " + length + " beside chunks",
         {Reply("Content-Length: " + length + "\r\nTransfer-Encoding: chunked\r\n", chunks)},
         {Outcome::Sound(), kWeird}});
  }
}

}  // namespace
}  // namespace korvixsdk::test
