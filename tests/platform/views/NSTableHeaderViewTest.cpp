#include "tessaluna/platform/views/NSTableHeaderView.h"

#include <gmock/gmock.h>

#include "tessaluna/platform/accessibility/AccessibleDescription.h"
#include "tessaluna/platform/cells/NSLevelIndicatorCell.h"
#include "tessaluna/platform/interface_files/NSNib.h"
#include "tessaluna/platform/views/NSScrollView.h"
#include "tessaluna/platform/views/NSScroller.h"
#include "tessaluna/platform/views/NSTableColumn.h"
#include "tessaluna/platform/views/NSTableView.h"
#include "tests/harness/StillWorld.h"
#include "tests/harness/TextsScope.h"
#include "tests/harness/printing.h"
#include "tests/harness/recordingOf.h"

using namespace tessaluna::platform;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

class FiftyRows : public NSTableViewDataSource, public NSTableViewCellSource {
 public:
  std::size_t numberOfRowsInTableView(NSTableView&) override { return 50; }
  Ref<NSObject> tableViewObjectValue(NSTableView&, NSTableColumn&, std::size_t) override { return nullptr; }
  void tableViewSortDescriptorsDidChange(NSTableView& table) override {
    const NSSortDescriptor& first = *table.sortDescriptors().front();
    sorted.push_back(first.key() + (first.ascending() ? " up" : " down"));
  }
  std::vector<std::string> sorted;
};

// A scroll view of 200 by 150 points with bars of 12, onto columns of 150, 100 and 50 points; a header of 20 points.
class NSTableHeaderViewTest : public harness::StillWorld {
 protected:
  NSTableHeaderViewTest() {
    const CGFloat widths[] = {150, 100, 50};
    const char* keys[] = {"title", "artist", "length"};
    for (std::size_t i = 0; i < 3; ++i) {
      columns.push_back(make<NSTableColumn>(keys[i]));
      columns[i]->setTitle(keys[i]);
      columns[i]->setWidth(widths[i]);
      if (i < 2) columns[i]->setSortDescriptorPrototype(make<NSSortDescriptor>(keys[i], true));
      table->addTableColumn(columns[i]);
    }
    columns[2]->setResizable(false);
    table->setHeaderView(header);
    table->setDataSource(rows);
    scrollView->setHasVerticalScroller(true);
    scrollView->setHasHorizontalScroller(true);
    scrollView->setDocumentView(table);
    table->reloadData();
    window = showWindowWith(scrollView);
  }
  CGRect inScrollView(const NSView& view) const { return view.convertRectToView(view.bounds(), scrollView.get()); }
  CGFloat scrolled() const { return scrollView->contentView()->bounds().origin.x; }
  CGFloat headerScrolled() const { return -inScrollView(*header).origin.x; }
  harness::Lines drawn(std::string_view operation) const {
    return harness::only(operation, harness::recordingOf([&] { header->drawRect(header->bounds()); }));
  }
  void focusHeader() { window->makeFirstResponder(header.get()); }
  void pressFunctionKey(char32_t key, std::uint32_t modifiers = 0) {
    user.pressKey(key, modifiers);
    desktop.settle();
  }
  std::vector<std::string> names() const {
    std::vector<std::string> result;
    const AccessibilityElements elements = header->accessibilityChildren().value();
    for (const auto& element : elements) result.push_back(accessibleNameOf(element));
    return result;
  }
  NSAccessibility& element(std::size_t column) const {
    return *accessibilityOf(header->accessibilityChildren().value().at(column));
  }

  std::shared_ptr<FiftyRows> rows = std::make_shared<FiftyRows>();
  std::vector<Ref<NSTableColumn>> columns;
  Ref<NSTableView> table = make<NSTableView>(NSZeroRect);
  Ref<NSTableHeaderView> header = make<NSTableHeaderView>(CGRect{0, 0, 0, 20});
  Ref<NSScrollView> scrollView = make<NSScrollView>(CGRect{0, 0, 200, 150});
  Ref<NSWindow> window;
};

}  // namespace

// Where it lies.

TEST_F(NSTableHeaderViewTest, LiesAboveTheRowsWhichAreSoMuchLower) {
  EXPECT_EQ(inScrollView(*header), (CGRect{0, 0, 312, 20}));
  EXPECT_EQ(scrollView->contentView()->frame(), (CGRect{0, 20, 188, 118}));
  EXPECT_EQ(scrollView->verticalScroller()->frame(), (CGRect{188, 20, 12, 118}));
  EXPECT_EQ(scrollView->horizontalScroller()->frame(), (CGRect{0, 138, 188, 12}));
}

