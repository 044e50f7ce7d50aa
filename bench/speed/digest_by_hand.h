#ifndef KORVIXSDK_BENCH_SPEED_DIGEST_BY_HAND_H_
#define KORVIXSDK_BENCH_SPEED_DIGEST_BY_HAND_H_

#include <openssl/evp.h>

#include <array>
#include <string>

#include "require.h"

namespace speed {

using Digest = std::array<unsigned char, 32>;

/// SHA-256 in the one call that libcrypto has for it.
inline Digest DigestByHand(const std::string& data) {
  Digest digest{};
  unsigned length = 0;
  const int done =
      EVP_Digest(data.data(), data.size(), digest.data(), &length, EVP_sha256(), nullptr);
  Require(done == 1 && length == digest.size(), "EVP_Digest");
  return digest;
}

inline std::string HexByHand(const Digest& digest) {
  std::string text;
  for (const unsigned byte : digest) {
    text += "0123456789abcdef"[byte / 16];
    text += "0123456789abcdef"[byte % 16];
  }
  return text;
}

}  // namespace speed

#endif  // KORVIXSDK_BENCH_SPEED_DIGEST_BY_HAND_H_
