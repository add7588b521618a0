// Counts the memory that this thread allocates. It replaces the program's operator new, so exactly one source of a
// test program may include it.
#pragma once

#include <cstdlib>
#include <new>

#include "tests/harness/allocations.h"

// Not inlined: the compiler would see that memory of new goes to free, and warn.
[[gnu::noinline]] void* operator new(std::size_t size) {
  ++harness::allocations;
  ++harness::allocationsAlive;
  if (void* memory = std::malloc(size ? size : 1)) return memory;
  std::abort();
}
[[gnu::noinline]] void* operator new[](std::size_t size) { return operator new(size); }
[[gnu::noinline]] void* operator new(std::size_t size, const std::nothrow_t&) noexcept { return operator new(size); }
[[gnu::noinline]] void* operator new[](std::size_t size, const std::nothrow_t&) noexcept { return operator new(size); }
[[gnu::noinline]] void operator delete(void* memory) noexcept {
  if (memory) --harness::allocationsAlive;
  std::free(memory);
}
[[gnu::noinline]] void operator delete(void* memory, std::size_t) noexcept { operator delete(memory); }
[[gnu::noinline]] void operator delete[](void* memory) noexcept { operator delete(memory); }
[[gnu::noinline]] void operator delete[](void* memory, std::size_t) noexcept { operator delete(memory); }
