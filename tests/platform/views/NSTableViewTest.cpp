#include "tessaluna/platform/views/NSTableView.h"

#include <functional>
#include <utility>

#include "tessaluna/platform/events/NSEvent.h"
#include "tessaluna/platform/graphics/NSColor.h"
#include "tessaluna/platform/text/unicode.h"
#include "tessaluna/platform/views/NSScrollView.h"
#include "tessaluna/platform/views/NSTextField.h"
#include "tests/harness/StillWorld.h"
#include "tests/harness/printing.h"
#include "tests/harness/recordingOf.h"

using namespace tessaluna::platform;
using harness::only;
using harness::recordingOf;

namespace {

// A list of so many rows, each a label, and what the table tells of itself.
class Host : public NSTableViewDataSource, public NSTableViewDelegate {
 public:
  std::size_t rows = 10000;
  std::vector<CGFloat> heights;  // of the rows, if they differ
  std::size_t made = 0, reused = 0;
  std::vector<std::optional<std::size_t>> hovered;
  std::vector<std::size_t> doubleClicked;
  int selectionChanges = 0;
  std::function<void()> onMake, onSelection, onKeyboardRow;

  std::size_t numberOfRowsInTableView(NSTableView&) override { return rows; }
  Ref<NSView> tableViewViewForRow(NSTableView& table, std::size_t row) override {
    if (onMake) onMake();
    Ref<NSView> view = table.makeViewWithIdentifier("row");
    if (view) {
      ++reused;
    } else {
      ++made;
      view = make<NSView>(CGRect{});
      view->addSubview(NSTextField::labelWithString(""));
      view->setIdentifier("row");
    }
    static_cast<NSTextField&>(*view->subviews()[0]).setStringValue("row " + std::to_string(row));
    return view;
  }
  bool tableViewHasRowsOfDifferentHeights(NSTableView&) override { return !heights.empty(); }
  CGFloat tableViewHeightOfRow(NSTableView&, std::size_t row) override { return heights[row]; }
  void tableViewSelectionDidChange(NSTableView&) override {
    ++selectionChanges;
    if (onSelection) onSelection();
  }
  void tableViewKeyboardRowDidChange(NSTableView&, std::optional<std::size_t>) override {
    if (onKeyboardRow) onKeyboardRow();
  }
  void tableViewHoveredRowDidChange(NSTableView&, std::optional<std::size_t> row) override { hovered.push_back(row); }
  void tableViewRowWasDoubleClicked(NSTableView&, std::size_t row) override { doubleClicked.push_back(row); }
};

using Rows = std::vector<std::size_t>;
using Hovered = std::vector<std::optional<std::size_t>>;

// A table in a scroll view that fills a window of 200 by 150 points; rows of 30 points, so that five show.
class NSTableViewTest : public harness::StillWorld {
 protected:
  NSTableViewTest() {
    table->setDataSource(host);
    table->setDelegate(host);
    table->setAutoresizingMask(NSViewWidthSizable);
    table->setRowHeight(30);
    scrollView->setDocumentView(table);
    window = showWindowWith(scrollView);
  }

  Rows rowsWithViews() const {
    Rows rows;
    for (std::size_t row = 0; row < table->numberOfRows(); ++row)
      if (table->viewAtRow(row)) rows.push_back(row);
    return rows;
  }
  Rows selected() const {
    Rows rows;
    for (const NSRange& range : table->selectedRowIndexes().ranges())
      for (std::size_t i = 0; i < range.length; ++i) rows.push_back(range.location + i);
    return rows;
  }
  std::string textOf(std::size_t row) const {
    return static_cast<const NSTextField&>(*table->viewAtRow(row)->subviews()[0]).stringValue();
  }
  // The middle of a row, in the window.
  CGPoint at(std::size_t row) const {
    const CGRect rect = table->rectOfRow(row);
    return table->convertPointToView({100, CGRectGetMidY(rect)}, nullptr);
  }
  void click(std::size_t row, std::uint32_t modifiers = 0) {
    desktop.advance(10);  // no double click
    user.click(*window, at(row), {.modifiers = modifiers});
  }
  void key(char32_t key, std::uint32_t modifiers = 0) { user.pressKey(utf8FromScalar(key), modifiers); }
  void scrollTo(CGFloat y) { scrollView->contentView()->scrollToPoint({0, y}); }

