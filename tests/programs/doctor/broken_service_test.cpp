#include <gtest/gtest.h>
#include <korvixsdk/korvixsdk.h>
#include <korvixsdk/version.h>

#include <filesystem>
#include <functional>
#include <regex>
#include <string>
#include <utility>
#include <vector>

#include "doctor/checklist.h"
#include "doctor/doctor.h"
#include "programs/doctor/examination.h"

namespace korvixsdk::test {
namespace {

using doctor::AllCheckIds;
using doctor::kSomethingFailed;
using doctor::TitleOf;

struct BrokenService {
  const char* what;
  std::function<void(Service&, const std::string& address)> breaking;
  const char* id;
  const char* status;
  /// Part of the line's reason.
  const char* reason;
  bool fails;
};

Examination ExamineService(const std::function<void(Service&, const std::string&)>& breaking) {
  const TempFolder folder;
  ScriptedServer server(Script::Response(404, "nothing is played yet"));
  Service service(server.address());
  breaking(service, server.address());
  server.Play(service.scripts());
  return Examine(folder, server.address());
}

void ExpectFormOf(const Examination& examination) {
  const nlohmann::json& report = examination.report;
  EXPECT_EQ(report.size(), 6u);
  EXPECT_EQ(report.at("schema"), 1);
  EXPECT_TRUE(std::regex_match(report.at("time").get<std::string>(),
                               std::regex(R"(20\d\d-\d\d-\d\dT\d\d:\d\d:\d\dZ)")))
      << report.at("time");
  EXPECT_FALSE(report.at("system").get<std::string>().empty());
  EXPECT_EQ(report.at("status") == "fail", examination.exit_status == kSomethingFailed);
  std::vector<std::string> ids;
  for (const nlohmann::json& line : examination.lines) {
    ids.push_back(line.at("id"));
    EXPECT_EQ(line.size(), 6u);
    EXPECT_EQ(line.at("title"), TitleOf(ids.back()));
    EXPECT_FALSE(line.at("reason").get<std::string>().empty()) << line;
    const std::string status = line.at("status");
    EXPECT_EQ(line.at("remedy").get<std::string>().empty(),
              status == "pass" || status == "not tried")
        << line;
    EXPECT_TRUE(line.at("milliseconds").is_null() || line.at("milliseconds").is_number()) << line;
  }
  EXPECT_EQ(ids, AllCheckIds());
}

void ExpectFound(const std::vector<BrokenService>& services) {
  for (const BrokenService& broken : services) {
    SCOPED_TRACE(broken.what);
    const Examination examination = ExamineService(broken.breaking);
    ExpectFormOf(examination);
    EXPECT_EQ(examination.Status(broken.id), broken.status) << examination.Line(broken.id);
    EXPECT_NE(examination.Reason(broken.id).find(broken.reason), std::string::npos)
        << examination.Line(broken.id);
    EXPECT_EQ(examination.exit_status, broken.fails ? kSomethingFailed : 0);
  }
}

Script Plain(const std::string& body) { return Script::Response(200, body); }

Script Encoded(const std::string& body) {
  return Script::Response(200, body, "Content-Encoding: gzip\r\n");
}

TEST(Doctor, FindsNothingWrongWithAHealthyService) {
  const Examination examination = ExamineService([](Service&, const std::string&) {});
  ExpectFormOf(examination);
  EXPECT_EQ(examination.exit_status, 0);
  for (const nlohmann::json& line : examination.lines) {
    const std::string id = line.at("id");
    // What the machine itself has is not this test's.
    if (id.rfind("device-id.", 0) == 0 || id == "cache.space") continue;
    EXPECT_EQ(line.at("status"), id == "address.tls" ? "not tried" : "pass") << line;
  }
  EXPECT_EQ(examination.Reason("install.library"), "accepted with code 400: Welcome");
  EXPECT_EQ(examination.Reason("update.library"), "optional update from 1.4.0 to 2.0.0");
}

TEST(Doctor, TellsWhatItExamined) {
  const TempFolder folder;
  const Examination examination = Examine(folder, "mock://x", {"--package-url", "mock://y"});
  const nlohmann::json expected = {{"product", "editor"},
                                   {"version", "1.4.0"},
                                   {"server", "mock://x"},
                                   {"package_url", "mock://y"},
                                   {"cache", folder.Entry("cache")},
                                   {"fallback_id", folder.Entry("device-id")},
                                   {"library", KORVIXSDK_VERSION}};
  EXPECT_EQ(examination.report.at("subject"), expected);
}

TEST(Doctor, TimesWhatTakesTime) {
  const Examination examination = ExamineService([](Service&, const std::string&) {});
  for (const char* const id : {"address.name", "address.connection", "install.request",
                               "update.request", "package.request", "package.library"}) {
    EXPECT_TRUE(examination.Line(id).at("milliseconds").is_number()) << id;
  }
  EXPECT_TRUE(examination.Line("install.json").at("milliseconds").is_null());
}

TEST(Doctor, AsksAsTheLibraryDoes) {
  const TempFolder folder;
  ScriptedServer server(Script::Response(404, "nothing is played yet"));
  server.Play(Service(server.address()).scripts());
  Examine(folder, server.address() + "/");
  const std::vector<std::string> requests = server.requests();
  ASSERT_EQ(requests.size(), 6u);
  for (std::size_t pair = 0; pair < requests.size(); pair += 2) {
    EXPECT_EQ(requests[pair], requests[pair + 1]);
  }
}

TEST(Doctor, LeavesNoPackageBehind) {
  const TempFolder folder;
  ScriptedServer server(Script::Response(404, "nothing is played yet"));
  server.Play(Service(server.address()).scripts());
  EXPECT_EQ(Examine(folder, server.address()).Status("package.library"), "pass");
  for (const auto& entry : std::filesystem::recursive_directory_iterator(folder.path() / "cache")) {
    EXPECT_TRUE(entry.is_directory()) << entry.path();
  }
}

TEST(Doctor, FindsBrokenTransfersOfReplies) {
  ExpectFound({
      {"an install reply that is not there",
       [](Service& service, const std::string&) { service.install = Script::Response(404, "no"); },
       "install.request", "fail", "HTTP status 404", true},
      {"an install reply without a body",
       [](Service& service, const std::string&) { service.install = Plain(""); }, "install.request",
       "fail", "no body", true},
      {"an install reply that is compressed",
       [](Service& service, const std::string&) { service.install = Encoded("{}"); },
       "install.request", "fail", "Content-Encoding is gzip", true},
      {"an install reply that is cut off",
       [](Service& service, const std::string&) {
         service.install = Script().Send("HTTP/1.1 200 OK\r\nContent-Length: 99\r\n\r\n{");
       },
       "install.request", "fail", "Transferred a partial file", true},
      {"an update reply that is a failure of the server",
       [](Service& service, const std::string&) { service.update = Script::Response(500, "oops"); },
       "update.request", "fail", "HTTP status 500", true},
      {"the library meets the same failure",
       [](Service& service, const std::string&) { service.update = Script::Response(500, "oops"); },
       "update.library", "fail", "code 7: HTTP status is not successful: 500", true},
      {"no package is looked for without an update reply",
       [](Service& service, const std::string&) { service.update = Script::Response(500, "oops"); },
       "package.request", "not tried", "no package is offered", true},
  });
}

TEST(Doctor, FindsBrokenInstallReplies) {
  ExpectFound({
      {"a sign-in page",
       [](Service& service, const std::string&) { service.install = Plain("<html>sign in"); },
       "install.json", "fail", "no JSON", true},
      {"a member that is missing",
       [](Service& service, const std::string&) { service.install = Plain(R"({"code":400})"); },
       "install.members", "fail", "\"allowed\" is missing", true},
      {"the library refuses it too",
       [](Service& service, const std::string&) { service.install = Plain(R"({"code":400})"); },
       "install.library", "fail", "code 4: invalid JSON or install response schema", true},
      {"a contradiction",
       [](Service& service, const std::string&) {
         service.install = Plain(R"({"code":400,"allowed":false})");
       },
       "install.agreement", "fail", "400 accepts", true},
      {"a rejection",
       [](Service& service, const std::string&) {
         service.install = Plain(R"({"code":202,"allowed":false,"msg":"expired"})");
       },
       "install.answer", "warn", "code 202: expired", false},
      {"a number beyond the doctor's reader, but not the library's",
       [](Service& service, const std::string&) {
         service.install = Plain(R"({"code":400,"allowed":true,"x":1e999})");
       },
       "install.library", "pass", "accepted", false},
  });
}

TEST(Doctor, FindsBrokenUpdateReplies) {
  ExpectFound({
      {"a sign-in page",
       [](Service& service, const std::string&) { service.update = Plain("<html>sign in"); },
       "update.json", "fail", "no JSON", true},
      {"the library takes the page for no update",
       [](Service& service, const std::string&) { service.update = Plain("<html>sign in"); },
       "update.library", "pass", "no update for version 1.4.0", true},
      {"a list with a version in front",
       [](Service& service, const std::string& address) {
         const std::string reply = UpdateReply(address + "/editor.pkg");
         service.update = Plain(R"({"all":[{"version":"1.0"}],)" + reply.substr(1));
       },
       "update.lookup", "fail", "read as \"1.0\" instead of \"2.0.0\"", true},
      {"an escaped address",
       [](Service& service, const std::string&) {
         service.update = Plain(R"({"version":"1.0","download_url":"http:\u002f\u002fh/p"})");
       },
       "update.escapes", "fail", "\"download_url\" holds", true},
      {"a version that is a number",
       [](Service& service, const std::string&) { service.update = Plain(R"({"version":1.0})"); },
       "update.types", "warn", "the number 1.0", true},
      {"an offer without a digest",
       [](Service& service, const std::string& address) {
         service.update =
             Plain(R"({"version":"2.0.0","download_url":")" + address + R"(/editor.pkg"})");
       },
       "update.digest", "warn", "no digest", false},
      {"a mandatory version that is older",
       [](Service& service, const std::string& address) {
         service.update = Plain(R"({"force_update":true,)" +
                                UpdateReply(address + "/editor.pkg", "1.3.0").substr(1));
       },
       "update.decision", "fail", "older than the host's 1.4.0", true},
      {"a version below the minimum, which hosts take again and again",
       [](Service& service, const std::string& address) {
         service.update = Plain(R"({"min_supported_version":"1.5.0",)" +
                                UpdateReply(address + "/editor.pkg", "1.4.0").substr(1));
       },
       "update.decision", "fail", "without end", true},
      {"nothing to offer",
       [](Service& service, const std::string&) { service.update = Plain(R"({"code":400})"); },
       "update.answer", "pass", "nothing is offered", false},
      {"a rejection",
       [](Service& service, const std::string&) {
         service.update = Plain(R"({"code":403,"msg":"expired"})");
       },
       "update.library", "pass", "the service says: expired", false},
  });
}

TEST(Doctor, FindsBrokenPackages) {
  ExpectFound({
      {"a package that is not there",
       [](Service& service, const std::string&) { service.package = Script::Response(403, "no"); },
       "package.request", "fail", "HTTP status 403", true},
      {"another package",
       [](Service& service, const std::string&) { service.package = Plain("older bytes"); },
       "package.digest", "fail", "announced is 25967fb5", true},
      {"the library refuses it too",
       [](Service& service, const std::string&) { service.package = Plain("older bytes"); },
       "package.library", "fail", "code 5: Downloaded update package sha256 mismatch", true},
      {"a package without a length",
       [](Service& service, const std::string&) {
         service.package = Script().Send("HTTP/1.1 200 OK\r\n\r\n" + kPackage);
       },
       "package.length", "warn", "not announced", false},
      {"a name that Windows takes for a device",
       [](Service& service, const std::string& address) {
         service.update = Plain(UpdateReply(address + "/nul.pkg"));
       },
       "package.name", "fail", "a device", true},
      {"the library is kept from such a name",
       [](Service& service, const std::string& address) {
         service.update = Plain(UpdateReply(address + "/..\\..\\x"));
       },
       "package.library", "not tried", "may do harm", true},
      {"a file's address",
       [](Service& service, const std::string&) {
         service.update = Plain(UpdateReply("file:///etc/hostname"));
       },
       "package.address", "fail", "file:", true},
      {"an address without a scheme",
       [](Service& service, const std::string&) { service.update = Plain(UpdateReply("/x.pkg")); },
       "package.request", "not tried", "no package's", true},
  });
}

TEST(Doctor, FindsAServiceThatAnswersOtherwiseTheSecondTime) {
  const TempFolder folder;
  ScriptedServer server(Script::Response(404, "nothing is played yet"));
  std::vector<Script> scripts = Service(server.address()).scripts();
  scripts[2] = scripts[1];
  scripts[1] = Plain("{}");
  scripts[4] = Plain(UpdateReply(server.address() + "/editor.pkg", "3.0.0"));
  server.Play(scripts);
  const Examination examination = Examine(folder, server.address());
  EXPECT_EQ(examination.Status("install.library"), "warn");
  EXPECT_EQ(examination.Status("update.library"), "warn");
  EXPECT_NE(examination.Reason("update.library").find("another \"version\""), std::string::npos);
}

TEST(Doctor, TellsOfRedirects) {
  const TempFolder folder;
  ScriptedServer server(Script::Response(404, "nothing is played yet"));
  std::vector<Script> scripts = Service(server.address()).scripts();
  scripts.insert(scripts.begin() + 1, Script::Redirect(server.address() + "/moved"));
  server.Play(scripts);
  const Examination examination = Examine(folder, server.address());
  EXPECT_EQ(examination.Status("install.request"), "warn");
  EXPECT_NE(examination.Reason("install.request").find("/moved"), std::string::npos);
  EXPECT_EQ(examination.exit_status, 0);
}

/// The steps of a service that cannot be reached: `failed` fails, and nothing behind it is tried.
void ExpectUnreachable(const std::string& address, const std::string& failed) {
  SCOPED_TRACE(address);
  const TempFolder folder;
  const Examination examination = Examine(folder, address);
  ExpectFormOf(examination);
  EXPECT_EQ(examination.exit_status, kSomethingFailed);
  EXPECT_EQ(examination.Status(failed), "fail") << examination.lines;
  bool behind = false;
  for (const nlohmann::json& line : examination.lines) {
    if (behind) {
      EXPECT_EQ(line.at("status"), "not tried") << line;
    }
    behind = behind || line.at("id") == failed;
  }
}

TEST(Doctor, NamesTheFirstStepThatFails) {
  // No name server is asked about a name with so long a part.
  ExpectUnreachable("http://" + std::string(64, 'x') + ".invalid", "address.name");
  ExpectUnreachable("http://127.0.0.1:" + std::to_string(UnusedPort()), "address.connection");
  const ScriptedServer without_tls(Script().Send("no handshake").WithoutReading());
  ExpectUnreachable("https" + without_tls.address().substr(4), "address.tls");
  ExpectUnreachable("updates.example.com", "address.form");
  ExpectUnreachable("ftp://127.0.0.1/", "address.form");
}

TEST(Doctor, SaysWhatItDoesNotTryWithTheMockServer) {
  const TempFolder folder;
  const Examination examination = Examine(folder, "mock://service");
  ExpectFormOf(examination);
  EXPECT_EQ(examination.exit_status, 0);
  for (const char* const id :
       {"address.name", "address.connection", "address.tls", "install.json", "update.lookup"}) {
    EXPECT_EQ(examination.Reason(id), "mock:// is answered inside the library");
    EXPECT_EQ(examination.Status(id), "not tried");
  }
  EXPECT_EQ(examination.Status("install.library"), "pass");
  EXPECT_EQ(examination.Reason("update.library"), "optional update from 1.4.0 to 9.9.9");
  EXPECT_NE(examination.Reason("package.request").find("an example"), std::string::npos);
}

TEST(Doctor, ExaminesTheMockServersOutcomes) {
  const TempFolder folder;
  Examination examination = Examine(folder, "mock://x", {"--package-url", "mock://package-ok"});
  EXPECT_EQ(examination.exit_status, 0);
  EXPECT_EQ(examination.Status("package.library"), "pass");
  examination = Examine(folder, "mock://x", {"--package-url", "mock://package-alt"});
  EXPECT_EQ(examination.exit_status, kSomethingFailed);
  EXPECT_EQ(examination.Status("package.library"), "fail");
  examination = Examine(folder, "mock://offline");
  EXPECT_EQ(examination.exit_status, kSomethingFailed);
  EXPECT_EQ(examination.Status("install.library"), "fail");
  EXPECT_EQ(examination.Status("update.library"), "fail");
}

TEST(Doctor, FindsACacheFolderThatCannotBeMade) {
  const TempFolder folder;
  WriteBytes(folder.path() / "cache", "a file in the way");
  const Examination examination = Examine(folder, "mock://service");
  ExpectFormOf(examination);
  EXPECT_EQ(examination.exit_status, kSomethingFailed);
  EXPECT_EQ(examination.Status("cache.folder"), "fail");
  EXPECT_EQ(examination.Status("cache.writable"), "not tried");
  EXPECT_EQ(examination.Status("library.init"), "fail");
  EXPECT_EQ(examination.Status("install.library"), "not tried");
}

TEST(Doctor, FindsAFolderThatTakesNoFiles) {
  const TempFolder folder;
  std::filesystem::create_directory(folder.path() / "cache");
  WriteBytes(folder.path() / "cache" / "updates", "a file in the way");
  const Examination examination = Examine(folder, "mock://service");
  EXPECT_EQ(examination.Status("cache.folder"), "pass");
  EXPECT_EQ(examination.Status("cache.writable"), "fail");
}

}  // namespace
}  // namespace korvixsdk::test
