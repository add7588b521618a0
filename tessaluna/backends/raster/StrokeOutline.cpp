#include "tessaluna/backends/raster/StrokeOutline.h"

namespace tessaluna::backend::raster {

namespace {

// Tolerances for round joins and caps, whose chords all lie inside: one in device pixels, 1.5 of 255 on an edge, and one in
// halves of the pen's width, a few hundred chords for the whole circle.
constexpr double arcTolerance = 0.006, leastArcTolerance = 0.125 / 3e4;
// A corner of the outline shorter than this, in pixels, is ignored: joins would differ by less than a hundredth of a pixel.
constexpr double leastJoin = 0.1;
// This many sides on either side of a fold are searched for the place where they meet, each with each, which bounds the time
// of a bend.
constexpr std::size_t maxSidesOfFold = 8;
// The area, in square pixels, that may be missing at the inner corner of a gentle bend: 5 of 255 if it were all in one
// pixel.
constexpr double leastCorner = 0.02;
// The width, in pixels, of a tip on the inner side of a bend that is too small to be visible.
constexpr double leastTip = 0.02;

// From a direction of the line to the direction in which the current side lies.
CGPoint aside(CGPoint direction) { return {direction.y, -direction.x}; }

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

// True if straight sides between the ends of a chord of this squared length, between which lies this squared turn, are not
// good enough: where the inner one would go backwards, or the outer one is too coarse.
inline bool StrokeOutline::isTight(double turn, double squaredLength) {
  const double reach = pen_.halfWidth, pixels = reach * pixelsPerLength_;
  if (turn * reach * reach > 0.8 * squaredLength) {
    // A tip shorter than two pixels covers less than its width of any of them.
    tips_ += std::sqrt(turn) * pixels * std::min(1.0, pixels / 2);
    return tips_ > leastTip;
  }
  tips_ = 0;
  if (turn > 0.5) return true;
  if (turn * pixels < 0.12) return false;
  // Compares the area beside a chord of the outer edge with an area too small to be visible.
  const double angle = std::sqrt(turn), radius = pixels + std::sqrt(squaredLength) * pixelsPerLength_ / angle;
  return radius * radius * turn * angle > 0.2;
}

// The way to one point that lies on both edges, where the line goes straight or bends so little that all joins look the
// same.
inline std::optional<CGPoint> StrokeOutline::sideOf(CGPoint in, CGPoint out) const {
  if (in == out) return aside(in) * pen_.halfWidth;
  const double cosine = dot(in, out), across = std::abs(cross(in, out)) * pen_.halfWidth;
  const bool isGentle = cosine > 0.5 && across < leastJoin * pen_.pixel;
  if (!isGentle && !(cosine > 1 - 1e-10)) return std::nullopt;
  return aside(in + out) * (pen_.halfWidth / (1 + cosine));
}

void StrokeOutline::completeDirections(std::span<StrokePoint> line, Contour contour) {
  const std::size_t last = line.size() - 1;
  completeEdge(line[0], line[1]);
  isSmooth_ = true;
  tips_ = 0;
  for (std::size_t i = 1; i < last; ++i) {
    completeEdge(line[i], line[i + 1]);
    findSide(line[i - 1], line[i]);
  }
  line[0].side = line[last].side = {};
  if (contour == Contour::Open) return;
  completeEdge(line[last], line[0]);
  findSide(line[last - 1], line[last]);
  findSide(line[last], line[0]);
}

inline void StrokeOutline::completeEdge(StrokePoint& from, StrokePoint& to) {
  const CGPoint way = to.at - from.at;
  if (from.out != CGPoint{} && to.in != CGPoint{}) {
    const CGPoint difference = to.in - from.out;
    to.turn = dot(difference, difference);
    from.way = isTight(to.turn, dot(way, way)) ? Way::Tight : Way::Curved;
    return;
  }
  const CGPoint chord = unit(way);
  if (from.out == CGPoint{}) from.out = chord;
  if (to.in == CGPoint{}) to.in = chord;
  to.turn = 0;
  from.way = from.out == chord && to.in == chord ? Way::Straight : Way::Tight;
}

inline void StrokeOutline::findSide(const StrokePoint& before, StrokePoint& p) {
  const std::optional<CGPoint> side = sideOf(p.in, p.out);
  if (!side || before.way == Way::Tight) isSmooth_ = false;
  if (!side) return void(p.side = {});
  // The points of a flattened curve lie a little outside it, so that its chords leave no area out; so do the edge's points.
  p.side = p.corner == Corner::Smooth && p.way != Way::Tight && before.way != Way::Tight ? *side * (1 + p.turn * (1.0 / 12))
                                                                                         : *side;
}

inline CGPoint StrokeOutline::edgeAt(CGPoint at, CGPoint direction) const { return at + aside(direction) * pen_.halfWidth; }

void StrokeOutline::addOpen(std::span<const StrokePoint> line) {
  const std::size_t last = line.size() - 1;
  beginRing();
  addCap(line[0].at, line[0].out);
  for (std::size_t i = 1; i <= last; ++i) {
    goAlong(line[i - 1], line[i]);
    if (i < last) pass(line[i - 1], line[i]);
  }
  putSide(edgeAt(line[last].at, line[last].in));
  addCap(line[last].at, -line[last].in);
  for (std::size_t i = last; i-- > 0;) {
    goBack(line[i], line[i + 1]);
    if (i > 0) passBack(line[i - 1], line[i]);
  }
  putSide(edgeAt(line[0].at, -line[0].out));
}

void StrokeOutline::addRings(std::span<StrokePoint> line) {
  const std::size_t count = line.size();
  if (isSmooth_ && count > 2) {
    CGPoint* to = polygons_->addPolygon(count);
    for (const StrokePoint& p : line) *to++ = p.at + p.side;
    to = polygons_->addPolygon(count);
    for (std::size_t i = count; i-- > 0;) *to++ = line[i].at - line[i].side;
    return;
  }
  const auto before = [&](std::size_t i) -> StrokePoint& { return line[i > 0 ? i - 1 : count - 1]; };
  // A ring begins in the middle of a long side, since a fold at its start cannot be cut.
  std::size_t first = 0;
  double longest = -1;
  for (std::size_t i = 0; i < count && before(first).way != Way::Straight; ++i) {
    const CGPoint chord = line[i].at - before(i).at;
    if (const double squares = dot(chord, chord); squares > longest) longest = squares, first = i;
  }
  std::rotate(line.begin(), line.begin() + std::ptrdiff_t(first), line.end());
  const bool startsInSide = before(0).way != Way::Tight;
  const CGPoint start = (line[0].at + before(0).at) * 0.5, across = edgeAt({}, before(0).out + line[0].in) * 0.5;
  const auto finishRing = [&](CGPoint at) {
    if (!startsInSide) return;
    putSide(at);
    polygons_->cutTo(polygons_->pointCount() - 1);
  };
  beginRing();
  if (startsInSide) putPoint(start + across);
  for (std::size_t i = 0; i < count; ++i) {
    pass(before(i), line[i]);
    goAlong(line[i], line[i + 1 < count ? i + 1 : 0]);
  }
  finishRing(start + across);
  if (count == 2) return;  // there and back: one ring is enough
  beginRing();
  if (startsInSide) putPoint(start - across);
  for (std::size_t i = count; i-- > 0;) {
    passBack(before(i), line[i]);
    goBack(before(i), line[i]);
  }
  finishRing(start - across);
}

inline void StrokeOutline::goAlong(const StrokePoint& from, const StrokePoint& to) {
  if (from.way == Way::Tight) addTightEdge({from.at, from.out, to.at, to.in});
}

inline void StrokeOutline::goBack(const StrokePoint& from, const StrokePoint& to) {
  if (from.way == Way::Tight) addTightEdge({to.at, -to.in, from.at, -from.out});
}

inline void StrokeOutline::pass(const StrokePoint& before, const StrokePoint& p) {
  if (p.side != CGPoint{}) return putSide(p.at + p.side);
  putSide(edgeAt(p.at, p.in));
  addCorner({p.at, p.in, p.out, p.corner, before.way != Way::Straight, p.way != Way::Straight});
}

inline void StrokeOutline::passBack(const StrokePoint& before, const StrokePoint& p) {
  if (p.side != CGPoint{}) return putSide(p.at - p.side);
  putSide(edgeAt(p.at, -p.out));
  addCorner({p.at, -p.out, -p.in, p.corner, p.way != Way::Straight, before.way != Way::Straight});
}

// Adds what lies between the ends of the side of an edge along which the pen turns.
void StrokeOutline::addTightEdge(const Edge& edge) {
  const CGPoint way = edge.to - edge.from;
  const double turn = cross(edge.out, edge.in);
  const bool bendsOneWay = cross(edge.out, way) * turn >= 0 && cross(way, edge.in) * turn >= 0 &&
                           std::min(dot(edge.out, way), dot(edge.in, way)) >= 0;
  if (bendsOneWay) return addTurn(edge);
  // Elsewhere the pen turns to the chord, follows it, and turns from it.
  const CGPoint chord = unit(way);
  addTurn({edge.from, edge.out, edge.from, chord});
  putPoint(edgeAt(edge.from, chord));
  putPoint(edgeAt(edge.to, chord));
  addTurn({edge.to, chord, edge.to, edge.in});
}

// Adds the places of the pen's end between the first and the last one. On the inner side it goes backwards if these two
// places cross. That would get the wrong winding, so the side goes around this sector in the other direction.
void StrokeOutline::addTurn(const Edge& edge) {
  const CGPoint way = edge.to - edge.from, first = aside(edge.out) * pen_.halfWidth;
  const double sine = cross(edge.out, edge.in), angle = std::atan2(std::abs(sine), dot(edge.out, edge.in));
  const int inner = int(angle / arcStep_);
  const auto place = [&](int i) {
    const double part = double(i) / (inner + 1), c = std::cos(angle * part),
                 s = std::sin(sine < 0 ? -angle * part : angle * part);
    return edge.from + way * part + CGPoint{first.x * c - first.y * s, first.x * s + first.y * c};
  };
  if (sine >= 0) {
    for (int i = 1; i <= inner; ++i) putPoint(place(i));
    return;
  }
  const double reach = dot(edge.in, way) / -sine, back = dot(edge.out, way) / -sine;
  if (std::max(reach, back) >= pen_.halfWidth) return;
  const CGPoint crossing = edge.from + aside(edge.out) * reach;
  fold(edge.out, edge.in);
  putPoint(crossing);
  for (int i = inner + 1; i >= 0; --i) putPoint(place(i));
  putPoint(crossing);
}

// Adds the rest of a corner, after the first point of its side.
void StrokeOutline::addCorner(const Bend& bend) {
  if (cross(bend.in, bend.out) >= 0) return addJoin(bend);
  // The side goes through the point itself, so that windings keep one sign even where the bend cannot be cut off.
  fold(bend.in, bend.out);
  putPoint(bend.at);
  putPoint(edgeAt(bend.at, bend.out));
  beginSides();
}

// Goes around an outer corner.
void StrokeOutline::addJoin(const Bend& bend) {
  const CGPoint at = bend.at, in = bend.in, out = bend.out;
  const LineJoin join = bend.corner == Corner::Smooth ? LineJoin::Round : pen_.join;
  if (join == LineJoin::Round) addTurn({at, in, at, out});
  // The tip of a miter lies on both edges, 2 / |both| times half the pen's width from the corner. Where the line is straight,
  // no more is needed.
  const CGPoint both = in + out;
  const double squares = dot(both, both);
  const bool hasMiter = join == LineJoin::Miter && 2 <= pen_.miterLimit * std::sqrt(squares);
  if (hasMiter) {
    const CGPoint tip = at + aside(both) * (2 * pen_.halfWidth / squares);
    if (bend.comesCurved) putPoint(tip);
    else polygons_->points().back() = tip;
  }
  if (!hasMiter || bend.goesCurved) putPoint(edgeAt(at, out));
  isFolded_ = false;
  beginSides();
}

// Adds the end of the line that goes `inward` from there, and the beginning of the next side.
void StrokeOutline::addCap(CGPoint at, CGPoint inward) {
  const CGPoint end = pen_.cap == LineCap::Square ? at - inward * pen_.halfWidth : at;
  if (pen_.cap != LineCap::Butt) putPoint(edgeAt(end, -inward));
  if (pen_.cap == LineCap::Round) addTurn({at, -inward, at, inward});
  if (pen_.cap == LineCap::Square) putPoint(edgeAt(end, inward));
  // The side begins beside the line's own end, where it may bend.
  putPoint(edgeAt(at, inward));
  isFolded_ = false;
  beginSides();
}

void StrokeOutline::addDot(CGPoint at) {
  beginRing();
  addCap(at, {1, 0});
  addCap(at, {-1, 0});
}

void StrokeOutline::beginRing() {
  isNewRing_ = true;
  isFolded_ = goesBackwards_ = false;
  sidesStart_ = polygons_->pointCount();
}

inline void StrokeOutline::putPoint(CGPoint p) {
  if (isNewRing_) polygons_->moveTo(p);
  else polygons_->lineTo(p);
  isNewRing_ = false;
}

// Adds the end of an edge's side.
inline void StrokeOutline::putSide(CGPoint p) {
  putPoint(p);
  if (goesBackwards_) beginSides();
  else if (isFolded_) tryCut();
}

void StrokeOutline::beginSides() {
  sidesStart_ = polygons_->pointCount() - 1;
  goesBackwards_ = false;
}

// The side goes backwards from the last point on, where the line turns between these directions, until new sides begin.
void StrokeOutline::fold(CGPoint in, CGPoint out) {
  if (!isFolded_) {
    if (goesBackwards_) beginSides();
    sidesBeforeFold_ = sidesStart_;
    foldStart_ = polygons_->pointCount() - 1;
    foldDirection_ = in;
  }
  isFolded_ = cross(foldDirection_, out) <= 0;
  goesBackwards_ = true;
}

// Cuts the fold where the sides before and after it meet, once these are so long that the stroke of either covers the other
// one's end. The corner of a gentle bend is too small to be visible.
void StrokeOutline::tryCut() {
  const std::span<const CGPoint> points = polygons_->points();
  const std::size_t first = foldStart_ - std::min(foldStart_ - sidesBeforeFold_, maxSidesOfFold);
  const CGPoint before = points[foldStart_] - points[first], after = points.back() - points[sidesStart_];
  const CGPoint direction = unit(after);
  const double sine = cross(foldDirection_, direction), reach = pen_.halfWidth * sine,
               pixels = pen_.halfWidth * pixelsPerLength_;
  const bool isGentle = dot(foldDirection_, direction) > 0 && -sine * sine * sine * pixels * pixels < leastCorner;
  const auto isLong = [&](CGPoint sides) { return isGentle || dot(sides, sides) >= reach * reach; };
  if (!isLong(after)) return;
  isFolded_ = isLong(before) && !cutWhereSidesMeet(first, points.size() - 1) &&
              points.size() - sidesStart_ < maxSidesOfFold && dot(after, after) < 4 * pen_.halfWidth * pen_.halfWidth;
}

// True if a side after the given first point and before the fold meets one after the fold and before the given last point.
bool StrokeOutline::cutWhereSidesMeet(std::size_t first, std::size_t last) {
  const std::span<CGPoint> points = polygons_->points();
  // Next to the fold they may miss each other by a little.
  const auto isNear = [&](double part, CGPoint side) {
    return part <= 0 || part * part * dot(side, side) < leastJoin * leastJoin * pen_.pixel * pen_.pixel;
  };
  for (std::size_t i = foldStart_; i > first; --i) {
    const CGPoint a = points[i - 1], side = points[i] - a;
    for (std::size_t j = sidesStart_; j < last; ++j) {
      const CGPoint way = points[j + 1] - points[j], between = points[j] - a;
      const double turn = cross(side, way), onSide = cross(between, way) / turn, onWay = cross(between, side) / turn;
      // They must meet in the direction of the bend.
      if (!(turn < 0) || onSide < 0 || onWay > 1 || !isNear(onSide - 1, side) || !isNear(-onWay, way)) continue;
      points[i] = a + side * std::min(onSide, 1.0);
      std::copy(points.begin() + j + 1, points.end(), points.begin() + i + 1);
      polygons_->cutTo(points.size() - (j - i));
      sidesStart_ = i;
      return true;
    }
  }
  return false;
}

}  // namespace tessaluna::backend::raster
