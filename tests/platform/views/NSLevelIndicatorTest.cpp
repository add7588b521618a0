#include "tessaluna/platform/views/NSLevelIndicator.h"

#include <gmock/gmock.h>

#include <cmath>
#include <limits>

#include "tessaluna/platform/foundation/NSCoder.h"
#include "tessaluna/platform/text/unicode.h"
#include "tests/harness/ActionProbe.h"
#include "tests/harness/ProbeView.h"
#include "tests/harness/StillWorld.h"
#include "tests/harness/printing.h"
#include "tests/harness/recordingOf.h"

using namespace tessaluna::platform;
using harness::only;
using testing::ElementsAre;
using testing::HasSubstr;

namespace {

// A rating of 0 to 5 in a control of 70 by 14 at (10, 100): a star is 14 points wide.
class NSLevelIndicatorTest : public harness::StillWorld {
 protected:
  NSLevelIndicatorTest() {
    indicator->setTarget(target);
    indicator->setAction("act:");
    target->onAct = [this] { values.push_back(indicator->doubleValue()); };
    window = showWindowWith(indicator);
  }
  NSLevelIndicatorCell& cell() const { return dynamic_cast<NSLevelIndicatorCell&>(*indicator->cell()); }
  // How many shapes with so many points or more were filled, and how many with fewer.
  std::pair<int, int> starsAndDots() const {
    std::pair<int, int> result;
    for (const std::string& line : only("fill", harness::recordingOf([&] { indicator->drawRect({}); })))
      ++(line.find("\"oval\"") == line.npos ? result.first : result.second);
    return result;
  }
  harness::Lines drawn(const Ref<NSLevelIndicatorCell>& drawnCell, CGRect frame) const {
    return harness::recordingOf([&] { drawnCell->drawWithFrame(frame, *indicator); });
  }

  Ref<NSLevelIndicator> indicator = make<NSLevelIndicator>(CGRect{10, 100, 70, 14});
  Ref<harness::ActionProbe> target = make<harness::ActionProbe>();
  std::vector<double> values;  // at each action
  Ref<NSWindow> window;
};

}  // namespace

TEST_F(NSLevelIndicatorTest, StartsAsARatingOfNoStarsOutOfFive) {
  EXPECT_EQ(cell().levelIndicatorStyle(), NSLevelIndicatorStyleRating);
  EXPECT_EQ(cell().numberOfParts(), 5u);
  EXPECT_EQ(starsAndDots(), std::pair(0, 0));
  EXPECT_FALSE(indicator->isEditable());
}

TEST_F(NSLevelIndicatorTest, TheMaximumDependsOnTheStyle) {
  EXPECT_EQ(make<NSLevelIndicatorCell>(NSLevelIndicatorStyleContinuousCapacity)->maxValue(), 100);
  EXPECT_EQ(make<NSLevelIndicatorCell>(NSLevelIndicatorStyleRelevancy)->maxValue(), 100);
  EXPECT_EQ(make<NSLevelIndicatorCell>(NSLevelIndicatorStyleDiscreteCapacity)->maxValue(), 5);
  EXPECT_EQ(make<NSLevelIndicatorCell>(NSLevelIndicatorStyleRating)->maxValue(), 5);
}

TEST_F(NSLevelIndicatorTest, ARatingShowsItsStarsAndWhileHighlightedDotsForTheOthers) {
  indicator->setDoubleValue(3);
  EXPECT_EQ(starsAndDots(), std::pair(3, 0));
  indicator->setHighlighted(true);
  EXPECT_EQ(starsAndDots(), std::pair(3, 2));
  indicator->setHighlighted(false);
  indicator->setEditable(true);
  EXPECT_EQ(starsAndDots(), std::pair(3, 2));
}

TEST_F(NSLevelIndicatorTest, ValuesOutsideTheRangeShowAsItsEnds) {
  indicator->setDoubleValue(12);
  EXPECT_EQ(starsAndDots().first, 5);
  indicator->setDoubleValue(-2);
  EXPECT_EQ(starsAndDots().first, 0);
  indicator->setDoubleValue(std::nan(""));
  EXPECT_EQ(starsAndDots().first, 0);
  indicator->setMaxValue(0);
  EXPECT_EQ(cell().filledShare(), 0);
  indicator->setMaxValue(1e300);
  EXPECT_EQ(cell().numberOfParts(), 200u);
}

