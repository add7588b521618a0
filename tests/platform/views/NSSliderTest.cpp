#include "tessaluna/platform/views/NSSlider.h"

#include <gmock/gmock.h>

#include <functional>

#include "tessaluna/platform/foundation/NSNotificationCenter.h"
#include "tests/harness/ActionProbe.h"
#include "tests/harness/ProbeView.h"
#include "tests/harness/StillWorld.h"
#include "tests/harness/printing.h"

using namespace tessaluna::platform;
using testing::ElementsAre;

namespace {

// A slider of 116 by 20 at (10, 60) of a window: its value is 0 with the knob's middle at x 18 and 1 at 118.
class NSSliderTest : public harness::StillWorld {
 protected:
  NSSliderTest() {
    slider->setTarget(target);
    slider->setAction("act:");
    target->onAct = [this] { told.push_back(slider->doubleValue()); };
    window->contentView()->addSubview(slider);
    desktop.settle();
    nativeOf(*window).forgetPaints();
  }
  ~NSSliderTest() override { target->onAct = nullptr; }

  void focus() { EXPECT_TRUE(window->makeFirstResponder(slider.get())); }
  // What the target was told since this was asked last.
  std::vector<double> taken() { return std::exchange(told, {}); }
  static CGPoint at(CGFloat x) { return {x, 70}; }

  Ref<NSWindow> window = showWindow();
  Ref<NSSlider> slider = make<NSSlider>(CGRect{10, 60, 116, 20});
  Ref<harness::ActionProbe> target = make<harness::ActionProbe>();
  std::vector<double> told;
};

}  // namespace

TEST_F(NSSliderTest, APressInTheTrackBringsTheKnobThereAndDragsIt) {
  user.press(*window, at(43));
  EXPECT_EQ(slider->doubleValue(), 0.25);
  EXPECT_TRUE(slider->isHighlighted());
  user.dragTo(at(68));
  EXPECT_EQ(slider->doubleValue(), 0.5);
  user.release();
  EXPECT_FALSE(slider->isHighlighted());
  EXPECT_THAT(taken(), ElementsAre(0.25, 0.5, 0.5));
}

TEST_F(NSSliderTest, APressWhoseWindowIsHiddenOrWhoseReleaseIsLostEndsWithoutAnAction) {
  slider->setContinuous(false);
  user.press(*window, at(43));
  window->orderOut(nullptr);
  EXPECT_FALSE(slider->isHighlighted());
  EXPECT_TRUE(taken().empty());
  window->orderFront(nullptr);
  user.press(*window, at(43));
  user.loseRelease();
  user.moveTo(*window, at(68));
  EXPECT_FALSE(slider->isHighlighted());
  EXPECT_TRUE(taken().empty());
}

TEST_F(NSSliderTest, AKnobIsDraggedByThePlaceWhereItWasTakenHoldOf) {
  slider->setDoubleValue(0.5);
  user.press(*window, at(74));
  EXPECT_EQ(slider->doubleValue(), 0.5);
  EXPECT_TRUE(taken().empty());
  user.dragTo(at(84));
  EXPECT_EQ(slider->doubleValue(), 0.6);
  user.release();
  EXPECT_THAT(taken(), ElementsAre(0.6, 0.6));
}

TEST_F(NSSliderTest, APressBesideTheKnobBringsItsMiddleWhereverItWasTakenHoldOfBefore) {
  slider->setDoubleValue(0.5);
  user.click(*window, at(74));
  user.press(*window, at(28));
  user.dragTo(at(38));
  EXPECT_EQ(slider->doubleValue(), 0.2);
  user.release();
}

TEST_F(NSSliderTest, TheKnobFollowsTheMouseOutsideOfTheSliderAndAReleaseThereCounts) {
  user.press(*window, at(18));
  user.dragTo({93, 3});
  EXPECT_EQ(slider->doubleValue(), 0.75);
  user.dragTo({500, 149});
  EXPECT_EQ(slider->doubleValue(), 1);
  user.dragTo({-20, 149});
  user.release();
  EXPECT_THAT(taken(), ElementsAre(0.75, 1, 0, 0));
}

