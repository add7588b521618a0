#include "tessaluna/platform/views/TableKeyboard.h"

#include <algorithm>
#include <utility>

#include "tessaluna/platform/cells/NSTextFieldCell.h"
#include "tessaluna/platform/events/NSEvent.h"
#include "tessaluna/platform/events/keyBindings.h"
#include "tessaluna/platform/events/menuKey.h"
#include "tessaluna/platform/text/unicode.h"
#include "tessaluna/platform/time/durations.h"
#include "tessaluna/platform/views/NSTableColumn.h"
#include "tessaluna/platform/views/NSTableView.h"
#include "tessaluna/platform/views/TableCellRow.h"
#include "tessaluna/platform/windows/NSWindow.h"

namespace tessaluna::platform {

namespace {

// Where the cells of columns take keys.
bool enterCellsOf(NSTableView& table, std::size_t row) {
  table.scrollRowToVisible(row);
  auto* cells = dynamic_cast<TableCellRow*>(table.viewAtRow(row).get());
  return cells && cells->giveKeyboardToControls();
}

bool hasTextToEdit(const NSTableColumn& column) {
  return !column.isHidden() && column.isEditable() && dynamic_cast<const NSTextFieldCell*>(column.dataCell().get());
}

// The first text of the row that can be edited; false where there is none.
bool editTextOf(NSTableView& table, std::size_t row) {
  // Whoever was notified of the key may have given the keyboard on.
  if (!table.window() || table.window()->firstResponder() != &table) return false;
  for (std::size_t column = 0; column < table.tableColumns().size(); ++column) {
    if (!hasTextToEdit(*table.tableColumns()[column])) continue;
    table.editColumn(column, row);
    if (!table.window() || table.window()->firstResponder() != &table) return true;
  }
  return false;
}

}  // namespace

TableKeyboard::TableKeyboard(NSTableView& table) : table_(table), search_(typeSelectInterval) {}

std::optional<std::size_t> TableKeyboard::row() const { return hasKeys_ ? table_.selectedRow() : std::nullopt; }

// The row may have fewer controls than when the last one was reached.
std::optional<std::size_t> TableKeyboard::control() const {
  const std::optional<std::size_t> row = this->row();
  if (!row || !control_) return std::nullopt;
  const std::size_t count = controlsOf(*row).size();
  return count > 0 ? std::optional(std::min(*control_, count - 1)) : std::nullopt;
}

std::vector<TableRowControl> TableKeyboard::controlsOf(std::size_t row) const {
  const auto source = std::dynamic_pointer_cast<NSTableViewRowControls>(table_.delegate());
  return source ? source->tableViewControlsOfRow(table_, row) : std::vector<TableRowControl>();
}

void TableKeyboard::setHasKeys(bool hasKeys) {
  hasKeys_ = hasKeys;
  control_ = std::nullopt;
  report();
}

void TableKeyboard::selectionDidChange() {
  if (row() != reportedRow_) control_ = std::nullopt;
  report();
}

void TableKeyboard::rowsWereRenumbered(const std::function<std::optional<std::size_t>(std::size_t)>& newRow) {
  if (!reportedRow_) return;
  const std::optional<std::size_t> now = newRow(*reportedRow_);
  if (!now || now == reportedRow_) return;
  reportedRow_ = now;
  table_.noteFocusRingMaskChanged();
  if (const Ref<NSTableViewDelegate> delegate = table_.delegate()) delegate->tableViewKeyboardRowDidChange(table_, now);
}

void TableKeyboard::report() {
  const std::optional<std::size_t> now = row();
  if (std::exchange(reportedRow_, now) == now) return;
  table_.noteFocusRingMaskChanged();
  if (now)
    NSAccessibilityPostNotification(table_.weak_from_this().lock(), NSAccessibilityFocusedUIElementChangedNotification);
  if (const Ref<NSTableViewDelegate> delegate = table_.delegate()) delegate->tableViewKeyboardRowDidChange(table_, now);
}

void TableKeyboard::moveToControl(std::optional<std::size_t> control) {
  if (std::exchange(control_, control) == control) return;
  table_.noteFocusRingMaskChanged();
  NSAccessibilityPostNotification(table_.weak_from_this().lock(), NSAccessibilityFocusedUIElementChangedNotification);
}

CGRect TableKeyboard::ringBounds() const {
  const std::optional<std::size_t> row = this->row();
  if (!row) return {};
  const std::optional<std::size_t> control = this->control();
  return control ? controlsOf(*row)[*control].frame : table_.rectOfRow(*row);
}

void TableKeyboard::moveBy(std::ptrdiff_t rows, bool extends) {
  if (table_.numberOfRows() == 0) return;
  const auto last = static_cast<std::ptrdiff_t>(table_.numberOfRows()) - 1;
  const std::optional<std::size_t> from = table_.selectedRow();
  const std::ptrdiff_t to = from ? static_cast<std::ptrdiff_t>(*from) + rows : rows > 0 ? 0 : last;
  table_.selectByKey(static_cast<std::size_t>(std::clamp<std::ptrdiff_t>(to, 0, last)), extends);
}

std::ptrdiff_t TableKeyboard::page() const {
  const CGRect shown = table_.visibleRect();
  const NSRange rows = table_.rowsInRect(shown);
  std::ptrdiff_t wholeRows = 0;
  for (std::size_t row = rows.location; row < rows.location + rows.length; ++row)
    if (NSContainsRect(shown, table_.rectOfRow(row))) ++wholeRows;
  return std::max<std::ptrdiff_t>(1, wholeRows - 1);
}

bool TableKeyboard::keyDown(const NSEvent& event) {
  const bool extends = event.modifierFlags() & NSEventModifierFlagShift;
  if (isMenuKey(event)) return showMenu();
  switch (firstScalar(event.characters())) {
    case NSUpArrowFunctionKey: moveBy(-1, extends); return true;
    case NSDownArrowFunctionKey: moveBy(1, extends); return true;
    case NSPageUpFunctionKey: moveBy(-page(), extends); return true;
    case NSPageDownFunctionKey: moveBy(page(), extends); return true;
    case NSHomeFunctionKey: table_.selectByKey(0, extends); return true;
    case NSEndFunctionKey: table_.selectByKey(table_.numberOfRows() - 1, extends); return true;
    case NSLeftArrowFunctionKey: return moveAmongControls(-1);
    case NSRightArrowFunctionKey: return moveAmongControls(1);
    default: break;
  }
  const std::string_view command = commandForKey(event);
  if (command == "insertNewline:") return enter(event);
  if (command == "cancelOperation:" && control()) {
    moveToControl(std::nullopt);
    return true;
  }
  if (command == "selectAll:" && table_.allowsMultipleSelection()) {
    table_.selectAll(nullptr);
    return true;
  }
  return typed(event);
}

bool TableKeyboard::moveAmongControls(std::ptrdiff_t step) {
  const std::optional<std::size_t> row = this->row();
  const auto count = static_cast<std::ptrdiff_t>(row ? controlsOf(*row).size() : 0);
  if (count == 0) return row && step > 0 && enterCellsOf(table_, *row);
  // Before the first control is the row.
  const std::ptrdiff_t now = control() ? static_cast<std::ptrdiff_t>(*control()) : -1;
  const std::ptrdiff_t next = std::clamp<std::ptrdiff_t>(now + step, -1, count - 1);
  table_.scrollRowToVisible(*row);
  moveToControl(next < 0 ? std::nullopt : std::optional(static_cast<std::size_t>(next)));
  return true;
}

bool TableKeyboard::enter(const NSEvent& event) {
  const std::optional<std::size_t> row = this->row();
  const Ref<NSTableViewDelegate> delegate = table_.delegate();
  if (!row) return false;
  // A key that is held enters once.
  const std::vector<Ref<NSTableColumn>>& columns = table_.tableColumns();
  if (event.isARepeat())
    return delegate || std::any_of(columns.begin(), columns.end(), [](const auto& each) { return hasTextToEdit(*each); });
  const std::optional<std::size_t> control = this->control();
  if (!control) return (delegate && delegate->tableViewRowWasEntered(table_, *row)) || editTextOf(table_, *row);
  dynamic_cast<NSTableViewRowControls&>(*delegate).tableViewPressControl(table_, *row, *control);
  return true;
}

bool TableKeyboard::showMenu() {
  const std::optional<std::size_t> row = this->row();
  const Ref<NSTableViewDelegate> delegate = table_.delegate();
  if (!row || !delegate) return false;
  table_.scrollRowToVisible(*row);
  const CGRect under = ringBounds();
  return delegate->tableViewShowMenuForRow(table_, *row, {under.origin.x, CGRectGetMaxY(under)});
}

bool TableKeyboard::typed(const NSEvent& event) {
  const std::string text(textOfKey(event));
  if (!search_.takesText(text, event.timestamp())) return false;
  const auto titleAt = [&](std::size_t row) { return table_.typeSelectStringOfRow(row); };
  const std::optional<std::size_t> found = search_.entryAmong(table_.numberOfRows(), titleAt, table_.selectedRow());
  if (found) {
    table_.selectByKey(*found, false);
  } else if (text == " " || search_.beganWord()) {
    // No row begins so: a program's shortcut.
    search_.takeBack();
    return false;
  }
  return true;
}

}  // namespace tessaluna::platform
