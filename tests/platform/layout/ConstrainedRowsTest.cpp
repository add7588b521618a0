// A list whose rows place what is in them by constraints.
#include <gmock/gmock.h>

#include "tessaluna/platform/layout/NSLayoutConstraint.h"
#include "tessaluna/platform/views/NSImageView.h"
#include "tessaluna/platform/views/NSScrollView.h"
#include "tessaluna/platform/views/NSTableCellView.h"
#include "tessaluna/platform/views/NSTableView.h"
#include "tessaluna/platform/views/NSTextField.h"
#include "tests/harness/StillWorld.h"
#include "tests/harness/allocations.h"
#include "tests/harness/printing.h"

namespace tessaluna::platform {
namespace {

constexpr CGFloat margin = 6, coverLength = 20, gap = 8, rowHeight = 30;

class RowView : public NSTableCellView {
 public:
  using NSTableCellView::NSTableCellView;
  void setBackgroundStyle(NSBackgroundStyle style) override {
    styles.push_back(style);
    NSTableCellView::setBackgroundStyle(style);
  }
  std::vector<NSBackgroundStyle> styles;
};

// A cover at the left, a title after it, and a duration at the right; the title is as wide as the two leave it.
class Host : public NSTableViewDataSource, public NSTableViewDelegate {
 public:
  std::size_t made = 0;

  std::size_t numberOfRowsInTableView(NSTableView&) override { return 1000; }
  Ref<NSView> tableViewViewForRow(NSTableView& table, std::size_t row) override {
    Ref<NSView> view = table.makeViewWithIdentifier("row");
    if (!view) view = makeRow();
    const auto& cell = static_cast<const NSTableCellView&>(*view);
    cell.textField()->setStringValue("title " + std::to_string(row));
    static_cast<NSTextField&>(*view->subviews()[2]).setStringValue(row % 2 ? "1:02:03" : "2:03");
    return view;
  }

 private:
  Ref<NSView> makeRow() {
    ++made;
    const auto row = make<RowView>(CGRect{});
    const auto cover = make<NSImageView>(CGRect{});
    const auto title = NSTextField::labelWithString(""), duration = NSTextField::labelWithString("");
    title->setContentCompressionResistancePriority(250, NSLayoutConstraintOrientationHorizontal);
    title->setContentHuggingPriority(100, NSLayoutConstraintOrientationHorizontal);
    for (const Ref<NSView>& view : std::initializer_list<Ref<NSView>>{cover, title, duration}) {
      view->setTranslatesAutoresizingMaskIntoConstraints(false);
      row->addSubview(view);
      equal(view, NSLayoutAttributeCenterY, row, NSLayoutAttributeCenterY);
    }
    equal(cover, NSLayoutAttributeLeading, row, NSLayoutAttributeLeading, margin);
    equal(cover, NSLayoutAttributeWidth, nullptr, NSLayoutAttributeNotAnAttribute, coverLength);
    equal(cover, NSLayoutAttributeHeight, cover, NSLayoutAttributeWidth);
    equal(title, NSLayoutAttributeLeading, cover, NSLayoutAttributeTrailing, gap);
    equal(duration, NSLayoutAttributeLeading, title, NSLayoutAttributeTrailing, gap);
    equal(duration, NSLayoutAttributeTrailing, row, NSLayoutAttributeTrailing, -margin);
    row->setTextField(title);
    row->setImageView(cover);
    row->setIdentifier("row");
    return row;
  }
  static void equal(const Ref<NSView>& item, NSLayoutAttribute attribute, const Ref<NSView>& other,
                    NSLayoutAttribute otherAttribute, CGFloat constant = 0) {
    NSLayoutConstraint::constraintWithItem(item, attribute, NSLayoutRelationEqual, other, otherAttribute, 1, constant)
        ->setActive(true);
  }
};

class ConstrainedRowsTest : public harness::StillWorld {
 protected:
  ConstrainedRowsTest() {
    NSLayoutConstraint::setConflictHandler([](const std::string& line) { ADD_FAILURE() << line; });
    table->setDataSource(host);
    table->setDelegate(host);
    table->setAutoresizingMask(NSViewWidthSizable);
    table->setRowHeight(rowHeight);
    scrollView->setDocumentView(table);
    scrollView->setAutoresizingMask(NSViewWidthSizable | NSViewHeightSizable);
    window = showWindowWith(scrollView);
  }
  ~ConstrainedRowsTest() override { NSLayoutConstraint::setConflictHandler(nullptr); }

