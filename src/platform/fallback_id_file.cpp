#include "platform/fallback_id_file.h"

#include <filesystem>
#include <mutex>
#include <optional>
#include <utility>

#include "platform/ascii.h"
#include "platform/fail.h"
#include "platform/machine_identity.h"
#include "platform/native_file.h"
#include "platform/native_path.h"
#include "platform/or_else.h"
#include "platform/path_status.h"

namespace korvixsdk {
namespace {

constexpr char kIdPrefix[] = "guid-";
constexpr char kNotWritten[] = "Failed to write fallback device id";

/// The library's one lock: facades in several threads share the path, and nothing else.
std::mutex published_path_mutex;

/// Made at the first use and never destroyed: a host may call from its own static destructors.
std::string& PublishedPath() {
  static std::string& path = *new std::string;
  return path;
}

/// The stored identifier, whatever its form; empty when there is none to read. Devices and pipes,
/// whose reading might never end, hold none.
std::string ReadId(const std::filesystem::path& path) {
  if (ReadingMightNotEnd(path)) return {};
  std::string content;
  if (ReadWholeFile(path, content) != FileOutcome::kDone) return {};
  return std::string(TrimAscii(content));
}

Error WriteId(const std::optional<std::filesystem::path>& path, const std::string& id) {
  if (!path || WritingMightNotEnd(*path)) return Fail(kPlatformError, kNotWritten);
  if (!CreateParentDirectories(*path)) {
    return Fail(kPlatformError, "Failed to create fallback device id directory");
  }
  switch (WriteWholeFile(*path, id)) {
    case FileOutcome::kNotOpened:
      return Fail(kPlatformError, kNotWritten);
    case FileOutcome::kFailed:
      return Fail(kPlatformError, "Failed to persist fallback device id");
    case FileOutcome::kDone:
      break;
  }
  return Error{};
}

Result<std::string> StoredOrNewId(const std::string& own_path) {
  const std::string text = own_path.empty() ? DefaultFallbackIdPath() : own_path;
  if (text.empty()) {
    return Fail(kPlatformError, "No stable device fingerprint sources are available");
  }
  // Always UTF-8: in the process's code page two programs with different manifests would not find
  // each other's file. Nor does it go through the host's file system service, which may be replaced
  // from one version to the next, when the identifier must stay.
  const std::optional<std::filesystem::path> path = NativePathFromUtf8(text);
  if (path) {
    std::string stored = ReadId(*path);
    if (!stored.empty()) return {std::move(stored), Error{}};
  }

  const std::string guid = FoldAsciiToLower(NewGuidText());
  if (guid.empty()) return Fail(kPlatformError, "Failed to generate fallback device id");
  std::string id = kIdPrefix + guid;
  // An identifier that is not kept would make a new machine of this one at every call.
  Error written = WriteId(path, id);
  if (!written.ok()) return {{}, std::move(written)};
  return {std::move(id), Error{}};
}

}  // namespace

void SetDefaultFallbackIdPath(const std::string& path) {
  const std::lock_guard<std::mutex> lock(published_path_mutex);
  PublishedPath() = path;
}

std::string DefaultFallbackIdPath() {
  const std::lock_guard<std::mutex> lock(published_path_mutex);
  return PublishedPath();
}

Result<std::string> FallbackId(const std::string& path) {
  // A path or a stored text can be so long that memory does not suffice for it.
  return OrElse([&] { return StoredOrNewId(path); },
                [](const char*) { return Fail(kPlatformError, kNotWritten); });
}

}  // namespace korvixsdk
