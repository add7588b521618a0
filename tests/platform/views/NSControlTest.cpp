#include "tessaluna/platform/views/NSControl.h"

#include "tessaluna/platform/foundation/NSCoder.h"

#include <gmock/gmock.h>

#include "tessaluna/platform/text/NSFont.h"
#include "tests/harness/ActionProbe.h"
#include "tests/harness/StillWorld.h"
#include "tests/harness/printing.h"

using namespace tessaluna::platform;
using testing::ElementsAre;

namespace {

class LoggingCell : public NSCell {
 public:
  std::vector<std::string> log;
  bool starts = true, goesOn = true, untilMouseUp = false;
  std::vector<CGPoint> points;
  std::function<void()> onContinue, onStop;

  bool prefersTrackingUntilMouseUp() const override { return untilMouseUp; }

  bool startTrackingAt(CGPoint start, NSView&) override {
    log.push_back("start");
    points.push_back(start);
    return starts;
  }
  bool continueTracking(CGPoint last, CGPoint current, NSView&) override {
    log.push_back("continue");
    points.insert(points.end(), {last, current});
    if (onContinue) onContinue();
    return goesOn;
  }
  void stopTracking(CGPoint last, CGPoint stop, NSView&, bool mouseIsUp) override {
    log.push_back(mouseIsUp ? "stop, up" : "stop");
    points.insert(points.end(), {last, stop});
    if (onStop) onStop();
  }
};

using Target = harness::ActionProbe;

// A control of 40 by 40 at (10, 10) with a cell that logs; (0, 0) of the control is its upper left corner.
class NSControlTest : public harness::StillWorld {
 protected:
  NSControlTest() : cell(make<LoggingCell>()), target(make<Target>()) {
    control = make<NSControl>(CGRect{10, 10, 40, 40});
    control->setCell(cell);
    control->setTarget(target);
    control->setAction("act:");
    window = showWindowWith(control);
  }
  static constexpr CGPoint inside{15, 45}, outside{100, 100};
  Ref<LoggingCell> cell;
  Ref<Target> target;
  Ref<NSControl> control;
  Ref<NSWindow> window;
};

}  // namespace

TEST_F(NSControlTest, IsFlippedAndHasACellFromTheStart) {
  const auto fresh = make<NSControl>(NSZeroRect);
  EXPECT_TRUE(fresh->isFlipped());
  ASSERT_NE(fresh->cell(), nullptr);
  EXPECT_EQ(fresh->cell()->controlView(), fresh.get());
  EXPECT_TRUE(fresh->isEnabled());
}

TEST_F(NSControlTest, IsDecodedWithItsCell) {
  NSCoder coder(R"({"frame": [1, 2, 3, 4], "action": "act:",
                    "cell": {"enabled": false, "state": 1, "tag": 7, "highlighted": true}})");
  const auto decoded = make<NSControl>(coder);
  EXPECT_EQ(decoded->frame(), (CGRect{1, 2, 3, 4}));
  EXPECT_EQ(decoded->action(), "act:");
  EXPECT_FALSE(decoded->isEnabled());
  EXPECT_TRUE(decoded->isHighlighted());
  EXPECT_EQ(decoded->tag(), 7);
  EXPECT_EQ(decoded->cell()->state(), NSControlStateValueOn);
}

TEST_F(NSControlTest, AnUnknownDecodedStateReadsAsMissing) {
  for (const char* json : {R"({"cell": {"state": 99}})", R"({"cell": {"state": -99}})", R"({"cell": {"state": "no"}})"}) {
    NSCoder coder(json);
    EXPECT_EQ(make<NSControl>(coder)->cell()->state(), NSControlStateValueOff) << json;
  }
}

TEST_F(NSControlTest, ACellThatWasTakenAwayKnowsNoControl) {
  control->setCell(nullptr);
  EXPECT_EQ(cell->controlView(), nullptr);
  EXPECT_FALSE(control->isEnabled());
  EXPECT_FALSE(control->isHighlighted());
  user.click(*window, {20, 20});
  EXPECT_EQ(target->acts, 0);
}

