#include "platform/machine_identity.h"

// objbase.h needs windows.h before it.
// clang-format off
#include "platform/windows/windows_headers.h"
#include <objbase.h>
// clang-format on

#include <string_view>

#include "platform/fail.h"

namespace korvixsdk {
namespace {

constexpr wchar_t kCryptographyKey[] = L"SOFTWARE\\Microsoft\\Cryptography";
constexpr wchar_t kMachineGuidValue[] = L"MachineGuid";
/// Braces, 36 characters and the terminator.
constexpr int kGuidTextLength = 39;
/// MAX_COMPUTERNAME_LENGTH and the terminator.
constexpr DWORD kComputerNameLength = MAX_COMPUTERNAME_LENGTH + 1;

/// Empty on failure.
std::string Utf8FromWide(std::wstring_view wide) {
  const int wide_length = static_cast<int>(wide.size());
  const int length =
      WideCharToMultiByte(CP_UTF8, 0, wide.data(), wide_length, nullptr, 0, nullptr, nullptr);
  if (length <= 0) return {};
  std::string text(static_cast<std::size_t>(length), '\0');
  const int written = WideCharToMultiByte(CP_UTF8, 0, wide.data(), wide_length, text.data(), length,
                                          nullptr, nullptr);
  return written == length ? text : std::string();
}

}  // namespace

Result<std::string> ReadMachineGuid() {
  DWORD size = 0;
  if (RegGetValueW(HKEY_LOCAL_MACHINE, kCryptographyKey, kMachineGuidValue, RRF_RT_REG_SZ, nullptr,
                   nullptr, &size) != ERROR_SUCCESS ||
      size == 0) {
    return Fail(kPlatformError, "Registry value is unavailable");
  }
  std::wstring value((size + sizeof(wchar_t) - 1) / sizeof(wchar_t), L'\0');
  if (RegGetValueW(HKEY_LOCAL_MACHINE, kCryptographyKey, kMachineGuidValue, RRF_RT_REG_SZ, nullptr,
                   value.data(), &size) != ERROR_SUCCESS) {
    return Fail(kPlatformError, "Failed to read registry value");
  }
  // The size counts the terminators, of which the registry may hold none, one or more.
  while (!value.empty() && value.back() == L'\0') value.pop_back();
  if (value.empty()) return Fail(kPlatformError, "Registry value is empty");
  std::string text = Utf8FromWide(value);
  if (text.empty()) return Fail(kPlatformError, "Failed to convert registry value to UTF-8");
  return {std::move(text), Error{}};
}

// The short name, which a machine keeps when it joins another domain.
Result<std::string> ReadComputerName() {
  char name[kComputerNameLength] = {};
  DWORD length = kComputerNameLength;
  if (!GetComputerNameA(name, &length) || length == 0 || length > kComputerNameLength) {
    return Fail(kPlatformError, "Failed to read computer name");
  }
  return {std::string(name, length), Error{}};
}

std::string NewGuidText() {
  GUID guid{};
  if (CoCreateGuid(&guid) != S_OK) return {};
  wchar_t buffer[kGuidTextLength] = {};
  const int length = StringFromGUID2(guid, buffer, kGuidTextLength);
  if (length <= 1) return {};
  std::wstring_view text(buffer, static_cast<std::size_t>(length) - 1);
  if (text.size() >= 2 && text.front() == L'{' && text.back() == L'}') {
    text = text.substr(1, text.size() - 2);
  }
  return Utf8FromWide(text);
}

}  // namespace korvixsdk
