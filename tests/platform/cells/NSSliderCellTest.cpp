#include "tessaluna/platform/cells/NSSliderCell.h"

#include <gmock/gmock.h>

#include <limits>

#include "tessaluna/platform/events/NSTextInputClient.h"
#include "tessaluna/platform/views/NSSlider.h"
#include "tests/harness/StillWorld.h"
#include "tests/harness/printing.h"
#include "tests/harness/recordingOf.h"

using namespace tessaluna::platform;
using harness::Lines;
using harness::only;
using harness::recordingOf;
using testing::ElementsAre;

namespace {

// The knob is 16 points long, so that in a slider of 116 its middle moves by 100 points, from 8 to 108.
class NSSliderCellTest : public harness::StillWorld {
 protected:
  static Ref<NSSlider> sliderOf(CGSize size) { return make<NSSlider>(CGRect{{30, 40}, size}); }
  static NSSliderCell& cellOf(const Ref<NSSlider>& slider) { return dynamic_cast<NSSliderCell&>(*slider->cell()); }

  Ref<NSSliderCell> cell = make<NSSliderCell>();
  Ref<NSSlider> slider = sliderOf({116, 20});
};

const double notANumber = std::numeric_limits<double>::quiet_NaN();

}  // namespace

TEST_F(NSSliderCellTest, GoesFromZeroToOneAndIsContinuousAtTheStart) {
  EXPECT_EQ(cell->minValue(), 0);
  EXPECT_EQ(cell->maxValue(), 1);
  EXPECT_EQ(cell->doubleValue(), 0);
  EXPECT_TRUE(cell->isContinuous());
  EXPECT_TRUE(cell->prefersTrackingUntilMouseUp());
}

TEST_F(NSSliderCellTest, AValueOutsideOfTheLimitsIsTheNearestOne) {
  cell->setMinValue(-5);
  cell->setMaxValue(20);
  cell->setDoubleValue(21);
  EXPECT_EQ(cell->doubleValue(), 20);
  cell->setStringValue("-7 bottles");
  EXPECT_EQ(cell->doubleValue(), -5);
  cell->setIntegerValue(3);
  EXPECT_EQ(cell->doubleValue(), 3);
  cell->setDoubleValue(notANumber);
  EXPECT_EQ(cell->doubleValue(), -5);
  // Of limits in the wrong order the minimum counts.
  cell->setMaxValue(-8);
  cell->setDoubleValue(3);
  EXPECT_EQ(cell->doubleValue(), -5);
}

TEST_F(NSSliderCellTest, NewLimitsTakeTheValueWithThem) {
  cell->setMaxValue(20);
  cell->setDoubleValue(15);
  cell->setMaxValue(10);
  EXPECT_EQ(cell->doubleValue(), 10);
  cell->setMinValue(12);
  EXPECT_EQ(cell->doubleValue(), 12);
}

TEST_F(NSSliderCellTest, ComesFromAnArchiveWithItsLimitsBeforeItsValue) {
  NSCoder coder(R"({"doubleValue": 70, "maxValue": 100, "minValue": 20, "vertical": true, "numberOfTickMarks": 5,
      "tickMarkPosition": "above", "allowsTickMarkValuesOnly": true, "tag": 3})");
  cell = make<NSSliderCell>(coder);
  EXPECT_EQ(cell->doubleValue(), 70);
  EXPECT_EQ(cell->minValue(), 20);
  EXPECT_EQ(cell->maxValue(), 100);
  EXPECT_TRUE(cell->isVertical());
  EXPECT_EQ(cell->numberOfTickMarks(), 5u);
  EXPECT_EQ(cell->tickMarkPosition(), NSTickMarkPositionAbove);
  EXPECT_TRUE(cell->allowsTickMarkValuesOnly());
  EXPECT_EQ(cell->tag(), 3);
  EXPECT_TRUE(cell->isContinuous());
  EXPECT_EQ(coder.firstUnknownKey(), std::nullopt);
}

