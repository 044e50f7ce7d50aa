#ifndef KORVIXSDK_PLATFORM_FILE_DESCRIPTOR_H_
#define KORVIXSDK_PLATFORM_FILE_DESCRIPTOR_H_

#include <cstddef>
#include <cstdint>
#include <filesystem>

namespace korvixsdk {

/// What the system's own paths are made of.
using PathCharacter = std::filesystem::path::value_type;

/// An open file without a buffer, binary, closed when it goes out of scope; what closing answers is
/// not looked at. The C++ library's file streams would do, but are 220 KB of a DLL that carries its
/// own runtime.
class FileDescriptor {
 public:
  /// Not inherited by processes that the host starts.
  static FileDescriptor OpenForReading(const PathCharacter* path) noexcept;
  /// Creates the file, or empties the one that is there.
  static FileDescriptor OpenForWriting(const PathCharacter* path) noexcept;

  ~FileDescriptor();
  FileDescriptor(const FileDescriptor&) = delete;
  FileDescriptor& operator=(const FileDescriptor&) = delete;

  bool is_open() const { return number_ >= 0; }
  /// How many bytes were read, at most `size`; 0 at the end of the file, below 0 on failure.
  std::ptrdiff_t Read(char* data, std::size_t size) noexcept;
  /// How many bytes were written, at most `size`; below 0 on failure.
  std::ptrdiff_t Write(const char* data, std::size_t size) noexcept;
  /// The file's length in bytes; 0 when the system does not tell.
  std::uint64_t Length() noexcept;

 private:
  explicit FileDescriptor(int number) : number_(number) {}

  int number_;
};

}  // namespace korvixsdk

#endif  // KORVIXSDK_PLATFORM_FILE_DESCRIPTOR_H_
