#ifndef KORVIXSDK_UPDATE_INFO_H_
#define KORVIXSDK_UPDATE_INFO_H_

/// \file
/// \brief `UpdateInfo`: what an update check found.

#include <string>

namespace korvixsdk {

/// The outcome of an update check and the input of the preparation of a package. The texts are the
/// service's, as received.
struct UpdateInfo {
  /// A version newer than the host's is offered, or the host is below the supported minimum.
  bool has_update = false;
  /// The update is mandatory: the service says so, or the host is below the supported minimum.
  /// Means nothing without `has_update`.
  bool force_update = false;
  /// The offered version.
  std::string latest_version{};
  /// The oldest version that the service still supports.
  std::string min_supported_version{};
  /// Release time of the offered version, as the service wrote it.
  std::string publish_time{};
  /// Release notes.
  std::string update_content{};
  /// Address of the package. "mock://" addresses are answered from built-in payloads.
  std::string download_url{};
  /// Expected SHA-256 of the package, 64 lowercase hexadecimal digits. Empty skips the comparison;
  /// an uppercase digest never matches.
  std::string sha256{};
  /// Why the service rejected the request, or a text of the library's own; empty otherwise. A reply
  /// that rejects may still offer a version, so look at both.
  std::string message{};
};

}  // namespace korvixsdk

#endif  // KORVIXSDK_UPDATE_INFO_H_
