#include "tessaluna/platform/foundation/NSIndexSet.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <set>

#include "tests/harness/allocations.h"

namespace tessaluna::platform {
namespace {

std::set<std::size_t> numbersIn(const NSIndexSet& set) {
  std::set<std::size_t> numbers;
  for (const NSRange& range : set.ranges())
    for (std::size_t i = 0; i < range.length; ++i) numbers.insert(range.location + i);
  return numbers;
}

bool areApart(const std::vector<NSRange>& ranges) {
  const auto touch = [](NSRange a, NSRange b) { return a.location + a.length >= b.location; };
  return std::ranges::none_of(ranges, [](NSRange range) { return range.length == 0; }) &&
         std::ranges::adjacent_find(ranges, touch) == ranges.end();
}

TEST(NSIndexSet, HoldsWhatAPlainSetHolds) {
  std::mt19937 random(3);
  NSIndexSet set;
  std::set<std::size_t> plain;
  for (int step = 0; step < 20000; ++step) {
    const NSRange range{random() % 60, random() % 6};
    const std::size_t index = 6 + random() % 60;
    const auto delta = static_cast<std::ptrdiff_t>(random() % 7) - 3;
    std::set<std::size_t> shifted;
    switch (random() % 3) {
      case 0:
        set.add(range);
        for (std::size_t i = 0; i < range.length; ++i) plain.insert(range.location + i);
        break;
      case 1:
        set.remove(range);
        for (std::size_t i = 0; i < range.length; ++i) plain.erase(range.location + i);
        break;
      default:
        set.shiftIndexesStartingAtIndex(index, delta);
        for (const std::size_t each : plain)
          if (each >= index) shifted.insert(each + static_cast<std::size_t>(delta));
          else if (delta >= 0 || each < index - static_cast<std::size_t>(-delta)) shifted.insert(each);
        plain = shifted;
        set.remove({60, 1000});
        plain.erase(plain.lower_bound(60), plain.end());
    }
    ASSERT_EQ(numbersIn(set), plain) << step;
    ASSERT_TRUE(areApart(set.ranges())) << step;
    ASSERT_EQ(set.count(), plain.size());
    ASSERT_EQ(set.contains(range.location), plain.contains(range.location));
  }
}

// Copies of the others would make it quadratic: a long list whose selection is scattered by sorting would stand still.
TEST(NSIndexSet, ScatteredNumbersAreAddedWithoutCopiesOfTheOthers) {
  const int before = harness::allocations;
  NSIndexSet set;
  for (std::size_t i = 0; i < 10000; ++i) set.add(2 * i);
  EXPECT_EQ(set.count(), 10000u);
  EXPECT_LE(harness::allocations - before, 20);
}

}  // namespace
}  // namespace tessaluna::platform
