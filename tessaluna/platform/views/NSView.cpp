#include "tessaluna/platform/views/NSView.h"

#include <algorithm>
#include <utility>

#include "tessaluna/platform/foundation/memberTables.h"
#include "tessaluna/platform/interface_files/archivedLooks.h"
#include "tessaluna/platform/layout/NSLayoutConstraint.h"
#include "tessaluna/platform/views/NSClipView.h"
#include "tessaluna/platform/views/NSScrollView.h"
#include "tessaluna/platform/views/NSViewAnimator.h"
#include "tessaluna/platform/windows/NSApplication.h"
#include "tessaluna/platform/windows/NSWindow.h"

namespace tessaluna::platform {

namespace {

constexpr Property viewProperties[] = {
    property<&NSView::setFrame, "frame">(),
    property<&NSView::setFrameOrigin, "frameOrigin">(),
    property<&NSView::setFrameSize, "frameSize">(),
    property<&NSView::setBoundsOrigin, "boundsOrigin">(),
    property<&NSView::setAutoresizingMask, "autoresizingMask">(),
    property<&NSView::setAutoresizesSubviews, "autoresizesSubviews">(),
    property<&NSView::setHidden, "hidden">(),
    property<&NSView::setTintColor, "tintColor">(),
    property<&NSView::setTintGroundColor, "tintGroundColor">(),
    property<&NSView::setWantsLayer, "wantsLayer">(),
    property<&NSView::setToolTip, "toolTip">(),
    property<&NSView::setEnablesControls, "enablesControls">(),
    property<&NSView::setIdentifier, "identifier">(),
    property<&NSView::setFocusRingType, "focusRingType">(),
    property<&NSView::setUserInterfaceLayoutDirection, "userInterfaceLayoutDirection">(),
    property<&NSView::setTranslatesAutoresizingMaskIntoConstraints, "translatesAutoresizingMaskIntoConstraints">(),
    property<&NSView::setContentHuggingPriorities, "contentHuggingPriorities">(),
    property<&NSView::setContentCompressionResistancePriorities, "contentCompressionResistancePriorities">()};

constexpr InnerObjects viewInnerObjects[] = {innerObject<&NSView::addSubview>("subviews", InnerObjects::Count::Many),
                                             innerObject<&NSView::addConstraint>("constraints", InnerObjects::Count::Many)};

}  // namespace

const ClassInfo NSView::staticClassInfo{
    .name = "NSView", .base = &NSResponder::staticClassInfo, .properties = viewProperties, .innerObjects = viewInnerObjects};

NSUserInterfaceLayoutDirection NSView::userInterfaceLayoutDirection() const {
  if (layoutDirection_) return *layoutDirection_;
  return NSApp ? NSApp->userInterfaceLayoutDirection() : NSUserInterfaceLayoutDirectionLeftToRight;
}

void NSView::setUserInterfaceLayoutDirection(NSUserInterfaceLayoutDirection direction) {
  if (std::exchange(layoutDirection_, direction) == direction) return;
  layoutDirectionDidChange();
  setNeedsLayout(true);
  setNeedsDisplay(true);
}

NSView::NSView(NSCoder& coder)
    : ViewAccessibility(coder), identifier_(coder.decodeStringForKey("identifier").value_or("")) {}

NSViewAnimator NSView::animator() { return NSViewAnimator(*this); }

bool NSView::performKeyEquivalent(const Ref<NSEvent>& event) {
  const std::vector<Ref<NSView>> copy = subviews();
  for (const Ref<NSView>& view : copy)
    if (!view->isHidden() && view->performKeyEquivalent(event)) return true;
  return false;
}

namespace {

NSClipView* clipViewAbove(const NSView& view) {
  for (NSView* ancestor = view.superview(); ancestor; ancestor = ancestor->superview())
    if (auto* clip = dynamic_cast<NSClipView*>(ancestor)) return clip;
  return nullptr;
}

// How far a span of `length` at `start` has to move for a window from `low` to `high` to show it; if it is too long, to
// show its nearer end.
CGFloat leastMove(CGFloat start, CGFloat length, CGFloat low, CGFloat high) {
  const CGFloat before = start - low, after = start + length - high;
  if (before < 0 && after < 0) return std::max(before, after);
  if (before > 0 && after > 0) return std::min(before, after);
  return 0;
}

}  // namespace

NSScrollView* NSView::enclosingScrollView() const {
  for (NSView* ancestor = superview(); ancestor; ancestor = ancestor->superview())
    if (auto* scrollView = dynamic_cast<NSScrollView*>(ancestor)) return scrollView;
  return nullptr;
}

bool NSView::scrollRectToVisible(CGRect rect) {
  NSClipView* clip = clipViewAbove(*this);
  if (!clip) return false;
  const CGRect wanted = convertRectToView(rect, clip), shown = clip->bounds();
  const CGPoint before = shown.origin;
  clip->scrollToPoint({before.x + leastMove(wanted.origin.x, wanted.size.width, before.x, CGRectGetMaxX(shown)),
                       before.y + leastMove(wanted.origin.y, wanted.size.height, before.y, CGRectGetMaxY(shown))});
  return clip->bounds().origin != before;
}

void NSView::scrollPoint(CGPoint point) {
  if (NSClipView* clip = clipViewAbove(*this)) clip->scrollToPoint(convertPointToView(point, clip));
}

void NSView::noteFocusRingMaskChanged() {
  if (window()) window()->focusRingMaskDidChange(*this);
}

void NSView::setFocusRingType(NSFocusRingType type) {
  focusRingType_ = type;
  if (window()) window()->scheduleDisplay();
}

bool NSView::isLeftOut() const {
  const NSView* last = nullptr;
  for (const NSView* view = superview(); view; view = view->superview())
    if (view->leavesOutWhatItCutsOff()) last = view;
  if (!last) return false;
  layOutTree();
  CGRect rect = bounds();
  for (const NSView* view = this; view != last; view = view->superview()) {
    const NSView* above = view->superview();
    // All that scrolls counts as being where it can be scrolled to.
    rect = dynamic_cast<const NSClipView*>(above) ? above->bounds() : view->transformToSuperview().applyToRect(rect);
    if (above->leavesOutWhatItCutsOff() && NSIsEmptyRect(NSIntersectionRect(rect, above->bounds()))) return true;
  }
  return false;
}

// The end of a field's editing may have taken the view from its window already.
void NSView::windowWillChange() {
  if (window()) window()->viewWillLeave(*this);
}

}  // namespace tessaluna::platform
