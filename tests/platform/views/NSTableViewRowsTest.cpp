// Rows that come, go, move and change while a table shows them.
#include <gmock/gmock.h>

#include "tests/harness/TableWorld.h"
#include "tests/harness/allocations.h"
#include "tests/harness/printing.h"

using namespace tessaluna::platform;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class NSTableViewRowsTest : public harness::TableWorld {
 protected:
  NSTableViewRowsTest() : TableWorld(100) {
    table->reloadData();
    desktop.settle();
  }

  void insert(std::size_t row, std::size_t count = 1) {
    host->titles.insert(host->titles.begin() + static_cast<std::ptrdiff_t>(row), count, "New");
    table->insertRowsAtIndexes(NSIndexSet(NSRange{row, count}));
  }
  void remove(std::size_t row, std::size_t count = 1) {
    const auto first = host->titles.begin() + static_cast<std::ptrdiff_t>(row);
    host->titles.erase(first, first + static_cast<std::ptrdiff_t>(count));
    table->removeRowsAtIndexes(NSIndexSet(NSRange{row, count}));
  }
  void move(std::size_t from, std::size_t to) {
    const std::string title = host->titles[from];
    host->titles.erase(host->titles.begin() + static_cast<std::ptrdiff_t>(from));
    host->titles.insert(host->titles.begin() + static_cast<std::ptrdiff_t>(to), title);
    table->moveRowAtIndex(from, to);
  }
  std::vector<std::string> shown() const {
    std::vector<std::string> result;
    for (std::size_t row = 0; row < table->numberOfRows(); ++row)
      if (const Ref<NSView> view = table->viewAtRow(row)) result.push_back(static_cast<NSTextField&>(*view).stringValue());
    return result;
  }
};

TEST_F(NSTableViewRowsTest, InsertedRowsPushTheOthersDown) {
  const Ref<NSView> second = table->viewAtRow(1);
  insert(1, 2);
  EXPECT_EQ(table->numberOfRows(), 102u);
  EXPECT_THAT(shown(), ElementsAre("Row 0", "New", "New", "Row 1", "Row 2"));
  EXPECT_EQ(table->viewAtRow(3), second) << "a row that stays keeps its view";
  EXPECT_EQ(second->frame(), table->rectOfRow(3));
  EXPECT_EQ(table->frame().size.height, 102 * 30);
}

TEST_F(NSTableViewRowsTest, RemovedRowsLetTheOthersUp) {
  const Ref<NSView> fourth = table->viewAtRow(3);
  remove(1, 2);
  EXPECT_THAT(shown(), ElementsAre("Row 0", "Row 3", "Row 4", "Row 5", "Row 6"));
  EXPECT_EQ(table->viewAtRow(1), fourth);
}

TEST_F(NSTableViewRowsTest, AMovedRowTakesItsView) {
  const Ref<NSView> first = table->viewAtRow(0);
  move(0, 3);
  EXPECT_THAT(shown(), ElementsAre("Row 1", "Row 2", "Row 3", "Row 0", "Row 4"));
  EXPECT_EQ(table->viewAtRow(3), first);
  move(3, 0);
  EXPECT_THAT(shown(), ElementsAre("Row 0", "Row 1", "Row 2", "Row 3", "Row 4"));
  move(1, 60);
  EXPECT_THAT(shown(), ElementsAre("Row 0", "Row 2", "Row 3", "Row 4", "Row 5"));
}

TEST_F(NSTableViewRowsTest, RowsBesideTheWayOfAMovedOneStay) {
  table->selectRowIndexes(NSIndexSet(NSRange{0, 2}), NSTableView::Selecting::Replaces);
  table->selectRowIndexes(NSIndexSet(NSRange{5, 2}), NSTableView::Selecting::Extends);
  move(2, 4);
  EXPECT_THAT(selected(), ElementsAre(0, 1, 5, 6));
  move(4, 2);
  EXPECT_THAT(selected(), ElementsAre(0, 1, 5, 6));
}

TEST_F(NSTableViewRowsTest, TheViewOfARemovedRowLeavesTheTable) {
  const Ref<NSView> second = table->viewAtRow(1);
  remove(1);
  EXPECT_EQ(second->superview(), nullptr);
}

TEST_F(NSTableViewRowsTest, RowsThatComeMakeTheTableHigherAtOnceAndShow) {
  desktop.settle();
  insert(1);
  EXPECT_EQ(table->frame().size.height, 101 * 30);
  EXPECT_TRUE(table->needsDisplay());
}

TEST_F(NSTableViewRowsTest, AssistiveClientsObserveAnotherCountOfRowsButNoMove) {
  int changes = 0;
  const Ref<NSObject> token = accessibilityNotificationCenter().addObserverForName(
      NSAccessibilityRowCountChangedNotification, table, nullptr, [&](const Ref<NSNotification>&) { ++changes; });
  move(0, 3);
  EXPECT_EQ(changes, 0);
  insert(0);
  EXPECT_EQ(changes, 1);
  accessibilityNotificationCenter().removeObserver(token);
}

