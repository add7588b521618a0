#include "platform/foundation/DequeList.h"

#include <gtest/gtest.h>

#include <memory>
#include <random>

namespace platform {
namespace {

TEST(DequeList, HoldsWhatAPlainListHolds) {
  std::mt19937 random(7);
  DequeList<int> list;
  std::vector<int> plain;
  for (int step = 0; step < 20000; ++step) {
    if (random() % 5 < 2 || plain.empty()) {
      list.push_back(step);
      plain.push_back(step);
    } else {
      // Mostly near the ends, sometimes anywhere.
      const std::size_t size = plain.size();
      const std::size_t index = random() % 3 == 0 ? 0 : random() % 2 == 0 ? size - 1 : random() % size;
      const int value = plain[index];
      list.remove(value);
      plain.erase(plain.begin() + static_cast<std::ptrdiff_t>(index));
    }
    ASSERT_EQ(list, plain);
  }
  list.remove(-1);
  EXPECT_EQ(list, plain);
}

TEST(DequeList, LetsGoOfWhatIsRemoved) {
  DequeList<std::shared_ptr<int>> list;
  for (int i = 0; i < 10; ++i) list.push_back(std::make_shared<int>(i));
  for (int i = 0; i < 10; ++i) {
    const std::weak_ptr<int> first = list.front();
    list.remove(first.lock());
    EXPECT_TRUE(first.expired());
  }
  EXPECT_TRUE(list.empty());
}

}  // namespace
}  // namespace platform
