#include "tessaluna/backends/headless/VirtualClock.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

using tessaluna::backend::headless::VirtualClock;
using Log = std::vector<std::string>;

namespace {

class VirtualClockTest : public testing::Test {
 protected:
  void ask(double seconds, const std::string& what) {
    clock.callAfter(seconds, [this, what] { log.push_back(what); });
  }
  void advance(double seconds) {
    clock.advance(seconds, [] {});
  }
  VirtualClock clock;
  Log log;
};

}  // namespace

TEST_F(VirtualClockTest, NothingHappensByItself) {
  ask(0, "now");
  EXPECT_TRUE(log.empty());
  EXPECT_EQ(clock.now(), 0);
}

TEST_F(VirtualClockTest, BlocksRunInTheOrderOfTheirTimes) {
  ask(0.3, "c");
  ask(0.1, "a");
  ask(0.2, "b");
  advance(1);
  EXPECT_EQ(log, (Log{"a", "b", "c"}));
}

TEST_F(VirtualClockTest, BlocksOfOneMomentRunInTheOrderOfTheirAsking) {
  ask(0.1, "first");
  ask(0.1, "second");
  advance(0.1);
  EXPECT_EQ(log, (Log{"first", "second"}));
}

TEST_F(VirtualClockTest, ABlockRunsNotBeforeItsTime) {
  ask(0.25, "late");
  advance(0.249);
  EXPECT_TRUE(log.empty());
  advance(0.001);
  EXPECT_EQ(log, Log{"late"});
}

TEST_F(VirtualClockTest, TenTenthsAreOneSecond) {
  ask(1, "after one second");
  for (int i = 0; i < 10; ++i) advance(0.1);
  EXPECT_EQ(log, Log{"after one second"});
  EXPECT_EQ(clock.now(), 1);
}

TEST_F(VirtualClockTest, ABlockSeesItsOwnTime) {
  double seen = 0;
  clock.callAfter(0.2, [&] { seen = clock.now(); });
  advance(5);
  EXPECT_DOUBLE_EQ(seen, 0.2);
  EXPECT_EQ(clock.now(), 5);
}

TEST_F(VirtualClockTest, BlocksAskedForMeanwhileRunWhenTheyFallDueWithin) {
  clock.callAfter(0.1, [this] {
    ask(0.1, "at 0.2");
    ask(0, "at 0.1");
    ask(0.5, "at 0.6");
  });
  advance(0.5);
  EXPECT_EQ(log, (Log{"at 0.1", "at 0.2"}));
}

TEST_F(VirtualClockTest, ABlockRunsOnce) {
  ask(0.1, "once");
  advance(1);
  advance(1);
  EXPECT_EQ(log, Log{"once"});
}

TEST_F(VirtualClockTest, ADelayThatIsNegativeOrNoNumberIsNone) {
  ask(-1, "negative");
  ask(std::nan(""), "no number");
  advance(0);
  EXPECT_EQ(log, (Log{"negative", "no number"}));
}

TEST_F(VirtualClockTest, AnInfiniteDelayNeverComes) {
  ask(HUGE_VAL, "never");
  advance(1e6);
  EXPECT_TRUE(log.empty());
}

TEST_F(VirtualClockTest, TheEndOfEachMomentIsReported) {
  ask(0.1, "a");
  ask(0.1, "b");
  ask(0.2, "c");
  clock.advance(1, [this] { log.push_back("end"); });
  EXPECT_EQ(log, (Log{"end", "a", "b", "end", "c", "end"}));
}

TEST(VirtualClockDeathTest, ABlockThatStopsTimeForeverEndsTheProgram) {
  VirtualClock clock;
  std::function<void()> again = [&] { clock.callAfter(0, again); };
  again();
  EXPECT_DEATH(clock.advance(0, [] {}), "asks for itself again");
}
