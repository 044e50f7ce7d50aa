#include <gtest/gtest.h>

#include <chrono>
#include <string>
#include <vector>

#include "host/hostile_service.h"

namespace korvixsdk::test {
namespace {

using std::chrono::milliseconds;

constexpr milliseconds kPause(50);

const Outcomes kTimedOut = FailsWithOneOf({CURLE_OPERATION_TIMEDOUT});

/// Drips on for an hour; the client goes long before.
Script Dripping(const std::string& start, const std::string& drop) {
  return Script().Send(start).SendForEver(drop, kPause);
}

HostileReply DrippingBody() {
  return {"a dripping body", {Dripping("HTTP/1.1 200 OK\r\n\r\n{", " ")}, kTimedOut};
}

HostileReply RedirectLoop() {
  const Script redirect = Script().Pause(kPause).Send(
      "HTTP/1.1 302 Found\r\nLocation: /again\r\nContent-Length: 0\r\nConnection: close\r\n\r\n");
  Outcomes outcomes = TooManyHeaders();
  outcomes.push_back(Outcome::Fails(CURLE_OPERATION_TIMEDOUT));
  outcomes.push_back(Outcome::Fails(CURLE_TOO_MANY_REDIRECTS));
  return {"redirects without an end", {redirect}, outcomes};
}

class Stopwatch {
 public:
  double seconds() const {
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start_).count();
  }

 private:
  const std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
};

using Expectation = void (HostOfHostileService::*)(const HostileReply&);

void ExpectWithin(double least, double most, Expectation expect, const HostileReply& reply) {
  HostOfHostileService host;
  const Stopwatch time;
  (host.*expect)(reply);
  EXPECT_GT(time.seconds(), least);
  EXPECT_LT(time.seconds(), most);
}

/// Around the limit of 20 seconds, for loaded machines.
void ExpectServiceLimit(Expectation expect, const HostileReply& reply) {
  ExpectWithin(15, 40, expect, reply);
}

/// Around the limit of 30 seconds.
void ExpectDownloadLimit(const HostileReply& reply) {
  ExpectWithin(25, 60, &HostOfHostileService::ExpectOfDownload, reply);
}

TEST(SlowReply, ToInstallReportThatDripsEndsAtTwentySeconds) {
  ExpectServiceLimit(&HostOfHostileService::ExpectOfInstallReport, DrippingBody());
}

TEST(SlowReply, ToUpdateCheckThatDripsEndsAtTwentySeconds) {
  ExpectServiceLimit(&HostOfHostileService::ExpectOfUpdateCheck, DrippingBody());
}

TEST(SlowReply, ToDownloadThatDripsEndsAtThirtySeconds) { ExpectDownloadLimit(DrippingBody()); }

TEST(SlowReply, OfInformationalStatusesEndsAtTwentySeconds) {
  ExpectServiceLimit(&HostOfHostileService::ExpectOfInstallReport,
                     {"100 after 100", {Dripping("", "HTTP/1.1 100 Wait\r\n\r\n")}, kTimedOut});
}

TEST(SlowReply, OfHeadersEndsAtTwentySeconds) {
  ExpectServiceLimit(
      &HostOfHostileService::ExpectOfUpdateCheck,
      {"header after header", {Dripping("HTTP/1.1 200 OK\r\n", "X: y\r\n")}, kTimedOut});
}

TEST(SlowReply, OfTrailersEndsAtThirtySeconds) {
  ExpectDownloadLimit(
      {"trailer after trailer",
       {Dripping("HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n0\r\n", "X: y\r\n")},
       kTimedOut});
}

TEST(SlowReply, OfOneChunkExtensionEndsAtTwentySeconds) {
  ExpectServiceLimit(&HostOfHostileService::ExpectOfInstallReport,
                     {"one long extension",
                      {Dripping("HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n5;", "x")},
                      kTimedOut});
}

TEST(SlowReply, ThatNeverComesEndsAtTwentySeconds) {
  ExpectServiceLimit(&HostOfHostileService::ExpectOfUpdateCheck,
                     {"silence", {Script().Pause(std::chrono::hours(1))}, kTimedOut});
}

// Newer versions of libcurl count redirects, or their headers, and end sooner.
TEST(SlowReply, OfServiceThatRedirectsInALoopEnds) {
  ExpectWithin(0, 40, &HostOfHostileService::ExpectOfUpdateCheck, RedirectLoop());
}

TEST(SlowReply, OfDownloadThatRedirectsInALoopEnds) {
  ExpectWithin(0, 60, &HostOfHostileService::ExpectOfDownload, RedirectLoop());
}

}  // namespace
}  // namespace korvixsdk::test
