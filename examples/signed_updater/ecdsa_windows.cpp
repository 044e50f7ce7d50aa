#include <windows.h>
// Needs the types of <windows.h>.
#include <bcrypt.h>

#include <memory>
#include <optional>
#include <string_view>
#include <type_traits>

#include "package_signature.h"

namespace signed_updater {
namespace {

constexpr std::size_t kCoordinate = 32;

struct CloseAlgorithm {
  void operator()(BCRYPT_ALG_HANDLE algorithm) const { BCryptCloseAlgorithmProvider(algorithm, 0); }
};
struct DestroyKey {
  void operator()(BCRYPT_KEY_HANDLE key) const { BCryptDestroyKey(key); }
};
using AlgorithmHandle = std::unique_ptr<std::remove_pointer_t<BCRYPT_ALG_HANDLE>, CloseAlgorithm>;
using KeyHandle = std::unique_ptr<std::remove_pointer_t<BCRYPT_KEY_HANDLE>, DestroyKey>;

UCHAR* Bytes(std::string& text) { return reinterpret_cast<UCHAR*>(text.data()); }

/// Takes one DER value with this tag off the front of `der`. The values of a P-256 signature are
/// shorter than 128 bytes, so that a length is one byte.
std::optional<std::string_view> TakeValue(char tag, std::string_view& der) {
  if (der.size() < 2 || der[0] != tag) return std::nullopt;
  const auto length = static_cast<unsigned char>(der[1]);
  if (length > 127 || der.size() - 2u < length) return std::nullopt;
  const std::string_view value = der.substr(2, length);
  der.remove_prefix(2u + length);
  return value;
}

bool IsNegative(char first_byte) { return (static_cast<unsigned char>(first_byte) & 0x80) != 0; }

/// A positive DER integer as exactly 32 bytes.
std::optional<std::string> TakeInteger(std::string_view& der) {
  std::optional<std::string_view> value = TakeValue('\x02', der);
  if (!value || value->empty() || IsNegative(value->front())) return std::nullopt;
  // A zero byte stands before a number whose first bit is set, and before no other.
  if (value->size() > 1 && value->front() == '\0') {
    value->remove_prefix(1);
    if (!IsNegative(value->front())) return std::nullopt;
  }
  if (value->size() > kCoordinate) return std::nullopt;
  return std::string(kCoordinate - value->size(), '\0').append(*value);
}

/// CNG wants the two numbers of a signature one after the other, and nothing around them.
std::optional<std::string> RawSignature(const std::string& signature) {
  std::string_view rest = signature;
  std::optional<std::string_view> numbers = TakeValue('\x30', rest);
  if (!numbers || !rest.empty()) return std::nullopt;
  const std::optional<std::string> r = TakeInteger(*numbers);
  const std::optional<std::string> s = TakeInteger(*numbers);
  if (!r || !s || !numbers->empty()) return std::nullopt;
  return *r + *s;
}

AlgorithmHandle OpenEcdsa() {
  BCRYPT_ALG_HANDLE algorithm = nullptr;
  BCryptOpenAlgorithmProvider(&algorithm, BCRYPT_ECDSA_P256_ALGORITHM, nullptr, 0);
  return AlgorithmHandle(algorithm);
}

KeyHandle ImportKey(const AlgorithmHandle& algorithm, const PublicKey& key) {
  const BCRYPT_ECCKEY_BLOB header{BCRYPT_ECDSA_PUBLIC_P256_MAGIC, kCoordinate};
  std::string blob(reinterpret_cast<const char*>(&header), sizeof(header));
  blob += key.x + key.y;
  BCRYPT_KEY_HANDLE imported = nullptr;
  BCryptImportKeyPair(algorithm.get(), nullptr, BCRYPT_ECCPUBLIC_BLOB, &imported, Bytes(blob),
                      static_cast<ULONG>(blob.size()), 0);
  return KeyHandle(imported);
}

}  // namespace

bool VerifyEcdsaP256(const PublicKey& key, const std::string& digest,
                     const std::string& signature) {
  std::optional<std::string> raw = RawSignature(signature);
  if (!raw) return false;
  const AlgorithmHandle algorithm = OpenEcdsa();
  if (!algorithm) return false;
  const KeyHandle imported = ImportKey(algorithm, key);
  if (!imported) return false;
  std::string hash = digest;
  return BCryptVerifySignature(imported.get(), nullptr, Bytes(hash),
                               static_cast<ULONG>(hash.size()), Bytes(*raw),
                               static_cast<ULONG>(raw->size()), 0) == 0;
}

}  // namespace signed_updater
