#ifndef KORVIXSDK_TESTS_SUPPORT_RECORD_EQUALITY_H_
#define KORVIXSDK_TESTS_SUPPORT_RECORD_EQUALITY_H_

#include <gtest/gtest.h>
#include <korvixsdk/korvixsdk.h>

#include <ostream>
#include <tuple>
#include <utility>

/// Equality and printing of the public records, so that a test compares a whole record at once and
/// a failure shows every field. In the records' own namespace, where EXPECT_EQ looks for them.
/// Bindings name the fields, as those do not compile when a record has one more.
namespace korvixsdk {

inline auto Fields(const Error& error) {
  const auto& [code, message] = error;
  return std::tie(code, message);
}

inline auto Fields(const UpdateInfo& info) {
  const auto& [update, force, latest, minimum, time, content, url, sha256, message] = info;
  return std::tie(update, force, latest, minimum, time, content, url, sha256, message);
}

inline auto Fields(const PreparedUpdate& prepared) {
  const auto& [ready, verified, url, expected, actual, path, reserved, message] = prepared;
  return std::tie(ready, verified, url, expected, actual, path, reserved, message);
}

inline auto Fields(const ServerResult& result) {
  const auto& [success, code, message, allowed, server_time] = result;
  return std::tie(success, code, message, allowed, server_time);
}

inline auto Fields(const UpdateCheckRequest& request) {
  const auto& [product_id, version, device_id] = request;
  return std::tie(product_id, version, device_id);
}

template <typename Record, typename = decltype(Fields(std::declval<const Record&>()))>
bool operator==(const Record& left, const Record& right) {
  return Fields(left) == Fields(right);
}

template <typename Record, typename = decltype(Fields(std::declval<const Record&>()))>
std::ostream& operator<<(std::ostream& stream, const Record& record) {
  // Copies, because GoogleTest prints a reference with its address.
  const auto copies = [](const auto&... fields) { return std::make_tuple(fields...); };
  return stream << testing::PrintToString(std::apply(copies, Fields(record)));
}

}  // namespace korvixsdk

#endif  // KORVIXSDK_TESTS_SUPPORT_RECORD_EQUALITY_H_
