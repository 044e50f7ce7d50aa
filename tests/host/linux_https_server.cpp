#include "host/linux_https_server.h"

#include <asio.hpp>
#include <asio/ssl.hpp>
#include <atomic>
#include <thread>
#include <utility>

namespace korvixsdk::test {
namespace {

using asio::ip::tcp;

tcp::endpoint Loopback(unsigned short port) {
  return tcp::endpoint(asio::ip::address_v4::loopback(), port);
}

std::string KeyOf(const std::string& certificate) {
  return certificate.substr(0, certificate.rfind(".pem")) + ".key";
}

}  // namespace

struct HttpsServer::State {
  State(const std::string& certificate, std::string reply_text)
      : tls(asio::ssl::context::tls_server),
        acceptor(context, Loopback(0)),
        reply(std::move(reply_text)) {
    tls.use_certificate_chain_file(certificate);
    tls.use_private_key_file(KeyOf(certificate), asio::ssl::context::pem);
  }

  void Serve() {
    while (!stopping) {
      asio::error_code error;
      tcp::socket socket(context);
      acceptor.accept(socket, error);
      if (stopping) return;
      if (error) continue;  // The client has gone already.
      Answer(asio::ssl::stream<tcp::socket>(std::move(socket), tls));
    }
  }

  void Answer(asio::ssl::stream<tcp::socket> stream) {
    asio::error_code error;
    stream.handshake(asio::ssl::stream_base::server, error);
    if (error) return;
    std::string head;
    asio::read_until(stream, asio::dynamic_buffer(head), "\r\n\r\n", error);
    if (error) return;
    ++requests;
    asio::write(stream, asio::buffer(reply), error);
    stream.shutdown(error);
  }

  asio::io_context context;
  asio::ssl::context tls;
  tcp::acceptor acceptor;
  const std::string reply;
  std::atomic<bool> stopping{false};
  std::atomic<int> requests{0};
  std::thread serving;
};

HttpsServer::HttpsServer(const std::string& certificate, std::string reply)
    : state_(std::make_unique<State>(certificate, std::move(reply))) {
  state_->serving = std::thread(&State::Serve, state_.get());
}

HttpsServer::~HttpsServer() {
  state_->stopping = true;
  // A connection of our own wakes the serving thread.
  asio::error_code ignored;
  tcp::socket waker(state_->context);
  waker.connect(state_->acceptor.local_endpoint(ignored), ignored);
  state_->serving.join();
}

std::string HttpsServer::address() const {
  return "https://127.0.0.1:" + std::to_string(state_->acceptor.local_endpoint().port());
}

int HttpsServer::requests() const { return state_->requests; }

}  // namespace korvixsdk::test
