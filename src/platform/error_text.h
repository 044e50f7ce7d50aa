#ifndef KORVIXSDK_PLATFORM_ERROR_TEXT_H_
#define KORVIXSDK_PLATFORM_ERROR_TEXT_H_

#include <cstdint>
#include <initializer_list>
#include <string_view>

#include "korvixsdk/error.h"
#include "platform/or_else.h"

namespace korvixsdk {

/// An error whose message is the parts in a row; only the first ones where memory does not suffice
/// for a long one, and none where it suffices for nothing.
inline Error ErrorOf(std::int32_t code, std::initializer_list<std::string_view> parts) noexcept {
  Error error{code};
  for (const std::string_view part : parts) {
    if (!OrElse([&] { return error.message.append(part), true; }, false)) break;
  }
  return error;
}

}  // namespace korvixsdk

#endif  // KORVIXSDK_PLATFORM_ERROR_TEXT_H_
