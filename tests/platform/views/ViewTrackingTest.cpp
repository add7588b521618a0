#include "tessaluna/platform/views/ViewTracking.h"

#include <gmock/gmock.h>

#include "tessaluna/platform/events/NSCursor.h"
#include "tessaluna/platform/events/NSTrackingArea.h"
#include "tests/harness/ProbeView.h"
#include "tests/harness/StillWorld.h"
#include "tests/harness/printing.h"

using namespace tessaluna::platform;
using harness::ProbeView;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

constexpr std::uint32_t comingAndGoing = NSTrackingMouseEnteredAndExited | NSTrackingActiveAlways;

class ViewTrackingTest : public harness::StillWorld {
 protected:
  // A view at (50, 50) of 40 by 40 that has one area over its bounds.
  Ref<ProbeView> trackedView(std::uint32_t options = comingAndGoing) {
    auto view = make<ProbeView>(CGRect{50, 50, 40, 40});
    area = make<NSTrackingArea>(view->bounds(), options, view);
    view->addTrackingArea(area);
    window = showWindowWith(view);
    view->calls.clear();
    return view;
  }
  static constexpr CGPoint inside{60, 60}, alsoInside{61, 60}, outside{10, 10};
  Ref<NSTrackingArea> area;
  Ref<NSWindow> window;
};

Ref<ProbeView> view(CGRect frame) { return make<ProbeView>(frame); }

}  // namespace

TEST_F(ViewTrackingTest, HitTestTakesAPointOfTheSuperviewsSpace) {
  const auto v = view({10, 20, 30, 40});
  EXPECT_EQ(v->hitTest({10, 20}), v.get());
  EXPECT_EQ(v->hitTest({9, 20}), nullptr);
  EXPECT_EQ(v->hitTest({40, 30}), nullptr);
}

TEST_F(ViewTrackingTest, HitTestFindsTheFrontmostViewBelow) {
  const auto v = view({0, 0, 100, 100}), back = view({0, 0, 50, 50}), front = view({20, 20, 50, 50});
  v->addSubview(back);
  v->addSubview(front);
  EXPECT_EQ(v->hitTest({30, 30}), front.get());
  EXPECT_EQ(v->hitTest({10, 10}), back.get());
  EXPECT_EQ(v->hitTest({90, 90}), v.get());
}

TEST_F(ViewTrackingTest, HitTestPassesAHiddenView) {
  const auto v = view({0, 0, 100, 100}), front = view({20, 20, 50, 50});
  v->addSubview(front);
  front->setHidden(true);
  EXPECT_EQ(v->hitTest({30, 30}), v.get());
  v->setHidden(true);
  EXPECT_EQ(v->hitTest({30, 30}), nullptr);
}

TEST_F(ViewTrackingTest, HitTestFollowsScrollingAndFlipping) {
  const auto v = view({0, 0, 100, 100}), child = view({0, 0, 10, 10});
  v->flipped = true;
  v->addSubview(child);
  EXPECT_EQ(v->hitTest({5, 95}), child.get());
  v->setBoundsOrigin({0, -50});
  EXPECT_EQ(v->hitTest({5, 45}), child.get());
}

TEST_F(ViewTrackingTest, ASubviewIsNotHitOutsideItsSuperview) {
  const auto v = view({0, 0, 50, 50}), child = view({40, 40, 50, 50});
  v->addSubview(child);
  EXPECT_EQ(v->hitTest({60, 60}), nullptr);
}

TEST_F(ViewTrackingTest, ThePointerEntersOnceAndLeavesOnce) {
  const auto v = trackedView();
  user.moveTo(*window, outside);
  user.moveTo(*window, inside);
  user.moveTo(*window, alsoInside);
  user.moveTo(*window, outside);
  user.moveTo(*window, outside);
  EXPECT_THAT(v->calls, ElementsAre("mouseEntered", "mouseExited"));
  EXPECT_EQ(v->events[0]->trackingArea(), area);
  EXPECT_EQ(v->events[0]->type(), NSEventType::MouseEntered);
  EXPECT_EQ(v->events[1]->type(), NSEventType::MouseExited);
}

