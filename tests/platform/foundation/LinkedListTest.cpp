#include "tessaluna/platform/foundation/LinkedList.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

using namespace tessaluna::platform;

namespace {

struct Entry : ListLink {
  explicit Entry(char name) : name(name) {}
  char name;
};

// Empties the list.
std::string namesIn(LinkedList& list) {
  std::string names;
  while (ListLink* link = list.takeFirst()) names += static_cast<Entry*>(link)->name;
  return names;
}

class LinkedListTest : public testing::Test {
 protected:
  Entry a{'a'}, b{'b'}, c{'c'};
  LinkedList list;
};

}  // namespace

TEST_F(LinkedListTest, GivesItsEntriesInTheOrderInWhichTheyCame) {
  EXPECT_TRUE(list.isEmpty());
  list.append(a);
  list.append(b);
  EXPECT_FALSE(list.isEmpty());
  EXPECT_TRUE(a.isInList());
  EXPECT_EQ(namesIn(list), "ab");
  EXPECT_FALSE(a.isInList());
  EXPECT_EQ(list.takeFirst(), nullptr);
}

TEST_F(LinkedListTest, AnEntryLeavesFromAnywhere) {
  for (Entry* entry : {&a, &b, &c}) list.append(*entry);
  b.leaveList();
  b.leaveList();
  EXPECT_EQ(namesIn(list), "ac");
}

TEST_F(LinkedListTest, AnEntryThatEndsLeaves) {
  list.append(a);
  {
    Entry d{'d'};
    list.append(d);
    list.append(b);
  }
  EXPECT_EQ(namesIn(list), "ab");
}

TEST_F(LinkedListTest, AnEntryIsInOneListAtMost) {
  LinkedList other;
  list.append(a);
  list.append(b);
  other.append(a);
  EXPECT_EQ(namesIn(list), "b");
  EXPECT_EQ(namesIn(other), "a");
}

TEST_F(LinkedListTest, TakesAllEntriesOfAnother) {
  LinkedList other;
  list.append(a);
  other.append(b);
  other.append(c);
  list.appendAllOf(other);
  EXPECT_TRUE(other.isEmpty());
  list.appendAllOf(other);
  EXPECT_EQ(namesIn(list), "abc");
}

TEST_F(LinkedListTest, ItsEndFreesTheEntries) {
  auto other = std::make_unique<LinkedList>();
  other->append(a);
  other->append(b);
  other.reset();
  EXPECT_FALSE(a.isInList());
  EXPECT_FALSE(b.isInList());
}
