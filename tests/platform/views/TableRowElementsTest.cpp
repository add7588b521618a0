#include "tessaluna/platform/views/TableRowElements.h"

#include <gmock/gmock.h>

#include "tessaluna/platform/accessibility/AccessibleChanges.h"
#include "tessaluna/platform/accessibility/accessibleTree.h"
#include "tessaluna/platform/accessibility/attributes.h"
#include "tests/harness/TableWorld.h"
#include "tests/harness/printing.h"

using namespace tessaluna::platform;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class TableRowElementsTest : public harness::TableWorld {
 protected:
  TableRowElementsTest() : TableWorld(1000) {
    host->controls = 2;
    table->reloadData();
    desktop.settle();
  }

  Ref<NSObject> row(std::size_t number) { return table->accessibleItem(number); }
  // As an assistive client does that looks at an element.
  void meet(const Ref<NSObject>& element) {
    accessibilityOf(element)->setAccessibilityCompanion(std::make_unique<AccessibleMemory>(element));
  }
  std::vector<std::string> takeChanges() {
    desktop.advance(0.1);
    return std::exchange(changes, {});
  }

  std::vector<std::string> changes;
  AccessibleChanges listener{{.isListening = [] { return true; },
                              .changed = [this](const AccessibleChange& change) { changes.push_back(lineOf(change)); }}};
};

TEST_F(TableRowElementsTest, EachRowHasAnElementWhetherItShowsOrNot) {
  EXPECT_EQ(table->accessibleItemCount(), 1000u);
  EXPECT_EQ(accessibleLine(row(700)), "row \"Row 700\" [focusable, selectable, off screen] Control 0, focus");
  EXPECT_EQ(row(700), row(700));
  EXPECT_EQ(table->indexOfAccessibleItem(row(700).get()), 700u);
  EXPECT_EQ(accessibleParentOf(row(700)), table);
  EXPECT_EQ(row(1000), nullptr);
  EXPECT_EQ(accessibleChildrenOf(table).size(), 1000u);
}

TEST_F(TableRowElementsTest, TheTreeHasLinesForTheRowsThatShow) {
  EXPECT_THAT(accessibleTreeLines(table).size(), 1u + 5 * 3);
  EXPECT_THAT(accessibleTreeLines(table),
              testing::IsSupersetOf({std::string("table \"\" [focusable, focused] 1000 rows focus"),
                                     std::string("  row \"Row 0\" [focusable, selectable] Control 0, focus"),
                                     std::string("    button \"Control 1\" [] press")}));
}

TEST_F(TableRowElementsTest, ARowWithoutControlsHoldsWhatIsInItsView) {
  host->controls = 0;
  EXPECT_EQ(accessibleTreeLines(row(1))[1], "  static text \"Row 1\" [read-only]");
  EXPECT_EQ(accessibleParentOf(accessibleChildrenOf(row(1))[0]), row(1));
  EXPECT_THAT(accessibleChildrenOf(row(700)), IsEmpty());
}

TEST_F(TableRowElementsTest, ActionsAndControlsPressTheRowsControls) {
  EXPECT_TRUE(performAccessibleAction(row(700), "Control 0"));
  EXPECT_FALSE(performAccessibleAction(row(700), "Control 1")) << "is no action of the row";
  EXPECT_TRUE(performAccessibleAction(accessibleChildrenOf(row(3))[1], NSAccessibilityPressAction));
  EXPECT_THAT(takeCalls(), ElementsAre("press 700 0", "press 3 1"));
}

TEST_F(TableRowElementsTest, AClientGivesARowTheKeyboardWhichSelectsItAndBringsItIntoSight) {
  window->makeFirstResponder(nullptr);
  EXPECT_TRUE(performAccessibleAction(row(700), accessibleFocusAction));
  EXPECT_EQ(table->keyboardRow(), 700u);
  EXPECT_TRUE(NSIntersectsRect(table->visibleRect(), table->rectOfRow(700)));
  EXPECT_EQ(focusedElement(), row(700));
  key(NSRightArrowFunctionKey);
  EXPECT_EQ(focusedElement(), accessibleChildrenOf(row(700))[0]);
}

