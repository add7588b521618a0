// What becomes of a press when its view leaves the window.
#include "tessaluna/platform/windows/MouseDispatch.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "tessaluna/platform/events/KeyboardAtPress.h"
#include "tessaluna/platform/events/NSTrackingArea.h"
#include "tests/harness/ProbeView.h"
#include "tests/harness/StillWorld.h"

namespace tessaluna::platform {
namespace {

using Calls = std::vector<std::string>;

struct MouseDispatchTest : harness::StillWorld {
  Ref<harness::ProbeView> view = make<harness::ProbeView>(CGRect{10, 20, 30, 40});
  Ref<NSWindow> window = showWindowWith(view);
  MouseDispatchTest() { view->calls.clear(); }
  Calls taken() {
    Calls calls = std::exchange(view->calls, {});
    std::erase(calls, "updateTrackingAreas");
    return calls;
  }
  void track() {
    view->addTrackingArea(
        make<NSTrackingArea>(NSZeroRect, NSTrackingInVisibleRect | NSTrackingMouseEnteredAndExited | NSTrackingActiveAlways,
                             refTo<NSResponder>(*view)));
  }
};

TEST_F(MouseDispatchTest, APressedViewThatLeavesIsExitedAndThenReleasedOutsideOfEverything) {
  user.press(*window, {15, 25});
  bool wasInWindow = false;
  view->onCall = [&](const std::string&) { wasInWindow = view->window() == window.get(); };
  view->removeFromSuperview();
  EXPECT_EQ(taken(), (Calls{"mouseDown", "mouseExited", "mouseUp"}));
  EXPECT_TRUE(wasInWindow);
  EXPECT_EQ(view->events.back()->type(), NSEventType::LeftMouseUp);
  EXPECT_FALSE(NSPointInRect(view->events.back()->locationInWindow(), {-1000, -1000, 4000, 4000}));
  user.dragTo({16, 26});
  user.release();
  EXPECT_EQ(taken(), Calls{});
}

// Like a slider beside a list.
struct ReservedView : harness::ProbeView, KeyboardAtPress {
  using ProbeView::ProbeView;
  bool takesKeyboardAtPress() const override { return takes; }
  bool takes = false;
};

TEST_F(MouseDispatchTest, APressLeavesTheKeyboardWhereAViewDoesNotWantItFromOne) {
  const auto reserved = make<ReservedView>(CGRect{100, 20, 30, 40});
  reserved->acceptsFirst = view->acceptsFirst = true;
  window->contentView()->addSubview(reserved);
  user.click(*window, {15, 25});
  EXPECT_EQ(window->firstResponder(), view.get());
  user.click(*window, {105, 25});
  EXPECT_EQ(window->firstResponder(), view.get());
  EXPECT_EQ(std::count(reserved->calls.begin(), reserved->calls.end(), "mouseDown"), 1);
  reserved->takes = true;
  user.click(*window, {105, 25});
  EXPECT_EQ(window->firstResponder(), reserved.get());
}

TEST_F(MouseDispatchTest, APressOfAnotherButtonIsReleasedAsThat) {
  user.press(*window, {15, 25}, {.button = 1});
  view->removeFromSuperview();
  EXPECT_EQ(taken(), (Calls{"rightMouseDown", "mouseExited", "rightMouseUp"}));
}

TEST_F(MouseDispatchTest, APressedViewThatLeavesWithTheOneAroundItIsReleased) {
  const auto outer = make<NSView>(CGRect{0, 0, 100, 100});
  outer->addSubview(view);
  window->contentView()->addSubview(outer);
  user.press(*window, {15, 25});
  outer->removeFromSuperview();
  EXPECT_EQ(taken(), (Calls{"mouseDown", "mouseExited", "mouseUp"}));
}

TEST_F(MouseDispatchTest, AViewThatComesBackInTheMiddleOfItsPressGetsNothingMoreOfIt) {
  user.press(*window, {15, 25});
  view->removeFromSuperview();
  window->contentView()->addSubview(view);
  taken();
  user.dragTo({16, 26});
  user.release();
  EXPECT_EQ(taken(), Calls{});
  user.click(*window, {15, 25});
  EXPECT_EQ(taken(), (Calls{"mouseDown", "mouseUp"}));
}

TEST_F(MouseDispatchTest, AViewThatComesBackUnderThePointerIsEnteredAgain) {
  track();
  user.moveTo(*window, {15, 25});
  user.press(*window, {15, 25});
  view->removeFromSuperview();
  window->contentView()->addSubview(view);
  EXPECT_EQ(taken(), (Calls{"mouseEntered", "mouseDown", "mouseExited", "mouseUp"}));
  user.release();
  EXPECT_EQ(taken(), Calls{"mouseEntered"});
}

TEST_F(MouseDispatchTest, WhoStaysIsNotNotifiedOfTheReleaseOfAViewThatLeaves) {
  class Silent : public NSView {
   public:
    using NSView::NSView;
  };
  const auto inner = make<Silent>(CGRect{0, 0, 30, 40});
  view->addSubview(inner);
  user.press(*window, {15, 25});
  inner->removeFromSuperview();
  EXPECT_EQ(taken(), Calls{"mouseDown"});
}

TEST_F(MouseDispatchTest, WhoLeavesWithTheViewGetsWhatTheViewDoesNotTake) {
  const auto inner = make<NSView>(CGRect{0, 0, 30, 40});
  view->addSubview(inner);
  user.press(*window, {15, 25});
  view->removeFromSuperview();
  EXPECT_EQ(taken(), (Calls{"mouseDown", "mouseExited", "mouseUp"}));
}

TEST_F(MouseDispatchTest, AHoveredViewThatLeftAndIsBackIsExitedBeforeTheNextPress) {
  track();
  user.moveTo(*window, {15, 25});
  view->removeFromSuperview();
  window->contentView()->addSubview(view);
  taken();
  user.press(*window, {15, 25});
  EXPECT_EQ(taken(), (Calls{"mouseExited", "mouseDown"}));
}

TEST_F(MouseDispatchTest, AWindowThatIsHiddenReleasesThePressedViewOutsideOfEverything) {
  const auto around = make<harness::ProbeView>(CGRect{50, 50, 100, 100});
  window->contentView()->addSubview(around);
  view->removeFromSuperview();
  around->addSubview(view);
  taken();
  user.press(*window, {65, 75});
  window->orderOut(nullptr);
  EXPECT_EQ(taken(), (Calls{"mouseDown", "mouseExited", "mouseUp"}));
  EXPECT_FALSE(NSPointInRect(view->events.back()->locationInWindow(), {-1000, -1000, 4000, 4000}));
  user.release();
  EXPECT_EQ(taken(), Calls{}) << "once";
  window->orderFront(nullptr);
  user.press(*window, {65, 75});
  EXPECT_EQ(taken(), Calls{"mouseDown"});
}

TEST_F(MouseDispatchTest, WhoIsAroundAPressedViewIsNotReleasedWithAHiddenWindow) {
  const auto around = make<harness::ProbeView>(CGRect{50, 50, 100, 100});
  const auto inner = make<NSView>(CGRect{0, 0, 20, 20});
  window->contentView()->addSubview(around);
  around->addSubview(inner);
  user.press(*window, {55, 55});
  around->calls.clear();
  window->orderOut(nullptr);
  EXPECT_EQ(around->calls, Calls{});
}

// Whoever is notified of a press on its way hides the window: no press reaches the view, and no button is held any more.
class MouseDispatchHiddenOnTheWayTest : public MouseDispatchTest {
 protected:
  void pressAndLookAfterwards() {
    taken();
    user.press(*window, {15, 25});
    EXPECT_FALSE(window->isVisible());
    user.release();
    const Calls calls = taken();
    for (const char* const call : {"mouseDown", "mouseUp"})
      EXPECT_EQ(std::count(calls.begin(), calls.end(), call), 0) << call;
    NSEvent::removeMonitor(monitor);
    view->onCall = nullptr;
    window->orderFront(nullptr);
    if (view->trackingAreas().empty()) track();
    user.moveTo(*window, {1, 1});
    taken();
    user.moveTo(*window, {15, 25});
    EXPECT_EQ(taken(), Calls{"mouseEntered"}) << "as while no button is down";
  }
  Ref<NSObject> monitor;
};

TEST_F(MouseDispatchHiddenOnTheWayTest, ByAMonitor) {
  monitor =
      NSEvent::addLocalMonitorForEventsMatchingMask(maskOf(NSEventType::LeftMouseDown), [&](const Ref<NSEvent>& event) {
        window->orderOut(nullptr);
        return event;
      });
  pressAndLookAfterwards();
}

TEST_F(MouseDispatchHiddenOnTheWayTest, ByAMonitorThatPutsAnotherEventInItsPlace) {
  monitor =
      NSEvent::addLocalMonitorForEventsMatchingMask(maskOf(NSEventType::LeftMouseDown), [&](const Ref<NSEvent>& event) {
        window->orderOut(nullptr);
        return make<NSEvent>(event->fields());
      });
  pressAndLookAfterwards();
}

TEST_F(MouseDispatchHiddenOnTheWayTest, ByAnExitThatWasOwed) {
  track();
  user.moveTo(*window, {15, 25});
  view->removeFromSuperview();
  window->contentView()->addSubview(view);
  view->onCall = [&](const std::string& call) {
    if (call == "mouseExited") window->orderOut(nullptr);
  };
  pressAndLookAfterwards();
}

TEST_F(MouseDispatchHiddenOnTheWayTest, ByTheViewThatTakesTheKeyboard) {
  struct Hiding : harness::ProbeView {
    using ProbeView::ProbeView;
    bool becomeFirstResponder() override {
      window()->orderOut(nullptr);
      return true;
    }
  };
  view->removeFromSuperview();
  view = make<Hiding>(CGRect{10, 20, 30, 40});
  view->acceptsFirst = true;
  window->contentView()->addSubview(view);
  pressAndLookAfterwards();
}

TEST_F(MouseDispatchTest, APressThatAProgramSendsToAWindowThatWasNeverShownReachesItsView) {
  const auto hidden = make<NSWindow>(CGRect{0, 0, 100, 100}, NSWindowStyleMaskBorderless, NSBackingStoreBuffered, true);
  const auto inner = make<harness::ProbeView>(CGRect{0, 0, 50, 50});
  hidden->contentView()->addSubview(inner);
  hidden->sendEvent(
      make<NSEvent>(NSEvent::Fields{.type = NSEventType::LeftMouseDown, .location = {5, 5}, .window = hidden}));
  hidden->sendEvent(
      make<NSEvent>(NSEvent::Fields{.type = NSEventType::LeftMouseDragged, .location = {6, 6}, .window = hidden}));
  std::erase(inner->calls, "updateTrackingAreas");
  EXPECT_EQ(inner->calls, (Calls{"mouseDown", "mouseDragged"}));
}

TEST_F(MouseDispatchTest, APressThatAHandlerSendsToTheWindowThatItHasHiddenReachesItsView) {
  const auto other = make<harness::ProbeView>(CGRect{100, 20, 30, 40});
  window->contentView()->addSubview(other);
  view->onCall = [&](const std::string& call) {
    if (call != "mouseDown") return;
    window->orderOut(nullptr);
    window->sendEvent(make<NSEvent>(
        NSEvent::Fields{.type = NSEventType::LeftMouseDown, .location = {105, 25}, .window = window, .clickCount = 1}));
  };
  user.press(*window, {15, 25});
  EXPECT_EQ(std::count(other->calls.begin(), other->calls.end(), "mouseDown"), 1);
}

TEST_F(MouseDispatchTest, AWindowThatGoesReleasesThePressedView) {
  user.press(*window, {15, 25});
  view->events.clear();  // which hold the window
  window.reset();
  EXPECT_EQ(taken(), (Calls{"mouseDown", "mouseExited", "mouseUp"}));
}

}  // namespace
}  // namespace tessaluna::platform
