#ifndef KORVIXSDK_PLATFORM_OR_ELSE_H_
#define KORVIXSDK_PLATFORM_OR_ELSE_H_

#include <exception>
#include <type_traits>
#include <utility>

namespace korvixsdk {

/// The library's one `catch`: what `work` answers, or, where it throws, `otherwise`. That is a
/// value, or, where one is only to be made then, a function of what the exception says of itself
/// (null where it says nothing).
template <typename Work, typename Otherwise>
auto OrElse(Work&& work, Otherwise&& otherwise) -> decltype(work()) {
  const auto alternative = [&otherwise](const char* what) -> decltype(work()) {
    if constexpr (std::is_invocable_v<Otherwise, const char*>) {
      return otherwise(what);
    } else {
      static_cast<void>(what);
      return std::forward<Otherwise>(otherwise);
    }
  };
  try {
    return work();
  } catch (const std::exception& exception) {
    return alternative(exception.what());
  } catch (...) {
    return alternative(nullptr);
  }
}

}  // namespace korvixsdk

#endif  // KORVIXSDK_PLATFORM_OR_ELSE_H_
