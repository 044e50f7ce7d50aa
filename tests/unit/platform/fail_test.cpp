#include "platform/fail.h"

#include <gtest/gtest.h>

#include <string>

#include "korvixsdk/server_result.h"

namespace korvixsdk {
namespace {

TEST(Fail, BecomesError) {
  const Error error = Fail(kNotFound, "gone");
  EXPECT_EQ(error.code, kNotFound);
  EXPECT_EQ(error.message, "gone");
}

TEST(Fail, BecomesResultOfAnythingWithEmptyValue) {
  const Result<std::string> text = Fail(kNetworkError, std::string("a ") + "text");
  EXPECT_EQ(text.error.code, kNetworkError);
  EXPECT_EQ(text.error.message, "a text");
  EXPECT_EQ(text.value, "");
  const Result<ServerResult> reply = Fail(kInvalidState, "no reply");
  EXPECT_EQ(reply.error.message, "no reply");
  EXPECT_FALSE(reply.value.success);
}

}  // namespace
}  // namespace korvixsdk
