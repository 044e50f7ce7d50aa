#include <cstddef>
#include <new>

#include "support/failing_calls.h"

namespace {

/// Above this an allocation belongs to a body, a file, a package or a long message.
constexpr std::size_t kLarge = 16 * 1024;

}  // namespace

// operator new, under its name for the linker.
#ifdef _WIN32
#define KORVIXSDK_REAL_NEW __real__Znwy
#define KORVIXSDK_WRAPPED_NEW __wrap__Znwy
#else
#define KORVIXSDK_REAL_NEW __real__Znwm
#define KORVIXSDK_WRAPPED_NEW __wrap__Znwm
#endif

extern "C" {

void* KORVIXSDK_REAL_NEW(std::size_t size);
void* KORVIXSDK_WRAPPED_NEW(std::size_t size) {
  if (size > kLarge && korvixsdk::test::FailsNowByNameOnly("large allocation")) {
    throw std::bad_alloc();
  }
  return KORVIXSDK_REAL_NEW(size);
}

}  // extern "C"
