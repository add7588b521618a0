// Working memory that is kept from one drawing to the next, so that repeating a drawing allocates nothing. A block that has
// long been much larger than needed is freed.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <memory>
#include <type_traits>
#include <vector>

#include "tessaluna/platform/foundation/languageVersion.h"

namespace tessaluna::backend::raster {

// Empties a list for its next use. The list keeps its memory unless that is large and the last use needed little of it.
template <class T>
void clearForReuse(std::vector<T>& list) {
  constexpr std::size_t keptBytes = std::size_t(256) * 1024;  // less is not worth another allocation
  if (list.capacity() * sizeof(T) > keptBytes && list.size() < list.capacity() / 4) list = std::vector<T>();
  else list.clear();
}

template <class T>
class WorkBuffer {
  static_assert(std::is_trivially_copyable_v<T> && alignof(T) <= 16);

 public:
  // Makes room for `count` values, which are undefined; in a new block all bytes are zero. Null when memory is short.
  // Earlier values are lost in any case.
  T* prepare(std::size_t count) {
    count = std::max<std::size_t>(count, 1);
    notice(count);
    if (count > capacity_ || (capacity_ > keptAtLeast && capacity_ / 4 > largestLately_ && uses_ == 0)) {
      const std::size_t wanted = std::max(count, std::size_t(count > capacity_ ? count + count / 4 : largestLately_));
      block_.reset();
      block_.reset(static_cast<T*>(std::calloc(wanted, sizeof(T))));
      capacity_ = block_ ? wanted : 0;
    }
    return block_.get();
  }
  // The same, but keeps the first `kept` values.
  T* grow(std::size_t count, std::size_t kept) {
    if (kept == 0) return prepare(count);
    notice(count);
    if (count > capacity_) {
      const std::size_t wanted = count + count / 4;
      T* larger = static_cast<T*>(std::calloc(wanted, sizeof(T)));
      if (larger) std::copy_n(block_.get(), kept, larger);
      block_.reset(larger);
      capacity_ = larger ? wanted : 0;
    }
    return block_.get();
  }
  T* data() { return block_.get(); }

 private:
  struct Free {
    void operator()(T* block) const { std::free(block); }
  };
  // Smaller blocks are not worth another allocation.
  static constexpr std::size_t keptAtLeast = std::size_t(64) * 1024 / sizeof(T);
  static constexpr int usesBetweenChecks = 1024;

  // Remembers the largest counts of this period and the last one, so that a check never sees only a period that has just
  // begun.
  void notice(std::size_t count) {
    if (++uses_ == usesBetweenChecks) {
      uses_ = 0;
      largestBefore_ = largestNow_;
      largestNow_ = 0;
    }
    largestNow_ = std::max(largestNow_, count);
    largestLately_ = std::max(largestNow_, largestBefore_);
  }

  std::unique_ptr<T, Free> block_;
  std::size_t capacity_ = 0;
  std::size_t largestNow_ = 0, largestBefore_ = 0, largestLately_ = 0;
  int uses_ = 0;
};

}  // namespace tessaluna::backend::raster
