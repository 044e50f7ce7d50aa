#ifndef KORVIXSDK_PLATFORM_PLACEHOLDER_DEVICE_ID_PROVIDER_H_
#define KORVIXSDK_PLATFORM_PLACEHOLDER_DEVICE_ID_PROVIDER_H_

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "korvixsdk/device_id_provider.h"

namespace korvixsdk {

/// The 64-bit FNV-1a hash of `text` (Fowler, Noll and Vo; offset basis 0xcbf29ce484222325, prime
/// 0x100000001b3).
std::uint64_t Fnv1a64(std::string_view text);

/// Derives the identifier from machine GUID and computer name ("win-"), or keeps a random GUID in a
/// file when neither can be read ("guid-"). Read-only after construction; any thread.
class PlaceholderDeviceIdProvider : public IDeviceIdProvider {
 public:
  /// \param fallback_id_path UTF-8; empty follows the process-wide path.
  explicit PlaceholderDeviceIdProvider(std::string fallback_id_path);

  Result<std::string> GetDeviceId() override;
  Result<std::vector<std::string>> CollectFingerprintSources() override;

  /// Makes the collection of sources fail at once, so that tests reach the fallback on a machine
  /// that has both properties. Not safe beside a running call.
  void set_force_sources_unavailable(bool value) { forceSourcesUnavailable = value; }

 private:
  std::string fallbackIdPath;
  bool forceSourcesUnavailable = false;
};

}  // namespace korvixsdk

#endif  // KORVIXSDK_PLATFORM_PLACEHOLDER_DEVICE_ID_PROVIDER_H_
