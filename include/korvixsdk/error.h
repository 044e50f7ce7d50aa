#ifndef KORVIXSDK_ERROR_H_
#define KORVIXSDK_ERROR_H_

/// \file
/// \brief The outcome of an operation: `ErrorCode` and `Error`.

#include <cstdint>
#include <string>

namespace korvixsdk {

/// The library's error codes. All operations use the same numbers; 6, 8 and 9 are not used. The
/// values never change, so you may store them or use them as exit statuses.
enum ErrorCode : std::int32_t {
  /// The operation succeeded.
  kOk = 0,
  /// An argument, or a required text of `SDKConfig`, is empty or cannot be used.
  kInvalidArgument = 1,
  /// The operation was called before a successful `Init`, a service that it needs is missing or
  /// threw an exception, the cache directory cannot be created, a prepared package is gone, or the
  /// updater could not be started.
  kInvalidState = 2,
  /// The updater executable does not exist.
  kNotFound = 3,
  /// The service's reply is empty or does not match the endpoint's schema.
  kInvalidResponse = 4,
  /// The downloaded package's SHA-256 differs from the announced one.
  kHashMismatch = 5,
  /// No address is configured, the transfer failed, or the HTTP status is outside 200 to 299.
  kNetworkError = 7,
  /// A file could not be read or written, or a directory could not be created.
  kFileSystemError = 10,
  /// A hashing step of the operating system failed, or no device identifier could be obtained.
  kPlatformError = 11,
};

/// What an operation without a value returns, and the part of a `Result<T>` that says how it ended.
///
/// A default-constructed `Error` means success. Only `code` counts: with code 0 it is a success,
/// even if there is a message. `code` is a plain integer and not an `ErrorCode`, because a service
/// of the host's own may return its own codes, which reach the caller unchanged.
struct [[nodiscard]] Error {
  /// One of `ErrorCode`, or a code of the host's own service. 0 means success.
  std::int32_t code = kOk;
  /// A fixed English text, in some cases followed by a path, a status number or the message of what
  /// failed below. Empty on success.
  std::string message{};

  /// True when `code` is 0, whatever `message` holds.
  bool ok() const { return code == kOk; }
};

}  // namespace korvixsdk

#endif  // KORVIXSDK_ERROR_H_
