// A set of row numbers, kept as ascending ranges, so that selecting all of a long list costs no more than selecting one row.
#pragma once

#include <cstddef>
#include <vector>

#include "tessaluna/platform/foundation/Geometry.h"

namespace tessaluna::platform {

class NSIndexSet {
 public:
  NSIndexSet() = default;
  explicit NSIndexSet(std::size_t index) { add(index); }
  explicit NSIndexSet(NSRange range) { add(range); }

  void add(std::size_t index) { add(NSRange{index, 1}); }
  void add(NSRange range);
  void remove(NSRange range);
  // Moves the index and all after it; by less than zero it replaces those that are in its way, of which there must be so many.
  void shiftIndexesStartingAtIndex(std::size_t index, std::ptrdiff_t delta);
  bool contains(std::size_t index) const;
  bool isEmpty() const { return ranges_.empty(); }
  std::size_t count() const;
  // The sets must not be empty.
  std::size_t first() const { return ranges_.front().location; }
  std::size_t last() const { return ranges_.back().location + ranges_.back().length - 1; }
  const std::vector<NSRange>& ranges() const { return ranges_; }
  friend bool operator==(const NSIndexSet&, const NSIndexSet&) = default;

 private:
  std::vector<NSRange> ranges_;  // neither touching nor empty
};

}  // namespace tessaluna::platform
