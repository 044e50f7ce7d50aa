#include "platform/default_crypto_provider.h"

#include <openssl/crypto.h>
#include <openssl/evp.h>

#include <memory>
#include <vector>

#include "platform/digest_text.h"
#include "platform/fail.h"

namespace korvixsdk {
namespace {

struct FreeAlgorithm {
  void operator()(EVP_MD* algorithm) const { EVP_MD_free(algorithm); }
};
struct FreeHash {
  void operator()(EVP_MD_CTX* hash) const { EVP_MD_CTX_free(hash); }
};

}  // namespace

/// The steps of the Windows implementation, one for one, so that hosts see one table of messages:
/// the context stands for the hash object's memory, initialisation for its creation.
Result<std::string> DefaultCryptoProvider::Sha256Hex(const std::string& data) {
  const std::unique_ptr<EVP_MD, FreeAlgorithm> algorithm(EVP_MD_fetch(nullptr, "SHA256", nullptr));
  if (!algorithm) return Fail(kPlatformError, "BCryptOpenAlgorithmProvider failed");
  const std::unique_ptr<EVP_MD_CTX, FreeHash> hash(EVP_MD_CTX_new());
  if (!hash) return Fail(kPlatformError, "BCryptGetProperty(object_length) failed");
  const int hash_length = EVP_MD_get_size(algorithm.get());
  if (hash_length <= 0) return Fail(kPlatformError, "BCryptGetProperty(hash_length) failed");

  std::vector<unsigned char> digest(static_cast<std::size_t>(hash_length));
  if (EVP_DigestInit_ex(hash.get(), algorithm.get(), nullptr) != 1) {
    return Fail(kPlatformError, "BCryptCreateHash failed");
  }
  if (EVP_DigestUpdate(hash.get(), data.data(), data.size()) != 1) {
    return Fail(kPlatformError, "BCryptHashData failed");
  }
  if (EVP_DigestFinal_ex(hash.get(), digest.data(), nullptr) != 1) {
    return Fail(kPlatformError, "BCryptFinishHash failed");
  }
  return {DigestText(digest), Error{}};
}

/// OpenSSL would take itself apart in an exit handler, under the hands of a thread that hashes or
/// speaks TLS at that moment: of 300 such processes 14 and 52 crashed. Without the handler its
/// memory goes with the process. A host that has set OpenSSL up itself, before, has decided
/// already.
void KeepCryptoToTheEnd() { OPENSSL_init_crypto(OPENSSL_INIT_NO_ATEXIT, nullptr); }

}  // namespace korvixsdk
