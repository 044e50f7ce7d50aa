#include "doctor/address_checks.h"

#include <curl/curl.h>

#include <memory>

#include "doctor/verdicts.h"
#include "platform/mock_addresses.h"

namespace doctor {
namespace {

struct CurlUrlCleanup {
  void operator()(CURLU* url) const { curl_url_cleanup(url); }
};

struct CurlFree {
  void operator()(char* text) const { curl_free(text); }
};

/// An address as libcurl takes it apart.
class ParsedUrl {
 public:
  explicit ParsedUrl(const std::string& address) : url_(curl_url()) {
    code_ = CURLUE_MALFORMED_INPUT;
    if (address.find('\0') != std::string::npos || !url_) return;
    code_ = curl_url_set(url_.get(), CURLUPART_URL, address.c_str(), CURLU_NON_SUPPORT_SCHEME);
  }

  bool ok() const { return code_ == CURLUE_OK; }
  std::string problem() const { return curl_url_strerror(code_); }

  std::string Part(CURLUPart part) const {
    char* text = nullptr;
    if (!ok() || curl_url_get(url_.get(), part, &text, 0) != CURLUE_OK) return {};
    const std::unique_ptr<char, CurlFree> owned(text);
    return text;
  }

 private:
  std::unique_ptr<CURLU, CurlUrlCleanup> url_;
  CURLUcode code_;
};

bool IsHttp(const std::string& scheme) { return scheme == "http" || scheme == "https"; }

/// What holds for both kinds of addresses. False when there is nothing more to look at.
bool CheckHttpUrl(const ParsedUrl& url, Findings& findings) {
  if (!url.ok()) {
    findings.Fail("no address: " + url.problem(),
                  "Write a whole address, with http:// or https://");
    return false;
  }
  const std::string scheme = url.Part(CURLUPART_SCHEME);
  if (!IsHttp(scheme)) {
    findings.Fail("the scheme is " + scheme + ":, not http: or https:",
                  "Serve it over HTTPS: other schemes work on no Windows machine");
    return false;
  }
  if (!url.Part(CURLUPART_USER).empty()) {
    findings.Warn("the address carries a user name", "Leave it out: addresses stand in logs");
  }
  return true;
}

bool IsLoopback(const ParsedUrl& url) {
  const std::string host = url.Part(CURLUPART_HOST);
  return host == "localhost" || host == "[::1]" || host.compare(0, 4, "127.") == 0;
}

/// A proxy's address may carry a password.
std::string WithoutUser(const std::string& address) {
  const std::size_t at = address.rfind('@');
  if (at == std::string::npos) return address;
  const std::size_t scheme_end = address.find("://");
  const std::string scheme =
      scheme_end == std::string::npos ? "" : address.substr(0, scheme_end + 3);
  return scheme + address.substr(at + 1);
}

enum class Step { kName, kConnection, kTls };

bool IsTlsFailure(CURLcode code) {
  switch (code) {
    case CURLE_SSL_CONNECT_ERROR:
    case CURLE_SSL_CERTPROBLEM:
    case CURLE_SSL_CIPHER:
    case CURLE_PEER_FAILED_VERIFICATION:
    case CURLE_SSL_CACERT_BADFILE:
    case CURLE_SSL_ISSUER_ERROR:
    case CURLE_SSL_INVALIDCERTSTATUS:
      return true;
    default:
      return false;
  }
}

/// The step at which the attempt ended. libcurl tells the peer, but not always the time, of a
/// connection whose handshake failed.
Step FailedStep(const Connection& connection, bool tls) {
  const CURLcode code = connection.failure.code;
  if (IsTlsFailure(code)) return Step::kTls;
  if (code == CURLE_COULDNT_RESOLVE_HOST || code == CURLE_COULDNT_RESOLVE_PROXY) return Step::kName;
  if (code == CURLE_COULDNT_CONNECT) return Step::kConnection;
  if (tls && !connection.peer.empty()) return Step::kTls;
  return connection.name_milliseconds < 0 ? Step::kName : Step::kConnection;
}

Check Timed(Check check, double milliseconds) {
  if (milliseconds >= 0) check.milliseconds = milliseconds;
  return check;
}

Check NamePassed(const Connection& connection) {
  return Timed(Pass("address.name",
                    connection.peer.empty() ? "resolved" : "resolved, to " + connection.peer),
               connection.name_milliseconds);
}

Check ConnectionPassed(const Connection& connection) {
  return Timed(Pass("address.connection", "connected to " + connection.peer),
               connection.connect_milliseconds);
}

Check TlsFailed(const Connection& connection) {
  if (connection.failure.code != CURLE_PEER_FAILED_VERIFICATION) {
    return Fail("address.tls", connection.failure.text,
                "Check that this port speaks TLS, and what stands between this machine and it");
  }
  std::string reason = connection.failure.text;
  if (connection.verify_result != 0) {
    reason += ", result of the verification " + std::to_string(connection.verify_result);
  }
  return Fail("address.tls", reason,
              "Look at the certificate's dates, its host name and its authority, at this machine's "
              "clock, and at products that look into TLS connections");
}

Check TlsPassed(const Connection& connection, bool tls) {
  if (!tls) return NotTried("address.tls", "the address is plain HTTP");
  return Timed(Pass("address.tls", "handshake done and certificate accepted"),
               connection.tls_milliseconds);
}

}  // namespace

std::string SchemeOf(const std::string& address) {
  return ParsedUrl(address).Part(CURLUPART_SCHEME);
}

Check CheckBaseAddress(const std::string& address) {
  const char* const id = "address.form";
  if (korvixsdk::IsMockUrl(address))
    return Pass(id, "the mock server, which is inside the library");
  Findings findings;
  const ParsedUrl url(address);
  if (!CheckHttpUrl(url, findings)) return findings.As(id, {});
  if (address.find_first_of("?#") != std::string::npos) {
    findings.Fail("the address has a query or a fragment, behind which paths cannot be put",
                  "Give the address up to the path only");
  }
  if (url.Part(CURLUPART_SCHEME) == "http" && !IsLoopback(url)) {
    findings.Warn("plain HTTP: anybody on the way can change replies and read identifiers",
                  "Use https://");
  }
  return findings.As(id, url.Part(CURLUPART_SCHEME) + " to " + url.Part(CURLUPART_HOST));
}

Check CheckPackageAddress(const std::string& address, const std::string& base) {
  const char* const id = "package.address";
  if (korvixsdk::IsMockUrl(address)) return Pass(id, "a payload that is inside the library");
  Findings findings;
  const ParsedUrl url(address);
  if (!CheckHttpUrl(url, findings)) return findings.As(id, {});
  if (url.Part(CURLUPART_SCHEME) == "http" && SchemeOf(base) == "https") {
    findings.Warn("plain HTTP, though the service is at an https: address",
                  "Serve the package over HTTPS");
  }
  return findings.As(id, url.Part(CURLUPART_SCHEME) + " to " + url.Part(CURLUPART_HOST));
}

Check CheckProxy(const Connection& connection, const std::vector<std::string>& system_proxies) {
  const char* const id = "address.proxy";
  if (!connection.proxy.empty()) {
    return Pass(id, WithoutUser(connection.proxy) + ", from " + connection.proxy_variable);
  }
  if (system_proxies.empty()) return Pass(id, "none");
  Findings findings;
  for (const std::string& proxy : system_proxies) {
    findings.Warn("none is used, though Windows knows " + WithoutUser(proxy),
                  "Set https_proxy or http_proxy for the host, or give the host a network client "
                  "that looks at the settings of Windows");
  }
  return findings.As(id, {});
}

std::vector<Check> CheckConnection(const Connection& connection, bool tls) {
  if (connection.failure.code == CURLE_OK) {
    return {NamePassed(connection), ConnectionPassed(connection), TlsPassed(connection, tls)};
  }
  const std::string& reason = connection.failure.text;
  const char* const later = "the connection did not come that far";
  switch (FailedStep(connection, tls)) {
    case Step::kName:
      return {
          Fail("address.name", reason,
               "Check the host's name in the address, this machine's DNS and its proxy settings"),
          NotTried("address.connection", later), NotTried("address.tls", later)};
    case Step::kConnection:
      return {
          NamePassed(connection),
          Fail("address.connection", reason,
               "Check that the service runs and that port, firewall and proxy let it be reached"),
          NotTried("address.tls", later)};
    case Step::kTls:
      break;
  }
  return {NamePassed(connection), ConnectionPassed(connection), TlsFailed(connection)};
}

}  // namespace doctor