TEST_F(NSTableViewRowsTest, AMoveFromOrToARowThatIsNotThereLoadsEverythingAgain) {
  const Ref<NSView> first = table->viewAtRow(0);
  table->moveRowAtIndex(100, 0);
  EXPECT_NE(table->viewAtRow(0), first);
  const Ref<NSView> second = table->viewAtRow(0);
  table->moveRowAtIndex(0, 100);
  EXPECT_NE(table->viewAtRow(0), second);
}

TEST_F(NSTableViewRowsTest, ARowThatIsMovedWhereTheSourceHasAnotherCountLoadsEverythingAgain) {
  host->titles = {"A", "B", "C"};
  table->moveRowAtIndex(0, 1);
  EXPECT_EQ(table->numberOfRows(), 3u);
}

TEST_F(NSTableViewRowsTest, TheSelectionGoesWithItsRows) {
  table->selectRowIndexes(NSIndexSet(NSRange{2, 3}), NSTableView::Selecting::Replaces);
  host->selectionChanges = 0;
  insert(3);
  EXPECT_THAT(selected(), ElementsAre(2, 4, 5));
  move(2, 90);
  EXPECT_THAT(selected(), ElementsAre(3, 4, 90));
  EXPECT_EQ(host->selectionChanges, 0) << "the same rows are selected";
  remove(3);
  EXPECT_THAT(selected(), ElementsAre(3, 89));
  EXPECT_EQ(host->selectionChanges, 1);
  remove(3);
  remove(88);
  EXPECT_THAT(selected(), IsEmpty());
}

TEST_F(NSTableViewRowsTest, TheKeyboardGoesWithItsRow) {
  select(2);
  host->calls.clear();
  insert(0);
  EXPECT_EQ(table->keyboardRow(), 3u);
  remove(3);
  EXPECT_EQ(table->keyboardRow(), std::nullopt);
  EXPECT_THAT(takeCalls(), ElementsAre("keyboard 3", "keyboard elsewhere"));
}

TEST_F(NSTableViewRowsTest, AnExtendedSelectionContinuesFromTheRowWhereItBegan) {
  select(4);
  insert(0, 2);
  key(NSDownArrowFunctionKey, NSEventModifierFlagShift);
  EXPECT_THAT(selected(), ElementsAre(6, 7));
}

TEST_F(NSTableViewRowsTest, ARowUnderAStillPointerIsHoveredWithTheNextFrame) {
  user.moveTo(*window, at(2));
  EXPECT_EQ(table->hoveredRow(), 2u);
  insert(0);
  EXPECT_EQ(table->hoveredRow(), 3u) << "goes with its row";
  desktop.advance(0.1);
  EXPECT_EQ(table->hoveredRow(), 2u) << "the row that came under the pointer";
  remove(2);
  EXPECT_EQ(table->hoveredRow(), std::nullopt);
  desktop.advance(0.1);
  EXPECT_EQ(table->hoveredRow(), 2u);
}

TEST_F(NSTableViewRowsTest, RowsThatComeAfterThePointerHasLeftTheWindowAreNotHovered) {
  user.moveTo(*window, at(2));
  user.leave(*window);
  insert(0);
  desktop.advance(0.1);
  EXPECT_EQ(table->hoveredRow(), std::nullopt);
}

TEST_F(NSTableViewRowsTest, ReloadedRowsAreFilledAgainAndTheOthersStay) {
  const Ref<NSView> first = table->viewAtRow(0), second = table->viewAtRow(1);
  host->titles[1] = "Other";
  table->reloadDataForRowIndexes(NSIndexSet(1));
  EXPECT_EQ(table->viewAtRow(0), first);
  EXPECT_NE(table->viewAtRow(1), second);
  EXPECT_THAT(shown(), ElementsAre("Row 0", "Other", "Row 2", "Row 3", "Row 4"));
}

TEST_F(NSTableViewRowsTest, AChangeThatTheSourceHasNotMadeLoadsEverythingAgain) {
  host->titles = {"A", "B"};
  table->insertRowsAtIndexes(NSIndexSet(1));
  EXPECT_THAT(shown(), ElementsAre("A", "B"));
  host->titles = {"C"};
  table->removeRowsAtIndexes(NSIndexSet(7));
  EXPECT_THAT(shown(), ElementsAre("C"));
  host->titles = {"D", "E"};
  table->moveRowAtIndex(0, 1);
  EXPECT_THAT(shown(), ElementsAre("D", "E"));
}

