#ifndef KORVIXSDK_BENCH_SPEED_BODIES_H_
#define KORVIXSDK_BENCH_SPEED_BODIES_H_

#include <array>
#include <cstddef>
#include <string>

namespace speed {

/// Replies made in code, the same at every run. What fills them up is unknown to the library:
/// nested objects and arrays, escapes, numbers of every form.

/// An accepting install reply of exactly `size` bytes, at least 120; its msg is "Welcome".
std::string InstallReply(std::size_t size);

/// An accepting install reply whose msg is `message`, a text that is escaped already.
std::string InstallReplyWithMessage(const std::string& message);

/// A text of about `size` bytes for a msg, with or without an escape on every line.
std::string LongMessage(std::size_t size, bool escapes);

/// An update reply of exactly `size` bytes with the nine known members at its end, or with none.
std::string UpdateReply(std::size_t size, bool with_members);

/// The nine members in the order in which the library looks for them.
inline constexpr std::array<const char*, 9> kUpdateMembers = {
    "force_update", "version",        "min_supported_version",
    "publish_time", "update_content", "download_url",
    "sha256",       "code",           "msg"};

}  // namespace speed

#endif  // KORVIXSDK_BENCH_SPEED_BODIES_H_
