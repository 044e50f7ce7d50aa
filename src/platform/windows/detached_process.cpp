#include "platform/detached_process.h"

#include "platform/or_else.h"
#include "platform/windows/windows_headers.h"

namespace korvixsdk {
namespace {

/// Both paths in double quotes. Nothing inside them is escaped: a Windows path holds no quote.
std::string QuotedCommandLine(const std::string& program, const std::string& argument) {
  return "\"" + program + "\" \"" + argument + "\"";
}

bool Start(const std::string& program, const std::string& argument) {
  // CreateProcessA may write into its command line, which therefore is a copy of its own.
  std::string command_line = QuotedCommandLine(program, argument);
  if (command_line.find('\0') != std::string::npos) return false;
  // The narrow call takes the paths as they came. No name of a program beside the command line:
  // that begins with it. No flags: the updater is an ordinary child, and inherits no handle.
  STARTUPINFOA startup{};
  startup.cb = sizeof(startup);
  PROCESS_INFORMATION process{};
  if (!CreateProcessA(nullptr, command_line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                      &startup, &process)) {
    return false;
  }
  // Nobody waits for it or asks how it ended.
  CloseHandle(process.hThread);
  CloseHandle(process.hProcess);
  return true;
}

}  // namespace

bool StartDetachedProcess(const std::string& program, const std::string& argument) noexcept {
  return OrElse([&] { return Start(program, argument); }, false);
}

}  // namespace korvixsdk