TEST_F(NSTableViewRowsTest, ADragExtendsTheSelectionFromThePressedRow) {
  user.press(*window, at(1));
  user.dragTo(at(3));
  EXPECT_THAT(selected(), ElementsAre(1, 2, 3));
  user.dragTo(at(2));
  EXPECT_THAT(selected(), ElementsAre(1, 2));
  user.release();
  user.dragTo(at(4));
  EXPECT_THAT(selected(), ElementsAre(1, 2));
}

TEST_F(NSTableViewRowsTest, ADragBesideTheTableAndBeyondItsEndSelectsAsFarAsTheRowsGo) {
  host->titles.resize(4);
  table->reloadData();
  desktop.settle();
  user.press(*window, at(1));
  user.dragTo({500, at(2).y});
  EXPECT_THAT(selected(), ElementsAre(1, 2));
  user.dragTo({100, -300});
  EXPECT_THAT(selected(), ElementsAre(1, 2, 3));
  user.dragTo({100, 900});
  EXPECT_THAT(selected(), ElementsAre(0, 1));
  user.release();
}

TEST_F(NSTableViewRowsTest, ADoubleClickWithCommandTogglesItsRowOnce) {
  for (int i = 0; i < 2; ++i) user.click(*window, at(1), {.modifiers = NSEventModifierFlagCommand});
  EXPECT_THAT(selected(), ElementsAre(1));
  desktop.advance(10);
  for (int i = 0; i < 2; ++i) user.click(*window, at(1), {.modifiers = NSEventModifierFlagCommand});
  EXPECT_THAT(selected(), IsEmpty());
}

TEST_F(NSTableViewRowsTest, WhereOneRowCanBeSelectedShiftSelectsTheRowItself) {
  table->setAllowsMultipleSelection(false);
  user.click(*window, at(3));
  user.click(*window, at(1), {.modifiers = NSEventModifierFlagShift});
  EXPECT_THAT(selected(), ElementsAre(1));
  key(NSDownArrowFunctionKey);
  key(NSUpArrowFunctionKey, NSEventModifierFlagShift);
  EXPECT_THAT(selected(), ElementsAre(1));
  table->selectRowIndexes(NSIndexSet(), NSTableView::Selecting::Replaces);
  EXPECT_THAT(selected(), IsEmpty());
}

TEST_F(NSTableViewRowsTest, AHoveredRowThatIsStillThereStaysSoWhenTheRowsAreLoadedAgain) {
  user.moveTo(*window, at(2));
  table->reloadData();
  EXPECT_EQ(table->hoveredRow(), 2u);
}

TEST_F(NSTableViewRowsTest, ADragContinuesFromItsRowWhereRowsComeAndEndsWhereItGoes) {
  user.press(*window, at(1));
  insert(0);
  user.dragTo(at(3));
  EXPECT_THAT(selected(), ElementsAre(2, 3));
  remove(2);
  user.dragTo(at(0));
  EXPECT_THAT(selected(), ElementsAre(2));
  user.release();
}

// Against a list of names that is changed in the same way.
TEST_F(NSTableViewRowsTest, ManyChangesKeepSelectionAndViewsWithTheirRows) {
  std::uint32_t state = 1;
  const auto below = [&](std::size_t bound) {
    state = state * 1664525u + 1013904223u;
    return static_cast<std::size_t>(state >> 8) % bound;
  };
  table->selectRowIndexes(NSIndexSet(NSRange{0, 10}), NSTableView::Selecting::Replaces);
  std::vector<std::string> names;
  for (const std::size_t row : selected()) names.push_back(host->titles[row]);
  for (int step = 0; step < 500; ++step) {
    const std::size_t row = below(host->titles.size());
    switch (below(3)) {
      case 0: insert(row); break;
      case 1:
        if (host->titles.size() > 5 && std::find(names.begin(), names.end(), host->titles[row]) == names.end()) remove(row);
        break;
      default: move(row, below(host->titles.size())); break;
    }
    std::vector<std::string> now;
    for (const std::size_t one : selected()) now.push_back(host->titles[one]);
    ASSERT_THAT(now, testing::UnorderedElementsAreArray(names)) << step;
    for (std::size_t one = 0; one < 5; ++one)
      ASSERT_EQ(static_cast<NSTextField&>(*table->viewAtRow(one)).stringValue(), host->titles[one]) << step;
  }
}

// One that moved each selected row by itself would take long where all of a library is selected.
TEST_F(NSTableViewRowsTest, ASelectionOfAllMovesAsOneRange) {
  host->titles.resize(10000);
  table->reloadData();
  desktop.settle();
  table->selectAll(nullptr);
  const int before = harness::allocations;
  insert(5);
  remove(7);
  move(5, 20);
  EXPECT_LE(harness::allocations - before, 200);
  EXPECT_EQ(table->selectedRowIndexes().ranges(), (std::vector<NSRange>{{0, 20}, {21, 9979}}));
}

}  // namespace
