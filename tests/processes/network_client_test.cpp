#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <string>
#include <vector>

#include "network/default_network_client.h"
#include "processes/run_in_threads.h"
#include "support/scripted_server.h"

namespace korvixsdk {
namespace {

using test::RequestLine;
using test::RunInThreads;
using test::Script;
using test::ScriptedServer;

constexpr std::size_t kThreads = 8;
constexpr std::size_t kCalls = 20;
constexpr std::size_t kAnswers = kThreads * kCalls;

using Texts = std::vector<std::string>;

Texts Sorted(Texts texts) {
  std::sort(texts.begin(), texts.end());
  return texts;
}

Texts SortedRequestLines(const ScriptedServer& server) {
  Texts lines;
  for (const std::string& request : server.requests()) lines.push_back(RequestLine(request));
  return Sorted(std::move(lines));
}

/// Long enough to come in several blocks, and of its own for every answer.
std::string Notes(const std::string& version) {
  std::string notes;
  while (notes.size() < 40000) notes += version + " ";
  return notes;
}

std::vector<Script> NumberedOffers() {
  std::vector<Script> scripts;
  for (std::size_t number = 0; number < kAnswers; ++number) {
    const std::string version = std::to_string(number);
    scripts.push_back(Script::Response(200, R"({"code":400,"version":")" + version +
                                                R"(","update_content":")" + Notes(version) +
                                                R"("})"));
  }
  return scripts;
}

TEST(NetworkClientInThreads, HandsEveryAnswerToOneCallWhole) {
  const ScriptedServer server(NumberedOffers());
  DefaultNetworkClient client;
  client.server_base_url = server.address();
  std::vector<std::vector<UpdateInfo>> offers(kThreads);
  RunInThreads(kThreads, [&](std::size_t thread) {
    for (std::size_t call = 0; call < kCalls; ++call) {
      const Result<UpdateInfo> offer = client.CheckForUpdate({"editor", "1", "device"});
      EXPECT_TRUE(offer.ok()) << offer.error.message;
      offers[thread].push_back(offer.value);
    }
  });

  Texts versions;
  for (const std::vector<UpdateInfo>& of_thread : offers) {
    for (const UpdateInfo& offer : of_thread) {
      EXPECT_EQ(offer.update_content, Notes(offer.latest_version));
      versions.push_back(offer.latest_version);
    }
  }
  Texts expected;
  for (std::size_t number = 0; number < kAnswers; ++number)
    expected.push_back(std::to_string(number));
  EXPECT_EQ(Sorted(std::move(versions)), Sorted(std::move(expected)));
}

TEST(NetworkClientInThreads, SendsEveryRequestOnceWithItsOwnValues) {
  const ScriptedServer server(
      Script::Response(200, R"({"code":400,"allowed":true,"version":"2.0.0"})"));
  DefaultNetworkClient client;
  client.server_base_url = server.address();
  RunInThreads(kThreads, [&](std::size_t thread) {
    for (std::size_t call = 0; call < kCalls; ++call) {
      const std::string product = "product " + std::to_string(thread);
      const std::string device = std::to_string(call);
      if (thread % 2 == 0) {
        EXPECT_EQ(client.ReportInstall(product, device, "1").value.message, "Success");
      } else {
        EXPECT_EQ(client.CheckForUpdate({product, "1", device}).value.latest_version, "2.0.0");
      }
    }
  });

  Texts expected;
  for (std::size_t thread = 0; thread < kThreads; ++thread) {
    for (std::size_t call = 0; call < kCalls; ++call) {
      const std::string product = "product_id=product%20" + std::to_string(thread);
      const std::string device = "device_id=" + std::to_string(call);
      expected.push_back(
          thread % 2 == 0
              ? "GET /API/v2/sdk/install/?" + product + "&" + device + "&version=1 HTTP/1.1"
              : "GET /API/v2/sdk/update/check/?" + product + "&version=1&" + device + " HTTP/1.1");
    }
  }
  EXPECT_EQ(SortedRequestLines(server), Sorted(std::move(expected)));
}

TEST(NetworkClientInThreads, KeepsEveryFailureToTheCallThatMetIt) {
  std::vector<Script> scripts;
  std::map<std::string, int> expected;
  for (std::size_t number = 0; number < kAnswers; ++number) {
    const int status = 400 + static_cast<int>(number % 50);
    const bool succeeds = number % 2 == 0;
    scripts.push_back(Script::Response(succeeds ? 200 : status, "a body"));
    ++expected[succeeds ? "" : "HTTP status is not successful: " + std::to_string(status)];
  }
  const ScriptedServer server(std::move(scripts));
  DefaultNetworkClient client;
  client.server_base_url = server.address();
  std::vector<Texts> messages(kThreads);
  RunInThreads(kThreads, [&](std::size_t thread) {
    for (std::size_t call = 0; call < kCalls; ++call) {
      messages[thread].push_back(client.CheckForUpdate({"editor", "1", "device"}).error.message);
    }
  });

  std::map<std::string, int> counts;
  for (const Texts& of_thread : messages) {
    for (const std::string& message : of_thread) ++counts[message];
  }
  EXPECT_EQ(counts, expected);
}

TEST(NetworkClientInThreads, MockServerAnswersEachCallWithItsOwnValues) {
  DefaultNetworkClient client;
  client.server_base_url = "mock://service";
  RunInThreads(kThreads, [&](std::size_t thread) {
    for (std::size_t call = 0; call < 500; ++call) {
      const std::string version = std::to_string(thread) + "." + std::to_string(call);
      const Result<UpdateInfo> offer = client.CheckForUpdate({"editor", version, ""});
      EXPECT_EQ(offer.value.min_supported_version, version);
      EXPECT_EQ(offer.value.latest_version, "9.9.9");
      const std::string device = call % 2 == 0 ? "" : "device";
      EXPECT_EQ(client.ReportInstall("editor", device, version).value.message,
                device.empty() ? "Missing mock install fields" : "Success");
    }
  });
}

}  // namespace
}  // namespace korvixsdk
