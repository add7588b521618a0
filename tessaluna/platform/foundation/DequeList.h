// A list in one piece of memory that is as quickly emptied from its front as from its back: a removal moves what lies on the
// shorter side. Views keep their subviews and tracking areas in it, which are often removed in the order in which they
// were added.
#pragma once

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <utility>
#include <vector>

#include "tessaluna/platform/foundation/languageVersion.h"

namespace tessaluna::platform {

template <class T>
class DequeList {
 public:
  using value_type = T;
  using const_reference = const T&;
  using const_iterator = typename std::vector<T>::const_iterator;
  using iterator = const_iterator;
  using size_type = std::size_t;
  using difference_type = std::ptrdiff_t;

  const_iterator begin() const { return items_.begin() + first_; }
  const_iterator end() const { return items_.end(); }
  auto rbegin() const { return std::make_reverse_iterator(end()); }
  auto rend() const { return std::make_reverse_iterator(begin()); }
  std::size_t size() const { return static_cast<std::size_t>(end() - begin()); }
  bool empty() const { return begin() == end(); }
  const T& operator[](std::size_t index) const { return *(begin() + static_cast<std::ptrdiff_t>(index)); }
  const T& front() const { return *begin(); }
  const T& back() const { return items_.back(); }
  operator std::vector<T>() const { return {begin(), end()}; }
  friend bool operator==(const DequeList& a, const std::vector<T>& b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end());
  }

  void push_back(T item) { items_.push_back(std::move(item)); }

  // The first that is equal, if there is one. Looked for from the front.
  void remove(const T& item) {
    const auto found = std::find(items_.begin() + first_, items_.end(), item);
    if (found == items_.end()) return;
    const auto start = items_.begin() + first_;
    if (found - start >= items_.end() - found) {
      items_.erase(found);
    } else {
      std::move_backward(start, found, found + 1);
      *start = T();
      ++first_;
    }
    // The empty places at the front are given back once they are as many as the others.
    if (static_cast<std::size_t>(first_) * 2 < items_.size()) return;
    items_.erase(items_.begin(), items_.begin() + first_);
    first_ = 0;
  }

 private:
  std::vector<T> items_;
  std::ptrdiff_t first_ = 0;  // before it the places are empty
};

}  // namespace tessaluna::platform
