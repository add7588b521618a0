#include "tessaluna/uikit/cells/UnderlinedSegmentedCell.h"

#include <gmock/gmock.h>

#include "tessaluna/platform/foundation/NSCoder.h"
#include "tessaluna/platform/graphics/NSColor.h"
#include "tessaluna/platform/text/NSFont.h"
#include "tessaluna/platform/views/NSSegmentedControl.h"
#include "tests/harness/ActionProbe.h"
#include "tests/harness/StillWorld.h"
#include "tests/harness/printing.h"
#include "tests/harness/recordingOf.h"

namespace TessalunaUIKit {
namespace {

using namespace tessaluna::platform;
using harness::Lines;
using harness::only;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::string_view lightGray = R"("lightGrayColor")", darkGray = R"("darkGrayColor")", white = R"("whiteColor")",
                           black = R"("blackColor")", blue = R"("blueColor")";

// The names of the colors, or their components where they have none.
std::vector<std::string> colorsOf(const Lines& lines, std::string_view operation) {
  std::vector<std::string> colors;
  for (const std::string& line : only(operation, lines)) {
    const std::size_t named = line.find("\"named\":");
    const std::size_t color = line.find("\"color\":");
    colors.push_back(named != line.npos ? line.substr(named + 8, line.size() - named - 9)
                                        : line.substr(color + 8, line.size() - color - 9));
  }
  return colors;
}

// "abcd" and "abcdefgh" at 5 points a character: natural widths of 40 and 60 points.
class UnderlinedSegmentedCellTest : public harness::StillWorld {
 protected:
  UnderlinedSegmentedCellTest() {
    control->setCell(cell);
    cell->setFont(NSFont::systemFontOfSize(10));
    cell->setSegmentCount(2);
    cell->setLabelForSegment("abcd", 0);
    cell->setLabelForSegment("abcdefgh", 1);
  }
  Lines drawn(CGRect frame = {0, 0, 100, 24}) {
    return harness::recordingOf([&] { cell->drawWithFrame(frame, *control); });
  }
  Lines drawnSegment(std::size_t segment, CGRect frame) {
    return harness::recordingOf([&] { cell->drawSegment(segment, frame, *control); });
  }

