#include "platform/file_descriptor.h"

#include <fcntl.h>
#include <io.h>
#include <sys/stat.h>

#include <algorithm>
#include <climits>

namespace korvixsdk {
namespace {

/// The C runtime counts in int.
unsigned int Count(std::size_t size) {
  return static_cast<unsigned int>(std::min(size, std::size_t{INT_MAX}));
}

}  // namespace

FileDescriptor FileDescriptor::OpenForReading(const PathCharacter* path) noexcept {
  return FileDescriptor(_wopen(path, _O_RDONLY | _O_BINARY | _O_NOINHERIT));
}

FileDescriptor FileDescriptor::OpenForWriting(const PathCharacter* path) noexcept {
  return FileDescriptor(_wopen(path, _O_WRONLY | _O_CREAT | _O_TRUNC | _O_BINARY | _O_NOINHERIT,
                               _S_IREAD | _S_IWRITE));
}

FileDescriptor::~FileDescriptor() {
  if (is_open()) _close(number_);
}

std::ptrdiff_t FileDescriptor::Read(char* data, std::size_t size) noexcept {
  return _read(number_, data, Count(size));
}

std::ptrdiff_t FileDescriptor::Write(const char* data, std::size_t size) noexcept {
  return _write(number_, data, Count(size));
}

std::uint64_t FileDescriptor::Length() noexcept {
  return static_cast<std::uint64_t>(std::max(_filelengthi64(number_), 0ll));
}

}  // namespace korvixsdk
