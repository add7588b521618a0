#include "backends/raster/Stroker.h"

#include <limits>
#include <numeric>

namespace backend::raster {

namespace {

constexpr double infinite = std::numeric_limits<double>::infinity();
constexpr double chordTolerance = 0.006;  // of flattened curves and round joins, in device pixels
// A pattern finer than this, in pixels, and more dashes than this cannot be told from a solid line.
constexpr double finestPattern = 1.0 / 16;
constexpr int mostDashes = 200000;
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
  // The ends of a dash inside a curve go by its chord; finer ones turn them right.
  const double tolerance = (dashes_.empty() ? chordTolerance : chordTolerance / 100) / scale;
  Flattener<Stroker>({.visible = reach_, .tolerance = tolerance}, *this).add(path, {});
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
  arcTolerance_ = chordTolerance / deviceScale;
  // The inner side of a join goes by the point itself where the line is shorter than its pen is wide, so that
  // windings stay of one sign.
  pen_.inner_join(agg::inner_jag);
  pen_.width(halfWidth_ * 2);
  // AGG keeps the chords of an arc within 1/8 of this scale's unit; no arc needs more than a few hundred.
  pen_.approximation_scale(std::min(0.125 / chordTolerance * deviceScale, 3e4 / halfWidth_));
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
  points_.clear();
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
    if (from(points_[i + 1])) walkSegment(from, points_[i + 1]), moved = true;
  }
  StrokePoint& last = points_.back();
  if (contour == Contour::Closed && last(points_.front())) walkSegment(last, points_.front()), moved = true;
  finishPiece();
  if (!moved && isOn_) outline(points_, contour);
}

void Stroker::walkSegment(const StrokePoint& from, const StrokePoint& to) {
  double enter = 0, leave = from.dist;
  if (!clipToReach(from, to, enter, leave)) {
    finishPiece();
    return skip(from.dist);
  }
  const double dx = (to.x - from.x) / from.dist, dy = (to.y - from.y) / from.dist;
  const auto add = [&](double at) {
    piece_.push_back({{from.x + dx * at, from.y + dy * at}, Corner::Sharp});
  };
  if (enter > 0) {
    finishPiece();
    skip(enter);
  }
  double at = enter;
  if (isOn_ && piece_.empty()) {
    add(at);
    if (at == 0) piece_.back().out = from.out;
  }
  while (at + rest_ < leave) {
    at += rest_;
    if (isOn_) {
      // A dash of no length has its direction all the same.
      add(dashes_[dash_] > 0 ? at : at + tolerance_ * 100);
      finishPiece();
    }
    nextDash();
    if (isOn_) add(at);
  }
  rest_ -= leave - at;
  if (leave < from.dist) {
    if (isOn_) add(leave);
    finishPiece();
    skip(from.dist - leave);
  } else if (isOn_) {
    piece_.push_back(to);
  }
}

// Liang and Barsky's way: the part of the segment inside, as distances from its start.
bool Stroker::clipToReach(const StrokePoint& from, const StrokePoint& to, double& enter,
                          double& leave) const {
  double t0 = 0, t1 = 1;
  const auto cut = [&](double start, double end, double low, double high) {
    const double d = end - start;
    if (d == 0) return start >= low && start <= high;
    double a = (low - start) / d, b = (high - start) / d;
    if (a > b) std::swap(a, b);
    t0 = std::max(t0, a);
    t1 = std::min(t1, b);
    return t0 < t1;
  };
  if (!cut(from.x, to.x, reach_.left, reach_.right) || !cut(from.y, to.y, reach_.top, reach_.bottom))
    return false;
  enter = t0 > 0 ? t0 * from.dist : 0;
  leave = t1 < 1 ? t1 * from.dist : from.dist;
  return true;
}

