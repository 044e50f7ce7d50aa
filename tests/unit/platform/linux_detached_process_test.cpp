#include <fcntl.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <filesystem>
#include <string>
#include <thread>

#include "platform/detached_process.h"
#include "support/temp_folder.h"

namespace korvixsdk {
namespace {

using test::FileBytes;
using test::TempFolder;
using test::WriteBytes;

/// An executable script that runs `commands` and leaves their output in the file "out".
std::string Script(const TempFolder& folder, const std::string& commands) {
  const std::filesystem::path path = folder.path() / "program";
  const std::string out = folder.Entry("out");
  WriteBytes(path, "#!/bin/sh\n{ " + commands + "\n} > '" + out + ".new'\nmv '" + out + ".new' '" +
                       out + "'\n");
  std::filesystem::permissions(path, std::filesystem::perms::owner_all);
  return path;
}

/// Prints a line of the shell's own status, without a process of its own for it: while it starts
/// one, the shell blocks signals itself.
std::string OwnStatus(const std::string& line) {
  return "while read -r line; do case $line in " + line +
         "*) echo \"$line\";; esac; done < /proc/$$/status";
}

/// The script's output, waited for as long as a slow machine may take.
std::string Output(const TempFolder& folder) {
  const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(60);
  while (!std::filesystem::exists(folder.path() / "out")) {
    if (std::chrono::steady_clock::now() > deadline) {
      ADD_FAILURE() << "the program left no output";
      return {};
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(5));
  }
  return FileBytes(folder.path() / "out");
}

TEST(DetachedProcess, GetsProgramAndArgumentAsTheyAre) {
  const TempFolder folder;
  const std::string program = Script(folder, R"(printf '%s\n' "$#" "$0" "$1")");
  EXPECT_TRUE(StartDetachedProcess(program, "one \"argument\" $HOME"));
  EXPECT_EQ(Output(folder), "1\n" + program + "\none \"argument\" $HOME\n");
}

TEST(DetachedProcess, KeepsWorkingDirectoryAndEnvironment) {
  const TempFolder folder;
  setenv("KORVIXSDK_TEST_VARIABLE", "inherited", 1);
  EXPECT_TRUE(StartDetachedProcess(Script(folder, "pwd; echo $KORVIXSDK_TEST_VARIABLE"), "x"));
  EXPECT_EQ(Output(folder), std::filesystem::current_path().string() + "\ninherited\n");
}

TEST(DetachedProcess, RunsInSessionOfItsOwn) {
  const TempFolder folder;
  EXPECT_TRUE(StartDetachedProcess(Script(folder, "cut -d' ' -f6 /proc/$$/stat"), "x"));
  const std::string session = Output(folder);
  EXPECT_NE(session, "");
  EXPECT_NE(session, std::to_string(getsid(0)) + "\n");
}

TEST(DetachedProcess, InheritsNoDescriptorButTheStandardStreams) {
  const TempFolder folder;
  const int leaking = open("/dev/null", O_RDONLY);
  ASSERT_GT(leaking, 2);
  EXPECT_TRUE(StartDetachedProcess(Script(folder, "test -e /proc/$$/fd/" + std::to_string(leaking) +
                                                      " && echo open || echo closed"),
                                   "x"));
  close(leaking);
  EXPECT_EQ(Output(folder), "closed\n");
}

TEST(DetachedProcess, BlocksNoSignalAndKeepsTheHostsMask) {
  const TempFolder folder;
  sigset_t term;
  sigset_t before;
  sigemptyset(&term);
  sigaddset(&term, SIGTERM);
  pthread_sigmask(SIG_SETMASK, &term, &before);
  EXPECT_TRUE(StartDetachedProcess(Script(folder, OwnStatus("SigBlk")), "x"));
  sigset_t after;
  pthread_sigmask(SIG_SETMASK, &before, &after);
  EXPECT_EQ(sigismember(&after, SIGTERM), 1);
  EXPECT_EQ(sigismember(&after, SIGINT), 0);
  EXPECT_EQ(Output(folder), "SigBlk:\t0000000000000000\n");
}

TEST(DetachedProcess, RestoresSignalsThatTheHostIgnores) {
  const TempFolder folder;
  const auto before = signal(SIGPIPE, SIG_IGN);
  EXPECT_TRUE(StartDetachedProcess(Script(folder, OwnStatus("SigIgn")), "x"));
  const auto after = signal(SIGPIPE, before);
  EXPECT_EQ(after, SIG_IGN);
  EXPECT_EQ(Output(folder), "SigIgn:\t0000000000000000\n");
}

volatile sig_atomic_t child_signals = 0;
void CountChildSignal(int) { child_signals = child_signals + 1; }

TEST(DetachedProcess, LeavesNoChildAndRaisesNoChildSignal) {
  const TempFolder folder;
  child_signals = 0;
  const auto before = signal(SIGCHLD, CountChildSignal);
  EXPECT_TRUE(StartDetachedProcess(Script(folder, "true"), "x"));
  Output(folder);
  signal(SIGCHLD, before);
  EXPECT_EQ(child_signals, 0);
  EXPECT_EQ(waitpid(-1, nullptr, WNOHANG | __WALL), -1);
  EXPECT_EQ(errno, ECHILD);
}

TEST(DetachedProcess, LeavesTheHostsOwnChildrenAlone) {
  const TempFolder folder;
  const pid_t own = fork();
  if (own == 0) _exit(7);
  EXPECT_TRUE(StartDetachedProcess(Script(folder, "true"), "x"));
  int status = 0;
  EXPECT_EQ(waitpid(own, &status, 0), own);
  EXPECT_EQ(WEXITSTATUS(status), 7);
  Output(folder);
}

TEST(DetachedProcess, StartsWhenTheHostIgnoresItsChildren) {
  const TempFolder folder;
  const auto before = signal(SIGCHLD, SIG_IGN);
  EXPECT_TRUE(StartDetachedProcess(Script(folder, "echo started"), "x"));
  signal(SIGCHLD, before);
  EXPECT_EQ(Output(folder), "started\n");
}

TEST(DetachedProcess, ReportsProgramThatCannotBeExecuted) {
  const TempFolder folder;
  WriteBytes(folder.path() / "text", "no program");
  EXPECT_FALSE(StartDetachedProcess(folder.Entry("text"), "x"));
  std::filesystem::permissions(folder.path() / "text", std::filesystem::perms::owner_all);
  EXPECT_FALSE(StartDetachedProcess(folder.Entry("text"), "x"));
  EXPECT_FALSE(StartDetachedProcess(folder.Entry("missing"), "x"));
  EXPECT_FALSE(StartDetachedProcess(folder.text(), "x"));
  EXPECT_EQ(waitpid(-1, nullptr, WNOHANG | __WALL), -1);
}

TEST(DetachedProcess, ReportsTextWithZeroByte) {
  const TempFolder folder;
  const std::string program = Script(folder, "true");
  EXPECT_FALSE(StartDetachedProcess(program + std::string("\0x", 2), "x"));
  EXPECT_FALSE(StartDetachedProcess(program, std::string("a\0b", 3)));
}

}  // namespace
}  // namespace korvixsdk
