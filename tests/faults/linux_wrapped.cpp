#include <fcntl.h>
#include <openssl/evp.h>
#include <sched.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>
#include <uuid/uuid.h>

#include <cerrno>
#include <cstdarg>
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

extern "C" {

EVP_MD* __real_EVP_MD_fetch(OSSL_LIB_CTX* context, const char* algorithm, const char* properties);
EVP_MD* __wrap_EVP_MD_fetch(OSSL_LIB_CTX* context, const char* algorithm, const char* properties) {
  if (FailsNow("EVP_MD_fetch")) return nullptr;
  CountOpened();
  return __real_EVP_MD_fetch(context, algorithm, properties);
}

void __real_EVP_MD_free(EVP_MD* algorithm);
void __wrap_EVP_MD_free(EVP_MD* algorithm) {
  CountClosed();
  __real_EVP_MD_free(algorithm);
}

EVP_MD_CTX* __real_EVP_MD_CTX_new();
EVP_MD_CTX* __wrap_EVP_MD_CTX_new() {
  if (FailsNow("EVP_MD_CTX_new")) return nullptr;
  CountOpened();
  return __real_EVP_MD_CTX_new();
}

void __real_EVP_MD_CTX_free(EVP_MD_CTX* hash);
void __wrap_EVP_MD_CTX_free(EVP_MD_CTX* hash) {
  CountClosed();
  __real_EVP_MD_CTX_free(hash);
}

int __real_EVP_MD_get_size(const EVP_MD* algorithm);
int __wrap_EVP_MD_get_size(const EVP_MD* algorithm) {
  return FailsNow("EVP_MD_get_size") ? -1 : __real_EVP_MD_get_size(algorithm);
}

int __real_EVP_DigestInit_ex(EVP_MD_CTX* hash, const EVP_MD* algorithm, ENGINE* engine);
int __wrap_EVP_DigestInit_ex(EVP_MD_CTX* hash, const EVP_MD* algorithm, ENGINE* engine) {
  return FailsNow("EVP_DigestInit_ex") ? 0 : __real_EVP_DigestInit_ex(hash, algorithm, engine);
}

int __real_EVP_DigestUpdate(EVP_MD_CTX* hash, const void* data, size_t size);
int __wrap_EVP_DigestUpdate(EVP_MD_CTX* hash, const void* data, size_t size) {
  return FailsNow("EVP_DigestUpdate") ? 0 : __real_EVP_DigestUpdate(hash, data, size);
}

int __real_EVP_DigestFinal_ex(EVP_MD_CTX* hash, unsigned char* digest, unsigned int* size);
int __wrap_EVP_DigestFinal_ex(EVP_MD_CTX* hash, unsigned char* digest, unsigned int* size) {
  return FailsNow("EVP_DigestFinal_ex") ? 0 : __real_EVP_DigestFinal_ex(hash, digest, size);
}

/// The machine's number is served from memory where a test says so.
int __real_open(const char* path, int flags, ...);
int __wrap_open(const char* path, int flags, ...) {
  mode_t mode = 0;
  if ((flags & O_CREAT) != 0) {
    va_list more;
    va_start(more, flags);
    mode = va_arg(more, mode_t);
    va_end(more);
  }
  if (FailsNow("open")) {
    errno = EMFILE;
    return -1;
  }
  if (std::strcmp(path, "/etc/machine-id") == 0 && wrapped_machine.machine_guid) {
    const int file = memfd_create("machine-id", MFD_CLOEXEC);
    const std::string& text = *wrapped_machine.machine_guid;
    if (write(file, text.data(), text.size()) < 0) return -1;
    lseek(file, 0, SEEK_SET);
    return file;
  }
  return __real_open(path, flags, mode);
}

ssize_t __real_read(int file, void* buffer, size_t size);
ssize_t __wrap_read(int file, void* buffer, size_t size) {
  if (FailsNowByNameOnly("read interrupted")) {
    errno = EINTR;
    return -1;
  }
  if (FailsNow("read")) {
    errno = EIO;
    return -1;
  }
  return __real_read(file, buffer, size);
}

int __real_gethostname(char* name, size_t size);
int __wrap_gethostname(char* name, size_t size) {
  if (FailsNow("gethostname")) return -1;
  if (!wrapped_machine.computer_name) return __real_gethostname(name, size);
  std::strncpy(name, wrapped_machine.computer_name->c_str(), size);
  return 0;
}

void __real_uuid_unparse_lower(const uuid_t guid, char* text);
void __wrap_uuid_unparse_lower(const uuid_t guid, char* text) {
  if (FailsNowByNameOnly("new guid")) {
    text[0] = '\0';
  } else {
    __real_uuid_unparse_lower(guid, text);
  }
}

int __real_execve(const char* program, char* const arguments[], char* const environment[]);
int __wrap_execve(const char* program, char* const arguments[], char* const environment[]) {
  if (FailsNow("execve")) return -1;
  return __real_execve(program, arguments, environment);
}

// Files, ours and the C++ library's.

ssize_t __real_write(int file, const void* data, size_t size);
ssize_t __wrap_write(int file, const void* data, size_t size) {
  if (FailsNowByNameOnly("write interrupted")) {
    errno = EINTR;
    return -1;
  }
  if (FailsNowByNameOnly("write cut short")) return __real_write(file, data, size / 2);
  if (FailsNow("write")) {
    errno = ENOSPC;
    return -1;
  }
  return __real_write(file, data, size);
}

int __real_fstat(int file, struct stat* status);
int __wrap_fstat(int file, struct stat* status) {
  return FailsNow("fstat") ? -1 : __real_fstat(file, status);
}

int __real_stat(const char* path, struct stat* status);
int __wrap_stat(const char* path, struct stat* status) {
  if (FailsNow("stat")) {
    errno = EACCES;
    return -1;
  }
  return __real_stat(path, status);
}

int __real_mkdir(const char* path, mode_t mode);
int __wrap_mkdir(const char* path, mode_t mode) {
  if (FailsNow("mkdir")) {
    errno = ENOSPC;
    return -1;
  }
  return __real_mkdir(path, mode);
}

int __real___clone(int (*function)(void*), void* stack, int flags, void* context, ...);
int __wrap___clone(int (*function)(void*), void* stack, int flags, void* context, ...) {
  if (FailsNow("start process")) {
    errno = EAGAIN;
    return -1;
  }
  return __real___clone(function, stack, flags, context);
}

}  // extern "C"
