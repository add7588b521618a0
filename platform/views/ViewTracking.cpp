#include "platform/views/ViewTracking.h"

#include <algorithm>

#include "platform/events/NSTrackingArea.h"
#include "platform/views/NSView.h"

namespace platform {

NSView* ViewTracking::hitTest(CGPoint point) {
  if (isHidden()) return nullptr;
  const CGPoint own = transformToSuperview().inverted()->apply(point);
  if (!NSPointInRect(own, bounds())) return nullptr;
  const std::vector<Ref<NSView>>& views = subviews();
  for (auto view = views.rbegin(); view != views.rend(); ++view)
    if (NSView* hit = (*view)->hitTest(own)) return hit;
  return &asView();
}

void ViewTracking::addTrackingArea(const Ref<NSTrackingArea>& area) { trackingAreas_.push_back(area); }

void ViewTracking::removeTrackingArea(const Ref<NSTrackingArea>& area) {
  const auto found = std::find(trackingAreas_.begin(), trackingAreas_.end(), area);
  if (found != trackingAreas_.end()) trackingAreas_.erase(found);
}

void ViewTracking::geometryDidChange() {
  ViewDrawing::geometryDidChange();
  if (window()) updateTrackingAreas();
}

}  // namespace platform
