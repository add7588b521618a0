// Segments that do not fit, in a menu at the control's end.
#include <gmock/gmock.h>

#include "tessaluna/platform/backend/Menu.h"
#include "tessaluna/platform/graphics/NSImage.h"
#include "tests/harness/SegmentedWorld.h"

using namespace tessaluna::platform;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Optional;

namespace {

// Widths of 60, 40 and 100 points, and 28 for the part that opens the menu.
class OverflowingSegmentsTest : public harness::SegmentedWorld {
 protected:
  OverflowingSegmentsTest() {
    control->setFrame({0, 100, 148, 24});
    control->setPutsOverflowIntoMenu(true);
  }
};

}  // namespace

TEST_F(OverflowingSegmentsTest, WhatDoesNotFitIsInAMenuAtTheEndIfTheHostWantsIt) {
  EXPECT_EQ(cell->shownSegmentCount(control->bounds()), 2u);
  EXPECT_EQ(cell->overflowRectForBounds(control->bounds()), (CGRect{120, 0, 28, 24}));
  EXPECT_THAT(cell->segmentRectsForBounds(control->bounds()),
              ElementsAre(CGRect{0, 0, 72, 24}, CGRect{72, 0, 48, 24}, CGRect{120, 0, 0, 24}));
  control->setPutsOverflowIntoMenu(false);
  EXPECT_EQ(cell->shownSegmentCount(control->bounds()), 3u);
  EXPECT_EQ(cell->overflowRectForBounds(control->bounds()), std::nullopt);
}

TEST_F(OverflowingSegmentsTest, NothingIsInTheMenuWhereAllFit) {
  control->setFrame({0, 100, 200, 24});
  EXPECT_EQ(cell->overflowRectForBounds(control->bounds()), std::nullopt);
}

TEST_F(OverflowingSegmentsTest, WhereNothingFitsThePartForTheMenuIsAllThereIs) {
  control->setFrame({0, 100, 20, 24});
  EXPECT_EQ(cell->shownSegmentCount(control->bounds()), 0u);
  EXPECT_EQ(cell->overflowRectForBounds(control->bounds()), (CGRect{0, 0, 20, 24}));
  EXPECT_EQ(cell->segmentAtPoint({5, 5}, control->bounds()), std::nullopt);
}

TEST_F(OverflowingSegmentsTest, ChoosingFromTheMenuClicksTheSegment) {
  control->setSegmentCount(4);
  control->setLabelForSegment("Live", 3);
  control->setEnabledForSegment(false, 3);
  user.click(*window, {130, 110});
  ASSERT_NE(desktop.openMenu(), nullptr);
  const auto entries = desktop.openMenu()->entries;
  ASSERT_EQ(entries.size(), 2u);
  EXPECT_EQ(entries[0].title, "All of an artist");
  EXPECT_EQ(entries[0].mark, tessaluna::backend::MenuMark::None);
  EXPECT_FALSE(entries[1].isEnabled);
  EXPECT_EQ(desktop.openMenu()->place.over, (CGRect{220, 200, 28, 24}));
  desktop.chooseFromMenu(entries[0].number);
  desktop.settle();
  EXPECT_THAT(selections, ElementsAre(Optional(2u)));
  EXPECT_TRUE(control->openOverflowMenu());
  EXPECT_EQ(desktop.openMenu()->entries[0].mark, tessaluna::backend::MenuMark::Check);
}

TEST_F(OverflowingSegmentsTest, ADisabledControlOpensNoMenuAndOneWhereAllFitNeither) {
  control->setEnabled(false);
  EXPECT_FALSE(control->openOverflowMenu());
  control->setEnabled(true);
  control->setFrame({0, 100, 200, 24});
  EXPECT_FALSE(control->openOverflowMenu());
  control->setCell(make<NSCell>());
  EXPECT_FALSE(control->openOverflowMenu());
  EXPECT_EQ(desktop.openMenu(), nullptr);
}

TEST_F(OverflowingSegmentsTest, TheMenuHasTheImagesOfItsSegments) {
  control->setImageForSegment(make<NSImage>(CGSize{8, 8}), 2);
  user.click(*window, {130, 110});
  EXPECT_NE(desktop.openMenu()->entries[0].image, nullptr);
}

TEST_F(OverflowingSegmentsTest, AMenuThatIsClosedWithoutAChoiceClicksNothing) {
  user.click(*window, {130, 110});
  desktop.chooseFromMenu(std::nullopt);
  desktop.settle();
  EXPECT_EQ(target->acts, 0);
  EXPECT_EQ(control->selectedSegment(), std::nullopt);
}

TEST_F(OverflowingSegmentsTest, TheFocusRingOfASegmentInTheMenuIsAroundThePartThatOpensIt) {
  control->setTrackingMode(NSSegmentSwitchTrackingSelectAny);
  control->setSelectedSegment(std::nullopt);
  focus();
  EXPECT_EQ(control->focusRingMaskBounds(), (CGRect{0, 0, 72, 24}));
  user.pressKey(NSEndFunctionKey);
  EXPECT_EQ(control->focusRingMaskBounds(), (CGRect{120, 0, 28, 24}));
}

TEST_F(OverflowingSegmentsTest, APressBesideThePartForTheMenuIsOneOnASegment) {
  user.click(*window, {20, 110});
  EXPECT_EQ(desktop.openMenu(), nullptr);
  EXPECT_THAT(selections, ElementsAre(Optional(0u)));
}

TEST_F(OverflowingSegmentsTest, TheMenuMayOutliveTheControl) {
  user.click(*window, {130, 110});
  control->removeFromSuperview();
  control.reset();
  desktop.chooseFromMenu(desktop.openMenu()->entries[0].number);
  desktop.settle();
  EXPECT_EQ(target->acts, 0);
}

TEST_F(OverflowingSegmentsTest, AChoiceIsNoClickOnAControlThatWasHiddenOrTakenAwayMeanwhile) {
  const auto choose = [&] {
    desktop.chooseFromMenu(desktop.openMenu()->entries[0].number);
    desktop.settle();
  };
  user.click(*window, {130, 110});
  control->setHidden(true);
  choose();
  control->setHidden(false);
  user.click(*window, {130, 110});
  control->removeFromSuperview();
  choose();
  EXPECT_EQ(target->acts, 0);
  EXPECT_EQ(control->selectedSegment(), std::nullopt);
}

TEST_F(OverflowingSegmentsTest, ArrowsReachWhatIsInTheMenuAndAssistiveClientsSeeItThere) {
  control->setSelectedSegment(1);
  focus();
  user.pressKey(NSRightArrowFunctionKey);
  EXPECT_EQ(control->selectedSegment(), 2u);
  EXPECT_EQ(element(2).accessibilityFrame(), (CGRect{220, 200, 28, 24}));
}

TEST_F(OverflowingSegmentsTest, TheStockCellDrawsItAsDotsAndDarkerIfASegmentInItIsSelected) {
  const auto stock = make<NSSegmentedCell>();
  stock->setPutsOverflowIntoMenu(true);
  stock->setSegmentCount(2);
  stock->setLabelForSegment("one", 0);
  stock->setLabelForSegment("another one", 1);
  const auto fills = [&] {
    return harness::only("fill", harness::recordingOf([&] { stock->drawWithFrame({0, 0, 90, 24}, *control); }));
  };
  EXPECT_EQ(fills().size(), 1u + 3u);
  stock->setSelectedSegment(1);
  EXPECT_EQ(fills().size(), 1u + 1u + 3u);
}
