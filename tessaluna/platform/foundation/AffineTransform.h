// A transform of the plane: x' = a x + c y + tx, y' = b x + d y + ty.
#pragma once

#include <optional>

#include "tessaluna/platform/foundation/Geometry.h"

namespace tessaluna::platform {

struct CGAffineTransform {
  CGFloat a = 1, b = 0, c = 0, d = 1, tx = 0, ty = 0;

  static constexpr CGAffineTransform translation(CGFloat x, CGFloat y) { return {1, 0, 0, 1, x, y}; }
  static constexpr CGAffineTransform scale(CGFloat x, CGFloat y) { return {x, 0, 0, y, 0, 0}; }

  constexpr CGPoint apply(CGPoint p) const { return {a * p.x + c * p.y + tx, b * p.x + d * p.y + ty}; }
  // The transform that does this one first and then `next`.
  constexpr CGAffineTransform then(const CGAffineTransform& next) const {
    return {next.a * a + next.c * b,
            next.b * a + next.d * b,
            next.a * c + next.c * d,
            next.b * c + next.d * d,
            next.a * tx + next.c * ty + next.tx,
            next.b * tx + next.d * ty + next.ty};
  }
  // Absent where the plane is flattened to a line or a point.
  std::optional<CGAffineTransform> inverted() const;
  // The smallest upright rectangle around the transformed one.
  CGRect applyToRect(CGRect rect) const;

  friend bool operator==(const CGAffineTransform&, const CGAffineTransform&) = default;
};

}  // namespace tessaluna::platform
