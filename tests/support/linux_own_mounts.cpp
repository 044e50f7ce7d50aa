#include "support/linux_own_mounts.h"

#include <gtest/gtest.h>
#include <net/if.h>
#include <sched.h>
#include <sys/ioctl.h>
#include <sys/mount.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <fstream>

namespace korvixsdk::test {
namespace {

constexpr int kFailed = 1;
constexpr int kNotAllowed = 77;

void End(int status) {
  std::fflush(nullptr);
  _exit(status);
}

/// Who is not root becomes it in a user namespace, where it may mount.
bool BecomeRoot() {
  const std::string user = std::to_string(getuid());
  const std::string group = std::to_string(getgid());
  if (unshare(CLONE_NEWUSER) != 0) return false;
  std::ofstream("/proc/self/setgroups") << "deny";
  std::ofstream("/proc/self/uid_map") << "0 " << user << " 1";
  std::ofstream("/proc/self/gid_map") << "0 " << group << " 1";
  return getuid() == 0;
}

bool EnterOwnMounts() {
  if (unshare(CLONE_NEWNS) != 0 && (!BecomeRoot() || unshare(CLONE_NEWNS) != 0)) return false;
  return mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0;
}

}  // namespace

MountedRun RunWithOwnMounts(const std::function<void()>& steps) {
  std::fflush(nullptr);
  const pid_t child = fork();
  if (child == 0) {
    if (!EnterOwnMounts()) End(kNotAllowed);
    steps();
    End(testing::Test::HasFailure() ? kFailed : 0);
  }
  int status = 0;
  if (child < 0 || waitpid(child, &status, 0) != child || !WIFEXITED(status)) {
    return MountedRun::kFailed;
  }
  if (WEXITSTATUS(status) == kNotAllowed) return MountedRun::kNotAllowed;
  return WEXITSTATUS(status) == 0 ? MountedRun::kPassed : MountedRun::kFailed;
}

void MountSmallDisk(const std::string& folder) {
  if (mount("small", folder.c_str(), "tmpfs", 0, "size=64k,nr_inodes=16") != 0) End(kNotAllowed);
}

void MountReadOnly(const std::string& folder) {
  const char* const path = folder.c_str();
  if (mount(path, path, nullptr, MS_BIND, nullptr) != 0 ||
      mount(nullptr, path, nullptr, MS_REMOUNT | MS_BIND | MS_RDONLY, nullptr) != 0) {
    End(kNotAllowed);
  }
}

void MountFile(const std::string& file, const std::string& path) {
  if (mount(file.c_str(), path.c_str(), nullptr, MS_BIND, nullptr) != 0) End(kNotAllowed);
}

void EnterOwnNetwork() {
  if (unshare(CLONE_NEWNET) != 0) End(kNotAllowed);
  const int any = socket(AF_INET, SOCK_DGRAM, 0);
  ifreq loopback{};
  loopback.ifr_name[0] = 'l';
  loopback.ifr_name[1] = 'o';
  loopback.ifr_flags = IFF_UP;
  if (ioctl(any, SIOCSIFFLAGS, &loopback) != 0) End(kNotAllowed);
  close(any);
}

}  // namespace korvixsdk::test
