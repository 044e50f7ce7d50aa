#include "package_signature.h"

namespace signed_updater {
namespace {

using korvixsdk::Error;
using korvixsdk::Result;

constexpr std::size_t kCoordinate = 32;

/// What stands before the coordinates of an uncompressed P-256 key (RFC 5480): always the same
/// bytes, so that comparing them spares an ASN.1 reader.
const std::string kKeyHeader(
    "\x30\x59\x30\x13\x06\x07\x2a\x86\x48\xce\x3d\x02\x01\x06\x08\x2a\x86\x48\xce\x3d\x03\x01\x07"
    "\x03\x42\x00\x04",
    27);

int DigitValue(char digit) {
  if (digit >= '0' && digit <= '9') return digit - '0';
  if (digit >= 'a' && digit <= 'f') return digit - 'a' + 10;
  if (digit >= 'A' && digit <= 'F') return digit - 'A' + 10;
  return -1;
}

}  // namespace

Result<PublicKey> ReadPublicKey(const std::string& der) {
  if (der.size() != kKeyHeader.size() + 2 * kCoordinate || der.rfind(kKeyHeader, 0) != 0) {
    return {{}, {kKeyNotUsable, "The public key is no P-256 key in DER"}};
  }
  return {{der.substr(kKeyHeader.size(), kCoordinate),
           der.substr(kKeyHeader.size() + kCoordinate, kCoordinate)},
          {}};
}

std::string BytesFromHex(const std::string& hex) {
  if (hex.size() % 2 != 0) return "";
  std::string bytes;
  for (std::size_t at = 0; at < hex.size(); at += 2) {
    const int high = DigitValue(hex[at]);
    const int low = DigitValue(hex[at + 1]);
    if (high < 0 || low < 0) return "";
    bytes += static_cast<char>(high * 16 + low);
  }
  return bytes;
}

Error VerifyPackage(const std::string& package, const std::string& signature, const PublicKey& key,
                    korvixsdk::ICryptoProvider& crypto) {
  const Result<std::string> digest = crypto.Sha256Hex(package);
  if (!digest.ok()) return digest.error;
  if (VerifyEcdsaP256(key, BytesFromHex(digest.value), signature)) return {};
  return {kSignatureRefused, "The package's signature is not valid"};
}

}  // namespace signed_updater
