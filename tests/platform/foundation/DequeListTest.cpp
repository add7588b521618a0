#include "tessaluna/platform/foundation/DequeList.h"

#include <gtest/gtest.h>

#include <memory>
#include <random>

namespace tessaluna::platform {
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

struct Counted {
  static inline int moves = 0;
  int value = -1;
  Counted() = default;
  explicit Counted(int value) : value(value) {}
  Counted(const Counted&) = default;
  Counted& operator=(const Counted&) = default;
  Counted(Counted&& other) noexcept : value(other.value) { ++moves; }
  Counted& operator=(Counted&& other) noexcept {
    value = other.value;
    ++moves;
    return *this;
  }
  friend bool operator==(const Counted& a, const Counted& b) { return a.value == b.value; }
};

TEST(DequeList, IsEmptiedFromEitherEndInAFewMovesForEachItem) {
  constexpr int count = 4096;
  for (const bool fromFront : {true, false}) {
    DequeList<Counted> list;
    for (int i = 0; i < count; ++i) list.push_back(Counted(i));
    Counted::moves = 0;
    for (int i = 0; i < count; ++i) list.remove(Counted(fromFront ? i : count - 1 - i));
    EXPECT_TRUE(list.empty());
    EXPECT_LT(Counted::moves, 4 * count) << fromFront;
  }
}

}  // namespace
}  // namespace tessaluna::platform
