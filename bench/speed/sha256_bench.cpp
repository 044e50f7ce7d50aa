#include <memory>

#include "benches.h"
#include "digest_by_hand.h"
#include "measure.h"
#include "platform/default_crypto_provider.h"
#include "require.h"

namespace speed {

void RegisterSha256() {
  constexpr std::size_t kSize = 64 << 20;
  const auto data = std::make_shared<const std::string>(kSize, 'k');
  Require(
      korvixsdk::DefaultCryptoProvider().Sha256Hex(*data).value == HexByHand(DigestByHand(*data)),
      "the digest of 64 MiB");
  Register("sha256/ours/" + std::to_string(kSize),
           [data] { return korvixsdk::DefaultCryptoProvider().Sha256Hex(*data); });
  Register("sha256/evp/" + std::to_string(kSize), [data] { return DigestByHand(*data); });
}

}  // namespace speed