TEST_F(NSControlTest, ACellThatOutlivesItsControlKnowsNone) {
  control->removeFromSuperview();
  control.reset();
  EXPECT_EQ(cell->controlView(), nullptr);
}

TEST_F(NSControlTest, ACellThatAnotherControlHasTakenBelongsToThatOne) {
  auto other = make<NSControl>(CGRect{60, 10, 40, 40});
  other->setCell(cell);
  control->setCell(make<NSCell>());
  EXPECT_EQ(cell->controlView(), other.get());
  control->setCell(cell);
  other.reset();
  EXPECT_EQ(cell->controlView(), control.get());
}

TEST_F(NSControlTest, APressIsTrackedFromStartToStopInTheControlsSpace) {
  user.press(*window, {15, 45});
  user.dragTo({20, 40});
  user.dragTo({25, 35});
  user.release();
  EXPECT_THAT(cell->log, ElementsAre("start", "continue", "continue", "stop, up"));
  EXPECT_THAT(cell->points, ElementsAre(CGPoint{5, 5}, CGPoint{5, 5}, CGPoint{10, 10}, CGPoint{10, 10}, CGPoint{15, 15},
                                        CGPoint{15, 15}, CGPoint{15, 15}));
  EXPECT_EQ(target->acts, 1);
}

TEST_F(NSControlTest, AReleaseOutsideIsNotAClick) {
  user.press(*window, {15, 45});
  user.dragTo({100, 100});
  user.release();
  EXPECT_EQ(cell->log.back(), "stop");
  EXPECT_EQ(target->acts, 0);
}

TEST_F(NSControlTest, TrackingStopsWhereThePointerLeavesAndStartsAgainWhereItComesBack) {
  user.press(*window, inside);
  user.dragTo(outside);
  EXPECT_THAT(cell->log, ElementsAre("start", "stop"));
  EXPECT_FALSE(control->isHighlighted());
  user.dragTo({120, 100});
  user.dragTo(inside);
  EXPECT_THAT(cell->log, ElementsAre("start", "stop", "start"));
  EXPECT_TRUE(control->isHighlighted());
  user.release();
  EXPECT_THAT(cell->log, ElementsAre("start", "stop", "start", "stop, up"));
  EXPECT_EQ(target->acts, 1);
}

TEST_F(NSControlTest, ACellThatPrefersItIsTrackedOutsideAndClickedThere) {
  cell->untilMouseUp = true;
  user.press(*window, inside);
  user.dragTo(outside);
  user.dragTo(inside);
  user.dragTo(outside);
  EXPECT_TRUE(control->isHighlighted());
  EXPECT_EQ(target->acts, 0);
  user.release();
  EXPECT_THAT(cell->log, ElementsAre("start", "continue", "continue", "continue", "stop, up"));
  EXPECT_FALSE(control->isHighlighted());
  EXPECT_EQ(target->acts, 1);
}

TEST_F(NSControlTest, AReleaseOutsideThatNoDragAnnouncedStopsTheTrackingWithoutAClick) {
  user.press(*window, inside);
  NSApp->sendEvent(make<NSEvent>(NSEvent::Fields{.type = NSEventType::LeftMouseUp, .location = outside, .window = window}));
  EXPECT_THAT(cell->log, ElementsAre("start", "stop, up"));
  EXPECT_FALSE(control->isHighlighted());
  EXPECT_EQ(target->acts, 0);
}

TEST_F(NSControlTest, AReleaseInsideThatNoDragAnnouncedIsAClick) {
  user.press(*window, inside);
  user.dragTo(outside);
  NSApp->sendEvent(make<NSEvent>(NSEvent::Fields{.type = NSEventType::LeftMouseUp, .location = inside, .window = window}));
  EXPECT_THAT(cell->log, ElementsAre("start", "stop", "start", "stop, up"));
  EXPECT_EQ(target->acts, 1);
}