  std::shared_ptr<Host> host = std::make_shared<Host>();
  Ref<NSTableView> table = make<NSTableView>(CGRect{0, 0, 200, 0});
  Ref<NSScrollView> scrollView = make<NSScrollView>(CGRect{0, 0, 200, 150});
  Ref<NSWindow> window;
};

}  // namespace

// Rows.

TEST_F(NSTableViewTest, IsAsHighAsItsRows) {
  EXPECT_EQ(table->numberOfRows(), 10000u);
  EXPECT_EQ(table->frame(), (CGRect{0, 0, 200, 300000}));
  EXPECT_EQ(table->rectOfRow(7), (CGRect{0, 210, 200, 30}));
  EXPECT_EQ(table->rectOfRow(10000), NSZeroRect);
}

TEST_F(NSTableViewTest, OnlyRowsThatShowHaveViews) {
  EXPECT_EQ(rowsWithViews(), (Rows{0, 1, 2, 3, 4}));
  EXPECT_EQ(table->viewAtRow(0)->frame(), (CGRect{0, 0, 200, 30}));
  scrollTo(45);
  EXPECT_EQ(rowsWithViews(), (Rows{1, 2, 3, 4, 5, 6}));
}

TEST_F(NSTableViewTest, ATableWithoutAPlaceMakesNoRowsAndMakesThemWhenItHasOne) {
  const auto other = std::make_shared<Host>();
  const auto lone = make<NSTableView>(CGRect{0, 0, 200, 0});
  lone->setDataSource(other);
  lone->setDelegate(other);
  lone->reloadData();
  EXPECT_EQ(other->made, 0u);
  window->contentView()->addSubview(lone);  // of 150 points, with rows of 24
  EXPECT_EQ(other->made, 0u);
  desktop.settle();
  EXPECT_EQ(other->made, 7u);
}

TEST_F(NSTableViewTest, ViewsThatScrollOutOfSightAreUsedForOtherRows) {
  for (CGFloat y = 0; y <= 3000; y += 15) scrollTo(y);
  EXPECT_LE(host->made, 7u);
  EXPECT_EQ(rowsWithViews(), (Rows{100, 101, 102, 103, 104}));
  EXPECT_EQ(textOf(102), "row 102");
  EXPECT_EQ(table->viewAtRow(102)->frame(), table->rectOfRow(102));
  EXPECT_LE(table->subviews().size(), 6u);
}

TEST_F(NSTableViewTest, AViewWithoutAnIdentifierIsNotUsedAgain) {
  const std::size_t made = host->made;
  for (std::size_t row = 0; row < 5; ++row) table->viewAtRow(row)->setIdentifier("");
  scrollTo(3000);
  EXPECT_EQ(host->made, made + 5);
  EXPECT_EQ(table->makeViewWithIdentifier(""), nullptr);
}

TEST_F(NSTableViewTest, AViewIsGivenOutUnderTheIdentifierThatItGaveBack) {
  const Ref<NSView> view = table->viewAtRow(0);
  view->setIdentifier("header");
  EXPECT_EQ(table->makeViewWithIdentifier("header"), nullptr);  // it shows
  scrollTo(3000);
  EXPECT_EQ(table->makeViewWithIdentifier("header"), view);
  EXPECT_EQ(table->makeViewWithIdentifier("header"), nullptr);
}

TEST_F(NSTableViewTest, AScreenOfRowsThatGoesServesTheNextScreen) {
  scrollView->setFrame({0, 0, 200, 900});  // thirty rows
  desktop.settle();
  const std::size_t before = host->made;
  for (CGFloat y = 0; y <= 9000; y += 900) {
    scrollTo(y);
    desktop.settle();
  }
  EXPECT_EQ(host->made, before);
}

