#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>

#include <cerrno>
#include <filesystem>
#include <string>

#include "platform/detached_process.h"
#include "processes/awaited_file.h"
#include "processes/run_in_threads.h"
#include "support/temp_folder.h"

namespace korvixsdk {
namespace {

using test::AwaitedBytes;
using test::RunInThreads;
using test::TempFolder;

constexpr std::size_t kThreads = 8;
constexpr std::size_t kStarts = 10;

/// A script that leaves its argument in the file that the argument names.
std::string Program(const TempFolder& folder) {
  const std::filesystem::path path = folder.path() / "program";
  test::WriteBytes(path, "#!/bin/sh\nprintf %s \"$1\" > \"$1.new\"\nmv \"$1.new\" \"$1\"\n");
  std::filesystem::permissions(path, std::filesystem::perms::owner_all);
  return path;
}

std::string Argument(const TempFolder& folder, std::size_t thread, std::size_t start) {
  return folder.Entry(std::to_string(thread) + "-" + std::to_string(start));
}

TEST(DetachedProcessInThreads, StartsEveryProgramWithItsOwnArgument) {
  const TempFolder folder;
  const std::string program = Program(folder);
  RunInThreads(kThreads, [&](std::size_t thread) {
    for (std::size_t start = 0; start < kStarts; ++start) {
      EXPECT_TRUE(StartDetachedProcess(program, Argument(folder, thread, start)));
    }
  });
  for (std::size_t thread = 0; thread < kThreads; ++thread) {
    for (std::size_t start = 0; start < kStarts; ++start) {
      const std::string argument = Argument(folder, thread, start);
      EXPECT_EQ(AwaitedBytes(argument), argument);
    }
  }
  EXPECT_EQ(waitpid(-1, nullptr, WNOHANG | __WALL), -1);
  EXPECT_EQ(errno, ECHILD);
}

TEST(DetachedProcessInThreads, KeepsEveryFailureToTheCallThatMetIt) {
  const TempFolder folder;
  RunInThreads(kThreads, [&](std::size_t thread) {
    for (std::size_t start = 0; start < kStarts; ++start) {
      const bool exists = (thread + start) % 2 == 0;
      EXPECT_EQ(StartDetachedProcess(exists ? "/bin/true" : folder.Entry("missing"), "x"), exists);
    }
  });
}

TEST(DetachedProcessInThreads, KeepsTheSignalMaskOfEachThread) {
  RunInThreads(kThreads, [&](std::size_t thread) {
    const int blocked = thread % 2 == 0 ? SIGTERM : SIGUSR1;
    const int open = thread % 2 == 0 ? SIGUSR1 : SIGTERM;
    sigset_t mask;
    sigemptyset(&mask);
    sigaddset(&mask, blocked);
    pthread_sigmask(SIG_SETMASK, &mask, nullptr);
    for (std::size_t start = 0; start < kStarts; ++start) {
      EXPECT_TRUE(StartDetachedProcess("/bin/true", "x"));
      pthread_sigmask(SIG_SETMASK, nullptr, &mask);
      EXPECT_EQ(sigismember(&mask, blocked), 1);
      EXPECT_EQ(sigismember(&mask, open), 0);
    }
  });
}

}  // namespace
}  // namespace korvixsdk
