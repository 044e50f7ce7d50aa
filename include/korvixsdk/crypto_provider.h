#ifndef KORVIXSDK_CRYPTO_PROVIDER_H_
#define KORVIXSDK_CRYPTO_PROVIDER_H_

/// \file
/// \brief `ICryptoProvider`: SHA-256.

#include <string>

#include "korvixsdk/result.h"

namespace korvixsdk {

/// Computes digests. The default implementation uses the operating system (CNG on Windows, OpenSSL
/// on Linux), keeps nothing between calls and may be called from any thread. Exceptions: see
/// `ServiceRegistry`.
class ICryptoProvider {
 public:
  virtual ~ICryptoProvider() = default;

  /// Computes the SHA-256 (FIPS 180-4) of all bytes of `data`, zero bytes included.
  /// \return 64 lowercase hexadecimal digits, the first byte first, or `kPlatformError` with one of
  ///   "BCryptOpenAlgorithmProvider failed", "BCryptGetProperty(object_length) failed",
  ///   "BCryptGetProperty(hash_length) failed", "BCryptCreateHash failed",
  ///   "BCryptHashData failed", "BCryptFinishHash failed" (the same texts on every platform). On
  ///   Windows more than 4 GiB cannot be hashed.
  /// Blocks while it computes, longer for more data.
  virtual Result<std::string> Sha256Hex(const std::string& data) = 0;
};

}  // namespace korvixsdk

#endif  // KORVIXSDK_CRYPTO_PROVIDER_H_
