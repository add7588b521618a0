// The view of one row of a table with columns: a control for each column, over a copy of its cell.
#pragma once

#include <vector>

#include "tessaluna/platform/views/NSControl.h"

namespace tessaluna::platform {

class NSTableColumn;

class TableCellRow : public NSView {
 public:
  static const ClassInfo staticClassInfo;
  const ClassInfo& classInfo() const override { return staticClassInfo; }

  explicit TableCellRow(const std::vector<Ref<NSTableColumn>>& columns);
  void didInit() override;

  // Whether it was made for these columns, with the cells that they have now.
  bool fits(const std::vector<Ref<NSTableColumn>>& columns) const;
  void fill(NSTableView& table, std::size_t row);
  void edit(std::size_t column);  // nothing unless it shows a text that can be edited

  // The first control that takes the keyboard gets it; false without one. Only while one of them has it are the controls of the row
  // stops of the Tab key, and Escape gives it back to the table.
  bool giveKeyboardToControls();

  bool isFlipped() const override { return true; }
  void layout() override;
  // What the user cannot change lets the mouse through to the table.
  NSView* hitTest(CGPoint point) override;

 private:
  class TextField;
  template <class Control>
  class InRow;
  class Segments;
  struct Place {
    Ref<NSTableColumn> column;
    Ref<NSCell> dataCell;  // of which the control's is a copy
    bool isEditable = false;
    Ref<NSControl> control;
  };
  void nameAfterColumn(const Place& place) const;
  void valueWasChanged(NSObject* control);  // "cellValueWasChanged:"
  NSTableView* table() const;
  bool hasKeyboard() const;
  bool isEditable(const NSControl& control) const;
  static const Selector selectors_[];

  std::vector<Place> places_;
};

}  // namespace tessaluna::platform