TEST_F(NSTableHeaderViewTest, ScrollsSidewaysWithTheRowsAndNotDownward) {
  scrollView->contentView()->scrollToPoint({70, 300});
  EXPECT_EQ(headerScrolled(), 70);
  EXPECT_EQ(inScrollView(*header).origin.y, 0);
  scrollView->contentView()->scrollToPoint({1000, 300});
  EXPECT_EQ(scrolled(), 112);
  EXPECT_EQ(headerScrolled(), 112);
}

TEST_F(NSTableHeaderViewTest, AClickOnWhatWasScrolledInSortsByThatColumn) {
  scrollView->contentView()->scrollToPoint({100, 0});
  user.click(*window, {60, 140});  // at 160 of the header
  EXPECT_THAT(rows->sorted, ElementsAre("artist up"));
}

// The last column is 50 points wide from 250 on and cannot be resized, a letter 5.5.

TEST_F(NSTableHeaderViewTest, ATitleIsAtTheEndThatItsColumnNames) {
  columns[2]->setTitle("t");
  EXPECT_THAT(drawn("concat").back(), HasSubstr("[1,0,0,1,254,"));
  columns[2]->setTitleEnd(NSTableColumn::TitleEnd::Trailing);
  EXPECT_THAT(drawn("concat").back(), HasSubstr("[1,0,0,1,290,"));
}

TEST_F(NSTableHeaderViewTest, TheMarkOfTheDirectionIsBesideTheTitleWhereTheColumnHasNoLine) {
  columns[2]->setTitle("t");
  const auto sortBy = [&](std::size_t column) {
    if (!columns[column]->sortDescriptorPrototype())
      columns[column]->setSortDescriptorPrototype(make<NSSortDescriptor>("length", true));
    table->setSortDescriptors({columns[column]->sortDescriptorPrototype()});
  };
  sortBy(0);
  EXPECT_THAT(drawn("stroke").back(), HasSubstr("[\"M\",136,")) << "at the line";
  sortBy(2);
  EXPECT_THAT(drawn("stroke").back(), HasSubstr("[\"M\",264,"));
  columns[2]->setTitleEnd(NSTableColumn::TitleEnd::Trailing);
  EXPECT_THAT(drawn("stroke").back(), HasSubstr("[\"M\",276,"));
}

TEST_F(NSTableHeaderViewTest, WithoutAHeightItGetsThatOfALineOfTitles) {
  table->setHeaderView(make<NSTableHeaderView>(NSZeroRect));
  desktop.settle();
  EXPECT_EQ(table->headerView()->frame().size.height, 22);
  EXPECT_EQ(scrollView->contentView()->frame().origin.y, 22);
}

TEST_F(NSTableHeaderViewTest, GoesWithItsTableAndWhenTheTableHasNone) {
  table->setHeaderView(nullptr);
  desktop.settle();
  EXPECT_EQ(header->superview(), nullptr);
  EXPECT_EQ(scrollView->contentView()->frame().origin.y, 0);
  table->setHeaderView(header);
  desktop.settle();
  EXPECT_EQ(scrollView->contentView()->frame().origin.y, 20);
  scrollView->setDocumentView(make<NSView>(CGRect{0, 0, 10, 10}));
  desktop.settle();
  EXPECT_EQ(header->window(), nullptr);
  EXPECT_EQ(scrollView->contentView()->frame().origin.y, 0);
}

TEST_F(NSTableHeaderViewTest, AColumnThatGrowsWidensTheHeader) {
  columns[0]->setWidth(250);
  desktop.settle();
  EXPECT_EQ(header->frame().size.width, 412);
}

// By keyboard.

TEST_F(NSTableHeaderViewTest, IsAStopOfTheTabKeyAfterTheRows) {
  window->makeFirstResponder(table.get());
  window->selectNextKeyView();
  EXPECT_EQ(window->firstResponder(), header.get());
}

TEST_F(NSTableHeaderViewTest, APressLeavesTheKeyboardWithTheRows) {
  window->makeFirstResponder(table.get());
  user.click(*window, {20, 140});
  EXPECT_THAT(rows->sorted, ElementsAre("title up"));
  EXPECT_EQ(window->firstResponder(), table.get());
}

