#ifndef KORVIXSDK_EXAMPLES_SIGNED_UPDATER_PACKAGE_SIGNATURE_H_
#define KORVIXSDK_EXAMPLES_SIGNED_UPDATER_PACKAGE_SIGNATURE_H_

#include <korvixsdk/korvixsdk.h>

#include <string>

namespace signed_updater {

/// Codes of this program's own, beyond the library's.
enum SignatureError : std::int32_t {
  kKeyNotUsable = 20,
  kSignatureMissing = 21,
  kSignatureRefused = 22,
};

/// A public key of the curve P-256: x and y, 32 bytes each, high byte first.
struct PublicKey {
  std::string x{};
  std::string y{};
};

/// Reads a key as `openssl pkey -pubout -outform DER` writes it.
korvixsdk::Result<PublicKey> ReadPublicKey(const std::string& der);

/// Turns hexadecimal digits into bytes; nothing when the text is anything else.
std::string BytesFromHex(const std::string& hex);

/// Does `signature` (ECDSA, DER, as `openssl dgst -sha256 -sign` writes it) belong to these bytes?
korvixsdk::Error VerifyPackage(const std::string& package, const std::string& signature,
                               const PublicKey& key, korvixsdk::ICryptoProvider& crypto);

/// The platform's part of it: ECDSA over a SHA-256 digest of 32 bytes. False for any failure, be it
/// of the signature or of the system.
bool VerifyEcdsaP256(const PublicKey& key, const std::string& digest, const std::string& signature);

}  // namespace signed_updater

#endif  // KORVIXSDK_EXAMPLES_SIGNED_UPDATER_PACKAGE_SIGNATURE_H_