TEST_F(NSSliderTest, OneThatIsNotContinuousSendsItsActionAtTheReleaseOnly) {
  slider->setContinuous(false);
  user.press(*window, at(43));
  user.dragTo(at(68));
  EXPECT_EQ(slider->doubleValue(), 0.5);
  EXPECT_TRUE(taken().empty());
  user.release();
  EXPECT_THAT(taken(), ElementsAre(0.5));
}

TEST_F(NSSliderTest, AMaskWithThePressSendsTheActionOfAPressOnce) {
  slider->sendActionOn(NSEventMaskLeftMouseDown | NSEventMaskLeftMouseDragged);
  user.press(*window, at(43));
  user.release();
  EXPECT_THAT(taken(), ElementsAre(0.25));
}

TEST_F(NSSliderTest, WhereOnlyTickMarksAreAllowedTheMouseGoesFromOneToTheNext) {
  slider->setNumberOfTickMarks(5);
  slider->setAllowsTickMarkValuesOnly(true);
  user.press(*window, at(50));
  EXPECT_EQ(slider->doubleValue(), 0.25);
  user.dragTo(at(56));
  EXPECT_EQ(slider->doubleValue(), 0.5);
  user.release();
}

TEST_F(NSSliderTest, ADisabledSliderTakesNoPressKeyOrWheel) {
  slider->setEnabled(false);
  user.click(*window, at(43));
  user.scroll(*window, at(43), {0, 48});
  EXPECT_FALSE(window->makeFirstResponder(slider.get()));
  EXPECT_EQ(slider->doubleValue(), 0);
  EXPECT_TRUE(taken().empty());
}

TEST_F(NSSliderTest, TheWheelOverADisabledSliderScrollsWhatItIsIn) {
  const auto around = make<harness::ProbeView>(CGRect{0, 0, 200, 150});
  window->contentView()->addSubview(around);
  around->addSubview(slider);
  user.scroll(*window, at(43), {0, 48});
  EXPECT_EQ(std::count(around->calls.begin(), around->calls.end(), "scrollWheel"), 0);
  slider->setEnabled(false);
  user.scroll(*window, at(43), {0, 48});
  EXPECT_EQ(std::count(around->calls.begin(), around->calls.end(), "scrollWheel"), 1);
}

TEST_F(NSSliderTest, APressEndsWhenTheActionDisablesTheSlider) {
  target->onAct = [this] { slider->setEnabled(false); };
  user.press(*window, at(43));
  user.dragTo(at(68));
  user.release();
  EXPECT_EQ(slider->doubleValue(), 0.25);
  EXPECT_FALSE(slider->isHighlighted());
  EXPECT_EQ(target->acts, 1);
}

TEST_F(NSSliderTest, AnActionMayTakeTheCellAwayAtThePress) {
  target->onAct = [this] { slider->setCell(nullptr); };
  user.press(*window, at(43));
  user.dragTo(at(68));
  user.release();
  EXPECT_EQ(target->acts, 1);
  EXPECT_EQ(slider->maxValue(), 1);
  EXPECT_FALSE(slider->isVertical());
}

TEST_F(NSSliderTest, AVerticalSliderIsDraggedUpward) {
  slider->setFrame({10, 20, 20, 116});
  user.press(*window, {20, 53});
  EXPECT_EQ(slider->doubleValue(), 0.25);
  user.dragTo({100, 103});
  EXPECT_EQ(slider->doubleValue(), 0.75);
  user.release();
}

