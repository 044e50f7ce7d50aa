#include <algorithm>
#include <exception>
#include <string>

#include "platform/native_file.h"
#include "platform/windows/windows_headers.h"

namespace korvixsdk {
namespace {

/// The attributes of what a link leads to, or 0 when it leads nowhere.
DWORD TargetAttributes(const std::filesystem::path& link) {
  const HANDLE target = CreateFileW(link.c_str(), FILE_READ_ATTRIBUTES,
                                    FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                    OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
  if (target == INVALID_HANDLE_VALUE) return 0;
  BY_HANDLE_FILE_INFORMATION information{};
  const BOOL known = GetFileInformationByHandle(target, &information);
  CloseHandle(target);
  return known ? information.dwFileAttributes : 0;
}

/// The attributes, or 0 when there is nothing or it cannot be told.
DWORD Attributes(const std::filesystem::path& path) {
  WIN32_FILE_ATTRIBUTE_DATA data{};
  if (!GetFileAttributesExW(path.c_str(), GetFileExInfoStandard, &data)) return 0;
  // It follows no links.
  const bool link = (data.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0;
  return link ? TargetAttributes(path) : data.dwFileAttributes;
}

}  // namespace

// All of this asks the system itself: the C runtime's stat, on which MinGW's std::filesystem rests,
// follows no links, finds no folder by a name with a separator at its end, by a drive ("C:") or by
// a "\\?\" path, and needs the right to list the folder above.

bool CreateDirectoryChain(const std::filesystem::path& path) noexcept {
  if (IsFolder(path)) return true;
  try {
    // Roots, shares and drives cannot be created; whether they were there shows in the end.
    const std::wstring& text = path.native();
    for (std::size_t end = 0; end != text.size();) {
      end = std::min(text.find_first_of(L"\\/", end + 1), text.size());
      CreateDirectoryW(text.substr(0, end).c_str(), nullptr);
    }
  } catch (const std::exception&) {
    return false;
  }
  return IsFolder(path);
}

bool PathExists(const std::filesystem::path& path) noexcept { return Attributes(path) != 0; }

bool IsFolder(const std::filesystem::path& path) noexcept {
  return (Attributes(path) & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

/// Files are all that a path leads to, but for reserved names, which the C runtime opens as devices
/// that end by themselves.
bool ReadingMightNotEnd(const std::filesystem::path&) noexcept { return false; }

/// A pipe that nobody serves fails to open at once.
bool OpeningMightNotEnd(const std::filesystem::path&) noexcept { return false; }

}  // namespace korvixsdk
