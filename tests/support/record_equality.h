#ifndef KORVIXSDK_TESTS_SUPPORT_RECORD_EQUALITY_H_
#define KORVIXSDK_TESTS_SUPPORT_RECORD_EQUALITY_H_

#include <gtest/gtest.h>
#include <korvixsdk/korvixsdk.h>

#include <ostream>
#include <tuple>
#include <utility>

/// Equality and printing of the public records, so that a test compares a whole record at once and
/// a failure shows every field. In the records' own namespace, where EXPECT_EQ looks for them.
namespace korvixsdk {

inline auto Fields(const Error& error) { return std::tie(error.code, error.message); }

inline auto Fields(const UpdateInfo& info) {
  return std::tie(info.has_update, info.force_update, info.latest_version,
                  info.min_supported_version, info.publish_time, info.update_content,
                  info.download_url, info.sha256, info.message);
}

inline auto Fields(const PreparedUpdate& prepared) {
  return std::tie(prepared.ready, prepared.sha256_verified, prepared.download_url,
                  prepared.expected_sha256, prepared.actual_sha256, prepared.package_path,
                  prepared.reserved, prepared.message);
}

inline auto Fields(const ServerResult& result) {
  return std::tie(result.success, result.code, result.message, result.allowed, result.server_time);
}

inline auto Fields(const UpdateCheckRequest& request) {
  return std::tie(request.product_id, request.version, request.device_id);
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
