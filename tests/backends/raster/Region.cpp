#include "tests/backends/raster/Region.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace tessaluna::backend::raster::test {

namespace {

constexpr int chordsOfCurve = 600;
// Dashes may end anywhere in a curve, in the direction of a chord.
constexpr int chordsOfDashedCurve = 2500;
constexpr int linesOfRow = 512;

struct Point : CGPoint {
  bool isInCurve = false;
};

struct Line {
  std::vector<Point> points;
  bool isClosed = false;
};

CGPoint operator+(CGPoint a, CGPoint b) { return {a.x + b.x, a.y + b.y}; }
CGPoint operator-(CGPoint a, CGPoint b) { return {a.x - b.x, a.y - b.y}; }
CGPoint operator*(CGPoint a, double f) { return {a.x * f, a.y * f}; }
double dot(CGPoint a, CGPoint b) { return a.x * b.x + a.y * b.y; }
double cross(CGPoint a, CGPoint b) { return a.x * b.y - a.y * b.x; }
double length(CGPoint a) { return std::hypot(a.x, a.y); }
CGPoint unit(CGPoint a) { return a * (1 / length(a)); }
CGPoint normal(CGPoint a) { return {-a.y, a.x}; }

std::vector<Line> linesOf(const Path& path, int chords) {
  std::vector<Line> lines;
  const CGPoint* p = path.points().data();
  const auto start = [&](CGPoint at) { lines.push_back({{{at, false}}, false}); };
  for (const PathVerb verb : path.verbs()) {
    if (verb != PathVerb::Move && lines.back().isClosed) start(lines.back().points.front());
    switch (verb) {
      case PathVerb::Move: start(p[0]); break;
      case PathVerb::Line: lines.back().points.push_back({p[0], false}); break;
      case PathVerb::Curve: {
        const CGPoint p0 = lines.back().points.back();
        // Chords get shorter towards the ends, where caps and joins use the direction of the last chord.
        for (int i = 1; i <= chords; ++i) {
          const double s = double(i) / chords, t = s * s * (3 - 2 * s), u = 1 - t;
          const CGPoint at = p0 * (u * u * u) + p[0] * (3 * u * u * t) + p[1] * (3 * u * t * t) + p[2] * (t * t * t);
          lines.back().points.push_back({at, i < chords});
        }
        break;
      }
      case PathVerb::Close: lines.back().isClosed = true; break;
    }
    p += pointCount(verb);
  }
  return lines;
}

// Removes repeated points, and the start of a closed line from its end.
Line withoutRepeats(const Line& line) {
  Line out{.points = {line.points.front()}, .isClosed = line.isClosed};
  for (const Point& p : line.points) {
    if (length(p - out.points.back()) > 1e-9) out.points.push_back(p);
    else if (!p.isInCurve) out.points.back().isInCurve = false;  // a corner stays a corner
  }
  while (out.isClosed && out.points.size() > 1 && length(out.points.front() - out.points.back()) < 1e-9) {
    out.points.pop_back();
    out.points.front().isInCurve = false;
  }
  return out;
}

std::vector<Line> dashesOf(Line line, const StrokeStyle& style) {
  if (style.dash.empty()) return {line};
  if (line.isClosed) line.points.push_back(line.points.front());
  std::vector<Line> dashes;
  std::size_t index = 0;
  double rest = style.dash[0];
  const auto next = [&] {
    ++index;
    rest = style.dash[index % style.dash.size()];
  };
  for (double phase = style.dashPhase; phase > 0;) {
    const double step = std::min(phase, rest);
    phase -= step;
    rest -= step;
    if (rest == 0) next();
  }
  const auto isOn = [&] { return index % 2 == 0; };
  if (isOn()) dashes.push_back({.points = {line.points[0]}});
  for (std::size_t i = 0; i + 1 < line.points.size(); ++i) {
    const Point from = line.points[i], to = line.points[i + 1];
    const double whole = length(to - from);
    double at = 0;
    while (at + rest < whole) {
      at += rest;
      const Point here{from + (to - from) * (at / whole), false};
      if (isOn()) dashes.back().points.push_back(here);
      next();
      if (isOn()) dashes.push_back({.points = {here}});
    }
    rest -= whole - at;
    if (isOn()) dashes.back().points.push_back(to);
  }
  return dashes;
}

std::vector<CGPoint> disc(CGPoint center, double radius) {
  constexpr int sides = 720;
  std::vector<CGPoint> points;
  for (int i = 0; i < sides; ++i) {
    const double angle = 2 * std::numbers::pi * i / sides;
    points.push_back(center + CGPoint{std::cos(angle), std::sin(angle)} * radius);
  }
  return points;
}

// The part of a disc between two directions that are less than half a turn apart.
std::vector<CGPoint> slice(CGPoint center, CGPoint from, CGPoint to, double radius) {
  constexpr int sidesOfDisc = 720;
  // Adding 0 turns a negative zero into a positive one, so that half a turn goes to the left.
  const double start = std::atan2(from.y, from.x), turn = std::atan2(cross(from, to) + 0.0, dot(from, to));
  const int sides = 1 + int(sidesOfDisc * std::abs(turn) / (2 * std::numbers::pi));
  std::vector<CGPoint> points{center};
  for (int i = 0; i <= sides; ++i) {
    const double angle = start + turn * i / sides;
    points.push_back(center + CGPoint{std::cos(angle), std::sin(angle)} * radius);
  }
  return points;
}

// What the pen covers at a corner, apart from the two rectangles that meet there.
std::vector<CGPoint> joinPiece(CGPoint before, Point at, CGPoint after, const StrokeStyle& style) {
  const double half = style.width / 2;
  const CGPoint in = unit(at - before), out = unit(after - at);
  const double side = cross(in, out) >= 0 ? -1 : 1;  // the outer one; on the way back it turns to the left
  const CGPoint a = at + normal(in) * (side * half), b = at + normal(out) * (side * half);
  // In a curve, a bend may be as sharp as a corner between two chords.
  if (at.isInCurve || style.join == LineJoin::Round) return slice(at, normal(in) * side, normal(out) * side, half);
  if (style.join == LineJoin::Bevel) return {at, a, b};
  const double sineOfHalf = std::sqrt(std::max(0.0, (1 - dot(in * -1, out)) / 2));  // of the angle between the lines
  if (sineOfHalf < 1e-9 || 1 / sineOfHalf > style.miterLimit) return {at, a, b};
  const CGPoint middle = normal(in) + normal(out);
  if (length(middle) < 1e-9) return {at, a, b};
  return {at, a, at + unit(middle) * (side * half / sineOfHalf), b};
}

}  // namespace

