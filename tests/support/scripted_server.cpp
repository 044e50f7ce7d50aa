#include "support/scripted_server.h"

#include <algorithm>
#include <asio.hpp>
#include <condition_variable>
#include <list>
#include <mutex>
#include <thread>
#include <utility>

namespace korvixsdk::test {
namespace {

using asio::ip::tcp;

tcp::endpoint Loopback(unsigned short port) {
  return tcp::endpoint(asio::ip::address_v4::loopback(), port);
}

}  // namespace

Script Script::Response(int status, const std::string& body, const std::string& headers) {
  return Script().Send("HTTP/1.1 " + std::to_string(status) +
                       " Scripted\r\nContent-Length: " + std::to_string(body.size()) +
                       "\r\nConnection: close\r\n" + headers + "\r\n" + body);
}

Script Script::Redirect(const std::string& location) {
  return Response(302, "elsewhere", "Location: " + location + "\r\n");
}

Script& Script::Send(std::string bytes) {
  steps_.push_back({std::move(bytes), {}});
  return *this;
}

Script& Script::Pause(std::chrono::milliseconds time) {
  steps_.push_back({{}, time});
  return *this;
}

Script& Script::Reset() {
  reset_ = true;
  return *this;
}

Script& Script::WithoutReading() {
  reads_ = false;
  return *this;
}

struct ScriptedServer::State {
  explicit State(std::vector<Script> all)
      : scripts(std::move(all)), acceptor(context, Loopback(0)) {}

  void AcceptConnections() {
    for (std::size_t next = 0;; next = std::min(next + 1, scripts.size() - 1)) {
      asio::error_code error;
      tcp::socket socket(context);
      acceptor.accept(socket, error);
      const std::lock_guard<std::mutex> lock(mutex);
      if (stopping || error) return;
      sockets.push_back(std::move(socket));
      connections.emplace_back(&State::Play, this, std::ref(sockets.back()), scripts[next]);
    }
  }

  void Play(tcp::socket& socket, const Script& script) {
    asio::error_code error;
    if (script.reads_) ReadHead(socket, error);
    for (const Script::Step& step : script.steps_) {
      if (error) break;
      if (step.pause.count() > 0) {
        std::unique_lock<std::mutex> lock(mutex);
        if (stopped.wait_for(lock, step.pause, [this] { return stopping; })) break;
      } else {
        asio::write(socket, asio::buffer(step.bytes), error);
      }
    }
    if (script.reset_) {
      socket.set_option(asio::socket_base::linger(true, 0), error);
    } else {
      // What the client still sends is read, lest closing turn into a reset.
      socket.shutdown(tcp::socket::shutdown_send, error);
      char rest[512];
      while (!error) socket.read_some(asio::buffer(rest), error);
    }
    const std::lock_guard<std::mutex> lock(mutex);
    socket.close(error);
  }

  void ReadHead(tcp::socket& socket, asio::error_code& error) {
    std::string head;
    asio::read_until(socket, asio::dynamic_buffer(head), "\r\n\r\n", error);
    const std::lock_guard<std::mutex> lock(mutex);
    if (!head.empty()) requests.push_back(head);
  }

  void Stop() {
    {
      const std::lock_guard<std::mutex> lock(mutex);
      stopping = true;
    }
    stopped.notify_all();
    // A connection of our own wakes the accepting thread.
    asio::error_code ignored;
    tcp::socket waker(context);
    waker.connect(Loopback(acceptor.local_endpoint(ignored).port()), ignored);
    accepting.join();
    {
      const std::lock_guard<std::mutex> lock(mutex);
      for (tcp::socket& socket : sockets) {
        if (socket.is_open()) socket.shutdown(tcp::socket::shutdown_both, ignored);
      }
    }
    for (std::thread& connection : connections) connection.join();
  }

  const std::vector<Script> scripts;
  asio::io_context context;
  tcp::acceptor acceptor;
  std::mutex mutex;
  std::condition_variable stopped;
  bool stopping = false;
  std::vector<std::string> requests;
  std::list<tcp::socket> sockets;
  std::list<std::thread> connections;
  std::thread accepting;
};

ScriptedServer::ScriptedServer(std::vector<Script> scripts)
    : state_(std::make_unique<State>(std::move(scripts))) {
  state_->accepting = std::thread(&State::AcceptConnections, state_.get());
}

ScriptedServer::ScriptedServer(Script script)
    : ScriptedServer(std::vector<Script>{std::move(script)}) {}

ScriptedServer::~ScriptedServer() { state_->Stop(); }

std::string ScriptedServer::address() const {
  return "http://127.0.0.1:" + std::to_string(state_->acceptor.local_endpoint().port());
}

std::vector<std::string> ScriptedServer::requests() const {
  const std::lock_guard<std::mutex> lock(state_->mutex);
  return state_->requests;
}

std::string RequestLine(const std::string& request) {
  return request.substr(0, request.find("\r\n"));
}

unsigned short UnusedPort() {
  asio::io_context context;
  tcp::acceptor acceptor(context, Loopback(0));
  return acceptor.local_endpoint().port();
}

}  // namespace korvixsdk::test
