#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

#include "support/child_process.h"
#include "support/scripted_server.h"
#include "support/temp_folder.h"

namespace korvixsdk::test {
namespace {

/// Understood by all three requests: an answer to the report and the check, and a package.
const char kReply[] = R"({"code":400,"allowed":true,"version":"2.0.0"})";

/// Where a process takes long, the default run makes do with fewer.
int Rounds(int rounds) {
  const bool all = std::getenv("KORVIXSDK_ALL_ENDINGS") != nullptr;
  return all ? rounds : rounds / KORVIXSDK_ENDINGS_PART;
}

/// The host's times run evenly from nothing to the longest.
void ExpectOrderlyEnds(const std::string& way, int rounds, int longest_microseconds) {
  const TempFolder folder;
  const ScriptedServer server(Script::Response(200, kReply));
  for (int round = 0; round < rounds; ++round) {
    const std::string time = std::to_string(longest_microseconds * round / rounds);
    ChildProcess host({KORVIXSDK_ENDING_HOST, way, server.address(), folder.text(), time});
    EXPECT_EQ(host.Wait(), 0u) << "after " << time << " microseconds";
  }
}

TEST(SlowHostEnding, IsOrderlyWhileAWorkerChecksAndReports) {
  ExpectOrderlyEnds("check", Rounds(600), 3000);
}

TEST(SlowHostEnding, IsOrderlyWhileSixWorkersLoop) {
  ExpectOrderlyEnds("loop", Rounds(200), 30000);
}

/// On Linux the library has been torn down by then; on Windows it is told of the end last.
TEST(HostEnding, AnswersARequestOfAnExitHandlerFromBeforeTheLibrary) {
#ifdef _WIN32
  const std::string late_answer = "0 ";
#else
  const std::string late_answer = "7 Failed to initialize libcurl";
#endif
  const TempFolder folder;
  const ScriptedServer server(Script::Response(200, kReply));
  ChildProcess host(
      {KORVIXSDK_LATE_HOST, server.address(), folder.text(), KORVIXSDK_LATE_REQUESTS});
  EXPECT_EQ(host.ReadLine(), "0 ");
  EXPECT_EQ(host.ReadLine(), late_answer);
  EXPECT_EQ(host.Wait(), 0u);
  EXPECT_EQ(server.requests().size(), late_answer == "0 " ? 2u : 1u);
}

}  // namespace
}  // namespace korvixsdk::test
