#ifndef KORVIXSDK_EXAMPLES_PACKAGE_PROGRESS_FILE_DOWNLOAD_H_
#define KORVIXSDK_EXAMPLES_PACKAGE_PROGRESS_FILE_DOWNLOAD_H_

#include <korvixsdk/korvixsdk.h>

#include <cstdint>
#include <functional>
#include <string>

namespace package_progress {

/// A code of this host's own, which the library hands on unchanged.
constexpr std::int32_t kDownloadCancelled = 50;

/// Told how many bytes have come, and of how many (0: unknown), at least once a second. The answer
/// false cancels the download.
using Progress = std::function<bool(std::int64_t received, std::int64_t total)>;

/// Downloads `url` into the file at `path`. A download that fails, or is cancelled, leaves no file.
korvixsdk::Error DownloadToFile(const std::string& url, const std::string& path,
                                const Progress& progress);

}  // namespace package_progress

#endif  // KORVIXSDK_EXAMPLES_PACKAGE_PROGRESS_FILE_DOWNLOAD_H_
