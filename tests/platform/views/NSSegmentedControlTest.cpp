#include "tessaluna/platform/views/NSSegmentedControl.h"

#include <gmock/gmock.h>

#include "tessaluna/platform/backend/SystemColor.h"
#include "tessaluna/platform/foundation/NSCoder.h"
#include "tessaluna/platform/graphics/contrast.h"
#include "tests/harness/SegmentedWorld.h"
#include "tests/harness/pixelsOf.h"

using namespace tessaluna::platform;
using tessaluna::backend::SystemColor;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Optional;

using NSSegmentedControlTest = harness::SegmentedWorld;

TEST_F(NSSegmentedControlTest, StartsWithoutASelection) {
  EXPECT_EQ(control->selectedSegment(), std::nullopt);
  EXPECT_EQ(make<NSSegmentedControl>(NSZeroRect)->segmentCount(), 0u);
}

TEST_F(NSSegmentedControlTest, SegmentsFillTheWidthInProportionToTheirOwn) {
  EXPECT_EQ(cell->widthForSegment(0), 60);
  EXPECT_THAT(cell->segmentRectsForBounds({10, 20, 400, 24}),
              ElementsAre(CGRect{10, 20, 120, 24}, CGRect{130, 20, 80, 24}, CGRect{210, 20, 200, 24}));
  control->setWidthForSegment(240, 1);
  EXPECT_THAT(cell->segmentRectsForBounds({0, 0, 200, 24}),
              ElementsAre(CGRect{0, 0, 30, 24}, CGRect{30, 0, 120, 24}, CGRect{150, 0, 50, 24}));
}

TEST_F(NSSegmentedControlTest, AClickSelectsTheSegmentUnderThePointerAndSendsTheAction) {
  user.click(*window, middleOf(1));
  EXPECT_THAT(selections, ElementsAre(Optional(1u)));
  user.click(*window, middleOf(2));
  EXPECT_THAT(selections, ElementsAre(Optional(1u), Optional(2u)));
  EXPECT_FALSE(control->isSelectedForSegment(1));
}

TEST_F(NSSegmentedControlTest, AtEveryWidthTheDrawnSegmentIsTheClickedOneAlsoWithWidthsOfASubclass) {
  for (const bool overrides : {false, true}) {
    cell->widths = overrides ? std::vector<CGFloat>{7, 90, 33} : std::vector<CGFloat>{};
    for (const CGFloat width : {30.0, 77.7, 123.4, 200.0})
      for (std::size_t segment = 0; segment < 3; ++segment) {
        control->setFrame({0, 100, width, 24});
        user.click(*window, middleOf(segment));
        EXPECT_EQ(control->selectedSegment(), segment) << width << (overrides ? ", own widths" : "");
      }
  }
}

TEST_F(NSSegmentedControlTest, APointAtABorderBelongsToTheNextSegment) {
  EXPECT_EQ(cell->segmentAtPoint({59.999, 3}, control->bounds()), 0u);
  EXPECT_EQ(cell->segmentAtPoint({60, 3}, control->bounds()), 1u);
  EXPECT_EQ(cell->segmentAtPoint({200, 3}, control->bounds()), std::nullopt);
}

TEST_F(NSSegmentedControlTest, AReleaseBesideThePressedSegmentSelectsNothingAndSendsNothing) {
  for (const CGPoint place : {middleOf(2), CGPoint{30, 20}}) {
    user.press(*window, middleOf(0));
    user.dragTo(place);
    user.release();
    EXPECT_EQ(control->selectedSegment(), std::nullopt);
    EXPECT_EQ(target->acts, 0);
  }
}

TEST_F(NSSegmentedControlTest, AReleaseBesideThePressedSegmentSendsNothingAlsoAfterAClick) {
  user.click(*window, middleOf(1));
  user.press(*window, middleOf(0));
  user.dragTo(middleOf(2));
  user.release();
  EXPECT_EQ(target->acts, 1);
  EXPECT_EQ(control->selectedSegment(), 1u);
}

