#include "platform/default_file_system_provider.h"

#include <filesystem>
#include <optional>

#include "platform/error_text.h"
#include "platform/native_file.h"
#include "platform/native_path.h"

namespace korvixsdk {
namespace {

Error FileSystemError(const char* text, const std::string& path) {
  return ErrorWithDetail(kFileSystemError, text, path);
}

}  // namespace

bool DefaultFileSystemProvider::Exists(const std::string& path) {
  const std::optional<std::filesystem::path> native = NativePathFromNarrow(path);
  return native && PathExists(*native);
}

Result<std::string> DefaultFileSystemProvider::ReadFile(const std::string& path) {
  Result<std::string> result;
  const std::optional<std::filesystem::path> native = NativePathFromNarrow(path);
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
  const std::optional<std::filesystem::path> native = NativePathFromNarrow(path);
  if (!native) return FileSystemError("Failed to open file for write: ", path);
  if (!CreateParentDirectories(*native)) {
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
  const std::optional<std::filesystem::path> native = NativePathFromNarrow(path);
  if (!native || !CreateDirectoryChain(*native)) {
    return FileSystemError("Failed to create directories: ", path);
  }
  return Error{};
}

}  // namespace korvixsdk
