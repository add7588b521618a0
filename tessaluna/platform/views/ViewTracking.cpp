#include "tessaluna/platform/views/ViewTracking.h"

#include <utility>

#include "tessaluna/platform/events/NSCursor.h"
#include "tessaluna/platform/events/NSTrackingArea.h"
#include "tessaluna/platform/views/NSView.h"

namespace tessaluna::platform {

NSView* ViewTracking::hitTest(CGPoint point) {
  if (isHidden()) return nullptr;
  layOutTree();
  const CGPoint own = transformToSuperview().inverted()->apply(point);
  if (!NSPointInRect(own, bounds())) return nullptr;
  for (auto view = subviews().rbegin(); view != subviews().rend(); ++view)
    if (NSView* hit = (*view)->hitTest(own)) return hit;
  return &asView();
}

void ViewTracking::setEnablesControls(bool enables) {
  if (std::exchange(enablesControls_, enables) == enables) return;
  if (superview() && !superview()->areControlsEnabled()) return;
  setNeedsDisplay(true);
  callEnablesControlsDidChange(asView());
}

bool ViewTracking::areControlsEnabled() const {
  for (const NSView* view = &asView(); view; view = view->superview())
    if (!view->enablesControls_) return false;
  return true;
}

void ViewTracking::callEnablesControlsDidChange(NSView& view) {
  const Ref<NSObject> held = view.weak_from_this().lock();
  const std::vector<Ref<NSView>> copy = view.subviews();
  view.enablesControlsDidChange();
  for (const Ref<NSView>& subview : copy)
    if (static_cast<ViewTracking&>(*subview).enablesControls_) callEnablesControlsDidChange(*subview);
}

void ViewTracking::addTrackingArea(const Ref<NSTrackingArea>& area) { trackingAreas_.push_back(area); }

void ViewTracking::removeTrackingArea(const Ref<NSTrackingArea>& area) { trackingAreas_.remove(area); }

void ViewTracking::addCursorRect(CGRect rect, const Ref<NSCursor>& cursor) { cursorRects_.push_back({rect, cursor}); }

Ref<NSCursor> ViewTracking::cursorAt(CGPoint point) const {
  for (auto entry = cursorRects_.rbegin(); entry != cursorRects_.rend(); ++entry)
    if (NSPointInRect(point, entry->rect)) return entry->cursor;
  return nullptr;
}

void ViewTracking::geometryDidChange() {
  ViewDrawing::geometryDidChange();
  visibleAreaDidChange();
}

void ViewTracking::visibleAreaDidChange() {
  areCursorRectsValid_ = false;
  if (!window()) return;
  const Ref<NSView> held = refTo(asView());
  // One that constraints have given no size yet is followed once they have.
  if (translatesAutoresizingMaskIntoConstraints() || !NSIsEmptyRect(bounds())) updateTrackingAreas();
  // What shows of the views below changes with what shows of this one.
  const std::vector<Ref<NSView>> copy = subviews();
  for (const Ref<NSView>& view : copy)
    if (view->window()) static_cast<ViewTracking&>(*view).visibleAreaDidChange();
}

}  // namespace tessaluna::platform
