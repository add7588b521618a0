#include "tessaluna/platform/views/NSTableHeaderView.h"

#include "tessaluna/platform/accessibility/NSAccessibilityButton.h"
#include "tessaluna/platform/events/NSCursor.h"
#include "tessaluna/platform/events/NSEvent.h"
#include "tessaluna/platform/graphics/NSBezierPath.h"
#include "tessaluna/platform/graphics/NSColor.h"
#include "tessaluna/platform/graphics/NSRect.h"
#include "tessaluna/platform/text/NSAttributedString.h"
#include "tessaluna/platform/text/NSFont.h"
#include "tessaluna/platform/text/NSParagraphStyle.h"
#include "tessaluna/platform/views/NSScrollView.h"
#include "tessaluna/platform/views/NSTableColumn.h"
#include "tessaluna/platform/views/NSTableView.h"
#include "tessaluna/platform/windows/NSWindow.h"

namespace tessaluna::platform {

const ClassInfo NSTableHeaderView::staticClassInfo{.name = "NSTableHeaderView", .base = &NSView::staticClassInfo};

namespace {

// Beside a title, for the mark of the direction, and where an edge can be grabbed, to both sides.
constexpr CGFloat titleMargin = 4, markWidth = 14, grabWidth = 4;

}  // namespace

// A column's header as assistive clients see it.
class NSTableHeaderView::Element : public NSObject, public NSAccessibility, public NSAccessibilityButton {
 public:
  Element(const NSTableHeaderView& header, std::size_t column) : header_(&header), column_(column) {}
  void leaveHeader() { header_ = nullptr; }

  bool isAccessibilityElement() const override { return column() != nullptr; }
  std::string accessibilityRole() const override { return std::string(NSAccessibilitySortButtonRole); }
  std::string accessibilityTitle() const override { return column() ? column()->title() : std::string(); }
  std::string accessibilityLabel() const override { return {}; }
  CGRect accessibilityFrame() const override {
    if (!column() || !header_->window()) return {};
    const CGRect inWindow = header_->convertRectToView(header_->headerRectOfColumn(column_), nullptr);
    return header_->window()->convertRectToScreen(inWindow);
  }
  Ref<NSObject> accessibilityParent() const override {
    return column() ? std::const_pointer_cast<NSObject>(header_->shared_from_this()) : nullptr;
  }
  bool accessibilityPerformPress() override { return column() && header_->tableView()->sortByColumn(column_); }

