#include "tessaluna/platform/views/NSScrollView.h"

#include <algorithm>
#include <cmath>

#include "tessaluna/platform/events/NSEvent.h"
#include "tessaluna/platform/foundation/NSCoder.h"
#include "tessaluna/platform/foundation/memberTables.h"
#include "tessaluna/platform/graphics/NSBezierPath.h"
#include "tessaluna/platform/graphics/NSColor.h"
#include "tessaluna/platform/graphics/NSRect.h"
#include "tessaluna/platform/views/NSScroller.h"
#include "tessaluna/platform/views/NSTableHeaderView.h"
#include "tessaluna/platform/views/NSTableView.h"
#include "tessaluna/platform/windows/NSWindow.h"

namespace tessaluna::platform {

const Selector NSScrollView::selectors_[] = {action<&NSScrollView::scrollerMoved>("scrollerMoved:")};

namespace {

constexpr Property scrollViewProperties[] = {property<&NSScrollView::setHasVerticalScroller, "hasVerticalScroller">(),
                                             property<&NSScrollView::setHasHorizontalScroller, "hasHorizontalScroller">(),
                                             property<&NSScrollView::setAutohidesScrollers, "autohidesScrollers">(),
                                             property<&NSScrollView::setBorderType, "borderType">(),
                                             property<&NSScrollView::setDrawsBackground, "drawsBackground">()};

constexpr InnerObjects scrollViewInnerObjects[] = {innerObject<&NSScrollView::setDocumentView>("documentView")};

}  // namespace

const ClassInfo NSScrollView::staticClassInfo{.name = "NSScrollView",
                                              .base = &NSView::staticClassInfo,
                                              .selectors = NSScrollView::selectors_,
                                              .properties = scrollViewProperties,
                                              .innerObjects = scrollViewInnerObjects};

NSScrollView::NSScrollView(CGRect frame) : NSView(frame), clipView_(make<NSClipView>(CGRect{{0, 0}, frame.size})) {
  addSubview(clipView_);
}

NSScrollView::NSScrollView(NSCoder& coder) : NSView(coder), clipView_(make<NSClipView>(CGRect{{0, 0}, bounds().size})) {
  addSubview(clipView_);
  setHasVerticalScroller(coder.decodeBoolForKey("hasVerticalScroller"));
  setHasHorizontalScroller(coder.decodeBoolForKey("hasHorizontalScroller"));
  autohidesScrollers_ = coder.decodeBoolForKey("autohidesScrollers");
  drawsBackground_ = !coder.containsValueForKey("drawsBackground") || coder.decodeBoolForKey("drawsBackground");
}

void NSScrollView::didInit() {
  NSView::didInit();
  for (const Ref<NSScroller>& scroller : {verticalScroller_, horizontalScroller_})
    if (scroller) scroller->setTarget(refTo(*this));
}

void NSScrollView::setHas(bool has, Ref<NSScroller>& scroller) {
  if (has == (scroller != nullptr)) return;
  if (has) {
    scroller = make<NSScroller>(CGRect{});
    scroller->setAction("scrollerMoved:");
    if (weak_from_this().lock()) scroller->setTarget(refTo(*this));
    addSubview(scroller);
  } else {
    scroller->removeFromSuperview();
    scroller = nullptr;
  }
  setNeedsLayout(true);
}

void NSScrollView::setHasVerticalScroller(bool has) { setHas(has, verticalScroller_); }
void NSScrollView::setHasHorizontalScroller(bool has) { setHas(has, horizontalScroller_); }

void NSScrollView::setAutohidesScrollers(bool hides) {
  autohidesScrollers_ = hides;
  setNeedsLayout(true);
}

void NSScrollView::setBorderType(NSBorderType type) {
  borderType_ = type;
  setNeedsLayout(true);
}

void NSScrollView::layout() {
  NSView::layout();
  tile();
}

void NSScrollView::tile() {
  placeBarsAndClipView();
  // A document that follows the clip view's size may no longer need the bar that it made room for.
  if (areBarsOutdated()) placeBarsAndClipView();
  updateScrollers();
}

CGRect NSScrollView::inside() const {
  const CGFloat border = borderType_ == NSNoBorder ? 0 : 1;
  return NSInsetRect(bounds(), border, border);
}

Ref<NSView> NSScrollView::headerOfDocument() const {
  const auto* table = dynamic_cast<const NSTableView*>(documentView().get());
  return table ? table->headerView() : nullptr;
}

CGFloat NSScrollView::headerHeight() const {
  constexpr CGFloat usual = 22;
  const Ref<NSView> header = headerOfDocument();
  if (!header) return 0;
  return header->frame().size.height > 0 ? header->frame().size.height : usual;
}

CGRect NSScrollView::insideBelowHeader() const {
  CGRect rest = inside();
  const CGFloat header = std::min(headerHeight(), rest.size.height);
  return {rest.origin.x, rest.origin.y + header, rest.size.width, rest.size.height - header};
}

NSScrollView::Bars NSScrollView::neededBars() const {
  const CGSize room = insideBelowHeader().size, document = documentView() ? documentView()->frame().size : CGSize{};
  const auto needs = [&](const Ref<NSScroller>& scroller, CGFloat length, CGFloat shown) {
    return scroller && (!autohidesScrollers_ || length > shown);
  };
  // Each bar takes room from the other's way.
  Bars bars;
  bars.vertical = needs(verticalScroller_, document.height, room.height);
  bars.horizontal =
      needs(horizontalScroller_, document.width, room.width - (bars.vertical ? NSScroller::scrollerWidth() : 0));
  if (bars.horizontal) bars.vertical = needs(verticalScroller_, document.height, room.height - NSScroller::scrollerWidth());
  return bars;
}

bool NSScrollView::areBarsOutdated() const {
  const Bars needed = neededBars();
  return (verticalScroller_ && verticalScroller_->isHidden() == needed.vertical) ||
         (horizontalScroller_ && horizontalScroller_->isHidden() == needed.horizontal);
}

void NSScrollView::placeBarsAndClipView() {
  const Bars needed = neededBars();
  const CGFloat bar = NSScroller::scrollerWidth();
  CGRect content = insideBelowHeader();
  if (needed.vertical) content.size.width = std::max(0.0, content.size.width - bar);
  if (needed.horizontal) content.size.height = std::max(0.0, content.size.height - bar);
  if (verticalScroller_) {
    verticalScroller_->setHidden(!needed.vertical);
    verticalScroller_->setFrame({CGRectGetMaxX(content), content.origin.y, bar, content.size.height});
  }
  if (horizontalScroller_) {
    horizontalScroller_->setHidden(!needed.horizontal);
    horizontalScroller_->setFrame({content.origin.x, CGRectGetMaxY(content), content.size.width, bar});
  }
  clipView_->setFrame(content);
  placeHeader();
}

void NSScrollView::placeHeader() {
  const Ref<NSView> header = headerOfDocument();
  if (!header) {
    if (headerClipView_) headerClipView_->removeFromSuperview();
    headerClipView_ = nullptr;
    return;
  }
  if (!headerClipView_) {
    headerClipView_ = make<NSClipView>(NSZeroRect);
    addSubview(headerClipView_);
  }
  const CGRect rows = clipView_->frame(), room = inside();
  const CGFloat height = std::min(headerHeight(), room.size.height);
  headerClipView_->setFrame({room.origin.x, room.origin.y, room.size.width, height});
  if (headerClipView_->documentView() != header) headerClipView_->setDocumentView(header);
  // Over a vertical bar it reaches as far as over the rows, to be scrolled as far as these.
  const CGFloat width = std::max(documentView()->frame().size.width, rows.size.width) + room.size.width - rows.size.width;
  header->setFrame({0, 0, width, headerHeight()});
}

namespace {

void reflect(const Ref<NSScroller>& scroller, CGFloat start, CGFloat length, CGFloat offset, CGFloat shown) {
  if (!scroller) return;
  const CGFloat way = length - shown;
  scroller->setKnobProportion(length > 0 ? shown / length : 1);
  scroller->setDoubleValue(way > 0 ? (offset - start) / way : 0);
}

}  // namespace

void NSScrollView::reflectScrolledClipView(NSClipView& clipView) {
  // What scrolls the header, as the keys in it do, scrolls the rows.
  if (&clipView == headerClipView_.get()) {
    const CGFloat rowsStart = documentView() ? documentView()->frame().origin.x : 0;
    clipView_->scrollToPoint({rowsStart + clipView.bounds().origin.x, clipView_->bounds().origin.y});
    return;
  }
  const Ref<NSView> header = headerClipView_ ? headerClipView_->documentView() : nullptr;
  if (areBarsOutdated() || header != headerOfDocument()) setNeedsLayout(true);
  else updateScrollers();
}

void NSScrollView::updateScrollers() {
  const CGRect document = documentView() ? documentView()->frame() : NSZeroRect, shown = clipView_->bounds();
  // A document that counts upward has its start, and so the bar's, at the top.
  const CGFloat fromTop =
      clipView_->isFlipped() ? shown.origin.y : 2 * document.origin.y + document.size.height - CGRectGetMaxY(shown);
  reflect(verticalScroller_, document.origin.y, document.size.height, fromTop, shown.size.height);
  reflect(horizontalScroller_, document.origin.x, document.size.width, shown.origin.x, shown.size.width);
  // Nothing is reported of this: a header that does not reach as far as the rows would scroll them back.
  if (headerClipView_)
    headerClipView_->NSView::setBoundsOrigin(headerClipView_->constrainScrollPoint({shown.origin.x - document.origin.x, 0}));
}

void NSScrollView::scrollerMoved(NSObject* sender) {
  auto* scroller = dynamic_cast<NSScroller*>(sender);
  if (!scroller || !documentView()) return;
  const CGRect document = documentView()->frame(), shown = clipView_->bounds();
  const bool isVertical = scroller == verticalScroller_.get();
  const CGFloat page = isVertical ? shown.size.height : shown.size.width;
  const CGFloat way = (isVertical ? document.size.height : document.size.width) - page;
  CGFloat offset = scroller->doubleValue() * way;
  if (scroller->hitPart() == NSScroller::Part::PageBefore) offset -= page * 0.9;
  if (scroller->hitPart() == NSScroller::Part::PageAfter) offset += page * 0.9;
  CGPoint origin = shown.origin;
  if (!isVertical) origin.x = document.origin.x + offset;
  else origin.y = document.origin.y + (clipView_->isFlipped() ? offset : way - offset);
  scrollByUser(origin);
}

void NSScrollView::scrollByUser(CGPoint origin) {
  const CGPoint before = clipView_->bounds().origin;
  clipView_->scrollToPoint(origin);
  if (window() && clipView_->bounds().origin != before) window()->contentWasScrolledByUser(*clipView_);
}

void NSScrollView::scrollWheel(const Ref<NSEvent>& event) {
  const CGPoint before = clipView_->bounds().origin;
  const CGFloat down = clipView_->isFlipped() ? -event->scrollingDeltaY() : event->scrollingDeltaY();
  const CGPoint wanted{before.x - event->scrollingDeltaX(), before.y + down};
  const CGPoint reached = clipView_->constrainScrollPoint({wanted.x + wheelRest_.width, wanted.y + wheelRest_.height});
  // At the end of its way a scroll view leaves the wheel to the one around it.
  if (reached == before && clipView_->constrainScrollPoint(wanted) == before) {
    wheelRest_ = {};
    NSView::scrollWheel(event);
    return;
  }
  // To whole points, so that what is on them stays sharp; a wheel that turns in smaller steps adds up.
  const CGPoint place = clipView_->constrainScrollPoint({std::round(reached.x), std::round(reached.y)});
  wheelRest_ = {reached.x - place.x, reached.y - place.y};
  scrollByUser(place);
}

void NSScrollView::setDrawsBackground(bool draws) {
  drawsBackground_ = draws;
  setNeedsDisplay(true);
}

void NSScrollView::drawRect(CGRect rect) {
  if (drawsBackground_) {
    NSColor::controlBackgroundColor()->setFill();
    NSRectFillUsingOperation(rect, NSCompositingOperationSourceOver);
  }
  if (borderType_ == NSNoBorder) return;
  NSColor::controlTextColor()->colorWithAlphaComponent(0.2)->setStroke();
  NSBezierPath::bezierPathWithRect(NSInsetRect(bounds(), 0.5, 0.5))->stroke();
}

}  // namespace tessaluna::platform
