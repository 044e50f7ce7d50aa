#include "chunked_server.h"

#include <algorithm>
#include <array>
#include <asio.hpp>
#include <atomic>
#include <thread>

namespace speed {
namespace {

using asio::ip::tcp;

void SendChunks(tcp::socket& socket, std::size_t size, asio::error_code& error) {
  const std::string chunk(64 << 10, 'p');
  while (size > 0 && !error) {
    const std::size_t length = std::min(size, chunk.size());
    std::array<char, 16> head{};
    const int head_length = std::snprintf(head.data(), head.size(), "%zx\r\n", length);
    const std::array<asio::const_buffer, 3> parts = {
        asio::buffer(head.data(), static_cast<std::size_t>(head_length)),
        asio::buffer(chunk.data(), length), asio::buffer("\r\n", 2)};
    asio::write(socket, parts, error);
    size -= length;
  }
  asio::write(socket, asio::buffer("0\r\n\r\n", 5), error);
}

void Answer(tcp::socket& socket, asio::error_code& error) {
  std::string request;
  asio::read_until(socket, asio::dynamic_buffer(request), "\r\n\r\n", error);
  const std::size_t slash = request.find('/');
  if (error || slash == std::string::npos) return;
  const std::size_t size = std::strtoull(request.c_str() + slash + 1, nullptr, 10);
  const std::string head = "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n";
  asio::write(socket, asio::buffer(head), error);
  SendChunks(socket, size, error);
  // The client hangs up when it has all.
  char rest = 0;
  if (!error) asio::read(socket, asio::buffer(&rest, 1), error);
}

}  // namespace

struct ChunkedServer::State {
  asio::io_context context{};
  tcp::acceptor acceptor{context, tcp::endpoint(asio::ip::address_v4::loopback(), 0)};
  std::atomic<bool> stopping{false};
  std::thread thread{};

  void Serve() {
    while (!stopping) {
      asio::error_code error;
      tcp::socket socket(context);
      acceptor.accept(socket, error);
      if (!error && !stopping) Answer(socket, error);
    }
  }
};

ChunkedServer::ChunkedServer() : state_(std::make_unique<State>()) {
  state_->thread = std::thread(&State::Serve, state_.get());
}

ChunkedServer::~ChunkedServer() {
  state_->stopping = true;
  asio::error_code ignored;
  // A connection of our own wakes the thread that accepts.
  tcp::socket waker(state_->context);
  waker.connect(state_->acceptor.local_endpoint(ignored), ignored);
  state_->thread.join();
}

std::string ChunkedServer::address() const {
  return "http://127.0.0.1:" + std::to_string(state_->acceptor.local_endpoint().port());
}

}  // namespace speed
