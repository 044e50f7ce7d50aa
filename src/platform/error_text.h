#ifndef KORVIXSDK_PLATFORM_ERROR_TEXT_H_
#define KORVIXSDK_PLATFORM_ERROR_TEXT_H_

#include <cstdint>
#include <exception>
#include <string>

#include "korvixsdk/error.h"

namespace korvixsdk {

/// An error whose message is `text` and behind it `detail`; `text` alone where memory does not
/// suffice for a long detail, and none where it suffices for nothing.
inline Error ErrorWithDetail(std::int32_t code, const char* text,
                             const std::string& detail) noexcept {
  Error error{code};
  try {
    error.message = text;
    error.message += detail;
  } catch (const std::exception&) {
  }
  return error;
}

}  // namespace korvixsdk

#endif  // KORVIXSDK_PLATFORM_ERROR_TEXT_H_
