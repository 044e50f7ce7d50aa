#include "doctor/exchange.h"

#include <exception>
#include <string_view>

#include "network/curl_handle.h"

namespace doctor {
namespace {

constexpr long kConnectSeconds = 10;
/// Room for the handshake behind the connection.
constexpr long kConnectAndHandshakeSeconds = 20;

/// A handle with the options that all transfers have, and its error text.
class Transfer {
 public:
  explicit Transfer(const std::string& url) : handle_(korvixsdk::MakeCurlHandle()) {
    // libcurl takes C strings: an address with a zero byte would silently be a shorter one.
    if (!handle_) code_ = CURLE_FAILED_INIT;
    if (url.find('\0') != std::string::npos) code_ = CURLE_URL_MALFORMAT;
    Set(CURLOPT_URL, url.c_str());
    Set(CURLOPT_ERRORBUFFER, error_text_);
    // Whatever a service names, the doctor reads no files.
    Set(CURLOPT_PROTOCOLS_STR, "http,https");
    Set(CURLOPT_REDIR_PROTOCOLS_STR, "http,https");
    Set(CURLOPT_NOSIGNAL, 1L);
  }

  template <typename T>
  void Set(CURLoption option, T value) {
    if (code_ == CURLE_OK) code_ = curl_easy_setopt(handle_.get(), option, value);
  }

  Failure Perform() {
    if (code_ == CURLE_OK) code_ = curl_easy_perform(handle_.get());
    Failure failure{code_, {}};
    if (code_ == CURLE_OK) return failure;
    failure.text = curl_easy_strerror(code_);
    if (error_text_[0] != '\0') failure.text += " (" + std::string(error_text_) + ")";
    return failure;
  }

  template <typename T>
  T Info(CURLINFO info, T otherwise) const {
    T value = otherwise;
    if (!handle_ || curl_easy_getinfo(handle_.get(), info, &value) != CURLE_OK) return otherwise;
    return value;
  }

  std::string TextInfo(CURLINFO info) const {
    const char* const text = Info<char*>(info, nullptr);
    return text == nullptr ? "" : text;
  }

  std::string LastHeader(const char* name) const {
    curl_header* header = nullptr;
    if (!handle_ ||
        curl_easy_header(handle_.get(), name, 0, CURLH_HEADER, -1, &header) != CURLHE_OK) {
      return {};
    }
    return header->value;
  }

 private:
  korvixsdk::CurlHandle handle_;
  CURLcode code_ = CURLE_OK;
  char error_text_[CURL_ERROR_SIZE] = {};
};

std::size_t CollectBody(char* data, std::size_t size, std::size_t count, void* body) noexcept {
  return korvixsdk::AppendBlock(data, size * count, *static_cast<std::string*>(body));
}

/// libcurl itself decides which variable counts and whom no_proxy leaves out, and tells in its
/// trace alone: "Uses proxy env variable http_proxy == 'http://proxy:3128'".
int NoteProxy(CURL*, curl_infotype type, char* data, std::size_t size, void* connection) noexcept
    try {
  constexpr std::string_view kBeginning = "Uses proxy env variable ";
  constexpr std::string_view kMiddle = " == '";
  std::string_view text(data, size);
  if (type != CURLINFO_TEXT || text.substr(0, kBeginning.size()) != kBeginning) return 0;
  text.remove_prefix(kBeginning.size());
  const std::size_t middle = text.find(kMiddle);
  const std::size_t end = text.rfind('\'');
  const std::string variable(text.substr(0, middle));
  if (middle == std::string_view::npos || variable == "no_proxy" || variable == "NO_PROXY")
    return 0;
  const std::size_t begin = middle + kMiddle.size();
  static_cast<Connection*>(connection)->proxy = text.substr(begin, end - begin);
  static_cast<Connection*>(connection)->proxy_variable = variable;
  return 0;
} catch (const std::exception&) {
  return 0;
}

double Milliseconds(curl_off_t microseconds) { return static_cast<double>(microseconds) / 1000; }

}  // namespace

Connection Connect(const std::string& url) {
  Transfer transfer(url);
  transfer.Set(CURLOPT_CONNECT_ONLY, 1L);
  transfer.Set(CURLOPT_CONNECTTIMEOUT, kConnectSeconds);
  transfer.Set(CURLOPT_TIMEOUT, kConnectAndHandshakeSeconds);
  Connection connection;
  transfer.Set(CURLOPT_VERBOSE, 1L);
  transfer.Set(CURLOPT_DEBUGFUNCTION, &NoteProxy);
  transfer.Set(CURLOPT_DEBUGDATA, &connection);
  connection.failure = transfer.Perform();
  const auto name = transfer.Info<curl_off_t>(CURLINFO_NAMELOOKUP_TIME_T, 0);
  const auto connected = transfer.Info<curl_off_t>(CURLINFO_CONNECT_TIME_T, 0);
  const auto handshake = transfer.Info<curl_off_t>(CURLINFO_APPCONNECT_TIME_T, 0);
  if (name > 0) connection.name_milliseconds = Milliseconds(name);
  if (connected > 0) connection.connect_milliseconds = Milliseconds(connected - name);
  if (handshake > 0) connection.tls_milliseconds = Milliseconds(handshake - connected);
  connection.verify_result = transfer.Info<long>(CURLINFO_SSL_VERIFYRESULT, 0);
  const std::string address = transfer.TextInfo(CURLINFO_PRIMARY_IP);
  if (!address.empty()) {
    const auto port = transfer.Info<long>(CURLINFO_PRIMARY_PORT, 0);
    connection.peer = address + ":" + std::to_string(port);
  }
  return connection;
}

Exchange Get(const std::string& url, long connect_seconds, long seconds) {
  Exchange exchange;
  Transfer transfer(url);
  transfer.Set(CURLOPT_FOLLOWLOCATION, 1L);
  transfer.Set(CURLOPT_CONNECTTIMEOUT, connect_seconds);
  transfer.Set(CURLOPT_TIMEOUT, seconds);
  transfer.Set(CURLOPT_WRITEFUNCTION, &CollectBody);
  transfer.Set(CURLOPT_WRITEDATA, &exchange.body);
  exchange.failure = transfer.Perform();
  exchange.status = transfer.Info<long>(CURLINFO_RESPONSE_CODE, 0);
  exchange.content_encoding = transfer.LastHeader("Content-Encoding");
  exchange.announced_length = transfer.Info<curl_off_t>(CURLINFO_CONTENT_LENGTH_DOWNLOAD_T, -1);
  exchange.redirects = transfer.Info<long>(CURLINFO_REDIRECT_COUNT, 0);
  exchange.final_url = transfer.TextInfo(CURLINFO_EFFECTIVE_URL);
  exchange.milliseconds = Milliseconds(transfer.Info<curl_off_t>(CURLINFO_TOTAL_TIME_T, 0));
  return exchange;
}

}  // namespace doctor
