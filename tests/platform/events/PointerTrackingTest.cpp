#include "tessaluna/platform/events/PointerTracking.h"

#include "tessaluna/platform/events/NSCursor.h"
#include "tessaluna/platform/events/NSTrackingArea.h"
#include "tests/harness/ProbeView.h"
#include "tests/harness/StillWorld.h"
#include "tests/harness/printing.h"

using namespace tessaluna::platform;
using harness::ProbeView;

namespace {

using Log = std::vector<std::string>;

class CursorView : public NSView {
 public:
  using NSView::NSView;
  void resetCursorRects() override {
    ++resets;
    addCursorRect(bounds(), NSCursor::pointingHandCursor());
  }
  int resets = 0;
};

constexpr auto always = NSTrackingActiveAlways | NSTrackingMouseEnteredAndExited;

// Two views beside each other in a window of 200 by 150 points, and what they are told, in order: "left entered", ...
class PointerTrackingTest : public harness::StillWorld {
 protected:
  PointerTrackingTest() {
    window = showWindow();
    for (ProbeView* view : {left.get(), right.get()}) window->contentView()->addSubview(refTo<NSView>(*view));
    listen(*left, "left");
    listen(*right, "right");
  }

  void listen(ProbeView& view, const std::string& name) {
    view.onCall = [this, name](const std::string& call) { log.push_back(name + " " + call); };
  }

  static Ref<NSTrackingArea> addArea(ProbeView& view, std::uint32_t options = always | NSTrackingInVisibleRect,
                                     CGRect rect = NSZeroRect) {
    const auto area = make<NSTrackingArea>(rect, options, refTo<NSResponder>(view));
    view.addTrackingArea(area);
    return area;
  }

  Log taken() { return std::exchange(log, {}); }

  Ref<NSWindow> window;
  Ref<ProbeView> left = make<ProbeView>(CGRect{0, 0, 100, 100}), right = make<ProbeView>(CGRect{100, 0, 100, 100});
  Log log;
};

constexpr CGPoint inLeft{50, 50}, inRight{150, 50}, inNeither{50, 140};

}  // namespace

TEST_F(PointerTrackingTest, ExitsComeBeforeEntries) {
  addArea(*left);
  addArea(*right);
  user.moveTo(*window, inRight);
  taken();
  user.moveTo(*window, inLeft);
  EXPECT_EQ(taken(), (Log{"right mouseExited", "left mouseEntered"}));
}

TEST_F(PointerTrackingTest, APressedViewThatLeavesStillExitsTheAreasThatItOwnsInOthers) {
  const auto front = make<ProbeView>(CGRect{0, 0, 100, 100});
  window->contentView()->addSubview(front);
  listen(*front, "front");
  const auto area = make<NSTrackingArea>(NSZeroRect, always | NSTrackingInVisibleRect, refTo<NSResponder>(*front));
  left->addTrackingArea(area);
  user.press(*window, inLeft);
  user.release();
  taken();
  user.moveTo(*window, {51, 51});
  user.press(*window, {51, 51});
  taken();
  front->removeFromSuperview();
  EXPECT_EQ(taken(), (Log{"front mouseExited", "front mouseUp"}));
  user.release();
  EXPECT_EQ(taken(), Log{});
  user.moveTo(*window, inNeither);
  EXPECT_EQ(taken(), Log{"front mouseExited"});
}

TEST_F(PointerTrackingTest, EntriesComeBeforeMovesAndBehindBeforeFront) {
  const auto front = make<ProbeView>(CGRect{0, 0, 100, 100});
  left->addSubview(front);
  listen(*front, "front");
  addArea(*left, always | NSTrackingMouseMoved | NSTrackingInVisibleRect);
  addArea(*front, always | NSTrackingMouseMoved | NSTrackingInVisibleRect);
  user.moveTo(*window, inLeft);
  EXPECT_EQ(taken(), (Log{"left mouseEntered", "front mouseEntered", "left mouseMoved", "front mouseMoved"}));
}

