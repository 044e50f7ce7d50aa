#ifndef KORVIXSDK_TESTS_PROCESSES_AWAITED_FILE_H_
#define KORVIXSDK_TESTS_PROCESSES_AWAITED_FILE_H_

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <thread>

namespace korvixsdk::test {

/// The bytes of a file that a started program renames to `path` when it is whole, waited for as
/// long as a slow machine may take. On Windows a file that is there does not open yet while the
/// renaming goes on.
inline std::string AwaitedBytes(const std::filesystem::path& path) {
  const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(100);
  for (;;) {
    const std::ifstream stream(path, std::ios::binary);
    if (stream.is_open()) {
      std::ostringstream bytes;
      bytes << stream.rdbuf();
      return bytes.str();
    }
    if (std::chrono::steady_clock::now() > deadline) {
      ADD_FAILURE() << "nobody wrote " << path;
      return {};
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(5));
  }
}

}  // namespace korvixsdk::test

#endif  // KORVIXSDK_TESTS_PROCESSES_AWAITED_FILE_H_
