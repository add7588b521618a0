#include "tessaluna/platform/views/NSTableHeaderView.h"

#include <algorithm>
#include <cmath>

#include "tessaluna/platform/accessibility/NSAccessibilityButton.h"
#include "tessaluna/platform/events/NSCursor.h"
#include "tessaluna/platform/events/NSEvent.h"
#include "tessaluna/platform/foundation/NSBundle.h"
#include "tessaluna/platform/graphics/NSBezierPath.h"
#include "tessaluna/platform/graphics/NSColor.h"
#include "tessaluna/platform/graphics/NSRect.h"
#include "tessaluna/platform/text/NSAttributedString.h"
#include "tessaluna/platform/text/NSFont.h"
#include "tessaluna/platform/text/NSParagraphStyle.h"
#include "tessaluna/platform/text/unicode.h"
#include "tessaluna/platform/views/NSTableColumn.h"
#include "tessaluna/platform/views/NSTableView.h"
#include "tessaluna/platform/windows/NSWindow.h"

namespace tessaluna::platform {

const ClassInfo NSTableHeaderView::staticClassInfo{.name = "NSTableHeaderView", .base = &NSView::staticClassInfo};

namespace {

// Beside a title, for the mark of the direction, and where an edge can be grabbed, to both sides.
constexpr CGFloat titleMargin = 4, markWidth = 14, grabWidth = 4;
constexpr CGFloat widthStep = 10;  // of keys and assistive clients

// By which the table is sorted first; null if that is another column's, or none.
const NSSortDescriptor* sortingBy(const NSTableView& table, const NSTableColumn& column) {
  const auto& sorted = table.sortDescriptors();
  const bool isFirst = !sorted.empty() && column.sortDescriptorPrototype() &&
                       sorted.front()->key() == column.sortDescriptorPrototype()->key();
  return isFirst ? sorted.front().get() : nullptr;
}

bool canBeResized(const NSTableColumn& column) { return column.isResizable() && !column.isHidden(); }
// One without a title, as above buttons, has nothing to say unless it sorts.
bool canBeGoneTo(const NSTableColumn& column) {
  return !column.isHidden() && (!column.title().empty() || column.sortDescriptorPrototype());
}

}  // namespace

// A column's header as assistive clients see it.
class NSTableHeaderView::Element : public NSObject, public NSAccessibility, public NSAccessibilityButton {
 public:
  Element(NSTableHeaderView& header, std::size_t column) : header_(&header), column_(column) {}
  void leaveHeader() { header_ = nullptr; }

  bool isAccessibilityElement() const override { return column() && canBeGoneTo(*column()); }
  std::string accessibilityRole() const override { return std::string(NSAccessibilitySortButtonRole); }
  std::string accessibilityTitle() const override { return column() ? column()->title() : std::string(); }
  // Beyond the title, which is its name otherwise: desktops know no state for this.
  std::string accessibilityLabel() const override {
    const NSSortDescriptor* sorting = column() ? sortingBy(*header_->tableView(), *column()) : nullptr;
    if (!sorting) return {};
    const std::string_view order = sorting->ascending() ? "sorted upward" : "sorted downward";
    return column()->title() + ", " + NSBundle::mainBundle()->localizedStringForKey(order);
  }
  CGRect accessibilityFrame() const override {
    if (!column() || !header_->window()) return {};
    const CGRect inWindow = header_->convertRectToView(header_->headerRectOfColumn(column_), nullptr);
    return header_->window()->convertRectToScreen(inWindow);
  }
  Ref<NSObject> accessibilityParent() const override { return column() ? header_->shared_from_this() : nullptr; }
  bool isAccessibilityFocused() const override {
    return column() && header_->isAccessibilityFocused() && header_->keyColumn() == column_;
  }
  bool accessibilityIsAttributeSettable(std::string_view attribute) const override {
    return attribute == NSAccessibilityFocusedAttribute && column() && header_->acceptsFirstResponder();
  }
  void accessibilitySetValue(const AccessibilityValue& value, std::string_view forAttribute) override {
    if (value != AccessibilityValue(true) || !accessibilityIsAttributeSettable(forAttribute) || !header_->window()) return;
    header_->setKeyColumn(column_);
    header_->window()->makeFirstResponder(header_);
  }
  std::vector<std::string> accessibilityActionNames() const override {
    std::vector<std::string> names;
    if (column() && column()->sortDescriptorPrototype()) names.emplace_back(NSAccessibilityPressAction);
    if (column() && canBeResized(*column()))
      names.insert(names.end(), {std::string(NSAccessibilityIncrementAction), std::string(NSAccessibilityDecrementAction)});
    return names;
  }
  void accessibilityPerformAction(std::string_view action) override {
    if (action == NSAccessibilityPressAction) accessibilityPerformPress();
    if (action == NSAccessibilityIncrementAction && column()) header_->resizeColumn(column_, 1);
    if (action == NSAccessibilityDecrementAction && column()) header_->resizeColumn(column_, -1);
  }
  bool accessibilityPerformPress() override { return column() && header_->tableView()->sortByColumn(column_); }