TEST_F(ViewTrackingTest, LeavingTheWindowLeavesTheView) {
  const auto v = trackedView();
  user.moveTo(*window, inside);
  user.leave(*window);
  EXPECT_THAT(v->calls, ElementsAre("mouseEntered", "mouseExited"));
}

TEST_F(ViewTrackingTest, UnderAStillPointerNothingIsSent) {
  const auto v = trackedView();
  user.moveTo(*window, outside);
  v->setFrameOrigin({0, 0});
  desktop.settle();
  EXPECT_THAT(v->events, IsEmpty());
  v->calls.clear();
  user.moveTo(*window, {11, 10});
  EXPECT_THAT(v->calls, ElementsAre("mouseEntered"));
}

TEST_F(ViewTrackingTest, WhileAButtonIsDownAnEntryWaitsForTheRelease) {
  const auto v = trackedView();
  user.press(*window, outside);
  user.dragTo(inside);
  EXPECT_THAT(v->calls, IsEmpty());
  user.release();
  EXPECT_THAT(v->calls, ElementsAre("mouseEntered"));
}

TEST_F(ViewTrackingTest, WithEnabledDuringDragAnEntryComesAtOnce) {
  const auto v = trackedView(comingAndGoing | NSTrackingEnabledDuringMouseDrag);
  user.press(*window, outside);
  user.dragTo(inside);
  EXPECT_THAT(v->calls, ElementsAre("mouseEntered"));
}

TEST_F(ViewTrackingTest, TheExitOfAnEntryComesAlsoDuringADrag) {
  const auto v = trackedView();
  user.moveTo(*window, inside);
  user.press(*window, inside);
  user.dragTo(outside);
  EXPECT_THAT(v->calls, ElementsAre("mouseEntered", "mouseDown", "mouseExited", "mouseDragged"));
}

TEST_F(ViewTrackingTest, MovesAreSentOnlyWhereTheyAreAskedFor) {
  const auto v = trackedView(NSTrackingMouseMoved | NSTrackingActiveAlways);
  user.moveTo(*window, outside);
  user.moveTo(*window, inside);
  user.moveTo(*window, alsoInside);
  EXPECT_THAT(v->calls, ElementsAre("mouseMoved", "mouseMoved"));
}

TEST_F(ViewTrackingTest, AnAreaOfTheKeyWindowSleepsInOthers) {
  const auto v = trackedView(NSTrackingMouseEnteredAndExited | NSTrackingActiveInKeyWindow);
  const auto other = showWindow();
  user.moveTo(*window, inside);
  EXPECT_THAT(v->calls, IsEmpty());
  window->makeKeyAndOrderFront(nullptr);
  user.moveTo(*window, alsoInside);
  EXPECT_THAT(v->calls, ElementsAre("mouseEntered"));
}

TEST_F(ViewTrackingTest, AnAreaOfTheActiveApplicationSleepsWhileItIsNot) {
  const auto v = trackedView(NSTrackingMouseEnteredAndExited | NSTrackingActiveInActiveApp);
  NSApp->setActive(false);
  user.moveTo(*window, inside);
  EXPECT_THAT(v->calls, IsEmpty());
  NSApp->setActive(true);
  user.moveTo(*window, alsoInside);
  EXPECT_THAT(v->calls, ElementsAre("mouseEntered"));
}

TEST_F(ViewTrackingTest, AnAreaOfTheVisibleRectIgnoresItsRectangle) {
  auto v = make<ProbeView>(CGRect{50, 50, 40, 40});
  v->addTrackingArea(make<NSTrackingArea>(NSZeroRect, comingAndGoing | NSTrackingInVisibleRect, v));
  window = showWindowWith(v);
  v->calls.clear();
  user.moveTo(*window, inside);
  EXPECT_THAT(v->calls, ElementsAre("mouseEntered"));
}

