// The titles of a table's columns. A click on one sorts by it, or the other way round if it did; a drag at its right edge makes
// it wider. A host puts the view above the table's scroll view; it follows what scrolls sideways.
#pragma once

#include "tessaluna/platform/views/NSView.h"

namespace tessaluna::platform {

class NSTableColumn;

class NSTableHeaderView : public NSView {
 public:
  static const ClassInfo staticClassInfo;
  const ClassInfo& classInfo() const override { return staticClassInfo; }

  using NSView::NSView;
  ~NSTableHeaderView() override;

  // Called by the table that the header is given to.
  NSTableView* tableView() const { return table_; }
  void setTableView(NSTableView* table);

  CGRect headerRectOfColumn(std::size_t column) const;
  std::optional<std::size_t> columnAtPoint(CGPoint point) const;

  bool isFlipped() const override { return true; }
  bool mouseDownCanMoveWindow() const override { return false; }
  void drawRect(CGRect rect) override;
  void mouseDown(const Ref<NSEvent>& event) override;
  void mouseDragged(const Ref<NSEvent>& event) override;
  void mouseUp(const Ref<NSEvent>& event) override;
  void resetCursorRects() override;

  // A group of buttons, one for each column.
  bool isAccessibilityElement() const override { return true; }
  std::string accessibilityRole() const override { return std::string(NSAccessibilityGroupRole); }

 protected:
  std::optional<AccessibilityElements> accessibilityOwnChildren() const override;

 private:
  class Element;
  CGRect edgeOfColumn(std::size_t column) const;
  CGPoint pointOf(const NSEvent& event) const;

  NSTableView* table_ = nullptr;
  std::optional<std::size_t> pressed_, resized_;
  CGFloat grabOffset_ = 0;  // from the resized column's right edge to the hand
  mutable std::vector<Ref<Element>> elements_;
};

}  // namespace tessaluna::platform