TEST_F(NSSegmentedControlTest, KeysContinueFromTheClickedSegmentOrFromOneThatWasSelectedSince) {
  control->setTrackingMode(NSSegmentSwitchTrackingSelectAny);
  user.click(*window, middleOf(0));
  user.click(*window, middleOf(1));
  user.click(*window, middleOf(1));  // which takes its selection back
  EXPECT_EQ(control->keySegment(), 1u);
  control->setSelectedSegment(2);
  EXPECT_EQ(control->keySegment(), 2u);
}

TEST_F(NSSegmentedControlTest, DuringAPressKeysDoNothing) {
  user.press(*window, middleOf(0));
  user.pressKey(NSEndFunctionKey);
  EXPECT_EQ(target->acts, 0);
  user.release();
  EXPECT_THAT(selections, ElementsAre(Optional(0u)));
}

TEST_F(NSSegmentedControlTest, APressThatEndsWithoutAReleaseSelectsNothing) {
  user.press(*window, middleOf(0));
  control->setEnabled(false);
  user.release();
  EXPECT_EQ(control->selectedSegment(), std::nullopt);
  EXPECT_FALSE(control->performClickOnSegment(0));
  element(0).accessibilityPerformAction(NSAccessibilityPressAction);
  control->setEnabled(true);
  user.press(*window, middleOf(0));
  control->setHidden(true);
  user.release();
  EXPECT_EQ(control->selectedSegment(), std::nullopt);
  EXPECT_EQ(target->acts, 0);
}

TEST_F(NSSegmentedControlTest, ASpaceBarThatIsHeldClicksOnce) {
  control->setTrackingMode(NSSegmentSwitchTrackingSelectAny);
  focus();
  for (const bool isRepeat : {false, true, true})
    NSApp->sendEvent(make<NSEvent>(NSEvent::Fields{.type = NSEventType::KeyDown,
                                                   .window = window,
                                                   .characters = " ",
                                                   .charactersIgnoringModifiers = " ",
                                                   .isRepeat = isRepeat}));
  EXPECT_EQ(target->acts, 1);
}

TEST_F(NSSegmentedControlTest, AClickWithoutTheMouseAndTheEndOfAMomentaryOneShow) {
  const auto paints = [&] {
    desktop.settle();
    const std::size_t count = nativeOf(*window).paints().size();
    nativeOf(*window).forgetPaints();
    return count;
  };
  paints();
  control->performClickOnSegment(1);
  EXPECT_EQ(paints(), 1u);
  control->setTrackingMode(NSSegmentSwitchTrackingMomentary);
  control->setSelectedSegment(std::nullopt);
  std::size_t paintsDuringAction = 0;
  target->onAct = [&] { paintsDuringAction = paints(); };
  control->performClickOnSegment(1);
  EXPECT_EQ(paintsDuringAction, 1u);
  EXPECT_EQ(paints(), 1u);
}

TEST_F(NSSegmentedControlTest, ADragOutAndBackSelects) {
  user.press(*window, middleOf(0));
  user.dragTo({30, 20});
  user.dragTo(middleOf(1));
  user.dragTo(middleOf(0));
  user.release();
  EXPECT_THAT(selections, ElementsAre(Optional(0u)));
}

TEST_F(NSSegmentedControlTest, ADisabledSegmentCannotBeClicked) {
  control->setEnabledForSegment(false, 1);
  user.click(*window, middleOf(1));
  EXPECT_FALSE(control->performClickOnSegment(1));
  EXPECT_EQ(control->selectedSegment(), std::nullopt);
  EXPECT_THAT(selections, IsEmpty());
}

TEST_F(NSSegmentedControlTest, WhereAnyCanBeSelectedAClickSelectsOrTakesThatBack) {
  control->setTrackingMode(NSSegmentSwitchTrackingSelectAny);
  user.click(*window, middleOf(0));
  user.click(*window, middleOf(2));
  EXPECT_TRUE(control->isSelectedForSegment(0) && control->isSelectedForSegment(2));
  EXPECT_EQ(control->selectedSegment(), 2u);
  user.click(*window, middleOf(2));
  EXPECT_FALSE(control->isSelectedForSegment(2));
  EXPECT_EQ(control->selectedSegment(), 0u);
  EXPECT_EQ(target->acts, 3);
}

