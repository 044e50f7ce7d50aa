#ifndef KORVIXSDK_ERROR_H_
#define KORVIXSDK_ERROR_H_

/// \file
/// \brief The outcome of an operation: `ErrorCode` and `Error`.

#include <cstdint>
#include <string>

namespace korvixsdk {

/// The library's error codes. One numbering serves every operation; 6, 8 and 9 are never raised.
/// The values are fixed and safe to store or to use as an exit status.
enum ErrorCode : std::int32_t {
  /// The operation succeeded.
  kOk = 0,
  /// An argument or a required text of `SDKConfig` is empty or not usable.
  kInvalidArgument = 1,
  /// Called before a successful `Init`, a needed service is missing, the cache directory cannot be
  /// created, a prepared package is gone, or the updater could not be started.
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

/// What an operation that returns no value answers, and the failure half of `Result<T>`.
///
/// A default-constructed `Error` means success. `code` alone decides; a message beside code 0 is
/// still success. `code` is a plain integer rather than an `ErrorCode` because a service that the
/// host supplies may return a code of its own, which passes to the caller unchanged.
struct [[nodiscard]] Error {
  /// One of `ErrorCode`, or a code of the host's own service. 0 means success.
  std::int32_t code = kOk;
  /// Fixed English text, possibly followed by a path, a status number or a lower-level message.
  /// Empty on success.
  std::string message{};

  /// True when `code` is 0, whatever `message` holds.
  bool ok() const { return code == kOk; }
};

}  // namespace korvixsdk

#endif  // KORVIXSDK_ERROR_H_
