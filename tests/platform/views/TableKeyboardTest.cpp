#include "tessaluna/platform/views/TableKeyboard.h"

#include <gmock/gmock.h>

#include "tessaluna/platform/events/menuKey.h"
#include "tessaluna/platform/graphics/NSColor.h"
#include "tests/harness/TableWorld.h"
#include "tests/harness/printing.h"

using namespace tessaluna::platform;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class TableKeyboardTest : public harness::TableWorld {
 protected:
  TableKeyboardTest() : TableWorld(4) {
    host->titles = {"Amber", "Bridge", "Arches", "Bridge of Salt", "Éclair", "Zebra"};
    host->controls = 3;
    table->reloadData();
    desktop.settle();
    host->calls.clear();
  }
  // Whether the responder chain got the key.
  bool passes(const std::string& characters) {
    const int before = nativeOf(*window).eventsNotTaken();
    user.pressKey(characters);
    return nativeOf(*window).eventsNotTaken() > before;
  }
};

TEST_F(TableKeyboardTest, ALetterGoesToTheNextRowThatBeginsWithIt) {
  user.type("a");
  EXPECT_THAT(selected(), ElementsAre(0));
  desktop.advance(2);
  user.type("a");
  EXPECT_THAT(selected(), ElementsAre(2));
  desktop.advance(2);
  user.type("a");
  EXPECT_THAT(selected(), ElementsAre(0)) << "once around";
  user.type("É");
  EXPECT_THAT(selected(), ElementsAre(0)) << "no row begins with both";
}

TEST_F(TableKeyboardTest, LettersTypedQuicklyAreTheBeginningOfARow) {
  user.type("bridge of");
  EXPECT_THAT(selected(), ElementsAre(3));
  desktop.advance(2);
  user.type("b");
  EXPECT_THAT(selected(), ElementsAre(1)) << "a pause begins a new word";
}

TEST_F(TableKeyboardTest, ARowThatWasTypedComesIntoSight) {
  user.type("z");
  EXPECT_THAT(selected(), ElementsAre(5));
  EXPECT_TRUE(NSContainsRect(table->visibleRect(), table->rectOfRow(5)));
}

TEST_F(TableKeyboardTest, ASpaceIsNotTakenUnlessARowContinuesWithIt) {
  EXPECT_TRUE(passes(" "));
  user.type("b");
  EXPECT_TRUE(passes(" "));
  EXPECT_THAT(selected(), ElementsAre(1));
  desktop.advance(2);
  user.type("bridge");
  EXPECT_FALSE(passes(" "));
}

TEST_F(TableKeyboardTest, AWordContinuesAfterASpaceThatWasNotTaken) {
  user.type("ar");
  EXPECT_THAT(selected(), ElementsAre(2));
  EXPECT_TRUE(passes(" "));
  EXPECT_FALSE(passes("c"));
  EXPECT_THAT(selected(), ElementsAre(2));
}

TEST_F(TableKeyboardTest, ALetterThatNoRowBeginsWithIsLeftToTheProgram) {
  EXPECT_TRUE(passes("x"));
  EXPECT_THAT(selected(), IsEmpty());
  user.type("e");
  EXPECT_THAT(selected(), IsEmpty()) << "an accent is not left out";
}

TEST_F(TableKeyboardTest, AShortcutIsNotTyped) {
  user.pressKey("b", NSEventModifierFlagCommand);
  EXPECT_THAT(selected(), IsEmpty());
}

TEST_F(TableKeyboardTest, ReturnEntersTheSelectedRow) {
  EXPECT_TRUE(passes("\r")) << "no row is selected";
  select(2);
  takeCalls();
  EXPECT_FALSE(passes("\r"));
  EXPECT_THAT(takeCalls(), ElementsAre("enter 2"));
  host->takesReturn = false;
  EXPECT_TRUE(passes("\r"));
}

TEST_F(TableKeyboardTest, LeftAndRightLeadToTheControlsOfTheRow) {
  select(1);
  takeCalls();
  EXPECT_EQ(table->keyboardControl(), std::nullopt);
  for (const std::size_t control : {0u, 1u, 2u, 2u}) {
    key(NSRightArrowFunctionKey);
    EXPECT_EQ(table->keyboardControl(), control);
  }
  user.pressKey("\r");
  EXPECT_THAT(takeCalls(), ElementsAre("press 1 2"));
  for (int i = 0; i < 4; ++i) key(NSLeftArrowFunctionKey);
  EXPECT_EQ(table->keyboardControl(), std::nullopt);
  user.pressKey("\r");
  EXPECT_THAT(takeCalls(), ElementsAre("enter 1"));
}