TEST_F(NSSliderTest, ArrowsGoStepsPageKeysFourHomeAndEndToTheLimits) {
  slider->setMaxValue(100);
  slider->setDoubleValue(50);
  focus();
  for (const char32_t key : {NSRightArrowFunctionKey, NSUpArrowFunctionKey, NSLeftArrowFunctionKey, NSDownArrowFunctionKey,
                             NSPageUpFunctionKey, NSPageDownFunctionKey, NSHomeFunctionKey, NSEndFunctionKey})
    user.pressKey(key);
  EXPECT_THAT(taken(), ElementsAre(55, 60, 55, 50, 70, 50, 0, 100));
}

TEST_F(NSSliderTest, FromRightToLeftTheLeftArrowIsMoreAndThePressIsMirrored) {
  slider->setUserInterfaceLayoutDirection(NSUserInterfaceLayoutDirectionRightToLeft);
  focus();
  user.pressKey(NSLeftArrowFunctionKey);
  user.pressKey(NSUpArrowFunctionKey);
  user.pressKey(NSRightArrowFunctionKey);
  EXPECT_THAT(taken(), ElementsAre(0.05, 0.1, 0.05));
  user.click(*window, at(43));
  EXPECT_EQ(slider->doubleValue(), 0.75);
}

TEST_F(NSSliderTest, FromRightToLeftTheWheelGoesWhereTheKnobGoes) {
  slider->setUserInterfaceLayoutDirection(NSUserInterfaceLayoutDirectionRightToLeft);
  user.scroll(*window, at(30), {48, 1});
  EXPECT_EQ(slider->doubleValue(), 0.05);
}

TEST_F(NSSliderTest, AKeyAtTheLimitChangesNothingSendsNothingAndGoesNoFarther) {
  const auto around = make<harness::ProbeView>(CGRect{0, 0, 200, 150});
  window->contentView()->addSubview(around);
  around->addSubview(slider);
  focus();
  user.pressKey(NSHomeFunctionKey);
  EXPECT_TRUE(taken().empty());
  EXPECT_EQ(std::count(around->calls.begin(), around->calls.end(), "keyDown"), 0);
  user.pressKey("x");
  for (const auto modifier : {NSEventModifierFlagCommand, NSEventModifierFlagShift, NSEventModifierFlagOption})
    user.pressKey(NSRightArrowFunctionKey, modifier);
  EXPECT_EQ(std::count(around->calls.begin(), around->calls.end(), "keyDown"), 4);
}

TEST_F(NSSliderTest, KeysAndWheelWaitWhileTheMouseHoldsTheKnob) {
  focus();
  user.press(*window, at(68));
  user.pressKey(NSEndFunctionKey);
  user.scroll(*window, at(68), {0, 480});
  EXPECT_EQ(slider->doubleValue(), 0.5);
  user.release();
}

TEST_F(NSSliderTest, ANotchOfTheWheelIsAStepAndLessIsLess) {
  user.scroll(*window, at(30), {0, 48});
  user.scroll(*window, at(30), {0, 24});
  user.scroll(*window, at(30), {0, -48});
  EXPECT_THAT(taken(), ElementsAre(0.05, testing::DoubleEq(0.075), testing::DoubleEq(0.025)));
  // What moves the content to the left goes to the right.
  user.scroll(*window, at(30), {-48, 1});
  EXPECT_DOUBLE_EQ(slider->doubleValue(), 0.075);
}

TEST_F(NSSliderTest, TheWheelGoesFromTickMarkToTickMarkInWholeSteps) {
  slider->setNumberOfTickMarks(3);
  slider->setAllowsTickMarkValuesOnly(true);
  user.scroll(*window, at(30), {0, 30});
  EXPECT_EQ(slider->doubleValue(), 0);
  user.scroll(*window, at(30), {0, 30});
  EXPECT_EQ(slider->doubleValue(), 0.5);
  user.scroll(*window, at(30), {0, -30});
  EXPECT_EQ(slider->doubleValue(), 0.5);
  user.scroll(*window, at(30), {0, -18});
  EXPECT_EQ(slider->doubleValue(), 0);
}

