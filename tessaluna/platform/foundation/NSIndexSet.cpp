#include "tessaluna/platform/foundation/NSIndexSet.h"

#include <algorithm>

namespace tessaluna::platform {

namespace {

std::size_t endOf(NSRange range) { return range.location + range.length; }

}  // namespace

void NSIndexSet::add(NSRange range) {
  if (range.length == 0) return;
  remove(range);
  const auto after =
      std::find_if(ranges_.begin(), ranges_.end(), [&](const NSRange& other) { return other.location > range.location; });
  auto placed = ranges_.insert(after, range);
  if (placed + 1 != ranges_.end() && endOf(*placed) == (placed + 1)->location) {
    placed->length += (placed + 1)->length;
    placed = ranges_.erase(placed + 1) - 1;
  }
  if (placed != ranges_.begin() && endOf(*(placed - 1)) == placed->location) {
    (placed - 1)->length += placed->length;
    ranges_.erase(placed);
  }
}

void NSIndexSet::remove(NSRange range) {
  std::vector<NSRange> rest;
  rest.reserve(ranges_.size() + 1);
  for (const NSRange& other : ranges_) {
    const std::size_t start = std::max(other.location, endOf(range)), end = std::min(endOf(other), range.location);
    if (other.location < end) rest.push_back({other.location, end - other.location});
    if (start < endOf(other)) rest.push_back({start, endOf(other) - start});
  }
  ranges_ = std::move(rest);
}

bool NSIndexSet::contains(std::size_t index) const {
  const auto after = std::upper_bound(ranges_.begin(), ranges_.end(), index,
                                      [](std::size_t i, const NSRange& range) { return i < range.location; });
  return after != ranges_.begin() && index < endOf(*(after - 1));
}

std::size_t NSIndexSet::count() const {
  std::size_t count = 0;
  for (const NSRange& range : ranges_) count += range.length;
  return count;
}

}  // namespace tessaluna::platform
