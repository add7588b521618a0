#include "tessaluna/platform/views/ViewGeometry.h"

#include <algorithm>
#include <utility>

#include "tessaluna/platform/foundation/NSCoder.h"
#include "tessaluna/platform/time/PropertyAnimation.h"
#include "tessaluna/platform/views/NSView.h"
#include "tessaluna/platform/views/PlacementScope.h"
#include "tessaluna/platform/windows/NSWindow.h"

namespace tessaluna::platform {

ViewGeometry::ViewGeometry(CGRect frame) : frame_(frame), bounds_({0, 0}, frame.size) {}

ViewGeometry::ViewGeometry(NSCoder& coder) : NSResponder(coder) {
  frame_ = coder.decodeRectForKey("frame");
  bounds_ = {{0, 0}, frame_.size};
  autoresizingMask_ = static_cast<std::uint32_t>(coder.decodeIntegerForKey("autoresizingMask"));
  if (coder.containsValueForKey("autoresizesSubviews")) autoresizesSubviews_ = coder.decodeBoolForKey("autoresizesSubviews");
}

ViewGeometry::~ViewGeometry() {
  // Subviews may outlive this view in somebody else's hands; their way up ends here.
  for (const Ref<NSView>& view : subviews_) {
    view->moveToWindow(nullptr);
    static_cast<ViewGeometry&>(*view).superview_ = nullptr;
  }
}

NSView& ViewGeometry::asView() { return static_cast<NSView&>(*this); }
const NSView& ViewGeometry::asView() const { return static_cast<const NSView&>(*this); }

void ViewGeometry::addSubview(const Ref<NSView>& view) {
  if (!view || asView().isDescendantOf(view.get())) return;
  const Ref<NSView> held = view;  // the reference may be its window's own, which becomes null
  held->removeFromSuperview();
  static_cast<ViewGeometry&>(*held).superview_ = &asView();
  subviews_.push_back(held);
  held->moveToWindow(window_);
  static_cast<ViewGeometry&>(*held).geometryDidChange();
  static_cast<ViewLayout&>(*held).cameIntoSuperview();
  static_cast<ViewConstraints&>(*held).cameIntoSuperview();
}

void ViewGeometry::removeFromSuperview() {
  if (!superview_) {
    // A content view has its window instead.
    if (window_ && window_->contentView().get() == &asView()) window_->setContentView(nullptr);
    return;
  }
  const Ref<NSView> held = refTo(asView());
  geometryWillChange();
  moveToWindow(nullptr);
  if (!superview_) return;  // a callback was first
  superview_->willRemoveSubview(asView());
  static_cast<ViewConstraints&>(asView()).willLeaveSuperview();
  static_cast<ViewLayout&>(asView()).willLeaveSuperview();
  static_cast<ViewGeometry&>(*superview_).subviews_.remove(held);
  superview_ = nullptr;
}

bool ViewGeometry::isDescendantOf(const NSView* view) const {
  for (const NSView* ancestor = &asView(); ancestor; ancestor = ancestor->superview())
    if (ancestor == view) return true;
  return false;
}

NSResponder* ViewGeometry::nextResponder() const {
  if (NSResponder* set = NSResponder::nextResponder()) return set;
  if (superview_) return superview_;
  return window_;
}

void ViewGeometry::moveToWindow(NSWindow* window) {
  if (window_ == window) return;
  const Ref<NSView> held = refTo(asView());
  if (window_) windowWillChange();
  window_ = window;
  // Whoever is notified may take a subview out, or bring this view into another window.
  const std::vector<Ref<NSView>> copy = subviews_;
  for (const Ref<NSView>& view : copy)
    if (window_ == window && view->superview() == &asView()) view->moveToWindow(window);
  if (window_ != window) return;
  // What the desktop has changed while the view was in no window.
  if (window && std::exchange(appearanceChanges_, effectiveAppearanceChanges()) != effectiveAppearanceChanges()) {
    asView().invalidateIntrinsicContentSize();
    asView().setNeedsLayout(true);
  }
  viewDidMoveToWindow();
}

void ViewGeometry::setFrame(CGRect frame) {
  // What moves on its own is not stopped half way because the superview is resized, or constraints have a place for it.
  if (!PlacementScope::isPlacing(asView())) propertyWillBeSet<&NSView::setFrame>(*this);
  if (frame == frame_) return;
  const CGSize oldSize = frame_.size;
  geometryWillChange();
  frame_ = frame;
  bounds_.size = frame.size;
  geometryDidChange();
  if (autoresizesSubviews_ && frame.size != oldSize) resizeSubviewsWithOldSize(oldSize);
  static_cast<ViewConstraints&>(asView()).frameDidChange();
  // Only now: what reads places in between must not lay out what is resized here.
  if (frame.size != oldSize) static_cast<ViewLayout&>(asView()).sizeDidChange();
  if (superview_) superview_->subviewFrameDidChange(asView());
}

void ViewGeometry::setBoundsOrigin(CGPoint origin) {
  if (!PlacementScope::isPlacing(asView())) propertyWillBeSet<&NSView::setBoundsOrigin>(*this);
  if (bounds_.origin == origin) return;
  bounds_.origin = origin;
  geometryDidChange();
}

CGRect ViewGeometry::visibleRect() const {
  static_cast<const ViewLayout&>(asView()).layOutTree();
  return visibleRectNow();
}

CGRect ViewGeometry::visibleRectNow() const {
  CGRect visible = bounds_;
  CGAffineTransform up = transformToSuperview();
  for (const NSView* view = superview_; view; view = view->superview()) {
    visible = NSIntersectionRect(visible, up.inverted()->applyToRect(view->bounds()));
    up = up.then(view->transformToSuperview());
  }
  return visible;
}

CGAffineTransform ViewGeometry::transformToSuperview() const {
  const bool isSuperviewFlipped = superview_ && superview_->isFlipped();
  const CGFloat x = CGRectGetMinX(frame_) - bounds_.origin.x;
  if (asView().isFlipped() == isSuperviewFlipped)
    return CGAffineTransform::translation(x, CGRectGetMinY(frame_) - bounds_.origin.y);
  // The two count y against each other: this view's first line is the frame's last.
  return {1, 0, 0, -1, x, CGRectGetMaxY(frame_) + bounds_.origin.y};
}

CGAffineTransform ViewGeometry::transformToWindow() const {
  CGAffineTransform transform = transformToSuperview();
  for (const NSView* view = superview_; view; view = view->superview())
    transform = transform.then(view->transformToSuperview());
  return transform;
}

// Views are never flattened, so the way down always exists.
CGAffineTransform ViewGeometry::transformToView(const NSView* view) const {
  static_cast<const ViewLayout&>(asView()).layOutTree();
  const CGAffineTransform up = transformToWindow();
  return view ? up.then(*view->transformToWindow().inverted()) : up;
}

CGPoint ViewGeometry::convertPointToView(CGPoint point, const NSView* view) const {
  return transformToView(view).apply(point);
}

CGPoint ViewGeometry::convertPointFromView(CGPoint point, const NSView* view) const {
  return transformToView(view).inverted()->apply(point);
}

CGRect ViewGeometry::convertRectToView(CGRect rect, const NSView* view) const {
  return transformToView(view).applyToRect(rect);
}

CGRect ViewGeometry::convertRectFromView(CGRect rect, const NSView* view) const {
  return transformToView(view).inverted()->applyToRect(rect);
}

void ViewGeometry::setAutoresizesSubviews(bool does) {
  if (std::exchange(autoresizesSubviews_, does) == does) return;
  for (const Ref<NSView>& view : subviews_) static_cast<ViewConstraints&>(*view).maskDidChange();
}

void ViewGeometry::setAutoresizingMask(std::uint32_t mask) {
  if (std::exchange(autoresizingMask_, mask) != mask) static_cast<ViewConstraints&>(asView()).maskDidChange();
}

void ViewGeometry::resizeSubviewsWithOldSize(CGSize oldSize) {
  const std::vector<Ref<NSView>> copy = subviews_;
  for (const Ref<NSView>& view : copy) view->resizeWithOldSuperviewSize(oldSize);
}

namespace {

struct Extent {
  CGFloat origin, length;
};

struct Flexible {
  bool before, inside, after;
};

// The change of the superview's length is shared by the flexible parts in proportion to what they measure; where they all
// measure nothing, in equal parts.
Extent resized(Extent extent, Flexible flexible, CGFloat oldLength, CGFloat newLength) {
  const CGFloat after = oldLength - extent.origin - extent.length;
  const CGFloat parts[] = {flexible.before ? extent.origin : 0, flexible.inside ? extent.length : 0,
                           flexible.after ? after : 0};
  const int count = flexible.before + flexible.inside + flexible.after;
  if (count == 0) return extent;
  const CGFloat total = parts[0] + parts[1] + parts[2], change = newLength - oldLength;
  const auto share = [&](bool isFlexible, CGFloat part) {
    if (!isFlexible) return 0.0;
    return total != 0 ? change * part / total : change / count;
  };
  extent.origin += share(flexible.before, parts[0]);
  extent.length += share(flexible.inside, parts[1]);
  return extent;
}

}  // namespace

void ViewGeometry::resizeWithOldSuperviewSize(CGSize oldSize) {
  if (!superview_ || autoresizingMask_ == NSViewNotSizable) return;
  if (static_cast<ViewConstraints&>(asView()).isPlacedByConstraints()) return;
  const auto has = [this](std::uint32_t bit) { return (autoresizingMask_ & bit) != 0; };
  const CGSize newSize = superview_->bounds().size;
  const Extent x =
      resized({frame_.origin.x, frame_.size.width}, {has(NSViewMinXMargin), has(NSViewWidthSizable), has(NSViewMaxXMargin)},
              oldSize.width, newSize.width);
  const Extent y =
      resized({frame_.origin.y, frame_.size.height},
              {has(NSViewMinYMargin), has(NSViewHeightSizable), has(NSViewMaxYMargin)}, oldSize.height, newSize.height);
  const PlacementScope placement(asView());
  asView().setFrame({x.origin, y.origin, x.length, y.length});
}

}  // namespace tessaluna::platform