TEST_F(ViewTrackingTest, ARemovedAreaGetsNothingMore) {
  const auto v = trackedView();
  user.moveTo(*window, inside);
  v->removeTrackingArea(area);
  user.moveTo(*window, outside);
  EXPECT_THAT(v->calls, ElementsAre("mouseEntered"));
}

TEST_F(ViewTrackingTest, AnAreaMayBeRemovedAndAddedInsideItsOwnHandler) {
  const auto v = trackedView();
  v->onCall = [&](const std::string& call) {
    if (call != "mouseEntered") return;
    v->removeTrackingArea(area);
    v->addTrackingArea(make<NSTrackingArea>(v->bounds(), comingAndGoing, v));
  };
  user.moveTo(*window, inside);
  EXPECT_THAT(v->calls, ElementsAre("mouseEntered"));
}

TEST_F(ViewTrackingTest, ADestroyedOwnerIsNotNotified) {
  const auto v = view({50, 50, 40, 40});
  auto owner = make<ProbeView>(NSZeroRect);
  v->addTrackingArea(make<NSTrackingArea>(v->bounds(), comingAndGoing, owner));
  window = showWindowWith(v);
  v->calls.clear();
  owner.reset();
  user.moveTo(*window, inside);
  EXPECT_THAT(v->calls, IsEmpty());
}

TEST_F(ViewTrackingTest, AHiddenViewIsNotEntered) {
  const auto v = trackedView();
  v->setHidden(true);
  user.moveTo(*window, inside);
  EXPECT_THAT(v->calls, IsEmpty());
}

TEST_F(ViewTrackingTest, UpdateTrackingAreasIsCalledWhenTheViewComesIntoAWindow) {
  const auto outer = view({0, 0, 50, 50}), inner = view({0, 0, 10, 10});
  outer->addSubview(inner);
  outer->calls.clear();
  inner->calls.clear();
  showWindowWith(outer);
  EXPECT_THAT(outer->calls, testing::Contains("updateTrackingAreas"));
  EXPECT_THAT(inner->calls, testing::Contains("updateTrackingAreas"));
}

TEST_F(ViewTrackingTest, UpdateTrackingAreasIsCalledWhenASuperviewMovesOrScrolls) {
  const auto outer = view({0, 0, 50, 50}), inner = view({0, 0, 10, 10});
  outer->addSubview(inner);
  window = showWindowWith(outer);
  inner->calls.clear();
  outer->setBoundsOrigin({0, 5});
  EXPECT_THAT(inner->calls, testing::Contains("updateTrackingAreas"));
  inner->calls.clear();
  outer->setFrameSize({5, 5});
  EXPECT_THAT(inner->calls, testing::Contains("updateTrackingAreas"));
}

namespace {

class HandView : public NSView {
 public:
  using NSView::NSView;
  int resets = 0;
  CGRect link{0, 0, 20, 40};
  void resetCursorRects() override {
    ++resets;
    addCursorRect(link, NSCursor::pointingHandCursor());
  }
};

}  // namespace

TEST_F(ViewTrackingTest, ThePointerWearsTheCursorOfTheRectangleUnderIt) {
  const auto v = make<HandView>(CGRect{50, 50, 40, 40});
  window = showWindowWith(v);
  const auto cursorAt = [&](CGPoint point) {
    user.moveTo(*window, point);
    return nativeOf(*window).cursor();
  };
  EXPECT_EQ(cursorAt({55, 60}), tessaluna::backend::CursorShape::PointingHand);
  EXPECT_EQ(cursorAt({75, 60}), tessaluna::backend::CursorShape::Arrow);
  EXPECT_EQ(cursorAt({5, 5}), tessaluna::backend::CursorShape::Arrow);
  EXPECT_EQ(v->resets, 1);
}

