#include "platform/detached_process.h"

#include <pthread.h>
#include <sched.h>
#include <signal.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <climits>
#include <memory>
#include <new>

/// The C library's clone() under the name that sanitizers do not intercept: to them it is a fork.
extern "C" int __clone(int (*function)(void*), void* stack, int flags, void* context, ...);

namespace korvixsdk {
namespace {

/// The host runs an intermediate process, which runs the updater and ends at once: the updater is
/// orphaned, init collects it, and no zombie stays with the host. Both borrow the host's memory
/// while their starter is suspended, as vfork() does. Neither copies a large host's page tables,
/// and each reports a failure by writing to a variable. They may call nothing but async-signal-safe
/// functions, and sanitizers must not keep their books in memory that is not theirs. (Where the
/// host is the first process of a container, or has made itself a subreaper, the orphan is its
/// own.)
#define KORVIXSDK_BORROWED_MEMORY __attribute__((no_sanitize("address", "thread", "undefined")))

/// No exit signal: the intermediate process raises no SIGCHLD, and the host's own wait() calls do
/// not see it.
constexpr int kUnnoticed = CLONE_VM | CLONE_VFORK;
constexpr std::size_t kStackSize = std::size_t{32} << 10;

struct alignas(16) Stack {
  std::array<unsigned char, kStackSize> bytes;
  void* top() { return bytes.data() + bytes.size(); }
};

struct Launch {
  const char* const* arguments = nullptr;
  /// Written by the processes that borrow this memory.
  volatile bool failed = false;
  Stack intermediate_stack;
  Stack updater_stack;
};

KORVIXSDK_BORROWED_MEMORY void ResetSignals() {
  // The kernel's structure is all zeros for the default action. The C library's sigaction() would
  // be intercepted by sanitizers, which note the change in the host's books.
  const std::array<long, 8> by_default{};
  for (int signal = 1; signal < NSIG; ++signal) {
    syscall(SYS_rt_sigaction, signal, by_default.data(), nullptr, NSIG / 8);
  }
  const std::array<long, 2> none{};
  syscall(SYS_rt_sigprocmask, SIG_SETMASK, none.data(), nullptr, NSIG / 8);
}

/// Runs as the updater until it becomes the program.
KORVIXSDK_BORROWED_MEMORY int BecomeProgram(void* context) {
  auto* const launch = static_cast<Launch*>(context);
  ResetSignals();
  // Descriptors above the standard streams are the host's business. Where the kernel lacks the
  // call, those without the flag stay open in the updater.
  constexpr unsigned int kCloseOnExec = 1u << 2;
  syscall(SYS_close_range, 3u, UINT_MAX, kCloseOnExec);
  execve(launch->arguments[0], const_cast<char* const*>(launch->arguments), environ);
  launch->failed = true;
  return 1;
}

KORVIXSDK_BORROWED_MEMORY int StartUpdater(void* context) {
  auto* const launch = static_cast<Launch*>(context);
  setsid();
  if (__clone(BecomeProgram, launch->updater_stack.top(), kUnnoticed, launch) < 0) {
    launch->failed = true;
  }
  return 0;
}

/// A host that waits for every kind of child may have been faster; that is no failure.
void CollectIntermediate(pid_t pid) {
  while (waitpid(pid, nullptr, __WALL) < 0 && errno == EINTR) {
  }
}

}  // namespace

bool StartDetachedProcess(const std::string& program, const std::string& argument) noexcept {
  if (program.find('\0') != std::string::npos || argument.find('\0') != std::string::npos) {
    return false;
  }
  const std::unique_ptr<Launch> launch(new (std::nothrow) Launch);
  if (!launch) return false;
  const std::array<const char*, 3> arguments = {program.c_str(), argument.c_str(), nullptr};
  launch->arguments = arguments.data();

  // No handler of the host's may run in memory that two processes share.
  sigset_t all;
  sigset_t before;
  sigfillset(&all);
  pthread_sigmask(SIG_SETMASK, &all, &before);
  const pid_t intermediate =
      __clone(StartUpdater, launch->intermediate_stack.top(), kUnnoticed, launch.get());
  pthread_sigmask(SIG_SETMASK, &before, nullptr);
  if (intermediate < 0) return false;
  CollectIntermediate(intermediate);
  return !launch->failed;
}

}  // namespace korvixsdk
