#include "platform/path_status.h"

#include <algorithm>
#include <cwchar>
#include <string>
#include <string_view>

#include "platform/windows/windows_headers.h"

namespace korvixsdk {
namespace {

/// Opens what links lead to, for nothing but questions.
HANDLE OpenForQuestions(const std::filesystem::path& path) {
  return CreateFileW(path.c_str(), FILE_READ_ATTRIBUTES,
                     FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr, OPEN_EXISTING,
                     FILE_FLAG_BACKUP_SEMANTICS, nullptr);
}

/// The attributes of what a link leads to, or 0 when it leads nowhere.
DWORD TargetAttributes(const std::filesystem::path& link) {
  const HANDLE target = OpenForQuestions(link);
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

constexpr wchar_t kSeparators[] = L"\\/";

/// Where the name ends that begins at `begin`.
std::size_t NameEnd(std::wstring_view path, std::size_t begin) {
  return std::min(path.find_first_of(kSeparators, begin), path.size());
}

bool IsSeparatorAt(std::wstring_view path, std::size_t place) {
  return place < path.size() && (path[place] == L'\\' || path[place] == L'/');
}

/// Where `path` begins to name folders: behind a drive, behind server and share, and behind both
/// where "\\?\" or "\\.\" is before them.
std::size_t RootEnd(std::wstring_view path) {
  std::size_t end = path.size() > 1 && path[1] == L':' ? 2 : 0;
  if (IsSeparatorAt(path, 0) && IsSeparatorAt(path, 1)) {
    end = NameEnd(path, 2);
    const std::wstring_view server = path.substr(2, end - 2);
    const std::size_t begin = end + 1;
    end = NameEnd(path, begin);
    if ((server == L"?" || server == L".") && end - begin == 3 &&
        _wcsnicmp(&path[begin], L"UNC", 3) == 0) {
      end = NameEnd(path, NameEnd(path, end + 1) + 1);
    }
  }
  return std::min(path.find_first_not_of(kSeparators, end), path.size());
}

/// Whether a folder that fails so takes a whole drive or share with it. Each further question of an
/// unreachable server would wait for the network's time limits again.
bool IsUnreachable(DWORD error) {
  switch (error) {
    case ERROR_NOT_READY:
    case ERROR_REM_NOT_LIST:
    case ERROR_BAD_NETPATH:
    case ERROR_BAD_NET_NAME:
    case ERROR_SEM_TIMEOUT:
    case ERROR_NO_NET_OR_BAD_PATH:
    case ERROR_NETWORK_UNREACHABLE:
    case ERROR_HOST_UNREACHABLE:
      return true;
    default:
      return false;
  }
}

/// Creates the folder; false when nothing below it can be created. A failure alone says little: the
/// folder may be there already, or be there with no right to look at it.
bool CreateOneDirectory(const std::wstring& path) {
  if (CreateDirectoryW(path.c_str(), nullptr)) return true;
  const DWORD error = GetLastError();
  return error != ERROR_PATH_NOT_FOUND && !IsUnreachable(error);
}

/// Whether the system takes the name for a device's or a pipe's, wherever it stands: "COM7",
/// "C:\folder\NUL", "\\.\pipe\name". Which names those are changes with its version, so it is
/// asked.
bool NamesDevice(const std::filesystem::path& path) {
  // No device and no local pipe has a longer name; what is longer leaves the buffer empty.
  wchar_t buffer[512] = L"";
  const DWORD length = GetFullPathNameW(path.c_str(), 512, buffer, nullptr);
  const std::wstring_view name(buffer, length < 512 ? length : 0);
  const std::wstring_view prefix = name.substr(0, 4);
  if (prefix != L"\\\\.\\" && prefix != L"\\\\?\\") return false;
  const std::size_t end = NameEnd(name, 4);
  return end == name.size() || (end == 8 && _wcsnicmp(buffer + 4, L"pipe", 4) == 0);
}

/// Whether a device or a pipe stands at `path`. Its name decides first, as merely opening may do
/// something, such as to connect to a pipe or to reset what is at the other end of a serial line.
/// What has no such name, as a link or a pipe of another machine, is opened, but not to read or
/// write, and asked.
bool LeadsToDevice(const std::filesystem::path& path) {
  if (NamesDevice(path)) return true;
  const HANDLE file = OpenForQuestions(path);
  if (file == INVALID_HANDLE_VALUE) return false;
  const DWORD type = GetFileType(file);
  CloseHandle(file);
  return type != FILE_TYPE_DISK;
}

}  // namespace

// All of this asks the system itself: the C runtime's stat, on which MinGW's std::filesystem rests,
// follows no links, finds no folder by a name with a separator at its end, by a drive ("C:") or by
// a "\\?\" path, and needs the right to list the folder above.

bool CreateDirectoryChain(const std::filesystem::path& path) {
  SetLastError(ERROR_SUCCESS);
  if (IsFolder(path)) return true;
  if (IsUnreachable(GetLastError())) return false;
  const std::wstring& text = path.native();
  for (std::size_t end = RootEnd(text); end != text.size();) {
    end = NameEnd(text, end + 1);
    if (!CreateOneDirectory(text.substr(0, end))) return false;
  }
  return IsFolder(path);
}

bool PathExists(const std::filesystem::path& path) noexcept { return Attributes(path) != 0; }

bool IsFolder(const std::filesystem::path& path) noexcept {
  return (Attributes(path) & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

bool ReadingMightNotEnd(const std::filesystem::path& path) noexcept { return LeadsToDevice(path); }

bool WritingMightNotEnd(const std::filesystem::path& path) noexcept { return LeadsToDevice(path); }

}  // namespace korvixsdk
