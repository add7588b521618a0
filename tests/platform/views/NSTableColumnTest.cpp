#include "tessaluna/platform/views/NSTableColumn.h"

#include <gmock/gmock.h>

#include <algorithm>

#include "tessaluna/platform/accessibility/AccessibleDescription.h"
#include "tessaluna/platform/accessibility/accessibleTree.h"
#include "tessaluna/platform/cells/NSButtonCell.h"
#include "tessaluna/platform/cells/NSLevelIndicatorCell.h"
#include "tessaluna/platform/cells/NSTextFieldCell.h"
#include "tessaluna/platform/foundation/NSNumber.h"
#include "tessaluna/platform/foundation/NSString.h"
#include "tessaluna/platform/graphics/NSColor.h"
#include "tessaluna/platform/views/NSScrollView.h"
#include "tessaluna/platform/views/NSSegmentedControl.h"
#include "tessaluna/platform/views/NSTableHeaderView.h"
#include "tessaluna/platform/views/NSTableView.h"
#include "tessaluna/platform/views/NSTextField.h"
#include "tests/harness/StillWorld.h"
#include "tests/harness/printing.h"
#include "tests/harness/recordingOf.h"

using namespace tessaluna::platform;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

// Songs with a title, a rating and a mark, which it sorts as the table says.
class Songs : public NSTableViewDataSource, public NSTableViewCellSource {
 public:
  struct Song {
    std::string title;
    double rating = 0;
    bool isMarked = false;
  };
  std::vector<Song> songs = {{"Cello", 3, false}, {"Arches", 5, true}, {"Bridge", 1, false}};
  std::vector<std::string> changes;

  std::size_t numberOfRowsInTableView(NSTableView&) override { return songs.size(); }
  Ref<NSObject> tableViewObjectValue(NSTableView&, NSTableColumn& column, std::size_t row) override {
    const Song& song = songs.at(row);
    if (column.identifier() == "title") return make<NSString>(song.title);
    return make<NSNumber>(column.identifier() == "rating" ? song.rating : song.isMarked ? 1 : 0);
  }
  void tableViewSetObjectValue(NSTableView&, const Ref<NSObject>& value, NSTableColumn& column, std::size_t row) override {
    const auto* text = dynamic_cast<const NSString*>(value.get());
    const std::string shown = text ? text->UTF8String() : dynamic_cast<const NSNumber&>(*value).stringValue();
    changes.push_back(column.identifier() + " of " + songs[row].title + " is " + shown);
    if (column.identifier() == "title") songs[row].title = shown;
  }
  void tableViewSortDescriptorsDidChange(NSTableView& table) override {
    const NSSortDescriptor& by = *table.sortDescriptors().front();
    std::stable_sort(songs.begin(), songs.end(), [&](const Song& a, const Song& b) {
      const auto precedes = [&](const Song& one, const Song& two) {
        return by.key() == "title" ? one.title < two.title : one.rating < two.rating;
      };
      return by.ascending() ? precedes(a, b) : precedes(b, a);
    });
    table.reloadData();
  }
};

// A header of 20 points above rows of 20 points; columns of 80, 70 and 40 points.
class NSTableColumnTest : public harness::StillWorld {
 protected:
  NSTableColumnTest() {
    titles->setTitle("Title");
    titles->setWidth(80);
    titles->setSortDescriptorPrototype(make<NSSortDescriptor>("title", true));
    ratings->setTitle("Rating");
    ratings->setWidth(70);
    ratings->setDataCell(make<NSLevelIndicatorCell>(NSLevelIndicatorStyleRating));
    ratings->setSortDescriptorPrototype(make<NSSortDescriptor>("rating", false));
    marks->setWidth(40);
    const auto mark = make<NSButtonCell>();
    mark->setButtonType(NSButtonType::Toggle);
    marks->setDataCell(mark);
    for (const auto& column : {titles, ratings, marks}) table->addTableColumn(column);
    table->setRowHeight(20);
    table->setHeaderView(header);
    table->setDataSource(songs);
    scrollView->setDocumentView(table);
    window->contentView()->addSubview(scrollView);
    table->reloadData();
    desktop.settle();
  }

