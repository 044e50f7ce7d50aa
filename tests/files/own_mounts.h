#ifndef KORVIXSDK_TESTS_FILES_OWN_MOUNTS_H_
#define KORVIXSDK_TESTS_FILES_OWN_MOUNTS_H_

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

}  // namespace korvixsdk::test

#endif  // KORVIXSDK_TESTS_FILES_OWN_MOUNTS_H_