 private:
  NSTableColumn* column() const {
    NSTableView* table = header_ ? header_->tableView() : nullptr;
    return table && column_ < table->tableColumns().size() ? table->tableColumns()[column_].get() : nullptr;
  }
  NSTableHeaderView* header_;
  const std::size_t column_;
};

NSTableHeaderView::~NSTableHeaderView() {
  for (const Ref<Element>& element : elements_) element->leaveHeader();
}

void NSTableHeaderView::setTableView(NSTableView* table) {
  table_ = table;
  pressed_.reset();
  resized_.reset();
  keyColumn_.reset();
  setNeedsDisplay(true);
}

void NSTableHeaderView::sortingDidChange() {
  setNeedsDisplay(true);
  for (const Ref<Element>& element : elements_)
    NSAccessibilityPostNotification(element, NSAccessibilityTitleChangedNotification);
}

CGRect NSTableHeaderView::headerRectOfColumn(std::size_t column) const {
  if (!table_) return NSZeroRect;
  const CGRect rect = table_->rectOfColumn(column);
  return {rect.origin.x, 0, rect.size.width, bounds().size.height};
}

std::optional<std::size_t> NSTableHeaderView::columnAtPoint(CGPoint point) const {
  for (std::size_t i = 0; table_ && i < table_->tableColumns().size(); ++i)
    if (NSPointInRect(point, headerRectOfColumn(i))) return i;
  return std::nullopt;
}

CGRect NSTableHeaderView::edgeOfColumn(std::size_t column) const {
  const CGRect rect = headerRectOfColumn(column);
  return {CGRectGetMaxX(rect) - grabWidth, 0, 2 * grabWidth, rect.size.height};
}

namespace {

// The part of the header that the title takes.
struct TitlePlace {
  CGFloat left, width;
};

TitlePlace drawTitle(const NSTableColumn& column, CGRect rect, bool hasMark, const NSAttributes& attributes) {
  const NSAttributedString title(std::string_view(column.title()), attributes);
  const CGSize size = title.size();
  const bool isTrailing = column.titleEnd() == NSTableColumn::TitleEnd::Trailing;
  const CGFloat room = rect.size.width - 2 * titleMargin - (hasMark ? markWidth : 0);
  const CGFloat width = std::min(room, std::ceil(size.width));
  const CGFloat left = isTrailing ? CGRectGetMaxX(rect) - titleMargin - width : rect.origin.x + titleMargin;
  if (width > 0) title.drawInRect({left, (rect.size.height - size.height) / 2, isTrailing ? width : room, size.height});
  return {left, width};
}

// At the line of the column; without one beside the title, so that it does not seem to belong to the next.
void drawSortMark(const NSTableColumn& column, CGRect rect, TitlePlace title, bool isAscending) {
  const bool isTrailing = column.titleEnd() == NSTableColumn::TitleEnd::Trailing;
  const CGFloat end = canBeResized(column) ? CGRectGetMaxX(rect) : title.left + title.width + titleMargin + markWidth;
  const CGFloat x = (isTrailing ? title.left : end) - markWidth, y = CGRectGetMidY(rect), up = isAscending ? 2 : -2;
  const auto mark = NSBezierPath::bezierPath();
  mark->moveToPoint({x, y + up});
  mark->lineToPoint({x + 4, y - up});
  mark->lineToPoint({x + 8, y + up});
  mark->setLineWidth(1.5);
  NSColor::controlTextColor()->setStroke();
  mark->stroke();
}

}  // namespace

void NSTableHeaderView::drawRect(CGRect) {
  NSColor::controlColor()->setFill();
  NSRectFillUsingOperation(bounds(), NSCompositingOperationSourceOver);
  const auto faint = NSColor::controlTextColor()->colorWithAlphaComponent(0.2);
  const NSAttributes attributes{
      {NSFontAttributeName, NSFont::boldSystemFontOfSize(NSFont::smallSystemFontSize())},
      {NSForegroundColorAttributeName, NSColor::controlTextColor()},
      {NSParagraphStyleAttributeName, make<NSParagraphStyle>(NSTextAlignmentNatural, NSLineBreakByTruncatingTail)}};
  const auto pressed = indexOf(pressed_);
  for (std::size_t i = 0; table_ && i < table_->tableColumns().size(); ++i) {
    const NSTableColumn& column = *table_->tableColumns()[i];
    if (column.isHidden()) continue;
    const CGRect rect = headerRectOfColumn(i);
    faint->setFill();
    if (pressed == i) NSRectFillUsingOperation(rect, NSCompositingOperationSourceOver);
    // The line is where the column is dragged wider.
    if (canBeResized(column))
      NSRectFillUsingOperation({CGRectGetMaxX(rect) - 1, 3, 1, rect.size.height - 6}, NSCompositingOperationSourceOver);
    const NSSortDescriptor* sorting = sortingBy(*table_, column);
    const TitlePlace title = drawTitle(column, rect, sorting != nullptr, attributes);
    if (sorting) drawSortMark(column, rect, title, sorting->ascending());
  }
}

std::optional<std::size_t> NSTableHeaderView::indexOf(const WeakRef<NSTableColumn>& column) const {
  if (!table_ || column.expired()) return std::nullopt;
  const auto& columns = table_->tableColumns();
  const auto found = std::find(columns.begin(), columns.end(), column.lock());
  return found == columns.end() ? std::nullopt : std::optional(static_cast<std::size_t>(found - columns.begin()));
}

CGPoint NSTableHeaderView::pointOf(const NSEvent& event) const {
  return convertPointFromView(event.locationInWindow(), nullptr);
}

void NSTableHeaderView::mouseDown(const Ref<NSEvent>& event) {
  const CGPoint point = pointOf(*event);
  std::optional<std::size_t> resized, pressed;
  // From the right, so that one that is very narrow can be made wider again.
  for (std::size_t i = table_ ? table_->tableColumns().size() : 0; i-- > 0 && !resized;)
    if (canBeResized(*table_->tableColumns()[i]) && NSPointInRect(point, edgeOfColumn(i))) resized = i;
  if (resized) grabOffset_ = point.x - CGRectGetMaxX(headerRectOfColumn(*resized));
  else pressed = columnAtPoint(point);
  resized_ = resized ? table_->tableColumns()[*resized] : nullptr;
  pressed_ = pressed ? table_->tableColumns()[*pressed] : nullptr;
  setNeedsDisplay(true);
}

void NSTableHeaderView::mouseDragged(const Ref<NSEvent>& event) {
  const auto resized = indexOf(resized_);
  if (!resized) return;
  table_->tableColumns()[*resized]->setWidth(pointOf(*event).x - grabOffset_ - headerRectOfColumn(*resized).origin.x);
}

void NSTableHeaderView::mouseUp(const Ref<NSEvent>& event) {
  const Ref<NSObject> held = shared_from_this();
  const auto pressed = indexOf(std::exchange(pressed_, {}));
  setNeedsDisplay(true);
  if (table_ && pressed && columnAtPoint(pointOf(*event)) == pressed) table_->sortByColumn(*pressed);
}

void NSTableHeaderView::resetCursorRects() {
  NSView::resetCursorRects();
  for (std::size_t i = 0; table_ && i < table_->tableColumns().size(); ++i)
    if (canBeResized(*table_->tableColumns()[i])) addCursorRect(edgeOfColumn(i), NSCursor::resizeLeftRightCursor());
}

std::optional<std::size_t> NSTableHeaderView::keyColumn() const {
  const std::size_t count = table_ ? table_->tableColumns().size() : 0;
  if (keyColumn_ && *keyColumn_ < count && canBeGoneTo(*table_->tableColumns()[*keyColumn_])) return keyColumn_;
  for (std::size_t i = 0; i < count; ++i)
    if (canBeGoneTo(*table_->tableColumns()[i])) return i;
  return std::nullopt;
}

void NSTableHeaderView::setKeyColumn(std::size_t column) {
  keyColumn_ = column;
  scrollRectToVisible(headerRectOfColumn(column));
  noteFocusRingMaskChanged();
  NSAccessibilityPostNotification(shared_from_this(), NSAccessibilityFocusedUIElementChangedNotification);
}

void NSTableHeaderView::moveKeyColumn(std::ptrdiff_t from, std::ptrdiff_t step) {
  const auto count = static_cast<std::ptrdiff_t>(table_->tableColumns().size());
  for (std::ptrdiff_t column = from; column >= 0 && column < count; column += step)
    if (canBeGoneTo(*table_->tableColumns()[static_cast<std::size_t>(column)]))
      return setKeyColumn(static_cast<std::size_t>(column));
}

bool NSTableHeaderView::resizeColumn(std::size_t column, int steps) {
  if (!table_ || column >= table_->tableColumns().size() || !table_->tableColumns()[column]->isResizable()) return false;
  NSTableColumn& resized = *table_->tableColumns()[column];
  resized.setWidth(resized.width() + steps * widthStep);
  return true;
}

CGRect NSTableHeaderView::focusRingMaskBounds() const {
  const auto column = keyColumn();
  return column ? headerRectOfColumn(*column) : NSZeroRect;
}

void NSTableHeaderView::keyDown(const Ref<NSEvent>& event) {
  const auto column = keyColumn();
  constexpr std::uint32_t shortcuts = NSEventModifierFlagControl | NSEventModifierFlagOption | NSEventModifierFlagCommand;
  if (!column || (event->modifierFlags() & shortcuts)) return NSView::keyDown(event);
  const bool isShifted = event->modifierFlags() & NSEventModifierFlagShift;
  const std::ptrdiff_t last = static_cast<std::ptrdiff_t>(table_->tableColumns().size()) - 1;
  switch (firstScalar(event->charactersIgnoringModifiers())) {
    case NSLeftArrowFunctionKey:
      if (isShifted) resizeColumn(*column, -1);
      else moveKeyColumn(static_cast<std::ptrdiff_t>(*column) - 1, -1);
      return;
    case NSRightArrowFunctionKey:
      if (isShifted) resizeColumn(*column, 1);
      else moveKeyColumn(static_cast<std::ptrdiff_t>(*column) + 1, 1);
      return;
    case NSHomeFunctionKey: return moveKeyColumn(0, 1);
    case NSEndFunctionKey: return moveKeyColumn(last, -1);
    case U' ':
    case U'\r':
      if (!event->isARepeat()) table_->sortByColumn(*column);
      return;
    default: return NSView::keyDown(event);
  }
}

std::string NSTableHeaderView::accessibilityTitle() const {
  return NSBundle::mainBundle()->localizedStringForKey("Column headers");
}

std::optional<AccessibilityElements> NSTableHeaderView::accessibilityOwnChildren() const {
  const std::size_t count = table_ ? table_->tableColumns().size() : 0;
  auto& self = const_cast<NSTableHeaderView&>(*this);
  while (elements_.size() < count) elements_.push_back(make<Element>(self, elements_.size()));
  return AccessibilityElements(elements_.begin(), elements_.begin() + static_cast<std::ptrdiff_t>(count));
}

}  // namespace tessaluna::platform
