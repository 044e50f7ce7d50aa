#ifndef KORVIXSDK_UPDATE_PACKAGE_DOWNLOAD_H_
#define KORVIXSDK_UPDATE_PACKAGE_DOWNLOAD_H_

#include <string>

#include "korvixsdk/error.h"
#include "korvixsdk/result.h"

namespace korvixsdk {

/// Fetches a whole package into memory, at most 30 seconds but for a look-up of the name, for whose
/// end libcurl waits; "mock://" addresses are answered from built-in payloads.
///
/// \return the bytes; or kNetworkError "Mock update download is offline",
///   "Failed to initialize libcurl for update download",
///   "Update download failed: " + libcurl's text,
///   "Update download returned HTTP status " + status.
Result<std::string> DownloadPackage(const std::string& url);

/// What a download fails with when memory does not suffice for its texts.
Error DownloadOutOfMemoryError();

}  // namespace korvixsdk

#endif  // KORVIXSDK_UPDATE_PACKAGE_DOWNLOAD_H_
