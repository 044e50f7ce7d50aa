#include "platform/native_file.h"
#include "platform/windows/windows_headers.h"

namespace korvixsdk {

/// Asks the system itself: the C runtime's stat, on which MinGW's std::filesystem rests, neither
/// follows links nor finds a folder by a name with a separator at its end.
bool PathExists(const std::filesystem::path& path) noexcept {
  WIN32_FILE_ATTRIBUTE_DATA data{};
  if (!GetFileAttributesExW(path.c_str(), GetFileExInfoStandard, &data)) return false;
  if ((data.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) == 0) return true;
  const HANDLE target = CreateFileW(path.c_str(), FILE_READ_ATTRIBUTES,
                                    FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                    OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
  if (target == INVALID_HANDLE_VALUE) return false;
  CloseHandle(target);
  return true;
}

}  // namespace korvixsdk