  NSControl& control(std::size_t column, std::size_t row) const {
    return dynamic_cast<NSControl&>(*table->viewAtRow(row)->subviews()[column]);
  }
  std::vector<std::string> titlesShown() const {
    std::vector<std::string> result;
    for (std::size_t row = 0; row < table->numberOfRows(); ++row) result.push_back(control(0, row).stringValue());
    return result;
  }
  // In the window, of a point in the table or in the header.
  CGPoint at(CGFloat x, CGFloat y) const { return table->convertPointToView({x, y}, nullptr); }
  CGPoint inHeader(CGFloat x) const { return header->convertPointToView({x, 10}, nullptr); }
  void doubleClick(CGPoint point) {
    user.click(*window, point);
    user.click(*window, point);
    desktop.settle();
  }

  std::shared_ptr<Songs> songs = std::make_shared<Songs>();
  Ref<NSTableColumn> titles = make<NSTableColumn>("title"), ratings = make<NSTableColumn>("rating"),
                     marks = make<NSTableColumn>("mark");
  Ref<NSTableView> table = make<NSTableView>(CGRect{0, 0, 190, 100});
  Ref<NSTableHeaderView> header = make<NSTableHeaderView>(CGRect{0, 0, 0, 20});
  Ref<NSScrollView> scrollView = make<NSScrollView>(CGRect{0, 0, 200, 150});
  Ref<NSWindow> window = showWindow();
};

}  // namespace

TEST_F(NSTableColumnTest, EachRowHasACopyOfEachColumnsCellWithTheSourcesValue) {
  EXPECT_THAT(titlesShown(), ElementsAre("Cello", "Arches", "Bridge"));
  EXPECT_EQ(control(1, 1).doubleValue(), 5);
  EXPECT_NE(control(1, 1).cell(), ratings->dataCell());
  EXPECT_NE(control(1, 1).cell(), control(1, 0).cell());
  EXPECT_EQ(dynamic_cast<NSLevelIndicatorCell&>(*control(1, 1).cell()).levelIndicatorStyle(), NSLevelIndicatorStyleRating);
}

TEST_F(NSTableColumnTest, AnotherDataCellShowsInAllRows) {
  const auto cell = make<NSTextFieldCell>();
  cell->setAlignment(NSTextAlignmentRight);
  titles->setDataCell(cell);
  desktop.settle();
  EXPECT_EQ(control(0, 1).cell()->alignment(), NSTextAlignmentRight);
}

TEST_F(NSTableColumnTest, ColumnsAreSideBySideAndTheTableIsAsWideAsTheyAre) {
  EXPECT_EQ(table->rectOfColumn(1).origin.x, 80);
  EXPECT_EQ(table->columnAtPoint({85, 5}), 1u);
  EXPECT_EQ(table->columnAtPoint({300, 5}), std::nullopt);
  EXPECT_EQ(control(1, 0).frame(), (CGRect{80, 0, 70, 20}));
  EXPECT_EQ(table->frame().size.width, 190);
  ratings->setWidth(100);
  EXPECT_EQ(table->frame().size.width, 220);
  EXPECT_EQ(control(2, 0).frame(), (CGRect{180, 0, 40, 20}));
}

TEST_F(NSTableColumnTest, AWidthIsCutToItsLimits) {
  titles->setMinWidth(50);
  titles->setMaxWidth(120);
  titles->setWidth(500);
  EXPECT_EQ(titles->width(), 120);
  titles->setWidth(3);
  EXPECT_EQ(titles->width(), 50);
  titles->setMinWidth(60);
  EXPECT_EQ(titles->width(), 60);
}

TEST_F(NSTableColumnTest, ANarrowerLimitCutsTheWidthAtOnce) {
  titles->setMaxWidth(60);
  EXPECT_EQ(titles->width(), 60);
  EXPECT_EQ(table->frame().size.width, 60 + 70 + 40);
}

