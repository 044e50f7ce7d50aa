#include "platform/native_file.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "platform/file_descriptor.h"
#include "platform/or_else.h"
#include "platform/path_status.h"

namespace korvixsdk {
namespace {

/// A longer file is no reason to ask for all its memory at once.
constexpr std::uint64_t kLargestReservation = std::uint64_t{1} << 30;
constexpr std::size_t kReadStep = std::size_t{64} << 10;

/// The file's length, as a first guess at the memory needed.
std::size_t ExpectedLength(FileDescriptor& file) {
  const std::uint64_t length = file.Length();
  return length > kLargestReservation ? 0 : static_cast<std::size_t>(length);
}

/// One byte more than expected, so that the end of the file is met without growing.
bool ReadToEnd(FileDescriptor& file, std::string& content) {
  std::size_t used = 0;
  std::size_t room = ExpectedLength(file) + 1;
  for (;;) {
    content.resize(room);
    const std::ptrdiff_t got = file.Read(content.data() + used, room - used);
    if (got < 0) return false;
    if (got == 0) break;
    used += static_cast<std::size_t>(got);
    if (used == room) room += std::max(used, kReadStep);
  }
  content.resize(used);
  return true;
}

bool WriteAll(FileDescriptor& file, const std::string& content) {
  for (std::size_t done = 0; done < content.size();) {
    const std::ptrdiff_t written = file.Write(content.data() + done, content.size() - done);
    if (written <= 0) return false;
    done += static_cast<std::size_t>(written);
  }
  return true;
}

}  // namespace

FileOutcome ReadWholeFile(const std::filesystem::path& path, std::string& content) noexcept {
  content.clear();
  // Linux opens a folder, and only reading it fails; Windows does not even open it.
  if (IsFolder(path)) return FileOutcome::kNotOpened;
  FileDescriptor file = FileDescriptor::OpenForReading(path.c_str());
  if (!file.is_open()) return FileOutcome::kNotOpened;
  if (OrElse([&] { return ReadToEnd(file, content); }, false)) return FileOutcome::kDone;
  content.clear();
  return FileOutcome::kFailed;
}

FileOutcome WriteWholeFile(const std::filesystem::path& path, const std::string& content) noexcept {
  FileDescriptor file = FileDescriptor::OpenForWriting(path.c_str());
  if (!file.is_open()) return FileOutcome::kNotOpened;
  return WriteAll(file, content) ? FileOutcome::kDone : FileOutcome::kFailed;
}

bool CreateParentDirectories(const std::filesystem::path& path) {
  const std::filesystem::path parent = path.parent_path();
  return parent.empty() || CreateDirectoryChain(parent);
}

}  // namespace korvixsdk