TEST_F(ViewTrackingTest, OfCursorRectanglesThatOverlapTheLaterOneCounts) {
  const auto view = make<NSView>(CGRect{0, 0, 100, 100});
  view->addCursorRect({0, 0, 50, 50}, NSCursor::pointingHandCursor());
  view->addCursorRect({20, 20, 50, 50}, NSCursor::arrowCursor());
  EXPECT_EQ(view->cursorAt({10, 10}), NSCursor::pointingHandCursor());
  EXPECT_EQ(view->cursorAt({30, 30}), NSCursor::arrowCursor());
  EXPECT_EQ(view->cursorAt({90, 90}), nullptr);
}

TEST_F(ViewTrackingTest, CursorRectanglesAreAskedForAgainWhenTheyAreInvalid) {
  const auto v = make<HandView>(CGRect{50, 50, 40, 40});
  window = showWindowWith(v);
  user.moveTo(*window, {75, 60});
  v->link = {20, 0, 20, 40};
  window->invalidateCursorRectsForView(*v);
  user.moveTo(*window, {76, 60});
  EXPECT_EQ(nativeOf(*window).cursor(), tessaluna::backend::CursorShape::PointingHand);
  EXPECT_EQ(v->resets, 2);
}

TEST_F(ViewTrackingTest, AViewMayAskForAResetWhileItIsAskedForItsCursorRectangles) {
  struct Asking : HandView {
    using HandView::HandView;
    void resetCursorRects() override {
      window()->resetCursorRects();
      HandView::resetCursorRects();
    }
  };
  const auto v = make<Asking>(CGRect{50, 50, 40, 40});
  window = showWindowWith(v);
  user.moveTo(*window, {55, 60});
  EXPECT_EQ(nativeOf(*window).cursor(), tessaluna::backend::CursorShape::PointingHand);
  v->resets = 0;
  window->resetCursorRects();
  EXPECT_EQ(v->resets, 1);
  window->resetCursorRects();
  EXPECT_EQ(v->resets, 2) << "a later reset";
}

TEST_F(ViewTrackingTest, AResetByTheWindowAsksAllViewsAgainAndHiddenOnesOnceTheyShow) {
  const auto shown = make<HandView>(CGRect{50, 50, 40, 40}), hidden = make<HandView>(CGRect{0, 0, 40, 40});
  window = showWindowWith(shown);
  window->contentView()->addSubview(hidden);
  user.moveTo(*window, {5, 5});
  hidden->setHidden(true);
  shown->addCursorRect({30, 0, 10, 40}, NSCursor::pointingHandCursor());
  hidden->addCursorRect({30, 0, 10, 40}, NSCursor::pointingHandCursor());
  window->resetCursorRects();
  EXPECT_EQ(shown->resets, 2);
  EXPECT_EQ(shown->cursorAt({35, 5}), nullptr);
  EXPECT_EQ(shown->cursorAt({5, 5}), NSCursor::pointingHandCursor());
  EXPECT_EQ(hidden->cursorAt({5, 5}), nullptr);
  hidden->setHidden(false);
  user.moveTo(*window, {6, 6});
  EXPECT_EQ(hidden->resets, 2);
  EXPECT_EQ(hidden->cursorAt({35, 5}), nullptr);
}

TEST_F(ViewTrackingTest, TheCursorStaysWhileAButtonIsDown) {
  const auto v = make<HandView>(CGRect{50, 50, 40, 40});
  window = showWindowWith(v);
  user.moveTo(*window, {55, 60});
  user.press(*window, {55, 60});
  user.dragTo({5, 5});
  EXPECT_EQ(nativeOf(*window).cursor(), tessaluna::backend::CursorShape::PointingHand);
  user.release();
  EXPECT_EQ(nativeOf(*window).cursor(), tessaluna::backend::CursorShape::Arrow);
}

TEST_F(ViewTrackingTest, AViewWithoutACursorOfItsOwnShowsThatOfTheViewBehind) {
  const auto v = make<HandView>(CGRect{50, 50, 40, 40});
  v->addSubview(view({0, 0, 40, 40}));
  window = showWindowWith(v);
  user.moveTo(*window, {55, 60});
  EXPECT_EQ(nativeOf(*window).cursor(), tessaluna::backend::CursorShape::PointingHand);
}
