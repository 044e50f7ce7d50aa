#include "platform/default_crypto_provider.h"

// bcrypt.h needs windows.h before it.
// clang-format off
#include "platform/windows/windows_headers.h"
#include <bcrypt.h>
// clang-format on

#include <climits>
#include <memory>
#include <optional>
#include <type_traits>
#include <vector>

#include "platform/digest_text.h"
#include "platform/fail.h"

namespace korvixsdk {
namespace {

struct CloseAlgorithm {
  void operator()(BCRYPT_ALG_HANDLE handle) const { BCryptCloseAlgorithmProvider(handle, 0); }
};
struct DestroyHash {
  void operator()(BCRYPT_HASH_HANDLE handle) const { BCryptDestroyHash(handle); }
};
using Algorithm = std::unique_ptr<std::remove_pointer_t<BCRYPT_ALG_HANDLE>, CloseAlgorithm>;
using Hash = std::unique_ptr<std::remove_pointer_t<BCRYPT_HASH_HANDLE>, DestroyHash>;

/// Opened for each call: kept open, it would be a state to guard against threads and to end in
/// time.
Algorithm OpenSha256() {
  BCRYPT_ALG_HANDLE handle = nullptr;
  const NTSTATUS status = BCryptOpenAlgorithmProvider(&handle, BCRYPT_SHA256_ALGORITHM, nullptr, 0);
  return Algorithm(BCRYPT_SUCCESS(status) ? handle : nullptr);
}

std::optional<DWORD> ReadLength(const Algorithm& algorithm, const wchar_t* property) {
  DWORD length = 0;
  ULONG written = 0;
  const NTSTATUS status = BCryptGetProperty(
      algorithm.get(), property, reinterpret_cast<PUCHAR>(&length), sizeof(length), &written, 0);
  if (!BCRYPT_SUCCESS(status)) return std::nullopt;
  return length;
}

Hash CreateHash(const Algorithm& algorithm, std::vector<unsigned char>& object) {
  BCRYPT_HASH_HANDLE handle = nullptr;
  const NTSTATUS status = BCryptCreateHash(algorithm.get(), &handle, object.data(),
                                           static_cast<ULONG>(object.size()), nullptr, 0, 0);
  return Hash(BCRYPT_SUCCESS(status) ? handle : nullptr);
}

/// One call for the whole input; CNG counts in 32 bits, so a longer one cannot be hashed.
bool HashData(const Hash& hash, const std::string& data) {
  if (data.size() > ULONG_MAX) return false;
  auto* const bytes = reinterpret_cast<PUCHAR>(const_cast<char*>(data.data()));
  return BCRYPT_SUCCESS(BCryptHashData(hash.get(), bytes, static_cast<ULONG>(data.size()), 0));
}

}  // namespace

Result<std::string> DefaultCryptoProvider::Sha256Hex(const std::string& data) {
  const Algorithm algorithm = OpenSha256();
  if (!algorithm) return Fail(kPlatformError, "BCryptOpenAlgorithmProvider failed");
  const std::optional<DWORD> object_length = ReadLength(algorithm, BCRYPT_OBJECT_LENGTH);
  if (!object_length) return Fail(kPlatformError, "BCryptGetProperty(object_length) failed");
  const std::optional<DWORD> hash_length = ReadLength(algorithm, BCRYPT_HASH_LENGTH);
  if (!hash_length) return Fail(kPlatformError, "BCryptGetProperty(hash_length) failed");

  // The buffers are declared before the hash, which lives in one of them until it is destroyed.
  std::vector<unsigned char> object(*object_length);
  std::vector<unsigned char> digest(*hash_length);
  Hash hash = CreateHash(algorithm, object);
  if (!hash) return Fail(kPlatformError, "BCryptCreateHash failed");
  if (!HashData(hash, data)) return Fail(kPlatformError, "BCryptHashData failed");
  const NTSTATUS finished =
      BCryptFinishHash(hash.get(), digest.data(), static_cast<ULONG>(digest.size()), 0);
  if (!BCRYPT_SUCCESS(finished)) return Fail(kPlatformError, "BCryptFinishHash failed");
  return {DigestText(digest), Error{}};
}

/// Windows keeps its own, and ends all other threads before the library is told of the end.
void KeepCryptoToTheEnd() {}

}  // namespace korvixsdk
