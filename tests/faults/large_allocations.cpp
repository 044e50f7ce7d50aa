#include <cstdlib>
#include <new>

#include "support/failing_calls.h"

/// Above this an allocation belongs to a body, a file, a package or a long message.
constexpr std::size_t kLarge = 16 * 1024;

void* operator new(std::size_t size) {
  if (size > kLarge && korvixsdk::test::FailsNowByNameOnly("large allocation")) {
    throw std::bad_alloc();
  }
  void* const memory = std::malloc(size == 0 ? 1 : size);
  if (memory == nullptr) throw std::bad_alloc();
  return memory;
}

void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
  try {
    return operator new(size);
  } catch (const std::bad_alloc&) {
    return nullptr;
  }
}

void* operator new[](std::size_t size) { return operator new(size); }

void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }
void operator delete[](void* memory) noexcept { std::free(memory); }
void operator delete[](void* memory, std::size_t) noexcept { std::free(memory); }