// When the action is sent.

TEST_F(NSControlTest, AContinuousCellSendsWithEachDragAndAtTheRelease) {
  control->setContinuous(true);
  EXPECT_TRUE(control->isContinuous());
  user.press(*window, inside);
  EXPECT_EQ(target->acts, 0);
  user.dragTo({16, 45});
  EXPECT_EQ(target->acts, 1);
  user.dragTo(outside);  // stops the tracking
  EXPECT_EQ(target->acts, 1);
  user.dragTo(inside);  // starts it again
  EXPECT_EQ(target->acts, 1);
  user.dragTo({16, 45});
  EXPECT_EQ(target->acts, 2);
  user.release();
  EXPECT_EQ(target->acts, 3);
}

TEST_F(NSControlTest, AContinuousCellThatPrefersItSendsWithDragsOutsideToo) {
  control->setContinuous(true);
  cell->untilMouseUp = true;
  user.press(*window, inside);
  user.dragTo(outside);
  user.dragTo({120, 100});
  EXPECT_EQ(target->acts, 2);
}

TEST_F(NSControlTest, TheActionIsSentAtThePressAloneIfThatIsAskedFor) {
  EXPECT_EQ(control->sendActionOn(NSEventMaskLeftMouseDown), NSEventMaskLeftMouseUp);
  user.press(*window, inside);
  EXPECT_EQ(target->acts, 1);
  user.dragTo({16, 45});
  user.dragTo(outside);
  user.dragTo(inside);
  user.release();
  EXPECT_EQ(target->acts, 1);
}

TEST_F(NSControlTest, ACellThatDoesNotStartSendsNoActionAtThePress) {
  control->sendActionOn(NSEventMaskLeftMouseDown);
  cell->starts = false;
  user.press(*window, inside);
  EXPECT_EQ(target->acts, 0);
}

TEST_F(NSControlTest, ADragThatTheCellEndsSendsNoAction) {
  control->setContinuous(true);
  cell->goesOn = false;
  user.press(*window, inside);
  user.dragTo({16, 45});
  EXPECT_EQ(target->acts, 0);
}

TEST_F(NSControlTest, TheControlMayBeReleasedInsideAnActionOfATrackedPress) {
  const WeakRef<NSControl> weak = control;
  control->sendActionOn(NSEventMaskLeftMouseDown);
  target->onAct = [&] {
    control->removeFromSuperview();
    control.reset();
  };
  user.press(*window, inside);
  EXPECT_TRUE(weak.expired());
  EXPECT_EQ(cell->log.back(), "stop");
}

// What ends a press.

TEST_F(NSControlTest, AControlThatIsDisabledEndsThePressWithoutAnAction) {
  user.press(*window, inside);
  control->setEnabled(false);
  EXPECT_THAT(cell->log, ElementsAre("start", "stop"));
  EXPECT_FALSE(control->isHighlighted());
  control->setEnabled(true);
  user.dragTo(outside);
  user.dragTo(inside);
  EXPECT_FALSE(control->isHighlighted());
  user.release();
  EXPECT_EQ(target->acts, 0);
  EXPECT_THAT(cell->log, ElementsAre("start", "stop"));
}

TEST_F(NSControlTest, AControlThatIsDisabledWhileThePointerIsAwayEndsThePress) {
  user.press(*window, inside);
  user.dragTo(outside);
  control->setEnabled(false);
  control->setEnabled(true);
  user.dragTo(inside);
  EXPECT_FALSE(control->isHighlighted());
  user.release();
  EXPECT_EQ(target->acts, 0);
}

TEST_F(NSControlTest, ACellThatIsDisabledEndsThePressAtTheNextEvent) {
  user.press(*window, inside);
  cell->setEnabled(false);
  user.dragTo({16, 45});
  EXPECT_THAT(cell->log, ElementsAre("start", "stop"));
  EXPECT_FALSE(control->isHighlighted());
  cell->setEnabled(true);
  user.release();
  EXPECT_EQ(target->acts, 0);
  user.press(*window, inside);
  cell->setEnabled(false);
  user.release();
  EXPECT_EQ(target->acts, 0);
  EXPECT_FALSE(control->isHighlighted());
}

