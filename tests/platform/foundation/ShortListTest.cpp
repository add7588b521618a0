#include "tessaluna/platform/foundation/ShortList.h"

#include <gtest/gtest.h>

#include <vector>

using tessaluna::platform::ShortList;

namespace {

using List = ShortList<int, 4>;

List upTo(int count) {
  List list;
  for (int i = 0; i < count; ++i) list.push_back(i);
  return list;
}

std::vector<int> valuesOf(const List& list) { return {list.begin(), list.end()}; }

}  // namespace

TEST(ShortList, KeepsTheOrderBeyondItsOwnRoom) {
  EXPECT_EQ(valuesOf(upTo(3)), (std::vector{0, 1, 2}));
  EXPECT_EQ(valuesOf(upTo(9)), (std::vector{0, 1, 2, 3, 4, 5, 6, 7, 8}));
}

TEST(ShortList, IsExtendedByManyAtOnce) {
  for (const int before : {0, 2, 4, 7}) {
    List list = upTo(before);
    int* const added = list.extend(20);
    for (int i = 0; i < 20; ++i) added[i] = before + i;
    EXPECT_EQ(valuesOf(list), valuesOf(upTo(before + 20)));
  }
}

TEST(ShortList, ACopyIsOfItsOwn) {
  for (const int count : {0, 3, 9}) {
    const List list = upTo(count);
    List copy = list, assigned = upTo(6);
    assigned = list;
    copy.push_back(50);
    assigned.push_back(60);
    EXPECT_EQ(valuesOf(list), valuesOf(upTo(count)));
    EXPECT_EQ(copy.back(), 50);
    EXPECT_EQ(assigned.size(), std::size_t(count) + 1);
  }
}

TEST(ShortList, AListThatWasMovedFromIsEmptyAndCanBeUsed) {
  for (const int count : {3, 9}) {
    List list = upTo(count), assigned = upTo(12);
    List moved = std::move(list);
    EXPECT_EQ(valuesOf(moved), valuesOf(upTo(count)));
    EXPECT_TRUE(list.empty());  // NOLINT(bugprone-use-after-move): what is asked here
    list.push_back(7);
    EXPECT_EQ(valuesOf(list), (std::vector{7}));
    assigned = std::move(moved);
    EXPECT_EQ(valuesOf(assigned), valuesOf(upTo(count)));
  }
}

TEST(ShortList, AssignedToItselfItStaysAsItIs) {
  List list = upTo(9);
  const List& same = list;
  list = same;
  EXPECT_EQ(valuesOf(list), valuesOf(upTo(9)));
}

TEST(ShortList, ClearedItIsEmpty) {
  List list = upTo(9);
  list.clear();
  EXPECT_TRUE(list.empty());
  list.push_back(1);
  EXPECT_EQ(valuesOf(list), (std::vector{1}));
}
