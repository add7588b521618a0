// Adopted by a host whose rows a table shows: where the rows come from, and what happens to them.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "tessaluna/platform/accessibility/names.h"
#include "tessaluna/platform/foundation/Geometry.h"
#include "tessaluna/platform/views/Forward.h"

namespace tessaluna::platform {

class NSTableViewDataSource {
 public:
  virtual ~NSTableViewDataSource() = default;
  virtual std::size_t numberOfRowsInTableView(NSTableView& table) = 0;
};

class NSTableViewDelegate {
 public:
  virtual ~NSTableViewDelegate() = default;
  // The view of a row, filled: one from makeViewWithIdentifier, or a new one. The table sets its frame.
  virtual Ref<NSView> tableViewViewForRow(NSTableView& table, std::size_t row) = 0;
  // A row has changed: fills its view with what it shows now. If false, the table takes the view back and asks for another one.
  virtual bool tableViewUpdateViewOfRow(NSTableView&, NSView& /*view*/, std::size_t /*row*/) { return false; }
  // In points. Asked of all rows at reloadData, if it says that heights differ.
  virtual bool tableViewHasRowsOfDifferentHeights(NSTableView&) { return false; }
  virtual CGFloat tableViewHeightOfRow(NSTableView&, std::size_t) { return 0; }

  virtual void tableViewSelectionDidChange(NSTableView&) {}
  // The row under the pointer; absent outside of all. Called when the pointer moves, so not while rows scroll under it at rest.
  virtual void tableViewHoveredRowDidChange(NSTableView&, std::optional<std::size_t> /*row*/) {}
  virtual void tableViewRowWasDoubleClicked(NSTableView&, std::size_t /*row*/) {}

  // The Return key on the selected row. If false it edits the row's first text, in a table of cells that has one, or else goes
  // up the responder chain.
  virtual bool tableViewRowWasEntered(NSTableView&, std::size_t /*row*/) { return false; }
  // Menu key, Shift-F10 or right button, on a row that is selected; the place is in the table. False where there is no menu.
  virtual bool tableViewShowMenuForRow(NSTableView&, std::size_t /*row*/, CGPoint /*place*/) { return false; }
  // The selected row while the table has the keyboard. Absent without the keyboard or a selected row.
  virtual void tableViewKeyboardRowDidChange(NSTableView&, std::optional<std::size_t> /*row*/) {}

  // What a typed word has to begin; a row without it is not found. Asked of many rows at a key, also of those that do not show.
  virtual std::string tableViewTypeSelectStringForRow(NSTableView&, std::size_t /*row*/) { return {}; }
  // What assistive clients call a row, also one that does not show. Empty: the string that is typed to
  // find it, or what is in its view while it shows.
  virtual std::string tableViewNameOfRow(NSTableView&, std::size_t /*row*/) { return {}; }
};

// A control in a row as keys and assistive clients find it, whether the row shows or not.
struct TableRowControl {
  std::string name;
  std::string_view role = NSAccessibilityButtonRole;
  CGRect frame{};              // in the table; empty while the control does not show
  std::optional<bool> isOn{};  // of a check box; absent for others
  bool isRowAction = false;    // clients may press it on the row, too, by its name
};

// Adopted by a delegate whose rows have controls. Left and Right lead to them, Return presses one.
class NSTableViewRowControls {
 public:
  virtual ~NSTableViewRowControls() = default;
  virtual std::vector<TableRowControl> tableViewControlsOfRow(NSTableView& table, std::size_t row) = 0;
  virtual void tableViewPressControl(NSTableView& table, std::size_t row, std::size_t control) = 0;
};

}  // namespace tessaluna::platform
