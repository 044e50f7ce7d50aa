#include "platform/default_file_system_provider.h"

#include <filesystem>
#include <optional>

#include "platform/error_text.h"
#include "platform/native_file.h"
#include "platform/native_path.h"
#include "platform/or_else.h"
#include "platform/path_status.h"

namespace korvixsdk {
namespace {

Error FileSystemError(const char* text, const std::string& path) {
  return ErrorOf(kFileSystemError, {text, path});
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
    result.error = FileSystemError("Failed to open file for read: ", path);
  } else if (outcome == FileOutcome::kFailed) {
    result.error = FileSystemError("Failed to read file: ", path);
  }
  return result;
}

Error DefaultFileSystemProvider::WriteFile(const std::string& path, const std::string& content) {
  const std::optional<std::filesystem::path> native = NativePath(path);
  if (!native) return FileSystemError("Failed to open file for write: ", path);
  if (!OrElse([&] { return CreateParentDirectories(*native); }, false)) {
    return FileSystemError("Failed to create parent directories: ", path);
  }
  switch (WriteWholeFile(*native, content)) {
    case FileOutcome::kNotOpened:
      return FileSystemError("Failed to open file for write: ", path);
    case FileOutcome::kFailed:
      return FileSystemError("Failed to write file: ", path);
    case FileOutcome::kDone:
      break;
  }
  return Error{};
}

Error DefaultFileSystemProvider::CreateDirectories(const std::string& path) {
  const std::optional<std::filesystem::path> native = NativePath(path);
  if (!native || !OrElse([&] { return CreateDirectoryChain(*native); }, false)) {
    return FileSystemError("Failed to create directories: ", path);
  }
  return Error{};
}

}  // namespace korvixsdk
