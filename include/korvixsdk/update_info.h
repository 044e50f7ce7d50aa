#ifndef KORVIXSDK_UPDATE_INFO_H_
#define KORVIXSDK_UPDATE_INFO_H_

/// \file
/// \brief `UpdateInfo`: what an update check found.

#include <string>

namespace korvixsdk {

/// What `CheckForUpdate` returns and `PrepareUpdate` takes. The texts are those of the service,
/// unchanged.
struct UpdateInfo {
  /// The service offers a version that is newer than the host, or the host is older than the oldest
  /// supported version.
  bool has_update = false;
  /// The update is mandatory: the service says so, or the host is older than the oldest supported
  /// version. Has no meaning if `has_update` is false.
  bool force_update = false;
  /// The offered version.
  std::string latest_version{};
  /// The oldest version that the service still supports.
  std::string min_supported_version{};
  /// The release time of the offered version, as the service wrote it.
  std::string publish_time{};
  /// Release notes.
  std::string update_content{};
  /// The address of the package. For addresses that begin with "mock://" the library has packages
  /// of its own.
  std::string download_url{};
  /// The expected SHA-256 of the package, 64 lowercase hexadecimal digits. If it is empty, nothing
  /// is compared. Uppercase digits never match.
  std::string sha256{};
  /// Says why the service rejected the request, or is a text of the library's own; otherwise empty.
  /// A reply that rejects the request may offer a version all the same, so look at both.
  std::string message{};
};

}  // namespace korvixsdk

#endif  // KORVIXSDK_UPDATE_INFO_H_
