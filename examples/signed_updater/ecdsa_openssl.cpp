#include <openssl/core_names.h>
#include <openssl/evp.h>

#include <memory>

#include "package_signature.h"

namespace signed_updater {
namespace {

struct Free {
  void operator()(EVP_PKEY* key) const { EVP_PKEY_free(key); }
  void operator()(EVP_PKEY_CTX* context) const { EVP_PKEY_CTX_free(context); }
};
using KeyHandle = std::unique_ptr<EVP_PKEY, Free>;
using ContextHandle = std::unique_ptr<EVP_PKEY_CTX, Free>;

const unsigned char* Bytes(const std::string& text) {
  return reinterpret_cast<const unsigned char*>(text.data());
}

/// Null also when the point is not on the curve.
KeyHandle ImportKey(const PublicKey& key) {
  std::string group = "prime256v1";
  std::string point = "\x04" + key.x + key.y;
  OSSL_PARAM parameters[] = {
      OSSL_PARAM_construct_utf8_string(OSSL_PKEY_PARAM_GROUP_NAME, group.data(), group.size()),
      OSSL_PARAM_construct_octet_string(OSSL_PKEY_PARAM_PUB_KEY, point.data(), point.size()),
      OSSL_PARAM_construct_end()};
  const ContextHandle context(EVP_PKEY_CTX_new_from_name(nullptr, "EC", nullptr));
  EVP_PKEY* imported = nullptr;
  if (!context || EVP_PKEY_fromdata_init(context.get()) != 1) return nullptr;
  if (EVP_PKEY_fromdata(context.get(), &imported, EVP_PKEY_PUBLIC_KEY, parameters) != 1) {
    return nullptr;
  }
  return KeyHandle(imported);
}

}  // namespace

bool VerifyEcdsaP256(const PublicKey& key, const std::string& digest,
                     const std::string& signature) {
  const KeyHandle imported = ImportKey(key);
  if (!imported) return false;
  const ContextHandle context(EVP_PKEY_CTX_new(imported.get(), nullptr));
  if (!context || EVP_PKEY_verify_init(context.get()) != 1) return false;
  if (EVP_PKEY_CTX_set_signature_md(context.get(), EVP_sha256()) != 1) return false;
  // 1 alone means valid: 0 is "not valid", and a negative answer a failure.
  return EVP_PKEY_verify(context.get(), Bytes(signature), signature.size(), Bytes(digest),
                         digest.size()) == 1;
}

}  // namespace signed_updater