void Region::add(std::vector<CGPoint> points, const CGAffineTransform& toDevice) {
  Polygon polygon{{}, INFINITY, -INFINITY};
  for (const CGPoint& p : points) {
    polygon.points.push_back(toDevice.apply(p));
    polygon.top = std::min(polygon.top, polygon.points.back().y);
    polygon.bottom = std::max(polygon.bottom, polygon.points.back().y);
  }
  polygons_.push_back(std::move(polygon));
}

Region Region::filled(const Path& path, FillRule rule, const CGAffineTransform& toDevice) {
  Region region;
  region.rule_ = rule == FillRule::NonZero ? Rule::NonZero : Rule::EvenOdd;
  for (const Line& line : linesOf(path, chordsOfCurve)) {
    CGPoint from = line.points.back();
    for (const CGPoint to : line.points) {
      region.add({from, to}, toDevice);
      from = to;
    }
  }
  return region;
}

Region Region::stroked(const Path& path, const StrokeStyle& style, const CGAffineTransform& toDevice) {
  Region region;
  region.rule_ = Rule::Union;
  const double half = style.width / 2;
  for (const Line& whole : linesOf(path, style.dash.empty() ? chordsOfCurve : chordsOfDashedCurve)) {
    if (whole.points.size() < 2 && !whole.isClosed) continue;
    for (const Line& dash : dashesOf(whole, style)) {
      const Line line = withoutRepeats(dash);
      const std::vector<Point>& p = line.points;
      const std::size_t n = p.size();
      if (n == 1) {
        if (style.cap == LineCap::Round) region.add(disc(p[0], half), toDevice);
        continue;
      }
      const std::size_t segments = line.isClosed ? n : n - 1;
      for (std::size_t i = 0; i < segments; ++i) {
        CGPoint from = p[i], to = p[(i + 1) % n];
        const CGPoint along = unit(to - from), aside = normal(along) * half;
        if (!line.isClosed && style.cap == LineCap::Square) {
          if (i == 0) from = from - along * half;
          if (i + 1 == segments) to = to + along * half;
        }
        region.add({from + aside, to + aside, to - aside, from - aside}, toDevice);
        // The join comes right after its segment, so that each piece touches the previous one.
        if (!line.isClosed && i + 1 == segments) continue;
        const Point at = p[(i + 1) % n], after = p[(i + 2) % n];
        region.add(joinPiece(p[i], at, after, style), toDevice);
        // In a curve the pen turns on the inner side, too, which matters where its end goes backwards.
        const CGPoint out = unit(after - at);
        const double turn = cross(along, out), side = turn >= 0 ? 1 : -1;
        const bool goesBack = std::abs(turn) * half > std::min(length(after - at), length(at - p[i]));
        if (!at.isInCurve || !goesBack) continue;
        region.add(slice(at, normal(along) * side, normal(out) * side, half), toDevice);
      }
      if (!line.isClosed && style.cap == LineCap::Round) {
        const auto halfDisc = [&](CGPoint at, CGPoint outward) {
          const CGPoint from = normal(outward) * -1;
          region.add(slice(at, from, from * -1, half), toDevice);
        };
        halfDisc(p[0], p[0] - p[1]);
        halfDisc(p[n - 1], p[n - 1] - p[n - 2]);
      }
    }
  }
  return region;
}