TEST_F(NSTableHeaderViewTest, ArrowsHomeAndEndGoToAnotherColumnAndScrollItIntoSight) {
  focusHeader();
  EXPECT_EQ(header->keyColumn(), 0u);
  pressFunctionKey(NSRightArrowFunctionKey);
  EXPECT_EQ(header->keyColumn(), 1u);
  EXPECT_EQ(header->focusRingMaskBounds(), (CGRect{150, 0, 100, 20}));
  pressFunctionKey(NSEndFunctionKey);
  EXPECT_EQ(header->keyColumn(), 2u);
  EXPECT_GE(scrolled(), 100);
  EXPECT_EQ(headerScrolled(), scrolled());
  pressFunctionKey(NSRightArrowFunctionKey);
  EXPECT_EQ(header->keyColumn(), 2u);
  pressFunctionKey(NSLeftArrowFunctionKey);
  EXPECT_EQ(header->keyColumn(), 1u);
  pressFunctionKey(NSHomeFunctionKey);
  EXPECT_EQ(header->keyColumn(), 0u);
  EXPECT_EQ(scrolled(), 0);
  pressFunctionKey(NSLeftArrowFunctionKey);
  EXPECT_EQ(header->keyColumn(), 0u);
}

TEST_F(NSTableHeaderViewTest, KeysPassOverColumnsThatAreHidden) {
  focusHeader();
  columns[1]->setHidden(true);
  pressFunctionKey(NSRightArrowFunctionKey);
  EXPECT_EQ(header->keyColumn(), 2u);
  pressFunctionKey(NSLeftArrowFunctionKey);
  EXPECT_EQ(header->keyColumn(), 0u);
  columns[0]->setHidden(true);
  EXPECT_EQ(header->keyColumn(), 2u) << "the first that shows";
}

TEST_F(NSTableHeaderViewTest, SpaceAndReturnSortByTheColumnWithTheKeys) {
  focusHeader();
  user.pressKey(" ");
  user.pressKey("\r");
  pressFunctionKey(NSRightArrowFunctionKey);
  user.pressKey(" ");
  pressFunctionKey(NSRightArrowFunctionKey);
  user.pressKey(" ");  // does not sort
  EXPECT_THAT(rows->sorted, ElementsAre("title up", "title down", "artist up"));
}

TEST_F(NSTableHeaderViewTest, AHeldSpaceSortsOnceAndReachesNobodyElse) {
  focusHeader();
  const NSEvent::Fields held{.type = NSEventType::KeyDown,
                             .window = window,
                             .characters = " ",
                             .charactersIgnoringModifiers = " ",
                             .isRepeat = true};
  header->keyDown(make<NSEvent>(held));
  EXPECT_THAT(rows->sorted, IsEmpty());
  EXPECT_EQ(nativeOf(*window).eventsNotTaken(), 0);
}

TEST_F(NSTableHeaderViewTest, KeysWithShortcutsOrWithoutAColumnContinueUpTheChain) {
  focusHeader();
  pressFunctionKey(NSRightArrowFunctionKey, NSEventModifierFlagCommand);
  EXPECT_EQ(header->keyColumn(), 0u);
  for (const auto& column : columns) column->setHidden(true);
  pressFunctionKey(NSRightArrowFunctionKey);
  EXPECT_EQ(header->keyColumn(), std::nullopt);
  EXPECT_EQ(header->focusRingMaskBounds(), NSZeroRect);
  EXPECT_EQ(nativeOf(*window).eventsNotTaken(), 2);
}

TEST_F(NSTableHeaderViewTest, AColumnThatGoesTakesTheKeysToAnother) {
  focusHeader();
  pressFunctionKey(NSEndFunctionKey);
  table->removeTableColumn(columns[2]);
  EXPECT_EQ(header->keyColumn(), 0u);
}

TEST_F(NSTableHeaderViewTest, APressAndItsReleaseShow) {
  user.press(*window, {20, 140});
  EXPECT_TRUE(header->needsDisplay());
  desktop.settle();
  user.release();
  EXPECT_TRUE(header->needsDisplay());
}

TEST_F(NSTableHeaderViewTest, AReleaseBesideAllColumnsSortsNothing) {
  columns[0]->setHidden(true);
  columns[1]->setHidden(true);
  desktop.settle();
  user.click(*window, {150, 140});
  EXPECT_THAT(rows->sorted, IsEmpty());
}

