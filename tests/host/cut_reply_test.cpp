#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <string>

#include "host/hostile_service.h"
#include "support/record_equality.h"

namespace korvixsdk::test {
namespace {

const std::string kStatusLine = "HTTP/1.1 200 OK\r\n";
const std::string kHead = kStatusLine + "Server: scripted\r\nContent-Type: application/json\r\n" +
                          "Content-Length: " + std::to_string(kSoundBody.size()) + "\r\n\r\n";
const std::string kReply = kHead + kSoundBody;

/// libcurl takes a head that ends between its status line and its length for a whole one without a
/// body.
Outcomes OfCloseAt(std::size_t byte) {
  if (byte == kReply.size()) return {Outcome::Sound()};
  const bool length_is_known = byte + 2 >= kHead.size();
  if (length_is_known) return FailsWithOneOf({CURLE_PARTIAL_FILE});
  Outcomes outcomes = FailsWithOneOf({CURLE_GOT_NOTHING, CURLE_WEIRD_SERVER_REPLY});
  if (byte >= kStatusLine.size()) outcomes.push_back(Outcome::Body(""));
  return outcomes;
}

/// A reset that libcurl sees before the bytes hides them; one that it sees behind them, or that the
/// system tells as the end of the connection, is a close.
Outcomes OfResetAt(std::size_t byte) {
  Outcomes outcomes = OfCloseAt(byte);
  outcomes.push_back(Outcome::Fails(CURLE_RECV_ERROR));
  return outcomes;
}

using Expectation = void (HostOfHostileService::*)(const HostileReply&);

void ExpectOfClose(Expectation expect) {
  HostOfHostileService host;
  for (std::size_t byte = 0; byte <= kReply.size(); ++byte) {
    const Script script = Script().Send(kReply.substr(0, byte));
    (host.*expect)({"a close at byte " + std::to_string(byte), {script}, OfCloseAt(byte)});
  }
}

void ExpectOfReset(Expectation expect) {
  HostOfHostileService host;
  for (std::size_t byte = 0; byte <= kReply.size(); ++byte) {
    const Script script = Script().Send(kReply.substr(0, byte)).Reset();
    (host.*expect)({"a reset at byte " + std::to_string(byte), {script}, OfResetAt(byte)});
  }
}

TEST(CutReply, ToInstallReportClosedAtAnyByteIsSoundOrFails) {
  ExpectOfClose(&HostOfHostileService::ExpectOfInstallReport);
}

TEST(CutReply, ToUpdateCheckClosedAtAnyByteIsSoundOrFails) {
  ExpectOfClose(&HostOfHostileService::ExpectOfUpdateCheck);
}

TEST(CutReply, ToDownloadClosedAtAnyByteIsSoundOrFails) {
  ExpectOfClose(&HostOfHostileService::ExpectOfDownload);
}

TEST(CutReply, ToInstallReportResetAtAnyByteIsSoundOrFails) {
  ExpectOfReset(&HostOfHostileService::ExpectOfInstallReport);
}

TEST(CutReply, ToUpdateCheckResetAtAnyByteIsSoundOrFails) {
  ExpectOfReset(&HostOfHostileService::ExpectOfUpdateCheck);
}

TEST(CutReply, ToDownloadResetAtAnyByteIsSoundOrFails) {
  ExpectOfReset(&HostOfHostileService::ExpectOfDownload);
}

/// What the search for single members finds in the first bytes of the sound body. The end of the
/// text ends a number, so that a cut code is another code.
UpdateInfo FoundInFirst(std::size_t bytes) {
  UpdateInfo info;
  const std::size_t code = kSoundBody.find("400");
  if (bytes > code && bytes < code + 3) info.message = "welcome";
  const std::size_t version = kSoundBody.find("2.0.0");
  if (bytes > version) {
    info.latest_version = kSoundBody.substr(version, std::min<std::size_t>(bytes - version, 5));
    info.has_update = info.latest_version.back() != '.';
  }
  return info;
}

// Without a length nobody can tell a cut from an end.
TEST(CutReply, WithoutALengthIsReadAsFarAsItCame) {
  HostOfHostileService host;
  for (std::size_t bytes = 0; bytes < kSoundBody.size(); ++bytes) {
    const std::string body = kSoundBody.substr(0, bytes);
    host.Expect({"a close behind " + body,
                 {Reply("", body)},
                 {Outcome::Body(body).ReadAs(FoundInFirst(bytes))}});
  }
}

TEST(CutReply, WithoutALengthAndWithoutADigestIsAPackage) {
  HostOfHostileService host;
  UpdateInfo offer = host.Offer();
  offer.sha256.clear();
  host.server().Play(Reply("", "half a pack"));
  const Result<PreparedUpdate> prepared = host.sdk().PrepareUpdate(offer);
  EXPECT_EQ(prepared.error, Error());
  EXPECT_TRUE(prepared.value.ready);
  EXPECT_EQ(FileBytes(prepared.value.package_path), "half a pack");
}

}  // namespace
}  // namespace korvixsdk::test