namespace {

// Intervals that are merged where they overlap. Neighbours in a line come one after the other, so most of them only extend
// the previous one.
class Union {
 public:
  void add(Interval interval) {
    if (!intervals_.empty()) {
      Interval& last = intervals_.back();
      if (interval.low <= last.high && interval.high >= last.low) {
        last = {std::min(last.low, interval.low), std::max(last.high, interval.high)};
        return;
      }
    }
    intervals_.push_back(interval);
  }
  std::vector<Interval> take() {
    std::sort(intervals_.begin(), intervals_.end(), [](Interval a, Interval b) { return a.low < b.low; });
    std::vector<Interval> merged;
    for (const Interval& interval : intervals_) {
      if (merged.empty() || interval.low > merged.back().high) merged.push_back(interval);
      else merged.back().high = std::max(merged.back().high, interval.high);
    }
    return merged;
  }

 private:
  std::vector<Interval> intervals_;
};

// The interval in which a line crosses a convex polygon; reversed if it does not.
Interval spanAt(const std::vector<CGPoint>& points, double y) {
  Interval span{INFINITY, -INFINITY};
  CGPoint from = points.back();
  for (const CGPoint to : points) {
    if ((from.y <= y) != (to.y <= y)) {
      const double x = from.x + (y - from.y) * (to.x - from.x) / (to.y - from.y);
      span = {std::min(span.low, x), std::max(span.high, x)};
    }
    from = to;
  }
  return span;
}

}  // namespace

std::vector<Interval> Region::at(double y) const {
  if (rule_ == Rule::Union) {
    Union all;
    for (const Slab& slab : slabs_) {
      const double t = (y - slab.top) / (slab.bottom - slab.top);
      all.add({slab.above.low + (slab.below.low - slab.above.low) * t,
               slab.above.high + (slab.below.high - slab.above.high) * t});
    }
    for (const Polygon& polygon : polygons_) {
      if (y < polygon.top || y > polygon.bottom) continue;
      const Interval span = spanAt(polygon.points, y);
      if (span.low < span.high) all.add(span);
    }
    return all.take();
  }
  struct Crossing {
    double x;
    int direction;
  };
  std::vector<Crossing> crossings;
  for (const Polygon& side : polygons_) {
    const CGPoint from = side.points.front(), to = side.points.back();
    if ((from.y <= y) == (to.y <= y)) continue;
    crossings.push_back({from.x + (y - from.y) * (to.x - from.x) / (to.y - from.y), from.y <= y ? 1 : -1});
  }
  std::sort(crossings.begin(), crossings.end(), [](const Crossing& a, const Crossing& b) { return a.x < b.x; });
  std::vector<Interval> intervals;
  int winding = 0;
  for (const Crossing& crossing : crossings) {
    const auto isInside = [&] { return rule_ == Rule::EvenOdd ? winding % 2 != 0 : winding != 0; };
    const bool was = isInside();
    winding += crossing.direction;
    if (!was && isInside()) intervals.push_back({crossing.x, crossing.x});
    if (was && !isInside()) intervals.back().high = crossing.x;
  }
  return intervals;
}

