#include "tessaluna/platform/time/DispatchQueue.h"

#include <string>
#include <thread>

#include "tests/harness/StillWorld.h"

using namespace tessaluna::platform;

namespace {

class DispatchQueueTest : public harness::StillWorld {};

}  // namespace

TEST_F(DispatchQueueTest, ABlockIsNeverCalledWithinTheCall) {
  int calls = 0;
  DispatchQueue::main().async([&] { ++calls; });
  EXPECT_EQ(calls, 0);
  desktop.settle();
  EXPECT_EQ(calls, 1);
}

TEST_F(DispatchQueueTest, ADelayedBlockComesWhenItsTimeHasPassed) {
  int calls = 0;
  DispatchQueue::main().asyncAfter(0.001, [&] { ++calls; });
  desktop.advance(0.0009);
  EXPECT_EQ(calls, 0);
  desktop.advance(0.0001);
  EXPECT_EQ(calls, 1);
}

TEST_F(DispatchQueueTest, WhatWorkReturnsReachesItsAnswer) {
  std::thread::id worker;
  std::string answer;
  DispatchQueue::main().answer(
      [&worker] {
        worker = std::this_thread::get_id();
        return std::string("forty-two");
      },
      [&answer](std::string text) { answer = text; });
  desktop.settle();
  EXPECT_EQ(answer, "forty-two");
  EXPECT_NE(worker, std::this_thread::get_id());
}

TEST_F(DispatchQueueTest, WorkThatReturnsNothingIsAnsweredToo) {
  bool isDone = false, wasDone = false;
  DispatchQueue::main().answer([&] { isDone = true; }, [&] { wasDone = isDone; });
  desktop.settle();
  EXPECT_TRUE(wasDone);
}

TEST(DispatchQueueDeathTest, WithoutABackendTheProgramStops) {
  EXPECT_DEATH(DispatchQueue::main().async([] {}), "DispatchQueue: used without a backend");
}
