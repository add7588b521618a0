// What is scrolled under a pointer that stands still.
#include <gtest/gtest.h>

#include <algorithm>

#include "tessaluna/platform/events/NSCursor.h"
#include "tessaluna/platform/events/NSTrackingArea.h"
#include "tessaluna/platform/views/NSScrollView.h"
#include "tests/harness/ProbeView.h"
#include "tests/harness/StillWorld.h"
#include "tests/harness/printing.h"

namespace tessaluna::platform {
namespace {

using Log = std::vector<std::string>;

class Document : public NSView {
 public:
  using NSView::NSView;
  bool isFlipped() const override { return true; }
  bool acceptsFirstResponder() const override { return true; }
  void keyDown(const Ref<NSEvent>&) override { scrollPoint({0, 80}); }
};

class Row : public harness::ProbeView {
 public:
  using ProbeView::ProbeView;
  void scrollWheel(const EventRef& event) override { NSView::scrollWheel(event); }
};

// Ten rows of 40 points in a scroll view that shows two and a half of them.
class ScrolledPointerTrackingTest : public harness::StillWorld {
 protected:
  ScrolledPointerTrackingTest() {
    for (int i = 0; i < 10; ++i) {
      rows.push_back(make<Row>(CGRect{0, i * 40.0, 100, 40}));
      document->addSubview(rows.back());
      watch(*rows.back(), "row " + std::to_string(i));
    }
    scrollView->setHasVerticalScroller(true);
    scrollView->setDocumentView(document);
    window->contentView()->addSubview(scrollView);
    desktop.settle();
  }

  void watch(harness::ProbeView& view, const std::string& name, std::uint32_t options = NSTrackingMouseEnteredAndExited) {
    view.addTrackingArea(make<NSTrackingArea>(NSZeroRect, NSTrackingInVisibleRect | NSTrackingActiveAlways | options,
                                              refTo<NSResponder>(view)));
    view.onCall = [this, name](const std::string& call) { log.push_back(name + " " + call); };
  }
  void wheelDown(CGFloat points) { user.scroll(*window, inFirstRow, {0, -points}); }
  void frame() { desktop.advance(0.01); }
  Log taken() { return std::exchange(log, {}); }
  CGFloat scrolledBy() const { return scrollView->contentView()->bounds().origin.y; }

