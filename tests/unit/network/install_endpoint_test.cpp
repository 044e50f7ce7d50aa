#include "network/install_endpoint.h"

#include <curl/curl.h>
#include <gtest/gtest.h>

#include <chrono>
#include <string>

#include "network/default_network_client.h"
#include "support/record_equality.h"
#include "support/scripted_server.h"

namespace korvixsdk::test {
namespace {

const Error kBadReply{kInvalidResponse, "invalid JSON or install response schema"};

std::int64_t NowSeconds() {
  return std::chrono::duration_cast<std::chrono::seconds>(
             std::chrono::system_clock::now().time_since_epoch())
      .count();
}

Result<ServerResult> Report(const std::string& server_base_url) {
  DefaultNetworkClient client;
  client.server_base_url = server_base_url;
  return client.ReportInstall("editor", "device-1", "1.5");
}

Result<ServerResult> ReportTo(const Script& script) {
  return Report(ScriptedServer(script).address());
}

void ExpectReply(const std::string& body, const ServerResult& expected) {
  const Result<ServerResult> result = ReadInstallReply(body);
  EXPECT_EQ(result.error, Error{}) << body;
  EXPECT_EQ(result.value, expected) << body;
}

void ExpectBadReply(const std::string& body) {
  const Result<ServerResult> result = ReadInstallReply(body);
  EXPECT_EQ(result.error, kBadReply) << body;
  EXPECT_EQ(result.value, ServerResult{}) << body;
}

void ExpectFailure(const Result<ServerResult>& result, const Error& error) {
  EXPECT_EQ(result.error, error);
  EXPECT_EQ(result.value, ServerResult{});
}

TEST(InstallReply, HoldsEveryMemberOfTheBody) {
  ExpectReply(
      R"({"code":400,"allowed":true,"success":true,"msg":"welcome","server_time":1700000000})",
      {true, 400, "welcome", true, 1700000000});
}

TEST(InstallReply, TakesTheLocalClockForAMissingServerTime) {
  const std::int64_t before = NowSeconds();
  const Result<ServerResult> result = ReadInstallReply(R"({"code":400,"allowed":true})");
  EXPECT_EQ(result.error, Error{});
  EXPECT_GE(result.value.server_time, before);
  EXPECT_LE(result.value.server_time, NowSeconds());
}

TEST(InstallReply, KeepsAServerTimeOfZeroOrLess) {
  ExpectReply(R"({"code":400,"allowed":true,"server_time":0})", {true, 400, "Success", true, 0});
  ExpectReply(R"({"code":400,"allowed":true,"server_time":-5})", {true, 400, "Success", true, -5});
}

TEST(InstallReply, IsASuccessWithCodeAndAllowedAlone) {
  ExpectReply(R"({"code":400,"allowed":true,"server_time":1})", {true, 400, "Success", true, 1});
}

TEST(InstallReply, TakesTheSecondAcceptingCode) {
  ExpectReply(R"({"code":401,"allowed":true,"success":true,"msg":"again","server_time":1})",
              {true, 401, "again", true, 1});
  ExpectReply(R"({"code":401,"allowed":true,"server_time":1})", {true, 401, "Success", true, 1});
}

TEST(InstallReply, IsASuccessfulCallWhenTheServiceRejects) {
  ExpectReply(R"({"code":202,"allowed":false,"server_time":1})",
              {false, 202, "Server rejected install tracking request", false, 1});
  ExpectReply(R"({"code":202,"allowed":false,"success":false,"server_time":1})",
              {false, 202, "Server rejected install tracking request", false, 1});
}

TEST(InstallReply, KeepsTheTextOfARejection) {
  ExpectReply(R"({"code":403,"allowed":false,"msg":"no licence","server_time":1})",
              {false, 403, "no licence", false, 1});
}

TEST(InstallReply, TakesTheDefaultTextForAnEmptyOne) {
  ExpectReply(R"({"code":400,"allowed":true,"msg":"","server_time":1})",
              {true, 400, "Success", true, 1});
  ExpectReply(R"({"code":0,"allowed":false,"msg":"","server_time":1})",
              {false, 0, "Server rejected install tracking request", false, 1});
}

// The codes are the service's own; HTTP's success is one of its rejections.
TEST(InstallReply, IsARejectionWithEveryOtherCode) {
  for (const int code : {200, 201, 204, 399, 402, 404, 500, 0, -1, -400, 2147483647}) {
    ExpectReply(R"({"allowed":false,"server_time":1,"code":)" + std::to_string(code) + "}",
                {false, code, "Server rejected install tracking request", false, 1});
  }
}

TEST(InstallReply, IsBadWhenAllowedAndCodeDisagree) {
  ExpectBadReply(R"({"code":400,"allowed":false})");
  ExpectBadReply(R"({"code":401,"allowed":false})");
  ExpectBadReply(R"({"code":202,"allowed":true})");
  ExpectBadReply(R"({"code":200,"allowed":true})");
  ExpectBadReply(R"({"code":399,"allowed":true})");
  ExpectBadReply(R"({"code":402,"allowed":true})");
  ExpectBadReply(R"({"code":400,"allowed":false,"success":false})");
}

TEST(InstallReply, IsBadWhenSuccessAndAllowedDisagree) {
  ExpectBadReply(R"({"code":400,"allowed":true,"success":false})");
  ExpectBadReply(R"({"code":401,"allowed":true,"success":false})");
  ExpectBadReply(R"({"code":202,"allowed":false,"success":true})");
}

TEST(InstallReply, IsBadWithoutAllowed) {
  ExpectBadReply(R"({"code":400,"success":true})");
  ExpectBadReply(R"({"code":202,"success":false})");
}

TEST(InstallReply, IsBadWithoutCode) {
  ExpectBadReply(R"({"allowed":true,"success":true})");
  ExpectBadReply(R"({"allowed":false})");
}

TEST(InstallReply, IsBadWhenTheMembersAreNested) {
  ExpectBadReply(R"({"data":{"code":400,"allowed":true}})");
}

TEST(InstallReply, IsBadWhenTheBodyIsNoObject) {
  for (const char* const body : {"[]", "{}", "null", "400", "plain text", "<html></html>", "\"\"",
                                 R"([{"code":400,"allowed":true}])"}) {
    ExpectBadReply(body);
  }
}

TEST(InstallReply, IsBadWhenTheBodyIsNotComplete) {
  ExpectBadReply(R"({"code":400,"allowed":true)");
  ExpectBadReply(R"({"code":400,"allowed":true}{})");
  ExpectBadReply(R"({"code":400,"allowed":true,})");
}

TEST(InstallReply, IsBadWithAMemberOfTheWrongForm) {
  ExpectBadReply(R"({"code":"400","allowed":true})");
  ExpectBadReply(R"({"code":400.0,"allowed":true})");
  ExpectBadReply(R"({"code":400,"allowed":1})");
  ExpectBadReply(R"({"code":400,"allowed":"true"})");
  ExpectBadReply(R"({"code":400,"allowed":true,"success":"true"})");
  ExpectBadReply(R"({"code":400,"allowed":true,"msg":null})");
  ExpectBadReply(R"({"code":400,"allowed":true,"server_time":"1700000000"})");
}

TEST(InstallReply, IsBadWithAMemberGivenTwice) {
  ExpectBadReply(R"({"code":400,"allowed":true,"code":400})");
  ExpectBadReply(R"({"code":400,"allowed":true,"allowed":true})");
}

TEST(InstallReply, SkipsOtherMembers) {
  ExpectReply(R"({"id":[1,{"code":5}],"code":400,"allowed":true,"server_time":1,"x":null})",
              {true, 400, "Success", true, 1});
}

TEST(InstallReport, SendsItsParametersInTheirOrder) {
  const ScriptedServer server(Script::Response(200, R"({"code":400,"allowed":true})"));
  EXPECT_TRUE(Report(server.address()).value.success);
  const std::string host = server.address().substr(std::string("http://").size());
  ASSERT_EQ(server.requests().size(), 1u);
  EXPECT_EQ(server.requests()[0],
            "GET /API/v2/sdk/install/?product_id=editor&device_id=device-1&version=1.5 HTTP/1.1\r\n"
            "Host: " +
                host +
                "\r\n"
                "Accept: */*\r\n"
                "\r\n");
}

TEST(InstallReport, EncodesItsParameters) {
  const ScriptedServer server(Script::Response(200, R"({"code":400,"allowed":true})"));
  EXPECT_TRUE(SendInstallReport(server.address() + "/app/", "a&b", "c d=\xC3\xA9", "1+2/%").ok());
  ASSERT_EQ(server.requests().size(), 1u);
  EXPECT_EQ(RequestLine(server.requests()[0]),
            "GET /app/API/v2/sdk/install/?product_id=a%26b&device_id=c%20d%3D%C3%A9"
            "&version=1%2B2%2F%25 HTTP/1.1");
}

TEST(InstallReport, SendsEmptyArgumentsAsEmptyValues) {
  const ScriptedServer server(Script::Response(200, R"({"code":400,"allowed":true})"));
  EXPECT_TRUE(SendInstallReport(server.address(), "", "", "").ok());
  ASSERT_EQ(server.requests().size(), 1u);
  EXPECT_EQ(RequestLine(server.requests()[0]),
            "GET /API/v2/sdk/install/?product_id=&device_id=&version= HTTP/1.1");
}

TEST(InstallReport, ReturnsTheServicesAnswer) {
  const Result<ServerResult> result = ReportTo(
      Script::Response(200, R"({"code":401,"allowed":true,"msg":"again","server_time":9})"));
  EXPECT_EQ(result.error, Error{});
  EXPECT_EQ(result.value, (ServerResult{true, 401, "again", true, 9}));
}

TEST(InstallReport, FailsWithAnAnswerThatIsNoReply) {
  ExpectFailure(ReportTo(Script::Response(200, "{}")), kBadReply);
}

TEST(InstallReport, FailsWithoutABaseAddress) {
  ExpectFailure(Report(""),
                Error{kNetworkError, "Network client is not configured with server_base_url"});
}

TEST(InstallReport, FailsWithAnHttpStatusWhateverTheBodySays) {
  ExpectFailure(ReportTo(Script::Response(404, R"({"code":400,"allowed":true})")),
                Error{kNetworkError, "HTTP status is not successful: 404"});
}

TEST(InstallReport, FailsWithAnEmptyBodyBeforeItIsRead) {
  ExpectFailure(ReportTo(Script::Response(200, "")),
                Error{kInvalidResponse, "HTTP response body is empty"});
}

TEST(InstallReport, PassesTheTransportsFailureUnchanged) {
  ExpectFailure(ReportTo(Script()),
                Error{kNetworkError, std::string("HTTP request failed: ") +
                                         curl_easy_strerror(CURLE_GOT_NOTHING)});
}

TEST(InstallReport, HandsAMockAddressInCapitalsToLibcurl) {
  ExpectFailure(Report("MOCK://service"),
                Error{kNetworkError, std::string("HTTP request failed: ") +
                                         curl_easy_strerror(CURLE_UNSUPPORTED_PROTOCOL)});
}

TEST(InstallReport, AsksTheMockServerForAMockAddress) {
  EXPECT_EQ(Report("mock://reject").value.message, "Mock server rejected install tracking request");
}

TEST(InstallReport, RetriesNothing) {
  const ScriptedServer server(
      {Script::Response(503, "busy"), Script::Response(200, R"({"code":400,"allowed":true})")});
  EXPECT_FALSE(Report(server.address()).ok());
  EXPECT_EQ(server.requests().size(), 1u);
}

}  // namespace
}  // namespace korvixsdk::test
