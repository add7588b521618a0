// Edges that sit on the point grid. An edge lies at a fraction of the frame's size, moved to a grid position by a constant
// that is the design's own distance from the grid: floor(size * fraction + constant) + (0.5 - constant). The rounding sees
// the scaled size only, never the frame's origin.
//
//   constexpr SnappedEdges disc{.left = {0.01316, 0.5}, .right = {0.98684, 0.5},
//                               .bottom = {0.01316, 0.5}, .top = {0.98684, 0.5}};
//   NSBezierPath::bezierPathWithOvalInRect(snappedRect(frame, disc));
#pragma once

#include <cmath>

#include "tessaluna/platform/foundation/Geometry.h"

namespace TessalunaUIKit {

struct SnappedEdge {
  double fraction = 0;
  double constant = 0.5;  // 0.5 rounds to the nearest point, 0 puts the edge on a half point

  double wholePart(double size) const { return std::floor(size * fraction + constant); }
  double rest() const { return 0.5 - constant; }
  double in(double size) const { return wholePart(size) + rest(); }

  // The distance to another edge. Whole points are taken from whole points first, which is exact.
  double distanceTo(const SnappedEdge& other, double size) const {
    return (other.wholePart(size) - wholePart(size)) + (other.rest() - rest());
  }
};

struct SnappedEdges {
  SnappedEdge left, right, bottom, top;
};

inline tessaluna::platform::CGRect snappedRect(tessaluna::platform::CGRect frame, const SnappedEdges& edges) {
  const double width = CGRectGetWidth(frame), height = CGRectGetHeight(frame);
  return {CGRectGetMinX(frame) + edges.left.in(width), CGRectGetMinY(frame) + edges.bottom.in(height),
          edges.left.distanceTo(edges.right, width), edges.bottom.distanceTo(edges.top, height)};
}

}  // namespace TessalunaUIKit
