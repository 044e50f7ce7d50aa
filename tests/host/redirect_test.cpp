#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "host/hostile_service.h"

namespace korvixsdk::test {
namespace {

using namespace std::string_literals;

HostileReply To(const std::string& location, const Outcomes& outcomes) {
  return {"a redirect to " + location.substr(0, 60), {Script::Redirect(location)}, outcomes};
}

const Outcomes kMalformed = FailsWithOneOf({CURLE_URL_MALFORMAT});

TEST(HostileRedirect, NeverReachesAnotherScheme) {
  HostOfHostileService host;
  const std::string closed = "://127.0.0.1:" + std::to_string(UnusedPort()) + "/";
  const Outcomes outcomes = FailsWithOneOf({CURLE_UNSUPPORTED_PROTOCOL});
  for (const std::string scheme : {"gopher", "dict", "telnet", "ldap", "smb", "tftp", "ws"}) {
    host.Expect(To(scheme + closed, outcomes));
  }
  for (const std::string location :
       {"mock://package-ok", "mock://service", "data:text/plain,x", "javascript:x"}) {
    host.Expect(To(location, outcomes));
  }
}

TEST(HostileRedirect, NeverReadsAFile) {
  HostOfHostileService host;
  const std::filesystem::path file = host.folder().path() / "secret.json";
  WriteBytes(file, kSoundBody);
  std::string path = file.generic_string();
  if (path.front() != '/') path.insert(0, 1, '/');
  const Outcomes outcomes = FailsWithOneOf({CURLE_UNSUPPORTED_PROTOCOL, CURLE_URL_MALFORMAT});
  for (const std::string scheme : {"file://", "FILE://", "file:", "file://localhost"}) {
    host.Expect(To(scheme + path, outcomes));
  }
}

// Where libcurl can FTP it follows there, and meets nobody.
TEST(HostileRedirect, FailsAtAClosedPortOfFtp) {
  const std::string closed = "://127.0.0.1:" + std::to_string(UnusedPort()) + "/package";
  ExpectAll(
      {To("ftp" + closed, FailsWithOneOf({CURLE_COULDNT_CONNECT, CURLE_UNSUPPORTED_PROTOCOL}))});
}

TEST(HostileRedirect, FailsAtAClosedPort) {
  const std::string closed = "://127.0.0.1:" + std::to_string(UnusedPort()) + "/";
  ExpectAll({To("http" + closed, FailsWithOneOf({CURLE_COULDNT_CONNECT}))});
}

TEST(HostileRedirect, FailsWithALocationThatIsNone) {
  HostOfHostileService host;
  for (const std::string& location :
       {"http://"s, "http:///"s, "http://["s, "http://a b/"s, "http://127.0.0.1:65536/"s,
        "http://127.0.0.1:-1/"s, "http://127.0.0.1:port/"s, "//"s, "http://" + Repeated("@", 1000),
        "http://" + std::string(70000, 'a') + "/"}) {
    host.Expect(To(location, kMalformed));
  }
}

TEST(HostileRedirect, FailsWithItsStatusWithoutLocation) {
  HostOfHostileService host;
  for (const int status : {300, 301, 302, 303, 304, 307, 308, 399}) {
    host.Expect({"no Location with " + std::to_string(status),
                 {Script::Response(status, kSoundBody)},
                 {Outcome::Status(status)}});
  }
  host.Expect(To("", {Outcome::Status(302)}));
  host.Expect(To(" \t ", {Outcome::Status(302)}));
}

TEST(HostileRedirect, CountsTheFirstOfSeveralLocations) {
  const Script script =
      Script::Response(302, "elsewhere", "Location: dict://127.0.0.1/\r\nLocation: /elsewhere\r\n");
  ExpectAll({{"two locations", {script}, FailsWithOneOf({CURLE_UNSUPPORTED_PROTOCOL})}});
}

TEST(HostileRedirect, IsNoneBesideASuccess) {
  HostOfHostileService host;
  for (const int status : {200, 201, 299}) {
    host.Expect({"a location beside " + std::to_string(status),
                 {Script::Response(status, kSoundBody, "Location: file:///etc/passwd\r\n")},
                 {Outcome::Sound()}});
  }
}

TEST(HostileRedirect, IsFollowedTwentyTimes) {
  std::vector<Script> scripts(20, Script::Redirect("/again"));
  scripts.push_back(Script::Response(200, kSoundBody));
  ExpectAll({{"twenty redirects", scripts, {Outcome::Sound()}}});
}

TEST(HostileRedirect, DropsItsOwnBody) {
  const Script redirect = Script::Response(302, std::string(1 << 20, '{'), "Location: /on\r\n");
  ExpectAll({{"a redirect with a large body",
              {redirect, Script::Response(200, kSoundBody)},
              {Outcome::Sound()}}});
}

}  // namespace
}  // namespace korvixsdk::test
