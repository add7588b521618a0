// The keyboard in a table: which row has it, which of the row's controls, and what each key does. To the Tab key the table is
// one stop.
//
//   Up, Down, Page Up, Page Down, Home, End   another row; with Shift the selection is extended
//   Control-A, Command-A                      all rows, where several can be selected
//   a letter, or a word typed quickly         the next row that begins with it
//   Left, Right                               the controls of the row; in a table with columns Right leads to the row's first cell
//                                             that takes the keyboard, and Escape back from there
//   Return                                    presses the control, or else enters the row; where nobody takes that, edits the first
//                                             text of its cells
//   Menu, Shift-F10                           the row's menu
//   Escape                                    from a control back to its row
#pragma once

#include <functional>
#include <optional>
#include <vector>

#include "tessaluna/platform/events/TypeSelect.h"
#include "tessaluna/platform/views/NSTableViewDelegate.h"

namespace tessaluna::platform {

class TableKeyboard {
 public:
  explicit TableKeyboard(NSTableView& table);

  // False for a key that does nothing here.
  bool keyDown(const NSEvent& event);
  bool hasKeys() const { return hasKeys_; }
  void setHasKeys(bool hasKeys);
  // The selection, the rows or their controls are others than before.
  void selectionDidChange();
  // Where each row is now. The row that has the keyboard keeps it: nobody but the delegate is notified.
  void rowsWereRenumbered(const std::function<std::optional<std::size_t>(std::size_t)>& newRow);

  std::optional<std::size_t> row() const;      // that has the keyboard
  std::optional<std::size_t> control() const;  // of that row; absent while it is on the row itself
  std::vector<TableRowControl> controlsOf(std::size_t row) const;
  void moveToControl(std::optional<std::size_t> control);
  CGRect ringBounds() const;  // of the row or the control, in the table

 private:
  bool moveAmongControls(std::ptrdiff_t step);
  bool enter(const NSEvent& event);
  bool showMenu();
  bool typed(const NSEvent& event);
  void moveBy(std::ptrdiff_t rows, bool extends);
  std::ptrdiff_t page() const;
  void report();

  NSTableView& table_;
  TypeSelect search_;
  std::optional<std::size_t> control_, reportedRow_;
  bool hasKeys_ = false;
};

}  // namespace tessaluna::platform
