#include "tessaluna/backends/qt/AccessibleTable.h"

#include <algorithm>

#include "tessaluna/backends/qt/AccessibilityBridge.h"
#include "tessaluna/backends/qt/AccessibleElement.h"
#include "tessaluna/platform/accessibility/AccessibleDescription.h"
#include "tessaluna/platform/accessibility/attributes.h"

namespace tessaluna::backend::qt {

using namespace tessaluna::platform;

AccessibleItems* AccessibleTable::items() const { return dynamic_cast<AccessibleItems*>(own_.element().get()); }

int AccessibleTable::rowCount() const { return items() ? static_cast<int>(items()->accessibleItemCount()) : 0; }

QAccessibleInterface* AccessibleTable::cellAt(int row, int column) const {
  return items() && row >= 0 && column == 0 ? bridge_.interfaceOf(items()->accessibleItem(static_cast<std::size_t>(row)))
                                            : nullptr;
}

QList<QAccessibleInterface*> AccessibleTable::selectedCells() const {
  QList<QAccessibleInterface*> cells;
  for (const int row : selectedRows()) cells.append(cellAt(row, 0));
  return cells;
}

QList<int> AccessibleTable::selectedRows() const {
  QList<int> rows;
  if (!items()) return rows;
  for (const std::size_t row : items()->selectedAccessibleItems()) rows.append(static_cast<int>(row));
  return rows;
}

bool AccessibleTable::isRowSelected(int row) const { return selectedRows().contains(row); }

bool AccessibleTable::select(int row, AccessibleItems::Selecting how) {
  if (row < 0 || row >= rowCount()) return false;
  items()->selectAccessibleItem(static_cast<std::size_t>(row), how);
  return true;
}

bool AccessibleTable::selectRow(int row) { return select(row, AccessibleItems::Selecting::Besides); }
bool AccessibleTable::unselectRow(int row) { return select(row, AccessibleItems::Selecting::Not); }

namespace {

// The table that the row is in, as long as it is.
AccessibleItems* tableOf(const Ref<NSObject>& row) { return dynamic_cast<AccessibleItems*>(accessibleParentOf(row).get()); }

}  // namespace

bool AccessibleTableRow::isInTable() const { return rowIndex() >= 0; }

bool AccessibleTableRow::isSelected() const {
  return accessibleStatesOf(own_.element()).contains(AccessibleState::Selected);
}

int AccessibleTableRow::rowIndex() const {
  const Ref<NSObject> row = own_.element();
  const AccessibleItems* table = tableOf(row);
  const std::optional<std::size_t> index = table ? table->indexOfAccessibleItem(row.get()) : std::nullopt;
  return index ? static_cast<int>(*index) : -1;
}

QAccessibleInterface* AccessibleTableRow::table() const { return own_.parent(); }

}  // namespace tessaluna::backend::qt
