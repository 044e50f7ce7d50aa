#include "platform/machine_identity.h"

#include <fcntl.h>
#include <unistd.h>
#include <uuid/uuid.h>

#include <algorithm>
#include <cerrno>

namespace korvixsdk {
namespace {

constexpr char kMachineIdFile[] = "/etc/machine-id";
/// The first line is a 32-digit number; a host name has at most 64 bytes on Linux.
constexpr std::size_t kLongestLine = 256;

Result<std::string> Failure(const char* message) {
  return Result<std::string>{{}, Error{kPlatformError, message}};
}

/// The first bytes of the file, as many as one read gives; -1 when it cannot be read.
ssize_t ReadStart(const char* path, char* buffer, std::size_t size) {
  const int file = open(path, O_RDONLY | O_CLOEXEC);
  if (file < 0) return -1;
  ssize_t length = -1;
  do {
    length = read(file, buffer, size);
  } while (length < 0 && errno == EINTR);
  close(file);
  return length;
}

}  // namespace

Result<std::string> ReadMachineGuid() {
  char buffer[kLongestLine];
  const ssize_t length = ReadStart(kMachineIdFile, buffer, sizeof(buffer));
  if (length < 0) return Failure("Machine id file is unavailable");
  std::string line(buffer, static_cast<std::size_t>(length));
  line.erase(std::min(line.find('\n'), line.size()));
  // The second text stands there during the first boot of an image, on every machine alike.
  if (line.empty() || line == "uninitialized") return Failure("Machine id file is empty");
  return Result<std::string>{std::move(line), Error{}};
}

Result<std::string> ReadComputerName() {
  char name[kLongestLine] = {};
  if (gethostname(name, sizeof(name) - 1) != 0 || name[0] == '\0') {
    return Failure("Failed to read computer name");
  }
  return Result<std::string>{name, Error{}};
}

std::string NewGuidText() {
  uuid_t guid;
  uuid_generate_random(guid);
  char text[UUID_STR_LEN];
  uuid_unparse_lower(guid, text);
  return text;
}

}  // namespace korvixsdk