 private:
  NSTableColumn* column() const {
    NSTableView* table = header_ ? header_->tableView() : nullptr;
    return table && column_ < table->tableColumns().size() ? table->tableColumns()[column_].get() : nullptr;
  }
  const NSTableHeaderView* header_;
  const std::size_t column_;
};

NSTableHeaderView::~NSTableHeaderView() {
  for (const Ref<Element>& element : elements_) element->leaveHeader();
}

void NSTableHeaderView::setTableView(NSTableView* table) {
  table_ = table;
  pressed_ = resized_ = std::nullopt;
  setNeedsDisplay(true);
}

CGRect NSTableHeaderView::headerRectOfColumn(std::size_t column) const {
  if (!table_) return NSZeroRect;
  const CGRect rect = table_->rectOfColumn(column);
  const NSScrollView* scrollView = table_->enclosingScrollView();
  const CGFloat scrolled = scrollView ? scrollView->contentView()->bounds().origin.x : 0;
  return {rect.origin.x - scrolled, 0, rect.size.width, bounds().size.height};
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

void NSTableHeaderView::drawRect(CGRect) {
  NSColor::controlColor()->setFill();
  NSRectFillUsingOperation(bounds(), NSCompositingOperationSourceOver);
  const auto faint = NSColor::controlTextColor()->colorWithAlphaComponent(0.2);
  const NSAttributes attributes{
      {NSFontAttributeName, NSFont::boldSystemFontOfSize(NSFont::smallSystemFontSize())},
      {NSForegroundColorAttributeName, NSColor::controlTextColor()},
      {NSParagraphStyleAttributeName, make<NSParagraphStyle>(NSTextAlignmentNatural, NSLineBreakByTruncatingTail)}};
  for (std::size_t i = 0; table_ && i < table_->tableColumns().size(); ++i) {
    const NSTableColumn& column = *table_->tableColumns()[i];
    const CGRect rect = headerRectOfColumn(i);
    faint->setFill();
    if (pressed_ == i) NSRectFillUsingOperation(rect, NSCompositingOperationSourceOver);
    NSRectFillUsingOperation({CGRectGetMaxX(rect) - 1, 3, 1, rect.size.height - 6}, NSCompositingOperationSourceOver);
    const auto& sorted = table_->sortDescriptors();
    const bool isSorted = !sorted.empty() && column.sortDescriptorPrototype() &&
                          sorted.front()->key() == column.sortDescriptorPrototype()->key();
    const NSAttributedString title(std::string_view(column.title()), attributes);
    const CGFloat height = title.size().height;
    const CGFloat width = rect.size.width - 2 * titleMargin - (isSorted ? markWidth : 0);
    if (width > 0) title.drawInRect({rect.origin.x + titleMargin, (rect.size.height - height) / 2, width, height});
    if (!isSorted) continue;
    const CGFloat x = CGRectGetMaxX(rect) - markWidth, y = CGRectGetMidY(rect), up = sorted.front()->ascending() ? 2 : -2;
    const auto mark = NSBezierPath::bezierPath();
    mark->moveToPoint({x, y + up});
    mark->lineToPoint({x + 4, y - up});
    mark->lineToPoint({x + 8, y + up});
    mark->setLineWidth(1.5);
    NSColor::controlTextColor()->setStroke();
    mark->stroke();
  }
}

CGPoint NSTableHeaderView::pointOf(const NSEvent& event) const {
  return convertPointFromView(event.locationInWindow(), nullptr);
}

void NSTableHeaderView::mouseDown(const Ref<NSEvent>& event) {
  const CGPoint point = pointOf(*event);
  pressed_ = resized_ = std::nullopt;
  // From the right, so that one that is very narrow can be made wider again.
  for (std::size_t i = table_ ? table_->tableColumns().size() : 0; i-- > 0 && !resized_;)
    if (table_->tableColumns()[i]->isResizable() && NSPointInRect(point, edgeOfColumn(i))) resized_ = i;
  if (resized_) grabOffset_ = point.x - CGRectGetMaxX(headerRectOfColumn(*resized_));
  else pressed_ = columnAtPoint(point);
  setNeedsDisplay(true);
}

void NSTableHeaderView::mouseDragged(const Ref<NSEvent>& event) {
  if (!resized_ || !table_ || *resized_ >= table_->tableColumns().size()) return;
  table_->tableColumns()[*resized_]->setWidth(pointOf(*event).x - grabOffset_ - headerRectOfColumn(*resized_).origin.x);
}

void NSTableHeaderView::mouseUp(const Ref<NSEvent>& event) {
  const Ref<NSObject> held = shared_from_this();
  const auto pressed = std::exchange(pressed_, std::nullopt);
  resized_ = std::nullopt;
  setNeedsDisplay(true);
  if (table_ && pressed && columnAtPoint(pointOf(*event)) == pressed) table_->sortByColumn(*pressed);
}

void NSTableHeaderView::resetCursorRects() {
  NSView::resetCursorRects();
  for (std::size_t i = 0; table_ && i < table_->tableColumns().size(); ++i)
    if (table_->tableColumns()[i]->isResizable()) addCursorRect(edgeOfColumn(i), NSCursor::resizeLeftRightCursor());
}

std::optional<AccessibilityElements> NSTableHeaderView::accessibilityOwnChildren() const {
  const std::size_t count = table_ ? table_->tableColumns().size() : 0;
  while (elements_.size() < count) elements_.push_back(make<Element>(*this, elements_.size()));
  return AccessibilityElements(elements_.begin(), elements_.begin() + static_cast<std::ptrdiff_t>(count));
}

}  // namespace tessaluna::platform
