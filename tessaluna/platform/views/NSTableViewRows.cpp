// Rows of a table that come, go, move or change, one by one, and the rows as assistive clients meet them; see NSTableView.h.
#include <algorithm>

#include "tessaluna/platform/foundation/NSString.h"
#include "tessaluna/platform/views/NSTableColumn.h"
#include "tessaluna/platform/views/NSTableView.h"
#include "tessaluna/platform/windows/NSWindow.h"

namespace tessaluna::platform {

// Rows that change.

bool NSTableView::hasRows(std::size_t count) const {
  const Ref<NSTableViewDataSource> source = dataSource_.lock();
  return source && source->numberOfRowsInTableView(const_cast<NSTableView&>(*this)) == count;
}

void NSTableView::insertRowsAtIndexes(const NSIndexSet& rows) {
  const std::size_t count = rowCount_ + rows.count();
  if (!hasRows(count)) return reloadData();
  NSIndexSet selection = selection_;
  for (const NSRange& range : rows.ranges())
    selection.shiftIndexesStartingAtIndex(range.location, static_cast<std::ptrdiff_t>(range.length));
  renumberRows(
      [&](std::size_t row) {
        for (const NSRange& range : rows.ranges())
          if (range.location <= row) row += range.length;
        return std::optional(row);
      },
      count, std::move(selection));
}

void NSTableView::removeRowsAtIndexes(const NSIndexSet& rows) {
  const bool areThere = rows.isEmpty() || rows.last() < rowCount_;
  const std::size_t count = areThere ? rowCount_ - rows.count() : 0;
  if (!areThere || !hasRows(count)) return reloadData();
  NSIndexSet selection = selection_;
  for (auto range = rows.ranges().rbegin(); range != rows.ranges().rend(); ++range)
    selection.shiftIndexesStartingAtIndex(range->location + range->length, -static_cast<std::ptrdiff_t>(range->length));
  renumberRows(
      [&](std::size_t row) {
        std::size_t before = 0;
        for (const NSRange& range : rows.ranges())
          if (range.location < row) before += std::min(range.length, row - range.location);
        return rows.contains(row) ? std::nullopt : std::optional(row - before);
      },
      count, std::move(selection));
}

void NSTableView::moveRowAtIndex(std::size_t from, std::size_t to) {
  if (from >= rowCount_ || to >= rowCount_ || !hasRows(rowCount_)) return reloadData();
  NSIndexSet selection = selection_;
  selection.shiftIndexesStartingAtIndex(from + 1, -1);
  selection.shiftIndexesStartingAtIndex(to, 1);
  if (isRowSelected(from)) selection.add(to);
  renumberRows(
      [&](std::size_t row) {
        if (row == from) return std::optional(to);
        if (from < row && row <= to) return std::optional(row - 1);
        return std::optional(to <= row && row < from ? row + 1 : row);
      },
      rowCount_, std::move(selection));
}

void NSTableView::reloadDataForRowIndexes(const NSIndexSet& rows) {
  if (!hasRows(rowCount_)) return reloadData();
  const Ref<NSTableViewDelegate> delegate = delegate_.lock();
  const std::map<std::size_t, Ref<NSView>> shown = visible_;
  for (const auto& [row, view] : shown) {
    if (!rows.contains(row) || (delegate && delegate->tableViewUpdateViewOfRow(*this, *view, row))) continue;
    if (visible_.contains(row)) takeRowView(row);
  }
  measureRows();
  setNeedsLayout(true);
  for (const NSRange& range : rows.ranges())
    for (std::size_t row = range.location; row < range.location + range.length && row < rowCount_; ++row)
      elements_.rowDidChange(row);
  keyboard_.selectionDidChange();
}

void NSTableView::renumberRows(const NewRow& newRow, std::size_t count, NSIndexSet selection) {
  const Ref<NSObject> held = shared_from_this();
  const auto renumbered = [&](std::optional<std::size_t> row) { return row ? newRow(*row) : std::nullopt; };
  const bool isOtherCount = count != rowCount_;
  rowCount_ = count;
  std::map<std::size_t, Ref<NSView>> kept;
  for (auto entry = visible_.begin(); entry != visible_.end();) {
    const std::size_t row = entry->first;
    if (const std::optional<std::size_t> now = newRow(row)) kept[*now] = entry->second;
    else takeRowView(row);
    entry = visible_.upper_bound(row);
  }
  visible_ = std::move(kept);
  const bool hasLost = selection.count() != selection_.count();
  selection_ = std::move(selection);
  anchor_ = renumbered(anchor_);
  lead_ = renumbered(lead_);
  const std::optional<std::size_t> hovered = renumbered(hoveredRow_);
  elements_.renumber(newRow);
  keyboard_.rowsWereRenumbered(newRow);
  measureRows();
  fitHeight();
  setNeedsLayout(true);
  setNeedsDisplay(true);
  setHoveredRow(hovered);
  // The pointer may be over another row now, without having moved.
  if (window()) window()->contentWasScrolledByUser(*this);
  if (isOtherCount) NSAccessibilityPostNotification(shared_from_this(), NSAccessibilityRowCountChangedNotification);
  keyboard_.selectionDidChange();
  if (hasLost) reportSelection();
}

std::string NSTableView::typeSelectStringOfRow(std::size_t row) {
  if (const Ref<NSTableViewDelegate> delegate = delegate_.lock())
    if (std::string text = delegate->tableViewTypeSelectStringForRow(*this, row); !text.empty()) return text;
  // A table of cells: the text of its first column.
  const auto source = std::dynamic_pointer_cast<NSTableViewCellSource>(dataSource());
  if (!source || columns_.empty()) return {};
  const auto text = std::dynamic_pointer_cast<NSString>(source->tableViewObjectValue(*this, *columns_.front(), row));
  return text ? std::string(text->UTF8String()) : std::string();
}

// Assistive clients.

AccessibilityElements NSTableView::shownAccessibleItems() const {
  layOutTree();
  AccessibilityElements shown;
  const NSRange rows = rowsInRect(visibleRect());
  for (std::size_t row = rows.location; row < rows.location + rows.length; ++row) shown.push_back(accessibleItem(row));
  return shown;
}

std::vector<std::size_t> NSTableView::selectedAccessibleItems() const {
  std::vector<std::size_t> rows;
  for (const NSRange& range : selection_.ranges())
    for (std::size_t i = 0; i < range.length; ++i) rows.push_back(range.location + i);
  return rows;
}

Ref<NSObject> NSTableView::focusedAccessibleItem() const {
  std::optional<std::size_t> row = keyboardRow();
  // A text that is edited in a row has the keyboard, and the table has not.
  const auto* first = window() ? dynamic_cast<const NSView*>(window()->firstResponder()) : nullptr;
  if (!row && first) row = rowForView(*first);
  return row ? accessibleItem(*row) : nullptr;
}

void NSTableView::selectAccessibleItem(std::size_t row, AccessibleItems::Selecting how) {
  if (row >= rowCount_) return;
  if (how != AccessibleItems::Selecting::Not)
    return selectRowIndexes(NSIndexSet(row),
                            how == AccessibleItems::Selecting::Alone ? Selecting::Replaces : Selecting::Extends);
  NSIndexSet rest = selection_;
  rest.remove({row, 1});
  selectRowIndexes(rest, Selecting::Replaces);
}

Ref<NSObject> NSTableView::accessibleItemAround(const NSView& subview) const {
  for (const auto& [row, view] : visible_)
    if (view.get() == &subview) return accessibleItem(row);
  return nullptr;
}

std::optional<AccessibilityElements> NSTableView::accessibilityOwnChildren() const {
  AccessibilityElements all;
  for (std::size_t row = 0; row < rowCount_; ++row) all.push_back(accessibleItem(row));
  return all;
}

AccessibilityValue NSTableView::accessibilityAttributeValue(std::string_view attribute) const {
  if (attribute == NSAccessibilityVisibleChildrenAttribute) return shownAccessibleItems();
  if (attribute != NSAccessibilitySelectedChildrenAttribute) return NSView::accessibilityAttributeValue(attribute);
  AccessibilityElements selected;
  const NSRange shown = rowsInRect(visibleRect());
  for (std::size_t row = shown.location; row < shown.location + shown.length; ++row)
    if (isRowSelected(row)) selected.push_back(accessibleItem(row));
  const std::optional<std::size_t> lead = selectedRow();
  if (lead && (*lead < shown.location || *lead >= shown.location + shown.length)) selected.push_back(accessibleItem(*lead));
  return selected;
}

}  // namespace tessaluna::platform
