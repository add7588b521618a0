// The outline that a canvas fills, strokes or clips to: a flat list of verbs and the points that they use.
// A path that one call made (a rectangle, an oval, a rounded rectangle) remembers that call, so that a canvas may
// take a short way and a recording can name it.
#pragma once

#include <cstdint>
#include <span>

#include "tessaluna/platform/foundation/AffineTransform.h"
#include "tessaluna/platform/foundation/Geometry.h"
#include "tessaluna/platform/foundation/ShortList.h"

namespace tessaluna::backend {

using platform::CGAffineTransform;
using platform::CGPoint;
using platform::CGRect;
using platform::CGSize;

enum class PathVerb : std::uint8_t { Move, Line, Curve, Close };
inline constexpr int pointCounts[] = {1, 1, 3, 0};
constexpr int pointCount(PathVerb verb) { return pointCounts[static_cast<int>(verb)]; }

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

  void moveTo(CGPoint to) { *add(PathVerb::Move, 1) = to; }
  void lineTo(CGPoint to) { *add(PathVerb::Line, 1) = to; }
  void curveTo(CGPoint to, CGPoint control1, CGPoint control2) {
    CGPoint* const points = add(PathVerb::Curve, 3);
    points[0] = control1;
    points[1] = control2;
    points[2] = to;
  }
  void close() {
    if (!isEmpty()) add(PathVerb::Close, 0);
  }
  void append(const Path& other);
  // Many segments at once. Gives their points, in the order of points(), for the caller to fill in.
  std::span<CGPoint> append(std::span<const PathVerb> verbs, std::size_t pointCount);
  void transform(const CGAffineTransform& transform);
  void clear();

  // For each Move and Line one point, for each Curve three (control1, control2, end), for each Close none. After a
  // Close the current point is the start of the subpath that was closed.
  std::span<const PathVerb> verbs() const { return verbs_; }
  std::span<const CGPoint> points() const { return points_; }
  const PathShape& shape() const { return shape_; }
  bool isEmpty() const { return verbs_.empty(); }
  bool hasCurrentPoint() const { return !verbs_.empty(); }
  CGPoint currentPoint() const;

  // The tight box of the lines and curves, zero for an empty path. A lone point counts.
  CGRect bounds() const;

 private:
  CGPoint* add(PathVerb verb, std::size_t pointCount) {
    verbs_.push_back(verb);
    shape_.kind = PathShape::Kind::None;
    return points_.extend(pointCount);
  }

  platform::ShortList<PathVerb, 24> verbs_;
  platform::ShortList<CGPoint, 24> points_;
  PathShape shape_;
};

}  // namespace tessaluna::backend
