#ifndef KORVIXSDK_TESTS_FAULTS_WRAPPED_CURL_H_
#define KORVIXSDK_TESTS_FAULTS_WRAPPED_CURL_H_

#include <curl/curl.h>

#include <optional>
#include <utility>
#include <vector>

namespace korvixsdk::test {

/// What reached libcurl, and answers in its place.
struct WrappedCurl {
  /// Options with a number, in the order in which they were set; pointers are recorded as 1.
  std::vector<std::pair<CURLoption, long>> options;
  /// The result of the next transfers, which then do not happen.
  std::optional<CURLcode> perform_result;
  /// The HTTP status that is told after a transfer.
  std::optional<long> status;
  /// Called in place of a transfer, with the write callback and its context.
  using WriteCallback = std::size_t (*)(char*, std::size_t, std::size_t, void*);
  void (*instead_of_transfer)(WriteCallback write, void* context) = nullptr;

  WriteCallback write = nullptr;
  void* write_context = nullptr;
};

/// The one record; tests begin with `wrapped_curl = {}`.
extern WrappedCurl wrapped_curl;

}  // namespace korvixsdk::test

#endif  // KORVIXSDK_TESTS_FAULTS_WRAPPED_CURL_H_