TEST_F(NSSliderTest, AStepToATickMarkUsesUpWhatTheWheelTurned) {
  slider->setNumberOfTickMarks(5);
  slider->setAllowsTickMarkValuesOnly(true);
  user.scroll(*window, at(30), {0, 48});
  user.scroll(*window, at(30), {0, 48});
  EXPECT_EQ(slider->doubleValue(), 0.5);
}

TEST_F(NSSliderTest, SettingTheSameValueAgainNeitherRedrawsNorNotifies) {
  int notified = 0;
  auto& center = accessibilityNotificationCenter();
  const auto token = center.addObserverForName(NSAccessibilityValueChangedNotification, slider->cell(), nullptr,
                                               [&](const Ref<NSNotification>&) { ++notified; });
  slider->setDoubleValue(0.5);
  desktop.settle();
  EXPECT_EQ(nativeOf(*window).paints().size(), 1u);
  EXPECT_EQ(notified, 1);
  slider->setDoubleValue(0.5);
  desktop.settle();
  EXPECT_EQ(nativeOf(*window).paints().size(), 1u);
  EXPECT_EQ(notified, 1);
  slider->setMaxValue(0.25);
  EXPECT_EQ(notified, 2);
  center.removeObserver(token);
}

TEST_F(NSSliderTest, ItsLimitsMarksAndDirectionAskForARedraw) {
  const std::function<void()> changes[] = {
      [&] { slider->setMinValue(-1); }, [&] { slider->setMaxValue(2); }, [&] { slider->setNumberOfTickMarks(3); },
      [&] { slider->setTickMarkPosition(NSTickMarkPositionAbove); }, [&] { slider->setVertical(true); }};
  for (const auto& change : changes) {
    nativeOf(*window).forgetPaints();
    change();
    desktop.settle();
    EXPECT_EQ(nativeOf(*window).paints().size(), 1u) << &change - changes;
  }
}

TEST_F(NSSliderTest, AssistiveClientsIncrementDecrementAndSetAndTheActionIsSent) {
  auto& element = *accessibilityOf(slider->cell());
  element.accessibilityPerformAction(NSAccessibilityIncrementAction);
  element.accessibilityPerformAction(NSAccessibilityIncrementAction);
  element.accessibilityPerformAction(NSAccessibilityDecrementAction);
  element.accessibilitySetValue(0.5, NSAccessibilityValueAttribute);
  element.accessibilitySetValue(7.0, NSAccessibilityValueAttribute);
  element.accessibilitySetValue("half", NSAccessibilityValueAttribute);
  EXPECT_THAT(taken(), ElementsAre(0.05, 0.1, 0.05, 0.5, 1));
  slider->setEnabled(false);
  element.accessibilitySetValue(0.5, NSAccessibilityValueAttribute);
  element.accessibilityPerformAction(NSAccessibilityDecrementAction);
  EXPECT_EQ(slider->doubleValue(), 1);
}

TEST_F(NSSliderTest, TabStopsAtIt) {
  window->makeFirstResponder(nullptr);
  user.pressKey("\t");
  EXPECT_EQ(window->firstResponder(), slider.get());
}

TEST_F(NSSliderTest, HasNoLengthOfItsOwn) {
  const CGSize none = make<NSView>(CGRect{})->intrinsicContentSize();
  EXPECT_EQ(slider->intrinsicContentSize(), (CGSize{none.width, 20}));
  slider->setNumberOfTickMarks(2);
  EXPECT_EQ(slider->intrinsicContentSize(), (CGSize{none.width, 27}));
  slider->setFrameSize({20, 116});
  EXPECT_EQ(slider->intrinsicContentSize(), (CGSize{27, none.height}));
}

TEST_F(NSSliderTest, ComesFromAnInterfaceFileWithItsCell) {
  NSCoder coder(R"({"frame": [0, 0, 100, 20], "action": "act:", "cell": {"maxValue": 50, "doubleValue": 20}})");
  slider = make<NSSlider>(coder);
  EXPECT_EQ(slider->maxValue(), 50);
  EXPECT_EQ(slider->doubleValue(), 20);
}
