#include "tessaluna/platform/events/trackVisibleRect.h"

#include <algorithm>

#include "tessaluna/platform/views/NSView.h"

namespace tessaluna::platform {

void trackVisibleRect(NSView& view, Ref<NSTrackingArea>& area, std::uint32_t events) {
  if (!area)
    area = make<NSTrackingArea>(NSZeroRect, NSTrackingInVisibleRect | NSTrackingActiveAlways | events,
                                refTo<NSResponder>(view));
  const auto& areas = view.trackingAreas();
  if (std::ranges::find(areas, area) == areas.end()) view.addTrackingArea(area);
}

}  // namespace tessaluna::platform
