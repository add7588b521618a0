// Counts the memory that this thread allocates. It replaces the program's operator new, so that exactly one source of a
// test program includes it.
#pragma once

#include <cstdlib>
#include <new>

namespace harness {

inline thread_local int allocations = 0;
inline thread_local long allocationsAlive = 0;  // right where what one thread makes no other lets go

}  // namespace harness

// Not inlined: the compiler would see memory of new go to free and warn.
[[gnu::noinline]] void* operator new(std::size_t size) {
  ++harness::allocations;
  ++harness::allocationsAlive;
  if (void* memory = std::malloc(size ? size : 1)) return memory;
  std::abort();
}
[[gnu::noinline]] void* operator new[](std::size_t size) { return operator new(size); }
[[gnu::noinline]] void operator delete(void* memory) noexcept {
  if (memory) --harness::allocationsAlive;
  std::free(memory);
}
[[gnu::noinline]] void operator delete(void* memory, std::size_t) noexcept { operator delete(memory); }
[[gnu::noinline]] void operator delete[](void* memory) noexcept { operator delete(memory); }
[[gnu::noinline]] void operator delete[](void* memory, std::size_t) noexcept { operator delete(memory); }
