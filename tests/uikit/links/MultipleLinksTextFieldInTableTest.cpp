// The colors of a line of links in the row of a table.
#include <gmock/gmock.h>

#include "tessaluna/platform/graphics/NSColor.h"
#include "tessaluna/platform/views/NSTableView.h"
#include "tessaluna/uikit/links/LinkKeyboard.h"
#include "tests/uikit/links/LinksWorld.h"

using namespace tessaluna::platform;
using harness::Lines;
using harness::only;

namespace {

// A table of two rows, in the first of which a line of links stands, some views deep.
class TableHost : public NSTableViewDataSource, public NSTableViewDelegate {
 public:
  explicit TableHost(Ref<NSView> first) : first_(std::move(first)) {}
  std::size_t numberOfRowsInTableView(NSTableView&) override { return 2; }
  Ref<NSView> tableViewViewForRow(NSTableView&, std::size_t row) override {
    return row == 0 ? first_ : make<NSView>(CGRect{0, 0, 200, 24});
  }

 private:
  Ref<NSView> first_;
};

// The links of the field in a row of a table, which stands in the field's window.
class MultipleLinksTextFieldInTableTest : public harness::LinksWorld {
 protected:
  MultipleLinksTextFieldInTableTest() {
    row->addSubview(box);
    box->addSubview(field);
    table->setDataSource(host);
    table->setDelegate(host);
    parent->addSubview(table);
    table->reloadData();
    desktop.settle();
  }
  void select(std::size_t index) { table->selectRowIndexes(NSIndexSet(index), NSTableView::Selecting::Replaces); }
  Ref<NSColor> color() const {
    return attributeObject<NSColor>(field->truncatedString(100)->attributesAtIndex(0), NSForegroundColorAttributeName);
  }

  const Ref<NSView> row = make<NSView>(CGRect{0, 0, 200, 24});
  const Ref<NSView> box = make<NSView>(CGRect{0, 0, 200, 24});
  const Ref<NSTableView> table = make<NSTableView>(CGRect{0, 0, 200, 48});
  const std::shared_ptr<TableHost> host = std::make_shared<TableHost>(row);
};

}  // namespace

TEST_F(MultipleLinksTextFieldInTableTest, InARowThatIsNotSelectedTheTextHasItsOwnColor) {
  EXPECT_EQ(color(), NSColor::controlTextColor());
  select(1);
  EXPECT_EQ(color(), NSColor::controlTextColor());
  field->setTextColor(NSColor::redColor());
  EXPECT_EQ(color(), NSColor::redColor());
}

TEST_F(MultipleLinksTextFieldInTableTest, InASelectedRowTheTextHasTheColorOfSelections) {
  select(0);
  EXPECT_EQ(color(), NSColor::alternateSelectedControlTextColor());
  field->setTextColor(NSColor::redColor());
  EXPECT_EQ(color(), NSColor::alternateSelectedControlTextColor());
}

TEST_F(MultipleLinksTextFieldInTableTest, InASelectedRowTheDisabledColorIsALightGray) {
  field->setTextColor(NSColor::disabledControlTextColor());
  EXPECT_EQ(color(), NSColor::disabledControlTextColor());
  select(0);
  EXPECT_TRUE(color()->isEqual(NSColor::colorWithDeviceWhite(0.81, 1).get()));
}

TEST_F(MultipleLinksTextFieldInTableTest, TheFocusRingCanBeToldFromASelectedRow) {
  using tessaluna::backend::SystemColor;
  desktop.setSystemColor(SystemColor::AlternateSelectedControl, {0, 0, 0.8});
  desktop.setSystemColor(SystemColor::KeyboardFocusIndicator, {0, 0, 1});
  desktop.setSystemColor(SystemColor::AlternateSelectedControlText, {1, 1, 1});
  field->setFrameOrigin({20, 2});
  field->setTakesKeyboard(true);
  window->selectKeyViewWithin(*field, tessaluna::backend::FocusStep::Next);
  ASSERT_NE(dynamic_cast<TessalunaUIKit::LinkKeyboard*>(window->firstResponder()), nullptr);
  // The ring is the last that a window draws.
  const auto ringColor = [this] {
    window->invalidateRect({{0, 0}, window->frame().size});
    desktop.settle();
    return only("setFillColor", nativeOf(*window).paints().back().lines).back();
  };
  EXPECT_THAT(ringColor(), testing::HasSubstr("keyboardFocusIndicatorColor"));
  select(0);
  EXPECT_THAT(ringColor(), testing::HasSubstr("alternateSelectedControlTextColor"));
}

TEST_F(MultipleLinksTextFieldInTableTest, OnlyTheNearestTableCounts) {
  select(0);
  const auto inner = make<NSTableView>(CGRect{0, 0, 200, 24});
  box->addSubview(inner);
  inner->addSubview(field);
  EXPECT_EQ(color(), NSColor::controlTextColor());
}

TEST_F(MultipleLinksTextFieldInTableTest, ASelectionIsDrawnAtOnce) {
  const Lines before = drawn();
  nativeOf(*window).forgetPaints();
  select(0);
  desktop.settle();
  EXPECT_FALSE(nativeOf(*window).paints().empty());
  EXPECT_NE(drawn(), before);
}
