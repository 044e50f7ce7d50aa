#include "platform/default_crypto_provider.h"

#include <gtest/gtest.h>

#include <string>

namespace korvixsdk {
namespace {

std::string Digest(const std::string& data) {
  const Result<std::string> digest = DefaultCryptoProvider().Sha256Hex(data);
  EXPECT_TRUE(digest.ok()) << digest.error.message;
  return digest.value;
}

TEST(CryptoProvider, HashesEmptyInput) {
  EXPECT_EQ(Digest(""), "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855");
}

TEST(CryptoProvider, HashesStandardVectors) {
  EXPECT_EQ(Digest("abc"), "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad");
  EXPECT_EQ(Digest("abcdbcdecdefdefgefghfghighijhijkijkljklmklmnlmnomnopnopq"),
            "248d6a61d20638b8e5c026930c3e6039a33ce45964ff2167f6ecedd419db06c1");
}

TEST(CryptoProvider, HashesMillionBytes) {
  EXPECT_EQ(Digest(std::string(1000000, 'a')),
            "cdc76e5c9914fb9281a1c7e284d73e67f1809a48a497200e046d39ccc7112cd0");
}

TEST(CryptoProvider, PrintsSmallBytesWithLeadingZero) {
  EXPECT_EQ(Digest("39"), "0b918943df0962bc7a1824c0555a389347b4febdc7cf9d1254406d80ce44e3f9");
  for (const char* const data : {"", "a", "b", "c", "d", "e", "f", "g"}) {
    EXPECT_EQ(Digest(data).size(), 64u);
    EXPECT_EQ(Digest(data).find_first_not_of("0123456789abcdef"), std::string::npos);
  }
}

TEST(CryptoProvider, HashesZeroBytesOverFullLength) {
  EXPECT_NE(Digest(std::string("a\0b", 3)), Digest("a"));
  EXPECT_EQ(Digest(std::string(1, '\0')),
            "6e340b9cffb37a989ca544e6bb780a2c78901d3fb33738768511a30617afa01d");
}

}  // namespace
}  // namespace korvixsdk