TEST_F(NSSegmentedControlTest, SelectingDeselectsTheOthersAlsoThoseFromATimeWhenAnyCouldBe) {
  control->setTrackingMode(NSSegmentSwitchTrackingSelectAny);
  control->setSelectedForSegment(true, 0);
  control->setSelectedForSegment(true, 1);
  control->setTrackingMode(NSSegmentSwitchTrackingSelectOne);
  control->setSelectedSegment(0);
  EXPECT_EQ(control->selectedSegment(), 0u);
  EXPECT_FALSE(control->isSelectedForSegment(1));
}

TEST_F(NSSegmentedControlTest, AMomentarySegmentIsSelectedOnlyDuringItsAction) {
  control->setTrackingMode(NSSegmentSwitchTrackingMomentary);
  user.click(*window, middleOf(1));
  control->performClickOnSegment(2);
  EXPECT_THAT(selections, ElementsAre(Optional(1u), Optional(2u)));
  EXPECT_EQ(control->selectedSegment(), std::nullopt);
}

TEST_F(NSSegmentedControlTest, SelectingInCodeSendsNothing) {
  control->setSelectedSegment(1);
  EXPECT_TRUE(control->isSelectedForSegment(1));
  control->setSelectedForSegment(true, 0);
  EXPECT_FALSE(control->isSelectedForSegment(1));
  control->setSelectedSegment(std::nullopt);
  EXPECT_EQ(control->selectedSegment(), std::nullopt);
  control->setTagForSegment(7, 2);
  EXPECT_TRUE(cell->selectSegmentWithTag(7));
  EXPECT_FALSE(cell->selectSegmentWithTag(8));
  EXPECT_EQ(control->selectedSegment(), 2u);
  EXPECT_EQ(target->acts, 0);
}

TEST_F(NSSegmentedControlTest, KeysContinueFromASegmentThatWasSelectedByItself) {
  control->setTrackingMode(NSSegmentSwitchTrackingSelectAny);
  focus();
  user.pressKey(NSEndFunctionKey);
  control->setSelectedForSegment(true, 0);
  user.pressKey(NSRightArrowFunctionKey);
  EXPECT_EQ(control->focusRingMaskBounds(), (CGRect{60, 0, 40, 24}));
}

TEST_F(NSSegmentedControlTest, WithoutACellOfSegmentsItHasNone) {
  EXPECT_EQ(control->labelForSegment(1), "Hits");
  control->setCell(make<NSCell>());
  EXPECT_EQ(control->segmentCount(), 0u);
  EXPECT_EQ(control->labelForSegment(0), std::nullopt);
  EXPECT_EQ(control->selectedSegment(), std::nullopt);
  EXPECT_FALSE(control->isSelectedForSegment(0));
  EXPECT_EQ(control->focusRingMaskBounds(), control->bounds());
  control->setSelectedSegment(0);
  focus();
  user.pressKey(NSRightArrowFunctionKey);
  user.click(*window, {20, 110});
  EXPECT_FALSE(control->performClickOnSegment(0));
  EXPECT_THAT(selections, IsEmpty());
}

TEST_F(NSSegmentedControlTest, AClickWithoutTheMouseReturnsWhetherItWasOne) {
  control->setEnabledForSegment(false, 1);
  EXPECT_TRUE(control->performClickOnSegment(0));
  EXPECT_FALSE(control->performClickOnSegment(1));
  EXPECT_FALSE(control->performClickOnSegment(3));
}

TEST_F(NSSegmentedControlTest, HomeOnTheSelectedSegmentSendsNothing) {
  control->setSelectedSegment(0);
  focus();
  user.pressKey(NSHomeFunctionKey);
  EXPECT_THAT(selections, IsEmpty());
}

TEST_F(NSSegmentedControlTest, FewerSegmentsForgetASelectionBeyondThem) {
  control->setSelectedSegment(2);
  control->setSegmentCount(2);
  EXPECT_EQ(control->selectedSegment(), std::nullopt);
}