  Ref<NSSegmentedControl> control = make<NSSegmentedControl>(CGRect{10, 100, 100, 24});
  Ref<UnderlinedSegmentedCell> cell = make<UnderlinedSegmentedCell>();
};

TEST_F(UnderlinedSegmentedCellTest, StartsDarkWithABlueBarHoweverItIsMade) {
  NSCoder coder(R"({"useDarkTheme": false, "underlineColor": "redColor"})");
  for (const auto& made : {make<UnderlinedSegmentedCell>(), make<UnderlinedSegmentedCell>(std::string("text")),
                           make<UnderlinedSegmentedCell>(Ref<NSImage>()), make<UnderlinedSegmentedCell>(coder)}) {
    EXPECT_TRUE(made->useDarkTheme());
    EXPECT_EQ(made->underlineColor(), NSColor::blueColor());
    EXPECT_EQ(made->pressedSegment(), std::nullopt);
  }
}

TEST_F(UnderlinedSegmentedCellTest, NaturalWidthsOf40And60Become80And120InAFrameOf200) {
  EXPECT_EQ(cell->widthForSegment(0), 40);
  EXPECT_EQ(cell->widthForSegment(1), 60);
  EXPECT_THAT(cell->segmentRectsForBounds({7, 3, 200, 24}), ElementsAre(CGRect{7, 3, 80, 24}, CGRect{87, 3, 120, 24}));
}

TEST_F(UnderlinedSegmentedCellTest, StretchedSegmentsEndInsideOfPoints) {
  EXPECT_THAT(cell->segmentRectsForBounds({0, 0, 133, 24}),
              ElementsAre(CGRect{0, 0, 133.0 * 40 / 100, 24}, CGRect{133.0 * 40 / 100, 0, 133.0 * 60 / 100, 24}));
}

TEST_F(UnderlinedSegmentedCellTest, SegmentsFillAFrameOfNegativeSizeToo) {
  EXPECT_THAT(cell->segmentRectsForBounds({107, 27, -100, -24}), ElementsAre(CGRect{7, 3, 40, 24}, CGRect{47, 3, 60, 24}));
}

TEST_F(UnderlinedSegmentedCellTest, AFontChangesTheWidthOfEverySegment) {
  const std::vector<CGRect> before = cell->segmentRectsForBounds({0, 0, 200, 24});
  cell->setFont(NSFont::systemFontOfSize(20));
  EXPECT_EQ(cell->widthForSegment(0), 60);
  EXPECT_EQ(cell->widthForSegment(1), 100);
  const std::vector<CGRect> after = cell->segmentRectsForBounds({0, 0, 200, 24});
  EXPECT_EQ(after[0].size.width, 75);
  EXPECT_NE(before[0], after[0]);
  EXPECT_NE(before[1], after[1]);
}

TEST_F(UnderlinedSegmentedCellTest, WithoutAFontItIsTheSystemsAtItsUsualSize) {
  cell->setFont(nullptr);
  EXPECT_EQ(cell->widthForSegment(0), 20 + 4 * 6.5);
}

TEST_F(UnderlinedSegmentedCellTest, WidthsAreNotRounded) {
  cell->setFont(NSFont::systemFontOfSize(10.1));
  EXPECT_EQ(cell->widthForSegment(0), 20 + 4 * 5.05);
}

TEST_F(UnderlinedSegmentedCellTest, ASegmentIsItsLabelInThreeQuartersOfTheHeightAndALineNearTheEnd) {
  // 0.75 * 22 = 16.5 rounds up; the label is 20 by 12, and lies a point further along y than in the middle.
  EXPECT_EQ(
      drawnSegment(0, {10, 20, 40.6, 22}),
      (Lines{
          R"({"op":"save"})", R"({"op":"clipRect","rect":[10,20,41,17]})", R"({"op":"save"})", R"({"op":"save"})",
          R"({"op":"concat","transform":[1,0,0,1,20.5,26.5]})",
          R"({"op":"setFillColor","color":[0.6666666666666666,0.6666666666666666,0.6666666666666666,1],"named":"lightGrayColor"})",
          R"({"op":"glyphs","glyphs":[[97,0,0],[98,5,0],[99,10,0],[100,15,0]]})", R"({"op":"restore"})",
          R"({"op":"restore"})", R"({"op":"restore"})",
          R"({"op":"setStrokeColor","color":[0.6666666666666666,0.6666666666666666,0.6666666666666666,1],"named":"lightGrayColor"})",
          R"({"op":"stroke","path":[["M",10,40],["L",50.6,40]],"lineWidth":0.5,"cap":"butt","join":"miter","miterLimit":10,"dash":[],"phase":0})"}));
}

TEST_F(UnderlinedSegmentedCellTest, TheLabelsBoxIsThreeQuartersOfTheHeightToTheNearestPoint) {
  EXPECT_EQ(drawnSegment(0, {0, 0, 40, 23}).at(1), R"({"op":"clipRect","rect":[0,0,40,17]})");
  EXPECT_EQ(drawnSegment(0, {0, 0, 40, 25}).at(1), R"({"op":"clipRect","rect":[0,0,40,19]})");
}

TEST_F(UnderlinedSegmentedCellTest, ALabelThatFitsTheRoundedWidthIsOneLineInTheMiddle) {
  // 45 points wide, in 44.6 that are rounded up.
  cell->setLabelForSegment("abcd efgh", 0);
  EXPECT_EQ(only("concat", drawnSegment(0, {0, 0, 44.6, 24})), Lines{R"({"op":"concat","transform":[1,0,0,1,0,7]})"});
}

TEST_F(UnderlinedSegmentedCellTest, ALabelIsCenteredWhateverTheCellsAlignmentAndAtAFractionOfAPointWhereTheSegmentIs) {
  cell->setAlignment(NSTextAlignmentLeft);
  EXPECT_EQ(only("concat", drawnSegment(0, {10.25, 20, 40, 24})),
            Lines{R"({"op":"concat","transform":[1,0,0,1,20.25,27]})"});
}

TEST_F(UnderlinedSegmentedCellTest, TheSelectedSegmentIsOverABarOfFourPoints) {
  cell->setSelectedSegment(0);
  const Lines lines = drawnSegment(0, {10, 20, 40, 24});
  EXPECT_EQ(
      only("stroke", lines),
      (Lines{
          R"({"op":"stroke","path":[["M",10,42],["L",50,42]],"lineWidth":4,"cap":"butt","join":"miter","miterLimit":10,"dash":[],"phase":0})"}));
  EXPECT_THAT(colorsOf(lines, "setStrokeColor"), ElementsAre(blue));
}

TEST_F(UnderlinedSegmentedCellTest, DrawsAllSegmentsInOrderAndNoBackground) {
  const Lines lines = drawn({7, 3, 100, 24});
  Lines expected = drawnSegment(0, {7, 3, 40, 24});
  const Lines second = drawnSegment(1, {47, 3, 60, 24});
  expected.insert(expected.end(), second.begin(), second.end());
  EXPECT_EQ(lines, expected);
  EXPECT_THAT(only("fill", lines), IsEmpty());
  EXPECT_EQ(only("stroke", lines).size(), 2u);
}

TEST_F(UnderlinedSegmentedCellTest, ColorsOfTheLabelsByThemeAndState) {
  struct Row {
    bool isDark;
    std::string_view pressed, selected, neither;
  };
  for (const Row& row : {Row{true, white, "[0.9,0.9,0.9,1]", lightGray}, Row{false, darkGray, black, darkGray}}) {
    cell->setUseDarkTheme(row.isDark);
    cell->setSelectedSegment(std::nullopt);
    EXPECT_THAT(colorsOf(drawn(), "setFillColor"), ElementsAre(row.neither, row.neither));
    cell->setSelectedSegment(1);
    EXPECT_THAT(colorsOf(drawn(), "setFillColor"), ElementsAre(row.neither, row.selected));
    cell->startTrackingAt({70, 5}, *control);  // a press goes before the selection
    EXPECT_THAT(colorsOf(drawn(), "setFillColor"), ElementsAre(row.neither, row.pressed));
    cell->stopTracking({70, 5}, {70, 5}, *control, false);
  }
}

TEST_F(UnderlinedSegmentedCellTest, InTheLightThemeAPressLooksLikeNone) {
  cell->setUseDarkTheme(false);
  const Lines before = drawn();
  cell->startTrackingAt({5, 5}, *control);
  EXPECT_EQ(drawn(), before);
  cell->setUseDarkTheme(true);
  EXPECT_NE(drawn(), before);
}

TEST_F(UnderlinedSegmentedCellTest, APressThatTheProgramSetsLooksLikeThatOfTheMouse) {
  cell->setPressedSegment(1);
  EXPECT_THAT(colorsOf(drawn(), "setFillColor"), ElementsAre(lightGray, white));
  cell->setPressedSegment(std::nullopt);
  EXPECT_THAT(colorsOf(drawn(), "setFillColor"), ElementsAre(lightGray, lightGray));
}

TEST_F(UnderlinedSegmentedCellTest, TheBarFollowsTheSelectionAlone) {
  cell->setUnderlineColor(NSColor::redColor());
  cell->setSelectedSegment(0);
  cell->startTrackingAt({70, 5}, *control);
  EXPECT_THAT(colorsOf(drawn(), "setStrokeColor"), ElementsAre(R"("redColor")", lightGray));
  cell->setUseDarkTheme(false);
  EXPECT_THAT(colorsOf(drawn(), "setStrokeColor"), ElementsAre(R"("redColor")", darkGray));
}

TEST_F(UnderlinedSegmentedCellTest, AWiderTextIsCutByTheClip) {
  cell->setLineBreakMode(NSLineBreakByClipping);
  const Lines lines = drawnSegment(1, {10, 0, 20, 24});
  EXPECT_EQ(lines.at(1), R"({"op":"clipRect","rect":[10,0,20,18]})");
  EXPECT_EQ(only("glyphs", lines).size(), 1u);
  cell->setLineBreakMode(NSLineBreakByWordWrapping);
  EXPECT_THAT(only("glyphs", drawnSegment(1, {10, 0, 20, 24})),
              ElementsAre(R"({"op":"glyphs","glyphs":[[97,0,0],[98,5,0],[99,10,0],[100,15,0]]})",
                          R"({"op":"glyphs","glyphs":[[101,0,0],[102,5,0],[103,10,0],[104,15,0]]})"));
}

TEST_F(UnderlinedSegmentedCellTest, AWiderTextIsShortenedByTheLineBreakMode) {
  cell->setLineBreakMode(NSLineBreakByTruncatingTail);
  EXPECT_THAT(
      only("glyphs", drawnSegment(1, {10, 0, 20, 24})),
      ElementsAre(R"({"op":"glyphs","glyphs":[[97,0,0],[98,5,0],[99,10,0]]})", R"({"op":"glyphs","glyphs":[[8230,15,0]]})"));
}

TEST_F(UnderlinedSegmentedCellTest, ASegmentWithoutALabelHasNoWidthNoTextAndNoLine) {
  cell->setLabelForSegment(std::nullopt, 0);
  cell->setSelectedSegment(0);
  EXPECT_EQ(cell->widthForSegment(0), 0);
  EXPECT_THAT(cell->segmentRectsForBounds({0, 0, 100, 24}), ElementsAre(CGRect{0, 0, 0, 24}, CGRect{0, 0, 100, 24}));
  EXPECT_THAT(drawnSegment(0, {0, 0, 0, 24}), IsEmpty());
  EXPECT_EQ(drawn(), drawnSegment(1, {0, 0, 100, 24}));
}

TEST_F(UnderlinedSegmentedCellTest, AnEmptyLabelIsALabel) {
  cell->setLabelForSegment("", 0);
  EXPECT_EQ(cell->widthForSegment(0), 20);
  EXPECT_EQ(only("stroke", drawn()).size(), 2u);
}

TEST_F(UnderlinedSegmentedCellTest, WithoutAnyLabelNothingIsDrawnAndNothingCanBePressed) {
  for (std::size_t i = 0; i < 2; ++i) cell->setLabelForSegment(std::nullopt, i);
  EXPECT_THAT(drawn(), IsEmpty());
  EXPECT_TRUE(cell->startTrackingAt({5, 5}, *control));
  EXPECT_EQ(cell->pressedSegment(), std::nullopt);
  const auto window = showWindowWith(control);
  EXPECT_EQ(accessibilityOf(cell->accessibilityChildren()->at(0))->accessibilityFrame(), CGRect{});
}

TEST_F(UnderlinedSegmentedCellTest, APressShowsUntilTheRelease) {
  const auto window = showWindowWith(control);
  user.press(*window, {20, 110});
  EXPECT_EQ(cell->pressedSegment(), 0u);
  user.dragTo({80, 110});
  EXPECT_EQ(cell->pressedSegment(), 0u);
  user.dragTo({80, 10});
  EXPECT_EQ(cell->pressedSegment(), 0u);
  user.release();
  EXPECT_EQ(cell->pressedSegment(), std::nullopt);
}

TEST_F(UnderlinedSegmentedCellTest, ThePressIsOverBeforeTheSegmentIsSelected) {
  const auto window = showWindowWith(control);
  std::optional<std::size_t> pressedAtSelection = 7;
  const auto token = accessibilityNotificationCenter().addObserverForName(
      NSAccessibilitySelectedChildrenChangedNotification, cell, nullptr,
      [&](const Ref<NSNotification>&) { pressedAtSelection = cell->pressedSegment(); });
  user.click(*window, {20, 110});
  accessibilityNotificationCenter().removeObserver(token);
  EXPECT_EQ(pressedAtSelection, std::nullopt);
}

TEST_F(UnderlinedSegmentedCellTest, APressAndItsReleaseAreSeen) {
  const auto window = showWindowWith(control);
  user.press(*window, {20, 110});
  desktop.settle();
  ASSERT_EQ(nativeOf(*window).paints().size(), 1u);
  EXPECT_THAT(colorsOf(nativeOf(*window).paints().back().lines, "setFillColor"), testing::Contains(white));
  user.release();
  desktop.settle();
  EXPECT_THAT(colorsOf(nativeOf(*window).paints().back().lines, "setFillColor"), testing::Contains("[0.9,0.9,0.9,1]"));
}

// The base class starts tracking whatever is under the point.
TEST_F(UnderlinedSegmentedCellTest, APointOutsideTheBoundsPressesNothingAndIsTracked) {
  EXPECT_TRUE(cell->startTrackingAt({-1, 5}, *control));
  EXPECT_EQ(cell->pressedSegment(), std::nullopt);
  cell->startTrackingAt({5, 5}, *control);
  EXPECT_TRUE(cell->startTrackingAt({100, 5}, *control));
  EXPECT_EQ(cell->pressedSegment(), 0u);  // the earlier one stays
}

TEST_F(UnderlinedSegmentedCellTest, APressIsFoundInBoundsThatStartElsewhere) {
  control->setBoundsOrigin({50, 7});
  cell->startTrackingAt({89, 8}, *control);
  EXPECT_EQ(cell->pressedSegment(), 0u);
  cell->startTrackingAt({91, 8}, *control);
  EXPECT_EQ(cell->pressedSegment(), 1u);
}

TEST_F(UnderlinedSegmentedCellTest, TheClickedSegmentIsTheOneDrawnUnderThePointerAtEveryWidth) {
  const auto target = make<harness::ActionProbe>();
  control->setTarget(target);
  control->setAction("act:");
  const auto window = showWindowWith(control);
  for (const CGFloat width : {50.0, 133.3, 180.0})
    for (const auto& [share, segment] : {std::pair(0.39, 0u), std::pair(0.41, 1u)}) {
      control->setFrame({10, 100, width, 24});
      user.click(*window, {10 + width * share, 110});
      EXPECT_EQ(control->selectedSegment(), segment) << width;
    }
  EXPECT_EQ(target->acts, 6);
}

TEST_F(UnderlinedSegmentedCellTest, ADisabledSegmentLooksPressedAndIsNotSelected) {
  cell->setEnabledForSegment(false, 0);
  const auto window = showWindowWith(control);
  user.press(*window, {20, 110});
  EXPECT_EQ(cell->pressedSegment(), 0u);
  EXPECT_THAT(colorsOf(drawn(), "setFillColor"), ElementsAre(white, lightGray));
  user.release();
  EXPECT_EQ(control->selectedSegment(), std::nullopt);
}

TEST_F(UnderlinedSegmentedCellTest, WhatDoesNotFitGoesIntoAMenuOnlyIfTheHostTurnsThatOn) {
  control->setFrame({10, 100, 70, 24});
  EXPECT_EQ(cell->shownSegmentCount(control->bounds()), 2u);
  control->setPutsOverflowIntoMenu(true);
  EXPECT_EQ(cell->overflowRectForBounds(control->bounds()), (CGRect{42, 0, 28, 24}));
  cell->setSelectedSegment(1);
  const Lines lines = drawn(control->bounds());
  EXPECT_EQ(only("glyphs", lines).back(), R"({"op":"glyphs","glyphs":[[8226,0,0],[8226,5,0],[8226,10,0]]})");
  EXPECT_THAT(colorsOf(lines, "setStrokeColor"), ElementsAre(lightGray, blue));
  EXPECT_EQ(colorsOf(lines, "setFillColor").back(), "[0.9,0.9,0.9,1]");
  cell->setSelectedSegment(0);
  EXPECT_EQ(colorsOf(drawn(control->bounds()), "setFillColor").back(), lightGray);
}

TEST_F(UnderlinedSegmentedCellTest, ItsSettersAskForNoRedraw) {
  const auto window = showWindowWith(control);
  cell->setUseDarkTheme(false);
  cell->setUnderlineColor(NSColor::redColor());
  cell->setPressedSegment(0);
  desktop.settle();
  EXPECT_THAT(nativeOf(*window).paints(), IsEmpty());
}

TEST_F(UnderlinedSegmentedCellTest, ACopyHasItsLookAndNoPress) {
  cell->setUseDarkTheme(false);
  cell->setUnderlineColor(NSColor::redColor());
  cell->startTrackingAt({5, 5}, *control);
  const auto copy = std::dynamic_pointer_cast<UnderlinedSegmentedCell>(cell->copy());
  ASSERT_NE(copy, nullptr);
  EXPECT_FALSE(copy->useDarkTheme());
  EXPECT_EQ(copy->underlineColor(), NSColor::redColor());
  EXPECT_EQ(copy->labelForSegment(1), "abcdefgh");
  EXPECT_EQ(copy->pressedSegment(), std::nullopt);
}

using UnderlinedSegmentedCellDeathTest = UnderlinedSegmentedCellTest;

TEST_F(UnderlinedSegmentedCellDeathTest, DrawingTheBarWithoutAColorStopsTheProgram) {
  cell->setSelectedSegment(0);
  cell->setUnderlineColor(nullptr);
  EXPECT_DEATH(drawn(), "used while absent: underlineColor");
}

}  // namespace
}  // namespace TessalunaUIKit
