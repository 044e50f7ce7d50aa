#include "doctor/folder.h"

#include <exception>
#include <filesystem>
#include <system_error>

namespace doctor {

std::string Entry(const std::string& folder, const std::string& name) {
  return folder + static_cast<char>(std::filesystem::path::preferred_separator) + name;
}

// A text may be no path in its encoding, at which the standard library throws.

std::optional<std::uint64_t> FreeSpace(const std::string& folder) try {
  std::error_code error;
  const std::filesystem::space_info space = std::filesystem::space(folder, error);
  if (error) return std::nullopt;
  return space.available;
} catch (const std::exception&) {
  return std::nullopt;
}

void Remove(const std::string& path) try {
  std::error_code ignored;
  std::filesystem::remove_all(path, ignored);
} catch (const std::exception&) {
}

}  // namespace doctor
