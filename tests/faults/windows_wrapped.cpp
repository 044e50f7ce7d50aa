// These need windows.h before them.
// clang-format off
#include "platform/windows/windows_headers.h"
#include <bcrypt.h>
#include <objbase.h>
// clang-format on

#include <io.h>
#include <locale.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <cstring>

#include "faults/wrapped_machine.h"
#include "support/failing_calls.h"

using korvixsdk::test::CountClosed;
using korvixsdk::test::CountOpened;
using korvixsdk::test::FailsNow;
using korvixsdk::test::FailsNowByNameOnly;
using korvixsdk::test::wrapped_machine;

namespace korvixsdk::test {
WrappedMachine wrapped_machine;
}  // namespace korvixsdk::test

namespace {

constexpr NTSTATUS kFailed = static_cast<NTSTATUS>(0xC0000001);

}  // namespace

extern "C" {

NTSTATUS __real_BCryptOpenAlgorithmProvider(BCRYPT_ALG_HANDLE* handle, LPCWSTR name,
                                            LPCWSTR implementation, ULONG flags);
NTSTATUS __wrap_BCryptOpenAlgorithmProvider(BCRYPT_ALG_HANDLE* handle, LPCWSTR name,
                                            LPCWSTR implementation, ULONG flags) {
  if (FailsNow("BCryptOpenAlgorithmProvider")) return kFailed;
  CountOpened();
  return __real_BCryptOpenAlgorithmProvider(handle, name, implementation, flags);
}

NTSTATUS __real_BCryptCloseAlgorithmProvider(BCRYPT_ALG_HANDLE handle, ULONG flags);
NTSTATUS __wrap_BCryptCloseAlgorithmProvider(BCRYPT_ALG_HANDLE handle, ULONG flags) {
  CountClosed();
  return __real_BCryptCloseAlgorithmProvider(handle, flags);
}

NTSTATUS __real_BCryptGetProperty(BCRYPT_HANDLE handle, LPCWSTR name, PUCHAR value, ULONG size,
                                  ULONG* written, ULONG flags);
NTSTATUS __wrap_BCryptGetProperty(BCRYPT_HANDLE handle, LPCWSTR name, PUCHAR value, ULONG size,
                                  ULONG* written, ULONG flags) {
  if (FailsNow("BCryptGetProperty")) return kFailed;
  return __real_BCryptGetProperty(handle, name, value, size, written, flags);
}

NTSTATUS __real_BCryptCreateHash(BCRYPT_ALG_HANDLE algorithm, BCRYPT_HASH_HANDLE* hash,
                                 PUCHAR object, ULONG size, PUCHAR secret, ULONG secret_size,
                                 ULONG flags);
NTSTATUS __wrap_BCryptCreateHash(BCRYPT_ALG_HANDLE algorithm, BCRYPT_HASH_HANDLE* hash,
                                 PUCHAR object, ULONG size, PUCHAR secret, ULONG secret_size,
                                 ULONG flags) {
  if (FailsNow("BCryptCreateHash")) return kFailed;
  CountOpened();
  return __real_BCryptCreateHash(algorithm, hash, object, size, secret, secret_size, flags);
}

NTSTATUS __real_BCryptDestroyHash(BCRYPT_HASH_HANDLE hash);
NTSTATUS __wrap_BCryptDestroyHash(BCRYPT_HASH_HANDLE hash) {
  CountClosed();
  return __real_BCryptDestroyHash(hash);
}

NTSTATUS __real_BCryptHashData(BCRYPT_HASH_HANDLE hash, PUCHAR data, ULONG size, ULONG flags);
NTSTATUS __wrap_BCryptHashData(BCRYPT_HASH_HANDLE hash, PUCHAR data, ULONG size, ULONG flags) {
  return FailsNow("BCryptHashData") ? kFailed : __real_BCryptHashData(hash, data, size, flags);
}

NTSTATUS __real_BCryptFinishHash(BCRYPT_HASH_HANDLE hash, PUCHAR digest, ULONG size, ULONG flags);
NTSTATUS __wrap_BCryptFinishHash(BCRYPT_HASH_HANDLE hash, PUCHAR digest, ULONG size, ULONG flags) {
  return FailsNow("BCryptFinishHash") ? kFailed
                                      : __real_BCryptFinishHash(hash, digest, size, flags);
}

// Functions that headers mark as imported are called through a pointer; that is what is wrapped.

extern decltype(&RegGetValueW) __real___imp_RegGetValueW;
static LSTATUS WINAPI WrappedRegGetValueW(HKEY key, LPCWSTR sub_key, LPCWSTR value, DWORD flags,
                                          LPDWORD type, PVOID data, LPDWORD size) {
  if (FailsNow("RegGetValueW")) return ERROR_ACCESS_DENIED;
  if (!wrapped_machine.machine_guid) {
    return __real___imp_RegGetValueW(key, sub_key, value, flags, type, data, size);
  }
  const bool right = key == HKEY_LOCAL_MACHINE && flags == RRF_RT_REG_SZ &&
                     std::wstring(sub_key) == L"SOFTWARE\\Microsoft\\Cryptography" &&
                     std::wstring(value) == L"MachineGuid";
  if (!right) return ERROR_FILE_NOT_FOUND;
  // The text is ASCII; the test decides whether it ends in zeros.
  const std::wstring wide(wrapped_machine.machine_guid->begin(),
                          wrapped_machine.machine_guid->end());
  *size = static_cast<DWORD>(wide.size() * sizeof(wchar_t));
  if (data != nullptr) std::memcpy(data, wide.data(), *size);
  return ERROR_SUCCESS;
}
decltype(&RegGetValueW) __wrap___imp_RegGetValueW = &WrappedRegGetValueW;

extern decltype(&GetComputerNameA) __real___imp_GetComputerNameA;
static BOOL WINAPI WrappedGetComputerNameA(LPSTR buffer, LPDWORD size) {
  if (FailsNow("GetComputerNameA")) return FALSE;
  if (!wrapped_machine.computer_name) return __real___imp_GetComputerNameA(buffer, size);
  const std::string& name = *wrapped_machine.computer_name;
  if (*size != 16 || name.size() >= *size) return FALSE;
  std::memcpy(buffer, name.c_str(), name.size() + 1);
  *size = static_cast<DWORD>(name.size());
  return TRUE;
}
decltype(&GetComputerNameA) __wrap___imp_GetComputerNameA = &WrappedGetComputerNameA;

extern decltype(&CoCreateGuid) __real___imp_CoCreateGuid;
static HRESULT WINAPI WrappedCoCreateGuid(GUID* guid) {
  if (FailsNow("CoCreateGuid") || FailsNowByNameOnly("new guid")) return E_FAIL;
  return __real___imp_CoCreateGuid(guid);
}
decltype(&CoCreateGuid) __wrap___imp_CoCreateGuid = &WrappedCoCreateGuid;

extern decltype(&StringFromGUID2) __real___imp_StringFromGUID2;
static int WINAPI WrappedStringFromGUID2(REFGUID guid, LPOLESTR text, int size) {
  if (FailsNow("StringFromGUID2")) return 0;
  return __real___imp_StringFromGUID2(guid, text, size);
}
decltype(&StringFromGUID2) __wrap___imp_StringFromGUID2 = &WrappedStringFromGUID2;

extern decltype(&WideCharToMultiByte) __real___imp_WideCharToMultiByte;
static int WINAPI WrappedWideCharToMultiByte(UINT code_page, DWORD flags, LPCWCH wide,
                                             int wide_length, LPSTR text, int length,
                                             LPCCH replacement, LPBOOL replaced) {
  if (FailsNow("WideCharToMultiByte")) return 0;
  return __real___imp_WideCharToMultiByte(code_page, flags, wide, wide_length, text, length,
                                          replacement, replaced);
}
decltype(&WideCharToMultiByte) __wrap___imp_WideCharToMultiByte = &WrappedWideCharToMultiByte;

extern decltype(&MultiByteToWideChar) __real___imp_MultiByteToWideChar;
static int WINAPI WrappedMultiByteToWideChar(UINT code_page, DWORD flags, LPCCH text, int length,
                                             LPWSTR wide, int wide_length) {
  if (FailsNow("MultiByteToWideChar")) return 0;
  return __real___imp_MultiByteToWideChar(code_page, flags, text, length, wide, wide_length);
}
decltype(&MultiByteToWideChar) __wrap___imp_MultiByteToWideChar = &WrappedMultiByteToWideChar;

extern decltype(&GetFileAttributesExW) __real___imp_GetFileAttributesExW;
static BOOL WINAPI WrappedGetFileAttributesExW(LPCWSTR path, GET_FILEEX_INFO_LEVELS level,
                                               LPVOID data) {
  if (FailsNow("GetFileAttributesExW")) return FALSE;
  if (wrapped_machine.folder_query_error) {
    SetLastError(*wrapped_machine.folder_query_error);
    return FALSE;
  }
  if (!__real___imp_GetFileAttributesExW(path, level, data)) return FALSE;
  static_cast<WIN32_FILE_ATTRIBUTE_DATA*>(data)->dwFileAttributes |=
      wrapped_machine.added_attributes;
  return TRUE;
}
decltype(&GetFileAttributesExW) __wrap___imp_GetFileAttributesExW = &WrappedGetFileAttributesExW;

extern decltype(&CreateFileW) __real___imp_CreateFileW;
static HANDLE WINAPI WrappedCreateFileW(LPCWSTR path, DWORD access, DWORD share,
                                        LPSECURITY_ATTRIBUTES security, DWORD disposition,
                                        DWORD flags, HANDLE like) {
  if (FailsNow("CreateFileW")) return INVALID_HANDLE_VALUE;
  return __real___imp_CreateFileW(path, access, share, security, disposition, flags, like);
}
decltype(&CreateFileW) __wrap___imp_CreateFileW = &WrappedCreateFileW;

extern decltype(&GetFileInformationByHandle) __real___imp_GetFileInformationByHandle;
static BOOL WINAPI WrappedGetFileInformationByHandle(HANDLE file,
                                                     LPBY_HANDLE_FILE_INFORMATION information) {
  if (FailsNow("GetFileInformationByHandle")) return FALSE;
  return __real___imp_GetFileInformationByHandle(file, information);
}
decltype(&GetFileInformationByHandle) __wrap___imp_GetFileInformationByHandle =
    &WrappedGetFileInformationByHandle;

extern decltype(&CreateDirectoryW) __real___imp_CreateDirectoryW;
static BOOL WINAPI WrappedCreateDirectoryW(LPCWSTR path, LPSECURITY_ATTRIBUTES security) {
  if (FailsNow("CreateDirectoryW")) return FALSE;
  if (wrapped_machine.folder_creation_error) {
    wrapped_machine.folders_to_create.push_back(path);
    SetLastError(*wrapped_machine.folder_creation_error);
    return FALSE;
  }
  return __real___imp_CreateDirectoryW(path, security);
}
decltype(&CreateDirectoryW) __wrap___imp_CreateDirectoryW = &WrappedCreateDirectoryW;

extern decltype(&_wopen) __real___imp__wopen;
static int __cdecl WrappedWideOpen(const wchar_t* path, int flags, ...) {
  if (FailsNow("_wopen")) return -1;
  return __real___imp__wopen(path, flags, _S_IREAD | _S_IWRITE);
}
decltype(&_wopen) __wrap___imp__wopen = &WrappedWideOpen;

extern decltype(&_filelengthi64) __real___imp__filelengthi64;
static __int64 __cdecl WrappedFileLength(int file) {
  return FailsNow("_filelengthi64") ? -1 : __real___imp__filelengthi64(file);
}
decltype(&_filelengthi64) __wrap___imp__filelengthi64 = &WrappedFileLength;

extern decltype(&_write) __real___imp__write;
static int __cdecl WrappedWrite(int file, const void* data, unsigned int size) {
  if (FailsNow("write")) {
    errno = ENOSPC;
    return -1;
  }
  if (FailsNowByNameOnly("write cut short")) return __real___imp__write(file, data, size / 2);
  return __real___imp__write(file, data, size);
}
decltype(&_write) __wrap___imp__write = &WrappedWrite;

extern decltype(&_read) __real___imp__read;
static int __cdecl WrappedRead(int file, void* data, unsigned int size) {
  if (FailsNow("read")) {
    errno = EIO;
    return -1;
  }
  return __real___imp__read(file, data, size);
}
decltype(&_read) __wrap___imp__read = &WrappedRead;

extern decltype(&CreateProcessA) __real___imp_CreateProcessA;
static BOOL WINAPI WrappedCreateProcessA(LPCSTR application, LPSTR command_line,
                                         LPSECURITY_ATTRIBUTES process_security,
                                         LPSECURITY_ATTRIBUTES thread_security, BOOL inherit,
                                         DWORD flags, LPVOID environment, LPCSTR folder,
                                         LPSTARTUPINFOA startup, LPPROCESS_INFORMATION process) {
  if (FailsNow("start process")) return FALSE;
  if (!wrapped_machine.record_processes) {
    return __real___imp_CreateProcessA(application, command_line, process_security, thread_security,
                                       inherit, flags, environment, folder, startup, process);
  }
  const bool plain = application == nullptr && process_security == nullptr &&
                     thread_security == nullptr && !inherit && flags == 0 &&
                     environment == nullptr && folder == nullptr &&
                     startup->cb == sizeof(STARTUPINFOA);
  wrapped_machine.processes.push_back(plain ? command_line : "other arguments than expected");
  process->hProcess = CreateEventA(nullptr, FALSE, FALSE, nullptr);
  process->hThread = CreateEventA(nullptr, FALSE, FALSE, nullptr);
  return TRUE;
}
decltype(&CreateProcessA) __wrap___imp_CreateProcessA = &WrappedCreateProcessA;

extern decltype(&___lc_codepage_func) __real___imp____lc_codepage_func;
static unsigned int __cdecl WrappedLocaleCodePage() {
  return wrapped_machine.locale_code_page ? *wrapped_machine.locale_code_page
                                          : __real___imp____lc_codepage_func();
}
decltype(&___lc_codepage_func) __wrap___imp____lc_codepage_func = &WrappedLocaleCodePage;

}  // extern "C"
