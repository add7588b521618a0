#include "tessaluna/uikit/trackrow/TrackRowControl.h"

#include <utility>

#include "tessaluna/platform/events/NSEvent.h"
#include "tessaluna/platform/events/trackVisibleRect.h"
#include "tessaluna/platform/foundation/AtEndOfScope.h"
#include "tessaluna/platform/foundation/memberTables.h"

namespace TessalunaUIKit {

using namespace tessaluna::platform;

namespace {

constexpr Property properties[] = {property<&TrackRowControl::setHasMouseOnRow, "hasMouseOnRow">(),
                                   property<&TrackRowControl::setIsPressed, "isPressed">()};

}  // namespace

const ClassInfo TrackRowControl::staticClassInfo{
    .name = "TessalunaUIKit.TrackRowControl", .base = &NSView::staticClassInfo, .properties = properties};

bool TrackRowControl::isAccessibilityElement() const {
  return !accessibilityAttributeValue(NSAccessibilityDescriptionAttribute).isAbsent();
}

std::string TrackRowControl::accessibilityRole() const {
  return isAccessibilityElement() ? std::string(NSAccessibilityButtonRole) : NSView::accessibilityRole();
}

std::vector<std::string> TrackRowControl::accessibilityActionNames() const {
  if (!isAccessibilityElement()) return NSView::accessibilityActionNames();
  return {std::string(NSAccessibilityPressAction)};
}

void TrackRowControl::accessibilityPerformAction(std::string_view action) {
  if (action != NSAccessibilityPressAction || !isAccessibilityElement() || !areControlsEnabled()) return;
  isPressed_ = true;
  endPress(target_);
}

void TrackRowControl::viewDidHide() { isPressed_ = false; }

void TrackRowControl::enablesControlsDidChange() {
  if (!areControlsEnabled()) isPressed_ = false;
  if (isAccessibilityElement())
    NSAccessibilityPostNotification(refTo<NSObject>(*this), NSAccessibilityEnabledChangedNotification);
}

void TrackRowControl::updateTrackingAreas() {
  NSView::updateTrackingAreas();
  trackVisibleRect(*this, trackingArea_, NSTrackingMouseEnteredAndExited);
}

void TrackRowControl::mouseEntered(const Ref<NSEvent>&) {
  mouseInside_ = true;
  setNeedsDisplay(true);
}

void TrackRowControl::mouseExited(const Ref<NSEvent>&) {
  mouseInside_ = false;
  setNeedsDisplay(true);
}

void TrackRowControl::mouseDown(const Ref<NSEvent>&) {
  isPressed_ = areControlsEnabled();
  setNeedsDisplay(true);
}

void TrackRowControl::mouseDragged(const Ref<NSEvent>& event) {
  const CGPoint point = convertPointFromView(event->locationInWindow(), nullptr);
  const bool isInside = NSPointInRect(point, bounds());
  if (std::exchange(mouseInside_, isInside) != isInside) setNeedsDisplay(true);
}

void TrackRowControl::mouseUp(const Ref<NSEvent>&) { endPress(isPressed_ && mouseInside_ ? target_ : nullptr); }

void TrackRowControl::endPress(Ref<TrackListRowActionTarget> clicked) {
  // The target may let the control, or itself, go.
  const Ref<NSView> held = refTo<NSView>(*this);
  const AtEndOfScope end([this] {
    isPressed_ = false;
    setNeedsDisplay(true);
  });
  if (clicked) notifyTarget(*clicked);
}

}  // namespace TessalunaUIKit
