#include <exception>
#include <system_error>

#include "platform/native_file.h"

namespace korvixsdk {

bool CreateDirectoryChain(const std::filesystem::path& path) noexcept {
  try {
    std::error_code error;
    std::filesystem::create_directories(path, error);
    return !error;
  } catch (const std::exception&) {
    return false;
  }
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

bool OpeningMightNotEnd(const std::filesystem::path& path) noexcept {
  std::error_code error;
  return std::filesystem::is_fifo(path, error);
}

}  // namespace korvixsdk
