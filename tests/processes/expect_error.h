#ifndef KORVIXSDK_TESTS_PROCESSES_EXPECT_ERROR_H_
#define KORVIXSDK_TESTS_PROCESSES_EXPECT_ERROR_H_

#include <gtest/gtest.h>
#include <korvixsdk/korvixsdk.h>

#include <string>

#include "processes/file_host.h"
#include "support/temp_folder.h"

namespace korvixsdk::test {

inline void ExpectError(const Error& error, ErrorCode code, const std::string& message) {
  EXPECT_EQ(error.code, code);
  EXPECT_EQ(error.message, message);
}

/// The preparation failed, said so, and gave nothing that could be launched.
inline void ExpectNoPackage(FileHost& host, const std::string& url, ErrorCode code,
                            const std::string& message) {
  const Result<PreparedUpdate> prepared = host.Prepare(url);
  ExpectError(prepared.error, code, message);
  EXPECT_FALSE(prepared.value.ready);
  EXPECT_EQ(prepared.value.package_path, "");
  EXPECT_EQ(host.GetLastError(), message);
}

inline void ExpectNoId(FileHost& host, const std::string& message) {
  const Result<std::string> id = host.GetDeviceId();
  ExpectError(id.error, kPlatformError, message);
  EXPECT_EQ(id.value, "");
  EXPECT_EQ(host.GetLastError(), message);
}

/// The built-in package lies at `path`, whole.
inline void ExpectPackage(FileHost& host, const std::string& url, const std::string& path) {
  const Result<PreparedUpdate> prepared = host.Prepare(url);
  EXPECT_TRUE(prepared.ok()) << prepared.error.message;
  EXPECT_EQ(prepared.value.package_path, path);
  EXPECT_TRUE(prepared.value.ready);
}

}  // namespace korvixsdk::test

#endif  // KORVIXSDK_TESTS_PROCESSES_EXPECT_ERROR_H_
