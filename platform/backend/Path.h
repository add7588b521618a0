// The outline that a canvas fills, strokes or clips to: a flat list of verbs and the points that they use.
// A path that one call made (a rectangle, an oval, a rounded rectangle) remembers that call, so that a canvas may
// take a short way and a recording can tell it.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "platform/foundation/AffineTransform.h"
#include "platform/foundation/Geometry.h"

namespace backend {

using platform::CGAffineTransform;
using platform::CGPoint;
using platform::CGRect;
using platform::CGSize;

enum class PathVerb : std::uint8_t { Move, Line, Curve, Close };
constexpr int pointCount(PathVerb verb) {
  constexpr int counts[] = {1, 1, 3, 0};
  return counts[static_cast<int>(verb)];
}

enum class FillRule : std::uint8_t { NonZero, EvenOdd };

struct PathShape {
  enum class Kind : std::uint8_t { None, Rect, Oval, RoundedRect };
  Kind kind = Kind::None;
  CGRect rect;
  CGSize radii;  // of a rounded rectangle, as they were asked for
};

class Path {
 public:
  // Whole figures. The path must be empty.
  static Path rect(CGRect rect);
  static Path oval(CGRect rect);
  static Path roundedRect(CGRect rect, CGSize radii);

  void moveTo(CGPoint to);
  void lineTo(CGPoint to);
  void curveTo(CGPoint to, CGPoint control1, CGPoint control2);
  void close();
  void append(const Path& other);
  void transform(const CGAffineTransform& transform);
  void clear();

  // For each Move and Line one point, for each Curve three (control1, control2, end), for each Close none. After a
  // Close the current point is the start of the subpath that was closed.
  std::span<const PathVerb> verbs() const { return verbs_; }
  std::span<const CGPoint> points() const { return points_; }
  const PathShape& shape() const { return shape_; }
  bool isEmpty() const { return verbs_.empty(); }
  bool hasCurrentPoint() const { return !verbs_.empty(); }
  CGPoint currentPoint() const { return current_; }

  // The tight box of the lines and curves, zero for an empty path. A lone point counts.
  CGRect bounds() const;

 private:
  void add(PathVerb verb);

  std::vector<PathVerb> verbs_;
  std::vector<CGPoint> points_;
  PathShape shape_;
  CGPoint start_, current_;
};

}  // namespace backend
