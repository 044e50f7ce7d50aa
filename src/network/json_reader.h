#ifndef KORVIXSDK_NETWORK_JSON_READER_H_
#define KORVIXSDK_NETWORK_JSON_READER_H_

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace korvixsdk {

/// The members of a service reply that the library knows; each is absent unless the reply held it.
/// The doctor's checks of an install reply, the reader's fuzz harness with its dictionary, the
/// peers in bench/speed and the table in docs/service.md know them, too.
struct ResponseEnvelope {
  /// The whole text is one JSON object and its known members have their required forms. Otherwise
  /// nothing is present.
  bool accepted = false;
  std::optional<std::int32_t> code{};
  std::optional<bool> allowed{};
  std::optional<bool> success{};
  std::optional<std::string> msg{};
  std::optional<std::int64_t> server_time{};
};

/// Reads a reply strictly (RFC 8259), in one pass, without building a tree: members that are not
/// known are checked and dropped. Rejected as a whole: anything but white space around the one
/// object, nesting deeper than 64, a known member of the wrong form, a known member given twice.
/// Bytes from 0x80 up are copied unchecked. Never throws; running out of memory rejects the text.
ResponseEnvelope ReadResponseEnvelope(std::string_view text) noexcept;

}  // namespace korvixsdk

#endif  // KORVIXSDK_NETWORK_JSON_READER_H_
