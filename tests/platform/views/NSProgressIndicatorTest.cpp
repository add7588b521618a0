#include "tessaluna/platform/views/NSProgressIndicator.h"

#include <gmock/gmock.h>

#include <functional>

#include "tessaluna/platform/foundation/NSCoder.h"
#include "tessaluna/platform/foundation/NSNotificationCenter.h"
#include "tessaluna/platform/layout/NSLayoutConstraint.h"
#include "tests/harness/StillWorld.h"
#include "tests/harness/printing.h"
#include "tests/harness/recordingOf.h"

using namespace tessaluna::platform;
using harness::Lines;
using harness::only;
using harness::recordingOf;
using testing::HasSubstr;

namespace {

class NSProgressIndicatorTest : public harness::StillWorld {
 protected:
  Lines drawn() const {
    return recordingOf([this] { indicator->drawRect(indicator->bounds()); });
  }
  std::string filled() const {
    const Lines fills = only("fill", drawn());
    return fills.size() < 2 ? "" : fills[1].substr(fills[1].find("\"shape\""));
  }
  std::size_t paints() const { return nativeOf(*indicator->window()).paints().size(); }
  void spin() {
    indicator->setStyle(NSProgressIndicatorStyleSpinning);
    indicator->startAnimation(nullptr);
  }

  Ref<NSProgressIndicator> indicator = make<NSProgressIndicator>(CGRect{10, 10, 100, 20});
};

}  // namespace

TEST_F(NSProgressIndicatorTest, IsAnIndeterminateBarFromZeroTo100AtTheStart) {
  EXPECT_EQ(indicator->style(), NSProgressIndicatorStyleBar);
  EXPECT_TRUE(indicator->isIndeterminate());
  EXPECT_TRUE(indicator->isDisplayedWhenStopped());
  EXPECT_FALSE(indicator->isAnimating());
  EXPECT_EQ(indicator->minValue(), 0);
  EXPECT_EQ(indicator->maxValue(), 100);
  EXPECT_EQ(indicator->doubleValue(), 0);
}

TEST_F(NSProgressIndicatorTest, ADeterminateBarFillsWithItsValue) {
  indicator->setIndeterminate(false);
  EXPECT_EQ(only("fill", drawn()).size(), 1u);
  indicator->setMinValue(20);
  indicator->setMaxValue(60);
  indicator->setDoubleValue(30);
  EXPECT_THAT(filled(), HasSubstr(R"(["roundedRect",0,7,25,6,3,3])"));
  indicator->incrementBy(10);
  EXPECT_THAT(filled(), HasSubstr(R"(["roundedRect",0,7,50,6,3,3])"));
}

TEST_F(NSProgressIndicatorTest, AValueOutsideOfTheLimitsIsKeptAndShowsAsTheNearestOne) {
  indicator->setIndeterminate(false);
  indicator->setDoubleValue(250);
  EXPECT_EQ(indicator->doubleValue(), 250);
  EXPECT_THAT(filled(), HasSubstr(R"(["roundedRect",0,7,100,6,3,3])"));
  EXPECT_EQ(indicator->accessibilityValue(), AccessibilityValue(100.0));
  indicator->setMaxValue(500);
  EXPECT_THAT(filled(), HasSubstr(R"(["roundedRect",0,7,50,6,3,3])"));
  indicator->setDoubleValue(-3);
  EXPECT_EQ(filled(), "");
}

TEST_F(NSProgressIndicatorTest, WithoutARangeNothingIsFilled) {
  indicator->setIndeterminate(false);
  indicator->setMaxValue(0);
  indicator->setDoubleValue(5);
  EXPECT_EQ(filled(), "");
}

TEST_F(NSProgressIndicatorTest, TheTintIsTheColorOfTheFilledPart) {
  indicator->setIndeterminate(false);
  indicator->setDoubleValue(50);
  const Lines before = only("setFillColor", drawn());
  EXPECT_THAT(before[1], HasSubstr("alternateSelectedControlColor"));
  indicator->setControlTint(NSBlueControlTint);
  EXPECT_EQ(only("setFillColor", drawn()), before);
  indicator->setControlTint(NSGraphiteControlTint);
  EXPECT_THAT(only("setFillColor", drawn())[1], HasSubstr("grayColor"));
}