TEST_F(NSLevelIndicatorTest, WithoutAFiniteRangeNothingIsFilled) {
  constexpr double infinity = std::numeric_limits<double>::infinity();
  for (const NSLevelIndicatorStyle style : {NSLevelIndicatorStyleRating, NSLevelIndicatorStyleDiscreteCapacity}) {
    const auto cell = make<NSLevelIndicatorCell>(style);
    cell->setMaxValue(infinity);
    cell->setDoubleValue(infinity);
    EXPECT_EQ(cell->filledShare(), 0);
    cell->setMaxValue(std::nan(""));
    EXPECT_EQ(cell->filledShare(), 0);
  }
}

TEST_F(NSLevelIndicatorTest, StarsShrinkWithASmallCellAndAreInTheMiddleOfAHighOne) {
  EXPECT_EQ(cell().rectOfPart(2, {0, 0, 70, 34}), (CGRect{28, 10, 14, 14}));
  EXPECT_EQ(cell().rectOfPart(2, {0, 0, 200, 8}), (CGRect{16, 0, 8, 8}));
  EXPECT_EQ(cell().rectOfPart(1, {0, 0, 50, 14}), (CGRect{10, 2, 10, 10}));
}

TEST_F(NSLevelIndicatorTest, ABarFillsWithTheValue) {
  const auto bar = make<NSLevelIndicatorCell>(NSLevelIndicatorStyleContinuousCapacity);
  bar->setDoubleValue(25);
  EXPECT_THAT(only("fill", drawn(bar, {10, 0, 80, 12})),
              ElementsAre(HasSubstr(R"("shape":["rect",10,0,80,12])"), HasSubstr(R"("shape":["rect",10,0,20,12])")));
}

TEST_F(NSLevelIndicatorTest, BlocksFillInWholeSteps) {
  const auto blocks = make<NSLevelIndicatorCell>(NSLevelIndicatorStyleDiscreteCapacity);
  blocks->setDoubleValue(2.4);
  const auto lines = drawn(blocks, {0, 0, 101, 12});
  EXPECT_THAT(only("fill", lines), ElementsAre(HasSubstr(R"(["rect",0,0,19,12])"), HasSubstr(R"(["rect",20,0,19,12])"),
                                               HasSubstr(R"(["rect",40,0,20,12])"), HasSubstr(R"(["rect",61,0,19,12])"),
                                               HasSubstr(R"(["rect",81,0,19,12])")));
  const auto colors = only("setFillColor", lines);
  ASSERT_EQ(colors.size(), 5u);
  EXPECT_EQ(colors[0], colors[1]);
  EXPECT_NE(colors[1], colors[2]);
  EXPECT_EQ(colors[2], colors[4]);
}

TEST_F(NSLevelIndicatorTest, RelevancyIsThinLinesAsFarAsTheValueReaches) {
  const auto lines = make<NSLevelIndicatorCell>(NSLevelIndicatorStyleRelevancy);
  lines->setDoubleValue(50);
  EXPECT_THAT(
      only("fill", drawn(lines, {0, 0, 10, 8})),
      ElementsAre(HasSubstr(R"(["rect",0,0,1,8])"), HasSubstr(R"(["rect",2,0,1,8])"), HasSubstr(R"(["rect",4,0,1,8])")));
}

TEST_F(NSLevelIndicatorTest, RelevancyOfAbsurdWidthEnds) {
  const auto lines = make<NSLevelIndicatorCell>(NSLevelIndicatorStyleRelevancy);
  lines->setDoubleValue(50);
  for (const CGFloat width : {1e308, std::numeric_limits<CGFloat>::infinity()})
    EXPECT_EQ(only("fill", drawn(lines, {0, 0, width, 8})).size(), 10000u);
}

