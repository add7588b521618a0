// The rows of an element with items in Qt's words: a table of one column, whose cells are the rows. A client learns from it how
// many rows there are and which are selected, without meeting them.
#pragma once

#include <QAccessible>

#include "tessaluna/platform/accessibility/AccessibleItems.h"

namespace tessaluna::backend::qt {

class AccessibilityBridge;
class AccessibleElement;

class AccessibleTable : public QAccessibleTableInterface {
 public:
  AccessibleTable(AccessibilityBridge& bridge, AccessibleElement& own) : bridge_(bridge), own_(own) {}

  platform::AccessibleItems* items() const;  // null if the element has none, or has gone

  QAccessibleInterface* caption() const override { return nullptr; }
  QAccessibleInterface* summary() const override { return nullptr; }
  QAccessibleInterface* cellAt(int row, int column) const override;
  int selectedCellCount() const override { return selectedRowCount(); }
  QList<QAccessibleInterface*> selectedCells() const override;
  QString columnDescription(int) const override { return {}; }
  QString rowDescription(int) const override { return {}; }
  int selectedColumnCount() const override { return 0; }
  int selectedRowCount() const override { return static_cast<int>(selectedRows().size()); }
  int columnCount() const override { return 1; }
  int rowCount() const override;
  QList<int> selectedColumns() const override { return {}; }
  QList<int> selectedRows() const override;
  bool isColumnSelected(int) const override { return false; }
  bool isRowSelected(int row) const override;
  bool selectRow(int row) override;
  bool selectColumn(int) override { return false; }
  bool unselectRow(int row) override;
  bool unselectColumn(int) override { return false; }
  void modelChange(QAccessibleTableModelChangeEvent*) override {}

 private:
  bool select(int row, platform::AccessibleItems::Selecting how);
  AccessibilityBridge& bridge_;
  AccessibleElement& own_;
};

// One of the rows as a cell of that table.
class AccessibleTableRow : public QAccessibleTableCellInterface {
 public:
  explicit AccessibleTableRow(AccessibleElement& own) : own_(own) {}

  bool isInTable() const;

  bool isSelected() const override;
  QList<QAccessibleInterface*> columnHeaderCells() const override { return {}; }
  QList<QAccessibleInterface*> rowHeaderCells() const override { return {}; }
  int columnIndex() const override { return 0; }
  int rowIndex() const override;  // -1 for one that has gone
  int columnExtent() const override { return 1; }
  int rowExtent() const override { return 1; }
  QAccessibleInterface* table() const override;

 private:
  AccessibleElement& own_;
};

}  // namespace tessaluna::backend::qt
