#include "network/http_transport.h"

#include <curl/curl.h>
#include <gtest/gtest.h>

#include <chrono>
#include <string>
#include <thread>
#include <vector>

#include "support/record_equality.h"
#include "support/scripted_server.h"
#include "support/temp_folder.h"

namespace korvixsdk::test {
namespace {

std::string Repeat(const std::string& part, int count) {
  std::string text;
  for (int i = 0; i < count; ++i) text += part;
  return text;
}

Error CurlFailure(CURLcode code) {
  return Error{kNetworkError, std::string("HTTP request failed: ") + curl_easy_strerror(code)};
}

HttpResponse Get(const ScriptedServer& server) { return PerformGet(server.address(), "/path", {}); }

HttpResponse GetFrom(const Script& script) { return Get(ScriptedServer(script)); }

void ExpectBody(const HttpResponse& response, const std::string& body) {
  EXPECT_EQ(response.error, Error{});
  EXPECT_EQ(response.body, body);
}

void ExpectFailure(const HttpResponse& response, const Error& error) {
  EXPECT_EQ(response.error, error);
  EXPECT_EQ(response.body, "");
}

TEST(HttpTransport, ReturnsTheBody) {
  ExpectBody(GetFrom(Script::Response(200, "hello")), "hello");
}

TEST(HttpTransport, ReturnsEveryByteOfTheBodyUnchanged) {
  std::string body;
  for (int byte = 0; byte < 256; ++byte) body += static_cast<char>(byte);
  ExpectBody(GetFrom(Script::Response(200, body)), body);
}

TEST(HttpTransport, CollectsABodyOfManyBlocks) {
  const std::string body = Repeat("0123456789abcdef", 100000);
  ExpectBody(GetFrom(Script::Response(200, body)), body);
}

TEST(HttpTransport, JoinsTheChunksOfAChunkedBody) {
  ExpectBody(GetFrom(Script().Send("HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n"
                                   "3\r\nabc\r\n2\r\nde\r\n0\r\n\r\n")),
             "abcde");
}

TEST(HttpTransport, TakesABodyThatTheEndOfTheConnectionEnds) {
  ExpectBody(GetFrom(Script().Send("HTTP/1.1 200 OK\r\nConnection: close\r\n\r\nto the end")),
             "to the end");
}

TEST(HttpTransport, SendsTheRequestLineAndNoHeaderOfItsOwn) {
  const ScriptedServer server(Script::Response(200, "hello"));
  EXPECT_TRUE(
      PerformGet(server.address() + "/app", "/path/", {{"b", "1 2"}, {"a", ""}}).error.ok());
  const std::string host = server.address().substr(std::string("http://").size());
  EXPECT_EQ(server.requests(), std::vector<std::string>{"GET /app/path/?b=1%202&a= HTTP/1.1\r\n"
                                                        "Host: " +
                                                        host +
                                                        "\r\n"
                                                        "Accept: */*\r\n"
                                                        "\r\n"});
}

TEST(HttpTransport, SendsNoQuestionMarkWithoutParameters) {
  const ScriptedServer server(Script::Response(200, "hello"));
  EXPECT_TRUE(Get(server).error.ok());
  ASSERT_EQ(server.requests().size(), 1u);
  EXPECT_EQ(RequestLine(server.requests()[0]), "GET /path HTTP/1.1");
}

TEST(HttpTransport, KeepsOneOfTwoSlashesOfTheBaseAddress) {
  const ScriptedServer server(Script::Response(200, "hello"));
  EXPECT_TRUE(PerformGet(server.address() + "//", "/path", {}).error.ok());
  ASSERT_EQ(server.requests().size(), 1u);
  EXPECT_EQ(RequestLine(server.requests()[0]), "GET //path HTTP/1.1");
}

TEST(HttpTransport, SendsAllByteValuesInAParameter) {
  const std::string unreserved =
      "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-._~";
  const std::string digits = "0123456789ABCDEF";
  std::string value;
  std::string encoded;
  for (unsigned byte = 0; byte < 256; ++byte) {
    const char c = static_cast<char>(byte);
    value += c;
    const bool kept = unreserved.find(c) != std::string::npos;
    encoded += kept ? std::string(1, c) : std::string{'%', digits[byte / 16], digits[byte % 16]};
  }
  const ScriptedServer server(Script::Response(200, "hello"));
  EXPECT_TRUE(PerformGet(server.address(), "/path", {{"k", value}}).error.ok());
  ASSERT_EQ(server.requests().size(), 1u);
  EXPECT_EQ(RequestLine(server.requests()[0]), "GET /path?k=" + encoded + " HTTP/1.1");
}

TEST(HttpTransport, OpensAConnectionForEachExchange) {
  const ScriptedServer server({Script::Response(200, "first"), Script::Response(200, "second")});
  ExpectBody(Get(server), "first");
  ExpectBody(Get(server), "second");
  EXPECT_EQ(server.requests().size(), 2u);
}

TEST(HttpTransport, ServesTwoThreadsAtOnce) {
  const ScriptedServer server(Script::Response(200, "hello"));
  HttpResponse other;
  std::thread thread([&server, &other] { other = Get(server); });
  const HttpResponse own = Get(server);
  thread.join();
  ExpectBody(own, "hello");
  ExpectBody(other, "hello");
}

TEST(HttpTransport, FollowsARedirectToA200) {
  const ScriptedServer server({Script::Redirect("/elsewhere"), Script::Response(200, "arrived")});
  ExpectBody(Get(server), "arrived");
  ASSERT_EQ(server.requests().size(), 2u);
  EXPECT_EQ(RequestLine(server.requests()[1]), "GET /elsewhere HTTP/1.1");
}

TEST(HttpTransport, FollowsARedirectToAnotherServer) {
  const ScriptedServer target(Script::Response(200, "arrived"));
  ExpectBody(GetFrom(Script::Redirect(target.address() + "/there")), "arrived");
  ASSERT_EQ(target.requests().size(), 1u);
  EXPECT_EQ(RequestLine(target.requests()[0]), "GET /there HTTP/1.1");
}

TEST(HttpTransport, FollowsSeveralRedirects) {
  const ScriptedServer server({Script::Redirect("/one"), Script::Redirect("/two"),
                               Script::Redirect("/three"), Script::Response(200, "arrived")});
  ExpectBody(Get(server), "arrived");
  EXPECT_EQ(server.requests().size(), 4u);
}

TEST(HttpTransport, ReportsTheStatusBehindARedirect) {
  const ScriptedServer server({Script::Redirect("/elsewhere"), Script::Response(404, "gone")});
  ExpectFailure(Get(server), Error{kNetworkError, "HTTP status is not successful: 404"});
}

TEST(HttpTransport, TakesEveryStatusFrom200To299) {
  for (const int status : {200, 201, 203, 206, 226, 250, 299}) {
    ExpectBody(GetFrom(Script::Response(status, "hello")), "hello");
  }
}

TEST(HttpTransport, RejectsEveryOtherStatusAndLosesTheBody) {
  for (const int status : {300, 301, 302, 400, 401, 403, 404, 410, 429, 500, 503, 599}) {
    ExpectFailure(GetFrom(Script::Response(status, "a body")),
                  Error{kNetworkError, "HTTP status is not successful: " + std::to_string(status)});
  }
}

TEST(HttpTransport, RejectsAStatusWithoutABodyByTheStatus) {
  ExpectFailure(GetFrom(Script::Response(500, "")),
                Error{kNetworkError, "HTTP status is not successful: 500"});
}

TEST(HttpTransport, TakesTheStatusThatFollowsAnInformationalOne) {
  ExpectBody(GetFrom(Script()
                         .Send("HTTP/1.1 103 Early Hints\r\n\r\n")
                         .Send("HTTP/1.1 200 OK\r\nContent-Length: 2\r\n\r\nok")),
             "ok");
}

TEST(HttpTransport, RejectsAnEmpty200) {
  ExpectFailure(GetFrom(Script::Response(200, "")),
                Error{kInvalidResponse, "HTTP response body is empty"});
}

TEST(HttpTransport, RejectsA204) {
  ExpectFailure(GetFrom(Script().Send("HTTP/1.1 204 No Content\r\n\r\n")),
                Error{kInvalidResponse, "HTTP response body is empty"});
}

TEST(HttpTransport, FailsWithABodyCutShort) {
  ExpectFailure(GetFrom(Script().Send("HTTP/1.1 200 OK\r\nContent-Length: 100\r\n\r\nonly this")),
                CurlFailure(CURLE_PARTIAL_FILE));
}

TEST(HttpTransport, FailsWithAChunkedBodyCutShort) {
  ExpectFailure(GetFrom(Script().Send("HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n"
                                      "3\r\nabc\r\n")),
                CurlFailure(CURLE_PARTIAL_FILE));
}

TEST(HttpTransport, FailsWhenTheConnectionIsReset) {
  Error expected = CurlFailure(CURLE_RECV_ERROR);
  const HttpResponse response = GetFrom(Script().Reset());
#ifdef _WIN32
  // Wine shows a reset as the orderly end of the connection, which Windows itself does not.
  const Error ended = CurlFailure(CURLE_GOT_NOTHING);
  if (response.error == ended) expected = ended;
#endif
  ExpectFailure(response, expected);
}

TEST(HttpTransport, FailsWhenTheConnectionEndsWithoutAnAnswer) {
  ExpectFailure(GetFrom(Script()), CurlFailure(CURLE_GOT_NOTHING));
}

TEST(HttpTransport, FailsWithAnAnswerThatIsNoHttp) {
  ExpectFailure(GetFrom(Script().Send("SSH-2.0-anything\r\n\r\n")),
                CurlFailure(CURLE_UNSUPPORTED_PROTOCOL));
}

TEST(HttpTransport, FailsWhenTheConnectionIsRefused) {
  const std::string address = "http://127.0.0.1:" + std::to_string(UnusedPort());
  ExpectFailure(PerformGet(address, "/path", {}), CurlFailure(CURLE_COULDNT_CONNECT));
}

// libcurl would take the text up to the zero byte for the whole address.
TEST(HttpTransport, FailsWithAZeroByteInTheBaseAddress) {
  const ScriptedServer server(Script::Response(200, "hello"));
  ExpectFailure(PerformGet(server.address() + std::string("/\0/app", 6), "/path", {}),
                CurlFailure(CURLE_URL_MALFORMAT));
  EXPECT_TRUE(server.requests().empty());
}

TEST(HttpTransport, HandsAnUnknownSchemeToLibcurl) {
  ExpectFailure(PerformGet("MOCK://service", "/path", {}), CurlFailure(CURLE_UNSUPPORTED_PROTOCOL));
}

#ifndef _WIN32
TEST(HttpTransport, RejectsATransferWithoutAnHttpStatus) {
  const TempFolder folder;
  WriteBytes(folder.path() / "file", "a body");
  ExpectFailure(PerformGet("file://" + folder.text(), "/file", {}),
                Error{kNetworkError, "HTTP status is not successful: 0"});
}
#endif

TEST(TransportUnavailableError, NamesTheMissingBaseAddress) {
  EXPECT_EQ(TransportUnavailableError(""),
            (Error{kNetworkError, "Network client is not configured with server_base_url"}));
}

TEST(TransportUnavailableError, NamesTheTransportWithABaseAddress) {
  EXPECT_EQ(TransportUnavailableError("https://host"),
            (Error{kNetworkError, "Network request failed because the transport is unavailable"}));
}

std::chrono::duration<double> TimeOf(const std::string& address, HttpResponse& response) {
  const auto start = std::chrono::steady_clock::now();
  response = PerformGet(address, "/path", {});
  return std::chrono::steady_clock::now() - start;
}

TEST(SlowHttpTransport, GivesUpTheExchangeAfterTwentySeconds) {
  const ScriptedServer server(
      Script().Send("HTTP/1.1 200 OK\r\nContent-Length: 5\r\n\r\nhe").Pause(std::chrono::hours(1)));
  HttpResponse response;
  const std::chrono::duration<double> elapsed = TimeOf(server.address(), response);
  ExpectFailure(response, CurlFailure(CURLE_OPERATION_TIMEDOUT));
  EXPECT_GT(elapsed.count(), 15);
  EXPECT_LT(elapsed.count(), 40);
}

// A handshake is part of connecting, which has a limit of its own.
TEST(SlowHttpTransport, GivesUpConnectingAfterTenSeconds) {
  const ScriptedServer server(Script().WithoutReading().Pause(std::chrono::hours(1)));
  const std::string port = server.address().substr(server.address().rfind(':'));
  HttpResponse response;
  const std::chrono::duration<double> elapsed = TimeOf("https://127.0.0.1" + port, response);
  ExpectFailure(response, CurlFailure(CURLE_OPERATION_TIMEDOUT));
  EXPECT_GT(elapsed.count(), 5);
  EXPECT_LT(elapsed.count(), 19);
}

}  // namespace
}  // namespace korvixsdk::test