TEST_F(NSLevelIndicatorTest, WarningsAndCriticalLevelsColorABarUpwardOrDownward) {
  const auto bar = make<NSLevelIndicatorCell>(NSLevelIndicatorStyleContinuousCapacity);
  const auto colorAt = [&](double value) {
    bar->setDoubleValue(value);
    return only("setFillColor", drawn(bar, {0, 0, 80, 12})).back();
  };
  const std::string green = colorAt(90);
  bar->setWarningValue(60);
  bar->setCriticalValue(80);
  const std::string yellow = colorAt(60), red = colorAt(80);
  EXPECT_EQ(colorAt(59), green);
  EXPECT_NE(yellow, green);
  EXPECT_NE(red, yellow);
  bar->setWarningValue(30);
  bar->setCriticalValue(10);
  EXPECT_EQ(colorAt(31), green);
  EXPECT_EQ(colorAt(30), yellow);
  EXPECT_EQ(colorAt(10), red);
  bar->setEnabled(false);
  EXPECT_NE(colorAt(10), red);
}

TEST_F(NSLevelIndicatorTest, AnEditableRatingTakesThePressedStarAndSendsItsActionAtTheRelease) {
  indicator->setEditable(true);
  user.press(*window, {10 + 14 * 3 + 5, 107});
  EXPECT_EQ(indicator->doubleValue(), 4);
  EXPECT_EQ(target->acts, 0);
  user.dragTo({10 + 14 + 5, 107});
  EXPECT_EQ(indicator->doubleValue(), 2);
  user.dragTo({300, 7});
  EXPECT_EQ(indicator->doubleValue(), 5);
  user.dragTo({10 + 14 * 2, 107});  // a star begins at its left edge
  EXPECT_EQ(indicator->doubleValue(), 3);
  user.dragTo({5, 107});
  EXPECT_EQ(indicator->doubleValue(), 0);
  user.dragTo({12, 107});
  user.release();
  EXPECT_THAT(values, ElementsAre(1));
}

TEST_F(NSLevelIndicatorTest, AnEditableBarTakesTheValueUnderThePointer) {
  indicator->setLevelIndicatorStyle(NSLevelIndicatorStyleContinuousCapacity);
  indicator->setMaxValue(100);
  indicator->setEditable(true);
  user.click(*window, {10 + 35, 107});
  EXPECT_THAT(values, ElementsAre(50));
}

TEST_F(NSLevelIndicatorTest, OneThatIsNotEditableLetsThePressThroughAndKeepsItsHighlight) {
  const auto below = make<harness::ProbeView>(CGRect{0, 0, 200, 150});
  window->contentView()->addSubview(below);
  below->addSubview(indicator);
  indicator->setHighlighted(true);
  user.click(*window, {20, 107});
  EXPECT_THAT(below->calls, testing::Contains("mouseDown"));
  EXPECT_EQ(indicator->doubleValue(), 0);
  EXPECT_EQ(target->acts, 0);
  EXPECT_TRUE(indicator->isHighlighted());
  EXPECT_FALSE(indicator->canBecomeKeyView());
}

TEST_F(NSLevelIndicatorTest, APressOnAnEditableOneLeavesTheHighlightAsItIs) {
  indicator->setEditable(true);
  for (const bool isHighlighted : {false, true}) {
    indicator->setHighlighted(isHighlighted);
    user.press(*window, {20, 107});
    EXPECT_EQ(indicator->isHighlighted(), isHighlighted);
    user.release();
    EXPECT_EQ(indicator->isHighlighted(), isHighlighted);
    user.press(*window, {40, 107});
    indicator->setEnabled(false);
    EXPECT_EQ(indicator->isHighlighted(), isHighlighted);
    indicator->setEnabled(true);
    user.release();
  }
}

TEST_F(NSLevelIndicatorTest, KeysChangeAnEditableOneByPartsAndSendTheActionIfTheyChangeIt) {
  indicator->setEditable(true);
  window->makeFirstResponder(indicator.get());
  for (const char32_t key : {NSRightArrowFunctionKey, NSUpArrowFunctionKey, NSLeftArrowFunctionKey, NSEndFunctionKey,
                             NSRightArrowFunctionKey, NSHomeFunctionKey, NSDownArrowFunctionKey})
    user.pressKey(key);
  EXPECT_THAT(values, ElementsAre(1, 2, 1, 5, 0));
}

TEST_F(NSLevelIndicatorTest, HomeGoesToTheMinimumAlsoWhereThatIsNotZero) {
  indicator->setEditable(true);
  indicator->setMinValue(1);
  indicator->setDoubleValue(4);
  window->makeFirstResponder(indicator.get());
  user.pressKey(NSHomeFunctionKey);
  EXPECT_THAT(values, ElementsAre(1));
}

