#include "file_download.h"

#include <curl/curl.h>

#include <cstdio>
#include <exception>
#include <fstream>
#include <memory>

namespace package_progress {
namespace {

using korvixsdk::Error;

constexpr long kConnectTimeoutSeconds = 10;
/// No limit for the whole transfer, as the default service has one: a large package may take its
/// time on a slow line, as long as something arrives.
constexpr long kLongestStandstillSeconds = 30;

struct CurlCleanup {
  void operator()(CURL* handle) const { curl_easy_cleanup(handle); }
};
using CurlHandle = std::unique_ptr<CURL, CurlCleanup>;

struct Download {
  CURL* handle;
  const Progress& progress;
  std::ofstream file;
  std::int64_t received = 0;
  bool write_failed = false;
  bool cancelled = false;
};

/// The callbacks must let no exception into libcurl's frames.
bool GoesOn(Download& download, std::int64_t total) noexcept {
  try {
    if (download.progress(download.received, total)) return true;
  } catch (const std::exception&) {
  }
  download.cancelled = true;
  return false;
}

std::size_t WriteBlock(char* data, std::size_t, std::size_t count, void* context) noexcept {
  Download& download = *static_cast<Download*>(context);
  download.file.write(data, static_cast<std::streamsize>(count));
  if (!download.file) {
    download.write_failed = true;
    return 0;
  }
  download.received += static_cast<std::int64_t>(count);
  curl_off_t total = 0;
  curl_easy_getinfo(download.handle, CURLINFO_CONTENT_LENGTH_DOWNLOAD_T, &total);
  return GoesOn(download, total > 0 ? total : 0) ? count : 0;
}

/// Also called while nothing arrives, so that a cancellation need not wait for the next block.
int OnProgress(void* context, curl_off_t total, curl_off_t, curl_off_t, curl_off_t) noexcept {
  return GoesOn(*static_cast<Download*>(context), total) ? 0 : 1;
}

/// Sets options until libcurl refuses one.
class Options {
 public:
  explicit Options(CURL* handle) : handle_(handle) {}

  template <typename T>
  Options& Set(CURLoption option, T value) {
    if (result_ == CURLE_OK) result_ = curl_easy_setopt(handle_, option, value);
    return *this;
  }
  CURLcode result() const { return result_; }

 private:
  CURL* handle_;
  CURLcode result_ = CURLE_OK;
};

CURLcode Transfer(CURL* handle, const std::string& url, Download& download) {
  const CURLcode result = Options(handle)
                              .Set(CURLOPT_URL, url.c_str())
                              .Set(CURLOPT_PROTOCOLS_STR, "http,https")
                              .Set(CURLOPT_FOLLOWLOCATION, 1L)
                              .Set(CURLOPT_NOSIGNAL, 1L)
                              .Set(CURLOPT_CONNECTTIMEOUT, kConnectTimeoutSeconds)
                              .Set(CURLOPT_LOW_SPEED_LIMIT, 1L)
                              .Set(CURLOPT_LOW_SPEED_TIME, kLongestStandstillSeconds)
                              .Set(CURLOPT_WRITEFUNCTION, &WriteBlock)
                              .Set(CURLOPT_WRITEDATA, &download)
                              .Set(CURLOPT_NOPROGRESS, 0L)
                              .Set(CURLOPT_XFERINFOFUNCTION, &OnProgress)
                              .Set(CURLOPT_XFERINFODATA, &download)
                              .result();
  return result == CURLE_OK ? curl_easy_perform(handle) : result;
}

Error Outcome(const Download& download, CURLcode result, const std::string& path) {
  if (download.cancelled) return {kDownloadCancelled, "Update download cancelled"};
  if (download.write_failed) {
    return {korvixsdk::kFileSystemError, "Failed to write file: " + path};
  }
  if (result != CURLE_OK) {
    return {korvixsdk::kNetworkError,
            std::string("Update download failed: ") + curl_easy_strerror(result)};
  }
  long status = 0;
  curl_easy_getinfo(download.handle, CURLINFO_RESPONSE_CODE, &status);
  if (status < 200 || status > 299) {
    return {korvixsdk::kNetworkError,
            "Update download returned HTTP status " + std::to_string(status)};
  }
  return {};
}

}  // namespace

Error DownloadToFile(const std::string& url, const std::string& path, const Progress& progress) {
  const CurlHandle handle(curl_easy_init());
  if (!handle) {
    return {korvixsdk::kNetworkError, "Failed to initialize libcurl for update download"};
  }
  Download download{handle.get(), progress, std::ofstream(path, std::ios::binary)};
  if (!download.file) {
    return {korvixsdk::kFileSystemError, "Failed to open file for write: " + path};
  }
  const CURLcode result = Transfer(handle.get(), url, download);
  // The last bytes may fail only now.
  download.file.close();
  if (!download.file) download.write_failed = true;
  Error error = Outcome(download, result, path);
  if (!error.ok()) std::remove(path.c_str());
  return error;
}

}  // namespace package_progress
