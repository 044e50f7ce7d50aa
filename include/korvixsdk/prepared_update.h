#ifndef KORVIXSDK_PREPARED_UPDATE_H_
#define KORVIXSDK_PREPARED_UPDATE_H_

/// \file
/// \brief `PreparedUpdate`: a package on disk.

#include <string>

namespace korvixsdk {

/// What `PrepareUpdate` returns and `LaunchPreparedUpdate` takes. The two flags are always the
/// same: both true after a success, both false otherwise.
struct PreparedUpdate {
  /// The package is on disk and may be launched.
  bool ready = false;
  /// The package has the expected hash, or no hash was expected.
  bool sha256_verified = false;
  /// A copy of `UpdateInfo::download_url`.
  std::string download_url{};
  /// A copy of `UpdateInfo::sha256`.
  std::string expected_sha256{};
  /// SHA-256 of the downloaded bytes, 64 lowercase hexadecimal digits (FIPS 180-4).
  std::string actual_sha256{};
  /// The path of the package file, in the same encoding as `SDKConfig::cache_dir`.
  std::string package_path{};
  /// Always empty; the library neither writes nor reads it.
  std::string reserved{};
  /// The error's message after a hash mismatch; otherwise empty.
  std::string message{};
};

}  // namespace korvixsdk

#endif  // KORVIXSDK_PREPARED_UPDATE_H_
