#ifndef KORVIXSDK_LOGGER_H_
#define KORVIXSDK_LOGGER_H_

/// \file
/// \brief `ILogger`: where the library's log lines go.

#include <string>

namespace korvixsdk {

/// Receives complete log lines. There are no levels, formats or filters: how severe a line is, is
/// told by the operation that receives it. The default implementation drops every line.
///
/// The library calls it once for each line, on the thread that called the library, before the
/// operation returns. An implementation must be fast and must not call the library. If it serves
/// several facades in several threads, it must have locks of its own. Exceptions: see
/// `ServiceRegistry`.
class ILogger {
 public:
  virtual ~ILogger() = default;

  /// Details for debugging. The library itself writes no such lines.
  /// \param message one line, UTF-8. Paths and texts of the service are put into it unchanged, and
  ///   may contain other encodings and line ends.
  virtual void LogDebug(const std::string& message) = 0;
  /// An operation succeeded, or goes on.
  virtual void LogInfo(const std::string& message) = 0;
  /// An operation failed, and returns this failure to its caller.
  virtual void LogWarning(const std::string& message) = 0;
  /// Initialisation failed.
  virtual void LogError(const std::string& message) = 0;
};

}  // namespace korvixsdk

#endif  // KORVIXSDK_LOGGER_H_
