// What a table with columns has besides rows; see NSTableView.h.
#include <algorithm>

#include "tessaluna/platform/events/NSEvent.h"
#include "tessaluna/platform/foundation/stopProgram.h"
#include "tessaluna/platform/views/NSScrollView.h"
#include "tessaluna/platform/views/NSTableColumn.h"
#include "tessaluna/platform/views/NSTableHeaderView.h"
#include "tessaluna/platform/views/NSTableView.h"
#include "tessaluna/platform/views/NSText.h"
#include "tessaluna/platform/views/TableCellRow.h"
#include "tessaluna/platform/windows/NSWindow.h"

namespace tessaluna::platform {

namespace {

constexpr std::string_view cellRowIdentifier = "NSTableView.cells";

CGFloat shownWidthOf(const NSTableColumn& column) { return column.isHidden() ? 0 : column.width(); }

}  // namespace

NSTableView::~NSTableView() {
  for (const Ref<NSTableColumn>& column : columns_) column->table_ = nullptr;
  if (headerView_) headerView_->setTableView(nullptr);
}

void NSTableView::addTableColumn(const Ref<NSTableColumn>& column) {
  if (column->table_) stopProgram("NSTableView: a column of two tables");
  column->table_ = this;
  columns_.push_back(column);
  const Ref<NSObject> held = weak_from_this().lock();  // absent while the table is being made
  reloadData();
  columnsDidChange();
}

void NSTableView::removeTableColumn(const Ref<NSTableColumn>& column) {
  const auto found = std::find(columns_.begin(), columns_.end(), column);
  if (found == columns_.end()) return;
  (*found)->table_ = nullptr;
  columns_.erase(found);
  const Ref<NSObject> held = weak_from_this().lock();
  reloadData();
  columnsDidChange();
}

void NSTableView::columnsDidChange() {
  CGFloat width = 0;
  for (const Ref<NSTableColumn>& column : columns_) width += shownWidthOf(*column);
  if (!columns_.empty()) setFrameSize({width, frame().size.height});
  for (const auto& [row, view] : visible_) view->setNeedsLayout(true);
  setNeedsLayout(true);
  setNeedsDisplay(true);
  if (!headerView_) return;
  headerDidChange();
  headerView_->noteFocusRingMaskChanged();
  if (headerView_->window()) headerView_->window()->invalidateCursorRectsForView(*headerView_);
}

void NSTableView::headerDidChange() {
  if (headerView_) headerView_->setNeedsDisplay(true);
  if (NSScrollView* scrollView = enclosingScrollView()) scrollView->setNeedsLayout(true);
}

CGRect NSTableView::rectOfColumn(std::size_t column) const {
  if (column >= columns_.size()) return NSZeroRect;
  CGFloat x = 0;
  for (std::size_t i = 0; i < column; ++i) x += shownWidthOf(*columns_[i]);
  return {x, 0, shownWidthOf(*columns_[column]), bounds().size.height};
}

std::optional<std::size_t> NSTableView::columnAtPoint(CGPoint point) const {
  for (std::size_t i = 0; i < columns_.size(); ++i)
    if (NSPointInRect(point, rectOfColumn(i))) return i;
  return std::nullopt;
}

void NSTableView::setHeaderView(const Ref<NSTableHeaderView>& header) {
  if (headerView_) headerView_->setTableView(nullptr);
  headerView_ = header;
  if (headerView_) headerView_->setTableView(this);
  headerDidChange();
}

void NSTableView::setSortDescriptors(std::vector<Ref<NSSortDescriptor>> descriptors) {
  sortDescriptors_ = std::move(descriptors);
  if (headerView_) headerView_->sortingDidChange();
  const Ref<NSObject> held = shared_from_this();
  if (const auto source = std::dynamic_pointer_cast<NSTableViewCellSource>(dataSource()))
    source->tableViewSortDescriptorsDidChange(*this);
}

bool NSTableView::sortByColumn(std::size_t column) {
  const Ref<NSObject> held = shared_from_this();
  // What was typed belongs to the row where it is now.
  const auto* editor = window() ? dynamic_cast<const NSText*>(window()->firstResponder()) : nullptr;
  if (editor && editor->isDescendantOf(this) && !window()->makeFirstResponder(this)) return false;
  Ref<NSSortDescriptor> first = column < columns_.size() ? columns_[column]->sortDescriptorPrototype() : nullptr;
  if (!first) return false;
  std::vector<Ref<NSSortDescriptor>> rest = sortDescriptors_;
  if (!rest.empty() && rest.front()->key() == first->key()) first = rest.front()->reversedSortDescriptor();
  std::erase_if(rest, [&](const Ref<NSSortDescriptor>& each) { return each->key() == first->key(); });
  rest.insert(rest.begin(), first);
  setSortDescriptors(std::move(rest));
  return true;
}

void NSTableView::editColumn(std::size_t column, std::size_t row) {
  if (row >= rowCount_ || column >= columns_.size()) return;
  scrollRowToVisible(row);
  const Ref<NSView> view = viewAtRow(row);
  if (auto* cells = dynamic_cast<TableCellRow*>(view.get())) cells->edit(column);
}

Ref<NSView> NSTableView::makeCellRow(std::size_t row) {
  auto view = std::dynamic_pointer_cast<TableCellRow>(makeViewWithIdentifier(std::string(cellRowIdentifier)));
  if (!view || !view->fits(columns_)) {
    view = make<TableCellRow>(columns_);
    view->setIdentifier(std::string(cellRowIdentifier));
  }
  view->fill(*this, row);
  return view;
}

}  // namespace tessaluna::platform
