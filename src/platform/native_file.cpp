#include "platform/native_file.h"

#include <algorithm>
#include <exception>
#include <fstream>
#include <system_error>

namespace korvixsdk {
namespace {

/// The C runtimes take at most INT_MAX bytes a call on Windows; all but giant files go in one.
constexpr std::size_t kLargestTransfer = std::size_t{1} << 30;
constexpr std::size_t kReadStep = std::size_t{64} << 10;

/// The file's length where the system tells one, as a first guess at the memory needed.
std::size_t ExpectedLength(const std::filesystem::path& path) {
  std::error_code error;
  const std::uintmax_t length = std::filesystem::file_size(path, error);
  if (error || length > kLargestTransfer) return 0;
  return static_cast<std::size_t>(length);
}

/// One byte more than expected, so that the end of the file is met without growing.
void ReadToEnd(std::filebuf& file, std::size_t expected, std::string& content) {
  std::size_t used = 0;
  std::size_t step = std::max(expected + 1, std::size_t{1});
  for (;;) {
    content.resize(used + step);
    const std::streamsize got =
        file.sgetn(content.data() + used, static_cast<std::streamsize>(step));
    used += static_cast<std::size_t>(std::max(got, std::streamsize{0}));
    if (got < static_cast<std::streamsize>(step)) break;
    step = std::min(std::max(used, kReadStep), kLargestTransfer);
  }
  content.resize(used);
}

}  // namespace

FileOutcome ReadWholeFile(const std::filesystem::path& path, std::string& content) noexcept {
  bool opened = false;
  try {
    content.clear();
    if (IsFolder(path)) return FileOutcome::kNotOpened;
    std::filebuf file;
    file.pubsetbuf(nullptr, 0);
    if (file.open(path, std::ios::in | std::ios::binary) == nullptr) return FileOutcome::kNotOpened;
    opened = true;
    ReadToEnd(file, ExpectedLength(path), content);
    return FileOutcome::kDone;
  } catch (const std::exception&) {
    content.clear();
    return opened ? FileOutcome::kFailed : FileOutcome::kNotOpened;
  }
}

FileOutcome WriteWholeFile(const std::filesystem::path& path, const std::string& content) noexcept {
  try {
    std::ofstream stream;
    stream.rdbuf()->pubsetbuf(nullptr, 0);
    stream.open(path, std::ios::out | std::ios::trunc | std::ios::binary);
    if (!stream.is_open()) return FileOutcome::kNotOpened;
    for (std::size_t done = 0; stream.good() && done < content.size(); done += kLargestTransfer) {
      const std::size_t length = std::min(content.size() - done, kLargestTransfer);
      stream.write(content.data() + done, static_cast<std::streamsize>(length));
    }
    return stream.good() ? FileOutcome::kDone : FileOutcome::kFailed;
  } catch (const std::exception&) {
    return FileOutcome::kNotOpened;
  }
}

bool CreateParentDirectories(const std::filesystem::path& path) noexcept {
  try {
    const std::filesystem::path parent = path.parent_path();
    return parent.empty() || CreateDirectoryChain(parent);
  } catch (const std::exception&) {
    return false;
  }
}

}  // namespace korvixsdk
