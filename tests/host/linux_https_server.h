#ifndef KORVIXSDK_TESTS_HOST_LINUX_HTTPS_SERVER_H_
#define KORVIXSDK_TESTS_HOST_LINUX_HTTPS_SERVER_H_

#include <memory>
#include <string>

namespace korvixsdk::test {

/// A service on 127.0.0.1 that speaks TLS and gives the same reply to every request, one after the
/// other. Ends its thread when it is destroyed.
class HttpsServer {
 public:
  /// \param certificate path of a certificate in PEM form, and, with ".key" for ".pem", of its key.
  HttpsServer(const std::string& certificate, std::string reply);
  ~HttpsServer();
  HttpsServer(const HttpsServer&) = delete;
  HttpsServer& operator=(const HttpsServer&) = delete;

  /// "https://127.0.0.1:PORT"
  std::string address() const;
  /// Requests that came through a handshake.
  int requests() const;

 private:
  struct State;
  std::unique_ptr<State> state_;
};

}  // namespace korvixsdk::test

#endif  // KORVIXSDK_TESTS_HOST_LINUX_HTTPS_SERVER_H_
