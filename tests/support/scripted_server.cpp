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

constexpr std::chrono::milliseconds kShortPause(1);
constexpr std::chrono::milliseconds kLongPause(16);

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
  steps_.push_back({std::move(bytes), {}, false});
  return *this;
}

Script& Script::SendForEver(std::string bytes, std::chrono::milliseconds pause) {
  steps_.push_back({std::move(bytes), pause, true});
  return *this;
}

Script& Script::Pause(std::chrono::milliseconds time) {
  steps_.push_back({{}, time, false});
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

  struct Connection {
    explicit Connection(tcp::socket accepted) : socket(std::move(accepted)) {}
    tcp::socket socket;
    std::thread thread;
    bool ended = false;
  };

  void AcceptConnections() {
    for (;;) {
      asio::error_code error;
      tcp::socket socket(context);
      acceptor.accept(socket, error);
      std::unique_lock<std::mutex> lock(mutex);
      if (stopping) break;
      if (error) {
        // A client that has gone already is one of those that a test may bring.
        stopped.wait_for(lock, kShortPause);
        continue;
      }
      Connection& connection = connections.emplace_back(std::move(socket));
      connection.thread = std::thread(&State::Play, this, std::ref(connection), scripts[next]);
      next = std::min(next + 1, scripts.size() - 1);
    }
    const std::lock_guard<std::mutex> lock(mutex);
    accepts = false;
    stopped.notify_all();
  }

  /// As soon as one ends, so that no handle of it stays open. Joins under the lock, which a thread
  /// whose connection has ended does not take again.
  void ForgetEndedConnections() {
    std::unique_lock<std::mutex> lock(mutex);
    while (!stopping) {
      connections.remove_if([](Connection& connection) {
        if (connection.ended) connection.thread.join();
        return connection.ended;
      });
      one_ended.wait(lock);
    }
  }

  /// False when the rest is not to be played.
  bool PlayStep(tcp::socket& socket, const Script::Step& step, asio::error_code& error) {
    do {
      if (!step.bytes.empty()) asio::write(socket, asio::buffer(step.bytes), error);
      if (error) return false;
      if (step.pause.count() > 0) {
        std::unique_lock<std::mutex> lock(mutex);
        if (stopped.wait_for(lock, step.pause, [this] { return stopping; })) return false;
      }
    } while (step.for_ever);
    return true;
  }

  void Play(Connection& connection, const Script& script) {
    tcp::socket& socket = connection.socket;
    asio::error_code error;
    if (script.reads_) ReadHead(socket, error);
    for (const Script::Step& step : script.steps_) {
      if (error || !PlayStep(socket, step, error)) break;
    }
    if (script.reset_) {
      socket.set_option(asio::socket_base::linger(true, 0), error);
    } else {
      // What the client still sends is read, lest closing turn into a reset.
      socket.shutdown(tcp::socket::shutdown_send, error);
      std::string rest;
      while (!error) ReadSome(socket, rest, error);
    }
    const std::lock_guard<std::mutex> lock(mutex);
    socket.close(error);
    connection.ended = true;
    one_ended.notify_all();
  }

  void ReadHead(tcp::socket& socket, asio::error_code& error) {
    std::string head;
    while (!error && head.find("\r\n\r\n") == std::string::npos) ReadSome(socket, head, error);
    const std::lock_guard<std::mutex> lock(mutex);
    if (!head.empty()) requests.push_back(head);
  }

  /// Waits for bytes by asking again and again: under Wine nothing wakes a read that waits for a
  /// client that was killed.
  void ReadSome(tcp::socket& socket, std::string& bytes, asio::error_code& error) {
    socket.non_blocking(true, error);
    char some[512];
    std::size_t size = 0;
    std::chrono::milliseconds pause = kShortPause;
    while (!error && size == 0) {
      size = socket.read_some(asio::buffer(some), error);
      if (error != asio::error::would_block) continue;
      error.clear();
      std::unique_lock<std::mutex> lock(mutex);
      if (stopped.wait_for(lock, pause, [this] { return stopping; })) {
        error = asio::error::operation_aborted;
      }
      pause = std::min(2 * pause, kLongPause);
    }
    bytes.append(some, size);
    asio::error_code ignored;
    socket.non_blocking(false, ignored);
  }

  void Stop() {
    {
      const std::lock_guard<std::mutex> lock(mutex);
      stopping = true;
    }
    stopped.notify_all();
    one_ended.notify_all();
    forgetting.join();
    asio::error_code ignored;
    WakeAcceptingThread();
    accepting.join();
    {
      const std::lock_guard<std::mutex> lock(mutex);
      for (Connection& connection : connections) {
        tcp::socket& socket = connection.socket;
        if (socket.is_open()) socket.shutdown(tcp::socket::shutdown_both, ignored);
      }
    }
    for (Connection& connection : connections) connection.thread.join();
  }

  /// By a connection of our own; by another one where a busy machine refused it.
  void WakeAcceptingThread() {
    asio::error_code ignored;
    const tcp::endpoint address = Loopback(acceptor.local_endpoint(ignored).port());
    std::unique_lock<std::mutex> lock(mutex);
    while (accepts) {
      lock.unlock();
      tcp::socket waker(context);
      waker.connect(address, ignored);
      lock.lock();
      stopped.wait_for(lock, std::chrono::milliseconds(100), [this] { return !accepts; });
    }
  }

  std::vector<Script> scripts;
  std::size_t next = 0;
  asio::io_context context;
  tcp::acceptor acceptor;
  std::mutex mutex;
  std::condition_variable stopped;
  std::condition_variable one_ended;
  bool stopping = false;
  bool accepts = true;
  std::vector<std::string> requests;
  std::list<Connection> connections;
  std::thread accepting;
  std::thread forgetting;
};

ScriptedServer::ScriptedServer(std::vector<Script> scripts)
    : state_(std::make_unique<State>(std::move(scripts))) {
  state_->accepting = std::thread(&State::AcceptConnections, state_.get());
  state_->forgetting = std::thread(&State::ForgetEndedConnections, state_.get());
}

ScriptedServer::ScriptedServer(Script script)
    : ScriptedServer(std::vector<Script>{std::move(script)}) {}

ScriptedServer::~ScriptedServer() { state_->Stop(); }

void ScriptedServer::Play(std::vector<Script> scripts) {
  const std::lock_guard<std::mutex> lock(state_->mutex);
  state_->scripts = std::move(scripts);
  state_->next = 0;
}

void ScriptedServer::Play(Script script) { Play(std::vector<Script>{std::move(script)}); }

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
  // Taken until the program ends, and nobody listens: a port that was given back would be the next
  // one that the system gives to another program, or to the very connection that is to be refused.
  static asio::io_context context;
  static std::list<tcp::socket> taken;
  return taken.emplace_back(context, Loopback(0)).local_endpoint().port();
}

}  // namespace korvixsdk::test