TEST_F(NSTableColumnTest, AnotherEndOfTheTitleShows) {
  desktop.settle();
  titles->setTitleEnd(NSTableColumn::TitleEnd::Trailing);
  EXPECT_TRUE(header->needsDisplay());
}

TEST_F(NSTableColumnTest, RemovingAColumnOfAnotherTableChangesNothing) {
  const auto stranger = make<NSTableColumn>("stranger");
  table->removeTableColumn(stranger);
  EXPECT_EQ(table->tableColumns().size(), 3u);
}

TEST_F(NSTableColumnTest, AColumnOfNoTableIsChangedByItself) {
  const auto free = make<NSTableColumn>("free");
  free->setEditable(false);
  free->setDataCell(make<NSButtonCell>());
  free->setTitle("Free");
  EXPECT_FALSE(free->isEditable());
}

TEST_F(NSTableColumnTest, AColumnThatGoesTakesItsCellsAlong) {
  table->removeTableColumn(titles);
  EXPECT_EQ(titles->tableView(), nullptr);
  EXPECT_EQ(table->viewAtRow(0)->subviews().size(), 2u);
  EXPECT_EQ(table->rectOfColumn(0).size.width, 70);
}

TEST_F(NSTableColumnTest, TextsOfARowAreOnOneLineWhetherTheyCanBeEditedOrNot) {
  const auto boxOfText = [&](std::size_t column) {
    return dynamic_cast<NSTextFieldCell&>(*control(column, 0).cell()).drawingRectForBounds({0, 0, 40, 40});
  };
  marks->setDataCell(make<NSTextFieldCell>());
  marks->setEditable(false);
  table->setRowHeight(40);
  control(2, 0).setStringValue("3");
  EXPECT_EQ(boxOfText(2), boxOfText(0));
  EXPECT_EQ(CGRectGetMidY(boxOfText(2)), 20);
}

TEST_F(NSTableColumnTest, SeveralLinesAreInTheMiddleOfTheirRowAsAWhole) {
  marks->setDataCell(make<NSTextFieldCell>());
  marks->setEditable(false);
  table->setRowHeight(60);
  auto& cell = dynamic_cast<NSTextFieldCell&>(*control(2, 0).cell());
  cell.setStringValue("a b");
  const CGFloat oneLine = cell.drawingRectForBounds({0, 0, 40, 60}).size.height;
  cell.setStringValue("a\nb");
  EXPECT_EQ(cell.drawingRectForBounds({0, 0, 40, 60}).size.height, 2 * oneLine);
}

TEST_F(NSTableColumnTest, AClickSelectsTheRowAndADoubleClickEditsTheText) {
  user.click(*window, at(10, 30));
  EXPECT_EQ(table->selectedRow(), 1u);
  EXPECT_EQ(window->firstResponder(), table.get());
  desktop.advance(2);
  doubleClick(at(10, 30));
  auto& field = dynamic_cast<NSTextField&>(control(0, 1));
  ASSERT_NE(field.currentEditor(), nullptr);
  user.type("Arcs");
  user.pressKey("\r");
  EXPECT_THAT(songs->changes, ElementsAre("title of Arches is Arcs"));
  EXPECT_EQ(field.currentEditor(), nullptr);
  EXPECT_EQ(window->firstResponder(), table.get());
}

TEST_F(NSTableColumnTest, EscapeThrowsAwayWhatWasTyped) {
  table->editColumn(0, 0);
  user.type("Nonsense");
  user.pressKey("\x1b");
  EXPECT_THAT(songs->changes, IsEmpty());
  EXPECT_THAT(titlesShown(), ElementsAre("Cello", "Arches", "Bridge"));
  EXPECT_EQ(window->firstResponder(), table.get());
}

TEST_F(NSTableColumnTest, AnotherFirstResponderEndsTheEditingAndKeepsTheText) {
  table->editColumn(0, 2);
  user.type("Bow");
  user.click(*window, at(10, 10));
  EXPECT_THAT(songs->changes, ElementsAre("title of Bridge is Bow"));
  EXPECT_EQ(table->selectedRow(), 0u);
}