TEST_F(NSControlTest, ACellThatIsDisabledWhileThePointerIsAwayIsNotTrackedByARelease) {
  user.press(*window, inside);
  user.dragTo(outside);
  cell->setEnabled(false);
  cell->log.clear();
  control->mouseUp(make<NSEvent>(NSEvent::Fields{.type = NSEventType::LeftMouseUp, .location = inside, .window = window}));
  EXPECT_THAT(cell->log, ElementsAre());
  EXPECT_EQ(target->acts, 0);
}

TEST_F(NSControlTest, APressAfterOneWhoseReleaseNeverCameEndsThatFirst) {
  const auto down = make<NSEvent>(NSEvent::Fields{.type = NSEventType::LeftMouseDown, .location = inside, .window = window});
  control->mouseDown(down);
  control->mouseDown(down);
  EXPECT_THAT(cell->log, ElementsAre("start", "stop", "start"));
  EXPECT_EQ(target->acts, 0);
}

TEST_F(NSControlTest, AControlThatGetsAnotherCellEndsThePressOfTheFirst) {
  const auto other = make<LoggingCell>();
  user.press(*window, inside);
  desktop.settle();
  nativeOf(*window).forgetPaints();
  control->setCell(other);
  EXPECT_THAT(cell->log, ElementsAre("start", "stop"));
  EXPECT_FALSE(cell->isHighlighted());
  EXPECT_FALSE(other->isHighlighted());
  EXPECT_TRUE(control->needsDisplay());
  user.dragTo({16, 45});
  user.release();
  EXPECT_THAT(other->log, ElementsAre());
  EXPECT_EQ(target->acts, 0);
}

TEST_F(NSControlTest, ACopyOfThePressedCellInItsPlaceIsNotPressed) {
  user.press(*window, inside);
  control->setCell(cell->copy());
  EXPECT_FALSE(control->isHighlighted());
  user.release();
  EXPECT_EQ(target->acts, 0);
  // Without a press a cell comes as it is.
  const auto shining = make<NSCell>();
  shining->setHighlighted(true);
  control->setCell(shining);
  EXPECT_TRUE(control->isHighlighted());
}

TEST_F(NSControlTest, AnotherLookIsTheCellsAndIsLaidOutAndDrawnAgain) {
  const auto asksForBoth = [&](const auto& change) {
    desktop.settle();
    if (control->needsDisplay() || window->contentView()->needsLayout()) return false;
    change();
    return control->needsDisplay() && window->contentView()->needsLayout();
  };
  const auto font = NSFont::systemFontOfSize(30);
  EXPECT_TRUE(asksForBoth([&] { control->setFont(font); }));
  EXPECT_TRUE(asksForBoth([&] { control->setAlignment(NSTextAlignmentRight); }));
  EXPECT_TRUE(asksForBoth([&] { control->setLineBreakMode(NSLineBreakByTruncatingTail); }));
  EXPECT_TRUE(asksForBoth([&] { control->setStringValue("text"); }));
  EXPECT_EQ(cell->font(), font);
  EXPECT_EQ(cell->alignment(), NSTextAlignmentRight);
  EXPECT_EQ(cell->lineBreakMode(), NSLineBreakByTruncatingTail);
}

TEST_F(NSControlTest, AnotherCellGetsTheRoomThatItNeeds) {
  window->layoutIfNeeded();
  ASSERT_FALSE(window->contentView()->needsLayout());
  control->setCell(make<NSCell>("another"));
  EXPECT_TRUE(window->contentView()->needsLayout());
}

