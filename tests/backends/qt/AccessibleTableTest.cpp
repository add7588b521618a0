#include "tessaluna/backends/qt/AccessibleTable.h"

#include <QAccessible>

#include "tessaluna/backends/qt/AccessibilityBridge.h"
#include "tessaluna/platform/views/NSScrollView.h"
#include "tessaluna/platform/views/NSTableView.h"
#include "tests/backends/qt/QtTest.h"

namespace tessaluna::backend::qt {

using namespace tessaluna::platform;

namespace {

// "row 0" and so on.
class Rows : public NSObject, public NSTableViewDataSource, public NSTableViewDelegate {
 public:
  std::size_t numberOfRowsInTableView(NSTableView&) override { return count; }
  Ref<NSView> tableViewViewForRow(NSTableView&, std::size_t) override { return make<NSView>(CGRect{0, 0, 50, 20}); }
  std::string tableViewNameOfRow(NSTableView&, std::size_t row) override { return "row " + std::to_string(row); }
  std::size_t count = 1000;
};

// A table of many rows, of which few show.
class AccessibleTableTest : public QtTest {
 protected:
  AccessibleTableTest() {
    table->setDataSource(rows);
    table->setDelegate(rows);
    table->setRowHeight(20);
    table->setAllowsMultipleSelection(true);
    scroll->setDocumentView(table);
    window->contentView()->addSubview(scroll);
    window->makeKeyAndOrderFront(nullptr);
    table->reloadData();
    settle();
  }
  QAccessibleInterface* interface() const {
    AccessibilityBridge* bridge = QtBackend::accessibility();
    return bridge->interfaceOf(table);
  }

  const Ref<Rows> rows = make<Rows>();
  const Ref<NSTableView> table = make<NSTableView>(CGRect{0, 0, 200, 200});
  const Ref<NSScrollView> scroll = make<NSScrollView>(CGRect{0, 0, 200, 200});
  const Ref<NSWindow> window =
      make<NSWindow>(CGRect{100, 200, 200, 200}, NSWindowStyleMaskTitled, NSBackingStoreBuffered, true);
};

}  // namespace

TEST_F(AccessibleTableTest, HasARowForEachOfTheTables) {
  ASSERT_NE(interface(), nullptr);
  EXPECT_EQ(interface()->role(), QAccessible::Table);
  EXPECT_EQ(interface()->childCount(), 1000);
  QAccessibleTableInterface* asTable = interface()->tableInterface();
  ASSERT_NE(asTable, nullptr);
  EXPECT_EQ(asTable->rowCount(), 1000);
  EXPECT_EQ(asTable->columnCount(), 1);
  QAccessibleInterface* row = asTable->cellAt(700, 0);
  ASSERT_NE(row, nullptr);
  EXPECT_EQ(row, interface()->child(700));
  EXPECT_EQ(row->text(QAccessible::Name), "row 700");
  EXPECT_EQ(row->role(), QAccessible::Row);
  EXPECT_EQ(interface()->indexOfChild(row), 700);
  EXPECT_EQ(interface()->indexOfChild(interface()), -1);
  EXPECT_EQ(interface()->indexOfChild(nullptr), -1);
  ASSERT_NE(row->tableCellInterface(), nullptr);
  EXPECT_EQ(row->tableCellInterface()->rowIndex(), 700);
  EXPECT_EQ(row->tableCellInterface()->table(), interface());
  EXPECT_EQ(row->tableInterface(), nullptr);
  EXPECT_EQ(interface()->tableCellInterface(), nullptr);
  EXPECT_NE(asTable->cellAt(0, 0), nullptr);
  EXPECT_EQ(asTable->cellAt(-1, 0), nullptr);
  EXPECT_EQ(asTable->cellAt(1000, 0), nullptr);
  EXPECT_EQ(asTable->cellAt(0, 1), nullptr);
}

TEST_F(AccessibleTableTest, ARowThatHasGoneIsInNoTable) {
  QAccessibleInterface* row = interface()->child(900);
  ASSERT_NE(row, nullptr);
  QAccessibleTableCellInterface* cell = row->tableCellInterface();
  rows->count = 10;
  table->reloadData();
  EXPECT_EQ(interface()->childCount(), 10);
  EXPECT_EQ(cell->rowIndex(), -1);
  EXPECT_EQ(interface()->child(900), nullptr);
}

TEST_F(AccessibleTableTest, ItsRowsAreSelectedOneByOne) {
  QAccessibleTableInterface* asTable = interface()->tableInterface();
  ASSERT_NE(asTable, nullptr);
  EXPECT_TRUE(asTable->selectRow(0));
  EXPECT_TRUE(asTable->selectRow(999));
  EXPECT_EQ(asTable->selectedRows(), (QList<int>{0, 999}));
  EXPECT_EQ(asTable->selectedCells(), (QList<QAccessibleInterface*>{interface()->child(0), interface()->child(999)}));
  EXPECT_TRUE(asTable->isRowSelected(999));
  EXPECT_FALSE(asTable->isRowSelected(998));
  EXPECT_TRUE(interface()->child(999)->tableCellInterface()->isSelected());
  EXPECT_TRUE(asTable->unselectRow(0));
  EXPECT_EQ(asTable->selectedRows(), QList<int>{999});
  for (const int row : {-1, 1000}) {
    EXPECT_FALSE(asTable->selectRow(row));
    EXPECT_FALSE(asTable->unselectRow(row));
  }
  EXPECT_EQ(asTable->selectedRows(), QList<int>{999});
}

}  // namespace tessaluna::backend::qt