TEST_F(TableKeyboardTest, KeysThatMoveTheSelectionReachNobodyElse) {
  for (const char32_t key : {NSDownArrowFunctionKey, NSUpArrowFunctionKey, NSPageDownFunctionKey, NSPageUpFunctionKey,
                             NSEndFunctionKey, NSHomeFunctionKey, NSRightArrowFunctionKey, NSLeftArrowFunctionKey})
    EXPECT_FALSE(passes(utf8FromScalar(key))) << static_cast<int>(key);
  table->setAllowsMultipleSelection(true);
  user.pressKey("a", NSEventModifierFlagCommand);
  EXPECT_EQ(nativeOf(*window).eventsNotTaken(), 0);
}

TEST_F(TableKeyboardTest, AKeyThatGoesToAControlOrOpensTheMenuBringsItsRowIntoSight) {
  const auto isSeen = [&] { return NSContainsRect(table->visibleRect(), table->rectOfRow(0)); };
  select(0);
  scrollView->contentView()->scrollToPoint({0, 30});
  ASSERT_FALSE(isSeen());
  key(NSRightArrowFunctionKey);
  EXPECT_TRUE(isSeen());
  scrollView->contentView()->scrollToPoint({0, 30});
  key(NSMenuFunctionKey);
  EXPECT_TRUE(isSeen());
}

TEST_F(TableKeyboardTest, AssistiveClientsObserveTheControlThatTheKeysGoTo) {
  select(0);
  int changes = 0;
  const Ref<NSObject> token = accessibilityNotificationCenter().addObserverForName(
      NSAccessibilityFocusedUIElementChangedNotification, table, nullptr, [&](const Ref<NSNotification>&) { ++changes; });
  key(NSRightArrowFunctionKey);
  EXPECT_EQ(changes, 1);
  key(NSLeftArrowFunctionKey);
  EXPECT_EQ(changes, 2);
  key(NSLeftArrowFunctionKey);
  EXPECT_EQ(changes, 2) << "stays at the row";
  accessibilityNotificationCenter().removeObserver(token);
}

TEST_F(TableKeyboardTest, AnotherRowAndEscapeLeaveTheControls) {
  select(1);
  key(NSRightArrowFunctionKey);
  EXPECT_FALSE(passes("\x1B"));
  EXPECT_EQ(table->keyboardControl(), std::nullopt);
  EXPECT_TRUE(passes("\x1B"));
  key(NSRightArrowFunctionKey);
  key(NSDownArrowFunctionKey);
  EXPECT_EQ(table->keyboardRow(), 2u);
  EXPECT_EQ(table->keyboardControl(), std::nullopt);
}

TEST_F(TableKeyboardTest, ARowWithFewerControlsThanBeforeHasTheKeyboardOnItsLast) {
  select(1);
  for (int i = 0; i < 3; ++i) key(NSRightArrowFunctionKey);
  host->controls = 2;
  EXPECT_EQ(table->keyboardControl(), 1u);
  host->controls = 0;
  EXPECT_EQ(table->keyboardControl(), std::nullopt);
}

TEST_F(TableKeyboardTest, TheRingLiesAroundTheControlThatHasTheKeyboard) {
  select(1);
  key(NSRightArrowFunctionKey);
  key(NSRightArrowFunctionKey);
  EXPECT_EQ(table->focusRingMaskBounds(), (CGRect{20, 30, 20, 30}));
}

TEST_F(TableKeyboardTest, TheRingOfAControlIsPaintedOnTheSelectionOfItsRow) {
  select(1);
  EXPECT_EQ(table->focusRingGround(), nullptr) << "around the table";
  key(NSRightArrowFunctionKey);
  ASSERT_EQ(table->keyboardControl(), 0u);
  ASSERT_NE(table->focusRingGround(), nullptr);
  EXPECT_TRUE(table->focusRingGround()->isEqual(NSColor::alternateSelectedControlColor().get()));
  EXPECT_EQ(&table->viewWithFocusRing(), table.get());
}

TEST_F(TableKeyboardTest, TheMenuKeysOpenTheMenuOfTheRow) {
  EXPECT_TRUE(passes(utf8FromScalar(NSMenuFunctionKey)));
  select(2);
  takeCalls();
  key(NSMenuFunctionKey);
  key(NSF1FunctionKey + 9, NSEventModifierFlagShift);
  EXPECT_THAT(takeCalls(), ElementsAre("menu 2", "menu 2"));
}