TEST_F(NSControlTest, ACellMayEndThePressWhileItTracks) {
  cell->onContinue = [&] { control->setEnabled(false); };
  control->setContinuous(true);
  user.press(*window, inside);
  user.dragTo({16, 45});
  EXPECT_THAT(cell->log, ElementsAre("start", "continue", "stop"));
  EXPECT_FALSE(control->isHighlighted());
  EXPECT_EQ(target->acts, 0);
}

TEST_F(NSControlTest, ACellMayTakeItsOwnPlaceAwayWhileItTracks) {
  cell->onContinue = [&] { control->setCell(nullptr); };
  control->setContinuous(true);
  user.press(*window, inside);
  user.dragTo({16, 45});
  user.release();
  EXPECT_THAT(cell->log, ElementsAre("start", "continue", "stop"));
  EXPECT_EQ(target->acts, 0);
}

TEST_F(NSControlTest, AnActionMayDisableTheControlInMidPress) {
  control->setContinuous(true);
  target->onAct = [&] { control->setEnabled(false); };
  user.press(*window, inside);
  user.dragTo({16, 45});
  user.dragTo({17, 45});
  user.release();
  EXPECT_EQ(target->acts, 1);
  EXPECT_FALSE(control->isHighlighted());
}

// The value.

TEST_F(NSControlTest, ItsValueIsTheCells) {
  control->setDoubleValue(2.5);
  EXPECT_EQ(cell->doubleValue(), 2.5);
  cell->setIntegerValue(7);
  EXPECT_EQ(control->integerValue(), 7);
  EXPECT_EQ(control->stringValue(), "7");
  EXPECT_EQ(control->objectValue(), cell->objectValue());
}

TEST_F(NSControlTest, AValueThatIsSetAsksForARedrawAndNotifiesAssistiveClients) {
  int changes = 0;
  const Ref<NSObject> token = accessibilityNotificationCenter().addObserverForName(
      NSAccessibilityValueChangedNotification, cell, nullptr, [&](const Ref<NSNotification>&) { ++changes; });
  control->setIntegerValue(3);
  EXPECT_TRUE(control->needsDisplay());
  EXPECT_EQ(changes, 1);
  accessibilityNotificationCenter().removeObserver(token);
}

TEST_F(NSControlTest, WithoutACellItHasNoValue) {
  control->setCell(nullptr);
  control->setDoubleValue(2);
  EXPECT_EQ(control->doubleValue(), 0);
  EXPECT_EQ(control->objectValue(), nullptr);
  EXPECT_EQ(control->attributedStringValue()->length(), 0u);
  EXPECT_FALSE(control->isContinuous());
}

TEST_F(NSControlTest, WithoutACellItHasNoLookAndNoBaseline) {
  control->setCell(nullptr);
  control->setFont(NSFont::systemFontOfSize(30));
  control->setAlignment(NSTextAlignmentRight);
  control->setLineBreakMode(NSLineBreakByTruncatingTail);
  control->setContinuous(true);
  EXPECT_EQ(control->font(), nullptr);
  EXPECT_EQ(control->firstBaselineOffsetFromTop(), 0);
  EXPECT_EQ(control->lastBaselineOffsetFromBottom(), 0);
}

TEST_F(NSControlTest, AFontThatIsSetMakesNoFieldEditor) {
  control->setFont(NSFont::systemFontOfSize(30));
  EXPECT_EQ(window->fieldEditor(false, nullptr), nullptr);
}

// Its highlight is not the press's.
class ShiningCell : public LoggingCell {
 public:
  bool isHighlightedByPress() const override { return false; }
};

TEST_F(NSControlTest, AHighlightThatIsNotThePressesOutlivesAPressThatTheCellRefuses) {
  const auto shining = make<ShiningCell>();
  shining->starts = false;
  control->setCell(shining);
  control->setHighlighted(true);
  user.click(*window, inside);
  EXPECT_THAT(shining->log, ElementsAre("start"));
  EXPECT_TRUE(control->isHighlighted());
}