TEST_F(NSSegmentedControlTest, ASegmentThatTakesThePlaceOfThePressedOneIsNotClickedByTheRelease) {
  const CGPoint point = middleOf(0);
  user.press(*window, point);
  control->setSegmentCount(0);
  control->setSegmentCount(1);
  control->setLabelForSegment("New", 0);
  user.release();
  EXPECT_EQ(control->selectedSegment(), std::nullopt);
  EXPECT_EQ(target->acts, 0);
}

TEST_F(NSSegmentedControlTest, ArrowsHomeAndEndSelectAndStepOverWhatIsDisabled) {
  control->setSelectedSegment(0);
  control->setEnabledForSegment(false, 1);
  focus();
  user.pressKey(NSRightArrowFunctionKey);
  user.pressKey(NSRightArrowFunctionKey);  // nothing beyond the end
  user.pressKey(NSLeftArrowFunctionKey);
  user.pressKey(NSLeftArrowFunctionKey);
  user.pressKey(NSEndFunctionKey);
  user.pressKey(NSHomeFunctionKey);
  EXPECT_THAT(selections, ElementsAre(Optional(2u), Optional(0u), Optional(2u), Optional(0u)));
}

TEST_F(NSSegmentedControlTest, SpaceSelectsWhereNothingIsSelected) {
  focus();
  user.pressKey(" ");
  EXPECT_THAT(selections, ElementsAre(Optional(0u)));
}

TEST_F(NSSegmentedControlTest, WhereAnyCanBeSelectedArrowsMoveAndSpaceClicks) {
  control->setTrackingMode(NSSegmentSwitchTrackingSelectAny);
  focus();
  user.pressKey(NSRightArrowFunctionKey);
  EXPECT_EQ(control->keySegment(), 1u);
  EXPECT_EQ(target->acts, 0);
  user.pressKey(" ");
  EXPECT_TRUE(control->isSelectedForSegment(1));
  EXPECT_EQ(target->acts, 1);
}

TEST_F(NSSegmentedControlTest, KeysWithModifiersContinueUpTheChain) {
  control->setSelectedSegment(0);
  focus();
  user.pressKey(NSRightArrowFunctionKey, NSEventModifierFlagCommand);
  EXPECT_EQ(control->selectedSegment(), 0u);
}

TEST_F(NSSegmentedControlTest, IsOneStopOfTheTabKeyUnlessNothingInItCanBeClicked) {
  EXPECT_TRUE(control->canBecomeKeyView());
  for (std::size_t i = 0; i < 3; ++i) control->setEnabledForSegment(false, i);
  EXPECT_FALSE(control->canBecomeKeyView());
  control->setEnabledForSegment(true, 1);
  control->setEnabled(false);
  EXPECT_FALSE(control->canBecomeKeyView());
}

TEST_F(NSSegmentedControlTest, ItsActionMayTakeItsCellOrTheControlItselfAway) {
  target->onAct = [this] { control->setCell(make<NSCell>()); };
  user.click(*window, middleOf(1));
  EXPECT_EQ(control->segmentCount(), 0u);
  control->setCell(cell);
  target->onAct = [this] {
    control->removeFromSuperview();
    control.reset();
  };
  const CGPoint point = middleOf(2);
  user.click(*window, point);
  EXPECT_EQ(target->acts, 2);
}

TEST_F(NSSegmentedControlTest, AClickRedrawsTheControl) {
  user.press(*window, middleOf(0));
  desktop.settle();
  EXPECT_EQ(nativeOf(*window).paints().size(), 1u);
  user.release();
  desktop.settle();
  EXPECT_EQ(nativeOf(*window).paints().size(), 2u);
}

