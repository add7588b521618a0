#include "tessaluna/backends/raster/StrokeOutline.h"

namespace tessaluna::backend::raster {

namespace {

// Tolerances for round joins and caps, whose chords all lie inside: one in device pixels, 1.5 of 255 on an edge, and one in
// halves of the pen's width, a few hundred chords for the whole circle.
constexpr double arcTolerance = 0.006, leastArcTolerance = 0.125 / 3e4;
// A corner of the outline shorter than this, in pixels, is ignored: joins would differ by less than a hundredth of a pixel.
constexpr double leastJoin = 0.1;
// This many sides on either side of a fold are searched for the place where they meet, each with each, which bounds the time
// of a bend. What is cut off may lie at most this far from there, in halves of the pen's width: a fold reaches no farther.
constexpr std::size_t maxSidesOfFold = 24;
constexpr double longestFold = 3;
// The area, in square pixels, that may be missing at the inner corner of a gentle bend: 5 of 255 if it were all in one
// pixel.
constexpr double leastCorner = 0.02;

// From a direction of the line to the direction in which the current side lies.
CGPoint aside(CGPoint direction) { return {direction.y, -direction.x}; }

// The chord, or zero if the pen's edge does not follow it on that side.
CGPoint chordOn(StrokePoint::Sides side, const StrokePoint& p) {
  return (int(p.chordSides) & int(side)) != 0 ? p.chord : CGPoint{};
}

}  // namespace

void StrokeOutline::begin(const Pen& pen, Polygons& polygons) {
  pen_ = pen;
  pixelsPerLength_ = 1 / pen.pixel;
  polygons_ = &polygons;
  // No arc needs more than a few hundred chords.
  const double tolerance = std::max(arcTolerance * pen.pixel, pen.halfWidth * leastArcTolerance);
  arcStep_ = 2 * std::acos(pen.halfWidth / (pen.halfWidth + tolerance));
}

void StrokeOutline::add(std::span<StrokePoint> line, Contour contour) {
  completeDirections(line, contour);
  if (contour == Contour::Open) addOpen(line);
  else addRings(line);
}

// The sides on which it is better to follow a chord of this squared length than the directions at its ends, between which
// lies this squared turn: both sides where one chord is not enough for the outer edge, the inner side where it would go
// backwards.
inline StrokePoint::Sides StrokeOutline::sidesAlongChord(double turn, double squaredLength, double across) const {
  const double reach = pen_.halfWidth, pixels = reach * pixelsPerLength_;
  bool isWide = turn > 0.5;
  if (turn * pixels >= 0.12 && !isWide) {
    // Compares the area beside a chord of the outer edge with an area too small to be visible.
    const double angle = std::sqrt(turn), radius = pixels + std::sqrt(squaredLength) * pixelsPerLength_ / angle;
    isWide = radius * radius * turn * angle > 0.2;
  }
  if (isWide) return StrokePoint::Sides::Both;
  if (turn * reach * reach <= 0.8 * squaredLength) return StrokePoint::Sides::None;
  return across < 0 ? StrokePoint::Sides::Near : StrokePoint::Sides::Far;
}

// The way to one point that lies on both edges, where the line goes straight or bends so little that all joins look the
// same.
inline std::optional<CGPoint> StrokeOutline::sideOf(const Bend& bend) const {
  if (bend.in == bend.out) return aside(bend.in) * pen_.halfWidth;
  const double cosine = dot(bend.in, bend.out), across = std::abs(cross(bend.in, bend.out)) * pen_.halfWidth;
  const bool isGentle = cosine > 0.5 && across < leastJoin * pen_.pixel;
  if (!isGentle && !(cosine > 1 - 1e-10)) return std::nullopt;
  return aside(bend.in + bend.out) * (pen_.halfWidth / (1 + cosine));
}

void StrokeOutline::completeDirections(std::span<StrokePoint> line, Contour contour) {
  const std::size_t last = line.size() - 1;
  completeChord(line[0], line[1]);
  isSmooth_ = true;
  for (std::size_t i = 1; i < last; ++i) {
    completeChord(line[i], line[i + 1]);
    findSide(line[i - 1], line[i]);
  }
  line[0].side = line[last].side = {};
  if (contour == Contour::Open) return;
  completeChord(line[last], line[0]);
  findSide(line[last - 1], line[last]);
  findSide(line[last], line[0]);
}

inline void StrokeOutline::completeChord(StrokePoint& from, StrokePoint& to) const {
  using enum StrokePoint::Sides;
  const CGPoint way = to.at - from.at;
  if (from.out != CGPoint{} && to.in != CGPoint{}) {
    const CGPoint difference = to.in - from.out;
    to.turn = dot(difference, difference);
    from.chordSides = sidesAlongChord(to.turn, dot(way, way), cross(from.out, to.in));
    from.isTwisted = from.chordSides != None && isTwisted(from, to);
    if (from.isTwisted) {
      const StrokePoint::Sides inner = cross(from.out, to.in) < 0 ? Near : Far;
      from.chordSides = StrokePoint::Sides(int(from.chordSides) & ~int(inner));
    }
    if (from.chordSides != None) from.chord = unit(way);
    return;
  }
  to.turn = 0;
  from.chord = unit(way);
  if (from.out == CGPoint{}) from.out = from.chord;
  if (to.in == CGPoint{}) to.in = from.chord;
  from.chordSides = from.out == from.chord && to.in == from.chord ? None : Both;
}

// True if the inner half of the pen turns about a point of its own between these points of the line.
bool StrokeOutline::isTwisted(const StrokePoint& from, const StrokePoint& to) const {
  const CGPoint way = to.at - from.at;
  const double turn = cross(from.out, to.in);
  if (turn == 0 || cross(from.out, way) * turn < 0 || cross(way, to.in) * turn < 0) return false;
  return std::min(dot(from.out, way), dot(to.in, way)) >= 0;
}

inline void StrokeOutline::findSide(const StrokePoint& before, StrokePoint& p) {
  using enum StrokePoint::Sides;
  const bool isBent = p.chordSides == Both || before.chordSides == Both;
  const std::optional<CGPoint> side = isBent ? std::nullopt : sideOf({p.at, p.in, p.out, p.corner});
  if (!side || p.chordSides != None || p.isTwisted) isSmooth_ = false;
  if (!side) return void(p.side = {});
  // The points of a flattened curve lie a little outside it, so that its chords leave no area out; so do the edge's points.
  p.side = p.corner == Corner::Smooth ? *side * (1 + p.turn * (1.0 / 12)) : *side;
}

void StrokeOutline::addOpen(std::span<const StrokePoint> line) {
  const std::size_t last = line.size() - 1;
  const auto startEnd = [&](const StrokePoint& end, CGPoint inward, CGPoint chord) {
    addCap(end.at, inward);
    beginSide();
    if (chord != CGPoint{}) addBend({end.at, inward, chord, Corner::Smooth});
  };
  const auto finishSide = [&](const StrokePoint& end, CGPoint chord, CGPoint outward) {
    if (chord != CGPoint{}) addBend({end.at, chord, outward, Corner::Smooth});
    else addSidePoint(end.at + aside(outward) * pen_.halfWidth, outward);
    isFolded_ = false;
  };
  beginRing();
  using enum StrokePoint::Sides;
  startEnd(line[0], line[0].out, chordOn(Near, line[0]));
  for (std::size_t i = 1; i < last; ++i) {
    goAlong(line[i - 1], line[i]);
    pass(line[i - 1], line[i]);
  }
  goAlong(line[last - 1], line[last]);
  finishSide(line[last], chordOn(Near, line[last - 1]), line[last].in);
  startEnd(line[last], -line[last].in, -chordOn(Far, line[last - 1]));
  for (std::size_t i = last; --i > 0;) {
    goBack(line[i], line[i + 1]);
    passBack(line[i - 1], line[i]);
  }
  goBack(line[0], line[1]);
  finishSide(line[0], -chordOn(Far, line[0]), -line[0].out);
}

// Adds rings that have one corner per side at every point.
void StrokeOutline::addSmoothRings(std::span<const StrokePoint> line) {
  CGPoint* to = polygons_->addPolygon(line.size());
  for (const StrokePoint& p : line) *to++ = p.at + p.side;
  to = polygons_->addPolygon(line.size());
  for (std::size_t i = line.size(); i-- > 0;) *to++ = line[i].at - line[i].side;
}

void StrokeOutline::addRings(std::span<const StrokePoint> line) {
  const std::size_t count = line.size();
  if (isSmooth_ && count > 2) return addSmoothRings(line);
  const auto before = [&](std::size_t i) -> const StrokePoint& { return line[i > 0 ? i - 1 : count - 1]; };
  // A ring begins in the middle of its longest chord, unless its first point is as good: a fold at the ring's own start
  // cannot be cut.
  std::size_t first = 0;
  CGPoint start, direction;
  const auto isStraight = [](const StrokePoint& p) { return p.chordSides == StrokePoint::Sides::None && !p.isTwisted; };
  bool startsInChord = line[0].side == CGPoint{} || !isStraight(line[0]) || !isStraight(before(0));
  if (startsInChord) {
    double longest = -1;
    for (std::size_t i = 0; i < count; ++i) {
      const CGPoint chord = line[i].at - before(i).at;
      if (const double squares = dot(chord, chord); squares > longest) longest = squares, first = i;
    }
    start = (line[first].at + before(first).at) * 0.5;
    direction = unit(line[first].at - before(first).at);
    startsInChord = !before(first).isTwisted;
  }
  const auto along = [&](std::size_t i) {
    pass(before(i), line[i]);
    goAlong(line[i], line[i + 1 < count ? i + 1 : 0]);
  };
  const auto back = [&](std::size_t i) {
    passBack(before(i), line[i]);
    goBack(before(i), line[i]);
  };
  beginRing();
  if (startsInChord) putPoint(start + aside(direction) * pen_.halfWidth);
  for (std::size_t i = first; i < count; ++i) along(i);
  for (std::size_t i = 0; i < first; ++i) along(i);
  finishRing();
  if (count == 2) return;  // there and back: one ring is enough
  beginRing();
  if (startsInChord) putPoint(start - aside(direction) * pen_.halfWidth);
  for (std::size_t i = first; i-- > 0;) back(i);
  for (std::size_t i = count; i-- > first;) back(i);
  finishRing();
}

inline void StrokeOutline::pass(const StrokePoint& before, const StrokePoint& p) {
  const CGPoint chordIn = chordOn(StrokePoint::Sides::Near, before), chordOut = chordOn(StrokePoint::Sides::Near, p);
  if (p.side != CGPoint{} && chordIn == CGPoint{} && chordOut == CGPoint{}) return addSidePoint(p.at + p.side, p.in);
  goThrough({p.at, chordIn, p.in, p.out, chordOut, p.corner, before.chord != p.in, p.chord != p.out});
}

inline void StrokeOutline::passBack(const StrokePoint& before, const StrokePoint& p) {
  const CGPoint chordIn = chordOn(StrokePoint::Sides::Far, before), chordOut = chordOn(StrokePoint::Sides::Far, p);
  if (p.side != CGPoint{} && chordIn == CGPoint{} && chordOut == CGPoint{}) return addSidePoint(p.at - p.side, -p.out);
  goThrough({p.at, -chordOut, -p.out, -p.in, -chordIn, p.corner, p.chord != p.out, before.chord != p.in});
}

inline void StrokeOutline::goAlong(const StrokePoint& from, const StrokePoint& to) {
  if (from.isTwisted && cross(from.out, to.in) < 0) addTwist({from.at, from.out, to.at, to.in});
}

inline void StrokeOutline::goBack(const StrokePoint& from, const StrokePoint& to) {
  if (from.isTwisted && cross(from.out, to.in) > 0) addTwist({to.at, -to.in, from.at, -from.out});
}

// Adds what lies between the two ends of the edge on the inner side of a bend. The pen's end goes backwards if its first and
// its last place cross. That would get the wrong winding, so the side goes around this sector in the other direction.
void StrokeOutline::addTwist(const Edge& edge) {
  const CGPoint way = edge.to - edge.from;
  const double turn = -cross(edge.out, edge.in), reach = dot(edge.in, way) / turn, back = dot(edge.out, way) / turn;
  if (std::max(reach, back) >= pen_.halfWidth) return;
  const CGPoint crossing = edge.from + aside(edge.out) * reach;
  const CGPoint first = edge.from + aside(edge.out) * pen_.halfWidth, last = edge.to + aside(edge.in) * pen_.halfWidth;
  fold();
  putPoint(crossing);
  putPoint(last);
  const double angle = std::atan2(turn, dot(edge.out, edge.in));
  for (int inner = int(angle / arcStep_), i = inner; i >= 1; --i) {
    const double part = double(i) / (inner + 1), c = std::cos(angle * part), s = std::sin(angle * part);
    const CGPoint direction{edge.out.x * c + edge.out.y * s, edge.out.y * c - edge.out.x * s};
    putPoint(edge.from + way * part + aside(direction) * pen_.halfWidth);
  }
  putPoint(first);
  putPoint(crossing);
}

// Where the pen follows a chord, it turns from the line's own direction to the chord, or back, without a join.
void StrokeOutline::goThrough(const Passage& p) {
  const bool comesByChord = p.chordIn != CGPoint{}, goesByChord = p.chordOut != CGPoint{};
  if (p.corner == Corner::Smooth)
    return addBend({.at = p.at,
                    .in = comesByChord ? p.chordIn : p.in,
                    .out = goesByChord ? p.chordOut : p.out,
                    .corner = p.corner,
                    .isTight = comesByChord || goesByChord});
  if (comesByChord) addBend({p.at, p.chordIn, p.in, Corner::Smooth});
  addBend(
      {.at = p.at, .in = p.in, .out = p.out, .corner = p.corner, .comesCurved = p.comesCurved, .goesCurved = p.goesCurved});
  if (goesByChord) addBend({p.at, p.out, p.chordOut, Corner::Smooth});
}

void StrokeOutline::addBend(const Bend& bend) {
  const CGPoint at = bend.at, in = bend.in, out = bend.out;
  const bool isInner = cross(in, out) < 0;
  if (const std::optional<CGPoint> side = sideOf(bend)) {
    // Small steps backwards add up to a loop of the wrong winding; going through the line's own points prevents it.
    const bool canGoBack = isInner && bend.isTight && !isNewRing_;
    const bool goesBack = canGoBack && dot(at + *side - polygons_->lastPoint(), in) < 0;
    if (!goesBack) return addSidePoint(at + *side, in);
  }
  if (isInner) return addInnerBend(bend);
  // What goes around an outer corner is not part of a fold before or after it, unless the corner is too small to be visible.
  const double pixels = pen_.halfWidth * pixelsPerLength_;
  const bool isSeen = dot(in, out) < 0 || cross(in, out) * pixels * pixels > 0.04;
  const bool bounds = bend.corner == Corner::Sharp && isSeen;
  if (isFolded_) cutFold(at + aside(in) * pen_.halfWidth);
  if (bounds) isFolded_ = false;
  addJoin(bend);
  if (bounds) beginSide();
}

// Goes around an outer corner.
void StrokeOutline::addJoin(const Bend& bend) {
  const CGPoint at = bend.at, in = bend.in, out = bend.out;
  if (bend.corner == Corner::Smooth || pen_.join == LineJoin::Round) {
    return addArc(at, in, out);
  }
  // The tip of a miter lies on both edges, 2 / |both| times half the pen's width from the corner. Where the line is straight,
  // no more is needed.
  const CGPoint both = in + out;
  const double squares = dot(both, both);
  const bool hasMiter = pen_.join == LineJoin::Miter && 2 <= pen_.miterLimit * std::sqrt(squares);
  if (!hasMiter || bend.comesCurved) putPoint(at + aside(in) * pen_.halfWidth);
  if (hasMiter) putPoint(at + aside(both) * (2 * pen_.halfWidth / squares));
  if (!hasMiter || bend.goesCurved) putPoint(at + aside(out) * pen_.halfWidth);
}

// The side goes through the point itself, so that windings keep one sign even where the bend cannot be cut off.
void StrokeOutline::addInnerBend(const Bend& bend) {
  addSidePoint(bend.at + aside(bend.in) * pen_.halfWidth, bend.in);
  const bool isSharp = bend.corner == Corner::Sharp;
  // Between two corners there may be a hole, so no cut spans both.
  if (isFolded_ && isSharp && hasFoldCorner_) {
    isFolded_ = false;
    sideStart_ = polygons_->pointCount() - 2;
  }
  fold();
  if (isSharp) hasFoldCorner_ = true;
  putPoint(bend.at);
  putPoint(bend.at + aside(bend.out) * pen_.halfWidth);
}

void StrokeOutline::addArc(CGPoint at, CGPoint in, CGPoint out) {
  const CGPoint first = aside(in) * pen_.halfWidth;
  // A line that goes straight back makes half a turn, whichever side rounding puts it on.
  const double turn = std::atan2(std::abs(cross(in, out)), dot(in, out));
  const int inner = int(turn / arcStep_);
  const double step = turn / (inner + 1);
  putPoint(at + first);
  for (int i = 1; i <= inner; ++i) {
    const double c = std::cos(i * step), s = std::sin(i * step);
    putPoint(at + CGPoint{first.x * c - first.y * s, first.x * s + first.y * c});
  }
  putPoint(at + aside(out) * pen_.halfWidth);
}

void StrokeOutline::addCap(CGPoint at, CGPoint inward) {
  if (pen_.cap == LineCap::Round) return addArc(at, -inward, inward);
  const CGPoint end = pen_.cap == LineCap::Square ? at - inward * pen_.halfWidth : at;
  putPoint(end - aside(inward) * pen_.halfWidth);
  putPoint(end + aside(inward) * pen_.halfWidth);
  // The side begins beside the line's own end, where it may bend.
  if (pen_.cap == LineCap::Square) putPoint(at + aside(inward) * pen_.halfWidth);
}

void StrokeOutline::addDot(CGPoint at) {
  beginRing();
  addCap(at, {1, 0});
  addCap(at, {-1, 0});
}

void StrokeOutline::beginRing() {
  isNewRing_ = true;
  isFolded_ = false;
  sideStart_ = ringStart_ = polygons_->pointCount();
}

void StrokeOutline::finishRing() {
  // The first side begins where the last one ends, which does not count as a meeting.
  sideStart_ = std::max(sideStart_, ringStart_ + 1);
  if (isFolded_) cutFold(polygons_->points()[ringStart_]);
  isFolded_ = false;
}

void StrokeOutline::beginSide() { sideStart_ = polygons_->pointCount() - 1; }

inline void StrokeOutline::putPoint(CGPoint p) {
  if (isNewRing_) polygons_->moveTo(p);
  else polygons_->lineTo(p);
  isNewRing_ = false;
}

inline void StrokeOutline::addSidePoint(CGPoint p, CGPoint direction) {
  const bool goesBack = !isNewRing_ && dot(p - polygons_->lastPoint(), direction) < -leastJoin * pen_.pixel;
  if (goesBack) fold();
  else if (isFolded_) cutFold(p);
  putPoint(p);
}

void StrokeOutline::fold() {
  if (isFolded_) return;
  isFolded_ = true;
  hasFoldCorner_ = false;
  sidesAfterFold_ = 0;
  foldStart_ = polygons_->pointCount() - 1;
}

// Cuts the two sides of the fold where they meet, if they meet on the way to this point.
void StrokeOutline::cutFold(CGPoint to) {
  const CGPoint from = polygons_->lastPoint(), way = to - from;
  const std::size_t least = foldStart_ - std::min(foldStart_ - sideStart_, maxSidesOfFold);
  for (std::size_t end = foldStart_; end > least; --end) {
    const CGPoint a = polygons_->points()[end - 1], b = polygons_->points()[end];
    const CGPoint side = b - a, between = from - a;
    const double turn = cross(side, way);
    if (!(turn < 0)) continue;  // they must meet in the direction of the bend
    const double onSide = cross(between, way) / turn, onWay = cross(between, side) / turn;
    if (onSide < 0 || onSide > 1 || onWay < 0 || onWay > 1) continue;
    const CGPoint meeting = a + side * onSide;
    // Sides next to the fold may meet anywhere, others only as near as a fold reaches.
    const bool isNext = end == foldStart_ && sidesAfterFold_ == 0;
    if (!isNext && !isShort(end, meeting)) continue;
    if (isHole(end, meeting) || (isNext && !coverCorner(side, way))) break;
    polygons_->cutTo(end);
    polygons_->lineTo(meeting);
    isFolded_ = false;
    if (hasFoldCorner_) beginSide();
    return;
  }
  if (++sidesAfterFold_ == maxSidesOfFold) isFolded_ = false;
}

// True if each of the two sides is so long that its stroke covers the other side's end at the bend between them.
bool StrokeOutline::coverCorner(CGPoint in, CGPoint out) const {
  const double before = dot(in, in), after = dot(out, out), lengths = std::sqrt(before * after);
  const double sine = std::abs(cross(in, out)), reach = pen_.halfWidth * sine / lengths;
  const double pixels = pen_.halfWidth * pixelsPerLength_;
  // The corner of a gentle bend is too small to be visible.
  if (dot(in, out) > 0 && sine * sine * sine * pixels * pixels < leastCorner * lengths * lengths * lengths) return true;
  return std::min(before, after) >= reach * reach;
}

// True if the points from `first` to here lie near the meeting: what is farther away may be a bend or an end of the line.
bool StrokeOutline::isShort(std::size_t first, CGPoint meeting) const {
  const double reach = longestFold * pen_.halfWidth;
  return std::ranges::all_of(polygons_->points().subspan(first), [&](CGPoint p) {
    const CGPoint away = p - meeting;
    return dot(away, away) <= reach * reach;
  });
}

// True if the points from `first` to here turn the opposite way to a fold: they are the border of a hole.
bool StrokeOutline::isHole(std::size_t first, CGPoint meeting) const {
  double area = 0;
  CGPoint from = meeting;
  for (const CGPoint& p : polygons_->points().subspan(first)) {
    area += cross(from - meeting, p - meeting);
    from = p;
  }
  return area < 0;
}

}  // namespace tessaluna::backend::raster