TEST_F(NSTableColumnTest, ATextThatDidNotChangeIsNotSet) {
  table->editColumn(0, 2);
  user.pressKey("\r");
  EXPECT_THAT(songs->changes, IsEmpty());
}

TEST_F(NSTableColumnTest, ReturnEditsTheFirstTextOfARow) {
  window->makeFirstResponder(table.get());
  user.pressKey(NSDownArrowFunctionKey);
  user.pressKey("\r");
  user.type("Bow");
  user.pressKey("\r");
  EXPECT_THAT(songs->changes, ElementsAre("title of Cello is Bow"));
  EXPECT_EQ(window->firstResponder(), table.get());
}

TEST_F(NSTableColumnTest, TheTextThatIsEditedHasTheFocusToAssistiveClients) {
  table->selectRowIndexes(NSIndexSet(1), NSTableView::Selecting::Replaces);
  window->makeFirstResponder(table.get());
  EXPECT_EQ(focusedElement(), table->accessibleItem(1));
  user.pressKey("\r");
  desktop.settle();
  EXPECT_EQ(focusedElement(), control(0, 1).cell());
  user.pressKey("\x1b");
  desktop.settle();
  EXPECT_EQ(focusedElement(), table->accessibleItem(1));
}

TEST_F(NSTableColumnTest, ReturnOnARowWithoutATextToEditLeavesTheKeyboardToTheTable) {
  titles->setEditable(false);
  window->makeFirstResponder(table.get());
  user.pressKey(NSDownArrowFunctionKey);
  user.pressKey("\r");
  EXPECT_EQ(window->firstResponder(), table.get());
}

TEST_F(NSTableColumnTest, AHeldReturnIsTakenOnlyWhereThereIsATextToEdit) {
  class Above : public NSResponder {
   public:
    void keyDown(const Ref<NSEvent>&) override { ++keys; }
    int keys = 0;
  };
  const auto above = make<Above>();
  window->setNextResponder(above.get());
  window->makeFirstResponder(table.get());
  user.pressKey(NSDownArrowFunctionKey);
  const auto holdReturn = [&] {
    NSApp->sendEvent(make<NSEvent>(NSEvent::Fields{.type = NSEventType::KeyDown,
                                                   .window = window,
                                                   .characters = "\r",
                                                   .charactersIgnoringModifiers = "\r",
                                                   .isRepeat = true}));
  };
  holdReturn();
  EXPECT_EQ(above->keys, 0);
  EXPECT_EQ(window->firstResponder(), table.get());
  titles->setEditable(false);
  holdReturn();
  EXPECT_EQ(above->keys, 1);
  window->setNextResponder(nullptr);
}

TEST_F(NSTableColumnTest, ReturnDoesNotTakeTheKeyboardFromWhereTheDelegatePutIt) {
  class Mover : public NSTableViewDelegate {
   public:
    explicit Mover(NSResponder* to) : to_(to) {}
    Ref<NSView> tableViewViewForRow(NSTableView&, std::size_t) override { return nullptr; }
    bool tableViewRowWasEntered(NSTableView& table, std::size_t) override {
      table.window()->makeFirstResponder(to_);
      return false;
    }

   private:
    NSResponder* to_;
  };
  const auto mover = std::make_shared<Mover>(header.get());
  table->setDelegate(mover);
  window->makeFirstResponder(table.get());
  user.pressKey(NSDownArrowFunctionKey);
  user.pressKey("\r");
  EXPECT_EQ(window->firstResponder(), header.get());
}

TEST_F(NSTableColumnTest, WhatWasTypedIntoARowThatScrollsAwayIsKept) {
  for (int i = 0; i < 20; ++i) songs->songs.push_back({"Song " + std::to_string(i)});
  table->reloadData();
  table->editColumn(0, 1);
  user.type("Arcs");
  user.scroll(*window, at(10, 30), {0, -200});
  desktop.settle();
  EXPECT_THAT(songs->changes, ElementsAre("title of Arches is Arcs"));
  EXPECT_EQ(window->firstResponder(), table.get());
}