TEST_F(NSControlTest, ACellWithAHighlightOfItsOwnKeepsItInThePressedOnesPlace) {
  user.press(*window, inside);
  const auto shining = make<ShiningCell>();
  shining->setHighlighted(true);
  control->setCell(shining);
  EXPECT_TRUE(control->isHighlighted());
}

TEST_F(NSControlTest, ACellThatDoesNotStartIsNotTracked) {
  cell->starts = false;
  user.press(*window, {15, 45});
  EXPECT_FALSE(control->isHighlighted());
  user.dragTo({16, 45});
  user.release();
  EXPECT_THAT(cell->log, ElementsAre("start"));
  EXPECT_EQ(target->acts, 0);
}

TEST_F(NSControlTest, ACellThatDoesNotContinueEndsThePress) {
  user.press(*window, {15, 45});
  cell->goesOn = false;
  user.dragTo({20, 40});
  EXPECT_FALSE(control->isHighlighted());
  user.dragTo({25, 35});
  user.release();
  EXPECT_THAT(cell->log, ElementsAre("start", "continue", "stop"));
  EXPECT_EQ(target->acts, 0);
}

TEST_F(NSControlTest, ACellThatEndsThePressLearnsFromWhereAndWhere) {
  user.press(*window, {15, 45});
  cell->goesOn = false;
  user.dragTo({20, 40});
  ASSERT_EQ(cell->points.size(), 5u);
  EXPECT_EQ(cell->points[3], (CGPoint{5, 5}));
  EXPECT_EQ(cell->points[4], (CGPoint{10, 10}));
}

TEST_F(NSControlTest, MouseDownFlagsAreZeroBeforeAPress) { EXPECT_EQ(cell->mouseDownFlags(), 0u); }

TEST_F(NSControlTest, MouseDownFlagsAreTheModifiersOfTheLastPress) {
  user.click(*window, {15, 45}, {.modifiers = NSEventModifierFlagShift | NSEventModifierFlagCommand});
  EXPECT_EQ(cell->mouseDownFlags(), std::uint32_t{NSEventModifierFlagShift | NSEventModifierFlagCommand});
  user.click(*window, {15, 45});
  EXPECT_EQ(cell->mouseDownFlags(), 0u);
}

TEST_F(NSControlTest, MouseDownFlagsHoldNoBitsOfADevice) {
  user.click(*window, {15, 45}, {.modifiers = NSEventModifierFlagShift | 0x102});
  EXPECT_EQ(cell->mouseDownFlags(), NSEventModifierFlagShift);
}

TEST_F(NSControlTest, MouseDownFlagsAreNotThoseOfARightPress) {
  user.click(*window, {15, 45}, {.button = 1, .modifiers = NSEventModifierFlagShift});
  EXPECT_EQ(cell->mouseDownFlags(), 0u);
}

TEST_F(NSControlTest, AControlThatLeavesItsWindowStopsTracking) {
  user.press(*window, {15, 45});
  control->removeFromSuperview();
  EXPECT_EQ(cell->log.back(), "stop");
  EXPECT_FALSE(control->isHighlighted());
  user.release();
  EXPECT_EQ(target->acts, 0);
}

TEST_F(NSControlTest, AControlThatIsHiddenStopsTracking) {
  user.press(*window, {15, 45});
  control->setHidden(true);
  EXPECT_EQ(cell->log, (std::vector<std::string>{"start", "stop"}));
  EXPECT_FALSE(control->isHighlighted());
  control->setHidden(false);
  user.dragTo({16, 44});
  EXPECT_FALSE(control->isHighlighted());
  user.release();
  EXPECT_EQ(target->acts, 0);
}

TEST_F(NSControlTest, AControlThatIsHiddenWithAViewAboveItStopsTracking) {
  user.press(*window, {15, 45});
  window->contentView()->setHidden(true);
  EXPECT_EQ(cell->log.back(), "stop");
  EXPECT_FALSE(control->isHighlighted());
  user.release();
  EXPECT_EQ(target->acts, 0);
}

