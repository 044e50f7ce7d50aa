#ifndef KORVIXSDK_PLATFORM_DETACHED_PROCESS_H_
#define KORVIXSDK_PLATFORM_DETACHED_PROCESS_H_

#include <string>

namespace korvixsdk {

/// Starts `program` with `argument` as its only argument, in the caller's working directory and
/// environment, and returns without waiting for it to end. The new process outlives the caller and
/// inherits none of its handles but the standard streams (and
/// on a Linux older than 5.11 descriptors that were opened without O_CLOEXEC).
///
/// \return false when the program could not be started, a text holds a zero byte, or
///   memory runs out.
bool StartDetachedProcess(const std::string& program, const std::string& argument) noexcept;

}  // namespace korvixsdk

#endif  // KORVIXSDK_PLATFORM_DETACHED_PROCESS_H_
