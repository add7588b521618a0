#include "backends/raster/Stroker.h"

#include <limits>
#include <numeric>

namespace backend::raster {

namespace {

constexpr double infinite = std::numeric_limits<double>::infinity();
// Of flattened curves and of round joins and caps, in device pixels. The latter's chords all lie inside.
constexpr double chordTolerance = 0.014, dashTolerance = 3e-5, arcTolerance = 0.006;
// A pattern finer than this, in pixels, and more dashes than this cannot be told from a solid line.
constexpr double finestPattern = 1.0 / 16;
constexpr int mostDashes = 200000;
// Of an outline. Behind so many the rest of a dashed line stays solid, so that a wide pen with a fine pattern, each dash of
// which reaches all over the picture, ends in time.
constexpr std::size_t mostPointsOfDashes = 400000;
constexpr double widestPen = 1e9;  // half a pen's width, in pixels; what AGG computes of it stays finite

// A line narrower than this, in pixels, may cross another and leave no pixel that is covered twice all over.
constexpr double thinPen = 2.5;

double largestScale(const CGAffineTransform& t) {
  // The larger singular value.
  const double squares = t.a * t.a + t.b * t.b + t.c * t.c + t.d * t.d;
  const double determinant = t.a * t.d - t.b * t.c;
  return std::sqrt(0.5 *
                   (squares + std::sqrt(std::max(0.0, squares * squares - 4 * determinant * determinant))));
}

}  // namespace

void Stroker::Outline::add(const value_type& p) {
  const CGPoint point = toDevice.apply({p.x, p.y});
  if (!isUsable(point)) return;
  if (isNew_) polygons->moveTo(point);
  else polygons->lineTo(point);
  isNew_ = false;
}

Overlaps Stroker::stroke(const Path& path, const StrokeStyle& style, const CGAffineTransform& toDevice,
                         const DeviceRect& visible, Polygons& polygons) {
  const double scale = largestScale(toDevice);
  const std::optional<CGAffineTransform> toPath = toDevice.inverted();
  if (!toPath || !std::isfinite(scale) || !(scale > 0) || !(style.width >= 0)) return Overlaps::Unlikely;

  setPen(style, scale);
  const CGRect seen = toPath->applyToRect(
      {visible.left, visible.top, visible.right - visible.left, visible.bottom - visible.top});
  const double miter = style.join == LineJoin::Miter && style.miterLimit > 1.5 ? style.miterLimit : 1.5;
  const double margin = std::min(halfWidth_ * miter + 2 / scale, 1e7 / scale + 2 * halfWidth_);
  reach_ =
      DeviceRect{CGRectGetMinX(seen), CGRectGetMinY(seen), CGRectGetMaxX(seen), CGRectGetMaxY(seen)}.grown(
          margin);
  if (reach_.isEmpty()) return Overlaps::Unlikely;
  setDashes(style, scale);
  isThin_ = halfWidth_ * 2 * scale < thinPen;
  near_.clear();

  outline_.toDevice = toDevice;
  outline_.polygons = &polygons;
  // Chords are shorter than their curves; dashes, which count lengths, need finer ones.
  Flattener<Stroker>({.visible = reach_, .tolerance = (dashes_.empty() ? chordTolerance : dashTolerance) / scale}, *this).add(path, {});
  finishContour(Contour::Open);
  return isThin_ && near_.find(halfWidth_ * 2) ? Overlaps::Likely : Overlaps::Unlikely;
}

void Stroker::setPen(const StrokeStyle& style, double deviceScale) {
  // A line of no width is the thinnest that can be seen.
  const double width = style.width > 0 ? style.width : 1 / deviceScale;
  halfWidth_ = std::min(width * 0.5, widestPen / deviceScale);
  tolerance_ = 1e-7 / deviceScale;
  cap_ = style.cap;
  constexpr agg::line_join_e joins[] = {agg::miter_join_revert, agg::round_join, agg::bevel_join};
  join_ = joins[int(style.join)];
  constexpr agg::line_cap_e caps[] = {agg::butt_cap, agg::round_cap, agg::square_cap};
  pen_.line_cap(caps[int(style.cap)]);
  pen_.miter_limit(style.miterLimit);
  arcTolerance_ = arcTolerance / deviceScale;
  // The inner side of a join goes by the point itself where the line is shorter than its pen is wide, so that
  // windings stay of one sign.
  pen_.inner_join(agg::inner_jag);
  pen_.width(halfWidth_ * 2);
  // AGG keeps the chords of an arc within 1/8 of this scale's unit; no arc needs more than a few hundred.
  pen_.approximation_scale(std::min(0.125 / arcTolerance * deviceScale, 3e4 / halfWidth_));
}

void Stroker::setDashes(const StrokeStyle& style, double deviceScale) {
  dashes_.clear();
  dashTotal_ = 0;
  for (const double length : style.dash) {
    if (!(length >= 0) || !std::isfinite(length)) return dashes_.clear();
    dashes_.push_back(length);
  }
  // An odd pattern takes its lengths as gaps the second time round.
  if (dashes_.size() % 2 == 1) dashes_.insert(dashes_.end(), style.dash.begin(), style.dash.end());
  dashTotal_ = std::accumulate(dashes_.begin(), dashes_.end(), 0.0);
  if (!(dashTotal_ * deviceScale > finestPattern) || !std::isfinite(dashTotal_)) return dashes_.clear();
  dashPhase_ = std::isfinite(style.dashPhase) ? std::fmod(style.dashPhase, dashTotal_) : 0;
  if (dashPhase_ < 0) dashPhase_ += dashTotal_;
  dashesLeft_ = mostDashes;
}

void Stroker::moveTo(CGPoint p) {
  finishContour(Contour::Open);
  points_.push_back({p, Corner::Sharp});
}

void Stroker::lineTo(CGPoint p, Corner corner) { points_.push_back({p, corner}); }

void Stroker::finishContour(Contour contour) {
  // A lone point that is not closed draws nothing.
  if (points_.size() > 1 || (contour == Contour::Closed && !points_.empty())) {
    const auto isFar = [this](const StrokePoint& p) {
      return p.x < reach_.left || p.x > reach_.right || p.y < reach_.top || p.y > reach_.bottom;
    };
    const auto far = std::find_if(points_.begin(), points_.end(), isFar);
    if (dashes_.empty() && far == points_.end()) {
      outline(points_, contour);
    } else {
      // A solid ring that is cut starts outside, so that its own start keeps its join.
      if (dashes_.empty() && contour == Contour::Closed) std::rotate(points_.begin(), far, points_.end());
      walkContour(contour);
    }
  }
  clearForReuse(points_);
}

// Cuts the line into dashes and leaves out what lies beyond reach, before anything is computed from its
// length: a line to the end of the world has no more dashes than fit into the picture.
void Stroker::walkContour(Contour contour) {
  dash_ = 0;
  isOn_ = true;
  rest_ = dashes_.empty() ? infinite : dashes_[0];
  if (!dashes_.empty()) skip(dashPhase_);
  bool moved = false;
  for (std::size_t i = 0; i + 1 < points_.size(); ++i) {
    StrokePoint& from = points_[i];
    if (from(points_[i + 1])) walkSegment(i), moved = true;
  }
  StrokePoint& last = points_.back();
  if (contour == Contour::Closed && last(points_.front())) walkSegment(points_.size() - 1), moved = true;
  finishPiece();
  if (!moved && isOn_) outline(points_, contour);
}

// The part of a segment within reach.
struct Stroker::Visible {
  CGPoint start, end;
  double before = 0, length = 0, after = 0;  // of the parts
};

// At a part of the way from a point to the next one. Inside a curve it is the curve's and not the chord's, so that dashes
// end right.
CGPoint Stroker::directionAt(std::size_t point, double part) const {
  const std::size_t count = points_.size();
  const auto at = [&](std::size_t i) -> const StrokePoint& { return points_[i % count]; };
  const auto chord = [&](std::size_t i) {
    const StrokePoint &from = at(i), &to = at(i + 1);
    return unit({to.x - from.x, to.y - from.y});
  };
  const CGPoint here = chord(point);
  const auto between = [&](CGPoint other) { return unit({here.x + other.x, here.y + other.y}); };
  const StrokePoint &from = at(point), &to = at(point + 1);
  const CGPoint start = from.corner == Corner::Smooth ? between(chord(point + count - 1)) : from.out;
  const CGPoint end = to.corner == Corner::Smooth ? between(chord(point + 1)) : to.in;
  const CGPoint first = start == CGPoint{} ? here : start, last = end == CGPoint{} ? here : end;
  return unit({first.x + (last.x - first.x) * part, first.y + (last.y - first.y) * part});
}

void Stroker::walkSegment(std::size_t point) {
  const StrokePoint &from = points_[point], &to = points_[point + 1 < points_.size() ? point + 1 : 0];
  const std::optional<Visible> seen = visiblePart(from, to);
  if (!seen) {
    finishPiece();
    return skip(from.dist);
  }
  if (seen->before > 0) {
    finishPiece();
    skip(seen->before);
  }
  const double dx = (to.x - from.x) / from.dist, dy = (to.y - from.y) / from.dist;
  const auto add = [&](double at) {
    StrokePoint p({seen->start.x + dx * at, seen->start.y + dy * at}, Corner::Sharp);
    if (!dashes_.empty()) p.in = p.out = directionAt(point, (seen->before + at) / from.dist);
    piece_.push_back(p);
  };
  if (isOn_ && piece_.empty()) {
    add(0);
    if (seen->before == 0) piece_.back().out = from.out;
  }
  double at = 0;
  while (at + rest_ < seen->length) {
    at += rest_;
    if (isOn_) {
      // A dash of no length has its direction all the same.
      add(rest_ == infinite || dashes_[dash_] > 0 ? at : at + tolerance_ * 100);
      finishPiece();
    }
    nextDash();
    if (isOn_) add(at);
  }
  rest_ -= seen->length - at;
  if (seen->after > 0) {
    if (isOn_) piece_.push_back({seen->end, Corner::Sharp});
    finishPiece();
    skip(seen->after);
  } else if (isOn_) {
    piece_.push_back(to);
  }
}

// Liang and Barsky's way, but with coordinates: where both ends are very far, a fraction of the length is no
// place.
std::optional<Stroker::Visible> Stroker::visiblePart(const StrokePoint& from, const StrokePoint& to) const {
  CGPoint a{from.x, from.y}, b{to.x, to.y};
  const auto isWithin = [this](CGPoint p) {
    return p.x >= reach_.left && p.x <= reach_.right && p.y >= reach_.top && p.y <= reach_.bottom;
  };
  if (isWithin(a) && isWithin(b)) return Visible{.start = a, .end = b, .length = from.dist};
  const CGPoint start = a, end = b;
  const auto cut = [&](double CGPoint::*axis, double CGPoint::*other, double low, double high) {
    const double slope = (end.*other - start.*other) / (end.*axis - start.*axis);
    const auto moveTo = [&](CGPoint& p, double edge) {
      // From the nearer end.
      const CGPoint& origin = std::abs(edge - start.*axis) < std::abs(edge - end.*axis) ? start : end;
      p.*other = origin.*other + (edge - origin.*axis) * slope;
      p.*axis = edge;
    };
    if (std::max(a.*axis, b.*axis) < low || std::min(a.*axis, b.*axis) > high) return false;
    if (a.*axis < low) moveTo(a, low);
    if (b.*axis < low) moveTo(b, low);
    if (a.*axis > high) moveTo(a, high);
    if (b.*axis > high) moveTo(b, high);
    return true;
  };
  if (!cut(&CGPoint::x, &CGPoint::y, reach_.left, reach_.right) ||
      !cut(&CGPoint::y, &CGPoint::x, reach_.top, reach_.bottom)) {
    return std::nullopt;
  }
  const auto distance = [](CGPoint p, CGPoint q) { 
    return std::sqrt((q.x - p.x) * (q.x - p.x) + (q.y - p.y) * (q.y - p.y));
  };
  Visible seen{a, b, distance(start, a), distance(a, b), distance(b, end)};
  if (seen.before == 0 && seen.after == 0) seen.length = from.dist;
  return seen;
}

void Stroker::nextDash() {
  if (--dashesLeft_ <= 0 || outline_.polygons->pointCount() > mostPointsOfDashes) {
    isOn_ = true;
    rest_ = infinite;
    return;
  }
  dash_ = (dash_ + 1) % dashes_.size();
  isOn_ = dash_ % 2 == 0;
  rest_ = dashes_[dash_];
}

void Stroker::skip(double length) {
  if (rest_ == infinite) return;
  if (length > dashTotal_) length = std::fmod(length, dashTotal_);
  while (length > 0 && length >= rest_) {
    length -= rest_;
    nextDash();
  }
  rest_ -= length;
}

void Stroker::finishPiece() {
  if (piece_.size() > 1) outline(piece_, Contour::Open);
  piece_.clear();
}

CGPoint Stroker::unit(CGPoint v) {
  const double squares = v.x * v.x + v.y * v.y;
  if (!(squares > 0)) return {};
  const double perLength = 1 / std::sqrt(squares);
  return {v.x * perLength, v.y * perLength};
}

void Stroker::outline(std::vector<StrokePoint>& line, Contour contour) {
  // Leaves out points too near to the one before to give a direction.
  std::size_t count = 1;
  const auto isNear = [this](StrokePoint& a, const StrokePoint& b) { return !a(b) || a.dist < tolerance_; };
  for (std::size_t i = 1; i < line.size(); ++i) {
    StrokePoint& last = line[count - 1];
    if (!isNear(last, line[i])) {
      if (count != i) line[count] = line[i];
      ++count;
    } else {
      if (line[i].corner == Corner::Sharp) last.corner = Corner::Sharp;
      last.out = line[i].out;
    }
  }
  if (contour == Contour::Closed) {
    while (count > 1 && isNear(line[count - 1], line[0])) {
      line[0].in = line[count - 1].in;
      --count;
    }
  }
  if (count == 1) return outlineDot({line[0].x, line[0].y});
  if (isThin_) {
    near_.moveTo({line[0].x, line[0].y});
    for (std::size_t i = 1; i < count; ++i) near_.lineTo({line[i].x, line[i].y}, line[i - 1].dist);
    if (contour == Contour::Closed) {
      near_.lineTo({line[0].x, line[0].y}, line[count - 1].dist);
      near_.close();
    }
  }

  // In an open line the last point's distance and chord are of no use.
  for (std::size_t i = 0; i < count; ++i) {
    StrokePoint &from = line[i], &to = line[i + 1 < count ? i + 1 : 0];
    const double perLength = 1 / from.dist;
    from.chord = {(to.x - from.x) * perLength, (to.y - from.y) * perLength};
    if (from.out == CGPoint{} || from.corner == Corner::Smooth) from.out = from.chord;
    if (to.in == CGPoint{} || to.corner == Corner::Smooth) to.in = from.chord;
  }
  const auto negative = [](CGPoint v) { return CGPoint{-v.x, -v.y}; };
  const auto forth = [&](std::size_t i) {
    StrokePoint &p = line[i], &before = line[i > 0 ? i - 1 : count - 1];
    findSide(before, p);
    if (p.side) return outline_.add({p.x + p.side->x, p.y + p.side->y});
    turn(p, before.chord, p.in, before.dist);
    addJoin({{p.x, p.y}, p.in, p.out, before.dist, p.dist, p.corner});
    turn(p, p.out, p.chord, p.dist);
  };
  const auto back = [&](std::size_t i) {
    const StrokePoint &p = line[i], &before = line[i > 0 ? i - 1 : count - 1];
    if (p.side) return outline_.add({p.x - p.side->x, p.y - p.side->y});
    turn(p, negative(p.chord), negative(p.out), p.dist);
    addJoin({{p.x, p.y}, negative(p.out), negative(p.in), p.dist, before.dist, p.corner});
    turn(p, negative(p.in), negative(before.chord), before.dist);
  };
  outline_.begin();
  if (contour == Contour::Open) {
    const StrokePoint &first = line[0], &last = line[count - 1], &before = line[count - 2];
    addCap({first.x, first.y}, first.out);
    turn(first, first.out, first.chord, first.dist);
    for (std::size_t i = 1; i + 1 < count; ++i) forth(i);
    turn(last, before.chord, last.in, before.dist);
    addCap({last.x, last.y}, negative(last.in));
    turn(last, negative(last.in), negative(before.chord), before.dist);
    for (std::size_t i = count - 2; i > 0; --i) back(i);
    turn(first, negative(first.chord), negative(first.out), first.dist);
    return;
  }
  for (std::size_t i = 0; i < count; ++i) forth(i);
  if (count == 2) return;  // there and back: the one ring is all
  outline_.begin();
  for (std::size_t i = count; i-- > 0;) back(i);
}

// Only round ends have a shape without a direction.
void Stroker::outlineDot(CGPoint at) {
  if (cap_ != LineCap::Round) return;
  outline_.begin();
  addCap(at, {1, 0});
  addCap(at, {-1, 0});
}

void Stroker::addCap(CGPoint at, CGPoint inward) {
  pen_.calc_cap(outline_, {at.x, at.y}, {at.x + inward.x, at.y + inward.y}, 1);
}

// True where the outline goes round a bend that is narrower than the pen.
bool Stroker::turns(CGPoint in, CGPoint out, double length) const {
  const double x = in.x - out.x, y = in.y - out.y;
  return halfWidth_ * halfWidth_ * (x * x + y * y) >= 0.1 * length * length;
}

// The first chord of a curve leaves in another direction than the curve itself. Where the bend is narrower
// than the pen the outline goes round it, by a join without a corner.
void Stroker::turn(const StrokePoint& at, CGPoint in, CGPoint out, double length) {
  if (turns(in, out, length)) addJoin({{at.x, at.y}, in, out, length, length, Corner::Smooth});
}

// One point between the normals of both chords does where the line goes straight on, and where it bends little in
// comparison to its chords, inside a curve or too little to tell the joins apart. By how far it lies along the sum of the
// two normals; absent where it does not do.
std::optional<double> Stroker::gentleFactor(const Bend& bend) const {
  const double cosine = bend.in.x * bend.out.x + bend.in.y * bend.out.y;
  const double least = bend.corner == Corner::Smooth ? 0.8 : 0.9999;
  const double shorter = std::min(bend.inLength, bend.outLength);
  const bool isGentle = cosine > least && halfWidth_ * (1 - cosine) < 6 * arcTolerance_ &&
                        halfWidth_ * halfWidth_ * 2 * (1 - cosine) < 0.8 * shorter * shorter;
  if (!isGentle && !(cosine > 1 - 1e-10)) return std::nullopt;
  // Its distance from the line is a trifle more than half the pen's width: chords then cut off the curve outside as much
  // as they add.
  return halfWidth_ * (0.5 + 5.0 / 24 * (1 - cosine));
}

void Stroker::findSide(const StrokePoint& before, StrokePoint& at) const {
  at.side.reset();
  // Inside a curve the line arrives and leaves as the chords do.
  const bool isInside = at.corner == Corner::Smooth;
  if (!isInside && (turns(before.chord, at.in, before.dist) || turns(at.out, at.chord, at.dist))) return;
  if (const auto f = gentleFactor({{at.x, at.y}, at.in, at.out, before.dist, at.dist, at.corner}))
    at.side = CGPoint{*f * (at.in.y + at.out.y), -*f * (at.in.x + at.out.x)};
}

void Stroker::addJoin(const Bend& bend) {
  const CGPoint at = bend.at, in = bend.in, out = bend.out;
  if (const std::optional<double> f = gentleFactor(bend))
    return outline_.add({at.x + *f * (in.y + out.y), at.y - *f * (in.x + out.x)});
  pen_.line_join(bend.corner == Corner::Smooth ? agg::round_join : join_);
  // AGG takes directions from points.
  const agg::vertex_dist before(at.x - in.x * bend.inLength, at.y - in.y * bend.inLength), here(at.x, at.y),
      after(at.x + out.x * bend.outLength, at.y + out.y * bend.outLength);
  pen_.calc_join(outline_, before, here, after, bend.inLength, bend.outLength);
}

}  // namespace backend::raster
