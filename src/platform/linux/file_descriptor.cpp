#include "platform/file_descriptor.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

namespace korvixsdk {
namespace {

/// What the user's mask leaves of it.
constexpr mode_t kEverybodyReadsAndWrites = 0666;

}  // namespace

FileDescriptor FileDescriptor::OpenForReading(const PathCharacter* path) noexcept {
  return FileDescriptor(open(path, O_RDONLY | O_CLOEXEC));
}

FileDescriptor FileDescriptor::OpenForWriting(const PathCharacter* path) noexcept {
  return FileDescriptor(
      open(path, O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, kEverybodyReadsAndWrites));
}

FileDescriptor::~FileDescriptor() {
  if (is_open()) close(number_);
}

std::ptrdiff_t FileDescriptor::Read(char* data, std::size_t size) noexcept {
  ssize_t got = -1;
  do {
    got = read(number_, data, size);
  } while (got < 0 && errno == EINTR);
  return got;
}

std::ptrdiff_t FileDescriptor::Write(const char* data, std::size_t size) noexcept {
  ssize_t written = -1;
  do {
    written = write(number_, data, size);
  } while (written < 0 && errno == EINTR);
  return written;
}

std::uint64_t FileDescriptor::Length() noexcept {
  struct stat status = {};
  if (fstat(number_, &status) != 0 || status.st_size < 0) return 0;
  return static_cast<std::uint64_t>(status.st_size);
}

}  // namespace korvixsdk
