// The titles of a table's columns. A click on one sorts by it, or the other way round if it did; a drag at its right edge makes
// it wider. The scroll view around the table puts the header above the rows, as high as it is, and it scrolls sideways with
// them.
//
//   key                        does
//   Left, Right, Home, End     go to another column
//   Space, Return              sort by the column, as a click
//   Shift with Left or Right   make the column narrower or wider
//
// It is a stop of the Tab key, after the rows. A press leaves the keyboard where it is.
#pragma once

#include "tessaluna/platform/events/KeyboardAtPress.h"
#include "tessaluna/platform/views/NSView.h"

namespace tessaluna::platform {

class NSTableColumn;

class NSTableHeaderView : public NSView, public KeyboardAtPress {
 public:
  static const ClassInfo staticClassInfo;
  const ClassInfo& classInfo() const override { return staticClassInfo; }

  // Without a height it gets that of a line of titles.
  using NSView::NSView;
  ~NSTableHeaderView() override;

  // Called by the table that the header is given to.
  NSTableView* tableView() const { return table_; }
  void setTableView(NSTableView* table);
  void sortingDidChange();

  CGRect headerRectOfColumn(std::size_t column) const;
  std::optional<std::size_t> columnAtPoint(CGPoint point) const;

  // The one that the keys are on: that which was reached last, else the first; absent without columns.
  std::optional<std::size_t> keyColumn() const;
  void setKeyColumn(std::size_t column);  // scrolls it into sight
  // A step wider, or narrower for a negative one, within the limits; false for a column that the user cannot resize.
  bool resizeColumn(std::size_t column, int steps);

  bool isFlipped() const override { return true; }
  bool mouseDownCanMoveWindow() const override { return false; }
  void drawRect(CGRect rect) override;
  void mouseDown(const Ref<NSEvent>& event) override;
  void mouseDragged(const Ref<NSEvent>& event) override;
  void mouseUp(const Ref<NSEvent>& event) override;
  void resetCursorRects() override;
  bool takesKeyboardAtPress() const override { return false; }
  bool acceptsFirstResponder() const override { return keyColumn().has_value(); }
  CGRect focusRingMaskBounds() const override;  // the column that the keys are on
  void keyDown(const Ref<NSEvent>& event) override;

  // A group of buttons, one for each column. Pressing one sorts, and its name says so; incrementing makes the column wider.
  bool isAccessibilityElement() const override { return true; }
  std::string accessibilityRole() const override { return std::string(NSAccessibilityGroupRole); }
  std::string accessibilityTitle() const override;  // "Column headers" in the user's language

 protected:
  std::optional<AccessibilityElements> accessibilityOwnChildren() const override;

 private:
  class Element;
  void moveKeyColumn(std::ptrdiff_t from, std::ptrdiff_t step);  // to the first that can be gone to
  CGRect edgeOfColumn(std::size_t column) const;
  CGPoint pointOf(const NSEvent& event) const;
  std::optional<std::size_t> indexOf(const WeakRef<NSTableColumn>& column) const;  // absent once it has left the table

  NSTableView* table_ = nullptr;
  WeakRef<NSTableColumn> pressed_, resized_;  // columns before them may come and go meanwhile
  std::optional<std::size_t> keyColumn_;
  CGFloat grabOffset_ = 0;  // from the resized column's right edge to the hand
  mutable std::vector<Ref<Element>> elements_;
};

}  // namespace tessaluna::platform