  void scrollTo(CGFloat y) {
    scrollView->contentView()->scrollToPoint({0, y});
    desktop.settle();
  }
  // All rows that show are laid out as they should be.
  void expectRowsInOrder() {
    std::size_t shown = 0;
    for (std::size_t row = 0; row < table->numberOfRows(); ++row) {
      const Ref<NSView> view = table->viewAtRow(row);
      if (!view) continue;
      ++shown;
      EXPECT_EQ(view->frame(), table->rectOfRow(row));
      const CGRect cover = view->subviews()[0]->frame(), title = view->subviews()[1]->frame(),
                   duration = view->subviews()[2]->frame();
      EXPECT_EQ(cover, (CGRect{margin, (rowHeight - coverLength) / 2, coverLength, coverLength})) << row;
      EXPECT_EQ(title.origin.x, margin + coverLength + gap) << row;
      EXPECT_EQ(CGRectGetMaxX(title) + gap, duration.origin.x) << row;
      EXPECT_EQ(CGRectGetMaxX(duration), view->frame().size.width - margin) << row;
      EXPECT_EQ(duration.size.width, std::ceil(view->subviews()[2]->intrinsicContentSize().width)) << row;
    }
    EXPECT_GE(shown, 5u);
  }

  std::shared_ptr<Host> host = std::make_shared<Host>();
  Ref<NSTableView> table = make<NSTableView>(CGRect{0, 0, 200, 0});
  Ref<NSScrollView> scrollView = make<NSScrollView>(CGRect{0, 0, 200, 150});
  Ref<NSWindow> window;
};

TEST_F(ConstrainedRowsTest, EachRowThatComesIntoSightIsLaidOut) {
  expectRowsInOrder();
  for (const CGFloat y : {10.0, 45.0, 3000.0, 29000.0, 0.0}) {
    scrollTo(y);
    expectRowsInOrder();
  }
}

TEST_F(ConstrainedRowsTest, AViewThatIsUsedAgainFitsItsNewContents) {
  for (int i = 0; i < 150; ++i) scrollTo(i * 47);
  expectRowsInOrder();
  EXPECT_LE(host->made, 20u) << "views are used again";
}

TEST_F(ConstrainedRowsTest, RowsFollowAListThatBecomesWiderAlsoOutOfSight) {
  window->setFrame({100, 100, 320, window->frame().size.height}, true);
  desktop.settle();
  EXPECT_EQ(table->viewAtRow(0)->frame().size.width, 320);
  expectRowsInOrder();
  scrollTo(600);
  expectRowsInOrder();
}

TEST_F(ConstrainedRowsTest, ScrollingFarAndBackLeavesNothingBehind) {
  const auto goAround = [&] {
    for (int i = 0; i < 15; ++i) scrollTo((i * 577) % 29000);
    scrollTo(0);
    nativeOf(*window).forgetPaints();
  };
  goAround();
  goAround();
  const long before = harness::allocationsAlive;
  for (int i = 0; i < 5; ++i) goAround();
  EXPECT_LE(harness::allocationsAlive, before + 10);
}

TEST_F(ConstrainedRowsTest, ASelectedRowLearnsItsGround) {
  const auto row = std::dynamic_pointer_cast<RowView>(table->viewAtRow(1));
  EXPECT_EQ(row->styles, std::vector<NSBackgroundStyle>{NSBackgroundStyleLight});
  table->selectRowIndexes(NSIndexSet(NSRange{1, 1}), NSTableView::Selecting::Replaces);
  EXPECT_EQ(row->backgroundStyle(), NSBackgroundStyleDark);
  EXPECT_EQ(row->textField()->cell()->backgroundStyle(), NSBackgroundStyleDark);
  table->selectRowIndexes(NSIndexSet(NSRange{2, 1}), NSTableView::Selecting::Replaces);
  EXPECT_EQ(row->styles.back(), NSBackgroundStyleLight);
}

}  // namespace
}  // namespace tessaluna::platform