TEST_F(NSTableHeaderViewTest, AColumnThatGoesWhileItIsResizedIsNotResized) {
  user.press(*window, {149, 140});
  for (const auto& column : columns) table->removeTableColumn(column);
  user.dragTo({180, 140});
  user.release();
  EXPECT_EQ(columns[0]->width(), 150);
  EXPECT_EQ(columns[2]->width(), 50);
}

TEST_F(NSTableHeaderViewTest, AColumnIsResizedFurtherWhenOneBeforeItGoes) {
  user.press(*window, {149, 140});
  user.dragTo({100, 140});
  ASSERT_EQ(columns[0]->width(), 101);
  table->removeTableColumn(columns[0]);
  table->addTableColumn(columns[0]);  // behind the others
  user.dragTo({419, 140});
  EXPECT_EQ(columns[0]->width(), 270);
  EXPECT_EQ(columns[1]->width(), 100);
}

TEST_F(NSTableHeaderViewTest, AClickSortsByTheColumnThatWasPressedAlsoWhenOneBeforeItGoes) {
  scrollView->contentView()->scrollToPoint({100, 0});
  user.press(*window, {100, 140});  // at 200 of the header, in the second column
  table->removeTableColumn(columns[0]);
  desktop.settle();
  EXPECT_EQ(drawn("fill").size(), 3u) << "the ground, the pressed column and a line";
  user.dragTo({20, 140});
  user.release();
  EXPECT_THAT(rows->sorted, ElementsAre("artist up"));
}

TEST_F(NSTableHeaderViewTest, TheMarkOfTheDirectionIsALineInTheColorOfText) {
  table->sortByColumn(0);
  EXPECT_THAT(drawn("setStrokeColor"), testing::Contains(HasSubstr("controlTextColor")));
  EXPECT_THAT(drawn("stroke").at(0), HasSubstr(R"("lineWidth":1.5)"));
}

TEST_F(NSTableHeaderViewTest, AnotherSortingShowsAndIsAnotherNameToAssistiveClients) {
  std::vector<std::size_t> changed;
  std::vector<Ref<NSObject>> tokens;
  for (std::size_t i = 0; i < 3; ++i)
    tokens.push_back(accessibilityNotificationCenter().addObserverForName(
        NSAccessibilityTitleChangedNotification, header->accessibilityChildren().value()[i], nullptr,
        [&changed, i](const Ref<NSNotification>&) { changed.push_back(i); }));
  desktop.settle();
  table->sortByColumn(1);
  for (const auto& token : tokens) accessibilityNotificationCenter().removeObserver(token);
  EXPECT_THAT(changed, ElementsAre(0, 1, 2));
  EXPECT_TRUE(header->needsDisplay());
}

TEST_F(NSTableHeaderViewTest, ShiftAndAnArrowResizeTheColumnWithinItsLimits) {
  focusHeader();
  pressFunctionKey(NSRightArrowFunctionKey, NSEventModifierFlagShift);
  EXPECT_EQ(columns[0]->width(), 160);
  columns[0]->setMinWidth(155);
  pressFunctionKey(NSLeftArrowFunctionKey, NSEventModifierFlagShift);
  EXPECT_EQ(columns[0]->width(), 155);
  pressFunctionKey(NSEndFunctionKey);
  pressFunctionKey(NSRightArrowFunctionKey, NSEventModifierFlagShift);
  EXPECT_EQ(columns[2]->width(), 50);
  EXPECT_THAT(rows->sorted, IsEmpty());
}

// To assistive clients.

TEST_F(NSTableHeaderViewTest, ANameSaysWhichColumnIsSortedAndHow) {
  EXPECT_THAT(names(), ElementsAre("title", "artist", "length"));
  element(1).accessibilityPerformAction(NSAccessibilityPressAction);
  EXPECT_THAT(names(), ElementsAre("title", "artist, sorted upward", "length"));
  element(1).accessibilityPerformAction(NSAccessibilityPressAction);
  EXPECT_THAT(names(), ElementsAre("title", "artist, sorted downward", "length"));
}

TEST_F(NSTableHeaderViewTest, NamesAreInTheUsersLanguage) {
  const harness::TextsScope german(
      {{"Column headers", "Spalten"}, {"sorted upward", "aufsteigend"}, {"sorted downward", "absteigend"}});
  EXPECT_EQ(header->accessibilityTitle(), "Spalten");
  element(1).accessibilityPerformAction(NSAccessibilityPressAction);
  EXPECT_THAT(names(), ElementsAre("title", "artist, aufsteigend", "length"));
  element(1).accessibilityPerformAction(NSAccessibilityPressAction);
  EXPECT_THAT(names(), ElementsAre("title", "artist, absteigend", "length"));
}

