#include "support/temp_folder.h"

#include <gtest/gtest.h>

#include <fstream>
#include <random>
#include <sstream>
#include <system_error>

namespace korvixsdk::test {

TempFolder::TempFolder() {
  std::random_device random;
  do {
    path_ = std::filesystem::temp_directory_path() / ("korvixsdk-test-" + std::to_string(random()));
  } while (!std::filesystem::create_directory(path_));
}

TempFolder::~TempFolder() {
  std::error_code error;
  std::filesystem::remove_all(path_, error);
}

std::string TempFolder::Entry(const std::string& name) const {
  return path_.string() + static_cast<char>(std::filesystem::path::preferred_separator) + name;
}

std::string FileBytes(const std::filesystem::path& path) {
  std::ifstream stream(path, std::ios::binary);
  EXPECT_TRUE(stream.is_open()) << path;
  std::ostringstream bytes;
  bytes << stream.rdbuf();
  return bytes.str();
}

void WriteBytes(const std::filesystem::path& path, const std::string& bytes) {
  std::ofstream stream(path, std::ios::binary | std::ios::trunc);
  stream << bytes;
  stream.close();
  EXPECT_TRUE(stream.good()) << path;
}

}  // namespace korvixsdk::test