TEST_F(PointerTrackingTest, TheEventNamesItsAreaAndThePlace) {
  const auto area = addArea(*left);
  user.moveTo(*window, inLeft);
  ASSERT_EQ(left->events.size(), 1u);
  EXPECT_EQ(left->events[0]->type(), NSEventType::MouseEntered);
  EXPECT_EQ(left->events[0]->trackingArea(), area);
  EXPECT_EQ(left->events[0]->locationInWindow(), inLeft);
}

TEST_F(PointerTrackingTest, AnAreaThatAppearsUnderAStillPointerSendsNothingUntilThePointerMoves) {
  user.moveTo(*window, inLeft);
  addArea(*left);
  desktop.settle();
  EXPECT_EQ(taken(), Log{});
  user.moveTo(*window, {51, 50});
  EXPECT_EQ(taken(), Log{"left mouseEntered"});
}

TEST_F(PointerTrackingTest, AViewThatScrollsAwayUnderAStillPointerIsLeftWithTheNextMove) {
  addArea(*left);
  user.moveTo(*window, inLeft);
  taken();
  window->contentView()->setBoundsOrigin({-100, 0});
  desktop.settle();
  EXPECT_EQ(taken(), Log{});
  user.moveTo(*window, {50, 51});
  EXPECT_EQ(taken(), Log{"left mouseExited"});
}

TEST_F(PointerTrackingTest, AViewThatIsTakenOutUnderAStillPointerSendsNothingByItself) {
  addArea(*left);
  user.moveTo(*window, inLeft);
  taken();
  left->removeFromSuperview();
  desktop.settle();
  EXPECT_EQ(taken(), Log{});
}

TEST_F(PointerTrackingTest, AViewThatWasUsedElsewhereMeanwhileIsNotifiedThatThePointerIsNotThere) {
  addArea(*left);
  user.moveTo(*window, inLeft);
  left->removeFromSuperview();
  left->setFrame({100, 100, 50, 40});
  window->contentView()->addSubview(left);
  taken();
  user.moveTo(*window, {51, 50});
  EXPECT_EQ(taken(), Log{"left mouseExited"});
}

TEST_F(PointerTrackingTest, ARemovedAreaIsNotLeft) {
  const auto area = addArea(*left);
  user.moveTo(*window, inLeft);
  left->removeTrackingArea(area);
  taken();
  user.moveTo(*window, inNeither);
  EXPECT_EQ(taken(), Log{});
}

TEST_F(PointerTrackingTest, AnAreaThatAHandlerTakesAwayGetsNoEntry) {
  const auto area = addArea(*right, always, {-100, 0, 200, 100});
  right->setFrame({0, 0, 100, 100});  // in front of the left one
  addArea(*left);
  left->onCall = [&](const std::string& call) {
    log.push_back("left " + call);
    right->removeTrackingArea(area);
  };
  user.moveTo(*window, inLeft);
  EXPECT_EQ(taken(), Log{"left mouseEntered"});
}

TEST_F(PointerTrackingTest, AViewThatAHandlerTakesOutGetsNoEntry) {
  addArea(*right);
  right->setFrame({0, 0, 100, 100});  // in front of the left one
  addArea(*left);
  left->onCall = [&](const std::string& call) {
    log.push_back("left " + call);
    right->removeFromSuperview();
  };
  user.moveTo(*window, inLeft);
  EXPECT_EQ(taken(), Log{"left mouseEntered"});
}

TEST_F(PointerTrackingTest, AnAreaThatAHandlerTakesAwayGetsNoMove) {
  addArea(*left);
  const auto area = addArea(*left, NSTrackingActiveAlways | NSTrackingMouseMoved | NSTrackingInVisibleRect);
  left->onCall = [&](const std::string& call) {
    log.push_back("left " + call);
    left->removeTrackingArea(area);
  };
  user.moveTo(*window, inLeft);
  EXPECT_EQ(taken(), Log{"left mouseEntered"});
}

TEST_F(PointerTrackingTest, AnAreaInTheVisibleRectEndsWhereASuperviewCutsItOff) {
  const auto hole = make<NSView>(CGRect{0, 0, 30, 30});
  const auto large = make<ProbeView>(CGRect{0, 0, 100, 100});
  hole->addSubview(large);
  left->removeFromSuperview();
  window->contentView()->addSubview(hole);
  listen(*large, "large");
  addArea(*large);
  user.moveTo(*window, {40, 40});
  EXPECT_EQ(taken(), Log{});
  user.moveTo(*window, {20, 20});
  EXPECT_EQ(taken(), Log{"large mouseEntered"});
}

