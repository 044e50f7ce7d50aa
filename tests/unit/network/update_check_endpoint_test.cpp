#include "network/update_check_endpoint.h"

#include <curl/curl.h>
#include <gtest/gtest.h>

#include <string>

#include "network/default_network_client.h"
#include "support/record_equality.h"
#include "support/scripted_server.h"

namespace korvixsdk::test {
namespace {

Result<UpdateInfo> Check(const std::string& server_base_url) {
  DefaultNetworkClient client;
  client.server_base_url = server_base_url;
  return client.CheckForUpdate({"editor", "1.5", "device-1"});
}

Result<UpdateInfo> CheckAt(const Script& script) { return Check(ScriptedServer(script).address()); }

void ExpectFailure(const Result<UpdateInfo>& result, const Error& error) {
  EXPECT_EQ(result.error, error);
  EXPECT_EQ(result.value, UpdateInfo{});
}

bool Forced(const std::string& value) {
  return ReadUpdateReply(R"({"force_update":)" + value + "}").force_update;
}

/// The message of a reply with `members` and a text of the service's own.
std::string MessageOf(const std::string& members) {
  return ReadUpdateReply("{" + members + R"("msg":"text"})").message;
}

TEST(UpdateReply, HoldsEveryMemberOfTheBody) {
  const UpdateInfo expected{true,  true,     "2.0.0", "1.0.0", "2026-01-20", "faster\nnicer",
                            "url", "digest", ""};
  EXPECT_EQ(ReadUpdateReply(R"({"code":400,"force_update":true,"version":"2.0.0",)"
                            R"("min_supported_version":"1.0.0","publish_time":"2026-01-20",)"
                            R"("update_content":"faster\nnicer","download_url":"url",)"
                            R"("sha256":"digest"})"),
            expected);
}

TEST(UpdateReply, OffersAVersionWithCode400) {
  const UpdateInfo info = ReadUpdateReply(R"({"code":400,"version":"2.0.0","force_update":true})");
  EXPECT_TRUE(info.has_update);
  EXPECT_TRUE(info.force_update);
  EXPECT_EQ(info.latest_version, "2.0.0");
  EXPECT_EQ(info.message, "");
}

TEST(UpdateReply, OffersAVersionWithoutACode) {
  EXPECT_TRUE(ReadUpdateReply(R"({"version":"2.0.0"})").has_update);
}

TEST(UpdateReply, OffersAVersionWithACodeThatIsNoInteger) {
  for (const char* const code : {"null", "\"\"", "-1", "4e2", "403.0", "2147483648", "\"four\""}) {
    const UpdateInfo info =
        ReadUpdateReply(R"({"version":"2.0.0","msg":"text","code":)" + std::string(code) + "}");
    EXPECT_TRUE(info.has_update) << code;
    EXPECT_EQ(info.message, "") << code;
  }
}

TEST(UpdateReply, OffersNothingWithoutAVersion) {
  EXPECT_EQ(ReadUpdateReply(R"({"code":400})"), UpdateInfo{});
  EXPECT_FALSE(ReadUpdateReply(R"({"code":400,"version":""})").has_update);
}

TEST(UpdateReply, OffersAVersionWhateverTheBodySaysOfHasUpdate) {
  EXPECT_TRUE(ReadUpdateReply(R"({"has_update":false,"version":"2.0.0"})").has_update);
  EXPECT_FALSE(ReadUpdateReply(R"({"has_update":true})").has_update);
}

TEST(UpdateReply, DropsTheMessageBesideAnOffer) {
  EXPECT_EQ(MessageOf(R"("code":400,"version":"2.0.0",)"), "");
  EXPECT_EQ(MessageOf(R"("code":"400",)"), "");
  EXPECT_EQ(MessageOf(""), "");
}

TEST(UpdateReply, KeepsTheMessageOfARejection) {
  for (const char* const code : {"403", "401", "200", "0", "399", "\"403\"", " 403 "}) {
    EXPECT_EQ(MessageOf("\"code\":" + std::string(code) + ","), "text") << code;
  }
}

TEST(UpdateReply, TakesTheDefaultMessageForARejectionWithoutOne) {
  EXPECT_EQ(ReadUpdateReply(R"({"code":403})").message, "Server rejected update request");
  EXPECT_EQ(ReadUpdateReply(R"({"code":403,"msg":""})").message, "Server rejected update request");
}

TEST(UpdateReply, KeepsEveryOtherFieldOfARejection) {
  const UpdateInfo expected{false,   true,     "2.0.0",
                            "1.0.0", "today",  "new",
                            "url",   "digest", "Server rejected update request"};
  EXPECT_EQ(ReadUpdateReply(R"({"code":403,"force_update":1,"version":"2.0.0",)"
                            R"("min_supported_version":"1.0.0","publish_time":"today",)"
                            R"("update_content":"new","download_url":"url","sha256":"digest"})"),
            expected);
}

TEST(UpdateReply, IsForcedByTrueOrOne) {
  for (const char* const value :
       {"true", "1", "\"true\"", "\"1\"", "\" true \"", "\"\\ttrue\\n\"", " true "}) {
    EXPECT_TRUE(Forced(value)) << value;
  }
}

TEST(UpdateReply, IsForcedByNothingElse) {
  for (const char* const value : {"false", "0", "TRUE", "True", "\"True\"", "\"yes\"", "yes",
                                  "null", "2", "\"\"", "[true]", "1.0"}) {
    EXPECT_FALSE(Forced(value)) << value;
  }
  EXPECT_FALSE(ReadUpdateReply("{}").force_update);
}

TEST(UpdateReply, IsEmptyForABodyThatIsNoJson) {
  EXPECT_EQ(ReadUpdateReply("plain text"), UpdateInfo{});
  EXPECT_EQ(ReadUpdateReply("<html>version: 2</html>"), UpdateInfo{});
  EXPECT_EQ(ReadUpdateReply(""), UpdateInfo{});
  EXPECT_EQ(ReadUpdateReply("[]"), UpdateInfo{});
}

TEST(UpdateReply, TakesTheFirstOccurrenceAtAnyDepth) {
  EXPECT_EQ(ReadUpdateReply(R"({"data":{"version":"3.0"},"version":"2.0"})").latest_version, "3.0");
  EXPECT_EQ(ReadUpdateReply(R"({"version":"2.0","version":"3.0"})").latest_version, "2.0");
}

TEST(UpdateReply, TakesTextMembersOfAnyFormAsTheirText) {
  EXPECT_EQ(ReadUpdateReply(R"({"version":2.5})").latest_version, "2.5");
  EXPECT_EQ(ReadUpdateReply(R"({"version":null})").latest_version, "null");
}

TEST(UpdateReply, IsNotConfusedByTheLongerKey) {
  const UpdateInfo info = ReadUpdateReply(R"({"min_supported_version":"1.0"})");
  EXPECT_EQ(info.min_supported_version, "1.0");
  EXPECT_EQ(info.latest_version, "");
}

TEST(UpdateCheck, SendsItsParametersInTheirOrder) {
  const ScriptedServer server(Script::Response(200, R"({"version":"2.0"})"));
  EXPECT_TRUE(Check(server.address()).value.has_update);
  const std::string host = server.address().substr(std::string("http://").size());
  ASSERT_EQ(server.requests().size(), 1u);
  EXPECT_EQ(
      server.requests()[0],
      "GET /API/v2/sdk/update/check/?product_id=editor&version=1.5&device_id=device-1 HTTP/1.1\r\n"
      "Host: " +
          host +
          "\r\n"
          "Accept: */*\r\n"
          "\r\n");
}

TEST(UpdateCheck, EncodesItsParameters) {
  const ScriptedServer server(Script::Response(200, "{}"));
  EXPECT_TRUE(SendUpdateCheck(server.address() + "/app/", {"a&b", "1+2/%", "c d=\xC3\xA9"}).ok());
  ASSERT_EQ(server.requests().size(), 1u);
  EXPECT_EQ(RequestLine(server.requests()[0]),
            "GET /app/API/v2/sdk/update/check/?product_id=a%26b&version=1%2B2%2F%25"
            "&device_id=c%20d%3D%C3%A9 HTTP/1.1");
}

TEST(UpdateCheck, SendsEmptyFieldsAsEmptyValues) {
  const ScriptedServer server(Script::Response(200, "{}"));
  EXPECT_TRUE(SendUpdateCheck(server.address(), {}).ok());
  ASSERT_EQ(server.requests().size(), 1u);
  EXPECT_EQ(RequestLine(server.requests()[0]),
            "GET /API/v2/sdk/update/check/?product_id=&version=&device_id= HTTP/1.1");
}

TEST(UpdateCheck, SucceedsWithAnyBody) {
  const Result<UpdateInfo> result = CheckAt(Script::Response(200, "plain text"));
  EXPECT_EQ(result.error, Error{});
  EXPECT_EQ(result.value, UpdateInfo{});
}

TEST(UpdateCheck, SucceedsWhenTheServiceRejects) {
  const Result<UpdateInfo> result = CheckAt(Script::Response(200, R"({"code":403,"msg":"no"})"));
  UpdateInfo expected;
  expected.message = "no";
  EXPECT_EQ(result.error, Error{});
  EXPECT_EQ(result.value, expected);
}

TEST(UpdateCheck, FailsWithoutABaseAddress) {
  ExpectFailure(Check(""),
                Error{kNetworkError, "Network client is not configured with server_base_url"});
}

TEST(UpdateCheck, FailsWithAnHttpStatusWhateverTheBodySays) {
  ExpectFailure(CheckAt(Script::Response(500, R"({"version":"2.0"})")),
                Error{kNetworkError, "HTTP status is not successful: 500"});
}

TEST(UpdateCheck, FailsWithAnEmptyBody) {
  ExpectFailure(CheckAt(Script::Response(200, "")),
                Error{kInvalidResponse, "HTTP response body is empty"});
}

TEST(UpdateCheck, PassesTheTransportsFailureUnchanged) {
  ExpectFailure(CheckAt(Script()), Error{kNetworkError, std::string("HTTP request failed: ") +
                                                            curl_easy_strerror(CURLE_GOT_NOTHING)});
}

TEST(UpdateCheck, HandsAMockAddressInCapitalsToLibcurl) {
  ExpectFailure(Check("MOCK://service"),
                Error{kNetworkError, std::string("HTTP request failed: ") +
                                         curl_easy_strerror(CURLE_UNSUPPORTED_PROTOCOL)});
}

TEST(UpdateCheck, AsksTheMockServerForAMockAddress) {
  EXPECT_EQ(Check("mock://service").value.latest_version, "9.9.9");
}

TEST(UpdateCheck, RetriesNothing) {
  const ScriptedServer server(
      {Script::Response(503, "busy"), Script::Response(200, R"({"version":"2.0"})")});
  EXPECT_FALSE(Check(server.address()).ok());
  EXPECT_EQ(server.requests().size(), 1u);
}

}  // namespace
}  // namespace korvixsdk::test
