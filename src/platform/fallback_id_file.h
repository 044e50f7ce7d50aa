#ifndef KORVIXSDK_PLATFORM_FALLBACK_ID_FILE_H_
#define KORVIXSDK_PLATFORM_FALLBACK_ID_FILE_H_

#include <string>

#include "korvixsdk/result.h"

namespace korvixsdk {

/// The identifier of a machine that tells nothing about itself: made once, kept in a file.

/// Publishes the file for every provider without a path of its own, in the whole process. UTF-8;
/// empty means none. Any thread.
void SetDefaultFallbackIdPath(const std::string& path);

/// A copy of the path published last. Any thread.
std::string DefaultFallbackIdPath();

/// The identifier in the file at `path`, as it stands there; or a new one ("guid-" and a random
/// GUID), which is returned only once it is written.
///
/// \param path UTF-8; empty follows the process-wide path.
/// \return `kPlatformError` with one of the messages of `IDeviceIdProvider::GetDeviceId` where
/// there
///   is neither.
Result<std::string> FallbackId(const std::string& path);

}  // namespace korvixsdk

#endif  // KORVIXSDK_PLATFORM_FALLBACK_ID_FILE_H_
