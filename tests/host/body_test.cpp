#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "host/hostile_service.h"

namespace korvixsdk::test {
namespace {

using namespace std::string_literals;

constexpr std::size_t kTenMebibytes = std::size_t{10} << 20;
constexpr std::size_t kMillion = 1000000;

/// Sent as it is, and read as no install reply and as an update reply without an offer.
HostileReply NoReply(const std::string& what, const std::string& body) {
  return {what, {Script::Response(200, body)}, {Outcome::Body(body)}};
}

UpdateInfo Offered(const std::string& version) {
  UpdateInfo info = SoundUpdate();
  info.latest_version = version;
  return info;
}

TEST(HostileBody, IsNoReplyWhenOneCharacterTenMillionTimes) {
  HostOfHostileService host;
  for (const char character : {'[', '{', '"', '\\', '0', '\0', '\xff'}) {
    const std::string what = "10 MiB of " + std::to_string(character);
    host.Expect(NoReply(what, std::string(kTenMebibytes, character)));
  }
}

TEST(HostileBody, IsNoReplyWhenNestedAMillionTimes) {
  const std::string start = R"({"code":400,"allowed":true,"deep":)";
  const std::string opened(kMillion, '[');
  const std::string closed(kMillion, ']');
  const std::string objects = Repeated(R"({"deep":)", kMillion);
  ExpectAll({NoReply("arrays without an end", start + opened),
             NoReply("arrays", start + opened + closed + "}"),
             NoReply("objects without an end", objects),
             NoReply("objects", objects + "1" + std::string(kMillion, '}'))});
}

TEST(HostileBody, IsReadWithATextOfTenMebibytes) {
  ServerResult result = SoundInstall();
  result.message = std::string(kTenMebibytes, 'x');
  const std::string body =
      R"({"server_time":1700000000,"code":400,"allowed":true,"msg":")" + result.message + R"("})";
  ExpectAll(
      {{"a text of 10 MiB", {Script::Response(200, body)}, {Outcome::Body(body).ReadAs(result)}}});
}

TEST(HostileBody, IsReadBehindAMillionUnknownMembers) {
  const std::string body = "{" + Repeated(R"("x":1,)", kMillion) + kSoundBody.substr(1);
  ExpectAll({{"a million members",
              {Script::Response(200, body)},
              {Outcome::Body(body).ReadAs(SoundInstall()).ReadAs(SoundUpdate())}}});
}

TEST(HostileBody, IsNoInstallReplyWithAZeroByte) {
  HostOfHostileService host;
  for (std::size_t at = 0; at <= kSoundBody.size(); ++at) {
    std::string body = kSoundBody;
    body.insert(at, 1, '\0');
    host.ExpectOfInstallReport(NoReply("a zero byte at " + std::to_string(at), body));
  }
}

TEST(HostileBody, KeepsZeroBytesOfAnUpdateReplyInItsTexts) {
  const std::string body = "{\"version\":\"2.0\0.0\",\"code\":202,\"msg\":\"\0\"}"s;
  UpdateInfo info;
  info.latest_version = "2.0\0.0"s;
  info.message = "\0"s;
  ExpectAll(
      {{"zero bytes in texts", {Script::Response(200, body)}, {Outcome::Body(body).ReadAs(info)}}});
}

TEST(HostileBody, KeepsInvalidUtf8InItsTexts) {
  const std::string invalid = "\xc0\x80\xff\xfe\xed\xa0\x80\xf5";
  const std::string body = R"({"code":202,"allowed":false,"server_time":7,"msg":")" + invalid +
                           R"(","version":")" + invalid + R"("})";
  UpdateInfo info;
  info.latest_version = invalid;
  info.message = invalid;
  ExpectAll(
      {{"invalid UTF-8 in texts",
        {Script::Response(200, body)},
        {Outcome::Body(body).ReadAs(info).ReadAs(ServerResult{false, 202, invalid, false, 7})}}});
}

TEST(HostileBody, IsNoInstallReplyBesideInvalidUtf8) {
  HostOfHostileService host;
  for (const std::string bytes : {"\xef\xbb\xbf", "\xff\xfe", "\xc0", "\x80"}) {
    for (const std::string& body : {bytes + kSoundBody, kSoundBody + bytes}) {
      host.Expect({"invalid UTF-8 beside the object",
                   {Script::Response(200, body)},
                   {Outcome::Body(body).ReadAs(SoundUpdate())}});
    }
  }
}

TEST(HostileBody, IsNoInstallReplyWithNumbersOutOfRange) {
  HostOfHostileService host;
  const std::string many_digits(kMillion, '9');
  for (const std::string& code : {"2147483648"s, "-2147483649"s, many_digits}) {
    host.Expect(NoReply("a code out of range", "{\"code\":" + code + ",\"allowed\":true}"));
  }
  host.Expect(NoReply("a time out of range",
                      "{\"code\":400,\"allowed\":true,\"server_time\":" + many_digits + "}"));
}

TEST(HostileBody, OffersNoVersionThatIsOutOfRange) {
  HostOfHostileService host;
  for (const std::string& version : {"2147483648"s, "3."s + std::string(kMillion, '9')}) {
    const std::string body = R"({"version":")" + version + R"("})";
    UpdateInfo info;
    info.latest_version = version;
    host.Expect({"a version out of range",
                 {Script::Response(200, body)},
                 {Outcome::Body(body).ReadAs(info)}});
  }
}

TEST(HostileBody, OffersAVersionOfAMillionNumbers) {
  const std::string version = "1.5" + Repeated(".0", kMillion) + ".1";
  const std::string body = R"({"version":")" + version + R"("})";
  ExpectAll({{"a version of a million numbers",
              {Script::Response(200, body)},
              {Outcome::Body(body).ReadAs(Offered(version))}}});
}

}  // namespace
}  // namespace korvixsdk::test
