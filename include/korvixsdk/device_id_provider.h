#ifndef KORVIXSDK_DEVICE_ID_PROVIDER_H_
#define KORVIXSDK_DEVICE_ID_PROVIDER_H_

/// \file
/// \brief `IDeviceIdProvider`: a stable text that identifies this machine.

#include <string>
#include <vector>

#include "korvixsdk/result.h"

namespace korvixsdk {

/// Identifies the machine.
///
/// The default implementation joins the machine GUID and the computer name, hashes them with 64-bit
/// FNV-1a and returns "win-" and the hash in lowercase hexadecimal without padding. If it can read
/// neither of the two, it returns the identifier from the fallback file, or writes a new one there:
/// "guid-" and a random GUID. It may be called from any thread, and waits for nothing but the disk.
/// Exceptions: see `ServiceRegistry`.
class IDeviceIdProvider {
 public:
  virtual ~IDeviceIdProvider() = default;

  /// Finds out the identifier. It is the same on every call and in every run, as long as the
  /// machine keeps its GUID and its name. \return the identifier, or `kPlatformError` with
  ///   "No stable device fingerprint sources are available" (no property and no fallback file is
  ///   configured), "Failed to generate fallback device id",
  ///   "Failed to create fallback device id directory", "Failed to write fallback device id" or
  ///   "Failed to persist fallback device id".
  virtual Result<std::string> GetDeviceId() = 0;

  /// Collects the properties from which the identifier is made, each a label and a value:
  /// "machine_guid:..." and "computer_name:...", in this order, in lowercase (ASCII) and without
  /// white space around them.
  /// \return at least one source, or `kPlatformError` with
  ///   "Unable to collect any stable device fingerprint sources".
  virtual Result<std::vector<std::string>> CollectFingerprintSources() = 0;
};

}  // namespace korvixsdk

#endif  // KORVIXSDK_DEVICE_ID_PROVIDER_H_