TEST_F(NSSliderCellTest, ACopyHasTheSameLimitsMarksAndValueAndNoView) {
  cellOf(slider).setMaxValue(8);
  cellOf(slider).setDoubleValue(3);
  cellOf(slider).setNumberOfTickMarks(9);
  const auto copy = std::dynamic_pointer_cast<NSSliderCell>(slider->cell()->copy());
  ASSERT_NE(copy, nullptr);
  EXPECT_EQ(copy->doubleValue(), 3);
  EXPECT_EQ(copy->maxValue(), 8);
  EXPECT_EQ(copy->numberOfTickMarks(), 9u);
  EXPECT_EQ(copy->controlView(), nullptr);
}

TEST_F(NSSliderCellTest, LiesAlongItsLongerSideUnlessItWasSet) {
  EXPECT_FALSE(cell->isVertical());
  EXPECT_FALSE(slider->isVertical());
  slider->setFrameSize({20, 116});
  EXPECT_TRUE(slider->isVertical());
  slider->setVertical(false);
  EXPECT_FALSE(slider->isVertical());
}

TEST_F(NSSliderCellTest, TheKnobGoesFromOneEndOfTheBoundsToTheOther) {
  EXPECT_EQ(cellOf(slider).knobRectFlipped(true), (CGRect{0, 2, 16, 16}));
  slider->setDoubleValue(0.5);
  EXPECT_EQ(cellOf(slider).knobRectFlipped(true), (CGRect{50, 2, 16, 16}));
  slider->setDoubleValue(1);
  EXPECT_EQ(cellOf(slider).knobRectFlipped(true), (CGRect{100, 2, 16, 16}));
  EXPECT_EQ(cellOf(slider).knobRectFlipped(false), (CGRect{100, 2, 16, 16}));
  EXPECT_EQ(cellOf(slider).barRectFlipped(true), (CGRect{2, 8, 112, 4}));
  EXPECT_EQ(slider->knobThickness(), 16);
}

TEST_F(NSSliderCellTest, KnobAndBarHaveOneMiddleOnAWholePointAtAnyHeight) {
  for (const CGFloat height : {20, 21, 22, 33}) {
    slider->setFrameSize({116, height});
    const CGRect knob = cellOf(slider).knobRectFlipped(true), bar = cellOf(slider).barRectFlipped(true);
    EXPECT_EQ(CGRectGetMidY(knob), CGRectGetMidY(bar)) << height;
    EXPECT_EQ(std::floor(knob.origin.y), knob.origin.y) << height;
    EXPECT_EQ(std::floor(bar.origin.y), bar.origin.y) << height;
  }
}

TEST_F(NSSliderCellTest, AVerticalOneHasItsMinimumAtTheBottom) {
  const auto vertical = sliderOf({20, 116});
  EXPECT_EQ(cellOf(vertical).knobRectFlipped(true), (CGRect{2, 100, 16, 16}));
  EXPECT_EQ(cellOf(vertical).knobRectFlipped(false), (CGRect{2, 0, 16, 16}));
  vertical->setDoubleValue(1);
  EXPECT_EQ(cellOf(vertical).knobRectFlipped(true), (CGRect{2, 0, 16, 16}));
  EXPECT_EQ(cellOf(vertical).barRectFlipped(true), (CGRect{8, 2, 4, 112}));
  EXPECT_EQ(cellOf(vertical).valueAtPoint({0, 8}), 1);
  EXPECT_EQ(cellOf(vertical).valueAtPoint({0, 83}), 0.25);
}

TEST_F(NSSliderCellTest, FromRightToLeftTheMinimumIsAtTheRight) {
  slider->setUserInterfaceLayoutDirection(NSUserInterfaceLayoutDirectionRightToLeft);
  slider->setDoubleValue(0.25);
  EXPECT_EQ(cellOf(slider).knobRectFlipped(true), (CGRect{75, 2, 16, 16}));
  EXPECT_EQ(cellOf(slider).valueAtPoint({83, 0}), 0.25);
  const auto vertical = sliderOf({20, 116});
  vertical->setUserInterfaceLayoutDirection(NSUserInterfaceLayoutDirectionRightToLeft);
  EXPECT_FALSE(cellOf(vertical).isMirrored());
}

