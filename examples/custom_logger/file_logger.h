#ifndef KORVIXSDK_EXAMPLES_CUSTOM_LOGGER_FILE_LOGGER_H_
#define KORVIXSDK_EXAMPLES_CUSTOM_LOGGER_FILE_LOGGER_H_

#include <korvixsdk/korvixsdk.h>

#include <memory>
#include <string>

namespace spdlog {
class logger;
}

namespace custom_logger {

/// Writes the library's log lines to a file, each after its time and severity. May be shared by
/// facades in several threads.
class FileLogger final : public korvixsdk::ILogger {
 public:
  /// Appends to the file at `path`, made when missing, with its folders. Fails with
  /// `kFileSystemError`.
  static korvixsdk::Result<std::shared_ptr<FileLogger>> Open(const std::string& path);

  /// Writes to `log`, of whatever sinks and pattern.
  explicit FileLogger(std::shared_ptr<spdlog::logger> log) : log_(std::move(log)) {}

  void LogDebug(const std::string& message) override;
  void LogInfo(const std::string& message) override;
  void LogWarning(const std::string& message) override;
  void LogError(const std::string& message) override;

 private:
  std::shared_ptr<spdlog::logger> log_;
};

/// Logs what a reader of the lines asks first: the version of the library that the host was built
/// with, and the service's address, without a user's name. To be called before `Init`.
void LogStart(korvixsdk::ILogger& logger, const korvixsdk::SDKConfig& config);

}  // namespace custom_logger

#endif  // KORVIXSDK_EXAMPLES_CUSTOM_LOGGER_FILE_LOGGER_H_
