// What is derived above the seam, and what the headless desktop does for it.
#include "tessaluna/platform/backend/Backend.h"

#include <string>
#include <thread>

#include "tests/harness/StillWorld.h"

using namespace tessaluna::platform;
using tessaluna::backend::Timer;

namespace {

class BackendTest : public harness::StillWorld {
 protected:
  std::function<void()> note(char what) {
    return [this, what] { log += what; };
  }
  std::string log;
};

}  // namespace

TEST_F(BackendTest, ATimerCallsItsBlockOnce) {
  const Timer timer = desktop.timer(0.1, note('a'));
  desktop.advance(0.09);
  EXPECT_EQ(log, "");
  desktop.advance(1);
  EXPECT_EQ(log, "a");
}

TEST_F(BackendTest, TheEndOfATimersLastCopyCancelsIt) {
  Timer timer = desktop.timer(0.1, note('a'));
  Timer copy = timer;
  timer = nullptr;
  copy = nullptr;
  desktop.advance(1);
  EXPECT_EQ(log, "");
}

TEST_F(BackendTest, ACancelledTimersBlockIsFreedAtOnce) {
  auto held = std::make_shared<int>();
  const std::weak_ptr<int> weak = held;
  Timer timer = desktop.timer(0.1, [held = std::move(held)] {});
  timer = nullptr;
  EXPECT_TRUE(weak.expired());
}

TEST_F(BackendTest, ATimersBlockMayCancelItself) {
  Timer timer;
  timer = desktop.timer(0.1, [&timer, after = std::string("still here"), this] {
    timer = nullptr;
    log = after;
  });
  desktop.advance(1);
  EXPECT_EQ(log, "still here");
}

TEST_F(BackendTest, TimersMayOutliveTheBackend) {
  Timer timer;
  {
    NSApp = nullptr;
    timer = desktop.timer(0.1, note('a'));
  }
  EXPECT_NE(timer, nullptr);
}

TEST_F(BackendTest, WorkElsewhereIsDoneOnAnotherThreadAndAnsweredOnThisOne) {
  std::thread::id worker, answerer;
  desktop.callElsewhere([&] { worker = std::this_thread::get_id(); }, [&] { answerer = std::this_thread::get_id(); });
  EXPECT_EQ(worker, std::thread::id());
  desktop.settle();
  EXPECT_NE(worker, std::thread::id());
  EXPECT_NE(worker, std::this_thread::get_id());
  EXPECT_EQ(answerer, std::this_thread::get_id());
}

TEST_F(BackendTest, AnswersComeInTheOrderOfAsking) {
  desktop.callElsewhere(note('a'), note('c'));
  desktop.callElsewhere(note('b'), note('d'));
  desktop.settle();
  EXPECT_EQ(log, "abcd");
}

TEST_F(BackendTest, AWindowsFrameBlockIsCalledOnceAtItsNextFrame) {
  const auto window = showWindow();
  window->nativeWindow()->callAtNextFrame(note('a'));
  desktop.settle();
  EXPECT_EQ(log, "");
  desktop.advance(0.01);
  EXPECT_EQ(log, "a");
  desktop.advance(1);
  EXPECT_EQ(log, "a");
}

TEST_F(BackendTest, WhatAFrameBlockChangesIsInThatFramesPicture) {
  const auto window = showWindow();
  nativeOf(*window).forgetPaints();
  window->nativeWindow()->callAtNextFrame([&] { window->invalidateRect({0, 0, 10, 10}); });
  desktop.advance(0.01);
  EXPECT_EQ(nativeOf(*window).paints().size(), 1u);
}

TEST_F(BackendTest, AHiddenWindowKeepsItsFrameBlocksWaiting) {
  const auto window = showWindow();
  window->nativeWindow()->callAtNextFrame(note('a'));
  window->orderOut(nullptr);
  desktop.advance(1);
  EXPECT_EQ(log, "");
  window->orderFront(nullptr);
  desktop.advance(0.01);
  EXPECT_EQ(log, "a");
}

TEST_F(BackendTest, AWindowThatGoesForgetsItsFrameBlocks) {
  auto window = showWindow();
  window->nativeWindow()->callAtNextFrame(note('a'));
  window->close();
  window = nullptr;
  desktop.advance(1);
  EXPECT_EQ(log, "");
}