TEST_F(NSTableColumnTest, WhatAnAssistiveClientWritesIntoATextIsEditedAndReachesTheSource) {
  accessibilityOf(control(0, 1).cell())->accessibilitySetValue("Arcs", NSAccessibilityValueAttribute);
  ASSERT_NE(dynamic_cast<NSTextField&>(control(0, 1)).currentEditor(), nullptr);
  user.pressKey("\r");
  EXPECT_THAT(songs->changes, ElementsAre("title of Arches is Arcs"));
  titles->setEditable(false);
  desktop.settle();
  accessibilityOf(control(0, 1).cell())->accessibilitySetValue("Arches", NSAccessibilityValueAttribute);
  EXPECT_EQ(songs->changes.size(), 1u);
}

TEST_F(NSTableColumnTest, SortingTakesOverWhatWasTypedBefore) {
  table->editColumn(0, 0);
  user.type("Viola");
  user.click(*window, inHeader(20));
  EXPECT_THAT(songs->changes, ElementsAre("title of Cello is Viola"));
  EXPECT_THAT(titlesShown(), ElementsAre("Arches", "Bridge", "Viola"));
  EXPECT_EQ(window->firstResponder(), table.get());
}

TEST_F(NSTableColumnTest, WhereTheTextIsRefusedAClickOnAHeaderDoesNotSort) {
  class Refuser : public NSObject, public NSTextFieldDelegate {
    bool controlTextShouldEndEditing(NSControl&, NSText&) override { return false; }
  };
  const auto refuser = make<Refuser>();
  auto& field = dynamic_cast<NSTextField&>(control(0, 0));
  field.setDelegate(refuser);
  table->editColumn(0, 0);
  user.type("Viola");
  user.click(*window, inHeader(20));
  EXPECT_THAT(table->sortDescriptors(), IsEmpty());
  ASSERT_NE(field.currentEditor(), nullptr);
  EXPECT_EQ(field.currentEditor()->string(), "Viola");
  field.setDelegate(nullptr);
}

TEST_F(NSTableColumnTest, AColumnThatIsNotEditableIsNotChangedByTheUser) {
  for (const auto& column : {titles, ratings, marks}) column->setEditable(false);
  doubleClick(at(10, 30));
  EXPECT_EQ(dynamic_cast<NSTextField&>(control(0, 1)).currentEditor(), nullptr);
  user.click(*window, at(85, 10));
  user.click(*window, at(170, 10));
  EXPECT_THAT(songs->changes, IsEmpty());
  EXPECT_EQ(table->selectedRow(), 0u);
}

TEST_F(NSTableColumnTest, LevelsAndButtonsAreChangedByAPressWhichSelectsNoRow) {
  user.click(*window, at(80 + 14 + 5, 10));
  user.click(*window, at(170, 50));
  EXPECT_THAT(songs->changes, ElementsAre("rating of Cello is 2", "mark of Bridge is 1"));
  EXPECT_EQ(table->selectedRow(), std::nullopt);
}

TEST_F(NSTableColumnTest, TheValueOfSegmentsIsTheIndexOfTheSelectedOne) {
  const auto cell = make<NSSegmentedCell>();
  cell->setSegmentCount(6);
  cell->setTrackingMode(NSSegmentSwitchTrackingSelectOne);
  ratings->setDataCell(cell);  // 3, 5 and 1
  desktop.settle();
  const auto& segments = dynamic_cast<const NSSegmentedControl&>(control(1, 0));
  EXPECT_EQ(segments.selectedSegment(), 3u);
  user.click(*window, at(80 + 5, 10));
  EXPECT_THAT(songs->changes, ElementsAre("rating of Cello is 0"));
  songs->songs[0].rating = -1;
  table->reloadData();
  EXPECT_EQ(dynamic_cast<const NSSegmentedControl&>(control(1, 0)).selectedSegment(), std::nullopt);
  EXPECT_EQ(dynamic_cast<const NSSegmentedControl&>(control(1, 1)).selectedSegment(), 5u);
}

