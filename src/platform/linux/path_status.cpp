#include "platform/path_status.h"

#include <fcntl.h>
#include <unistd.h>

#include <system_error>

namespace korvixsdk {
namespace {

/// Asked without waiting for the line of a serial terminal.
bool IsTerminal(const std::filesystem::path& path) {
  std::error_code error;
  if (!std::filesystem::is_character_file(path, error)) return false;
  const int file = open(path.c_str(), O_WRONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
  if (file < 0) return false;
  const bool terminal = isatty(file) == 1;
  close(file);
  return terminal;
}

}  // namespace

bool CreateDirectoryChain(const std::filesystem::path& path) {
  std::error_code error;
  std::filesystem::create_directories(path, error);
  return !error;
}

bool PathExists(const std::filesystem::path& path) noexcept {
  std::error_code error;
  return std::filesystem::exists(std::filesystem::status(path, error));
}

bool IsFolder(const std::filesystem::path& path) noexcept {
  std::error_code error;
  return std::filesystem::is_directory(path, error);
}

bool ReadingMightNotEnd(const std::filesystem::path& path) noexcept {
  std::error_code error;
  return std::filesystem::is_other(path, error);
}

bool WritingMightNotEnd(const std::filesystem::path& path) noexcept {
  std::error_code error;
  return std::filesystem::is_fifo(path, error) || IsTerminal(path);
}

}  // namespace korvixsdk