TEST_F(NSSegmentedControlTest, IsAListOfTabsToAssistiveClients) {
  control->setSelectedSegment(1);
  control->setEnabledForSegment(false, 2);
  EXPECT_EQ(cell->accessibilityRole(), NSAccessibilityTabGroupRole);
  ASSERT_EQ(cell->accessibilityChildren()->size(), 3u);
  EXPECT_EQ(element(1).accessibilityRole(), NSAccessibilityTabButtonRole);
  EXPECT_EQ(element(1).accessibilityTitle(), "Hits");
  EXPECT_EQ(element(1).accessibilityValue(), AccessibilityValue(1.0));
  EXPECT_EQ(element(0).accessibilityValue(), AccessibilityValue(0.0));
  EXPECT_EQ(element(1).accessibilityAttributeValue(NSAccessibilitySelectedAttribute), AccessibilityValue(true));
  EXPECT_EQ(element(1).accessibilityParent(), cell);
  EXPECT_EQ(element(1).accessibilityFrame(), (CGRect{160, 200, 40, 24}));
  EXPECT_TRUE(element(1).isAccessibilityEnabled());
  EXPECT_FALSE(element(2).isAccessibilityEnabled());
  EXPECT_EQ(cell->accessibilityAttributeValue(NSAccessibilitySelectedChildrenAttribute),
            AccessibilityValue(AccessibilityElements{cell->accessibilityChildren()->at(1)}));
}

TEST_F(NSSegmentedControlTest, AnAssistiveClientPressesATab) {
  element(2).accessibilityPerformAction(NSAccessibilityPressAction);
  EXPECT_THAT(selections, ElementsAre(Optional(2u)));
}

TEST_F(NSSegmentedControlTest, TheTabThatTheKeysAreOnHasTheFocus) {
  control->setSelectedSegment(1);
  EXPECT_FALSE(element(1).isAccessibilityFocused());
  focus();
  EXPECT_TRUE(element(1).isAccessibilityFocused());
  EXPECT_FALSE(element(0).isAccessibilityFocused());
}

TEST_F(NSSegmentedControlTest, DeselectingTheOthersIsAChangeToAssistiveClientsAlsoWhereTheSegmentWasSelected) {
  control->setTrackingMode(NSSegmentSwitchTrackingSelectAny);
  control->setSelectedForSegment(true, 0);
  control->setSelectedForSegment(true, 1);
  control->setTrackingMode(NSSegmentSwitchTrackingSelectOne);
  int changes = 0;
  const auto token = accessibilityNotificationCenter().addObserverForName(
      NSAccessibilitySelectedChildrenChangedNotification, cell, nullptr, [&](const Ref<NSNotification>&) { ++changes; });
  control->setSelectedSegment(0);
  control->setSelectedSegment(0);
  accessibilityNotificationCenter().removeObserver(token);
  EXPECT_FALSE(control->isSelectedForSegment(1));
  EXPECT_EQ(changes, 1);
}

TEST_F(NSSegmentedControlTest, AssistiveClientsObserveASelection) {
  std::vector<std::string> heard;
  const auto token = accessibilityNotificationCenter().addObserverForName(
      NSAccessibilitySelectedChildrenChangedNotification, cell, nullptr,
      [&](const Ref<NSNotification>& notification) { heard.push_back(notification->name()); });
  control->performClickOnSegment(0);
  control->performClickOnSegment(0);  // selected already
  EXPECT_EQ(heard.size(), 1u);
  control->setSelectedSegment(std::nullopt);
  EXPECT_EQ(heard.size(), 2u);
  accessibilityNotificationCenter().removeObserver(token);
}

TEST_F(NSSegmentedControlTest, AssistiveClientsObserveTheArrowsWhereTheseSelectNothing) {
  control->setTrackingMode(NSSegmentSwitchTrackingSelectAny);
  focus();
  int heard = 0;
  const auto token = accessibilityNotificationCenter().addObserverForName(
      NSAccessibilityFocusedUIElementChangedNotification, cell, nullptr, [&](const Ref<NSNotification>&) { ++heard; });
  user.pressKey(NSRightArrowFunctionKey);
  accessibilityNotificationCenter().removeObserver(token);
  EXPECT_EQ(heard, 1);
  EXPECT_TRUE(element(1).isAccessibilityFocused());
}

