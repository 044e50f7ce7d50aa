#ifndef KORVIXSDK_TESTS_SUPPORT_SCRIPTED_SERVER_H_
#define KORVIXSDK_TESTS_SUPPORT_SCRIPTED_SERVER_H_

#include <chrono>
#include <memory>
#include <string>
#include <vector>

namespace korvixsdk::test {

/// What the server does with one connection after it has read the request's head: bytes and pauses
/// in order, then the end. Plays anything, sound HTTP or not.
class Script {
 public:
  /// A whole response: status line, Content-Length and the body.
  static Script Response(int status, const std::string& body, const std::string& headers = "");
  /// A 302 to `location`.
  static Script Redirect(const std::string& location);

  Script& Send(std::string bytes);
  /// Sends the bytes again and again, each time followed by the pause, until the client hangs up or
  /// the server stops.
  Script& SendForEver(std::string bytes,
                      std::chrono::milliseconds pause = std::chrono::milliseconds(0));
  /// Ends early when the server stops.
  Script& Pause(std::chrono::milliseconds time);
  /// Ends the connection with a TCP reset instead of an orderly close.
  Script& Reset();
  /// Reads no request first: speaks, or hangs up, as soon as a client connects.
  Script& WithoutReading();

 private:
  friend class ScriptedServer;
  struct Step {
    std::string bytes;
    std::chrono::milliseconds pause{0};
    bool for_ever = false;
  };
  std::vector<Step> steps_;
  bool reset_ = false;
  bool reads_ = true;
};

/// An HTTP server on 127.0.0.1 that plays scripts, one for each connection in the order given, and
/// repeats the last one for further connections. Records each request's exact bytes. Stops, and
/// ends its threads, when it is destroyed.
class ScriptedServer {
 public:
  explicit ScriptedServer(std::vector<Script> scripts);
  explicit ScriptedServer(Script script);
  ~ScriptedServer();
  ScriptedServer(const ScriptedServer&) = delete;
  ScriptedServer& operator=(const ScriptedServer&) = delete;

  /// Further connections are played these scripts instead, from the first on.
  void Play(std::vector<Script> scripts);
  void Play(Script script);

  /// "http://127.0.0.1:PORT"
  std::string address() const;
  /// The heads received so far, each with its final empty line.
  std::vector<std::string> requests() const;

 private:
  struct State;
  std::unique_ptr<State> state_;
};

/// The request line of a recorded request, without its line end.
std::string RequestLine(const std::string& request);

/// A port of 127.0.0.1 at which nobody listens as long as the program runs.
unsigned short UnusedPort();

}  // namespace korvixsdk::test

#endif  // KORVIXSDK_TESTS_SUPPORT_SCRIPTED_SERVER_H_
