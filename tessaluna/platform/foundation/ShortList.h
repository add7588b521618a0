// A list of plain values that has room for the first few in itself: while it is short it asks for no memory.
#pragma once

#include <algorithm>
#include <cstddef>
#include <memory>
#include <type_traits>
#include <utility>

#include "tessaluna/platform/foundation/languageVersion.h"

namespace tessaluna::platform {

template <class T, std::size_t ownRoom>
class ShortList {
  static_assert(std::is_trivially_copyable_v<T> && std::is_trivially_destructible_v<T>);

 public:
  ShortList() {}  // not defaulted: that would let a maker clear the room first
  ShortList(const ShortList& other) { copyFrom(other); }
  ShortList(ShortList&& other) noexcept { take(other); }
  ~ShortList() { giveBack(); }
  ShortList& operator=(const ShortList& other) {
    if (&other == this) return *this;
    size_ = 0;
    copyFrom(other);
    return *this;
  }
  ShortList& operator=(ShortList&& other) noexcept {
    if (&other == this) return *this;
    giveBack();
    take(other);
    return *this;
  }

  bool empty() const { return size_ == 0; }
  std::size_t size() const { return size_; }
  const T* data() const { return values_; }
  T* begin() { return values_; }
  T* end() { return values_ + size_; }
  const T* begin() const { return values_; }
  const T* end() const { return values_ + size_; }
  const T& operator[](std::size_t index) const { return values_[index]; }
  const T& back() const { return values_[size_ - 1]; }

  void clear() { size_ = 0; }
  void push_back(T value) { *extend(1) = value; }
  // Makes room for so many more at the end and gives the first of them, for the caller to fill in.
  T* extend(std::size_t count) {
    if (count > capacity_ - size_) [[unlikely]]
      grow(size_ + count);
    return values_ + std::exchange(size_, size_ + count);
  }

 private:
  T* own() { return reinterpret_cast<T*>(own_); }
  void copyFrom(const ShortList& other) { std::copy_n(other.values_, other.size_, extend(other.size_)); }

  void grow(std::size_t least) {
    const std::size_t capacity = std::max(least, 2 * capacity_);
    T* const values = std::allocator<T>().allocate(capacity);
    std::copy_n(values_, size_, values);
    giveBack();
    values_ = values;
    capacity_ = capacity;
  }

  // From another list, which is then empty, into this one, which holds no memory.
  void take(ShortList& other) {
    const bool isOwn = other.values_ == other.own();
    if (isOwn) std::copy_n(other.own(), other.size_, own());
    values_ = isOwn ? own() : std::exchange(other.values_, other.own());
    capacity_ = std::exchange(other.capacity_, ownRoom);
    size_ = std::exchange(other.size_, 0);
  }

  void giveBack() {
    if (values_ != own()) std::allocator<T>().deallocate(values_, capacity_);
  }

  T* values_ = own();
  std::size_t size_ = 0, capacity_ = ownRoom;
  alignas(T) std::byte own_[ownRoom * sizeof(T)];
};

}  // namespace tessaluna::platform
