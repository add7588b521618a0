#include "tessaluna/platform/backend/Path.h"

#include <algorithm>
#include <cmath>

namespace tessaluna::backend {

namespace {

// Distance of a quarter circle's controls from its ends, for radius 1: 4/3 (sqrt(2) - 1).
constexpr double quarterCircle = 0.55228474983079339840;

// Adds the values that one coordinate of a curve takes at its turning points to the range low...high.
void growByTurningPoints(double p0, double p1, double p2, double p3, double& low, double& high) {
  // The derivative is a quadratic; its coefficients, divided by 3.
  const double a = p3 - 3 * p2 + 3 * p1 - p0;
  const double b = 2 * (p2 - 2 * p1 + p0);
  const double c = p1 - p0;
  const auto grow = [&](double t) {
    if (!(t > 0 && t < 1)) return;
    const double u = 1 - t;
    const double value = u * u * u * p0 + 3 * u * u * t * p1 + 3 * u * t * t * p2 + t * t * t * p3;
    low = std::min(low, value);
    high = std::max(high, value);
  };
  const double discriminant = b * b - 4 * a * c;
  if (discriminant < 0) return;
  // The stable form of the roots: no difference of two nearly equal numbers, and a = 0 needs no case of its own.
  const double q = -0.5 * (b + std::copysign(std::sqrt(discriminant), b));
  if (a != 0) grow(q / a);
  if (q != 0) grow(c / q);
}

}  // namespace

std::span<CGPoint> Path::append(std::span<const PathVerb> verbs, std::size_t pointCount) {
  if (isEmpty()) {
    while (!verbs.empty() && verbs.front() == PathVerb::Close) verbs = verbs.subspan(1);
  }
  std::copy(verbs.begin(), verbs.end(), verbs_.extend(verbs.size()));
  shape_.kind = PathShape::Kind::None;
  return {points_.extend(pointCount), pointCount};
}

void Path::append(const Path& other) {
  if (other.isEmpty()) return;
  if (isEmpty()) {
    *this = other;
    return;
  }
  if (&other == this) {
    append(Path(other));
    return;
  }
  std::copy(other.points_.begin(), other.points_.end(), append(other.verbs(), other.points_.size()).begin());
}

void Path::transform(const CGAffineTransform& transform) {
  for (CGPoint& point : points_) point = transform.apply(point);
  shape_ = {};
}

void Path::clear() {
  verbs_.clear();
  points_.clear();
  shape_ = {};
}

CGPoint Path::currentPoint() const {
  if (isEmpty()) return {};
  if (verbs_.back() != PathVerb::Close) return points_.back();
  CGPoint start;
  const CGPoint* point = points_.data();
  for (const PathVerb verb : verbs_) {
    if (verb == PathVerb::Move) start = *point;
    point += pointCount(verb);
  }
  return start;
}

Path Path::rect(CGRect rect) {
  Path path;
  const double x0 = CGRectGetMinX(rect), y0 = CGRectGetMinY(rect);
  const double x1 = CGRectGetMaxX(rect), y1 = CGRectGetMaxY(rect);
  path.moveTo({x0, y0});
  path.lineTo({x1, y0});
  path.lineTo({x1, y1});
  path.lineTo({x0, y1});
  path.close();
  path.shape_ = {.kind = PathShape::Kind::Rect, .rect = rect, .radii = {}};
  return path;
}

Path Path::oval(CGRect rect) {
  Path path;
  const double x = CGRectGetMidX(rect), y = CGRectGetMidY(rect);
  const double rx = rect.size.width * 0.5, ry = rect.size.height * 0.5;
  const double kx = rx * quarterCircle, ky = ry * quarterCircle;
  path.moveTo({x + rx, y});
  path.curveTo({x, y + ry}, {x + rx, y + ky}, {x + kx, y + ry});
  path.curveTo({x - rx, y}, {x - kx, y + ry}, {x - rx, y + ky});
  path.curveTo({x, y - ry}, {x - rx, y - ky}, {x - kx, y - ry});
  path.curveTo({x + rx, y}, {x + kx, y - ry}, {x + rx, y - ky});
  path.close();
  path.shape_ = {.kind = PathShape::Kind::Oval, .rect = rect, .radii = {}};
  return path;
}

Path Path::roundedRect(CGRect rect, CGSize radii) {
  Path path;
  const double x0 = CGRectGetMinX(rect), y0 = CGRectGetMinY(rect);
  const double x1 = CGRectGetMaxX(rect), y1 = CGRectGetMaxY(rect);
  // A radius never passes the middle of its side, so that the corners do not cross.
  const double rx = std::clamp(radii.width, 0.0, std::abs(rect.size.width) * 0.5);
  const double ry = std::clamp(radii.height, 0.0, std::abs(rect.size.height) * 0.5);
  const double kx = rx * (1 - quarterCircle), ky = ry * (1 - quarterCircle);
  path.moveTo({x0 + rx, y0});
  path.lineTo({x1 - rx, y0});
  path.curveTo({x1, y0 + ry}, {x1 - kx, y0}, {x1, y0 + ky});
  path.lineTo({x1, y1 - ry});
  path.curveTo({x1 - rx, y1}, {x1, y1 - ky}, {x1 - kx, y1});
  path.lineTo({x0 + rx, y1});
  path.curveTo({x0, y1 - ry}, {x0 + kx, y1}, {x0, y1 - ky});
  path.lineTo({x0, y0 + ry});
  path.curveTo({x0 + rx, y0}, {x0, y0 + ky}, {x0 + kx, y0});
  path.close();
  path.shape_ = {.kind = PathShape::Kind::RoundedRect, .rect = rect, .radii = radii};
  return path;
}

CGRect Path::bounds() const {
  if (points_.empty()) return {};
  CGPoint low = points_[0], high = points_[0];
  const auto grow = [&](CGPoint p) {
    low = {std::min(low.x, p.x), std::min(low.y, p.y)};
    high = {std::max(high.x, p.x), std::max(high.y, p.y)};
  };
  const CGPoint* point = points_.data();
  CGPoint start = *point, current = *point;
  for (const PathVerb verb : verbs_) {
    switch (verb) {
      case PathVerb::Move: start = point[0]; [[fallthrough]];
      case PathVerb::Line:
        current = point[0];
        grow(current);
        break;
      case PathVerb::Curve:
        grow(point[2]);
        growByTurningPoints(current.x, point[0].x, point[1].x, point[2].x, low.x, high.x);
        growByTurningPoints(current.y, point[0].y, point[1].y, point[2].y, low.y, high.y);
        current = point[2];
        break;
      case PathVerb::Close: current = start; break;
    }
    point += pointCount(verb);
  }
  return {low.x, low.y, high.x - low.x, high.y - low.y};
}

}  // namespace tessaluna::backend
