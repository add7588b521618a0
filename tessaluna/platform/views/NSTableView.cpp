#include "tessaluna/platform/views/NSTableView.h"

#include <algorithm>
#include <cmath>

#include "tessaluna/platform/events/NSEvent.h"
#include "tessaluna/platform/events/trackVisibleRect.h"
#include "tessaluna/platform/foundation/NSSortDescriptor.h"
#include "tessaluna/platform/foundation/memberTables.h"
#include "tessaluna/platform/graphics/NSBezierPath.h"
#include "tessaluna/platform/graphics/NSColor.h"
#include "tessaluna/platform/graphics/NSRect.h"
#include "tessaluna/platform/text/unicode.h"
#include "tessaluna/platform/views/NSClipView.h"
#include "tessaluna/platform/views/NSControl.h"
#include "tessaluna/platform/views/NSTableCellView.h"
#include "tessaluna/platform/views/NSTableColumn.h"
#include "tessaluna/platform/views/NSTableHeaderView.h"
#include "tessaluna/platform/views/NSText.h"
#include "tessaluna/platform/windows/NSWindow.h"

namespace tessaluna::platform {

namespace {

constexpr Outlet tableOutlets[] = {outlet<&NSTableView::setDataSource>("dataSource"),
                                   outlet<&NSTableView::setDelegate>("delegate")};
constexpr Property tableProperties[] = {property<&NSTableView::setRowHeight, "rowHeight">(),
                                        property<&NSTableView::setAllowsMultipleSelection, "allowsMultipleSelection">()};

constexpr Selector tableSelectors[] = {action<&NSTableView::selectAll>("selectAll:"),
                                       action<&NSTableView::deselectAll>("deselectAll:")};
constexpr InnerObjects tableInnerObjects[] = {
    innerObject<&NSTableView::addTableColumn>("tableColumns", InnerObjects::Count::Many),
    innerObject<&NSTableView::setHeaderView>("headerView")};

}  // namespace

const ClassInfo NSTableView::staticClassInfo{.name = "NSTableView",
                                             .base = &NSView::staticClassInfo,
                                             .selectors = tableSelectors,
                                             .outlets = tableOutlets,
                                             .properties = tableProperties,
                                             .innerObjects = tableInnerObjects};

namespace {

// More views than this of one kind are not kept for later: a list that was once tall does not hold on to its views.
constexpr std::size_t maxInReserve = 8;

// Of all cells in a row. A cell view is asked, as it may show its ground in its own way.
void setBackgroundStyleOf(NSView& view, NSBackgroundStyle style) {
  if (auto* cellView = dynamic_cast<NSTableCellView*>(&view)) cellView->setBackgroundStyle(style);
  for (const Ref<NSView>& subview : view.subviews()) {
    if (const auto* control = dynamic_cast<const NSControl*>(subview.get()); control && control->cell())
      control->cell()->setBackgroundStyle(style);
    setBackgroundStyleOf(*subview, style);
  }
}

}  // namespace

void NSTableView::reloadData() {
  const Ref<NSObject> held = weak_from_this().lock();  // absent while the table is being made
  const Ref<NSTableViewDataSource> source = dataSource_.lock();
  rowCount_ = source ? source->numberOfRowsInTableView(*this) : 0;
  measureRows();
  while (!visible_.empty()) takeRowView(visible_.begin()->first);
  elements_.removeAll();
  NSAccessibilityPostNotification(weak_from_this().lock(), NSAccessibilityRowCountChangedNotification);
  const std::size_t end = selection_.isEmpty() ? 0 : selection_.last() + 1;
  if (end > rowCount_) {
    selection_.remove({rowCount_, end - rowCount_});
    anchor_ = lead_ = std::nullopt;
    reportSelection();
  }
  keyboard_.selectionDidChange();
  // The element of the row that has the keyboard is another one.
  if (keyboard_.row())
    NSAccessibilityPostNotification(weak_from_this().lock(), NSAccessibilityFocusedUIElementChangedNotification);
  if (hoveredRow_ && *hoveredRow_ >= rowCount_) setHoveredRow(std::nullopt);
  fitHeight();
  setNeedsLayout(true);
  setNeedsDisplay(true);
}

void NSTableView::measureRows() {
  const Ref<NSTableViewDelegate> delegate = delegate_.lock();
  rowEnds_.clear();
  if (!delegate || !delegate->tableViewHasRowsOfDifferentHeights(*this)) return;
  rowEnds_.reserve(rowCount_);
  CGFloat y = 0;
  for (std::size_t row = 0; row < rowCount_; ++row)
    rowEnds_.push_back(y += std::max(0.0, delegate->tableViewHeightOfRow(*this, row)));
}

CGRect NSTableView::shownRect() const {
  // Alone it shows no rows: it makes none before it has come to its place.
  if (!superview()) return NSZeroRect;
  const auto* clipView = dynamic_cast<const NSClipView*>(superview());
  return clipView ? clipView->documentVisibleRect() : visibleRect();
}

void NSTableView::setRowHeight(CGFloat height) {
  rowHeight_ = height;
  reloadData();
}

void NSTableView::fitHeight() {
  const CGFloat height = rowEnds_.empty() ? rowHeight_ * static_cast<CGFloat>(rowCount_) : rowEnds_.back();
  setFrameSize({frame().size.width, height});
}

void NSTableView::layout() {
  NSView::layout();
  fitHeight();
  placeRows();
  showRowsIn(shownRect());
}

void NSTableView::placeRows() {
  // What a row's view does about its frame may take others away.
  for (auto entry = visible_.begin(); entry != visible_.end();) {
    const std::size_t row = entry->first;
    const Ref<NSView> view = entry->second;
    view->setFrame(rectOfRow(row));
    entry = visible_.upper_bound(row);
  }
}

void NSTableView::prepareContentInRect(CGRect) { setNeedsLayout(true); }

CGRect NSTableView::rectOfRow(std::size_t row) const {
  if (row >= rowCount_) return NSZeroRect;
  const CGFloat width = bounds().size.width;
  if (rowEnds_.empty()) return {0, rowHeight_ * static_cast<CGFloat>(row), width, rowHeight_};
  const CGFloat start = row == 0 ? 0 : rowEnds_[row - 1];
  return {0, start, width, rowEnds_[row] - start};
}

std::optional<std::size_t> NSTableView::rowAtPoint(CGPoint point) const {
  if (!NSPointInRect(point, bounds()) || rowCount_ == 0) return std::nullopt;
  if (!rowEnds_.empty()) {
    const auto end = std::upper_bound(rowEnds_.begin(), rowEnds_.end(), point.y);
    return end == rowEnds_.end() ? std::nullopt : std::optional<std::size_t>(end - rowEnds_.begin());
  }
  const auto row = static_cast<std::size_t>(point.y / rowHeight_);
  return row < rowCount_ ? std::optional(row) : std::nullopt;
}

NSRange NSTableView::rowsInRect(CGRect rect) const {
  const std::size_t first = rowAtPoint({bounds().origin.x, std::max(0.0, rect.origin.y)}).value_or(rowCount_);
  std::size_t end = first;
  while (end < rowCount_ && rectOfRow(end).origin.y < CGRectGetMaxY(rect)) ++end;
  return {first, end - first};
}

std::optional<std::size_t> NSTableView::rowForView(const NSView& view) const {
  for (const NSView* ancestor = &view; ancestor && ancestor != this; ancestor = ancestor->superview()) {
    if (ancestor->superview() != this) continue;
    for (const auto& [row, rowView] : visible_)
      if (rowView.get() == ancestor) return row;
  }
  return std::nullopt;
}

Ref<NSView> NSTableView::viewAtRow(std::size_t row) const {
  layOutTree();
  const auto found = visible_.find(row);
  return found == visible_.end() ? nullptr : found->second;
}

Ref<NSView> NSTableView::makeViewWithIdentifier(const std::string& identifier) {
  const auto found = reserve_.find(identifier);
  if (found == reserve_.end() || found->second.empty()) return nullptr;
  Ref<NSView> view = std::move(found->second.back());
  found->second.pop_back();
  return view;
}

void NSTableView::takeRowView(std::size_t row) {
  const auto found = visible_.find(row);
  const Ref<NSView> view = std::move(found->second);
  visible_.erase(found);
  const auto* first = window() ? dynamic_cast<const NSView*>(window()->firstResponder()) : nullptr;
  const bool hasKeyboard = first && first->isDescendantOf(view.get());
  view->removeFromSuperview();
  if (hasKeyboard && window() && window()->firstResponder() == window()) window()->makeFirstResponder(this);
  if (!view->identifier().empty()) reserve_[view->identifier()].push_back(view);
}

void NSTableView::trimReserve() {
  for (auto& [identifier, views] : reserve_)
    if (views.size() > maxInReserve) views.resize(maxInReserve);
}

void NSTableView::showRowsIn(CGRect rect) {
  const auto isShown = [&](std::size_t row) { return row < rowCount_ && NSIntersectsRect(rectOfRow(row), rect); };
  // What was typed into a row that scrolls away is kept, as long as it is known of which row it is.
  const auto* editor = window() ? dynamic_cast<const NSText*>(window()->firstResponder()) : nullptr;
  const std::optional<std::size_t> edited = editor ? rowForView(*editor) : std::nullopt;
  if (edited && !isShown(*edited)) window()->makeFirstResponder(this);
  const Ref<NSTableViewDelegate> delegate = delegate_.lock();
  // What a view does as it leaves may take others away.
  for (auto entry = visible_.begin(); entry != visible_.end();) {
    const std::size_t row = entry->first;
    if (!isShown(row)) takeRowView(row);
    entry = visible_.upper_bound(row);
  }
  if ((delegate || !columns_.empty()) && !NSIsEmptyRect(rect)) makeRowsIn(rect, delegate.get());
  // Only now: a whole screen of rows that went serves the one that came.
  trimReserve();
}

void NSTableView::makeRowsIn(CGRect rect, NSTableViewDelegate* delegate) {
  for (std::size_t row = rowsInRect(rect).location; row < rowCount_; ++row) {
    if (rectOfRow(row).origin.y >= CGRectGetMaxY(rect)) break;
    // A row without height has nothing to show.
    if (visible_.contains(row) || !NSIntersectsRect(rectOfRow(row), rect)) continue;
    Ref<NSView> view = delegate ? delegate->tableViewViewForRow(*this, row) : nullptr;
    if (!view && !columns_.empty()) view = makeCellRow(row);
    if (!view) continue;
    view->setFrame(rectOfRow(row));
    visible_[row] = view;
    addSubview(view);
    updateRowLook(row);
  }
}

void NSTableView::updateRowLook(std::size_t row) {
  if (const Ref<NSView> view = viewAtRow(row))
    setBackgroundStyleOf(*view, isRowSelected(row) ? NSBackgroundStyleDark : NSBackgroundStyleLight);
  setNeedsDisplayInRect(rectOfRow(row));
}

std::optional<std::size_t> NSTableView::selectedRow() const {
  if (lead_ && isRowSelected(*lead_)) return lead_;
  return selection_.isEmpty() ? std::nullopt : std::optional(selection_.last());
}

void NSTableView::selectRowIndexes(const NSIndexSet& rows, Selecting how) {
  NSIndexSet next = how == Selecting::Extends && allowsMultipleSelection_ ? selection_ : NSIndexSet();
  for (const NSRange& range : rows.ranges())
    if (range.location < rowCount_) next.add({range.location, std::min(range.length, rowCount_ - range.location)});
  if (!allowsMultipleSelection_ && next.count() > 1) next = NSIndexSet(next.last());
  if (next == selection_) return;
  if (!next.isEmpty()) lead_ = rows.last() < rowCount_ ? rows.last() : next.last();
  if (how == Selecting::Replaces) anchor_ = next.isEmpty() ? std::nullopt : std::optional(next.first());
  setSelection(std::move(next));
}

void NSTableView::selectAll(NSObject*) {
  NSIndexSet all(NSRange{0, rowCount_});
  if (!allowsMultipleSelection_ || all == selection_) return;
  // The keyboard stays in its row.
  if (const std::optional<std::size_t> row = selectedRow()) lead_ = row;
  if (!anchor_) anchor_ = 0;
  setSelection(std::move(all));
}

void NSTableView::deselectAll(NSObject*) { selectRowIndexes({}, Selecting::Replaces); }

void NSTableView::setSelection(NSIndexSet rows) {
  const Ref<NSObject> held = shared_from_this();
  const NSIndexSet earlier = std::exchange(selection_, std::move(rows));
  // Looking at a row lays the table out first, which takes views away that no longer show.
  const std::map<std::size_t, Ref<NSView>> shown = visible_;
  for (const auto& [row, view] : shown)
    if (earlier.contains(row) != selection_.contains(row)) updateRowLook(row);
  keyboard_.selectionDidChange();
  reportSelection();
}

void NSTableView::reportSelection() {
  NSAccessibilityPostNotification(shared_from_this(), NSAccessibilitySelectedChildrenChangedNotification);
  if (const Ref<NSTableViewDelegate> delegate = delegate_.lock()) delegate->tableViewSelectionDidChange(*this);
}

CGRect NSTableView::focusRingMaskBounds() const {
  return keyboardControl() ? keyboard_.ringBounds() : NSView::focusRingMaskBounds();
}

Ref<NSColor> NSTableView::focusRingGround() const {
  return keyboardControl() && isRowSelected(*keyboardRow()) ? NSColor::alternateSelectedControlColor() : nullptr;
}

void NSTableView::scrollRowToVisible(std::size_t row) {
  if (row < rowCount_) scrollRectToVisible(rectOfRow(row));
}

void NSTableView::drawRect(CGRect rect) {
  const bool isActive = window() && window()->firstResponder() == this;
  const auto color = NSColor::alternateSelectedControlColor();
  (isActive ? color : color->blendedColorWithFraction(0.35, NSColor::grayColor()))->setFill();
  for (const auto& [row, view] : visible_)
    if (isRowSelected(row) && NSIntersectsRect(rectOfRow(row), rect))
      NSRectFillUsingOperation(NSIntersectionRect(rectOfRow(row), rect), NSCompositingOperationSourceOver);
}

void NSTableView::mouseDown(const Ref<NSEvent>& event) {
  // A press on a row's label comes here by the chain and not as a hit: the table takes the keys then, too.
  if (window()) window()->makeFirstResponder(this);
  const std::optional<std::size_t> row = rowAtPoint(convertPointFromView(event->locationInWindow(), nullptr));
  if (!row) {
    deselectAll();
    return;
  }
  const bool toggles = event->modifierFlags() & (NSEventModifierFlagCommand | NSEventModifierFlagControl);
  const bool extends = event->modifierFlags() & NSEventModifierFlagShift;
  if (event->clickCount() == 2) {
    // The rows may have been scrolled since the first click.
    if (!toggles && !isRowSelected(*row)) selectRowIndexes(NSIndexSet(*row), Selecting::Replaces);
    if (*row >= rowCount_) return;
    if (const Ref<NSTableViewDelegate> delegate = delegate_.lock()) delegate->tableViewRowWasDoubleClicked(*this, *row);
    const auto column = columnAtPoint(convertPointFromView(event->locationInWindow(), nullptr));
    if (column) editColumn(*column, *row);
    return;
  }
  isSelectingByDrag_ = !toggles;
  if (extends && anchor_ && allowsMultipleSelection_) {
    const std::size_t first = std::min(*anchor_, *row), last = std::max(*anchor_, *row);
    const std::size_t anchor = *anchor_;
    selectRowIndexes(NSIndexSet(NSRange{first, last - first + 1}), Selecting::Replaces);
    anchor_ = anchor;
    lead_ = row;
  } else if (toggles && isRowSelected(*row)) {
    NSIndexSet rest = selection_;
    rest.remove({*row, 1});
    selectRowIndexes(rest, Selecting::Replaces);
  } else {
    selectRowIndexes(NSIndexSet(*row), toggles ? Selecting::Extends : Selecting::Replaces);
    anchor_ = lead_ = row;
  }
  keyboard_.selectionDidChange();
}

void NSTableView::mouseDragged(const Ref<NSEvent>& event) {
  // The row where the press began may have gone meanwhile.
  if (!isSelectingByDrag_ || !anchor_ || rowCount_ == 0) return;
  CGPoint point = convertPointFromView(event->locationInWindow(), nullptr);
  point.x = CGRectGetMidX(bounds());
  point.y = std::clamp(point.y, 0.0, std::max(0.0, bounds().size.height - 1));
  if (const std::optional<std::size_t> row = rowAtPoint(point); row && row != lead_) selectByKey(*row, true);
}

void NSTableView::mouseUp(const Ref<NSEvent>&) { isSelectingByDrag_ = false; }

void NSTableView::rightMouseDown(const Ref<NSEvent>& event) {
  const CGPoint place = convertPointFromView(event->locationInWindow(), nullptr);
  const std::optional<std::size_t> row = rowAtPoint(place);
  const Ref<NSTableViewDelegate> delegate = delegate_.lock();
  if (!row || !delegate) return NSView::rightMouseDown(event);
  const Ref<NSObject> held = shared_from_this();
  if (window()) window()->makeFirstResponder(this);
  if (!isRowSelected(*row)) selectRowIndexes(NSIndexSet(*row), Selecting::Replaces);
  if (*row >= rowCount_ || !delegate->tableViewShowMenuForRow(*this, *row, place)) NSView::rightMouseDown(event);
}

void NSTableView::selectByKey(std::size_t row, bool extends) {
  if (row >= rowCount_) return;
  if (extends && anchor_ && allowsMultipleSelection_) {
    const std::size_t anchor = *anchor_, first = std::min(anchor, row);
    selectRowIndexes(NSIndexSet(NSRange{first, std::max(anchor, row) - first + 1}), Selecting::Replaces);
    anchor_ = anchor;
  } else {
    selectRowIndexes(NSIndexSet(row), Selecting::Replaces);
    anchor_ = row;
  }
  lead_ = row;
  keyboard_.selectionDidChange();
  scrollRowToVisible(row);
}

void NSTableView::keyDown(const Ref<NSEvent>& event) {
  const Ref<NSObject> held = shared_from_this();
  if (!keyboard_.keyDown(*event)) NSView::keyDown(event);
}

void NSTableView::setHoveredRow(std::optional<std::size_t> row) {
  if (row == hoveredRow_) return;
  hoveredRow_ = row;
  if (const Ref<NSTableViewDelegate> delegate = delegate_.lock()) delegate->tableViewHoveredRowDidChange(*this, row);
}

void NSTableView::mouseMoved(const Ref<NSEvent>& event) {
  setHoveredRow(rowAtPoint(convertPointFromView(event->locationInWindow(), nullptr)));
}

void NSTableView::mouseExited(const Ref<NSEvent>&) { setHoveredRow(std::nullopt); }

void NSTableView::updateTrackingAreas() {
  NSView::updateTrackingAreas();
  setNeedsLayout(true);
  trackVisibleRect(*this, trackingArea_, NSTrackingMouseEnteredAndExited | NSTrackingMouseMoved);
}

bool NSTableView::becomeFirstResponder() {
  setNeedsDisplay(true);
  keyboard_.setHasKeys(true);
  return true;
}

bool NSTableView::resignFirstResponder() {
  setNeedsDisplay(true);
  keyboard_.setHasKeys(false);
  return true;
}

}  // namespace tessaluna::platform
