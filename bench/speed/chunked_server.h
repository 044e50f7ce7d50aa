#ifndef KORVIXSDK_BENCH_SPEED_CHUNKED_SERVER_H_
#define KORVIXSDK_BENCH_SPEED_CHUNKED_SERVER_H_

#include <cstddef>
#include <memory>
#include <string>

namespace speed {

/// An HTTP server on 127.0.0.1 that answers the path "/BYTES.pkg" with that many bytes without
/// saying so beforehand: in chunks. Keeps one chunk in memory and serves one client at a time.
class ChunkedServer {
 public:
  ChunkedServer();
  ~ChunkedServer();

  /// "http://127.0.0.1:PORT"
  std::string address() const;

 private:
  struct State;
  std::unique_ptr<State> state_;
};

}  // namespace speed

#endif  // KORVIXSDK_BENCH_SPEED_CHUNKED_SERVER_H_