TEST_F(NSSegmentedControlTest, AssistiveClientsObserveTheFocusWhereTheArrowsSelect) {
  control->setSelectedSegment(0);
  std::vector<bool> isSecondFocused;
  const auto token = accessibilityNotificationCenter().addObserverForName(
      NSAccessibilityFocusedUIElementChangedNotification, cell, nullptr,
      [&](const Ref<NSNotification>&) { isSecondFocused.push_back(element(1).isAccessibilityFocused()); });
  control->performClickOnSegment(1);
  EXPECT_THAT(isSecondFocused, IsEmpty()) << "the keyboard is elsewhere";
  control->performClickOnSegment(0);
  focus();
  isSecondFocused.clear();
  user.pressKey(NSRightArrowFunctionKey);
  accessibilityNotificationCenter().removeObserver(token);
  EXPECT_THAT(isSecondFocused, ElementsAre(true));
}

TEST_F(NSSegmentedControlTest, AssistiveClientsObserveNoFocusThatStaysWhereItIs) {
  for (const auto mode : {NSSegmentSwitchTrackingSelectOne, NSSegmentSwitchTrackingSelectAny}) {
    control->setTrackingMode(mode);
    control->setSelectedSegment(0);
    focus();
    int heard = 0;
    const auto token = accessibilityNotificationCenter().addObserverForName(
        NSAccessibilityFocusedUIElementChangedNotification, cell, nullptr, [&](const Ref<NSNotification>&) { ++heard; });
    user.pressKey(NSLeftArrowFunctionKey);
    user.pressKey(NSHomeFunctionKey);
    user.pressKey(" ");
    user.click(*window, middleOf(0));
    EXPECT_EQ(heard, 0);
    user.click(*window, middleOf(1));
    EXPECT_EQ(heard, 1);
    accessibilityNotificationCenter().removeObserver(token);
  }
}

TEST_F(NSSegmentedControlTest, OtherModesAreCheckBoxesAndButtons) {
  control->setTrackingMode(NSSegmentSwitchTrackingSelectAny);
  EXPECT_EQ(cell->accessibilityRole(), NSAccessibilityGroupRole);
  EXPECT_EQ(element(0).accessibilityRole(), NSAccessibilityCheckBoxRole);
  control->setTrackingMode(NSSegmentSwitchTrackingMomentary);
  EXPECT_EQ(element(0).accessibilityRole(), NSAccessibilityButtonRole);
  EXPECT_TRUE(element(0).accessibilityValue().isAbsent());
}

TEST_F(NSSegmentedControlTest, AnElementOfASegmentThatHasGoneIsNothing) {
  const Ref<NSObject> last = cell->accessibilityChildren()->at(2);
  control->setSegmentCount(2);
  EXPECT_TRUE(accessibilityOf(last)->accessibilityIsIgnored());
  EXPECT_EQ(accessibilityOf(last)->accessibilityFrame(), CGRect{});
  accessibilityOf(last)->accessibilityPerformAction(NSAccessibilityPressAction);
  EXPECT_EQ(target->acts, 0);
  const Ref<NSObject> first = cell->accessibilityChildren()->at(0);
  control->setCell(nullptr);
  cell.reset();
  EXPECT_TRUE(accessibilityOf(first)->accessibilityIsIgnored());
  EXPECT_EQ(accessibilityOf(first)->accessibilityParent(), nullptr);
}

TEST_F(NSSegmentedControlTest, IsDecodedWithItsSegments) {
  NSCoder coder(R"({"cell": {"trackingMode": "selectAny", "segments": [
      {"label": "One", "tag": 4, "selected": true}, {"width": 30, "enabled": false}]}})");
  const auto decoded = make<NSSegmentedControl>(coder);
  const auto& read = dynamic_cast<const NSSegmentedCell&>(*decoded->cell());
  ASSERT_EQ(read.segmentCount(), 2u);
  EXPECT_EQ(read.trackingMode(), NSSegmentSwitchTrackingSelectAny);
  EXPECT_EQ(read.labelForSegment(0), "One");
  EXPECT_EQ(read.labelForSegment(1), std::nullopt);
  EXPECT_EQ(read.tagForSegment(0), 4);
  EXPECT_TRUE(read.isSelectedForSegment(0));
  EXPECT_FALSE(read.isEnabledForSegment(1));
  EXPECT_EQ(read.widthForSegment(1), 30);
}

