// What the stages of stroking pass to each other: a line as points, with the directions in which it arrives and leaves.
#pragma once

#include "tessaluna/backends/raster/Flattener.h"
#include "tessaluna/platform/backend/Canvas.h"

namespace tessaluna::backend::raster {

inline CGPoint operator+(CGPoint a, CGPoint b) { return {a.x + b.x, a.y + b.y}; }
inline CGPoint operator-(CGPoint a, CGPoint b) { return {a.x - b.x, a.y - b.y}; }
inline CGPoint operator-(CGPoint v) { return {-v.x, -v.y}; }
inline CGPoint operator*(CGPoint v, double factor) { return {v.x * factor, v.y * factor}; }
inline double dot(CGPoint a, CGPoint b) { return a.x * b.x + a.y * b.y; }
inline double cross(CGPoint a, CGPoint b) { return a.x * b.y - a.y * b.x; }
// The vector of the same direction with length 1; zero stays zero.
inline CGPoint unit(CGPoint v) {
  const double squares = dot(v, v);
  return squares > 0 ? v * (1 / std::sqrt(squares)) : CGPoint{};
}

enum class Contour { Open, Closed };

// Lengths are in the line's space.
struct Pen {
  double halfWidth = 0, pixel = 1;  // half the pen's width, and the size of a device pixel
  LineCap cap = LineCap::Butt;
  LineJoin join = LineJoin::Miter;
  double miterLimit = 10;
};

struct StrokePoint {
  CGPoint at;
  Corner corner = Corner::Sharp;
  // The directions, of length 1, in which the line arrives and leaves. Zero means that of the chord, until it is filled in.
  CGPoint in = {}, out = {};

  // Only the outline uses what follows: whether the line bends on the way to the next point, and whether the pen turns too
  // much there for straight sides.
  enum class Way : std::uint8_t { Straight, Curved, Tight };
  Way way = Way::Straight;
  // The square of the turn from the previous point to this one.
  double turn = 0;
  // From the point to the outline's corner on the near side of the line; the corner on the far side lies opposite. Zero
  // where one corner per side is not enough.
  CGPoint side = {};
};

}  // namespace tessaluna::backend::raster