TEST_F(NSLevelIndicatorTest, KeysDoNothingWhereItIsNotEditableOrPressed) {
  const auto key = make<NSEvent>(NSEvent::Fields{
      .type = NSEventType::KeyDown, .window = window, .characters = utf8FromScalar(NSRightArrowFunctionKey)});
  indicator->keyDown(key);
  EXPECT_EQ(indicator->doubleValue(), 0);
  indicator->setEditable(true);
  user.press(*window, {30, 107});
  const double pressed = indicator->doubleValue();
  indicator->keyDown(key);
  EXPECT_EQ(indicator->doubleValue(), pressed);
  EXPECT_THAT(values, ElementsAre());
}

TEST_F(NSLevelIndicatorTest, IsALevelWithARangeToAssistiveClients) {
  indicator->setDoubleValue(2);
  EXPECT_EQ(cell().accessibilityRole(), NSAccessibilityLevelIndicatorRole);
  EXPECT_EQ(cell().accessibilityValue(), AccessibilityValue(2.0));
  EXPECT_EQ(cell().accessibilityAttributeValue(NSAccessibilityMaxValueAttribute), AccessibilityValue(5.0));
  EXPECT_FALSE(cell().accessibilityIsAttributeSettable(NSAccessibilityValueAttribute));
  EXPECT_TRUE(cell().accessibilityActionNames().empty());
  cell().accessibilityPerformAction(NSAccessibilityIncrementAction);
  EXPECT_EQ(indicator->doubleValue(), 2);
  indicator->setEditable(true);
  cell().accessibilityPerformAction(NSAccessibilityIncrementAction);
  cell().accessibilitySetValue(1.0, NSAccessibilityValueAttribute);
  cell().accessibilityPerformAction(NSAccessibilityDecrementAction);
  EXPECT_THAT(values, ElementsAre(3, 1, 0));
}

TEST_F(NSLevelIndicatorTest, IsDecoded) {
  NSCoder coder(R"({"cell": {"levelIndicatorStyle": "discreteCapacity", "minValue": 1, "maxValue": 8, "doubleValue": 3,
                    "warningValue": 6, "criticalValue": 7, "editable": true}})");
  const auto decoded = make<NSLevelIndicator>(coder);
  const auto& read = dynamic_cast<const NSLevelIndicatorCell&>(*decoded->cell());
  EXPECT_EQ(read.levelIndicatorStyle(), NSLevelIndicatorStyleDiscreteCapacity);
  EXPECT_EQ(read.numberOfParts(), 7u);
  EXPECT_EQ(decoded->doubleValue(), 3);
  EXPECT_EQ(read.warningValue(), 6);
  EXPECT_EQ(read.criticalValue(), 7);
  EXPECT_TRUE(decoded->isEditable());
}

TEST_F(NSLevelIndicatorTest, ACopyOfTheCellHasItsRange) {
  const auto bar = make<NSLevelIndicatorCell>(NSLevelIndicatorStyleContinuousCapacity);
  bar->setDoubleValue(7);
  const auto copy = std::dynamic_pointer_cast<NSLevelIndicatorCell>(bar->copy());
  EXPECT_EQ(copy->levelIndicatorStyle(), NSLevelIndicatorStyleContinuousCapacity);
  EXPECT_EQ(copy->maxValue(), 100);
  EXPECT_EQ(copy->doubleValue(), 7);
}

namespace {

// A bar from 0 to 10 in a control of 101 by 18 at (10, 100): marks below it are 10 points apart.
class NSLevelIndicatorWithTickMarks : public NSLevelIndicatorTest {
 protected:
  NSLevelIndicatorWithTickMarks() {
    indicator->setFrame({10, 100, 101, 18});
    indicator->setLevelIndicatorStyle(NSLevelIndicatorStyleContinuousCapacity);
    indicator->setMaxValue(10);
    indicator->setNumberOfTickMarks(11);
  }
  harness::Lines filled() const {
    return only("fill", harness::recordingOf([&] { indicator->drawRect({}); }));
  }
};

}  // namespace

