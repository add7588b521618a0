#include "tessaluna/backends/raster/NearLines.h"

#include <algorithm>
#include <cmath>

#include "tessaluna/backends/raster/WorkBuffer.h"

namespace tessaluna::backend::raster {

namespace {

constexpr std::size_t mostPlaces = 4096;
constexpr long testsOfOverlap = 4;  // that take as long as working out one
constexpr DeviceRect everything{-farthestPoint, -farthestPoint, farthestPoint, farthestPoint};

}  // namespace

struct NearLines::Chord {
  CGPoint from, to, direction;
  double length;
  double before, after;  // how far the stroke goes on before and behind it

  Chord(const Point& start, const Point& end) : from(start.at), to(end.at), before(start.beyond), after(end.beyond) {
    const double dx = to.x - from.x, dy = to.y - from.y;
    length = std::sqrt(dx * dx + dy * dy);
    direction = length > 0 ? CGPoint{dx / length, dy / length} : CGPoint{1, 0};
  }
  CGPoint at(double way) const { return {from.x + direction.x * way, from.y + direction.y * way}; }
};

// A part of a line, by lengths from its start.
struct NearLines::Stretch {
  double first, last;

  struct Linear {
    double start, slope;
  };
  // To where a linear function lies between -before and after.
  void limit(const Linear& f, double before, double after) {
    if (std::abs(f.slope) < 1e-9) {
      if (f.start < -before || f.start > after) last = first;
      return;
    }
    const double perSlope = 1 / f.slope, one = (-before - f.start) * perSlope, other = (after - f.start) * perSlope;
    first = std::max(first, std::min(one, other));
    last = std::min(last, std::max(one, other));
  }
};

void NearLines::begin(const Pen& pen) {
  reach_ = pen.halfWidth;
  pixel_ = pen.pixel;
  beyondEnds_ = pen.cap == LineCap::Butt ? 0 : reach_;
  miterLimit_ = pen.join == LineJoin::Miter ? pen.miterLimit : 1;
  clearForReuse(points_);
  clearForReuse(lines_);
  clearForReuse(runs_);
  clearForReuse(boxes_);
}

void NearLines::add(const Added& added) {
  const std::span<const StrokePoint> points = added.points;
  const std::size_t first = points_.size(), count = points.size() + (added.contour == Contour::Closed ? 1 : 0);
  Line line{.first = first, .last = first + count - 1, .contour = added.contour, .partsBehindBends = added.partsBehindBends};
  points_.resize(first + count);
  Point* const to = points_.data() + first;
  std::size_t runStart = 0;
  int quarter = -1;
  for (std::size_t i = 0; i < count; ++i) {
    const StrokePoint& p = points[i < points.size() ? i : 0];
    // Beyond a point inside the line the stroke goes on by the next chord's, apart from the join at a corner.
    to[i].at.x = p.at.x;
    to[i].at.y = p.at.y;
    to[i].beyond = 0;
    to[i].spread = reach_;
    const bool isEnd = added.contour == Contour::Open && (i == 0 || i + 1 == count);
    if (isEnd) setBeyond(to[i], beyondEnds_);
    else if (p.side == CGPoint{}) setBeyond(to[i], beyondCorner(p));
    if (i == 0) continue;
    const int way = (to[i].at.x < to[i - 1].at.x ? 1 : 0) | (to[i].at.y < to[i - 1].at.y ? 2 : 0);
    if (way != quarter && i > 1) {
      addRun(line, first + runStart, first + i - 1, quarter);
      runStart = i - 1;
    }
    quarter = way;
  }
  addRun(line, first + runStart, line.last, quarter);
  lines_.push_back(line);
}

void NearLines::setBeyond(Point& p, double beyond) const {
  p.beyond = beyond;
  p.spread = std::sqrt(beyond * beyond + reach_ * reach_);
}

// As far as a miter reaches, if it may.
double NearLines::beyondCorner(const StrokePoint& p) const {
  const double cosine = dot(p.in, p.out), least = 1e-6;
  return std::max(reach_,
                  reach_ * std::min(std::sqrt(std::max(1 - cosine, 0.0) / std::max(1 + cosine, least)), miterLimit_));
}

void NearLines::addRun(Line& line, std::size_t first, std::size_t last, int quarter) {
  double spread = 0;
  for (std::size_t i = first; i <= last; ++i) spread = std::max(spread, points_[i].spread);
  const CGPoint a = points_[first].at, b = points_[last].at;
  const DeviceRect box{std::min(a.x, b.x), std::min(a.y, b.y), std::max(a.x, b.x), std::max(a.y, b.y)};
  runs_.push_back({.first = first,
                   .last = last,
                   .box = box.grown(spread),
                   .line = lines_.size(),
                   .number = line.runs++,
                   .quarter = quarter});
}

// Runs of which one goes on where the other ends, and that go the same way at least along one axis, move away from each
// other behind the point where they meet.
bool NearLines::followEachOther(const Run& a, const Run& b) const {
  if (a.line != b.line || (a.quarter ^ b.quarter) == 3) return false;
  const std::size_t way = a.number > b.number ? a.number - b.number : b.number - a.number;
  const Line& line = lines_[a.line];
  if (!line.partsBehindBends) return false;
  return way == 1 || (line.contour == Contour::Closed && way == line.runs - 1 && line.runs > 2);
}

void NearLines::find(std::vector<DeviceRect>& places) {
  if (runs_.size() < 2) return;
  std::sort(runs_.begin(), runs_.end(), [](const Run& a, const Run& b) { return a.box.left < b.box.left; });
  testsLeft_ = 10000 + 10 * long(points_.size());
  for (std::size_t i = 0; i < runs_.size(); ++i) {
    const Run& a = runs_[i];
    for (std::size_t j = i + 1; j < runs_.size() && runs_[j].box.left < a.box.right; ++j) {
      const Run& b = runs_[j];
      --testsLeft_;
      if (b.box.top < a.box.bottom && b.box.bottom > a.box.top && !followEachOther(a, b)) compare(a, runs_[j], places);
      if (testsLeft_ < 0 || places.size() > mostPlaces) return places.push_back(everything);
    }
  }
}

inline DeviceRect NearLines::boxOf(std::size_t i) const {
  const Point &a = points_[i], &b = points_[i + 1];
  return DeviceRect{std::min(a.at.x, b.at.x), std::min(a.at.y, b.at.y), std::max(a.at.x, b.at.x), std::max(a.at.y, b.at.y)}
      .grown(std::max(a.spread, b.spread));
}

void NearLines::compare(const Run& a, Run& b, std::vector<DeviceRect>& places) {
  std::optional<DeviceRect> place;
  for (std::size_t i = a.first; i < a.last; ++i) {
    const DeviceRect aroundI = boxOf(i);
    if (aroundI.intersected(b.box).isEmpty()) continue;
    prepareBoxes(b);
    std::optional<Chord> chord;
    for (std::size_t j = b.first; j < b.last; ++j) {
      if (--testsLeft_ < 0) return;
      const DeviceRect common = boxes_[j].intersected(aroundI);
      if (common.isEmpty() || (place && place->contains(common))) continue;
      if (a.line == b.line && isNearAlong(std::min(i, j), std::max(i, j), lines_[a.line])) continue;
      testsLeft_ -= testsOfOverlap;
      if (!chord) chord = Chord(points_[i], points_[i + 1]);
      const DeviceRect overlap = overlapOf(*chord, {points_[j], points_[j + 1]});
      if (!overlap.isEmpty()) place = place ? place->including(overlap) : overlap;
    }
  }
  const double leastSide = 0.004 * pixel_;  // what is narrower shows nowhere
  if (place && place->right - place->left > leastSide && place->bottom - place->top > leastSide) places.push_back(*place);
}

void NearLines::prepareBoxes(Run& run) {
  if (run.hasBoxes) return;
  run.hasBoxes = true;
  if (boxes_.size() < points_.size()) boxes_.resize(points_.size());
  for (std::size_t i = run.first; i < run.last; ++i) boxes_[i] = boxOf(i);
}

// True if the line leads from one chord to the other by a way too short to come back on. Ways are taken as a little shorter
// than they are.
bool NearLines::isNearAlong(std::size_t first, std::size_t second, const Line& line) {
  double left = 3 * reach_;
  int corners = 0;
  const auto go = [&](std::size_t from, std::size_t to) {
    for (std::size_t i = from; i < to && left > 0; ++i) {
      --testsLeft_;
      left -= std::max(std::abs(points_[i + 1].at.x - points_[i].at.x), std::abs(points_[i + 1].at.y - points_[i].at.y));
      if (isCorner(i)) ++corners;
    }
    return left > 0;
  };
  if (go(first + 1, second)) return !turnsBack(first, second, isCorner(second) ? corners + 1 : corners, line);
  if (line.contour == Contour::Open) return false;
  // The other way round, through the start.
  left = 3 * reach_;
  corners = 0;
  if (!go(second + 1, line.last) || !go(line.first, first)) return false;
  return !turnsBack(second, first, isCorner(first) ? corners + 1 : corners, line);
}

// The second chord leads back, behind so many corners, and need not part from the first by itself, or it lies on the first as
// its neighbour.
bool NearLines::turnsBack(std::size_t first, std::size_t second, int corners, const Line& line) const {
  const CGPoint a = points_[first + 1].at - points_[first].at, b = points_[second + 1].at - points_[second].at;
  if (!(dot(a, b) < 0)) return false;
  return corners > 1 || !line.partsBehindBends || (second == first + 1 && std::abs(cross(a, b)) < -1e-3 * dot(a, b));
}

DeviceRect NearLines::overlapOf(const Chord& a, const Chord& b) const {
  const DeviceRect ofA = strokeWithin(a, b);
  if (ofA.isEmpty()) return ofA;
  return ofA.intersected(strokeWithin(b, a));
}

// The part of the first one's stroke that the second one's may cover.
DeviceRect NearLines::strokeWithin(const Chord& a, const Chord& b) const {
  const double cosine = dot(a.direction, b.direction), sine = cross(b.direction, a.direction);
  const CGPoint between = a.from - b.from;
  // Where the line of a, a point of whose stroke lies no farther aside than the pen reaches, is beside b and along it.
  const double across = reach_ * (1 + std::abs(cosine)), along = reach_ * std::abs(sine);
  Stretch on{-a.before, a.length + a.after};
  on.limit({.start = cross(b.direction, between), .slope = sine}, across, across);
  on.limit({.start = dot(b.direction, between), .slope = cosine}, b.before + along, b.length + b.after + along);
  if (!(on.first < on.last)) return {};
  const CGPoint p = a.at(on.first), q = a.at(on.last);
  const double x = std::abs(a.direction.y) * reach_, y = std::abs(a.direction.x) * reach_;
  return {std::min(p.x, q.x) - x, std::min(p.y, q.y) - y, std::max(p.x, q.x) + x, std::max(p.y, q.y) + y};
}

}  // namespace tessaluna::backend::raster