TEST_F(NSSliderCellTest, AValueIsFoundWhereItsKnobHasItsMiddleAndLimitsBeyond) {
  slider->setMinValue(10);
  slider->setMaxValue(30);
  const NSSliderCell& own = cellOf(slider);
  EXPECT_EQ(own.valueAtPoint({8, 0}), 10);
  EXPECT_EQ(own.valueAtPoint({33, 0}), 15);
  EXPECT_EQ(own.valueAtPoint({108, 0}), 30);
  EXPECT_EQ(own.valueAtPoint({-50, 0}), 10);
  EXPECT_EQ(own.valueAtPoint({1000, 0}), 30);
  slider->setFrameSize({16, 20});
  slider->setVertical(false);
  EXPECT_EQ(own.valueAtPoint({16, 0}), 10);
}

TEST_F(NSSliderCellTest, AtTheEndOfTheWayIsTheMaximumItself) {
  slider->setMinValue(0.2);
  slider->setMaxValue(0.9);  // 0.2 and the range between the two make a little less
  EXPECT_EQ(cellOf(slider).valueAtPoint({108, 0}), 0.9);
  slider->setNumberOfTickMarks(3);
  EXPECT_EQ(slider->tickMarkValueAtIndex(2), 0.9);
}

TEST_F(NSSliderCellTest, WithoutARangeTheKnobStaysAtTheStart) {
  slider->setMaxValue(0);
  EXPECT_EQ(cellOf(slider).knobRectFlipped(true), (CGRect{0, 2, 16, 16}));
  EXPECT_EQ(cellOf(slider).valueAtPoint({60, 0}), 0);
}

TEST_F(NSSliderCellTest, TickMarksHaveTheValuesAtEqualDistances) {
  cell->setMinValue(1);
  cell->setMaxValue(2);
  cell->setNumberOfTickMarks(5);
  EXPECT_EQ(cell->tickMarkValueAtIndex(0), 1);
  EXPECT_EQ(cell->tickMarkValueAtIndex(3), 1.75);
  EXPECT_EQ(cell->tickMarkValueAtIndex(4), 2);
  EXPECT_EQ(cell->closestTickMarkValueToValue(1.37), 1.25);
  EXPECT_EQ(cell->closestTickMarkValueToValue(1.38), 1.5);
  EXPECT_EQ(cell->closestTickMarkValueToValue(7), 2);
  cell->setNumberOfTickMarks(0);
  EXPECT_EQ(cell->closestTickMarkValueToValue(1.37), 1.37);
  cell->setNumberOfTickMarks(1);
  EXPECT_EQ(cell->closestTickMarkValueToValue(1.37), 1);
}

TEST_F(NSSliderCellTest, TheTickMarkClosestToNoNumberIsTheFirst) {
  cell->setNumberOfTickMarks(5);
  EXPECT_EQ(cell->closestTickMarkValueToValue(notANumber), 0);
  EXPECT_EQ(cell->closestTickMarkValueToValue(-3), 0);
  cell->setMaxValue(std::numeric_limits<double>::infinity());
  EXPECT_EQ(cell->closestTickMarkValueToValue(std::numeric_limits<double>::infinity()), 0);
}

TEST_F(NSSliderCellTest, TickMarksAreWhereTheKnobHasItsMiddleAndMakeRoomForThemselves) {
  slider->setFrameSize({116, 27});
  slider->setNumberOfTickMarks(3);
  EXPECT_EQ(cellOf(slider).knobRectFlipped(true), (CGRect{0, 2, 16, 16}));
  EXPECT_EQ(slider->rectOfTickMarkAtIndex(1), (CGRect{58, 20, 1, 5}));
  EXPECT_EQ(slider->indexOfTickMarkAtPoint({58.5, 22}), 1u);
  EXPECT_EQ(slider->indexOfTickMarkAtPoint({57, 22}), NSNotFound);
  slider->setTickMarkPosition(NSTickMarkPositionAbove);
  EXPECT_EQ(cellOf(slider).knobRectFlipped(true), (CGRect{0, 9, 16, 16}));
  EXPECT_EQ(slider->rectOfTickMarkAtIndex(2), (CGRect{108, 2, 1, 5}));
  const auto vertical = sliderOf({27, 116});
  vertical->setNumberOfTickMarks(3);
  EXPECT_EQ(cellOf(vertical).knobRectFlipped(true), (CGRect{2, 100, 16, 16}));
  EXPECT_EQ(vertical->rectOfTickMarkAtIndex(0), (CGRect{20, 108, 5, 1}));
}