TEST_F(NSTableViewTest, ATallListThatShrinksDoesNotHoldOnToItsViews) {
  std::vector<WeakRef<NSView>> views;
  scrollView->setFrame({0, 0, 200, 3000});
  desktop.settle();
  for (const Ref<NSView>& view : table->subviews()) views.push_back(view);
  scrollView->setFrame({0, 0, 200, 150});
  desktop.settle();
  const auto alive = std::count_if(views.begin(), views.end(), [](const auto& view) { return !view.expired(); });
  EXPECT_GE(views.size(), 100u);
  EXPECT_LE(alive, 5 + 8);
}

TEST_F(NSTableViewTest, TheRowAtAPoint) {
  EXPECT_EQ(table->rowAtPoint({0, 0}), 0u);
  EXPECT_EQ(table->rowAtPoint({199, 29.9}), 0u);
  EXPECT_EQ(table->rowAtPoint({0, 30}), 1u);
  EXPECT_EQ(table->rowAtPoint({-1, 30}), std::nullopt);
  EXPECT_EQ(table->rowAtPoint({0, 300000}), std::nullopt);
}

TEST_F(NSTableViewTest, TheRowOfAViewHoweverDeepInIt) {
  EXPECT_EQ(table->rowForView(*table->viewAtRow(3)), 3u);
  EXPECT_EQ(table->rowForView(*table->viewAtRow(3)->subviews()[0]), 3u);
  EXPECT_EQ(table->rowForView(*table), std::nullopt);
  EXPECT_EQ(table->rowForView(*window->contentView()), std::nullopt);
}

TEST_F(NSTableViewTest, RowsMayHaveDifferentHeights) {
  host->rows = 4;
  host->heights = {10, 100, 20, 5};
  table->reloadData();
  EXPECT_EQ(table->frame().size.height, 135);
  EXPECT_EQ(table->rectOfRow(2), (CGRect{0, 110, 200, 20}));
  EXPECT_EQ(table->rowAtPoint({5, 9}), 0u);
  EXPECT_EQ(table->rowAtPoint({5, 10}), 1u);
  EXPECT_EQ(table->rowAtPoint({5, 134}), 3u);
}

TEST_F(NSTableViewTest, ARowWithoutHeightHidesNoneAfterIt) {
  host->rows = 5;
  host->heights = {20, 0, 20, -5, 20};
  table->reloadData();
  EXPECT_EQ(rowsWithViews(), (Rows{0, 2, 4}));
  EXPECT_EQ(table->frame().size.height, 60);
}

TEST_F(NSTableViewTest, RowsMayBeAllAlikeAgain) {
  host->rows = 4;
  host->heights = {10, 100, 20, 5};
  table->reloadData();
  host->heights.clear();
  table->reloadData();
  EXPECT_EQ(table->rectOfRow(2), (CGRect{0, 60, 200, 30}));
  EXPECT_EQ(table->frame().size.height, 120);
}

TEST_F(NSTableViewTest, RowsFollowTheWidth) {
  scrollView->setFrame({0, 0, 160, 150});
  EXPECT_EQ(table->viewAtRow(2)->frame(), (CGRect{0, 60, 160, 30}));
  EXPECT_EQ(table->frame().size.width, 160);
}

TEST_F(NSTableViewTest, WithoutADataSourceThereAreNoRows) {
  const auto empty = make<NSTableView>(CGRect{0, 0, 100, 100});
  empty->reloadData();
  EXPECT_EQ(empty->numberOfRows(), 0u);
  EXPECT_EQ(empty->frame().size.height, 0);
}

TEST_F(NSTableViewTest, ReloadingMakesTheVisibleRowsAgain) {
  const std::size_t before = host->made + host->reused;
  table->reloadData();
  EXPECT_TRUE(table->subviews().empty());
  desktop.settle();
  EXPECT_EQ(host->made + host->reused, before + 5);
  EXPECT_EQ(rowsWithViews().size(), 5u);
}