TEST_F(NSTableColumnTest, OfSegmentsAnyOfWhichMayBeSelectedOnlyThatOfTheValueIs) {
  const auto cell = make<NSSegmentedCell>();
  cell->setSegmentCount(6);
  cell->setTrackingMode(NSSegmentSwitchTrackingSelectAny);
  ratings->setDataCell(cell);
  ratings->setEditable(false);
  desktop.settle();
  auto& segments = dynamic_cast<NSSegmentedControl&>(control(1, 0));
  const auto selected = [&] {
    std::vector<std::size_t> result;
    for (std::size_t i = 0; i < segments.segmentCount(); ++i)
      if (segments.isSelectedForSegment(i)) result.push_back(i);
    return result;
  };
  ASSERT_THAT(selected(), ElementsAre(3));
  segments.setObjectValue(make<NSNumber>(1));
  EXPECT_THAT(selected(), ElementsAre(1)) << "as in a row that is used again";
  accessibilityOf(segments.cell()->accessibilityChildren()->at(5))->accessibilityPerformAction(NSAccessibilityPressAction);
  EXPECT_THAT(selected(), ElementsAre(3)) << "a client changes nothing of a column that is not editable";
}

TEST_F(NSTableColumnTest, SegmentsThatArePressedForAMomentShowNoValue) {
  const auto cell = make<NSSegmentedCell>();
  cell->setSegmentCount(6);
  cell->setTrackingMode(NSSegmentSwitchTrackingMomentary);
  ratings->setDataCell(cell);  // 3, 5 and 1
  desktop.settle();
  const auto& segments = dynamic_cast<const NSSegmentedControl&>(control(1, 0));
  EXPECT_EQ(segments.selectedSegment(), std::nullopt);
  user.click(*window, at(80 + 5, 10));
  EXPECT_THAT(songs->changes, ElementsAre("rating of Cello is 0"));
  EXPECT_EQ(segments.selectedSegment(), std::nullopt);
}

TEST_F(NSTableColumnTest, TheDelegateMayChangeACellBeforeItShows) {
  class Painter : public NSTableViewDelegate, public NSTableViewCellDelegate {
   public:
    Ref<NSView> tableViewViewForRow(NSTableView&, std::size_t) override { return nullptr; }
    void tableViewWillDisplayCell(NSTableView&, NSCell& cell, NSTableColumn& column, std::size_t row) override {
      if (column.identifier() == "title" && row == 1) dynamic_cast<NSTextFieldCell&>(cell).setTextColor(NSColor::redColor());
    }
  };
  const auto painter = std::make_shared<Painter>();
  table->setDelegate(painter);
  table->reloadData();
  EXPECT_EQ(dynamic_cast<NSTextFieldCell&>(*control(0, 1).cell()).textColor(), NSColor::redColor());
}

TEST_F(NSTableColumnTest, AClickOnAHeaderSortsAndAnotherOneTheOtherWayRound) {
  user.click(*window, inHeader(20));
  EXPECT_THAT(titlesShown(), ElementsAre("Arches", "Bridge", "Cello"));
  user.click(*window, inHeader(20));
  EXPECT_THAT(titlesShown(), ElementsAre("Cello", "Bridge", "Arches"));
  user.click(*window, inHeader(110));
  EXPECT_THAT(titlesShown(), ElementsAre("Arches", "Cello", "Bridge"));
  ASSERT_EQ(table->sortDescriptors().size(), 2u);
  EXPECT_TRUE(table->sortDescriptors()[0]->isEqual(make<NSSortDescriptor>("rating", false).get()));
  user.click(*window, inHeader(170));  // does not sort
  EXPECT_EQ(table->sortDescriptors()[0]->key(), "rating");
}

TEST_F(NSTableColumnTest, AReleaseOnAnotherHeaderSortsNothing) {
  user.press(*window, inHeader(20));
  user.dragTo(inHeader(110));
  user.release();
  EXPECT_THAT(table->sortDescriptors(), IsEmpty());
}