TEST_F(PointerTrackingTest, AnAreaOfTheFirstResponderSleepsOtherwise) {
  left->acceptsFirst = true;
  addArea(*left, NSTrackingMouseEnteredAndExited | NSTrackingActiveWhenFirstResponder | NSTrackingInVisibleRect);
  user.moveTo(*window, inLeft);
  EXPECT_EQ(taken(), Log{});
  window->makeFirstResponder(left.get());
  user.moveTo(*window, {51, 50});
  EXPECT_EQ(left->calls.back(), "mouseEntered");
}

TEST_F(PointerTrackingTest, AnAreaWithoutAnActiveOptionSleeps) {
  addArea(*left, NSTrackingMouseEnteredAndExited | NSTrackingInVisibleRect);
  user.moveTo(*window, inLeft);
  EXPECT_EQ(taken(), Log{});
}

TEST_F(PointerTrackingTest, ADragOutAndBackIsAnExitAtOnceAndAnEntryAtTheRelease) {
  addArea(*left);
  user.moveTo(*window, inLeft);
  user.press(*window, inLeft);
  taken();
  user.dragTo(inNeither);
  EXPECT_EQ(taken(), (Log{"left mouseExited", "left mouseDragged"}));
  user.dragTo(inLeft);
  EXPECT_EQ(taken(), Log{"left mouseDragged"});
  user.release();
  EXPECT_EQ(taken(), (Log{"left mouseUp", "left mouseEntered"}));
}

TEST_F(PointerTrackingTest, AReleaseOutsideTheWindowLeavesWhatWasEntered) {
  addArea(*left, always | NSTrackingInVisibleRect | NSTrackingEnabledDuringMouseDrag);
  user.moveTo(*window, inLeft);
  user.press(*window, inLeft);
  user.dragTo({-30, -30});
  user.release();
  EXPECT_EQ(left->calls.back(), "mouseUp");
  taken();
  user.moveTo(*window, inLeft);
  EXPECT_EQ(taken(), Log{"left mouseEntered"});
}

TEST_F(PointerTrackingTest, MovesAreNotSentWhileAButtonIsDown) {
  addArea(*left, always | NSTrackingMouseMoved | NSTrackingInVisibleRect);
  user.moveTo(*window, inLeft);
  user.press(*window, inLeft);
  taken();
  user.dragTo({60, 60});
  EXPECT_EQ(taken(), Log{"left mouseDragged"});
}

TEST_F(PointerTrackingTest, TheReleaseOfADragIsAMoveForThoseWhoAskForMoves) {
  addArea(*left, always | NSTrackingMouseMoved | NSTrackingInVisibleRect);
  user.moveTo(*window, inLeft);
  user.press(*window, inLeft);
  user.dragTo({60, 60});
  taken();
  user.release();
  EXPECT_EQ(taken(), (Log{"left mouseUp", "left mouseMoved"}));
  user.press(*window, {60, 60});
  user.release();
  EXPECT_EQ(taken(), (Log{"left mouseDown", "left mouseUp"})) << "a click is no move";
}

TEST_F(PointerTrackingTest, APressUnderAStillPointerEntersNothing) {
  addArea(*left);
  user.press(*window, inLeft);
  EXPECT_EQ(taken(), Log{"left mouseDown"});
  user.release();
  EXPECT_EQ(taken(), (Log{"left mouseUp", "left mouseEntered"}));
}

// Cursors.

TEST_F(PointerTrackingTest, TheHandShowsOverItsRectangleAndTheArrowBeside) {
  const auto view = make<CursorView>(CGRect{0, 100, 50, 50});
  window->contentView()->addSubview(view);
  user.moveTo(*window, {20, 120});
  EXPECT_EQ(nativeOf(*window).cursor(), tessaluna::backend::CursorShape::PointingHand);
  user.moveTo(*window, {80, 120});
  EXPECT_EQ(nativeOf(*window).cursor(), tessaluna::backend::CursorShape::Arrow);
}

