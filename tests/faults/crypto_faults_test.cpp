#include <gtest/gtest.h>

#include <string>
#include <tuple>

#include "platform/default_crypto_provider.h"
#include "support/failing_calls.h"

namespace korvixsdk {
namespace {

using test::FailingCall;

/// Function, which of its calls fails, and the message that belongs to it.
using Step = std::tuple<const char*, int, const char*>;

#ifdef _WIN32
const Step kSteps[] = {
    {"BCryptOpenAlgorithmProvider", 1, "BCryptOpenAlgorithmProvider failed"},
    {"BCryptGetProperty", 1, "BCryptGetProperty(object_length) failed"},
    {"BCryptGetProperty", 2, "BCryptGetProperty(hash_length) failed"},
    {"BCryptCreateHash", 1, "BCryptCreateHash failed"},
    {"BCryptHashData", 1, "BCryptHashData failed"},
    {"BCryptFinishHash", 1, "BCryptFinishHash failed"},
};
#else
const Step kSteps[] = {
    {"EVP_MD_fetch", 1, "BCryptOpenAlgorithmProvider failed"},
    {"EVP_MD_CTX_new", 1, "BCryptGetProperty(object_length) failed"},
    {"EVP_MD_get_size", 1, "BCryptGetProperty(hash_length) failed"},
    {"EVP_DigestInit_ex", 1, "BCryptCreateHash failed"},
    {"EVP_DigestUpdate", 1, "BCryptHashData failed"},
    {"EVP_DigestFinal_ex", 1, "BCryptFinishHash failed"},
};
#endif

class CryptoFaults : public testing::TestWithParam<Step> {};

TEST_P(CryptoFaults, StepThatFailsHasItsMessageAndLeavesNothingOpen) {
  const auto& [function, nth, message] = GetParam();
  const int open_before = test::OpenResources();
  {
    const FailingCall fail(function, nth);
    const Result<std::string> digest = DefaultCryptoProvider().Sha256Hex("abc");
    EXPECT_TRUE(fail.happened());
    EXPECT_EQ(digest.error.code, kPlatformError);
    EXPECT_EQ(digest.error.message, message);
    EXPECT_EQ(digest.value, "");
  }
  EXPECT_EQ(test::OpenResources(), open_before);
  EXPECT_EQ(DefaultCryptoProvider().Sha256Hex("abc").value.size(), 64u);
}

INSTANTIATE_TEST_SUITE_P(EveryStep, CryptoFaults, testing::ValuesIn(kSteps));

TEST(CryptoProviderResources, SuccessLeavesNothingOpen) {
  const int open_before = test::OpenResources();
  EXPECT_TRUE(DefaultCryptoProvider().Sha256Hex("abc").ok());
  EXPECT_EQ(test::OpenResources(), open_before);
}

}  // namespace
}  // namespace korvixsdk