TEST_F(NSControlTest, WithoutAnApplicationTheActionStillReachesItsTarget) {
  NSApp.reset();
  EXPECT_TRUE(control->sendActionTo("act:", target));
  EXPECT_FALSE(control->sendActionTo("act:", nullptr));
  EXPECT_EQ(target->acts, 1);
}

TEST_F(NSControlTest, AControlBelowAViewThatDisablesItTakesNoPressAndIsAfterwardsAsItWas) {
  const auto disabled = make<NSControl>(CGRect{60, 10, 40, 40});
  disabled->setEnabled(false);
  window->contentView()->addSubview(disabled);
  window->contentView()->setEnablesControls(false);
  EXPECT_FALSE(control->isEnabled());
  EXPECT_FALSE(cell->isAccessibilityEnabled());
  user.press(*window, {15, 45});
  user.release();
  EXPECT_EQ(target->acts, 0);
  EXPECT_THAT(cell->log, ElementsAre());
  const auto late = make<NSControl>(CGRect{110, 10, 40, 40});
  window->contentView()->addSubview(late);
  EXPECT_FALSE(late->isEnabled());

  window->contentView()->setEnablesControls(true);
  EXPECT_TRUE(control->isEnabled());
  EXPECT_TRUE(late->isEnabled());
  EXPECT_FALSE(disabled->isEnabled());
  user.press(*window, {15, 45});
  user.release();
  EXPECT_EQ(target->acts, 1);
}

TEST_F(NSControlTest, WhatIsSetWhileItIsDisabledFromAboveCountsAfterwards) {
  window->contentView()->setEnablesControls(false);
  control->setEnabled(true);
  EXPECT_FALSE(control->isEnabled());
  control->setEnabled(false);
  window->contentView()->setEnablesControls(true);
  EXPECT_FALSE(control->isEnabled());
}

TEST_F(NSControlTest, AControlThatIsDisabledFromAboveStopsTracking) {
  user.press(*window, {15, 45});
  nativeOf(*window).forgetPaints();
  window->contentView()->setEnablesControls(false);
  EXPECT_EQ(cell->log.back(), "stop");
  EXPECT_FALSE(control->isHighlighted());
  user.release();
  EXPECT_EQ(target->acts, 0);
  desktop.settle();
  EXPECT_EQ(nativeOf(*window).paints().size(), 1u);
}

TEST_F(NSControlTest, AssistiveClientsObserveAControlThatIsDisabledFromAbove) {
  int changes = 0;
  const Ref<NSObject> token = accessibilityNotificationCenter().addObserverForName(
      NSAccessibilityEnabledChangedNotification, cell, nullptr, [&](const Ref<NSNotification>&) { ++changes; });
  window->contentView()->setEnablesControls(false);
  EXPECT_EQ(changes, 1);
  accessibilityNotificationCenter().removeObserver(token);
}

TEST_F(NSControlTest, EnablingAndHighlightingAskForARedraw) {
  nativeOf(*window).forgetPaints();
  control->setEnabled(false);
  desktop.settle();
  EXPECT_EQ(nativeOf(*window).paints().size(), 1u);
  control->setHighlighted(true);
  desktop.settle();
  EXPECT_EQ(nativeOf(*window).paints().size(), 2u);
  control->setHighlighted(true);
  desktop.settle();
  EXPECT_EQ(nativeOf(*window).paints().size(), 2u);
}

TEST_F(NSControlTest, ACellThatIsTakenAwayAsAPressEndsALostPressTracksNoNewOne) {
  const auto press = make<NSEvent>(
      NSEvent::Fields{.type = NSEventType::LeftMouseDown, .location = inside, .window = window, .clickCount = 1});
  control->mouseDown(press);
  cell->onStop = [&] { control->setCell(nullptr); };
  control->mouseDown(press);
  EXPECT_EQ(control->cell(), nullptr);
  EXPECT_THAT(cell->log, ElementsAre("start", "stop"));
}
