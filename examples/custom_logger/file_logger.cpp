#include "file_logger.h"

#include <korvixsdk/version.h>
#include <spdlog/sinks/rotating_file_sink.h>
#include <spdlog/spdlog.h>

#include <exception>

namespace custom_logger {
namespace {

// A host runs for years: three files of a megabyte, the oldest of which goes.
constexpr std::size_t kLargestFile = 1 << 20;
constexpr std::size_t kOlderFiles = 2;

/// The lines quote the service's texts, which must not be able to make up lines of their own.
std::string OneLine(std::string text) {
  for (char& character : text) {
    const auto byte = static_cast<unsigned char>(character);
    if (byte < 0x20 || byte == 0x7f) character = ' ';
  }
  return text;
}

/// The library expects that no logger throws. spdlog reports its own failures, such as a full disk,
/// to standard error; what is left is that memory runs out, and then a line is lost.
void Write(spdlog::logger& log, spdlog::level::level_enum level,
           const std::string& message) noexcept {
  try {
    log.log(level, OneLine(message));
  } catch (const std::exception&) {
  }
}

/// An address may hold a user's name and password, which are nobody's business.
std::string WithoutUser(std::string address) {
  const std::size_t slashes = address.find("//");
  if (slashes == std::string::npos) return address;
  const std::size_t host = slashes + 2;
  const std::size_t at = address.substr(0, address.find_first_of("/?#", host)).rfind('@');
  if (at != std::string::npos && at >= host) address.erase(host, at + 1 - host);
  return address;
}

}  // namespace

korvixsdk::Result<std::shared_ptr<FileLogger>> FileLogger::Open(const std::string& path) try {
  auto sink =
      std::make_shared<spdlog::sinks::rotating_file_sink_mt>(path, kLargestFile, kOlderFiles);
  auto log = std::make_shared<spdlog::logger>("korvixsdk", std::move(sink));
  log->set_pattern("%Y-%m-%dT%H:%M:%S.%e%z [%l] %v");
  log->set_level(spdlog::level::debug);
  // The library writes a handful of lines; a crash must not take the last ones with it.
  log->flush_on(spdlog::level::debug);
  return {std::make_shared<FileLogger>(std::move(log)), {}};
} catch (const std::exception&) {
  return {{}, {korvixsdk::kFileSystemError, "Failed to open file for write: " + path}};
}

void FileLogger::LogDebug(const std::string& message) {
  Write(*log_, spdlog::level::debug, message);
}

void FileLogger::LogInfo(const std::string& message) { Write(*log_, spdlog::level::info, message); }

void FileLogger::LogWarning(const std::string& message) {
  Write(*log_, spdlog::level::warn, message);
}

void FileLogger::LogError(const std::string& message) { Write(*log_, spdlog::level::err, message); }

void LogStart(korvixsdk::ILogger& logger, const korvixsdk::SDKConfig& config) {
  logger.LogInfo("KorvixSDK " KORVIXSDK_VERSION ", service " + WithoutUser(config.server_base_url));
}

}  // namespace custom_logger
