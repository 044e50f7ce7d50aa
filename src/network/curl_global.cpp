#include <curl/curl.h>

namespace korvixsdk {
namespace {

/// libcurl's global state, from the loading of the library to its unloading. A failure is not
/// looked at here; it shows when a handle is asked for.
struct CurlGlobal {
  CurlGlobal() { curl_global_init(CURL_GLOBAL_ALL); }
  ~CurlGlobal() { curl_global_cleanup(); }
  CurlGlobal(const CurlGlobal&) = delete;
  CurlGlobal& operator=(const CurlGlobal&) = delete;
};

const CurlGlobal curl_global;

}  // namespace
}  // namespace korvixsdk
