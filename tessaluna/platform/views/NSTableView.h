// A list of rows, each a view that the host's delegate makes. Only rows that show have views: a row that scrolls out of
// sight gives its view back, to be used for another. They are made when the table is laid out. The rows are in a flipped
// view inside a scroll view. The table is as high as its rows, whatever height it is given.
//
// A table with columns shows cells instead, one in each column of a row, with the values of a data source that is an
// NSTableViewCellSource (NSTableColumn.h). They are edited in place.
//
//   table->setDataSource(tracks); table->setDelegate(tracks); scrollView->setDocumentView(table);
//
// The selection is painted under a row's view. Rows are selected with the mouse (Command adds and takes away, Shift extends, and
// so does a drag) and, while the table is the first responder, with the keys that TableKeyboard.h lists.
#pragma once

#include <functional>
#include <map>
#include <optional>
#include <string>

#include "tessaluna/platform/accessibility/AccessibleItems.h"
#include "tessaluna/platform/foundation/NSIndexSet.h"
#include "tessaluna/platform/views/FocusRingSurroundings.h"
#include "tessaluna/platform/views/NSTableViewDelegate.h"
#include "tessaluna/platform/views/NSView.h"
#include "tessaluna/platform/views/TableKeyboard.h"
#include "tessaluna/platform/views/TableRowElements.h"

namespace tessaluna::platform {

class NSSortDescriptor;
class NSTableColumn;
class NSTableHeaderView;

class NSTableView : public NSView, public AccessibleItems, public FocusRingSurroundings {
 public:
  static const ClassInfo staticClassInfo;
  const ClassInfo& classInfo() const override { return staticClassInfo; }

  using NSView::NSView;
  ~NSTableView() override;

  // Neither is kept alive.
  Ref<NSTableViewDataSource> dataSource() const { return dataSource_.lock(); }
  Ref<NSTableViewDelegate> delegate() const { return delegate_.lock(); }
  void setDataSource(const Ref<NSTableViewDataSource>& source) { dataSource_ = source; }
  void setDelegate(const Ref<NSTableViewDelegate>& delegate) { delegate_ = delegate; }
  // Asks for the number of rows and their heights again and takes all views back; those of the rows that show are made by the
  // next layout. The selection is cut to the rows.
  void reloadData();
  // Single rows have come, gone, moved or changed, and the data source already knows; all others keep view, selection and
  // keyboard. Inserted rows are named by where they are afterwards, removed ones by where they were. Where the source does not
  // have so many rows, everything is loaded again.
  void insertRowsAtIndexes(const NSIndexSet& rows);
  void removeRowsAtIndexes(const NSIndexSet& rows);
  void moveRowAtIndex(std::size_t from, std::size_t to);
  void reloadDataForRowIndexes(const NSIndexSet& rows);
  std::size_t numberOfRows() const { return rowCount_; }
  CGFloat rowHeight() const { return rowHeight_; }  // 24 points unless set
  void setRowHeight(CGFloat height);

  CGRect rectOfRow(std::size_t row) const;
  NSRange rowsInRect(CGRect rect) const;
  std::optional<std::size_t> rowAtPoint(CGPoint point) const;
  // The row that contains the view, however deep; absent if none does.
  std::optional<std::size_t> rowForView(const NSView& view) const;
  Ref<NSView> viewAtRow(std::size_t row) const;  // null for a row that does not show; the tree is laid out first
  // A view with the identifier that a row has given back, or null. The delegate gives the view its identifier when it makes
  // it; one without is not used again.
  Ref<NSView> makeViewWithIdentifier(const std::string& identifier);

  const NSIndexSet& selectedRowIndexes() const { return selection_; }
  bool isRowSelected(std::size_t row) const { return selection_.contains(row); }
  std::optional<std::size_t> selectedRow() const;  // the last that was selected
  enum class Selecting { Replaces, Extends };
  void selectRowIndexes(const NSIndexSet& rows, Selecting how);
  void selectAll(NSObject* sender);  // nothing where only one row can be selected
  void deselectAll(NSObject* sender = nullptr);
  bool allowsMultipleSelection() const { return allowsMultipleSelection_; }
  void setAllowsMultipleSelection(bool allows) { allowsMultipleSelection_ = allows; }
  void scrollRowToVisible(std::size_t row);
  void selectByKey(std::size_t row, bool extends);  // and scrolls there; extends from where the selection began

  // The columns from left to right; the table is as wide as they are. A row whose view the delegate gives has no cells.
  const std::vector<Ref<NSTableColumn>>& tableColumns() const { return columns_; }
  void addTableColumn(const Ref<NSTableColumn>& column);  // one of another table stops the program
  void removeTableColumn(const Ref<NSTableColumn>& column);
  CGRect rectOfColumn(std::size_t column) const;
  std::optional<std::size_t> columnAtPoint(CGPoint point) const;
  void columnsDidChange();  // called by a column
  // Begins editing a text, if its column can be edited; a double click does so.
  void editColumn(std::size_t column, std::size_t row);
  const Ref<NSTableHeaderView>& headerView() const { return headerView_; }
  void setHeaderView(const Ref<NSTableHeaderView>& header);  // the scroll view around the table shows it
  // The first counts most. Setting them notifies the data source, which sorts.
  const std::vector<Ref<NSSortDescriptor>>& sortDescriptors() const { return sortDescriptors_; }
  void setSortDescriptors(std::vector<Ref<NSSortDescriptor>> descriptors);
  bool sortByColumn(std::size_t column);  // as a click on its header; false where nothing is sorted

