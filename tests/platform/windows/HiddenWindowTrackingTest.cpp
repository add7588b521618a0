#include <gtest/gtest.h>

#include "tessaluna/platform/events/NSTrackingArea.h"
#include "tests/harness/ProbeView.h"
#include "tests/harness/StillWorld.h"

namespace tessaluna::platform {
namespace {

using Calls = std::vector<std::string>;

struct HiddenWindowTrackingTest : harness::StillWorld {
  Ref<harness::ProbeView> view = make<harness::ProbeView>(CGRect{0, 0, 100, 100});
  Ref<NSWindow> window = showWindowWith(view);
  Ref<NSTrackingArea> area = make<NSTrackingArea>(view->bounds(), NSTrackingMouseEnteredAndExited | NSTrackingActiveAlways,
                                                  refTo<NSResponder>(*view));
  HiddenWindowTrackingTest() {
    view->addTrackingArea(area);
    view->calls.clear();
  }
  Calls taken() { return std::exchange(view->calls, {}); }
};

TEST_F(HiddenWindowTrackingTest, GetsNoEntryWithTheReleaseThatHidIt) {
  user.press(*window, {10, 10});
  view->onCall = [&](const std::string& call) {
    if (call == "mouseUp") window->orderOut(nullptr);
  };
  user.release();
  EXPECT_EQ(view->calls, (Calls{"mouseDown", "mouseUp"}));
}

TEST_F(HiddenWindowTrackingTest, IsEnteredAgainWhenItIsBackUnderThePointer) {
  user.moveTo(*window, {10, 10});
  window->orderOut(nullptr);
  window->orderFront(nullptr);
  EXPECT_EQ(taken(), Calls{"mouseEntered"});
  user.moveTo(*window, {12, 10});
  user.moveTo(*window, {13, 10});
  EXPECT_EQ(taken(), Calls{"mouseEntered"});
  user.leave(*window);
  EXPECT_EQ(taken(), Calls{"mouseExited"});
}

TEST_F(HiddenWindowTrackingTest, OwesTheExitAndSendsItWhenItIsShownWithoutThePointer) {
  user.moveTo(*window, {10, 10});
  taken();
  window->orderOut(nullptr);
  desktop.setMouseLocation({1000, 800});
  EXPECT_EQ(taken(), Calls{}) << "never while it is hidden";
  window->orderFront(nullptr);
  EXPECT_EQ(taken(), Calls{"mouseExited"});
  EXPECT_EQ(view->events.back()->trackingArea(), area);
  EXPECT_EQ(view->events.back()->locationInWindow(), (CGPoint{900, 700}));
  window->orderOut(nullptr);
  window->orderFront(nullptr);
  EXPECT_EQ(taken(), Calls{}) << "only once";
}

TEST_F(HiddenWindowTrackingTest, OwesTheExitAlsoWhereItIsShownAwayFromAStillPointer) {
  user.moveTo(*window, {10, 10});
  taken();
  window->orderOut(nullptr);
  window->setFrame({500, 500, 200, 150}, false);
  window->orderFront(nullptr);
  EXPECT_EQ(taken(), Calls{"mouseExited"});
}

TEST_F(HiddenWindowTrackingTest, SendsTheOwedExitWithTheFirstMoveWhereThePointerWasBelievedToBe) {
  user.moveTo(*window, {10, 10});
  window->orderOut(nullptr);
  window->orderFront(nullptr);
  taken();
  user.moveTo(*window, {150, 120});
  EXPECT_EQ(taken(), Calls{"mouseExited"});
}

TEST_F(HiddenWindowTrackingTest, ALeaveThatTheDesktopSendsToAHiddenWindowNotifiesNobody) {
  user.moveTo(*window, {10, 10});
  taken();
  window->orderOut(nullptr);
  user.leave(*window);
  EXPECT_EQ(taken(), Calls{});
}

TEST_F(HiddenWindowTrackingTest, OwesNothingToAnAreaThatWasRemovedMeanwhile) {
  user.moveTo(*window, {10, 10});
  taken();
  window->orderOut(nullptr);
  view->removeTrackingArea(area);
  desktop.setMouseLocation({1000, 800});
  window->orderFront(nullptr);
  user.moveTo(*window, {150, 120});
  EXPECT_EQ(taken(), Calls{});
}

}  // namespace
}  // namespace tessaluna::platform