TEST_F(NSTableViewTest, KeepsTheHeightOfItsRowsWhateverHeightItIsGiven) {
  table->setFrame({0, 0, 200, 17});
  desktop.settle();
  EXPECT_EQ(table->frame().size.height, 300000);
}

TEST_F(NSTableViewTest, ADelegateThatReloadsWhileRowsAreMadeEnds) {
  host->onMake = [&] { table->reloadData(); };
  table->reloadData();
  desktop.settle();
  host->onMake = nullptr;
  EXPECT_LE(host->made + host->reused, 100u);
  EXPECT_EQ(rowsWithViews(), (Rows{0, 1, 2, 3, 4}));
}

TEST_F(NSTableViewTest, FewerRowsCutTheSelectionAndTheHover) {
  scrollTo(3000);
  user.moveTo(*window, at(101));
  table->selectRowIndexes(NSIndexSet(NSRange{1, 102}), NSTableView::Selecting::Replaces);
  host->rows = 3;
  table->reloadData();
  EXPECT_EQ(selected(), (Rows{1, 2}));
  EXPECT_EQ(table->hoveredRow(), std::nullopt);
  EXPECT_EQ(rowsWithViews(), (Rows{0, 1, 2}));
}

TEST_F(NSTableViewTest, ACutSelectionIsReportedAndForgetsWhereItBegan) {
  table->selectRowIndexes(NSIndexSet(NSRange{1, 5}), NSTableView::Selecting::Replaces);
  const int before = host->selectionChanges;
  host->rows = 3;
  table->reloadData();
  EXPECT_EQ(host->selectionChanges, before + 1);
  table->reloadData();
  EXPECT_EQ(host->selectionChanges, before + 1) << "nothing was cut";
  click(0, NSEventModifierFlagShift);
  EXPECT_EQ(selected(), Rows{0});
}

TEST_F(NSTableViewTest, NeitherHostIsKeptAlive) {
  const std::weak_ptr<Host> weak = host;
  host.reset();
  EXPECT_TRUE(weak.expired());
  scrollTo(500);  // harmless
  table->reloadData();
  EXPECT_EQ(table->numberOfRows(), 0u);
}

// Selection with the mouse.

TEST_F(NSTableViewTest, AClickSelectsOneRow) {
  click(2);
  EXPECT_EQ(selected(), Rows{2});
  click(3);
  EXPECT_EQ(selected(), Rows{3});
  EXPECT_EQ(table->selectedRow(), 3u);
  EXPECT_TRUE(table->isRowSelected(3));
  EXPECT_FALSE(table->isRowSelected(2));
  EXPECT_EQ(host->selectionChanges, 2);
  click(3);
  EXPECT_EQ(host->selectionChanges, 2);
}

TEST_F(NSTableViewTest, AClickOnARowsLabelSelectsItAndTakesTheKeys) {
  const Ref<NSView> label = table->viewAtRow(1)->subviews()[0];
  label->setFrame({0, 0, 200, 30});
  click(1);
  EXPECT_EQ(selected(), Rows{1});
  EXPECT_EQ(window->firstResponder(), table.get());
}

TEST_F(NSTableViewTest, CommandAddsAndTakesAway) {
  click(1);
  click(3, NSEventModifierFlagCommand);
  EXPECT_EQ(selected(), (Rows{1, 3}));
  click(1, NSEventModifierFlagCommand);
  EXPECT_EQ(selected(), Rows{3});
}

TEST_F(NSTableViewTest, ShiftExtendsFromWhereTheSelectionBegan) {
  click(2);
  click(4, NSEventModifierFlagShift);
  EXPECT_EQ(selected(), (Rows{2, 3, 4}));
  click(0, NSEventModifierFlagShift);
  EXPECT_EQ(selected(), (Rows{0, 1, 2}));
}