TEST_F(NSTableHeaderViewTest, ClientsAreOfferedWhatAColumnCanDo) {
  EXPECT_THAT(element(0).accessibilityActionNames(),
              ElementsAre(NSAccessibilityPressAction, NSAccessibilityIncrementAction, NSAccessibilityDecrementAction));
  EXPECT_THAT(element(2).accessibilityActionNames(), IsEmpty());
  element(0).accessibilityPerformAction(NSAccessibilityIncrementAction);
  EXPECT_EQ(columns[0]->width(), 160);
  element(0).accessibilityPerformAction(NSAccessibilityDecrementAction);
  EXPECT_EQ(columns[0]->width(), 150);
  element(2).accessibilityPerformAction(NSAccessibilityDecrementAction);
  EXPECT_EQ(columns[2]->width(), 50);
}

TEST_F(NSTableHeaderViewTest, AClientMayPutTheKeysOnAColumnWhichThenIsFocused) {
  EXPECT_FALSE(element(1).isAccessibilityFocused());
  element(1).accessibilitySetValue(true, NSAccessibilityFocusedAttribute);
  EXPECT_EQ(window->firstResponder(), header.get());
  EXPECT_TRUE(element(1).isAccessibilityFocused());
  EXPECT_FALSE(element(0).isAccessibilityFocused());
  pressFunctionKey(NSLeftArrowFunctionKey);
  EXPECT_TRUE(element(0).isAccessibilityFocused());
}

TEST_F(NSTableHeaderViewTest, AssistiveClientsObserveTheColumnThatTheKeysGoTo) {
  focusHeader();
  int changes = 0;
  const Ref<NSObject> token = accessibilityNotificationCenter().addObserverForName(
      NSAccessibilityFocusedUIElementChangedNotification, header, nullptr, [&](const Ref<NSNotification>&) { ++changes; });
  pressFunctionKey(NSRightArrowFunctionKey);
  accessibilityNotificationCenter().removeObserver(token);
  EXPECT_EQ(changes, 1);
}

TEST_F(NSTableHeaderViewTest, NoColumnIsFocusedWhereTheHeaderIsNot) {
  window->makeFirstResponder(table.get());
  EXPECT_FALSE(element(0).isAccessibilityFocused());
}

TEST_F(NSTableHeaderViewTest, AClientChangesNothingButTheFocus) {
  element(1).accessibilitySetValue(false, NSAccessibilityFocusedAttribute);
  element(1).accessibilitySetValue(true, NSAccessibilitySelectedAttribute);
  EXPECT_FALSE(element(1).accessibilityIsAttributeSettable(NSAccessibilitySelectedAttribute));
  EXPECT_NE(window->firstResponder(), header.get());
  element(0).accessibilityPerformAction(NSAccessibilityIncrementAction);
  EXPECT_THAT(rows->sorted, IsEmpty());
}

TEST_F(NSTableHeaderViewTest, OfAColumnOrAHeaderThatHasGoneNothingIsLeftToClients) {
  const AccessibilityElements held = header->accessibilityChildren().value();
  const auto expectNothing = [](NSAccessibility& gone) {
    EXPECT_FALSE(gone.isAccessibilityElement());
    EXPECT_EQ(gone.accessibilityTitle(), "");
    EXPECT_EQ(gone.accessibilityFrame(), NSZeroRect);
    EXPECT_EQ(gone.accessibilityParent(), nullptr);
    EXPECT_FALSE(gone.isAccessibilityFocused());
    EXPECT_FALSE(gone.accessibilityIsAttributeSettable(NSAccessibilityFocusedAttribute));
    EXPECT_THAT(gone.accessibilityActionNames(), IsEmpty());
    for (const auto action : {NSAccessibilityPressAction, NSAccessibilityIncrementAction, NSAccessibilityDecrementAction})
      gone.accessibilityPerformAction(action);
  };
  table->removeTableColumn(columns[2]);
  expectNothing(*accessibilityOf(held[2]));
  table->setHeaderView(nullptr);
  expectNothing(*accessibilityOf(held[0]));
  header.reset();
  expectNothing(*accessibilityOf(held[1]));
  EXPECT_EQ(columns[0]->width(), 150);
}

