#include "platform/machine_identity.h"

#include <unistd.h>
#include <uuid/uuid.h>

#include <cstddef>
#include <string_view>

#include "platform/fail.h"
#include "platform/file_descriptor.h"

namespace korvixsdk {
namespace {

constexpr char kMachineIdFile[] = "/etc/machine-id";
/// The first line is a 32-digit number; a host name has at most 64 bytes on Linux.
constexpr std::size_t kLongestLine = 256;

}  // namespace

Result<std::string> ReadMachineGuid() {
  FileDescriptor file = FileDescriptor::OpenForReading(kMachineIdFile);
  char buffer[kLongestLine];
  const std::ptrdiff_t length = file.Read(buffer, sizeof(buffer));
  if (length < 0) return Fail(kPlatformError, "Machine id file is unavailable");
  const std::string_view text(buffer, static_cast<std::size_t>(length));
  const std::string_view line = text.substr(0, text.find('\n'));
  // The second text stands there during the first boot of an image, on every machine alike.
  if (line.empty() || line == "uninitialized") {
    return Fail(kPlatformError, "Machine id file is empty");
  }
  return {std::string(line), Error{}};
}

Result<std::string> ReadComputerName() {
  char name[kLongestLine] = {};
  if (gethostname(name, sizeof(name) - 1) != 0 || name[0] == '\0') {
    return Fail(kPlatformError, "Failed to read computer name");
  }
  return {name, Error{}};
}

std::string NewGuidText() {
  uuid_t guid;
  uuid_generate_random(guid);
  char text[UUID_STR_LEN];
  uuid_unparse_lower(guid, text);
  return text;
}

}  // namespace korvixsdk