  static constexpr CGPoint inFirstRow{50, 80};  // as long as nothing is scrolled
  const Ref<NSWindow> window = showWindow();
  const Ref<NSScrollView> scrollView = make<NSScrollView>(CGRect{0, 0, 120, 100});
  const Ref<Document> document = make<Document>(CGRect{0, 0, 100, 400});
  std::vector<Ref<Row>> rows;
  Log log;
};

TEST_F(ScrolledPointerTrackingTest, ALeaveOrAHiddenWindowBeforeTheFrameDoesNotEndTheCrossingsOfLaterScrolls) {
  user.moveTo(*window, inFirstRow);
  wheelDown(40);
  user.leave(*window);
  frame();
  taken();
  wheelDown(40);
  frame();
  EXPECT_EQ(taken(), Log{"row 2 mouseEntered"});
  wheelDown(40);
  window->orderOut(nullptr);
  frame();
  window->orderFront(nullptr);
  frame();
  taken();
  wheelDown(40);
  frame();
  EXPECT_EQ(taken(), Log{"row 4 mouseEntered"});
}

TEST_F(ScrolledPointerTrackingTest, AMoveBeforeTheFrameIsTheOnlyOne) {
  for (const Ref<Row>& row : rows) watch(*row, "area", NSTrackingMouseMoved);
  user.moveTo(*window, inFirstRow);
  wheelDown(80);
  user.moveTo(*window, {51, 80});
  taken();
  frame();
  EXPECT_EQ(taken(), Log{});
}

TEST_F(ScrolledPointerTrackingTest, TheToolTipOfWhatWasScrolledAwayGoes) {
  rows[0]->setToolTip("first");
  user.moveTo(*window, inFirstRow);
  ASSERT_EQ(nativeOf(*window).toolTip(), "first");
  wheelDown(80);
  frame();
  EXPECT_EQ(nativeOf(*window).toolTip(), "");
}

TEST_F(ScrolledPointerTrackingTest, TheWheelSendsExitsAndEntriesWithTheNextFrame) {
  user.moveTo(*window, inFirstRow);
  EXPECT_EQ(taken(), Log{"row 0 mouseEntered"});
  wheelDown(80);
  ASSERT_EQ(scrolledBy(), 80);
  desktop.settle();
  EXPECT_EQ(taken(), Log{}) << "not before the frame";
  frame();
  EXPECT_EQ(taken(), (Log{"row 0 mouseExited", "row 2 mouseEntered"}));
  frame();
  EXPECT_EQ(taken(), Log{}) << "once";
}

TEST_F(ScrolledPointerTrackingTest, ManyTurnsOfTheWheelInAFrameAreOneCrossing) {
  user.moveTo(*window, inFirstRow);
  taken();
  for (int i = 0; i < 4; ++i) wheelDown(40);
  frame();
  EXPECT_EQ(taken(), (Log{"row 0 mouseExited", "row 4 mouseEntered"}));
}

TEST_F(ScrolledPointerTrackingTest, AWheelThatScrollsNothingSendsNothing) {
  user.moveTo(*window, inFirstRow);
  taken();
  wheelDown(-80);
  frame();
  EXPECT_EQ(taken(), Log{});
}

TEST_F(ScrolledPointerTrackingTest, AMoveBeforeTheFrameIsTheCrossing) {
  user.moveTo(*window, inFirstRow);
  taken();
  wheelDown(80);
  user.moveTo(*window, {51, 80});
  EXPECT_EQ(taken(), (Log{"row 0 mouseExited", "row 2 mouseEntered"}));
  frame();
  EXPECT_EQ(taken(), Log{});
}

TEST_F(ScrolledPointerTrackingTest, TheWheelShowsWhereThePointerIs) {
  wheelDown(80);  // over a view that came under a pointer at rest, and was not entered
  frame();
  EXPECT_EQ(taken(), Log{"row 2 mouseEntered"});
}

TEST_F(ScrolledPointerTrackingTest, AScrollByAKeySendsNothingUntilThePointerMoves) {
  window->makeFirstResponder(document.get());
  user.moveTo(*window, inFirstRow);
  taken();
  user.pressKey(NSPageDownFunctionKey);
  ASSERT_EQ(scrolledBy(), 80);
  frame();
  EXPECT_EQ(taken(), Log{});
  user.moveTo(*window, {51, 80});
  EXPECT_EQ(taken(), (Log{"row 0 mouseExited", "row 2 mouseEntered"}));
}

TEST_F(ScrolledPointerTrackingTest, AScrollByTheProgramSendsNothingUntilThePointerMoves) {
  user.moveTo(*window, inFirstRow);
  taken();
  document->scrollPoint({0, 80});
  frame();
  EXPECT_EQ(taken(), Log{});
  user.moveTo(*window, {51, 80});
  EXPECT_EQ(taken(), (Log{"row 0 mouseExited", "row 2 mouseEntered"}));
}

TEST_F(ScrolledPointerTrackingTest, WhatAppearsOrIsLaidOutMeanwhileElsewhereSendsNothing) {
  user.moveTo(*window, inFirstRow);
  taken();
  const auto above = make<Row>(CGRect{0, 0, 120, 100});
  watch(*above, "above");
  window->contentView()->addSubview(above);
  frame();
  EXPECT_EQ(taken(), Log{});
  above->removeTrackingArea(above->trackingAreas()[0]);
  watch(*above, "above");
  above->setHidden(true);
  wheelDown(80);
  above->setHidden(false);
  frame();
  EXPECT_EQ(taken(), (Log{"row 0 mouseExited", "row 2 mouseEntered"}));
}

TEST_F(ScrolledPointerTrackingTest, ADragOfTheScrollerLeavesAndEntersWhatIsUnderTheHand) {
  // The knob is held, and the hand has left the bar for the rows.
  user.moveTo(*window, inFirstRow);
  user.press(*window, {115, 95});
  taken();
  user.dragTo({50, 50});
  ASSERT_GT(scrolledBy(), 40);
  taken();
  frame();
  EXPECT_EQ(taken(), Log{}) << "entries wait for the release";
  user.release();
  ASSERT_EQ(log.size(), 1u);
  EXPECT_TRUE(log[0].ends_with("mouseEntered")) << log[0];
}

TEST_F(ScrolledPointerTrackingTest, ThoseWhoAskForMovesGetOne) {
  const auto inner = make<Row>(CGRect{0, 80, 100, 40});
  document->addSubview(inner);
  watch(*inner, "inner", NSTrackingMouseMoved);
  user.moveTo(*window, inFirstRow);
  taken();
  wheelDown(80);
  frame();
  EXPECT_EQ(taken(), (Log{"row 0 mouseExited", "row 2 mouseEntered", "inner mouseMoved"}));
}

TEST_F(ScrolledPointerTrackingTest, APressBeforeTheFrameIsPrecededByTheExitsAloneWhereAButtonDelaysEntries) {
  user.moveTo(*window, inFirstRow);
  taken();
  wheelDown(80);
  user.press(*window, inFirstRow);
  EXPECT_EQ(taken(), (Log{"row 0 mouseExited", "row 2 mouseDown"}));
  frame();
  EXPECT_EQ(taken(), Log{}) << "no entry while the button is down";
  user.release();
  EXPECT_EQ(taken(), (Log{"row 2 mouseUp", "row 2 mouseEntered"}));
}

TEST_F(ScrolledPointerTrackingTest, APressBeforeTheFrameIsPrecededByEntriesThatAButtonDoesNotDelay) {
  for (const Ref<Row>& row : rows) {
    row->removeTrackingArea(row->trackingAreas()[0]);
    watch(*row, row == rows[0] ? "first" : "other", NSTrackingMouseEnteredAndExited | NSTrackingEnabledDuringMouseDrag);
  }
  user.moveTo(*window, inFirstRow);
  taken();
  wheelDown(80);
  user.press(*window, inFirstRow);
  EXPECT_EQ(taken(), (Log{"first mouseExited", "other mouseEntered", "other mouseDown"}));
  frame();
  user.release();
  EXPECT_EQ(taken(), Log{"other mouseUp"});
}

TEST_F(ScrolledPointerTrackingTest, ARowThatIsTakenOutByTheScrollIsLeftWithTheFrame) {
  user.moveTo(*window, inFirstRow);
  taken();
  wheelDown(80);
  rows[0]->removeFromSuperview();
  frame();
  EXPECT_EQ(taken(), (Log{"row 0 mouseExited", "row 2 mouseEntered"}));
}

TEST_F(ScrolledPointerTrackingTest, NothingIsSentToAWindowThatThePointerHasLeft) {
  user.moveTo(*window, inFirstRow);
  wheelDown(80);
  user.leave(*window);
  taken();
  frame();
  EXPECT_EQ(taken(), Log{});
}

TEST_F(ScrolledPointerTrackingTest, AWindowMayEndBeforeTheFrame) {
  auto ending = showWindow({400, 100, 200, 150});
  const WeakRef<NSWindow> weak = ending;
  ending->contentView()->addSubview(scrollView);
  user.scroll(*ending, inFirstRow, {0, -80});
  taken();
  scrollView->removeFromSuperview();
  ending->close();
  ending.reset();
  ASSERT_TRUE(weak.expired());
  frame();
  EXPECT_EQ(taken(), Log{});
}

TEST_F(ScrolledPointerTrackingTest, TheCursorIsThatOfTheNewPlace) {
  class Hand : public NSView {
   public:
    using NSView::NSView;
    void resetCursorRects() override { addCursorRect(bounds(), NSCursor::pointingHandCursor()); }
  };
  rows[2]->addSubview(make<Hand>(CGRect{0, 0, 100, 40}));
  user.moveTo(*window, inFirstRow);
  wheelDown(80);
  ASSERT_EQ(nativeOf(*window).cursor(), backend::CursorShape::Arrow);
  frame();
  EXPECT_EQ(nativeOf(*window).cursor(), backend::CursorShape::PointingHand);
}

TEST_F(ScrolledPointerTrackingTest, AReleaseBeforeTheFrameIsTheCrossingToo) {
  watch(*rows[2], "moves over row 2", NSTrackingMouseMoved);
  user.moveTo(*window, inFirstRow);
  user.press(*window, inFirstRow);
  scrollView->contentView()->scrollToPoint({0, 80});
  window->contentWasScrolledByUser(*scrollView->contentView());
  taken();
  user.release();
  const Log log = taken();
  EXPECT_NE(std::find(log.begin(), log.end(), "moves over row 2 mouseEntered"), log.end());
  EXPECT_NE(std::find(log.begin(), log.end(), "moves over row 2 mouseMoved"), log.end());
}

}  // namespace
}  // namespace tessaluna::platform