TEST_F(NSTableViewTest, ArrowsContinueFromTheEndThatAShiftClickMoved) {
  click(2);
  click(0, NSEventModifierFlagShift);
  EXPECT_EQ(table->selectedRow(), 0u);
  key(NSDownArrowFunctionKey);
  EXPECT_EQ(selected(), Rows{1});
}

TEST_F(NSTableViewTest, WithoutMultipleSelectionModifiersSelectOneRow) {
  table->setAllowsMultipleSelection(false);
  click(1);
  click(3, NSEventModifierFlagShift);
  EXPECT_EQ(selected(), Rows{3});
  click(4, NSEventModifierFlagCommand);
  EXPECT_EQ(selected(), Rows{4});
  table->selectRowIndexes(NSIndexSet(NSRange{0, 3}), NSTableView::Selecting::Extends);
  EXPECT_EQ(selected(), Rows{2});
}

TEST_F(NSTableViewTest, DeselectingLeavesNoSelectedRow) {
  table->selectRowIndexes(NSIndexSet(1), NSTableView::Selecting::Replaces);
  table->deselectAll();
  EXPECT_EQ(selected(), Rows{});
  EXPECT_EQ(table->selectedRow(), std::nullopt);
}

TEST_F(NSTableViewTest, APressBelowTheRowsDeselects) {
  host->rows = 3;
  table->reloadData();
  table->selectRowIndexes(NSIndexSet(1), NSTableView::Selecting::Replaces);
  user.click(*window, {100, 20});
  EXPECT_EQ(selected(), Rows{});
  EXPECT_EQ(host->selectionChanges, 2);
  EXPECT_EQ(window->firstResponder(), table.get());
}

TEST_F(NSTableViewTest, APressBesideTheRowsOfANarrowTableLeavesTheSelection) {
  table->setFrameSize({80, 0});
  table->selectRowIndexes(NSIndexSet(1), NSTableView::Selecting::Replaces);
  user.click(*window, {150, 100});
  EXPECT_EQ(selected(), Rows{1});
}

TEST_F(NSTableViewTest, ControlTogglesAsCommandDoes) {
  click(1);
  click(3, NSEventModifierFlagControl);
  click(1, NSEventModifierFlagControl);
  EXPECT_EQ(selected(), Rows{3});
}

TEST_F(NSTableViewTest, ShiftExtendsFromTheFirstRowOfASelectionMadeByTheProgram) {
  table->selectRowIndexes(NSIndexSet(NSRange{1, 2}), NSTableView::Selecting::Replaces);
  click(4, NSEventModifierFlagShift);
  EXPECT_EQ(selected(), (Rows{1, 2, 3, 4}));
}

TEST_F(NSTableViewTest, AThirdClickIsNotASecondDoubleClick) {
  for (int i = 0; i < 3; ++i) user.click(*window, at(2));
  EXPECT_EQ(host->doubleClicked, Rows{2});
}

TEST_F(NSTableViewTest, ADoubleClickIsReportedOnceAndKeepsTheSelection) {
  user.click(*window, at(2));
  user.click(*window, at(2));
  EXPECT_EQ(host->doubleClicked, Rows{2});
  EXPECT_EQ(selected(), Rows{2});
}

TEST_F(NSTableViewTest, ADoubleClickOnARowThatCameUnderThePointerSelectsItFirst) {
  const CGPoint place = at(2);
  user.click(*window, place);
  user.scroll(*window, place, {0, -30});
  user.click(*window, place);
  EXPECT_EQ(host->doubleClicked, Rows{3});
  EXPECT_EQ(selected(), Rows{3});
}

TEST_F(NSTableViewTest, RowsThatAreNotThereAreNotSelected) {
  table->selectRowIndexes(NSIndexSet(NSRange{9998, 50}), NSTableView::Selecting::Replaces);
  EXPECT_EQ(selected(), (Rows{9998, 9999}));
  EXPECT_EQ(table->selectedRow(), 9999u);
}

// Selection with the keyboard.

