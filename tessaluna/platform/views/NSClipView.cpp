#include "tessaluna/platform/views/NSClipView.h"

#include <algorithm>
#include <cmath>

#include "tessaluna/platform/events/NSEvent.h"
#include "tessaluna/platform/views/NSScrollView.h"
#include "tessaluna/platform/views/NSTableView.h"
#include "tessaluna/platform/views/PlacementScope.h"

namespace tessaluna::platform {

const ClassInfo NSClipView::staticClassInfo{.name = "NSClipView", .base = &NSView::staticClassInfo};

const Ref<NSView>& NSClipView::documentView() const {
  static const Ref<NSView> none;
  return documentView_ && documentView_->superview() == this ? documentView_ : none;
}

void NSClipView::setDocumentView(const Ref<NSView>& view) {
  const Ref<NSView> held = view;  // the reference may be that of the place which the view leaves
  if (const Ref<NSView> earlier = documentView()) earlier->removeFromSuperview();
  documentView_ = held;
  if (held) addSubview(held);
  layOutTree();
  // A document that counts upward starts with its top in sight as well.
  const bool countsUp = held && !held->isFlipped();
  scrollToPoint({0, countsUp ? std::max(0.0, held->frame().size.height - bounds().size.height) : 0});
}

CGPoint NSClipView::constrainScrollPoint(CGPoint point) const {
  if (!documentView()) return {0, 0};
  const CGRect document = documentView()->frame();
  const auto along = [](CGFloat wanted, CGFloat now, CGFloat start, CGFloat length, CGFloat shown) {
    // What is NaN would stay so at every later scroll.
    return std::clamp(std::isnan(wanted) ? now : wanted, start, std::max(start, start + length - shown));
  };
  const auto [now, shown] = bounds();
  return {along(point.x, now.x, document.origin.x, document.size.width, shown.width),
          along(point.y, now.y, document.origin.y, document.size.height, shown.height)};
}

void NSClipView::scrollToPoint(CGPoint point) {
  layOutTree();
  setBoundsOrigin(constrainScrollPoint(point));
}

void NSClipView::setBoundsOrigin(CGPoint origin) {
  NSView::setBoundsOrigin(origin);
  if (constrainScrollPoint(origin) != origin) setNeedsLayout(true);
  contentDidChange();
}

CGRect NSClipView::documentVisibleRect() const {
  const Ref<NSView>& document = documentView();
  return document ? NSIntersectionRect(document->convertRectFromView(bounds(), this), document->bounds()) : NSZeroRect;
}

void NSClipView::mouseDown(const Ref<NSEvent>& event) {
  const Ref<NSView> document = documentView();
  const bool isBelow =
      document && convertPointFromView(event->locationInWindow(), nullptr).y >= CGRectGetMaxY(document->frame());
  if (isBelow && dynamic_cast<const NSTableView*>(document.get())) document->mouseDown(event);
  else NSView::mouseDown(event);
}

// Whichever of the two changed, the document reaches only so far.
void NSClipView::layout() {
  NSView::layout();
  layOutTree();
  {
    const PlacementScope placement(*this);
    NSView::setBoundsOrigin(constrainScrollPoint(bounds().origin));
  }
  contentDidChange();
}

void NSClipView::subviewFrameDidChange(NSView& view) {
  if (&view == documentView().get()) setNeedsLayout(true);
}

// Without a document there is nothing to scroll.
void NSClipView::willRemoveSubview(NSView& view) {
  if (&view == documentView().get()) setNeedsLayout(true);
}

void NSClipView::contentDidChange() {
  if (documentView()) documentView()->prepareContentInRect(documentVisibleRect());
  if (auto* scrollView = dynamic_cast<NSScrollView*>(superview())) scrollView->reflectScrolledClipView(*this);
}

}  // namespace tessaluna::platform