void Stroker::nextDash() {
  if (--dashesLeft_ <= 0) {
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
  const double length = std::sqrt(v.x * v.x + v.y * v.y);
  return length > 0 ? CGPoint{v.x / length, v.y / length} : CGPoint{};
}

void Stroker::outline(std::vector<StrokePoint>& line, Contour contour) {
  // Leaves out points too near to the one before to give a direction.
  std::size_t count = 1;
  const auto isNear = [this](StrokePoint& a, const StrokePoint& b) { return !a(b) || a.dist < tolerance_; };
  for (std::size_t i = 1; i < line.size(); ++i) {
    StrokePoint& last = line[count - 1];
    if (!isNear(last, line[i])) {
      line[count++] = line[i];
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
    for (std::size_t i = 1; i < count; ++i) near_.lineTo({line[i].x, line[i].y});
    if (contour == Contour::Closed) near_.lineTo({line[0].x, line[0].y});
  }

  // In an open line the last point's distance and chord are of no use.
  for (std::size_t i = 0; i < count; ++i) {
    StrokePoint &from = line[i], &to = line[(i + 1) % count];
    from.chord = {(to.x - from.x) / from.dist, (to.y - from.y) / from.dist};
    if (from.out == CGPoint{} || from.corner == Corner::Smooth) from.out = from.chord;
    if (to.in == CGPoint{} || to.corner == Corner::Smooth) to.in = from.chord;
  }
  const auto negative = [](CGPoint v) { return CGPoint{-v.x, -v.y}; };
  const auto forth = [&](std::size_t i) {
    const StrokePoint &p = line[i], &before = line[(i + count - 1) % count];
    turn(p, before.chord, p.in, before.dist);
    addJoin({{p.x, p.y}, p.in, p.out, before.dist, p.dist, p.corner});
    turn(p, p.out, p.chord, p.dist);
  };
  const auto back = [&](std::size_t i) {
    const StrokePoint &p = line[i], &before = line[(i + count - 1) % count];
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

// The first chord of a curve leaves in another direction than the curve itself. Where the bend is narrower
// than the pen the outline goes round it, by a join without a corner.
void Stroker::turn(const StrokePoint& at, CGPoint in, CGPoint out, double length) {
  const double x = in.x - out.x, y = in.y - out.y;
  if (halfWidth_ * halfWidth_ * (x * x + y * y) < 0.1 * length * length) return;
  addJoin({{at.x, at.y}, in, out, length, length, Corner::Smooth});
}

void Stroker::addJoin(const Bend& bend) {
  const CGPoint at = bend.at, in = bend.in, out = bend.out;
  const double cosine = in.x * out.x + in.y * out.y;
  // One point between the normals of both chords does where the line goes straight on, and where it bends
  // little in comparison to its chords, inside a curve or too little to tell the joins apart. Its distance
  // from the line is a trifle more than half the pen's width: chords then cut off the curve outside as much
  // as they add.
  const double least = bend.corner == Corner::Smooth ? 0.8 : 0.9999;
  const double shorter = std::min(bend.inLength, bend.outLength);
  const bool isGentle = cosine > least && halfWidth_ * (1 - cosine) < 6 * arcTolerance_ &&
                        halfWidth_ * halfWidth_ * 2 * (1 - cosine) < 0.8 * shorter * shorter;
  if (isGentle || cosine > 1 - 1e-10) {
    const double f = halfWidth_ * (0.5 + 5.0 / 24 * (1 - cosine));
    return outline_.add({at.x + f * (in.y + out.y), at.y - f * (in.x + out.x)});
  }
  pen_.line_join(bend.corner == Corner::Smooth ? agg::round_join : join_);
  // AGG takes directions from points.
  const agg::vertex_dist before(at.x - in.x * bend.inLength, at.y - in.y * bend.inLength), here(at.x, at.y),
      after(at.x + out.x * bend.outLength, at.y + out.y * bend.outLength);
  pen_.calc_join(outline_, before, here, after, bend.inLength, bend.outLength);
}

}  // namespace backend::raster