TEST_F(NSTableViewTest, ArrowsMoveTheSelectionAndTheRowIntoSight) {
  click(3);
  key(NSDownArrowFunctionKey);
  key(NSDownArrowFunctionKey);
  EXPECT_EQ(selected(), Rows{5});
  EXPECT_EQ(scrollView->contentView()->bounds().origin.y, 30);
  key(NSUpArrowFunctionKey);
  EXPECT_EQ(selected(), Rows{4});
  EXPECT_EQ(scrollView->contentView()->bounds().origin.y, 30);
}

TEST_F(NSTableViewTest, ArrowsStopAtTheEnds) {
  click(0);
  key(NSUpArrowFunctionKey);
  EXPECT_EQ(selected(), Rows{0});
  key(NSEndFunctionKey);
  key(NSDownArrowFunctionKey);
  EXPECT_EQ(selected(), Rows{9999});
}

TEST_F(NSTableViewTest, WithoutASelectionAnArrowTakesTheNearerEnd) {
  window->makeFirstResponder(table.get());
  key(NSDownArrowFunctionKey);
  EXPECT_EQ(selected(), Rows{0});
  table->deselectAll();
  key(NSUpArrowFunctionKey);
  EXPECT_EQ(selected(), Rows{9999});
}

TEST_F(NSTableViewTest, HomeAndEndGoToTheEndsAlsoWithoutASelection) {
  window->makeFirstResponder(table.get());
  key(NSEndFunctionKey);
  EXPECT_EQ(selected(), Rows{9999});
  EXPECT_NE(table->viewAtRow(9999), nullptr);
  table->deselectAll();
  key(NSHomeFunctionKey);
  EXPECT_EQ(selected(), Rows{0});
}

TEST_F(NSTableViewTest, PagesAreWhatShowsLessOneRow) {
  click(0);
  key(NSPageDownFunctionKey);
  EXPECT_EQ(selected(), Rows{4});
  key(NSPageDownFunctionKey);
  EXPECT_EQ(selected(), Rows{8});
  key(NSPageUpFunctionKey);
  EXPECT_EQ(selected(), Rows{4});
}

TEST_F(NSTableViewTest, RowsThatShowInPartAreNoneOfAPage) {
  click(2);
  scrollTo(15);
  key(NSPageDownFunctionKey);
  EXPECT_EQ(selected(), Rows{5});
}

TEST_F(NSTableViewTest, APageThatReachesPastTheEndsGoesToTheEnds) {
  click(1);
  key(NSPageUpFunctionKey);
  EXPECT_EQ(selected(), Rows{0});
  key(NSEndFunctionKey);
  key(NSUpArrowFunctionKey);
  key(NSPageDownFunctionKey);
  EXPECT_EQ(selected(), Rows{9999});
}

TEST_F(NSTableViewTest, OtherKeysGoUpTheChain) {
  click(1);
  const int before = nativeOf(*window).eventsNotTaken();
  key('x');
  EXPECT_EQ(nativeOf(*window).eventsNotTaken(), before + 1);
  EXPECT_EQ(selected(), Rows{1});
}

TEST_F(NSTableViewTest, ShiftAndArrowsExtendAndShrink) {
  click(2);
  key(NSDownArrowFunctionKey, NSEventModifierFlagShift);
  key(NSDownArrowFunctionKey, NSEventModifierFlagShift);
  EXPECT_EQ(selected(), (Rows{2, 3, 4}));
  key(NSUpArrowFunctionKey, NSEventModifierFlagShift);
  EXPECT_EQ(selected(), (Rows{2, 3}));
  key(NSUpArrowFunctionKey, NSEventModifierFlagShift);
  key(NSUpArrowFunctionKey, NSEventModifierFlagShift);
  EXPECT_EQ(selected(), (Rows{1, 2}));
}