TEST_F(NSTableHeaderViewTest, AHeaderInNoWindowHasNoPlaceAndTakesNoKeysFromClients) {
  scrollView->removeFromSuperview();
  EXPECT_EQ(element(0).accessibilityFrame(), NSZeroRect);
  element(1).accessibilitySetValue(true, NSAccessibilityFocusedAttribute);
  EXPECT_EQ(header->keyColumn(), 0u);
}

// From interface files.

TEST_F(NSTableHeaderViewTest, ATableWithColumnsAndHeaderComesFromAnInterfaceFile) {
  const auto contents = make<NSNib>(R"({"objects": [{"class": "NSScrollView", "frame": [0, 0, 200, 150],
      "documentView": {"id": "table", "class": "NSTableView", "frame": [0, 0, 100, 100],
        "headerView": {"class": "NSTableHeaderView", "frame": [0, 0, 0, 24]},
        "tableColumns": [
          {"class": "NSTableColumn", "identifier": "title", "title": "Title", "width": 120, "minWidth": 40, "maxWidth": 300,
           "sortDescriptorPrototype": {"class": "NSSortDescriptor", "key": "title"}},
          {"class": "NSTableColumn", "identifier": "rating", "properties": {"title": "Rating", "width": 5},
           "resizable": false, "editable": false,
           "dataCell": {"class": "NSLevelIndicatorCell", "levelIndicatorStyle": "rating"},
           "sortDescriptorPrototype": {"class": "NSSortDescriptor", "key": "rating", "ascending": false}}]}}]})")
                            ->instantiateWithOwner(nullptr);
  ASSERT_EQ(contents.error, std::nullopt);
  const auto read = std::dynamic_pointer_cast<NSScrollView>(contents.topLevelObjects.at(0));
  const auto& readTable = dynamic_cast<NSTableView&>(*read->documentView());
  ASSERT_EQ(readTable.tableColumns().size(), 2u);
  const NSTableColumn &title = *readTable.tableColumns()[0], &rating = *readTable.tableColumns()[1];
  EXPECT_EQ(title.identifier(), "title");
  EXPECT_EQ(title.width(), 120);
  EXPECT_EQ(title.minWidth(), 40);
  EXPECT_EQ(title.maxWidth(), 300);
  EXPECT_TRUE(title.sortDescriptorPrototype()->isEqual(make<NSSortDescriptor>("title", true).get()));
  EXPECT_EQ(rating.title(), "Rating");
  EXPECT_EQ(rating.width(), 10);
  EXPECT_FALSE(rating.isResizable());
  EXPECT_FALSE(rating.isEditable());
  EXPECT_NE(std::dynamic_pointer_cast<NSLevelIndicatorCell>(rating.dataCell()), nullptr);
  EXPECT_TRUE(rating.sortDescriptorPrototype()->isEqual(make<NSSortDescriptor>("rating", false).get()));
  ASSERT_NE(readTable.headerView(), nullptr);
  EXPECT_EQ(readTable.headerView()->tableView(), &readTable);
  read->layoutSubtreeIfNeeded();
  EXPECT_EQ(read->contentView()->frame(), (CGRect{0, 24, 200, 126}));
}

TEST_F(NSTableHeaderViewTest, IsAboveRowsThatBeginElsewhereInTheClipView) {
  table->setFrameOrigin({10, 5});
  window->layoutIfNeeded();
  EXPECT_EQ(scrolled(), 10);
  EXPECT_EQ(headerScrolled(), 0);
  scrollView->contentView()->scrollToPoint({70, 5});
  EXPECT_EQ(scrolled(), 70);
  EXPECT_EQ(headerScrolled(), 60);
  focusHeader();
  for (int key = 0; key < 2; ++key) pressFunctionKey(NSRightArrowFunctionKey);  // to the last column
  EXPECT_EQ(headerScrolled(), scrolled() - 10);
}

TEST_F(NSTableHeaderViewTest, ADescriptorWithoutAKeyIsAnErrorOfTheInterfaceFile) {
  const auto contents = make<NSNib>(R"({"objects": [{"class": "NSTableColumn", "identifier": "a",
      "sortDescriptorPrototype": {"class": "NSSortDescriptor"}}]})")
                            ->instantiateWithOwner(nullptr);
  EXPECT_THAT(contents.error.value_or(""), testing::HasSubstr("a descriptor needs a key"));
}
