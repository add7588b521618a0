#include "bench/harness/countedAllocations.h"

#include <cerrno>

// The C library's own functions, under the names by which a replacement can call them. Its own free releases the memory, so
// free needs no replacement.
extern "C" {
void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* block, std::size_t size);
void* __libc_memalign(std::size_t alignment, std::size_t size);
}

namespace {

// Initial-exec: looking up this thread-local variable does not allocate, which it must not do inside malloc.
[[gnu::tls_model("initial-exec")]] thread_local std::size_t allocations = 0;

}  // namespace

extern "C" {

void* malloc(std::size_t size) {
  ++allocations;
  return __libc_malloc(size);
}

void* calloc(std::size_t count, std::size_t size) {
  ++allocations;
  return __libc_calloc(count, size);
}

void* realloc(void* block, std::size_t size) {
  ++allocations;
  return __libc_realloc(block, size);
}

void* aligned_alloc(std::size_t alignment, std::size_t size) {
  ++allocations;
  return __libc_memalign(alignment, size);
}

void* memalign(std::size_t alignment, std::size_t size) {
  ++allocations;
  return __libc_memalign(alignment, size);
}

int posix_memalign(void** block, std::size_t alignment, std::size_t size) {
  ++allocations;
  *block = __libc_memalign(alignment, size);
  return *block ? 0 : ENOMEM;
}

}  // extern "C"

namespace bench {

std::size_t countedAllocations() { return allocations; }

}  // namespace bench
