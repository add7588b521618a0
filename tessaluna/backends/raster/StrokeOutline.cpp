#include "tessaluna/backends/raster/StrokeOutline.h"

#include <algorithm>

namespace tessaluna::backend::raster {

namespace {

// Of round joins and caps, whose chords all lie inside: in device pixels, and in halves of the pen's width.
constexpr double arcTolerance = 0.006, leastArcTolerance = 0.125 / 3e4;
// Joins narrower than this, in pixels, are all alike.
constexpr double leastJoin = 0.1;
// So many square pixels within one pixel do not show.
constexpr double leastArea = 0.004;

// From a direction to that of the side that is being made.
CGPoint aside(CGPoint direction) { return {direction.y, -direction.x}; }

}  // namespace

void StrokeOutline::begin(const Pen& pen, Polygons& polygons) {
  pen_ = pen;
  pixels_ = pen.halfWidth / pen.pixel;
  polygons_ = &polygons;
  // No arc needs more than a few hundred chords.
  const double tolerance = std::max(arcTolerance * pen.pixel, pen.halfWidth * leastArcTolerance);
  arcStep_ = 2 * std::acos(pen.halfWidth / (pen.halfWidth + tolerance));
}

void StrokeOutline::add(std::span<StrokePoint> line, Contour contour) {
  const std::size_t last = line.size() - 1;
  isSmooth_ = true;
  findChord(line[0], line[1]);
  for (std::size_t i = 1; i < last; ++i) {
    findChord(line[i], line[i + 1]);
    findSide(line[i - 1], line[i]);
  }
  if (contour == Contour::Open) return addOpen(line);
  findChord(line[last], line[0]);
  findSide(line[last - 1], line[last]);
  findSide(line[last], line[0]);
  addRings(line);
}

inline void StrokeOutline::findChord(StrokePoint& from, StrokePoint& to) const {
  const CGPoint way = to.at - from.at;
  from.length = std::sqrt(dot(way, way));
  const bool isStraight = from.out == CGPoint{} && to.in == CGPoint{};
  if (from.out == CGPoint{}) from.out = way * (1 / from.length);
  if (to.in == CGPoint{}) to.in = isStraight ? from.out : way * (1 / from.length);
  const CGPoint difference = to.in - from.out;
  to.turn = dot(difference, difference);
  from.isPlain = isStraight || isPlain(from, to);
}

// True if both edges of the pen are as good as straight between two points of a line that it passes in these directions.
inline bool StrokeOutline::isPlain(const StrokePoint& from, const StrokePoint& to) const {
  // The inner one would turn back on itself.
  if (to.turn * pen_.halfWidth * pen_.halfWidth > 0.8 * from.length * from.length) return false;
  if (to.turn > 0.5) return false;
  // What lies between the outer one and its chord, more than between the line and its own, in a pixel.
  const double inPixel = std::min(from.length / pen_.pixel, 1.0);
  if (pixels_ * to.turn * (3 * inPixel + pixels_ * std::sqrt(to.turn)) > 24 * leastArea) return false;
  // The same where the line turns at one of the ends only.
  const CGPoint way = to.at - from.at;
  const double uneven = cross(from.out, way) - cross(way, to.in);
  return uneven * uneven * pixels_ * inPixel <= 8 * leastArea * from.length * from.length;
}

// Where each edge has one corner, and these lie opposite each other.
inline void StrokeOutline::findSide(const StrokePoint& before, StrokePoint& p) {
  p.side = {};
  if (!before.isPlain || !p.isPlain) isSmooth_ = false;
  if (p.in == p.out) {
    // Inner points of a curve lie a little outside it, so that its chords leave no area out; those of the edge as well.
    p.side = aside(p.in) * (pen_.halfWidth * (p.corner == Corner::Smooth ? 1 + p.turn * (1.0 / 12) : 1));
    return;
  }
  const bool isStraight = before.isPlain && p.isPlain;
  const bool hasCorner = isGentle(p.in, p.out) || hasMiter(p.in, p.out);
  if (isStraight && hasCorner && mayCut({p.at, p.in, p.out, std::min(before.length, p.length)}))
    p.side = cornerOf(p.in, p.out);
  else isSmooth_ = false;
}

// True if all joins look alike.
inline bool StrokeOutline::isGentle(CGPoint in, CGPoint out) const {
  return dot(in, out) > 0.5 && std::abs(cross(in, out)) * pixels_ < leastJoin;
}

// The tip of a miter is 2 / |both| times half the pen's width away from the corner.
inline bool StrokeOutline::hasMiter(CGPoint in, CGPoint out) const {
  const CGPoint both = in + out;
  return pen_.join == LineJoin::Miter && 2 <= pen_.miterLimit * std::sqrt(dot(both, both));
}

// True if on its inner side the edges may end where they meet: what is cut off there lies in the pieces of both chords.
inline bool StrokeOutline::mayCut(const Turn& turn) const {
  const double reach = std::abs(cross(turn.in, turn.out)) * pen_.halfWidth;
  return turn.nearest >= reach && turn.nearest * (1 + dot(turn.in, turn.out)) >= reach;
}

// Where two edges meet, from the point between them.
inline CGPoint StrokeOutline::cornerOf(CGPoint in, CGPoint out) const {
  return aside(in + out) * (pen_.halfWidth / (1 + dot(in, out)));
}

void StrokeOutline::addOpen(std::span<const StrokePoint> line) {
  const std::size_t last = line.size() - 1;
  const StrokePoint &first = line[0], &final = line[last];
  isNewRing_ = true;
  putEdge(first.at, -first.out);
  addCap(first.at, first.out);
  putEdge(first.at, first.out);
  goAlong(first, line[1]);
  for (std::size_t i = 1; i < last; ++i) {
    pass(line[i - 1], line[i]);
    goAlong(line[i], line[i + 1]);
  }
  putEdge(final.at, final.in);
  addCap(final.at, -final.in);
  putEdge(final.at, -final.in);
  for (std::size_t i = last; --i > 0;) {
    goBack(line[i], line[i + 1]);
    passBack(line[i - 1], line[i]);
  }
  goBack(first, line[1]);
}

// Where pieces follow each other all round, and all of them cover a place, each corner that is cut takes one of them away: all but
// one may.
void StrokeOutline::keepCovered(std::span<StrokePoint> line) {
  StrokePoint* corner = nullptr;
  double reach = 0;  // of what is cut off, from its corner
  CGPoint low = line[0].at, high = low;
  for (StrokePoint& p : line) {
    low = {std::min(low.x, p.at.x), std::min(low.y, p.at.y)};
    high = {std::max(high.x, p.at.x), std::max(high.y, p.at.y)};
    if (p.in == p.out) continue;
    corner = &p;
    reach = std::max(reach, 2 * pen_.halfWidth / std::sqrt(dot(p.in + p.out, p.in + p.out)));
  }
  if (!corner || std::max(high.x - low.x, high.y - low.y) > 2 * reach) return;
  corner->mayCut = isSmooth_ = false;
  corner->side = {};
}

void StrokeOutline::addRings(std::span<StrokePoint> line) {
  const std::size_t count = line.size();
  keepCovered(line);
  if (isSmooth_) {
    CGPoint* to = polygons_->addPolygon(count);
    for (const StrokePoint& p : line) *to++ = p.at + p.side;
    to = polygons_->addPolygon(count);
    for (std::size_t i = count; i-- > 0;) *to++ = line[i].at - line[i].side;
    return;
  }
  const auto next = [&](std::size_t i) -> const StrokePoint& { return line[i + 1 < count ? i + 1 : 0]; };
  const auto before = [&](std::size_t i) -> const StrokePoint& { return line[i > 0 ? i - 1 : count - 1]; };
  isNewRing_ = true;
  for (std::size_t i = 0; i < count; ++i) {
    pass(before(i), line[i]);
    goAlong(line[i], next(i));
  }
  isNewRing_ = true;
  for (std::size_t i = count; i-- > 0;) {
    passBack(before(i), line[i]);
    goBack(before(i), line[i]);
  }
}

// Of the shorter chord around a point; 0 if nothing may be cut.
static double lengthToCut(const StrokePoint& before, const StrokePoint& p) {
  return before.isPlain && p.isPlain && p.mayCut ? std::min(before.length, p.length) : 0;
}

inline void StrokeOutline::pass(const StrokePoint& before, const StrokePoint& p) {
  if (p.side != CGPoint{}) return putPoint(p.at + p.side);
  addCorner({p.at, p.in, p.out, lengthToCut(before, p)});
}

inline void StrokeOutline::passBack(const StrokePoint& before, const StrokePoint& p) {
  if (p.side != CGPoint{}) return putPoint(p.at - p.side);
  addCorner({p.at, -p.out, -p.in, lengthToCut(before, p)});
}

inline void StrokeOutline::goAlong(const StrokePoint& from, const StrokePoint& to) {
  if (!from.isPlain) addEdge({from.at, from.out, to.at, to.in});
}

inline void StrokeOutline::goBack(const StrokePoint& from, const StrokePoint& to) {
  if (!from.isPlain) addEdge({to.at, -to.in, from.at, -from.out});
}

void StrokeOutline::addCorner(const Turn& turn) {
  const bool isInner = cross(turn.in, turn.out) < 0;
  if (isInner ? mayCut(turn) : isGentle(turn.in, turn.out)) return putPoint(turn.at + cornerOf(turn.in, turn.out));
  putEdge(turn.at, turn.in);
  if (isInner) putPoint(turn.at);
  else if (pen_.join == LineJoin::Round) addArc(turn.at, turn.in, turn.out);
  else if (hasMiter(turn.in, turn.out)) putPoint(turn.at + cornerOf(turn.in, turn.out));
  putEdge(turn.at, turn.out);
}

// Between the edge's ends in two directions.
void StrokeOutline::addBend(CGPoint at, CGPoint in, CGPoint out) {
  if (cross(in, out) < 0) putPoint(at);
  else addArc(at, in, out);
}

// Between its ends, where the line bends too much for a straight one. On the inner side of a bend that is enough as long as it
// does not go backwards, as in one narrower than the pen.
void StrokeOutline::addEdge(const Edge& edge) {
  const CGPoint way = edge.to - edge.from, chord = unit(way);
  const bool isInner = cross(edge.out, chord) <= 0 && cross(chord, edge.in) <= 0;
  if (isInner && dot(way + (aside(edge.in) - aside(edge.out)) * pen_.halfWidth, way) > 0) return;
  addBend(edge.from, edge.out, chord);
  putEdge(edge.from, chord);
  putEdge(edge.to, chord);
  addBend(edge.to, chord, edge.in);
}

void StrokeOutline::addArc(CGPoint at, CGPoint in, CGPoint out) {
  const CGPoint first = aside(in) * pen_.halfWidth;
  // Back on itself a line turns by half a turn, on whichever side rounding may see it.
  const double turn = std::atan2(std::abs(cross(in, out)), dot(in, out));
  const int inner = int(turn / arcStep_);
  for (int i = 1; i <= inner; ++i) {
    const double angle = turn * i / (inner + 1), c = std::cos(angle), s = std::sin(angle);
    putPoint(at + CGPoint{first.x * c - first.y * s, first.x * s + first.y * c});
  }
}

void StrokeOutline::addCap(CGPoint at, CGPoint inward) {
  if (pen_.cap == LineCap::Round) return addArc(at, -inward, inward);
  if (pen_.cap == LineCap::Butt) return;
  const CGPoint end = at - inward * pen_.halfWidth, across = aside(inward) * pen_.halfWidth;
  putPoint(end - across);
  putPoint(end + across);
}

void StrokeOutline::addDot(CGPoint at) {
  isNewRing_ = true;
  for (const CGPoint direction : {CGPoint{1, 0}, CGPoint{-1, 0}}) {
    putEdge(at, direction);
    addArc(at, direction, -direction);
  }
}

inline void StrokeOutline::putEdge(CGPoint at, CGPoint direction) { putPoint(at + aside(direction) * pen_.halfWidth); }

inline void StrokeOutline::putPoint(CGPoint p) {
  if (isNewRing_) polygons_->moveTo(p);
  else polygons_->lineTo(p);
  isNewRing_ = false;
}

}  // namespace tessaluna::backend::raster