TEST_F(TableRowElementsTest, AClientSelectsSeveralRows) {
  accessibilityOf(row(5))->accessibilitySetValue(true, NSAccessibilitySelectedAttribute);
  accessibilityOf(row(700))->accessibilitySetValue(true, NSAccessibilitySelectedAttribute);
  EXPECT_THAT(selected(), ElementsAre(5, 700));
  accessibilityOf(row(5))->accessibilitySetValue(false, NSAccessibilitySelectedAttribute);
  EXPECT_THAT(selected(), ElementsAre(700));
}

TEST_F(TableRowElementsTest, AScrollIsReportedToNobody) {
  meet(table);
  for (std::size_t i = 0; i < 200; ++i) meet(row(i));
  takeChanges();
  for (CGFloat y = 0; y < 3000; y += 45) scrollView->contentView()->scrollToPoint({0, y});
  EXPECT_THAT(takeChanges(), IsEmpty());
}

TEST_F(TableRowElementsTest, ASelectionThatMovesIsReportedOnce) {
  meet(table);
  select(2);
  for (std::size_t i = 0; i < 10; ++i) meet(row(i));
  takeChanges();
  key(NSDownArrowFunctionKey);
  EXPECT_THAT(takeChanges(),
              ElementsAre("row \"Row 3\": focused", "row \"Row 2\": not selected", "row \"Row 3\": selected"));
}

TEST_F(TableRowElementsTest, RowsThatAllChangeAreReportedOnce) {
  meet(table);
  for (std::size_t i = 0; i < 200; ++i) meet(row(i));
  const Ref<NSObject> before = row(7);
  takeChanges();
  table->reloadData();
  EXPECT_THAT(takeChanges(), ElementsAre("table \"\": other rows"));
  EXPECT_EQ(accessibleParentOf(before), nullptr);
  EXPECT_NE(row(7), before);
}

TEST_F(TableRowElementsTest, TheKeyboardIsReportedAgainWhereItsRowIsAnotherElement) {
  meet(table);
  select(3);
  takeChanges();
  table->reloadData();
  EXPECT_THAT(takeChanges(), ElementsAre("table \"\": other rows", "row \"Row 3\": focused"));
}

TEST_F(TableRowElementsTest, AnElementGoesWithItsRow) {
  const Ref<NSObject> seventh = row(7), eighth = row(8);
  meet(table);
  meet(seventh);
  meet(eighth);
  takeChanges();
  host->titles.insert(host->titles.begin(), "New");
  table->insertRowsAtIndexes(NSIndexSet(0));
  EXPECT_EQ(table->indexOfAccessibleItem(seventh.get()), 8u);
  EXPECT_EQ(row(8), seventh);
  host->titles.erase(host->titles.begin() + 8);
  table->removeRowsAtIndexes(NSIndexSet(8));
  EXPECT_EQ(table->indexOfAccessibleItem(seventh.get()), std::nullopt);
  EXPECT_EQ(accessibleNameOf(seventh), "");
  EXPECT_EQ(row(8), eighth);
  EXPECT_THAT(takeChanges(), ElementsAre("table \"\": other rows", "table \"\": other rows"));
}

TEST_F(TableRowElementsTest, AChangedRowHasAnotherName) {
  meet(row(3));
  takeChanges();
  host->titles[3] = "Other";
  table->reloadDataForRowIndexes(NSIndexSet(3));
  EXPECT_THAT(takeChanges(), ElementsAre("row \"Other\": named"));
}

TEST_F(TableRowElementsTest, ElementsOutliveTheirTable) {
  const Ref<NSObject> third = row(3), control = accessibleChildrenOf(third)[0];
  scrollView->setDocumentView(nullptr);
  window->makeFirstResponder(nullptr);
  table = nullptr;
  EXPECT_EQ(accessibleParentOf(third), nullptr);
  EXPECT_FALSE(performAccessibleAction(third, "Control 0"));
  EXPECT_FALSE(performAccessibleAction(control, NSAccessibilityPressAction));
}

}  // namespace