TEST_F(TableKeyboardTest, ARightClickSelectsTheRowAndOpensItsMenu) {
  user.click(*window, at(2), {.button = 1});
  EXPECT_THAT(selected(), ElementsAre(2));
  EXPECT_THAT(takeCalls(), ElementsAre("keyboard 2", "menu 2"));
  table->selectRowIndexes(NSIndexSet(NSRange{1, 3}), NSTableView::Selecting::Replaces);
  user.click(*window, at(2), {.button = 1});
  EXPECT_THAT(selected(), ElementsAre(1, 2, 3)) << "a selected row keeps the others";
}

TEST_F(TableKeyboardTest, TheDelegateIsNotifiedOfTheRowThatHasTheKeyboard) {
  select(1);
  key(NSDownArrowFunctionKey);
  window->makeFirstResponder(nullptr);
  window->makeFirstResponder(table.get());
  EXPECT_THAT(takeCalls(), ElementsAre("keyboard 1", "keyboard 2", "keyboard elsewhere", "keyboard 2"));
}

TEST_F(TableKeyboardTest, ControlAAndCommandASelectAllRowsAndLeaveTheKeyboardInItsRow) {
  for (const std::uint32_t modifier : {NSEventModifierFlagControl, NSEventModifierFlagCommand}) {
    select(2);
    const int changes = host->selectionChanges;
    takeCalls();
    user.pressKey("a", modifier);
    EXPECT_THAT(selected(), ElementsAre(0, 1, 2, 3, 4, 5));
    EXPECT_EQ(table->keyboardRow(), 2u);
    EXPECT_EQ(host->selectionChanges, changes + 1);
    EXPECT_THAT(takeCalls(), IsEmpty());
    key(NSDownArrowFunctionKey, NSEventModifierFlagShift);
    EXPECT_THAT(selected(), ElementsAre(2, 3)) << "from where the selection began";
  }
}

TEST_F(TableKeyboardTest, TheRowThatHasTheKeyboardKeepsItAmongAllAlsoAfterTheLastSelectedOneHasGone) {
  select(1);
  table->selectRowIndexes(NSIndexSet(3), NSTableView::Selecting::Extends);
  host->titles.erase(host->titles.begin() + 3);
  table->removeRowsAtIndexes(NSIndexSet(3));
  ASSERT_EQ(table->keyboardRow(), 1u);
  table->selectAll(nullptr);
  EXPECT_EQ(table->keyboardRow(), 1u);
}

TEST_F(TableKeyboardTest, WhereOneRowCanBeSelectedTheKeyOfAllIsLeftToTheProgram) {
  table->setAllowsMultipleSelection(false);
  select(2);
  const int before = nativeOf(*window).eventsNotTaken();
  user.pressKey("a", NSEventModifierFlagControl);
  EXPECT_EQ(nativeOf(*window).eventsNotTaken(), before + 1);
  table->selectAll(nullptr);
  EXPECT_THAT(selected(), ElementsAre(2));
}

TEST_F(TableKeyboardTest, AMenuFindsTheTableThatSelectsAllRowsOrNone) {
  EXPECT_TRUE(NSApp->sendAction("selectAll:", nullptr, nullptr));
  EXPECT_THAT(selected(), ElementsAre(0, 1, 2, 3, 4, 5));
  key(NSUpArrowFunctionKey, NSEventModifierFlagShift);
  EXPECT_THAT(selected(), ElementsAre(0, 1, 2, 3, 4)) << "from the first row where no selection had begun";
  EXPECT_TRUE(NSApp->sendAction("deselectAll:", nullptr, nullptr));
  EXPECT_THAT(selected(), IsEmpty());
}

TEST_F(TableKeyboardTest, TheTabKeyEntersAndLeavesTheTableAsOneStop) {
  const auto after = make<NSTextField>(CGRect{0, 0, 50, 20});
  window->contentView()->addSubview(after);
  select(1);
  key(NSRightArrowFunctionKey);
  user.pressKey("\t");
  EXPECT_TRUE(after->currentEditor());
  EXPECT_EQ(table->keyboardRow(), std::nullopt);
  user.pressKey("\t", NSEventModifierFlagShift);
  EXPECT_EQ(table->keyboardRow(), 1u);
  EXPECT_EQ(table->keyboardControl(), std::nullopt);
}

}  // namespace