TEST_F(NSLevelIndicatorWithTickMarks, TheMarksAreFromTheMinimumToTheMaximumBelowTheBar) {
  EXPECT_EQ(cell().tickMarkValueAtIndex(0), 0);
  EXPECT_EQ(cell().tickMarkValueAtIndex(4), 4);
  EXPECT_EQ(cell().tickMarkValueAtIndex(10), 10);
  EXPECT_EQ(cell().rectOfTickMarkAtIndex(0), (CGRect{0, 13, 1, 3}));
  EXPECT_EQ(cell().rectOfTickMarkAtIndex(4), (CGRect{40, 13, 1, 3}));
  EXPECT_EQ(cell().rectOfTickMarkAtIndex(10), (CGRect{100, 13, 1, 3}));
}

TEST_F(NSLevelIndicatorWithTickMarks, AboveTheBarTheyEndAtTheSameDistance) {
  indicator->setTickMarkPosition(NSTickMarkPositionAbove);
  indicator->setNumberOfMajorTickMarks(2);
  EXPECT_EQ(cell().rectOfTickMarkAtIndex(0), (CGRect{0, 0, 1, 5}));
  EXPECT_EQ(cell().rectOfTickMarkAtIndex(4), (CGRect{40, 2, 1, 3}));
  indicator->setDoubleValue(5);
  EXPECT_THAT(filled(), testing::Contains(HasSubstr(R"(["rect",0,6,50.5,12])")));
}

TEST_F(NSLevelIndicatorWithTickMarks, ThreeMajorMarksOfElevenAreTheEndsAndTheMiddle) {
  indicator->setNumberOfMajorTickMarks(3);
  std::vector<std::size_t> majors;
  for (std::size_t mark = 0; mark < 11; ++mark)
    if (cell().rectOfTickMarkAtIndex(mark).size.height == 5) majors.push_back(mark);
  EXPECT_THAT(majors, ElementsAre(0u, 5u, 10u));
}

TEST_F(NSLevelIndicatorWithTickMarks, TheBarLeavesThemRoom) {
  indicator->setDoubleValue(10);
  EXPECT_THAT(filled(), testing::Contains(HasSubstr(R"(["rect",0,0,101,12])")));
  EXPECT_EQ(filled().size(), 13u);
  EXPECT_EQ(cell().cellSize().height, 18);
  indicator->setNumberOfTickMarks(0);
  EXPECT_THAT(filled(), testing::Contains(HasSubstr(R"(["rect",0,0,101,18])")));
  EXPECT_EQ(cell().cellSize().height, 12);
}

TEST_F(NSLevelIndicatorWithTickMarks, ARatingHasNone) {
  indicator->setLevelIndicatorStyle(NSLevelIndicatorStyleRating);
  indicator->setMaxValue(5);
  EXPECT_TRUE(filled().empty());
  EXPECT_EQ(cell().cellSize().height, 14);
}

TEST_F(NSLevelIndicatorWithTickMarks, SoManyThatTheyWouldTouchAreNotDrawn) {
  indicator->setNumberOfTickMarks(50);
  EXPECT_EQ(filled().size(), 51u);
  indicator->setNumberOfTickMarks(51);
  EXPECT_EQ(filled().size(), 1u);
}

TEST_F(NSLevelIndicatorWithTickMarks, ComeFromAnInterfaceFile) {
  NSCoder coder(R"({"levelIndicatorStyle": "discreteCapacity", "maxValue": 4, "numberOfTickMarks": 5,
      "numberOfMajorTickMarks": 2, "tickMarkPosition": "above"})");
  const auto read = make<NSLevelIndicatorCell>(coder);
  EXPECT_EQ(read->numberOfTickMarks(), 5u);
  EXPECT_EQ(read->numberOfMajorTickMarks(), 2u);
  EXPECT_EQ(read->tickMarkPosition(), NSTickMarkPositionAbove);
  EXPECT_EQ(read->maxValue(), 4);
}

using NSLevelIndicatorWithTickMarksDeathTest = NSLevelIndicatorWithTickMarks;

TEST_F(NSLevelIndicatorWithTickMarksDeathTest, AnIndexPastTheLastStopsTheProgram) {
  EXPECT_DEATH(cell().rectOfTickMarkAtIndex(11), "there is no tick mark 11");
}
