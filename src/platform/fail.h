#ifndef KORVIXSDK_PLATFORM_FAIL_H_
#define KORVIXSDK_PLATFORM_FAIL_H_

#include <cstdint>
#include <string>
#include <utility>

#include "korvixsdk/error.h"
#include "korvixsdk/result.h"

namespace korvixsdk {

/// A failure whose type is not known yet: it becomes an `Error`, or a `Result` of anything with an
/// empty value.
struct [[nodiscard]] Failure {
  Error error;
  operator Error() && { return std::move(error); }
  template <typename T>
  operator Result<T>() && {
    return {{}, std::move(error)};
  }
};

/// How the library fails: `return Fail(kNotFound, "...");`, whatever the operation answers with. An
/// error that came from below is handed on as it is: `return {{}, std::move(error)};`.
/// Not inline, as dozens of places would each carry the making of a string.
Failure Fail(std::int32_t code, const char* text);
Failure Fail(std::int32_t code, std::string text);

}  // namespace korvixsdk

#endif  // KORVIXSDK_PLATFORM_FAIL_H_
