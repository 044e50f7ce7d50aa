#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "host/hostile_service.h"

namespace korvixsdk::test {
namespace {

using namespace std::string_literals;

HostileReply Chunked(const std::string& what, const std::string& bytes, const Outcomes& outcomes) {
  return {what, {Reply("Transfer-Encoding: chunked\r\n", bytes)}, outcomes};
}

const std::string kWhole = Chunk(kSoundBody);
const Outcomes kSound = {Outcome::Sound()};
const Outcomes kBadChunk = FailsWithOneOf({CURLE_RECV_ERROR, CURLE_BAD_FUNCTION_ARGUMENT});
const Outcomes kPartial = FailsWithOneOf({CURLE_PARTIAL_FILE});

TEST(HostileChunks, AreTakenOneByteAtATime) {
  std::string chunks;
  for (const char byte : kSoundBody) chunks += Chunk(std::string(1, byte));
  ExpectAll({Chunked("chunks of one byte", chunks + "0\r\n\r\n", kSound)});
}

TEST(HostileChunks, FailWithASizeThatIsNone) {
  HostOfHostileService host;
  for (const std::string size : {"zz", "", "-5", "+5", " 5", "5 5", "0x56", "\xff"}) {
    host.Expect(Chunked("size " + size, size + "\r\n" + kSoundBody + "\r\n0\r\n\r\n", kBadChunk));
  }
}

TEST(HostileChunks, FailWithASizeBeyondSixtyFourBits) {
  HostOfHostileService host;
  for (const std::string& size : {"8000000000000000"s, "FFFFFFFFFFFFFFFF"s, "10000000000000000"s,
                                  std::string(1000, '1'), std::string(1000, '0') + "1"}) {
    host.Expect(Chunked("size " + size, size + "\r\n" + kSoundBody + "\r\n0\r\n\r\n", kBadChunk));
  }
}

TEST(HostileChunks, FailWithASizeThatIsTooLarge) {
  HostOfHostileService host;
  for (const std::string size : {"57", "40000000", "7FFFFFFFFFFFFFFF"}) {
    host.Expect(Chunked("size " + size, size + "\r\n" + kSoundBody, kPartial));
  }
}

TEST(HostileChunks, FailWithASizeThatIsTooSmall) {
  ExpectAll({Chunked("a small size", "5\r\n" + kSoundBody + "\r\n0\r\n\r\n", kBadChunk),
             Chunked("no line end", "5\r\nhelloX5\r\nhello\r\n0\r\n\r\n", kBadChunk),
             Chunked("no chunks at all", kSoundBody, kBadChunk)});
}

TEST(HostileChunks, FailWithoutAnEnd) {
  ExpectAll({Chunked("no last chunk", kWhole, kPartial),
             Chunked("half a last chunk", kWhole + "0", kPartial),
             Chunked("no end behind the last chunk", kWhole + "0\r\n", kPartial),
             Chunked("nothing", "", kPartial)});
}

TEST(HostileChunks, AreAnEmptyBodyWhenThereIsOnlyTheLast) {
  ExpectAll({Chunked("no chunk", "0\r\n\r\n", {Outcome::Body("")})});
}

TEST(HostileChunks, AreTakenWithExtensions) {
  HostOfHostileService host;
  for (const std::string& extension : {";a=b"s, ";\0\xff"s, ";" + std::string(10000, 'x')}) {
    host.Expect(Chunked("an extension", Chunk(kSoundBody, extension) + "0\r\n\r\n", kSound));
  }
}

TEST(HostileChunks, AreTakenWithAThousandTrailers) {
  ExpectAll({Chunked("trailers", kWhole + "0\r\n" + Repeated("X: y\r\n", 1000) + "\r\n", kSound)});
}

TEST(HostileChunks, FailWithATrailerThatIsNone) {
  Outcomes too_long = LineTooLong();
  too_long.push_back(Outcome::Fails(CURLE_RECV_ERROR));
  ExpectAll({Chunked("a trailer with a zero byte", kWhole + "0\r\nX: \0\r\n\r\n"s,
                     FailsWithOneOf({CURLE_BAD_FUNCTION_ARGUMENT, CURLE_WEIRD_SERVER_REPLY})),
             Chunked("a trailer of a megabyte",
                     kWhole + "0\r\nX: " + std::string(1 << 20, 'x') + "\r\n\r\n", too_long)});
}

TEST(HostileChunks, KeepASecondReplyOut) {
  ExpectAll({Chunked("a second reply", kWhole + "0\r\n\r\nHTTP/1.1 500 Second\r\n\r\n", kSound)});
}

}  // namespace
}  // namespace korvixsdk::test
