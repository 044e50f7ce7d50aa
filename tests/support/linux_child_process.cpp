#include <fcntl.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <utility>

#include "support/child_process.h"

namespace korvixsdk::test {

struct ChildProcess::System {
  pid_t id = -1;
  int input = -1;
  int output = -1;
  /// Received, but not yet asked for.
  std::string received{};
};

ChildProcess::ChildProcess(const std::vector<std::string>& command)
    : system_(std::make_unique<System>()) {
  // A program that has ended must not end the test that writes to it.
  signal(SIGPIPE, SIG_IGN);
  int input[2] = {-1, -1};
  int output[2] = {-1, -1};
  EXPECT_EQ(pipe2(input, O_CLOEXEC) + pipe2(output, O_CLOEXEC), 0);
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_adddup2(&actions, input[0], STDIN_FILENO);
  posix_spawn_file_actions_adddup2(&actions, output[1], STDOUT_FILENO);
  std::vector<std::string> texts = command;
  std::vector<char*> arguments;
  for (std::string& text : texts) arguments.push_back(text.data());
  arguments.push_back(nullptr);
  EXPECT_EQ(posix_spawn(&system_->id, arguments[0], &actions, nullptr, arguments.data(), environ),
            0);
  posix_spawn_file_actions_destroy(&actions);
  close(input[0]);
  close(output[1]);
  system_->input = input[1];
  system_->output = output[0];
}

ChildProcess::~ChildProcess() {
  Kill();
  close(system_->input);
  close(system_->output);
}

void ChildProcess::WriteLine(const std::string& line) {
  const std::string bytes = line + '\n';
  EXPECT_EQ(write(system_->input, bytes.data(), bytes.size()), static_cast<ssize_t>(bytes.size()));
}

std::string ChildProcess::ReadLine() {
  std::string& received = system_->received;
  std::size_t end = received.find('\n');
  while (end == std::string::npos) {
    char bytes[256];
    const ssize_t got = read(system_->output, bytes, sizeof(bytes));
    if (got <= 0) return std::exchange(received, {});
    received.append(bytes, static_cast<std::size_t>(got));
    end = received.find('\n');
  }
  std::string line = received.substr(0, end);
  received.erase(0, end + 1);
  return line;
}

unsigned ChildProcess::Wait() {
  int status = 0;
  EXPECT_NE(waitpid(std::exchange(system_->id, -1), &status, 0), -1);
  return static_cast<unsigned>(WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status));
}

void ChildProcess::Kill() {
  if (system_->id < 0) return;
  kill(system_->id, SIGKILL);
  Wait();
}

}  // namespace korvixsdk::test