TEST_F(NSSegmentedControlTest, ACopyOfTheCellHasTheSegmentsAndStandsAlone) {
  control->setSelectedSegment(1);
  const auto copy = std::dynamic_pointer_cast<NSSegmentedCell>(cell->copy());
  EXPECT_EQ(copy->labelForSegment(2), "All of an artist");
  EXPECT_EQ(copy->selectedSegment(), 1u);
  copy->setSelectedSegment(0);
  EXPECT_EQ(control->selectedSegment(), 1u);
}

TEST_F(NSSegmentedControlTest, TheStockCellDrawsABoxWithLinesBetweenTheSegmentsAndTheSelectedOneDarker) {
  const auto stock = make<NSSegmentedCell>();
  stock->setSegmentCount(2);
  stock->setLabelForSegment("ab", 0);
  stock->setLabelForSegment("cd", 1);
  stock->setSelectedSegment(1);
  const auto lines = harness::recordingOf([&] { stock->drawWithFrame({0, 0, 80, 24}, *control); });
  EXPECT_EQ(harness::only("glyphs", lines).size(), 2u);
  EXPECT_THAT(harness::only("fill", lines), ElementsAre(HasSubstr(R"("shape":["roundedRect",0.5,0.5,79,23,5,5])"),
                                                        HasSubstr(R"("shape":["rect",40,0,40,24])")));
  EXPECT_THAT(harness::only("stroke", lines), ElementsAre(HasSubstr(R"("path":[["M",40.5,0],["L",40.5,24]])"),
                                                          HasSubstr(R"("shape":["roundedRect",0.5,0.5,79,23,5,5])")));
  EXPECT_THAT(harness::only("setFillColor", lines),
              ElementsAre(R"({"op":"setFillColor","color":[0.97,0.97,0.97,1]})", HasSubstr("controlTextColor"),
                          R"({"op":"setFillColor","color":[0.776,0.776,0.776,1]})", HasSubstr("controlTextColor")));
}

TEST_F(NSSegmentedControlTest, TheSelectedSegmentStandsOutOnLightAndDarkPalettes) {
  const auto stock = make<NSSegmentedCell>();
  stock->setSegmentCount(2);
  for (const std::size_t segment : {0, 1}) stock->setWidthForSegment(40, segment);
  stock->setSelectedSegment(0);
  const auto contrast = [&] {
    const auto pixels = harness::pixelsOf({.width = 80, .height = 24}, [&] {
      stock->drawWithFrame({0, 0, 80, 24}, *control);
    });
    const auto colorAt = [&](int x) {
      const std::uint32_t pixel = pixels.pixel(x, 12);
      return tessaluna::backend::Color{(pixel >> 16 & 255) / 255.0, (pixel >> 8 & 255) / 255.0, (pixel & 255) / 255.0};
    };
    return contrastRatio(colorAt(20), colorAt(60));
  };
  EXPECT_GT(contrast(), 1.5);
  desktop.setSystemColor(SystemColor::ControlText, {1, 1, 1});
  desktop.setSystemColor(SystemColor::Control, {0.23, 0.24, 0.26});
  desktop.setSystemColor(SystemColor::WindowBackground, {0.13, 0.14, 0.15});
  EXPECT_GT(contrast(), 1.5);
}

TEST_F(NSSegmentedControlTest, TheFocusRingIsAroundTheControlOrTheSegmentThatTheKeysAreOn) {
  EXPECT_EQ(control->focusRingMaskBounds(), control->bounds());
  control->setTrackingMode(NSSegmentSwitchTrackingSelectAny);
  focus();
  user.pressKey(NSRightArrowFunctionKey);
  EXPECT_EQ(control->focusRingMaskBounds(), (CGRect{60, 0, 40, 24}));
}

using NSSegmentedControlDeathTest = NSSegmentedControlTest;

TEST_F(NSSegmentedControlDeathTest, AnIndexBeyondTheEndStopsTheProgram) {
  EXPECT_DEATH(control->setLabelForSegment("x", 3), "no segment at that index");
  EXPECT_DEATH(control->isSelectedForSegment(3), "no segment at that index");
  EXPECT_DEATH(control->setSelectedSegment(3), "no segment at that index");
}
