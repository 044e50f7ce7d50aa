#ifndef KORVIXSDK_TESTS_PROCESSES_LARGE_PACKAGE_H_
#define KORVIXSDK_TESTS_PROCESSES_LARGE_PACKAGE_H_

#include <cstdint>
#include <string>

namespace korvixsdk::test {

/// A package that takes more than one moment to write: no two stretches of it are alike.
inline std::string LargePackage(std::size_t size) {
  std::string bytes(size, '\0');
  std::uint32_t state = 1;
  for (char& byte : bytes) {
    state = state * 1664525u + 1013904223u;
    byte = static_cast<char>(state >> 24);
  }
  return bytes;
}

}  // namespace korvixsdk::test

#endif  // KORVIXSDK_TESTS_PROCESSES_LARGE_PACKAGE_H_
