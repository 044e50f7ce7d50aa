#ifndef KORVIXSDK_RESULT_H_
#define KORVIXSDK_RESULT_H_

/// \file
/// \brief `Result<T>`: a value or the reason why there is none.

#include "korvixsdk/error.h"

namespace korvixsdk {

/// A value together with the outcome of the operation that made it.
///
/// On failure `value` is default-constructed (empty texts, false flags, zero numbers) unless the
/// operation says otherwise, so reading it without a test does no harm. The one operation that
/// fills the value of a failure is the preparation of a package whose hash does not match.
template <typename T>
struct [[nodiscard]] Result {
  /// Meaningful only when `ok()`.
  T value{};
  /// The outcome.
  Error error{};

  /// True when `error.code` is 0.
  bool ok() const { return error.ok(); }
};

}  // namespace korvixsdk

#endif  // KORVIXSDK_RESULT_H_