TEST_F(NSSliderCellTest, TickMarksWithoutNumberAreNotDrawnAndStillFound) {
  slider->setNumberOfTickMarks(std::size_t{1} << 60);
  EXPECT_EQ(only("fill", recordingOf([&] { slider->drawRect(slider->bounds()); })).size(), 2u);
  EXPECT_EQ(slider->indexOfTickMarkAtPoint({5, 3}), NSNotFound);
  EXPECT_NE(slider->indexOfTickMarkAtPoint(slider->rectOfTickMarkAtIndex(0).origin), NSNotFound);
  slider->setNumberOfTickMarks(58);
  EXPECT_EQ(only("fill", recordingOf([&] { slider->drawRect(slider->bounds()); })).size(), 60u);
}

TEST_F(NSSliderCellTest, EveryTickMarkIsFoundAllOverItsPlace) {
  slider->setNumberOfTickMarks(30);
  for (std::size_t index = 0; index < 30; ++index) {
    const CGRect mark = slider->rectOfTickMarkAtIndex(index);
    EXPECT_EQ(slider->indexOfTickMarkAtPoint(mark.origin), index);
    EXPECT_EQ(slider->indexOfTickMarkAtPoint({mark.origin.x + 0.99, mark.origin.y + 4.9}), index);
  }
}

TEST_F(NSSliderCellTest, ACellThatIsDrawnInAnothersControlIsWhereItWasDrawnAndChangesOnlyItself) {
  cell->setControlView(slider.get());
  recordingOf([&] { cell->drawWithFrame({50, 10, 66, 20}, *slider); });
  EXPECT_EQ(cell->knobRectFlipped(true), (CGRect{50, 12, 16, 16}));
  EXPECT_EQ(cell->valueAtPoint({83, 20}), 0.5);
  cell->userChoseValue(0.5);
  EXPECT_EQ(cell->doubleValue(), 0.5);
  EXPECT_EQ(slider->doubleValue(), 0);
}

TEST_F(NSSliderCellTest, AnUnknownTickMarkStopsTheProgram) {
  cell->setNumberOfTickMarks(2);
  EXPECT_DEATH(cell->tickMarkValueAtIndex(2), "NSSliderCell: there is no tick mark 2");
  EXPECT_DEATH(slider->rectOfTickMarkAtIndex(0), "there is no tick mark 0");
}

TEST_F(NSSliderCellTest, StepsAreTwentiethsOrTickMarksAndEndAtTheLimits) {
  cell->setMaxValue(100);
  cell->setDoubleValue(50);
  EXPECT_EQ(cell->valueAfterSteps(1), 55);
  EXPECT_EQ(cell->valueAfterSteps(-0.5), 47.5);
  EXPECT_EQ(cell->valueAfterSteps(40), 100);
  cell->setNumberOfTickMarks(5);
  EXPECT_EQ(cell->valueAfterSteps(1), 55);
  cell->setAllowsTickMarkValuesOnly(true);
  EXPECT_EQ(cell->valueAfterSteps(1), 75);
  EXPECT_EQ(cell->valueAfterSteps(-2), 0);
}

TEST_F(NSSliderCellTest, DrawsTheBarThePartUpToTheKnobAndTheKnob) {
  slider->setDoubleValue(0.5);
  const Lines lines = recordingOf([&] { slider->drawRect(slider->bounds()); });
  const Lines fills = only("fill", lines);
  ASSERT_EQ(fills.size(), 3u);
  EXPECT_THAT(fills[0], testing::HasSubstr(R"("shape":["roundedRect",2,8,112,4)"));
  EXPECT_THAT(fills[1], testing::HasSubstr(R"("shape":["roundedRect",2,8,56,4)"));
  EXPECT_THAT(fills[2], testing::HasSubstr(R"("shape":["oval",50.5,2.5,15,15])"));
}

