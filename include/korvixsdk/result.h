#ifndef KORVIXSDK_RESULT_H_
#define KORVIXSDK_RESULT_H_

/// \file
/// \brief `Result<T>`: a value or the reason why there is none.

#include "korvixsdk/error.h"

namespace korvixsdk {

/// What an operation returns: a value, and whether it succeeded.
///
/// After a failure `value` is default-constructed (empty texts, false flags, zero numbers), so it
/// does no harm to read it without asking `ok()` first. There is one exception: if the hash of a
/// package does not match, `PrepareUpdate` fails and fills the value all the same.
template <typename T>
struct [[nodiscard]] Result {
  /// Has a meaning only if `ok()` is true.
  T value{};
  /// How the operation ended.
  Error error{};

  /// True when `error.code` is 0.
  bool ok() const { return error.ok(); }
};

}  // namespace korvixsdk

#endif  // KORVIXSDK_RESULT_H_
