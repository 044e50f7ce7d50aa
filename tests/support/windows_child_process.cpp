#include <gtest/gtest.h>
#include <windows.h>

#include <utility>

#include "support/child_process.h"

namespace korvixsdk::test {
namespace {

/// One end for the child, which inherits it, and one for the test.
struct Pipe {
  explicit Pipe(bool child_reads) {
    SECURITY_ATTRIBUTES inherited{sizeof(inherited), nullptr, TRUE};
    HANDLE reading = nullptr;
    HANDLE writing = nullptr;
    EXPECT_TRUE(CreatePipe(&reading, &writing, &inherited, 0));
    child_end = child_reads ? reading : writing;
    test_end = child_reads ? writing : reading;
    EXPECT_TRUE(SetHandleInformation(test_end, HANDLE_FLAG_INHERIT, 0));
  }

  HANDLE child_end = nullptr;
  HANDLE test_end = nullptr;
};

std::string CommandLine(const std::vector<std::string>& command) {
  std::string line;
  for (const std::string& argument : command) line += "\"" + argument + "\" ";
  return line;
}

}  // namespace

struct ChildProcess::System {
  HANDLE process = nullptr;
  HANDLE input = nullptr;
  HANDLE output = nullptr;
  /// Received, but not yet asked for.
  std::string received{};
};

ChildProcess::ChildProcess(const std::vector<std::string>& command)
    : system_(std::make_unique<System>()) {
  const Pipe input(true);
  const Pipe output(false);
  STARTUPINFOA startup{};
  startup.cb = sizeof(startup);
  startup.dwFlags = STARTF_USESTDHANDLES;
  startup.hStdInput = input.child_end;
  startup.hStdOutput = output.child_end;
  startup.hStdError = GetStdHandle(STD_ERROR_HANDLE);
  PROCESS_INFORMATION process{};
  std::string line = CommandLine(command);
  EXPECT_TRUE(CreateProcessA(nullptr, line.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr,
                             &startup, &process));
  CloseHandle(process.hThread);
  CloseHandle(input.child_end);
  CloseHandle(output.child_end);
  system_->process = process.hProcess;
  system_->input = input.test_end;
  system_->output = output.test_end;
}

ChildProcess::~ChildProcess() {
  Kill();
  CloseHandle(system_->input);
  CloseHandle(system_->output);
}

void ChildProcess::WriteLine(const std::string& line) {
  const std::string bytes = line + '\n';
  DWORD written = 0;
  EXPECT_TRUE(
      WriteFile(system_->input, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr));
  EXPECT_EQ(written, bytes.size());
}

std::string ChildProcess::ReadLine() {
  std::string& received = system_->received;
  std::size_t end = received.find("\r\n");
  while (end == std::string::npos) {
    char bytes[256];
    DWORD got = 0;
    if (!ReadFile(system_->output, bytes, sizeof(bytes), &got, nullptr)) {
      return std::exchange(received, {});
    }
    received.append(bytes, got);
    end = received.find("\r\n");
  }
  std::string line = received.substr(0, end);
  received.erase(0, end + 2);
  return line;
}

unsigned ChildProcess::Wait() {
  const HANDLE process = std::exchange(system_->process, nullptr);
  EXPECT_EQ(WaitForSingleObject(process, INFINITE), WAIT_OBJECT_0);
  DWORD status = 0;
  EXPECT_TRUE(GetExitCodeProcess(process, &status));
  CloseHandle(process);
  return status;
}

void ChildProcess::Kill() {
  if (system_->process == nullptr) return;
  TerminateProcess(system_->process, 1);
  Wait();
}

}  // namespace korvixsdk::test
