#include "tessaluna/uikit/trackrow/TrackRowControl.h"

#include <algorithm>
#include <utility>

#include "tessaluna/platform/events/NSEvent.h"
#include "tessaluna/platform/events/NSTrackingArea.h"
#include "tessaluna/platform/foundation/memberTables.h"

namespace TessalunaUIKit {

using namespace tessaluna::platform;

namespace {

constexpr Property properties[] = {property<&TrackRowControl::setHasMouseOnRow, "hasMouseOnRow">(),
                                   property<&TrackRowControl::setIsPressed, "isPressed">()};

}  // namespace

const ClassInfo TrackRowControl::staticClassInfo{
    .name = "TessalunaUIKit.TrackRowControl", .base = &NSView::staticClassInfo, .properties = properties};

void TrackRowControl::viewDidHide() { isPressed_ = false; }

void TrackRowControl::updateTrackingAreas() {
  NSView::updateTrackingAreas();
  if (!trackingArea_) {
    // It follows the visible rectangle, so that one area serves for the life of the control, in any window.
    constexpr auto options = NSTrackingInVisibleRect | NSTrackingActiveAlways | NSTrackingMouseEnteredAndExited;
    trackingArea_ = make<NSTrackingArea>(NSZeroRect, options, refTo<NSResponder>(*this));
  }
  const auto& areas = trackingAreas();
  if (std::find(areas.begin(), areas.end(), trackingArea_) == areas.end()) addTrackingArea(trackingArea_);
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
  isPressed_ = true;
  setNeedsDisplay(true);
}

void TrackRowControl::mouseDragged(const Ref<NSEvent>& event) {
  const CGPoint point = convertPointFromView(event->locationInWindow(), nullptr);
  const bool isInside = NSPointInRect(point, bounds());
  if (std::exchange(mouseInside_, isInside) != isInside) setNeedsDisplay(true);
}

void TrackRowControl::mouseUp(const Ref<NSEvent>&) {
  // The target may let the control, or itself, go.
  const Ref<NSView> held = refTo<NSView>(*this);
  if (const Ref<TrackListRowActionTarget> target = target_; isPressed_ && mouseInside_ && target) tellTarget(*target);
  isPressed_ = false;
  setNeedsDisplay(true);
}

}  // namespace TessalunaUIKit
