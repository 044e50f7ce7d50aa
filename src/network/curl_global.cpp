#include <atomic>

#include "network/curl_handle.h"
#include "platform/default_crypto_provider.h"

namespace korvixsdk {
namespace {

/// Two for each handle that lives, and one once the teardown has begun. One number, so that no
/// handle can come between the look at it and the decision that follows. Never destroyed: threads
/// that the host did not wait for go on asking after this file's objects are gone.
std::atomic<unsigned> handles_and_end{0};
constexpr unsigned kHandle = 2;
constexpr unsigned kEnd = 1;

/// libcurl's global state, from the loading of the library to its unloading or to the end of the
/// process. A failure is not looked at here; it shows when a handle is asked for.
struct CurlGlobal {
  CurlGlobal() {
    KeepCryptoToTheEnd();
    curl_global_init(CURL_GLOBAL_ALL);
  }
  /// A new handle would set libcurl up again, in a process whose TLS library may be gone already;
  /// so there is none from here on. While one still works in another thread, libcurl forbids its
  /// cleanup, and the process's end does without.
  ~CurlGlobal() {
    if (handles_and_end.fetch_or(kEnd) == 0) curl_global_cleanup();
  }
  CurlGlobal(const CurlGlobal&) = delete;
  CurlGlobal& operator=(const CurlGlobal&) = delete;
};

const CurlGlobal curl_global;

}  // namespace

CurlHandle MakeCurlHandle() {
  const bool ending = (handles_and_end.fetch_add(kHandle) & kEnd) != 0;
  CURL* const handle = ending ? nullptr : curl_easy_init();
  if (handle == nullptr) handles_and_end.fetch_sub(kHandle);
  return CurlHandle(handle);
}

void CurlHandleCleanup::operator()(CURL* handle) const {
  curl_easy_cleanup(handle);
  handles_and_end.fetch_sub(kHandle);
}

}  // namespace korvixsdk