  std::optional<std::size_t> hoveredRow() const { return hoveredRow_; }
  // The row that has the keyboard, and the one of its controls that has it; absent while it is elsewhere.
  std::optional<std::size_t> keyboardRow() const { return keyboard_.row(); }
  std::optional<std::size_t> keyboardControl() const { return keyboard_.control(); }
  std::vector<TableRowControl> controlsOfRow(std::size_t row) const { return keyboard_.controlsOf(row); }
  std::string typeSelectStringOfRow(std::size_t row);

  bool isFlipped() const override { return true; }
  bool acceptsFirstResponder() const override { return true; }
  void drawRect(CGRect rect) override;
  bool isAccessibilityElement() const override { return true; }
  std::string accessibilityRole() const override { return std::string(NSAccessibilityTableRole); }
  // The selected children are those of the selected rows that show, and the one that has the keyboard.
  AccessibilityValue accessibilityAttributeValue(std::string_view attribute) const override;
  std::size_t accessibleItemCount() const override { return rowCount_; }
  Ref<NSObject> accessibleItem(std::size_t row) const override { return elements_.elementOf(row); }
  std::optional<std::size_t> indexOfAccessibleItem(const NSObject* item) const override { return elements_.rowOf(item); }
  AccessibilityElements shownAccessibleItems() const override;
  std::vector<std::size_t> selectedAccessibleItems() const override;
  Ref<NSObject> focusedAccessibleItem() const override;
  void selectAccessibleItem(std::size_t row, AccessibleItems::Selecting how) override;
  Ref<NSObject> accessibleItemAround(const NSView& subview) const override;
  // Of a control in a selected row the ground is the selection.
  CGRect focusRingMaskBounds() const override;
  const NSView& viewWithFocusRing() const override { return *this; }
  Ref<NSColor> focusRingGround() const override;
  void mouseDown(const Ref<NSEvent>& event) override;
  void mouseDragged(const Ref<NSEvent>& event) override;
  void mouseUp(const Ref<NSEvent>& event) override;
  void rightMouseDown(const Ref<NSEvent>& event) override;
  void keyDown(const Ref<NSEvent>& event) override;
  void mouseMoved(const Ref<NSEvent>& event) override;
  void mouseEntered(const Ref<NSEvent>& event) override { mouseMoved(event); }
  void mouseExited(const Ref<NSEvent>& event) override;
  void updateTrackingAreas() override;
  void layout() override;
  void prepareContentInRect(CGRect rect) override;
  bool becomeFirstResponder() override;
  bool resignFirstResponder() override;

 protected:
  std::optional<AccessibilityElements> accessibilityOwnChildren() const override;

 private:
  using NewRow = std::function<std::optional<std::size_t>(std::size_t)>;
  bool hasRows(std::size_t count) const;
  void measureRows();
  void renumberRows(const NewRow& newRow, std::size_t count, NSIndexSet selection);
  void fitHeight();
  CGRect shownRect() const;
  void takeRowView(std::size_t row);
  void placeRows();
  void showRowsIn(CGRect rect);
  void makeRowsIn(CGRect rect, NSTableViewDelegate* delegate);
  Ref<NSView> makeCellRow(std::size_t row);
  void headerDidChange();
  void trimReserve();
  void updateRowLook(std::size_t row);
  void setHoveredRow(std::optional<std::size_t> row);
  void setSelection(NSIndexSet rows);
  void reportSelection();

  WeakRef<NSTableViewDataSource> dataSource_;
  WeakRef<NSTableViewDelegate> delegate_;
  std::size_t rowCount_ = 0;
  CGFloat rowHeight_ = 24;
  std::vector<CGFloat> rowEnds_;  // of rows of different heights, where each ends; else empty
  std::map<std::size_t, Ref<NSView>> visible_;
  std::map<std::string, std::vector<Ref<NSView>>> reserve_;  // by identifier
  std::vector<Ref<NSTableColumn>> columns_;
  Ref<NSTableHeaderView> headerView_;
  std::vector<Ref<NSSortDescriptor>> sortDescriptors_;
  NSIndexSet selection_;
  std::optional<std::size_t> anchor_, lead_, hoveredRow_;
  Ref<NSTrackingArea> trackingArea_;
  bool allowsMultipleSelection_ = true;
  bool isSelectingByDrag_ = false;
  TableKeyboard keyboard_{*this};
  mutable TableRowElements elements_{*this};
};

}  // namespace tessaluna::platform
