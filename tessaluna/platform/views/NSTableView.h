// A list of rows, each a view that the host's delegate makes. Only rows that show have views: a row that scrolls out of
// sight gives its view back, to be used for another. They are made when the table is laid out. The rows stand in a flipped
// view inside a scroll view. The table is as high as its rows, whatever height it is given.
//
// A table with columns shows cells instead, one in each column of a row, with the values of a data source that is an
// NSTableViewCellSource (NSTableColumn.h). They are edited in place.
//
//   table->setDataSource(tracks); table->setDelegate(tracks); scrollView->setDocumentView(table);
//
// A selected row is painted behind its view. Rows are selected with the mouse (Command adds and takes away, Shift extends)
// and, while the table is the first responder, with the arrow, Home, End and page keys.
#pragma once

#include <map>
#include <optional>
#include <string>

#include "tessaluna/platform/foundation/NSIndexSet.h"
#include "tessaluna/platform/views/NSView.h"

namespace tessaluna::platform {

class NSSortDescriptor;
class NSTableColumn;
class NSTableHeaderView;

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
  // In points. Asked of all rows at reloadData, if it says that heights differ.
  virtual bool tableViewHasRowsOfDifferentHeights(NSTableView&) { return false; }
  virtual CGFloat tableViewHeightOfRow(NSTableView&, std::size_t) { return 0; }
  virtual void tableViewSelectionDidChange(NSTableView&) {}
  // The row under the pointer, absent outside all. Comes with the pointer's moves, so not while rows scroll under a still one.
  virtual void tableViewHoveredRowDidChange(NSTableView&, std::optional<std::size_t> /*row*/) {}
  virtual void tableViewRowWasDoubleClicked(NSTableView&, std::size_t /*row*/) {}
};

class NSTableView : public NSView {
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
  std::size_t numberOfRows() const { return rowCount_; }
  CGFloat rowHeight() const { return rowHeight_; }  // 24 points unless set
  void setRowHeight(CGFloat height);

  CGRect rectOfRow(std::size_t row) const;
  std::optional<std::size_t> rowAtPoint(CGPoint point) const;
  // The row that the view stands in, however deep; absent if in none.
  std::optional<std::size_t> rowForView(const NSView& view) const;
  Ref<NSView> viewAtRow(std::size_t row) const;  // null for a row that does not show; the tree is laid out first
  // A view with the identifier that a row has given back, or absent. The delegate gives the view its identifier when it makes
  // it; one without is not used again.
  Ref<NSView> makeViewWithIdentifier(const std::string& identifier);

  const NSIndexSet& selectedRowIndexes() const { return selection_; }
  bool isRowSelected(std::size_t row) const { return selection_.contains(row); }
  std::optional<std::size_t> selectedRow() const;  // the last that was selected
  enum class Selecting { Replaces, Extends };
  void selectRowIndexes(const NSIndexSet& rows, Selecting how);
  void deselectAll() { selectRowIndexes({}, Selecting::Replaces); }
  bool allowsMultipleSelection() const { return allowsMultipleSelection_; }
  void setAllowsMultipleSelection(bool allows) { allowsMultipleSelection_ = allows; }
  void scrollRowToVisible(std::size_t row);

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
  bool sortByColumn(std::size_t column);  // as a click on its header; false for one that does not sort

  std::optional<std::size_t> hoveredRow() const { return hoveredRow_; }

  bool isFlipped() const override { return true; }
  bool acceptsFirstResponder() const override { return true; }
  void drawRect(CGRect rect) override;
  bool isAccessibilityElement() const override { return true; }
  std::string accessibilityRole() const override { return std::string(NSAccessibilityTableRole); }
  // The selected children are the views of the selected rows, of those that show; absent where the views are no elements.
  AccessibilityValue accessibilityAttributeValue(std::string_view attribute) const override;
  void mouseDown(const Ref<NSEvent>& event) override;
  void keyDown(const Ref<NSEvent>& event) override;
  void mouseMoved(const Ref<NSEvent>& event) override;
  void mouseEntered(const Ref<NSEvent>& event) override { mouseMoved(event); }
  void mouseExited(const Ref<NSEvent>& event) override;
  void updateTrackingAreas() override;
  void layout() override;
  void prepareContentInRect(CGRect rect) override;
  bool becomeFirstResponder() override;
  bool resignFirstResponder() override;

 private:
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
  void moveSelection(std::ptrdiff_t step, bool extends);
  void selectByKey(std::size_t row, bool extends);
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
};

}  // namespace tessaluna::platform
