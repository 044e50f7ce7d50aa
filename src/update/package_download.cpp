#include "update/package_download.h"

#include <utility>

#include "network/curl_handle.h"
#include "platform/fail.h"
#include "platform/mock_addresses.h"
#include "platform/or_else.h"

namespace korvixsdk {
namespace {

constexpr long kTimeoutSeconds = 30;
/// libcurl's defaults, said all the same: what is fetched here will be run.
constexpr long kVerifyPeer = 1;
/// The certificate must name the host; 1 would only ask for any name.
constexpr long kVerifyHost = 2;
/// An announced length above this is not believed before its bytes arrive.
constexpr curl_off_t kLargestReservation = curl_off_t{1} << 30;

struct Download {
  CURL* handle;
  std::string body{};
  bool started = false;
};

std::string TransferErrorText(CURLcode code) {
  return std::string("Update download failed: ") + curl_easy_strerror(code);
}

/// Makes room for the announced length at once, so that the package is in memory only once. Without
/// that much memory the body grows as it comes, and fails where it must.
void ReserveAnnouncedLength(Download& download) noexcept {
  curl_off_t length = -1;
  curl_easy_getinfo(download.handle, CURLINFO_CONTENT_LENGTH_DOWNLOAD_T, &length);
  if (length <= 0 || length > kLargestReservation) return;
  OrElse([&] { return download.body.reserve(static_cast<std::size_t>(length)), true; }, false);
}

std::size_t CollectBody(char* data, std::size_t size, std::size_t count, void* context) noexcept {
  auto& download = *static_cast<Download*>(context);
  if (!download.started) {
    download.started = true;
    ReserveAnnouncedLength(download);
  }
  return AppendBlock(data, size * count, download.body);
}

Result<std::string> DownloadWithCurl(const std::string& url) {
  CurlHandle handle = MakeCurlHandle();
  if (!handle) return Fail(kNetworkError, "Failed to initialize libcurl for update download");
  Download download{handle.get()};
  CURLcode result = CurlOptions(handle)
                        .SetUrl(url)
                        .Set(CURLOPT_FOLLOWLOCATION, 1L)
                        .Set(CURLOPT_WRITEFUNCTION, &CollectBody)
                        .Set(CURLOPT_WRITEDATA, &download)
                        .Set(CURLOPT_TIMEOUT, kTimeoutSeconds)
                        .Set(CURLOPT_SSL_VERIFYPEER, kVerifyPeer)
                        .Set(CURLOPT_SSL_VERIFYHOST, kVerifyHost)
                        .result();
  if (result == CURLE_OK) result = curl_easy_perform(handle.get());
  const long status = HttpStatus(handle);
  handle.reset();
  if (result != CURLE_OK) return Fail(kNetworkError, TransferErrorText(result));
  if (!IsSuccessStatus(status)) {
    return Fail(kNetworkError, "Update download returned HTTP status " + std::to_string(status));
  }
  return {std::move(download.body), Error{}};
}

}  // namespace

Result<std::string> DownloadPackage(const std::string& url) {
  if (IsMockOfflinePackage(url)) return Fail(kNetworkError, "Mock update download is offline");
  if (IsMockUrl(url)) return {MockPackage(url), Error{}};
  return DownloadWithCurl(url);
}

Error DownloadOutOfMemoryError() {
  return Fail(kNetworkError, TransferErrorText(CURLE_OUT_OF_MEMORY));
}

}  // namespace korvixsdk
