#include "platform/default_file_system_provider.h"

#include <filesystem>
#include <optional>

#include "platform/error_text.h"
#include "platform/fail.h"
#include "platform/native_file.h"
#include "platform/native_path.h"
#include "platform/or_else.h"
#include "platform/path_status.h"

namespace korvixsdk {
namespace {

/// Messages end in the path as it came: the native one may be in an encoding that no log shows, and
/// the system's reason is in the language of the machine.
Failure FailAt(const std::string& path, const char* text) {
  return Failure{ErrorOf(kFileSystemError, {text, path})};
}

/// A path that does not fit into memory is none.
std::optional<std::filesystem::path> NativePath(const std::string& path) {
  return OrElse([&] { return NativePathFromNarrow(path); }, std::nullopt);
}

}  // namespace

bool DefaultFileSystemProvider::Exists(const std::string& path) {
  const std::optional<std::filesystem::path> native = NativePath(path);
  return native && PathExists(*native);
}

Result<std::string> DefaultFileSystemProvider::ReadFile(const std::string& path) {
  Result<std::string> result;
  const std::optional<std::filesystem::path> native = NativePath(path);
  const FileOutcome outcome =
      native ? ReadWholeFile(*native, result.value) : FileOutcome::kNotOpened;
  if (outcome == FileOutcome::kNotOpened) {
    return FailAt(path, "Failed to open file for read: ");
  }
  if (outcome == FileOutcome::kFailed) return FailAt(path, "Failed to read file: ");
  return result;
}

Error DefaultFileSystemProvider::WriteFile(const std::string& path, const std::string& content) {
  // Straight into place, without a second name beside it: whoever needs more than whole files can
  // put a service of its own in this one's place.
  const std::optional<std::filesystem::path> native = NativePath(path);
  if (!native) return FailAt(path, "Failed to open file for write: ");
  if (!OrElse([&] { return CreateParentDirectories(*native); }, false)) {
    return FailAt(path, "Failed to create parent directories: ");
  }
  switch (WriteWholeFile(*native, content)) {
    case FileOutcome::kNotOpened:
      return FailAt(path, "Failed to open file for write: ");
    case FileOutcome::kFailed:
      return FailAt(path, "Failed to write file: ");
    case FileOutcome::kDone:
      break;
  }
  return Error{};
}

Error DefaultFileSystemProvider::CreateDirectories(const std::string& path) {
  const std::optional<std::filesystem::path> native = NativePath(path);
  if (!native || !OrElse([&] { return CreateDirectoryChain(*native); }, false)) {
    return FailAt(path, "Failed to create directories: ");
  }
  return Error{};
}

}  // namespace korvixsdk
