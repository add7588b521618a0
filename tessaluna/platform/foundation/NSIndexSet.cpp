#include "tessaluna/platform/foundation/NSIndexSet.h"

#include <algorithm>

namespace tessaluna::platform {

namespace {

std::size_t endOf(NSRange range) { return range.location + range.length; }

}  // namespace

void NSIndexSet::add(NSRange range) {
  if (range.length == 0) return;
  // Those that it meets or touches become one with it.
  const auto first = std::partition_point(ranges_.begin(), ranges_.end(),
                                          [&](const NSRange& other) { return endOf(other) < range.location; });
  const auto end =
      std::partition_point(first, ranges_.end(), [&](const NSRange& other) { return other.location <= endOf(range); });
  if (first == end) {
    ranges_.insert(first, range);
    return;
  }
  const std::size_t start = std::min(first->location, range.location);
  *first = {start, std::max(endOf(*(end - 1)), endOf(range)) - start};
  ranges_.erase(first + 1, end);
}

void NSIndexSet::remove(NSRange range) {
  if (range.length == 0) return;
  const auto first = std::partition_point(ranges_.begin(), ranges_.end(),
                                          [&](const NSRange& other) { return endOf(other) <= range.location; });
  const auto end =
      std::partition_point(first, ranges_.end(), [&](const NSRange& other) { return other.location < endOf(range); });
  if (first == end) return;
  NSRange rest[2];
  std::size_t count = 0;
  if (first->location < range.location) rest[count++] = {first->location, range.location - first->location};
  if (const std::size_t last = endOf(*(end - 1)); last > endOf(range)) rest[count++] = {endOf(range), last - endOf(range)};
  ranges_.insert(ranges_.erase(first, end), rest, rest + count);
}

void NSIndexSet::shiftIndexesStartingAtIndex(std::size_t index, std::ptrdiff_t delta) {
  if (isEmpty()) return;
  const std::size_t end = last() + 1, from = delta < 0 ? index + static_cast<std::size_t>(delta) : index;
  NSIndexSet shifted = *this;
  shifted.remove({0, index});
  if (from < end) remove({from, end - from});
  for (const NSRange& range : shifted.ranges_) add({range.location + static_cast<std::size_t>(delta), range.length});
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
