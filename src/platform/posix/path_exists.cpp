#include <exception>
#include <system_error>

#include "platform/native_file.h"

namespace korvixsdk {

bool PathExists(const std::filesystem::path& path) noexcept {
  try {
    std::error_code error;
    return std::filesystem::exists(std::filesystem::status(path, error));
  } catch (const std::exception&) {
    return false;
  }
}

}  // namespace korvixsdk