TEST_F(NSTableColumnTest, ADragAtTheEdgeOfAHeaderResizesItsColumn) {
  user.press(*window, inHeader(78));
  user.dragTo(inHeader(98));
  EXPECT_EQ(titles->width(), 100);
  user.dragTo(inHeader(-50));
  EXPECT_EQ(titles->width(), 10);
  user.release();
  EXPECT_THAT(table->sortDescriptors(), IsEmpty());
  titles->setResizable(false);
  user.press(*window, inHeader(9));
  user.dragTo(inHeader(60));
  user.release();
  EXPECT_EQ(titles->width(), 10);
}

TEST_F(NSTableColumnTest, TheHeaderDrawsTitlesAndTheDirectionOfTheFirstSort) {
  const auto drawn = [&] { return harness::recordingOf([&] { header->drawRect({}); }); };
  EXPECT_EQ(harness::only("glyphs", drawn()).size(), 2u);
  EXPECT_THAT(harness::only("stroke", drawn()), IsEmpty());
  table->sortByColumn(0);
  const auto up = harness::only("stroke", drawn());
  ASSERT_EQ(up.size(), 1u);
  EXPECT_THAT(up[0], testing::HasSubstr(R"([["M",66,12],["L",70,8],["L",74,12]])"));
  table->sortByColumn(0);
  EXPECT_THAT(harness::only("stroke", drawn()).at(0), testing::HasSubstr(R"([["M",66,8],["L",70,12],["L",74,8]])"));
}

TEST_F(NSTableColumnTest, AHiddenColumnTakesNoRoomAndHasNoHeader) {
  ratings->setHidden(true);
  desktop.settle();
  EXPECT_EQ(table->rectOfColumn(2).origin.x, 80);
  EXPECT_EQ(table->frame().size.width, 80 + 40);
  EXPECT_TRUE(control(1, 0).isHidden());
  EXPECT_EQ(control(2, 0).frame().origin.x, 80);
  EXPECT_EQ(header->accessibilityChildren().value().size(), 1u);
  ratings->setHidden(false);
  desktop.settle();
  EXPECT_EQ(table->rectOfColumn(2).origin.x, 150) << "as wide as before";
  EXPECT_FALSE(control(1, 0).isHidden());
}

TEST_F(NSTableColumnTest, HeadersAreButtonsToAssistiveClients) {
  const auto children = header->accessibilityChildren().value();
  ASSERT_EQ(children.size(), 2u) << "a column without a title has nothing to say";
  const NSAccessibility& first = *accessibilityOf(children[0]);
  EXPECT_EQ(first.accessibilityRole(), NSAccessibilitySortButtonRole);
  EXPECT_EQ(accessibleNameOf(children[0]), "Title");
  EXPECT_EQ(first.accessibilityFrame(), (CGRect{100, 230, 80, 20}));
  accessibilityOf(children[0])->accessibilityPerformAction(NSAccessibilityPressAction);
  EXPECT_THAT(titlesShown(), ElementsAre("Arches", "Bridge", "Cello"));
}

TEST_F(NSTableColumnTest, ToAssistiveClientsAValueIsCalledByItsColumnAndATextThatOnlyShowsByItself) {
  EXPECT_EQ(accessibleNameOf(control(1, 0).cell()), "Rating");
  EXPECT_EQ(accessibleNameOf(control(0, 0).cell()), "Title");
  titles->setEditable(false);
  EXPECT_EQ(accessibleNameOf(control(0, 0).cell()), "Cello");
}

TEST_F(NSTableColumnTest, TheTabKeyStopsAtTheTableAndNotAtItsCells) {
  window->makeFirstResponder(table.get());
  user.pressKey("\t");
  EXPECT_EQ(window->firstResponder(), header.get());
  user.pressKey("\t");
  EXPECT_EQ(window->firstResponder(), table.get());
}