TEST_F(NSTableViewTest, KeysOfAnEmptyTableDoNothing) {
  host->rows = 0;
  table->reloadData();
  window->makeFirstResponder(table.get());
  for (const char32_t any : {NSHomeFunctionKey, NSEndFunctionKey, NSPageDownFunctionKey, NSDownArrowFunctionKey}) key(any);
  EXPECT_EQ(selected(), Rows{});
}

// Looks.

TEST_F(NSTableViewTest, ASelectedRowsTextIsOnDarkGround) {
  click(2);
  const auto styleOf = [&](std::size_t row) {
    return static_cast<const NSControl&>(*table->viewAtRow(row)->subviews()[0]).cell()->backgroundStyle();
  };
  EXPECT_EQ(styleOf(2), NSBackgroundStyleDark);
  EXPECT_EQ(styleOf(1), NSBackgroundStyleLight);
  for (CGFloat y = 0; y <= 3000; y += 30) scrollTo(y);
  for (const std::size_t row : rowsWithViews()) EXPECT_EQ(styleOf(row), NSBackgroundStyleLight) << row;
}

TEST_F(NSTableViewTest, SelectedRowsArePaintedBehindTheirViews) {
  table->selectRowIndexes(NSIndexSet(1), NSTableView::Selecting::Replaces);
  const auto fills = [&](CGRect rect) { return only("fill", recordingOf([&] { table->drawRect(rect); })); };
  ASSERT_EQ(fills(table->bounds()).size(), 1u);
  EXPECT_NE(fills(table->bounds())[0].find("[\"rect\",0,30,200,30]"), std::string::npos) << fills(table->bounds())[0];
  EXPECT_TRUE(fills({0, 0, 200, 30}).empty());
}

TEST_F(NSTableViewTest, ASelectionIsPalerWhileTheKeysAreElsewhere) {
  const auto colors = [&] { return only("setFillColor", recordingOf([&] { table->drawRect(table->bounds()); })); };
  click(1);
  const auto active = colors();
  window->makeFirstResponder(nullptr);
  EXPECT_NE(colors(), active);
}

TEST_F(NSTableViewTest, SelectingRedrawsTheRowsThatChangeOnly) {
  click(1);
  desktop.settle();
  nativeOf(*window).forgetPaints();
  table->selectRowIndexes(NSIndexSet(3), NSTableView::Selecting::Replaces);
  desktop.settle();
  ASSERT_EQ(nativeOf(*window).paints().size(), 1u);
  // Rows 1 and 3, counted from the window's lower edge.
  auto dirty = nativeOf(*window).paints()[0].dirty;
  std::sort(dirty.begin(), dirty.end(), [](CGRect a, CGRect b) { return a.origin.y > b.origin.y; });
  EXPECT_EQ(dirty, (std::vector<CGRect>{{0, 90, 200, 30}, {0, 30, 200, 30}}));
}

TEST_F(NSTableViewTest, GettingTheKeysRedrawsTheSelection) {
  table->selectRowIndexes(NSIndexSet(1), NSTableView::Selecting::Replaces);
  desktop.settle();
  ASSERT_FALSE(table->needsDisplay());
  window->makeFirstResponder(table.get());
  EXPECT_TRUE(table->needsDisplay());
}

TEST_F(NSTableViewTest, LosingTheKeysGraysTheSelection) {
  click(1);
  desktop.settle();
  window->makeFirstResponder(nullptr);
  EXPECT_TRUE(table->needsDisplay());
}

// Hover.

TEST_F(NSTableViewTest, TheHostIsNotifiedOfTheRowUnderThePointer) {
  user.moveTo(*window, at(1));
  user.moveTo(*window, at(1));
  user.moveTo(*window, at(2));
  user.leave(*window);
  EXPECT_EQ(host->hovered, (Hovered{1, 2, std::nullopt}));
}

TEST_F(NSTableViewTest, RowsThatScrollUnderAStillPointerAreReportedWithTheNextMove) {
  user.moveTo(*window, {100, 75});
  EXPECT_EQ(table->hoveredRow(), 2u);
  scrollTo(300);
  desktop.settle();
  EXPECT_EQ(host->hovered, Hovered{2});
  user.moveTo(*window, {101, 75});
  EXPECT_EQ(host->hovered, (Hovered{2, 12}));
}