Region Region::between(double top, double bottom) const {
  Region part;
  part.rule_ = rule_;
  for (const Polygon& polygon : polygons_) {
    if (polygon.top > bottom || polygon.bottom < top) continue;
    const bool hasCorner =
        std::any_of(polygon.points.begin(), polygon.points.end(), [&](CGPoint p) { return p.y >= top && p.y <= bottom; });
    if (rule_ == Rule::Union && !hasCorner)
      part.slabs_.push_back({top, bottom, spanAt(polygon.points, top), spanAt(polygon.points, bottom)});
    else part.polygons_.push_back(polygon);
  }
  return part;
}

Coverage::Coverage(const Region& whole, int width, int height) : Coverage(width, height) {
  std::vector<double> changes(std::size_t(width) + 1);  // from pixel to pixel, for fully covered ones
  for (int y = 0; y < height; ++y) {
    const Region region = whole.between(y, y + 1);
    std::fill(changes.begin(), changes.end(), 0.0);
    for (int line = 0; line < linesOfRow; ++line) {
      for (const Interval& part : region.at(y + (line + 0.5) / linesOfRow)) {
        const int first = std::clamp(int(std::floor(part.low)), 0, width);
        const int last = std::clamp(int(std::ceil(part.high)), 0, width);
        const auto addPart = [&](int x) {
          at(x, y) += (std::min(part.high, x + 1.0) - std::max(part.low, double(x))) / linesOfRow;
        };
        if (first < last) addPart(first);
        if (first + 1 < last) addPart(last - 1);
        if (first + 2 >= last) continue;
        changes[std::size_t(first) + 1] += 1;
        changes[std::size_t(last) - 1] -= 1;
      }
    }
    double covered = 0;  // of the lines
    for (int x = 0; x < width; ++x) {
      covered += changes[std::size_t(x)];
      at(x, y) += covered / linesOfRow;
    }
  }
}

Coverage Coverage::blurred(double deviation) const {
  if (deviation <= 0) return *this;
  const int reach = int(std::ceil(deviation * 6));
  std::vector<double> weights;
  double sum = 0;
  for (int i = -reach; i <= reach; ++i) {
    for (int j = -reach; j <= reach; ++j) {
      weights.push_back(std::exp(-(i * i + j * j) / (2 * deviation * deviation)));
      sum += weights.back();
    }
  }
  Coverage out(width, height);
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x) {
      if (at(x, y) == 0) continue;
      const double* weight = weights.data();
      for (int i = -reach; i <= reach; ++i) {
        for (int j = -reach; j <= reach; ++j, ++weight) {
          if (x + j < 0 || x + j >= width || y + i < 0 || y + i >= height) continue;
          out.at(x + j, y + i) += at(x, y) * *weight / sum;
        }
      }
    }
  }
  return out;
}

Coverage Coverage::times(const Coverage& other) const {
  Coverage out = *this;
  for (std::size_t i = 0; i < values.size(); ++i) out.values[i] *= other.values[i];
  return out;
}

Coverage Coverage::cropped(int left, int top, int newWidth, int newHeight) const {
  Coverage out(newWidth, newHeight);
  for (int y = 0; y < newHeight; ++y) {
    for (int x = 0; x < newWidth; ++x) out.at(x, y) = at(x + left, y + top);
  }
  return out;
}

}  // namespace tessaluna::backend::raster::test
