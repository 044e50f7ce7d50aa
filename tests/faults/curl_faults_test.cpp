#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <new>
#include <string>
#include <utility>
#include <vector>

#include "faults/wrapped_curl.h"
#include "network/default_network_client.h"
#include "network/http_transport.h"
#include "network/url.h"
#include "support/failing_calls.h"
#include "update/package_download.h"

namespace korvixsdk {
namespace {

using test::FailingCall;
using test::wrapped_curl;
using test::WrappedCurl;

constexpr char kBase[] = "http://127.0.0.1:9";
using Options = std::vector<std::pair<CURLoption, long>>;

class CurlFaults : public testing::Test {
 protected:
  void SetUp() override {
    wrapped_curl = {};
    open_before_ = test::OpenResources();
  }
  void TearDown() override {
    EXPECT_EQ(test::OpenResources(), open_before_) << "a handle or a text is left";
    wrapped_curl = {};
  }

 private:
  int open_before_ = 0;
};

void SendText(WrappedCurl::WriteCallback write, void* context) {
  char text[] = "body";
  EXPECT_EQ(write(text, 1, 4, context), 4u);
}

TEST_F(CurlFaults, UrlBuildingFailsWithoutHandle) {
  const FailingCall fail("curl_easy_init");
  const Result<std::string> url = BuildUrl(kBase, "/path", {{"key", "value"}});
  EXPECT_EQ(url.error.code, kNetworkError);
  EXPECT_EQ(url.error.message, "Failed to initialize libcurl");
  EXPECT_EQ(url.value, "");
}

TEST_F(CurlFaults, UrlBuildingFailsWhenValueIsNotEncoded) {
  for (const int nth : {1, 2, 3}) {
    const FailingCall fail("curl_easy_escape", nth);
    const Result<std::string> url = BuildUrl(kBase, "/", {{"a", "1"}, {"b", "2"}, {"c", "3"}});
    EXPECT_EQ(url.error.code, kNetworkError);
    EXPECT_EQ(url.error.message, "Failed to URL-encode query parameter");
    EXPECT_EQ(url.value, "");
  }
}

TEST_F(CurlFaults, ExchangeReturnsFailureOfUrlBuilding) {
  const FailingCall fail("curl_easy_escape");
  const HttpResponse response = PerformGet(kBase, "/", {{"a", "1"}});
  EXPECT_EQ(response.error.code, kNetworkError);
  EXPECT_EQ(response.error.message, "Failed to URL-encode query parameter");
  EXPECT_EQ(response.body, "");
}

TEST_F(CurlFaults, ExchangeFailsWithoutHandle) {
  const FailingCall fail("curl_easy_init");
  const HttpResponse response = PerformGet(kBase, "/", {{"a", "1"}});
  EXPECT_EQ(response.error.code, kNetworkError);
  EXPECT_EQ(response.error.message, "Failed to initialize libcurl");
  EXPECT_EQ(response.body, "");
}

TEST_F(CurlFaults, ExchangeEscapesWithItsOwnHandle) {
  wrapped_curl.perform_result = CURLE_OK;
  wrapped_curl.status = 200;
  wrapped_curl.instead_of_transfer = SendText;
  const FailingCall fail("curl_easy_init", 2);
  EXPECT_EQ(PerformGet(kBase, "/", {{"a", "1"}}).body, "body");
  EXPECT_FALSE(fail.happened());
}

TEST_F(CurlFaults, ExchangeSetsTheseOptionsAndNoOther) {
  wrapped_curl.perform_result = CURLE_OK;
  wrapped_curl.status = 200;
  EXPECT_FALSE(PerformGet(kBase, "/", {}).error.ok());
  const Options expected = {
      {CURLOPT_URL, 1},      {CURLOPT_FOLLOWLOCATION, 1}, {CURLOPT_CONNECTTIMEOUT, 10},
      {CURLOPT_TIMEOUT, 20}, {CURLOPT_WRITEFUNCTION, 1},  {CURLOPT_WRITEDATA, 1}};
  EXPECT_EQ(wrapped_curl.options, expected);
}

TEST_F(CurlFaults, ExchangeStopsAtOptionThatIsRefused) {
  for (int nth = 1; nth <= 6; ++nth) {
    const FailingCall fail("curl_easy_setopt", nth);
    wrapped_curl.perform_result = CURLE_OK;
    const HttpResponse response = PerformGet(kBase, "/", {});
    EXPECT_EQ(response.error.code, kNetworkError);
    EXPECT_EQ(response.error.message,
              std::string("HTTP request failed: ") + curl_easy_strerror(CURLE_OUT_OF_MEMORY));
  }
}

TEST_F(CurlFaults, ExchangeWithoutStatusFailsWithZero) {
  wrapped_curl.perform_result = CURLE_OK;
  wrapped_curl.status = 0;
  wrapped_curl.instead_of_transfer = SendText;
  const HttpResponse response = PerformGet(kBase, "/", {});
  EXPECT_EQ(response.error.code, kNetworkError);
  EXPECT_EQ(response.error.message, "HTTP status is not successful: 0");
  EXPECT_EQ(response.body, "");
}

TEST_F(CurlFaults, ExchangeWithoutKnownStatusFailsWithZero) {
  const FailingCall fail("curl_easy_getinfo");
  wrapped_curl.perform_result = CURLE_OK;
  wrapped_curl.instead_of_transfer = SendText;
  EXPECT_EQ(PerformGet(kBase, "/", {}).error.message, "HTTP status is not successful: 0");
}

TEST_F(CurlFaults, ExchangeAcceptsStatusFrom200To299) {
  wrapped_curl.perform_result = CURLE_OK;
  wrapped_curl.instead_of_transfer = SendText;
  for (const long status : {200L, 201L, 299L}) {
    wrapped_curl.status = status;
    EXPECT_EQ(PerformGet(kBase, "/", {}).body, "body");
  }
  for (const long status : {-1L, 0L, 100L, 199L, 300L, 404L, 500L}) {
    wrapped_curl.status = status;
    EXPECT_EQ(PerformGet(kBase, "/", {}).error.message,
              "HTTP status is not successful: " + std::to_string(status));
  }
}

TEST_F(CurlFaults, BodyCollectorWithoutTargetAborts) {
  wrapped_curl.perform_result = CURLE_OK;
  wrapped_curl.status = 200;
  wrapped_curl.instead_of_transfer = [](WrappedCurl::WriteCallback write, void*) {
    char text[] = "body";
    EXPECT_EQ(write(text, 1, 4, nullptr), 0u);
  };
  EXPECT_EQ(PerformGet(kBase, "/", {}).error.message, "HTTP response body is empty");
}

/// More than any text can hold: the append throws, and the block is refused instead.
void SendImpossibleLength(WrappedCurl::WriteCallback write, void* context) {
  char text[] = "x";
  EXPECT_EQ(write(text, 1, SIZE_MAX / 2 + 1, context), 0u);
}

TEST_F(CurlFaults, BodyCollectorsRefuseBlockThatNoMemoryHolds) {
  wrapped_curl.perform_result = CURLE_WRITE_ERROR;
  wrapped_curl.instead_of_transfer = SendImpossibleLength;
  EXPECT_EQ(PerformGet(kBase, "/", {}).error.message,
            std::string("HTTP request failed: ") + curl_easy_strerror(CURLE_WRITE_ERROR));
  EXPECT_EQ(DownloadPackage(kBase).error.message,
            std::string("Update download failed: ") + curl_easy_strerror(CURLE_WRITE_ERROR));
}

TEST_F(CurlFaults, DownloadFailsWithoutHandle) {
  const FailingCall fail("curl_easy_init");
  const Result<std::string> package = DownloadPackage("http://127.0.0.1:9/package");
  EXPECT_EQ(package.error.code, kNetworkError);
  EXPECT_EQ(package.error.message, "Failed to initialize libcurl for update download");
  EXPECT_EQ(package.value, "");
}

TEST_F(CurlFaults, DownloadSetsTheseOptionsAndNoOther) {
  wrapped_curl.perform_result = CURLE_OK;
  wrapped_curl.status = 200;
  EXPECT_TRUE(DownloadPackage("https://127.0.0.1:9/package").ok());
  const Options expected = {{CURLOPT_URL, 1},           {CURLOPT_FOLLOWLOCATION, 1},
                            {CURLOPT_WRITEFUNCTION, 1}, {CURLOPT_WRITEDATA, 1},
                            {CURLOPT_TIMEOUT, 30},      {CURLOPT_SSL_VERIFYPEER, 1},
                            {CURLOPT_SSL_VERIFYHOST, 2}};
  EXPECT_EQ(wrapped_curl.options, expected);
}

/// What decides whose certificates are taken.
bool IsAboutTrust(const std::pair<CURLoption, long>& option) {
  static const std::vector<CURLoption> about_trust = {
      CURLOPT_SSL_VERIFYPEER,  CURLOPT_SSL_VERIFYHOST, CURLOPT_SSL_VERIFYSTATUS,
      CURLOPT_CAINFO,          CURLOPT_CAINFO_BLOB,    CURLOPT_CAPATH,
      CURLOPT_SSL_OPTIONS,     CURLOPT_SSLVERSION,     CURLOPT_SSL_CTX_FUNCTION,
      CURLOPT_SSL_CIPHER_LIST, CURLOPT_PINNEDPUBLICKEY};
  return std::count(about_trust.begin(), about_trust.end(), option.first) != 0;
}

// What is not set keeps libcurl's default, which verifies peer and host.
TEST_F(CurlFaults, NoExchangeWeakensCertificateVerification) {
  wrapped_curl.perform_result = CURLE_OK;
  wrapped_curl.status = 200;
  EXPECT_FALSE(PerformGet("https://127.0.0.1:9", "/", {}).error.ok());
  EXPECT_EQ(std::count_if(wrapped_curl.options.begin(), wrapped_curl.options.end(), IsAboutTrust),
            0);
  EXPECT_TRUE(DownloadPackage("https://127.0.0.1:9/package").ok());
  Options about_trust;
  std::copy_if(wrapped_curl.options.begin(), wrapped_curl.options.end(),
               std::back_inserter(about_trust), IsAboutTrust);
  EXPECT_EQ(about_trust, (Options{{CURLOPT_SSL_VERIFYPEER, 1}, {CURLOPT_SSL_VERIFYHOST, 2}}));
}

TEST_F(CurlFaults, DownloadStopsAtOptionThatIsRefused) {
  for (int nth = 1; nth <= 7; ++nth) {
    const FailingCall fail("curl_easy_setopt", nth);
    wrapped_curl.perform_result = CURLE_OK;
    wrapped_curl.status = 200;
    const Result<std::string> package = DownloadPackage("https://127.0.0.1:9/package");
    EXPECT_EQ(package.error.code, kNetworkError);
    EXPECT_EQ(package.error.message,
              std::string("Update download failed: ") + curl_easy_strerror(CURLE_OUT_OF_MEMORY));
  }
}

TEST_F(CurlFaults, DownloadReportsStatusOutside200To299) {
  wrapped_curl.perform_result = CURLE_OK;
  for (const long status : {-7L, 0L, 199L, 300L, 404L}) {
    wrapped_curl.status = status;
    const Result<std::string> package = DownloadPackage(kBase);
    EXPECT_EQ(package.error.code, kNetworkError);
    EXPECT_EQ(package.error.message,
              "Update download returned HTTP status " + std::to_string(status));
  }
}

TEST_F(CurlFaults, DownloadOfNothingIsEmptyPackage) {
  wrapped_curl.perform_result = CURLE_OK;
  wrapped_curl.status = 204;
  const Result<std::string> package = DownloadPackage(kBase);
  EXPECT_TRUE(package.ok());
  EXPECT_EQ(package.value, "");
}

}  // namespace
}  // namespace korvixsdk
