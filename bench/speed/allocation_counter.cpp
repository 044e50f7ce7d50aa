#include "allocation_counter.h"

#include <cstdlib>
#include <new>

namespace speed {
namespace {

thread_local std::int64_t allocation_count = 0;

}  // namespace

std::int64_t AllocationCount() { return allocation_count; }

}  // namespace speed

// The other forms of new and delete come down to these two.
void* operator new(std::size_t size) {
  ++speed::allocation_count;
  if (void* const memory = std::malloc(size == 0 ? 1 : size)) return memory;
  throw std::bad_alloc();
}

void operator delete(void* memory) noexcept { std::free(memory); }

void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }
