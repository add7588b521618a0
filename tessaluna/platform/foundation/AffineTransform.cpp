#include "tessaluna/platform/foundation/AffineTransform.h"

#include <algorithm>
#include <cmath>

namespace tessaluna::platform {

std::optional<CGAffineTransform> CGAffineTransform::inverted() const {
  const CGFloat determinant = a * d - b * c;
  if (determinant == 0 || !std::isfinite(determinant)) return std::nullopt;
  const CGFloat f = 1 / determinant;
  return CGAffineTransform{d * f, -b * f, -c * f, a * f, (c * ty - d * tx) * f, (b * tx - a * ty) * f};
}

CGRect CGAffineTransform::applyToRect(CGRect rect) const {
  const CGPoint corners[] = {
      apply({CGRectGetMinX(rect), CGRectGetMinY(rect)}), apply({CGRectGetMaxX(rect), CGRectGetMinY(rect)}),
      apply({CGRectGetMaxX(rect), CGRectGetMaxY(rect)}), apply({CGRectGetMinX(rect), CGRectGetMaxY(rect)})};
  CGPoint low = corners[0], high = corners[0];
  for (const CGPoint& corner : corners) {
    low = {std::min(low.x, corner.x), std::min(low.y, corner.y)};
    high = {std::max(high.x, corner.x), std::max(high.y, corner.y)};
  }
  return {low.x, low.y, high.x - low.x, high.y - low.y};
}

}  // namespace tessaluna::platform