TEST_F(NSTableColumnTest, RightGoesFromARowToItsFirstControlAndEscapeBack) {
  window->makeFirstResponder(table.get());
  user.pressKey(NSDownArrowFunctionKey);
  user.pressKey(NSRightArrowFunctionKey);
  EXPECT_EQ(window->firstResponder(), &control(1, 0));
  const double before = control(1, 0).doubleValue();
  user.pressKey(NSRightArrowFunctionKey);
  EXPECT_EQ(control(1, 0).doubleValue(), before + 1);
  user.pressKey("\x1b");
  EXPECT_EQ(window->firstResponder(), table.get());
  EXPECT_EQ(table->selectedRow(), 0u);
}

TEST_F(NSTableColumnTest, FromAControlTheTabKeyGoesToTheOthersOfTheRowAndOnward) {
  window->makeFirstResponder(table.get());
  user.pressKey(NSDownArrowFunctionKey);
  user.pressKey(NSRightArrowFunctionKey);
  user.pressKey("\t");
  EXPECT_EQ(window->firstResponder(), &control(2, 0));
  user.pressKey("\t");
  EXPECT_EQ(window->firstResponder(), header.get());
}

TEST_F(NSTableColumnTest, ARowWithoutControlsKeepsTheKeyboard) {
  ratings->setEditable(false);
  marks->setHidden(true);
  desktop.settle();
  window->makeFirstResponder(table.get());
  user.pressKey(NSDownArrowFunctionKey);
  user.pressKey(NSRightArrowFunctionKey);
  EXPECT_EQ(window->firstResponder(), table.get());
}

TEST_F(NSTableColumnTest, AControlOfAColumnThatIsNotEditableGetsNoKeyboard) {
  marks->setEditable(false);
  desktop.settle();
  window->makeFirstResponder(table.get());
  user.pressKey(NSDownArrowFunctionKey);
  user.pressKey(NSRightArrowFunctionKey);
  user.pressKey("\t");
  EXPECT_EQ(window->firstResponder(), header.get());
}

TEST_F(NSTableColumnTest, AnAssistiveClientDoesNotChangeAColumnThatIsNotEditable) {
  marks->setEditable(false);
  desktop.settle();
  const double before = control(2, 0).doubleValue();
  accessibilityOf(control(2, 0).cell())->accessibilityPerformAction(NSAccessibilityPressAction);
  EXPECT_EQ(control(2, 0).doubleValue(), before);
  EXPECT_THAT(songs->changes, IsEmpty());
}

TEST_F(NSTableColumnTest, TheTableGetsTheKeyboardOfARowThatIsTakenAway) {
  window->makeFirstResponder(table.get());
  user.pressKey(NSDownArrowFunctionKey);
  user.pressKey(NSRightArrowFunctionKey);
  ASSERT_EQ(window->firstResponder(), &control(1, 0));
  table->reloadData();
  desktop.settle();
  EXPECT_EQ(window->firstResponder(), table.get());
}

TEST_F(NSTableColumnTest, ATableThatLeavesItsWindowWhileATextIsEditedGetsNoKeyboard) {
  table->editColumn(0, 1);
  ASSERT_TRUE(window->fieldEditor(false, nullptr));
  user.type("x");
  scrollView->removeFromSuperview();
  EXPECT_EQ(window->firstResponder(), window.get());
  EXPECT_THAT(songs->changes, ElementsAre("title of Arches is x"));
}

TEST_F(NSTableColumnTest, WhatIsLeftOfATableThatHasGoneIsHarmless) {
  scrollView->setDocumentView(nullptr);
  table.reset();
  EXPECT_EQ(header->tableView(), nullptr);
  EXPECT_EQ(titles->tableView(), nullptr);
  titles->setWidth(30);
  user.click(*window, inHeader(20));
  EXPECT_THAT(header->accessibilityChildren().value(), IsEmpty());
}

using NSTableColumnDeathTest = NSTableColumnTest;

TEST_F(NSTableColumnDeathTest, AColumnOfTwoTablesStopsTheProgram) {
  EXPECT_DEATH(make<NSTableView>(NSZeroRect)->addTableColumn(titles), "a column of two tables");
}
