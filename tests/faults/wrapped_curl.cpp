#include "faults/wrapped_curl.h"

#include <cstdarg>

#include "support/failing_calls.h"

// A macro of the header checks its arguments and hides the function.
#undef curl_easy_setopt
#undef curl_easy_getinfo

using korvixsdk::test::FailsNow;
using korvixsdk::test::wrapped_curl;

namespace korvixsdk::test {
WrappedCurl wrapped_curl;
}  // namespace korvixsdk::test

namespace {

/// libcurl makes a handle for its own use during a transfer and closes it without the public call.
thread_local bool performing = false;

}  // namespace

extern "C" {

CURL* __real_curl_easy_init();
CURL* __wrap_curl_easy_init() {
  if (FailsNow("curl_easy_init")) return nullptr;
  if (!performing) korvixsdk::test::CountOpened();
  return __real_curl_easy_init();
}

void __real_curl_easy_cleanup(CURL* handle);
void __wrap_curl_easy_cleanup(CURL* handle) {
  korvixsdk::test::CountClosed();
  __real_curl_easy_cleanup(handle);
}

char* __real_curl_easy_escape(CURL* handle, const char* text, int length);
char* __wrap_curl_easy_escape(CURL* handle, const char* text, int length) {
  if (FailsNow("curl_easy_escape")) return nullptr;
  korvixsdk::test::CountOpened();
  return __real_curl_easy_escape(handle, text, length);
}

void __real_curl_free(void* text);
void __wrap_curl_free(void* text) {
  korvixsdk::test::CountClosed();
  __real_curl_free(text);
}

CURLcode __real_curl_easy_setopt(CURL* handle, CURLoption option, ...);
// A number, as va_start allows no enumeration.
CURLcode __wrap_curl_easy_setopt(CURL* handle, int option_number, ...) {
  va_list arguments;
  va_start(arguments, option_number);
  const auto option = static_cast<CURLoption>(option_number);
  const bool is_number = option < CURLOPTTYPE_OBJECTPOINT;
  long number = 1;
  void* pointer = nullptr;
  if (is_number) {
    number = va_arg(arguments, long);
  } else {
    pointer = va_arg(arguments, void*);
  }
  va_end(arguments);
  wrapped_curl.options.emplace_back(option, number);
  if (option == CURLOPT_WRITEFUNCTION) {
    wrapped_curl.write = reinterpret_cast<korvixsdk::test::WrappedCurl::WriteCallback>(pointer);
  }
  if (option == CURLOPT_WRITEDATA) wrapped_curl.write_context = pointer;
  if (FailsNow("curl_easy_setopt")) return CURLE_OUT_OF_MEMORY;
  return is_number ? __real_curl_easy_setopt(handle, option, number)
                   : __real_curl_easy_setopt(handle, option, pointer);
}

CURLcode __real_curl_easy_perform(CURL* handle);
CURLcode __wrap_curl_easy_perform(CURL* handle) {
  if (FailsNow("curl_easy_perform")) return CURLE_OUT_OF_MEMORY;
  if (wrapped_curl.instead_of_transfer != nullptr) {
    wrapped_curl.instead_of_transfer(wrapped_curl.write, wrapped_curl.write_context);
  }
  if (wrapped_curl.perform_result) return *wrapped_curl.perform_result;
  performing = true;
  const CURLcode result = __real_curl_easy_perform(handle);
  performing = false;
  return result;
}

CURLcode __real_curl_easy_getinfo(CURL* handle, CURLINFO info, ...);
CURLcode __wrap_curl_easy_getinfo(CURL* handle, int info_number, ...) {
  va_list arguments;
  va_start(arguments, info_number);
  const auto info = static_cast<CURLINFO>(info_number);
  void* const answer = va_arg(arguments, void*);
  va_end(arguments);
  if (FailsNow("curl_easy_getinfo")) return CURLE_BAD_FUNCTION_ARGUMENT;
  if (info == CURLINFO_RESPONSE_CODE && wrapped_curl.status) {
    *static_cast<long*>(answer) = *wrapped_curl.status;
    return CURLE_OK;
  }
  return __real_curl_easy_getinfo(handle, info, answer);
}

}  // extern "C"
