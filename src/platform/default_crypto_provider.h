#ifndef KORVIXSDK_PLATFORM_DEFAULT_CRYPTO_PROVIDER_H_
#define KORVIXSDK_PLATFORM_DEFAULT_CRYPTO_PROVIDER_H_

#include <string>

#include "korvixsdk/crypto_provider.h"

namespace korvixsdk {

/// SHA-256 by the operating system, one implementation a platform in its folder. Every call opens
/// and closes what it needs, so one instance serves any number of threads.
class DefaultCryptoProvider : public ICryptoProvider {
 public:
  Result<std::string> Sha256Hex(const std::string& data) override;
};

/// To be called before anybody sets up the system's cryptography: keeps it usable to the process's
/// end, for threads that the host does not wait for.
void KeepCryptoToTheEnd();

}  // namespace korvixsdk

#endif  // KORVIXSDK_PLATFORM_DEFAULT_CRYPTO_PROVIDER_H_
