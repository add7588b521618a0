#include "tessaluna/backends/raster/Stroker.h"

#include <limits>
#include <numeric>

namespace tessaluna::backend::raster {

namespace {

constexpr double infinite = std::numeric_limits<double>::infinity();
// Tolerances for flattened curves, in device pixels: 2 of 255 on an edge, 1.3 within one pixel. Those of dashes do not
// lie around their curve but inside it.
constexpr double chordTolerance = 0.0083, areaTolerance = 0.005, dashTolerance = 0.003;
constexpr double endStep = 2.0 / 3;  // with this, no area is lost at a curve's ends either
// A pattern finer than this, in pixels, and more dashes than this cannot be distinguished from a solid line.
constexpr double finestPattern = 1.0 / 16;
constexpr int maxDashes = 200000;
// After this many points of the outline the rest of a dashed line is solid. This bounds the time of a wide pen with a fine
// pattern, where each dash covers the whole picture.
constexpr std::size_t maxPointsOfDashes = 400000;
constexpr double widestPen = 1e7;  // half a pen's width, in pixels; corners of wider pens lose precision

// A dash's end is found this exactly on a chord, in halves of it.
constexpr int halvings = 40;
// The places and weights that integrate over 0 to 1, after Gauss and Legendre.
constexpr struct {
  double place, weight;
} gaussian[] = {{0.04691007703066802, 0.11846344252809454},
                {0.23076534494715845, 0.23931433524968324},
                {0.5, 0.28444444444444444},
                {0.7692346550528415, 0.23931433524968324},
                {0.953089922969332, 0.11846344252809454}};

double largestScale(const CGAffineTransform& t) {
  // The larger singular value.
  const double squares = t.a * t.a + t.b * t.b + t.c * t.c + t.d * t.d;
  const double determinant = t.a * t.d - t.b * t.c;
  return std::sqrt(0.5 * (squares + std::sqrt(std::max(0.0, squares * squares - 4 * determinant * determinant))));
}

double distance(CGPoint a, CGPoint b) {
  const CGPoint way = b - a;
  return std::sqrt(dot(way, way));
}

// True if the transform maps circles to circles.
bool keepsCircles(const CGAffineTransform& t) {
  const double largest = t.a * t.a + t.b * t.b;
  return std::abs(largest - (t.c * t.c + t.d * t.d)) <= 1e-12 * largest &&
         std::abs(t.a * t.c + t.b * t.d) <= 1e-12 * largest;
}

}  // namespace

bool Stroker::stroke(const Path& path, const StrokeStyle& style, const CGAffineTransform& toDevice,
                     const DeviceRect& visible, Polygons& polygons) {
  const double scale = largestScale(toDevice);
  const std::optional<CGAffineTransform> toPath = toDevice.inverted();
  if (!toPath || !std::isfinite(scale) || !(scale > 0) || !(style.width >= 0)) return true;

  const bool isInDevice = keepsCircles(toDevice);
  perLength_ = isInDevice ? scale : 1;
  pen_.pixel = isInDevice ? 1 : 1 / scale;
  setPen(style);
  if (pen_.halfWidth < nearest_) return true;  // too thin for directions across it
  const CGRect seen{visible.left, visible.top, visible.right - visible.left, visible.bottom - visible.top};
  const CGRect inLine = isInDevice ? seen : toPath->applyToRect(seen);
  const double miter = style.join == LineJoin::Miter && style.miterLimit > 1.5 ? style.miterLimit : 1.5;
  const double margin = std::min(pen_.halfWidth * miter + 2 * pen_.pixel, 1e7 * pen_.pixel + 2 * pen_.halfWidth);
  reach_ =
      DeviceRect{CGRectGetMinX(inLine), CGRectGetMinY(inLine), CGRectGetMaxX(inLine), CGRectGetMaxY(inLine)}.grown(margin);
  if (reach_.isEmpty()) return false;
  setDashes(style);

  polygons_ = &polygons;
  isWhole_ = true;
  piece_.clear();
  outline_.begin(pen_, polygons);
  // Dashes know their curve from its chords.
  FlattenSettings settings{
      .visible = reach_, .tolerance = dashTolerance * pen_.pixel, .reach = pen_.halfWidth, .keepsLengths = true};
  if (dashes_.empty()) {
    settings.keepsLengths = false;
    settings.tolerance = chordTolerance * pen_.pixel;
    settings.areaTolerance = areaTolerance * pen_.pixel * pen_.pixel;
    settings.shareAtTurns = float(std::min(pen_.halfWidth / pen_.pixel, 1.0));
    settings.endStep = endStep;
  }
  Flattener<Stroker>(settings, *this).add(path, isInDevice ? toDevice : CGAffineTransform{});
  finishContour(Contour::Open);
  if (!isInDevice) {
    for (CGPoint& p : polygons.points()) p = toDevice.apply(p);
  }
  return isWhole_;
}

void Stroker::setPen(const StrokeStyle& style) {
  // A width of 0 means the thinnest visible line.
  const double width = style.width > 0 ? style.width * perLength_ : pen_.pixel;
  pen_.halfWidth = std::min(width * 0.5, widestPen * pen_.pixel);
  pen_.cap = style.cap;
  pen_.join = style.join;
  pen_.miterLimit = style.miterLimit;
  nearest_ = 1e-7 * pen_.pixel;
}

void Stroker::setDashes(const StrokeStyle& style) {
  dashes_.clear();
  dashTotal_ = 0;
  for (const double length : style.dash) {
    if (!(length >= 0) || !std::isfinite(length)) return dashes_.clear();
    dashes_.push_back(length * perLength_);
  }
  // A pattern with an odd number of lengths swaps dashes and gaps the second time.
  if (dashes_.size() % 2 == 1) {
    for (const double length : style.dash) dashes_.push_back(length * perLength_);
  }
  dashTotal_ = std::accumulate(dashes_.begin(), dashes_.end(), 0.0);
  if (!(dashTotal_ > finestPattern * pen_.pixel) || !std::isfinite(dashTotal_)) return dashes_.clear();
  dashPhase_ = std::isfinite(style.dashPhase) ? std::fmod(style.dashPhase * perLength_, dashTotal_) : 0;
  if (dashPhase_ < 0) dashPhase_ += dashTotal_;
  dashesLeft_ = maxDashes;
}

void Stroker::moveTo(CGPoint p) {
  finishContour(Contour::Open);
  add({p});
}

void Stroker::curvePoint(CGPoint p, CGPoint direction) {
  const CGPoint along = kept(direction);
  add({p, Corner::Smooth, along, along});
}

inline void Stroker::add(const StrokePoint& p) {
  isDouble_ = !points_.empty() && mergeDouble(points_.back(), p);
  if (isDouble_) return;
  const bool isFar = p.at.x < reach_.left || p.at.x > reach_.right || p.at.y < reach_.top || p.at.y > reach_.bottom;
  if (isFar && !firstFar_) {
    firstFar_ = points_.size();
    isWhole_ = false;
  }
  points_.push_back(p);
}

// True if a point is too near to the previous one to give a direction; the previous point then represents both.
inline bool Stroker::mergeDouble(StrokePoint& last, const StrokePoint& p) const {
  const CGPoint way = p.at - last.at;
  if (dot(way, way) > nearest_ * nearest_) return false;
  if (p.corner == Corner::Sharp) last.corner = Corner::Sharp;
  last.out = p.out;
  return true;
}

void Stroker::finishContour(Contour contour) {
  // A single point that is not closed draws nothing.
  if (points_.size() > 1 || isDouble_ || (contour == Contour::Closed && !points_.empty())) {
    if (dashes_.empty() && !firstFar_) {
      outline(points_, contour);
    } else {
      // A solid ring that is cut starts outside the visible part, so that its own start keeps its join.
      const bool turns = dashes_.empty() && contour == Contour::Closed;
      if (turns) std::rotate(points_.begin(), points_.begin() + std::ptrdiff_t(*firstFar_), points_.end());
      walkContour(contour);
    }
  }
  points_.clear();
  firstFar_.reset();
  isDouble_ = false;
}

// Cuts the line into dashes and leaves out what lies out of reach, before anything is computed from its length: even an
// extremely long line has no more dashes than fit into the picture.
void Stroker::walkContour(Contour contour) {
  dash_ = 0;
  isOn_ = true;
  rest_ = dashes_.empty() ? infinite : dashes_[0];
  if (!dashes_.empty()) skip(dashPhase_);
  bool moved = false;
  const auto walk = [&](const StrokePoint& from, const StrokePoint& to) {
    if (distance(from.at, to.at) <= nearest_) return;
    walkSegment(from, to);
    moved = true;
  };
  for (std::size_t i = 0; i + 1 < points_.size(); ++i) walk(points_[i], points_[i + 1]);
  if (contour == Contour::Closed) walk(points_.back(), points_.front());
  finishPiece();
  if (!moved && isOn_) outline(points_, contour);
}

// The part of a segment within reach.
struct Stroker::Visible {
  CGPoint start, end;
  double before = 0, length = 0, after = 0;  // lengths of the parts
};

void Stroker::walkSegment(const StrokePoint& from, const StrokePoint& to) {
  const std::optional<Visible> seen = visiblePart(from, to);
  const CGPoint way = to.at - from.at;
  const double whole = distance(from.at, to.at), before = seen ? seen->before : 0;
  // Dashes end on the curve and not on the chord. It is the cubic one that leaves and arrives in these ways.
  const bool bends = !dashes_.empty() && (from.out != CGPoint{} || to.in != CGPoint{});
  const CGPoint first = from.out - way, last = to.in - way;
  const auto directionAt = [&](double t) { return way + first * ((1 - t) * (1 - 3 * t)) - last * (t * (2 - 3 * t)); };
  // The length between two places on the chord, which are given as distances from where it starts to be visible.
  const auto length = [&](double start, double end) {
    if (!bends) return end - start;
    double sum = 0;
    for (const auto& [place, weight] : gaussian) {
      const CGPoint speed = directionAt((before + start + (end - start) * place) / whole);
      sum += weight * std::sqrt(dot(speed, speed));
    }
    return sum * (end - start) / whole;
  };
  if (!seen) {
    finishPiece();
    return skip(length(0, whole));
  }
  if (before > 0) {
    finishPiece();
    skip(length(-before, 0));
  }
  const CGPoint chord = way * (1 / whole);
  const auto add = [&](double at) {
    StrokePoint p{seen->start + chord * at};
    if (bends) {
      const double t = (before + at) / whole, u = 1 - t;
      p.at = p.at + (first * u - last * t) * (t * u);
      p.in = p.out = unit(directionAt(t));
    }
    piece_.push_back(p);
  };
  // Where the dash or gap ends that began there.
  const auto endFrom = [&](double at) {
    if (!bends) return at + rest_;
    double low = at, high = seen->length;
    for (int i = 0; i < halvings; ++i) {
      const double middle = (low + high) * 0.5;
      (length(at, middle) < rest_ ? low : high) = middle;
    }
    return high;
  };
  if (isOn_ && piece_.empty()) {
    add(0);
    if (before == 0) piece_.back().out = unit(from.out);
  }
  double at = 0, ahead = 0;
  while (rest_ < (ahead = length(at, seen->length))) {
    at = endFrom(at);
    if (isOn_) {
      // A dash of length 0 still needs a direction.
      add(rest_ == infinite || dashes_[dash_] > 0 ? at : at + nearest_ * 100);
      finishPiece();
    }
    nextDash();
    if (isOn_) add(at);
  }
  rest_ -= ahead;
  if (seen->after > 0) {
    if (isOn_) piece_.push_back({seen->end});
    finishPiece();
    skip(length(seen->length, seen->length + seen->after));
  } else if (isOn_) {
    piece_.push_back({to.at, to.corner, unit(to.in), unit(to.out)});
  }
}

// Liang and Barsky's algorithm, but with coordinates instead of fractions of the length, which are too imprecise if both
// ends are very far away.
std::optional<Stroker::Visible> Stroker::visiblePart(const StrokePoint& from, const StrokePoint& to) const {
  CGPoint a = from.at, b = to.at;
  const auto isWithin = [this](CGPoint p) {
    return p.x >= reach_.left && p.x <= reach_.right && p.y >= reach_.top && p.y <= reach_.bottom;
  };
  const double whole = distance(a, b);
  if (isWithin(a) && isWithin(b)) return Visible{.start = a, .end = b, .length = whole};
  const CGPoint start = a, end = b;
  const auto cut = [&](double CGPoint::*axis, double CGPoint::*other, double low, double high) {
    const double slope = (end.*other - start.*other) / (end.*axis - start.*axis);
    const auto moveTo = [&](CGPoint& p, double edge) {
      // Computed from the nearer end.
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
  Visible seen{a, b, distance(start, a), distance(a, b), distance(b, end)};
  if (seen.before == 0 && seen.after == 0) seen.length = whole;
  return seen;
}

void Stroker::nextDash() {
  if (--dashesLeft_ > 0 && polygons_->pointCount() <= maxPointsOfDashes) return goToNextDash();
  isOn_ = true;
  rest_ = infinite;
}

void Stroker::goToNextDash() {
  dash_ = (dash_ + 1) % dashes_.size();
  isOn_ = dash_ % 2 == 0;
  rest_ = dashes_[dash_];
}

void Stroker::skip(double length) {
  if (rest_ == infinite) return;
  if (length > dashTotal_) length = std::fmod(length, dashTotal_);
  while (length > 0 && length >= rest_) {
    length -= rest_;
    goToNextDash();
  }
  rest_ -= length;
}

void Stroker::finishPiece() {
  if (piece_.size() > 1) {
    const auto isDouble = [this](StrokePoint& last, const StrokePoint& p) { return mergeDouble(last, p); };
    outline(std::span(piece_.begin(), std::unique(piece_.begin(), piece_.end(), isDouble)), Contour::Open);
  }
  piece_.clear();
}

// A point without a direction: only round caps give it a shape.
void Stroker::outlineDot(const StrokePoint& p) {
  if (pen_.cap == LineCap::Round) outline_.addDot(p.at);
}

void Stroker::outline(std::span<StrokePoint> line, Contour contour) {
  if (contour == Contour::Closed) {
    while (line.size() > 1 && distance(line.back().at, line[0].at) <= nearest_) {
      line[0].in = line.back().in;
      line = line.first(line.size() - 1);
    }
  }
  if (line.size() == 1) return outlineDot(line[0]);
  outline_.add(line, contour);
}

}  // namespace tessaluna::backend::raster
