#include "tessaluna/platform/accessibility/textPlaces.h"

#include <algorithm>

#include "tessaluna/platform/accessibility/names.h"
#include "tessaluna/platform/graphics/NSRect.h"
#include "tessaluna/platform/views/NSView.h"
#include "tessaluna/platform/windows/NSWindow.h"

namespace tessaluna::platform {

AccessibilityValue textPlaceValue(std::string_view attribute, const AccessibilityValue& parameter, const NSView& view,
                                  const TextPlaces& places) {
  const NSWindow* window = view.window();
  if (!window) return {};
  const auto* range = parameter.as<NSRange>();
  if (range && attribute == NSAccessibilityBoundsForRangeParameterizedAttribute) {
    const std::size_t start = std::min(range->location, places.length);
    const std::vector<CGRect> rects = places.rectsOf({start, std::min(range->length, places.length - start)});
    CGRect frame = rects.empty() ? places.caretAt(start) : rects.front();
    for (const CGRect& rect : rects) frame = NSUnionRect(frame, rect);
    return window->convertRectToScreen(view.convertRectToView(frame, nullptr));
  }
  const auto* onScreen = parameter.as<CGPoint>();
  if (onScreen && attribute == NSAccessibilityRangeForPositionParameterizedAttribute) {
    const CGPoint point = view.convertPointFromView(window->convertPointFromScreen(*onScreen), nullptr);
    if (!NSPointInRect(point, view.visibleRect())) return {};
    const std::size_t index = places.nearestCharacterTo(point);
    if (index >= places.length) return {};
    const NSRange nearest{index, 1};
    for (const CGRect& rect : places.rectsOf(nearest))
      if (NSPointInRect(point, rect)) return nearest;
  }
  return {};
}

}  // namespace tessaluna::platform
