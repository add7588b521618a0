#include "tessaluna/platform/foundation/Geometry.h"

#include <algorithm>

namespace tessaluna::platform {

namespace {

CGRect fromEdges(CGFloat minX, CGFloat minY, CGFloat maxX, CGFloat maxY) { return {minX, minY, maxX - minX, maxY - minY}; }

}  // namespace

void NSDivideRect(CGRect rect, CGRect& slice, CGRect& remainder, CGFloat amount, NSRectEdge edge) {
  const bool isAcross = edge == NSMinXEdge || edge == NSMaxXEdge, isAtEnd = edge == NSMaxXEdge || edge == NSMaxYEdge;
  const CGFloat length = isAcross ? rect.size.width : rect.size.height;
  const CGFloat taken = std::clamp(amount, 0.0, std::max(0.0, length));
  // The part from `start` on, `size` long.
  const auto part = [&](CGFloat start, CGFloat size) {
    return isAcross ? CGRect{rect.origin.x + start, rect.origin.y, size, rect.size.height}
                    : CGRect{rect.origin.x, rect.origin.y + start, rect.size.width, size};
  };
  const CGRect cut = part(isAtEnd ? length - taken : 0, taken);
  remainder = part(isAtEnd ? 0 : taken, length - taken);
  slice = cut;
}

CGRect NSUnionRect(CGRect a, CGRect b) {
  if (NSIsEmptyRect(a)) return NSIsEmptyRect(b) ? NSZeroRect : b;
  if (NSIsEmptyRect(b)) return a;
  return fromEdges(std::min(CGRectGetMinX(a), CGRectGetMinX(b)), std::min(CGRectGetMinY(a), CGRectGetMinY(b)),
                   std::max(CGRectGetMaxX(a), CGRectGetMaxX(b)), std::max(CGRectGetMaxY(a), CGRectGetMaxY(b)));
}

CGRect NSIntersectionRect(CGRect a, CGRect b) {
  if (NSIsEmptyRect(a) || NSIsEmptyRect(b)) return NSZeroRect;
  const CGRect common =
      fromEdges(std::max(CGRectGetMinX(a), CGRectGetMinX(b)), std::max(CGRectGetMinY(a), CGRectGetMinY(b)),
                std::min(CGRectGetMaxX(a), CGRectGetMaxX(b)), std::min(CGRectGetMaxY(a), CGRectGetMaxY(b)));
  return NSIsEmptyRect(common) ? NSZeroRect : common;
}

bool NSIntersectsRect(CGRect a, CGRect b) { return !NSIsEmptyRect(NSIntersectionRect(a, b)); }

bool NSContainsRect(CGRect a, CGRect b) {
  return !NSIsEmptyRect(b) && CGRectGetMinX(b) >= CGRectGetMinX(a) && CGRectGetMinY(b) >= CGRectGetMinY(a) &&
         CGRectGetMaxX(b) <= CGRectGetMaxX(a) && CGRectGetMaxY(b) <= CGRectGetMaxY(a);
}

}  // namespace tessaluna::platform