TEST_F(NSTableViewTest, TheRowUnderThePointerAtTheEndOfADragIsReported) {
  user.moveTo(*window, at(1));
  user.press(*window, at(1));
  user.dragTo(at(3));
  EXPECT_EQ(host->hovered, Hovered{1});
  user.release();
  EXPECT_EQ(host->hovered, (Hovered{1, 3}));
}

TEST_F(NSTableViewTest, RowsHoverInAWindowThatIsNotKey) {
  const auto other = showWindow({400, 100, 50, 50});
  ASSERT_FALSE(window->isKeyWindow());
  user.moveTo(*window, at(1));
  EXPECT_EQ(host->hovered, Hovered{1});
}

TEST_F(NSTableViewTest, OneTrackingAreaServesForLife) {
  for (CGFloat y = 0; y <= 300; y += 30) scrollTo(y);
  scrollView->setFrame({0, 0, 160, 150});
  EXPECT_EQ(table->trackingAreas().size(), 1u);
}

TEST_F(NSTableViewTest, AHoverChangeRedrawsNothingByItself) {
  user.moveTo(*window, at(1));
  desktop.settle();
  EXPECT_TRUE(nativeOf(*window).paints().empty());
}

TEST_F(NSTableViewTest, TheWheelScrollsTheList) {
  user.scroll(*window, {100, 75}, {0, -60});
  EXPECT_EQ(rowsWithViews(), (Rows{2, 3, 4, 5, 6}));
}

TEST_F(NSTableViewTest, ATableThatIsReleasedWhileItReportsALostSelectionLivesUntilTheReloadIsOver) {
  auto alone = make<NSTableView>(CGRect{0, 0, 100, 100});
  const WeakRef<NSTableView> weak = alone;
  const auto source = std::make_shared<Host>();
  alone->setDataSource(source);
  alone->setDelegate(source);
  alone->reloadData();
  alone->selectRowIndexes(NSIndexSet(5), NSTableView::Selecting::Replaces);
  bool livesAfterRelease = false;
  source->rows = 2;
  source->onSelection = [&] {
    alone.reset();
    livesAfterRelease = !weak.expired();
  };
  alone->reloadData();
  EXPECT_TRUE(livesAfterRelease);
  EXPECT_TRUE(weak.expired());
}

TEST_F(NSTableViewTest, ATableThatIsReleasedAsItsKeyboardMovesLivesUntilTheSelectionIsReported) {
  const WeakRef<NSTableView> weak = table;
  table->reloadData();
  window->makeFirstResponder(table.get());
  bool livesAfterRelease = false;
  host->onKeyboardRow = [&] {
    if (!table) return;
    scrollView->setDocumentView(nullptr);
    table.reset();
    livesAfterRelease = !weak.expired();
  };
  NSTableView& shown = *table;
  shown.selectRowIndexes(NSIndexSet(3), NSTableView::Selecting::Replaces);
  EXPECT_TRUE(livesAfterRelease);
  EXPECT_TRUE(weak.expired());
  EXPECT_EQ(host->selectionChanges, 1);
}

TEST_F(NSTableViewTest, ARowsViewMayReloadTheTableAsItIsScrolledAway) {
  class ReloadingView : public NSView {
   public:
    using NSView::NSView;
    void viewDidMoveToWindow() override {
      if (!window() && onLeave) std::exchange(onLeave, nullptr)();
    }
    std::function<void()> onLeave;
  };
  table->reloadData();
  const auto reloading = make<ReloadingView>(NSZeroRect);
  reloading->onLeave = [&] { table->reloadData(); };
  table->viewAtRow(0)->addSubview(reloading);
  table->scrollRowToVisible(100);
  EXPECT_EQ(rowsWithViews(), (Rows{96, 97, 98, 99, 100}));
}
