#include <fcntl.h>
#include <unistd.h>

#include "benches.h"
#include "measure.h"
#include "platform/placeholder_device_id_provider.h"
#include "require.h"

namespace speed {
namespace {

struct Sources {
  char first[256];
  char second[256];
  char name[256];
};

bool ReadFileByHand(const char* path, char* buffer, std::size_t size) {
  const int file = open(path, O_RDONLY | O_CLOEXEC);
  if (file < 0) return false;
  const ssize_t length = read(file, buffer, size);
  close(file);
  return length > 0;
}

/// Two files and the computer's name, and nothing done with them.
Sources ReadByHand() {
  Sources sources;
  const bool read = ReadFileByHand("/etc/machine-id", sources.first, sizeof(sources.first)) &&
                    ReadFileByHand("/etc/machine-id", sources.second, sizeof(sources.second)) &&
                    gethostname(sources.name, sizeof(sources.name)) == 0;
  Require(read, "machine id and computer name by hand");
  return sources;
}

}  // namespace

void RegisterDeviceId() {
  korvixsdk::PlaceholderDeviceIdProvider provider("");
  const korvixsdk::Result<std::string> id = provider.GetDeviceId();
  Require(id.ok() && id.value.rfind("win-", 0) == 0, "the identifier, made of both sources");
  Register("device_id/ours/warm",
           [] { return korvixsdk::PlaceholderDeviceIdProvider("").GetDeviceId(); });
  Register("device_id/by_hand/warm", &ReadByHand);
  Require(korvixsdk::Fnv1a64("a") == 0xaf63dc4c8601ec8c, "FNV-1a of one letter");
  Register("fnv1a/ours/sources", [] {
    return korvixsdk::Fnv1a64(
        "machine_guid:0123456789abcdef0123456789abcdef|computer_name:workstation-17");
  });
}

}  // namespace speed
