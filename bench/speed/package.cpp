#include "package.h"

#include <curl/curl.h>
#include <fcntl.h>
#include <unistd.h>

#include "digest_by_hand.h"
#include "require.h"

namespace speed {
namespace {

std::size_t Collect(char* data, std::size_t size, std::size_t count, void* body) {
  static_cast<std::string*>(body)->append(data, size * count);
  return size * count;
}

void Download(const std::string& url, std::string& body) {
  long status = 0;
  CURL* const handle = curl_easy_init();
  curl_easy_setopt(handle, CURLOPT_URL, url.c_str());
  curl_easy_setopt(handle, CURLOPT_FOLLOWLOCATION, 1L);
  curl_easy_setopt(handle, CURLOPT_TIMEOUT, 30L);
  curl_easy_setopt(handle, CURLOPT_WRITEFUNCTION, &Collect);
  curl_easy_setopt(handle, CURLOPT_WRITEDATA, &body);
  const CURLcode result = curl_easy_perform(handle);
  curl_easy_getinfo(handle, CURLINFO_RESPONSE_CODE, &status);
  curl_easy_cleanup(handle);
  Require(result == CURLE_OK && status == 200, "a package by hand: " + url);
}

void Write(const std::string& path, const std::string& body) {
  const int file = open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
  const ssize_t written = write(file, body.data(), body.size());
  Require(written == static_cast<ssize_t>(body.size()) && close(file) == 0, "write: " + path);
}

}  // namespace

std::string PrepareByHand(const std::string& url, std::size_t size, const std::string& path) {
  std::string body;
  body.reserve(size);
  Download(url, body);
  Require(body.size() == size, "the size of " + url);
  Write(path, body);
  return HexByHand(DigestByHand(body));
}

}  // namespace speed