TEST_F(NSProgressIndicatorTest, TheFilledPartIsClippedToTheBarAndNothingAfterIt) {
  indicator->setIndeterminate(false);
  indicator->setDoubleValue(50);
  const Lines lines = drawn();
  ASSERT_EQ(lines.size(), 7u);
  EXPECT_EQ(lines[2], R"({"op":"save"})");
  EXPECT_THAT(lines[3], HasSubstr(R"("op":"clip)"));
  EXPECT_THAT(lines[3], HasSubstr(R"(["roundedRect",0,7,100,6,3,3])"));
  EXPECT_THAT(lines[5], HasSubstr(R"("op":"fill")"));
  EXPECT_EQ(lines[6], R"({"op":"restore"})");
}

TEST_F(NSProgressIndicatorTest, ASpokeIsARoundLineFromWithinTheWheelToItsEdge) {
  spin();
  const std::string toTheRight = only("stroke", drawn()).at(3);
  EXPECT_THAT(toTheRight, HasSubstr(R"(["M",55.4,10],["L",59.1666)"));
  EXPECT_THAT(toTheRight, HasSubstr(R"("lineWidth":1.6666)"));
  EXPECT_THAT(toTheRight, HasSubstr(R"("cap":"round")"));
}

TEST_F(NSProgressIndicatorTest, APieceRunsAlongAnIndeterminateBarWhileItIsAnimated) {
  const auto window = showWindowWith(indicator);
  EXPECT_EQ(filled(), "");
  indicator->startAnimation(nullptr);
  EXPECT_TRUE(indicator->isAnimating());
  EXPECT_THAT(filled(), HasSubstr(R"(["roundedRect",-30,7,30,6)"));
  desktop.advance(0.85);
  EXPECT_THAT(filled(), HasSubstr(R"(["roundedRect",37.)"));
  indicator->stopAnimation(nullptr);
  EXPECT_EQ(filled(), "");
}

TEST_F(NSProgressIndicatorTest, ASpinnerTurnsASpokeTwelveTimesASecondUntilItIsStopped) {
  spin();
  const auto window = showWindowWith(indicator);
  const Lines first = drawn();
  EXPECT_EQ(only("stroke", first).size(), 12u);
  desktop.advance(0.1);
  EXPECT_EQ(paints(), 1u);
  EXPECT_NE(drawn(), first);
  desktop.advance(0.95);
  EXPECT_EQ(paints(), 12u);
  EXPECT_EQ(drawn(), first);
  indicator->stopAnimation(nullptr);
  desktop.advance(5);
  EXPECT_EQ(paints(), 13u);
}

TEST_F(NSProgressIndicatorTest, ASpinnerTurnsAlsoWhereItIsRedrawnMoreOftenThanThat) {
  spin();
  const auto window = showWindowWith(indicator);
  const Lines first = drawn();
  for (int i = 0; i < 10; ++i) {
    indicator->setNeedsDisplay(true);
    desktop.advance(0.01);
  }
  EXPECT_NE(drawn(), first);
}

TEST_F(NSProgressIndicatorTest, AHiddenSpinnerRedrawsNothingAndTurnsAgainWhenItIsShown) {
  spin();
  const auto window = showWindowWith(indicator);
  indicator->setHidden(true);
  desktop.advance(1);
  const std::size_t before = paints();
  desktop.advance(5);
  EXPECT_EQ(paints(), before);
  indicator->setHidden(false);
  desktop.advance(1.05);
  EXPECT_GE(paints(), before + 12);
}

TEST_F(NSProgressIndicatorTest, StartingAgainChangesNothing) {
  spin();
  const auto window = showWindowWith(indicator);
  desktop.advance(0.5);
  const Lines now = drawn();
  indicator->startAnimation(nullptr);
  EXPECT_EQ(drawn(), now);
}

TEST_F(NSProgressIndicatorTest, ItMayGoWhileItTurns) {
  spin();
  const auto window = showWindowWith(indicator);
  indicator->removeFromSuperview();
  indicator.reset();
  desktop.advance(1);
}

TEST_F(NSProgressIndicatorTest, WhereTheUserWantsLessMotionItDoesNotMove) {
  desktop.setPrefersReducedMotion(true);
  spin();
  const auto window = showWindowWith(indicator);
  desktop.advance(3);
  EXPECT_EQ(paints(), 0u);
  EXPECT_EQ(only("stroke", drawn()).size(), 12u);
  indicator->setStyle(NSProgressIndicatorStyleBar);
  EXPECT_THAT(filled(), HasSubstr(R"(["roundedRect",35,7,30,6)"));
}

TEST_F(NSProgressIndicatorTest, ADeterminateSpinnerDarkensSpokesAndDoesNotMove) {
  indicator->setIndeterminate(false);
  spin();
  const auto window = showWindowWith(indicator);
  desktop.advance(3);
  EXPECT_EQ(paints(), 0u);
  indicator->setDoubleValue(50);
  const Lines colors = only("setStrokeColor", drawn());
  ASSERT_EQ(colors.size(), 12u);
  EXPECT_EQ(colors[0], colors[5]);
  EXPECT_NE(colors[5], colors[6]);
  EXPECT_EQ(colors[6], colors[11]);
}

TEST_F(NSProgressIndicatorTest, OneThatIsNotDisplayedWhenStoppedDrawsOnlyWhileItIsAnimated) {
  indicator->setDisplayedWhenStopped(false);
  EXPECT_TRUE(drawn().empty());
  spin();
  EXPECT_FALSE(drawn().empty());
  indicator->stopAnimation(nullptr);
  EXPECT_TRUE(drawn().empty());
}

TEST_F(NSProgressIndicatorTest, EveryPropertyAsksForARedraw) {
  const auto window = showWindowWith(indicator);
  const std::function<void()> changes[] = {[&] { indicator->setStyle(NSProgressIndicatorStyleSpinning); },
                                           [&] { indicator->setControlTint(NSGraphiteControlTint); },
                                           [&] { indicator->setIndeterminate(false); },
                                           [&] { indicator->setMinValue(1); },
                                           [&] { indicator->setMaxValue(9); },
                                           [&] { indicator->setDoubleValue(5); },
                                           [&] { indicator->setDisplayedWhenStopped(false); },
                                           [&] { indicator->startAnimation(nullptr); },
                                           [&] { indicator->stopAnimation(nullptr); }};
  for (const auto& change : changes) {
    nativeOf(*window).forgetPaints();
    change();
    desktop.settle();
    EXPECT_EQ(paints(), 1u) << &change - changes;
  }
}

TEST_F(NSProgressIndicatorTest, ConstraintsGiveANewStyleItsRoom) {
  const auto window = showWindowWith(indicator);
  indicator->setTranslatesAutoresizingMaskIntoConstraints(false);
  NSLayoutConstraint::constraintWithItem(indicator, NSLayoutAttributeTop, NSLayoutRelationEqual, window->contentView(),
                                         NSLayoutAttributeTop, 1, 10)
      ->setActive(true);
  window->contentView()->layoutSubtreeIfNeeded();
  EXPECT_EQ(indicator->frame().size.height, 6);
  indicator->setStyle(NSProgressIndicatorStyleSpinning);
  window->contentView()->layoutSubtreeIfNeeded();
  EXPECT_EQ(indicator->frame().size, (CGSize{32, 32}));
}

TEST_F(NSProgressIndicatorTest, OnlyAChangeRedrawsAndNotifies) {
  indicator->setIndeterminate(false);
  const auto window = showWindowWith(indicator);
  int notified = 0;
  auto& center = accessibilityNotificationCenter();
  const auto token = center.addObserverForName(NSAccessibilityValueChangedNotification, indicator, nullptr,
                                               [&](const Ref<NSNotification>&) { ++notified; });
  for (int i = 0; i < 3; ++i) {
    indicator->setDoubleValue(50);
    indicator->setMaxValue(100);
    desktop.settle();
  }
  EXPECT_EQ(paints(), 1u);
  EXPECT_EQ(notified, 1);
  center.removeObserver(token);
}

TEST_F(NSProgressIndicatorTest, ToAssistiveClientsItHasAValueOnlyWhenItIsDeterminate) {
  EXPECT_EQ(indicator->accessibilityRole(), "AXProgressIndicator");
  EXPECT_TRUE(indicator->accessibilityAttributeValue(NSAccessibilityValueAttribute).isAbsent());
  EXPECT_TRUE(indicator->accessibilityAttributeValue(NSAccessibilityMaxValueAttribute).isAbsent());
  indicator->setIndeterminate(false);
  indicator->setDoubleValue(40);
  EXPECT_EQ(indicator->accessibilityAttributeValue(NSAccessibilityValueAttribute), AccessibilityValue(40.0));
  EXPECT_EQ(indicator->accessibilityAttributeValue(NSAccessibilityMinValueAttribute), AccessibilityValue(0.0));
  EXPECT_EQ(indicator->accessibilityAttributeValue(NSAccessibilityMaxValueAttribute), AccessibilityValue(100.0));
}

TEST_F(NSProgressIndicatorTest, ComesFromAnInterfaceFile) {
  NSCoder coder(R"({"frame": [0, 0, 32, 32], "style": "spinning", "controlTint": "blue", "indeterminate": false,
      "minValue": 1, "maxValue": 9, "doubleValue": 5, "displayedWhenStopped": false})");
  indicator = make<NSProgressIndicator>(coder);
  EXPECT_EQ(indicator->style(), NSProgressIndicatorStyleSpinning);
  EXPECT_EQ(indicator->controlTint(), NSBlueControlTint);
  EXPECT_FALSE(indicator->isIndeterminate());
  EXPECT_EQ(indicator->accessibilityValue(), AccessibilityValue(5.0));
  EXPECT_FALSE(indicator->isDisplayedWhenStopped());
  EXPECT_EQ(coder.firstUnknownKey(), std::nullopt);
  EXPECT_EQ(indicator->intrinsicContentSize(), (CGSize{32, 32}));
}