TEST_F(PointerTrackingTest, CursorRectanglesAreAskedForOnceUntilTheyAreInvalidated) {
  const auto view = make<CursorView>(CGRect{0, 100, 50, 50});
  window->contentView()->addSubview(view);
  user.moveTo(*window, {20, 120});
  user.moveTo(*window, {21, 120});
  EXPECT_EQ(view->resets, 1);
  window->invalidateCursorRectsForView(*view);
  EXPECT_EQ(view->resets, 1);  // with the next move, not at once
  user.moveTo(*window, {20, 120});
  EXPECT_EQ(view->resets, 2);
}

TEST_F(PointerTrackingTest, CursorRectanglesAreAskedForAgainWhenAViewAboveScrolls) {
  const auto view = make<CursorView>(CGRect{0, 100, 50, 50});
  window->contentView()->addSubview(view);
  user.moveTo(*window, {20, 120});
  window->contentView()->setBoundsOrigin({0, 5});
  user.moveTo(*window, {20, 121});
  EXPECT_EQ(view->resets, 2);
}

TEST_F(PointerTrackingTest, CursorsAreOneObjectForEachShape) {
  EXPECT_EQ(NSCursor::pointingHandCursor(), NSCursor::pointingHandCursor());
  EXPECT_EQ(NSCursor::IBeamCursor()->shape(), tessaluna::backend::CursorShape::IBeam);
  EXPECT_EQ(NSCursor::resizeLeftRightCursor()->shape(), tessaluna::backend::CursorShape::ResizeLeftRight);
  EXPECT_EQ(NSCursor::resizeUpDownCursor()->shape(), tessaluna::backend::CursorShape::ResizeUpDown);
  EXPECT_EQ(NSCursor::arrowCursor()->shape(), tessaluna::backend::CursorShape::Arrow);
}

TEST_F(PointerTrackingTest, TheToolTipIsThatOfTheFrontmostViewThatHasOne) {
  const auto inner = make<NSView>(CGRect{25, 25, 50, 50});
  left->addSubview(inner);
  left->setToolTip("left");
  user.moveTo(*window, inNeither);
  EXPECT_EQ(nativeOf(*window).toolTip(), "");
  user.moveTo(*window, inLeft);
  EXPECT_EQ(nativeOf(*window).toolTip(), "left");
  inner->setToolTip("inner");
  EXPECT_EQ(nativeOf(*window).toolTip(), "left");
  user.moveTo(*window, {51, 51});
  EXPECT_EQ(nativeOf(*window).toolTip(), "inner");
  user.moveTo(*window, inRight);
  EXPECT_EQ(nativeOf(*window).toolTip(), "");
}

TEST_F(PointerTrackingTest, APressSendsTheToolTipAwayUntilThePointerMoves) {
  left->setToolTip("left");
  user.moveTo(*window, inLeft);
  user.press(*window, inLeft);
  EXPECT_EQ(nativeOf(*window).toolTip(), "");
  user.release();
  EXPECT_EQ(nativeOf(*window).toolTip(), "");
  user.moveTo(*window, {51, 51});
  EXPECT_EQ(nativeOf(*window).toolTip(), "left");
}

TEST_F(PointerTrackingTest, AToolTipGoesWithThePointerAndWithTheWindow) {
  left->setToolTip("left");
  user.moveTo(*window, inLeft);
  user.leave(*window);
  EXPECT_EQ(nativeOf(*window).toolTip(), "");
  user.moveTo(*window, inLeft);
  EXPECT_EQ(nativeOf(*window).toolTip(), "left");
  window->orderOut(nullptr);
  EXPECT_EQ(nativeOf(*window).toolTip(), "");
}

using PointerTrackingDeathTest = PointerTrackingTest;

TEST_F(PointerTrackingDeathTest, OptionsThatAreNotOfferedStopTheProgram) {
  EXPECT_DEATH(addArea(*left, always | NSTrackingCursorUpdate), "not supported");
  EXPECT_DEATH(addArea(*left, always | NSTrackingAssumeInside), "not supported");
}
