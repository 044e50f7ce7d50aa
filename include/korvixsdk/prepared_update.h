#ifndef KORVIXSDK_PREPARED_UPDATE_H_
#define KORVIXSDK_PREPARED_UPDATE_H_

/// \file
/// \brief `PreparedUpdate`: a package on disk.

#include <string>

namespace korvixsdk {

/// The outcome of the preparation of a package and the input of the launch. The two flags are set
/// together: both true after a success, both false otherwise.
struct PreparedUpdate {
  /// The package is on disk and may be launched.
  bool ready = false;
  /// The package passed the hash check, or had no expected hash to be checked against.
  bool sha256_verified = false;
  /// Copy of `UpdateInfo::download_url`.
  std::string download_url{};
  /// Copy of `UpdateInfo::sha256`.
  std::string expected_sha256{};
  /// SHA-256 of the downloaded bytes, 64 lowercase hexadecimal digits (FIPS 180-4).
  std::string actual_sha256{};
  /// Path of the written package file, in the encoding of `SDKConfig::cache_dir`.
  std::string package_path{};
  /// Always empty; the library neither writes nor reads it.
  std::string reserved{};
  /// Empty, except after a hash mismatch, when it repeats the error's message.
  std::string message{};
};

}  // namespace korvixsdk

#endif  // KORVIXSDK_PREPARED_UPDATE_H_
