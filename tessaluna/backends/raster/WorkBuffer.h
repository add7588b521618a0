// Working memory that is kept from one drawing to the next, so that repeating a drawing allocates nothing.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <memory>
#include <type_traits>

#include "tessaluna/platform/foundation/languageVersion.h"

namespace tessaluna::backend::raster {

template <class T>
class WorkBuffer {
  static_assert(std::is_trivially_copyable_v<T> && alignof(T) <= 16);

 public:
  // Makes room for `count` values and keeps the first `kept` ones; the others are undefined, but in a new block all bytes are
  // zero. Null when memory is short; then all values are lost.
  T* prepare(std::size_t count, std::size_t kept = 0) {
    if (count < capacity_) return block_.get();
    const std::size_t wanted = count + count / 4 + 1;
    if (kept == 0) block_.reset();
    T* larger = static_cast<T*>(std::calloc(wanted, sizeof(T)));
    if (larger) std::copy_n(block_.get(), kept, larger);
    block_.reset(larger);
    capacity_ = larger ? wanted : 0;
    return larger;
  }
  T* data() { return block_.get(); }
  std::size_t bytes() const { return capacity_ * sizeof(T); }  // with the reserve

 private:
  struct Free {
    void operator()(T* block) const { std::free(block); }
  };

  std::unique_ptr<T, Free> block_;
  std::size_t capacity_ = 0;
};

}  // namespace tessaluna::backend::raster
