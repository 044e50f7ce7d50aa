#ifndef KORVIXSDK_TESTS_SUPPORT_LINUX_OWN_MOUNTS_H_
#define KORVIXSDK_TESTS_SUPPORT_LINUX_OWN_MOUNTS_H_

#include <functional>
#include <string>

namespace korvixsdk::test {

enum class MountedRun { kPassed, kFailed, kNotAllowed };

/// Runs `steps`, expectations and all, in a child process whose mounts nobody else sees and which
/// go away with it. Not allowed where the system gives this process no mounts of its own.
MountedRun RunWithOwnMounts(const std::function<void()>& steps);

/// For the steps; where the system refuses the mount, the run ends as not allowed.
void MountSmallDisk(const std::string& folder);
void MountReadOnly(const std::string& folder);
/// What is read at `path` is `file` from now on.
void MountFile(const std::string& file, const std::string& path);

/// For the steps: a network with nothing in it but 127.0.0.0/8, where every port is free.
void EnterOwnNetwork();

}  // namespace korvixsdk::test

#endif  // KORVIXSDK_TESTS_SUPPORT_LINUX_OWN_MOUNTS_H_
