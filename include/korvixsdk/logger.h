#ifndef KORVIXSDK_LOGGER_H_
#define KORVIXSDK_LOGGER_H_

/// \file
/// \brief `ILogger`: where the library's log lines go.

#include <string>

namespace korvixsdk {

/// Receives finished log lines. The operation that is called is the severity; the interface has no
/// levels, formats or filters. The default implementation drops every line.
///
/// Called on the thread that called the library, once a line, before the operation returns. An
/// implementation must be cheap and must not call back into the library. One that serves several
/// facades in several threads must be safe for that itself. Exceptions: see `ServiceRegistry`.
class ILogger {
 public:
  virtual ~ILogger() = default;

  /// Detail for debugging; the library itself writes no such line.
  /// \param message one line, UTF-8. Paths and the service's texts stand in it as they came, so
  ///   that it may hold other encodings and line ends.
  virtual void LogDebug(const std::string& message) = 0;
  /// An operation succeeded, or a fact about its progress.
  virtual void LogInfo(const std::string& message) = 0;
  /// An operation failed and the failure is returned to the caller.
  virtual void LogWarning(const std::string& message) = 0;
  /// Initialisation failed.
  virtual void LogError(const std::string& message) = 0;
};

}  // namespace korvixsdk

#endif  // KORVIXSDK_LOGGER_H_
