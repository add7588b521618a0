#include "tessaluna/platform/views/ViewTracking.h"

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
  updateTrackingAreas();
  // What shows of the views below changes with what shows of this one.
  const std::vector<Ref<NSView>> copy = subviews();
  for (const Ref<NSView>& view : copy)
    if (view->window()) static_cast<ViewTracking&>(*view).visibleAreaDidChange();
}

}  // namespace tessaluna::platform