TEST_F(NSSliderCellTest, TheFilledPartBeginsWhereTheMinimumIs) {
  const auto filled = [](const Ref<NSSlider>& drawn) {
    drawn->setDoubleValue(0.25);
    return only("fill", recordingOf([&] { drawn->drawRect(drawn->bounds()); })).at(1);
  };
  EXPECT_THAT(filled(slider), testing::HasSubstr(R"("shape":["roundedRect",2,8,31,4)"));
  slider->setUserInterfaceLayoutDirection(NSUserInterfaceLayoutDirectionRightToLeft);
  EXPECT_THAT(filled(slider), testing::HasSubstr(R"("shape":["roundedRect",83,8,31,4)"));
  const auto vertical = sliderOf({20, 116});
  EXPECT_THAT(filled(vertical), testing::HasSubstr(R"("shape":["roundedRect",8,83,4,31)"));
  // Where y points up the minimum is at the origin.
  const Lines upright = only("fill", recordingOf([&] { cellOf(vertical).drawBarInside({8, 2, 4, 112}, false); }));
  EXPECT_THAT(upright.at(1), testing::HasSubstr(R"("shape":["roundedRect",8,2,4,31)"));
}

TEST_F(NSSliderCellTest, AHeldKnobIsDarkerAndADisabledSliderFainter) {
  const auto drawn = [&] { return recordingOf([&] { slider->drawRect(slider->bounds()); }); };
  const Lines plain = drawn();
  slider->setHighlighted(true);
  const Lines held = drawn();
  EXPECT_EQ(only("fill", held), only("fill", plain));
  EXPECT_NE(only("setFillColor", held).at(2), only("setFillColor", plain).at(2));
  slider->setHighlighted(false);
  slider->setEnabled(false);
  const Lines disabled = drawn();
  for (const std::size_t part : {0, 1})
    EXPECT_NE(only("setFillColor", disabled).at(part), only("setFillColor", plain).at(part)) << part;
  EXPECT_NE(only("setStrokeColor", disabled), only("setStrokeColor", plain));
}

TEST_F(NSSliderCellTest, AScaleOfTickMarksHasNoFilledPart) {
  slider->setNumberOfTickMarks(3);
  const Lines fills = only("fill", recordingOf([&] { slider->drawRect(slider->bounds()); }));
  ASSERT_EQ(fills.size(), 5u);
  EXPECT_THAT(fills[1], testing::HasSubstr(R"("shape":["rect",8,)"));
  EXPECT_THAT(fills[4], testing::HasSubstr(R"("shape":["oval")"));
}

TEST_F(NSSliderCellTest, IsASliderToAssistiveClientsWithLimitsAndActions) {
  slider->setMaxValue(40);
  slider->setDoubleValue(10);
  const NSSliderCell& own = cellOf(slider);
  EXPECT_EQ(own.accessibilityAttributeValue(NSAccessibilityRoleAttribute), AccessibilityValue("AXSlider"));
  EXPECT_EQ(own.accessibilityAttributeValue(NSAccessibilityValueAttribute), AccessibilityValue(10.0));
  EXPECT_EQ(own.accessibilityAttributeValue(NSAccessibilityMinValueAttribute), AccessibilityValue(0.0));
  EXPECT_EQ(own.accessibilityAttributeValue(NSAccessibilityMaxValueAttribute), AccessibilityValue(40.0));
  EXPECT_EQ(own.accessibilityAttributeValue(NSAccessibilityOrientationAttribute),
            AccessibilityValue("AXHorizontalOrientation"));
  EXPECT_THAT(own.accessibilityActionNames(), ElementsAre("AXIncrement", "AXDecrement"));
  EXPECT_TRUE(own.accessibilityIsAttributeSettable(NSAccessibilityValueAttribute));
  EXPECT_TRUE(own.accessibilityIsAttributeSettable(NSAccessibilityFocusedAttribute));
  slider->setEnabled(false);
  EXPECT_FALSE(own.accessibilityIsAttributeSettable(NSAccessibilityValueAttribute));
}
