// Turns a path into polylines: applies a transform, replaces curves with chords that stay within a tolerance, and leaves out
// points that are not finite. A sink receives the result:
//   moveTo(p), lineTo(p, Corner), close()
//   leave(direction), arrive(direction)    before and after the chords of a whole curve
// A sink with `wantsDirections` receives the points inside a curve through curvePoint(p, direction) instead of lineTo.
#pragma once

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>

#include "tessaluna/backends/raster/Float4.h"
#include "tessaluna/backends/raster/PixelRect.h"
#include "tessaluna/platform/backend/Path.h"

namespace tessaluna::backend::raster {

// Whether a chord ends at a point of the path or at one inside a curve, where a stroke turns without a join.
enum class Corner { Sharp, Smooth };

struct FlattenSettings {
  DeviceRect visible;       // where chords must be accurate, in the space of the transformed points
  double tolerance = 0.02;  // the largest distance of a chord from its curve
  double reach = 0;         // of a pen that follows the curve: what it draws must be as accurate
  // Chords may be farther off where no more than this area lies between them and the curve, in one place and on one side.
  double areaTolerance = 0;
  // True if lengths matter: invisible parts are then divided into chords too, unless the curve is huge, and chords end on the
  // curve. A direction is then as long as the way that the curve would go, at its speed there, in the time of one chord. The
  // sink also receives directions where this time changes.
  bool keepsLengths = false;
  // Of the chords that the distance asks for, this share is needed where a curve turns back.
  float shareAtTurns = 0;
  double endStep = 1;  // the length of a curve's first and last chord, in steps of its parameter
};

// Points farther out than this count as infinite. The product of two coordinates still fits a double.
constexpr double farthestPoint = 1e100;

inline bool isUsable(CGPoint p) { return std::abs(p.x) <= farthestPoint && std::abs(p.y) <= farthestPoint; }

// Both coordinates of a point are computed at once.
inline Double2 pairOf(const CGPoint& p) { return std::bit_cast<Double2>(p); }
inline CGPoint pointOf(Double2 p) { return {p[0], p[1]}; }

template <class Sink>
class Flattener {
 public:
  Flattener(const FlattenSettings& settings, Sink& sink) : settings_(settings), sink_(sink) {}

  void add(const Path& path, const CGAffineTransform& transform) {
    const CGPoint* point = path.points().data();
    const Double2 x{transform.a, transform.b}, y{transform.c, transform.d}, moved{transform.tx, transform.ty};
    const auto placed = [&](const CGPoint& p) { return bothOf(p.x) * x + bothOf(p.y) * y + moved; };
    for (const PathVerb verb : path.verbs()) {
      switch (verb) {
        case PathVerb::Move: move(placed(point[0])); break;
        case PathVerb::Line: line(placed(point[0])); break;
        case PathVerb::Curve: curve(placed(point[0]), placed(point[1]), placed(point[2])); break;
        case PathVerb::Close:
          if (isOpen_) sink_.close();
          isOpen_ = false;
          current_ = start_;
          break;
      }
      point += pointCount(verb);
    }
  }

 private:
  // Chords per piece: a curve that needs more is split, and has fewer chords where it is invisible.
  static constexpr int maxSteps = 64;
  static constexpr int deepestSplit = 48;
  // The splits of one curve and of a path. Where only a part of a huge curve is visible, each level needs two. More are
  // needed only where almost all of a huge curve matters, as for a pen of that size, and there coarse chords are good
  // enough.
  static constexpr int maxSplitsOfCurve = 256, maxSplits = 8192;
  // Chords of a curve whose length is kept: the splits are enough for that many.
  static constexpr float maxStepsWithLength = maxSteps * 64;

  template <class... Pairs>
  static bool areUsable(Pairs... points) {
    return (... && areBothSet(magnitude(points) <= bothOf(farthestPoint)));
  }

  void move(Double2 to) {
    hasStart_ = areUsable(to);
    if (!hasStart_) return;
    start_ = current_ = to;
    sink_.moveTo(pointOf(to));
    isOpen_ = true;
  }

  // After a close the next segment begins a subpath at the old start; after a lost start, at its own end.
  bool begin(Double2 to) {
    if (!hasStart_) {
      move(to);
      return false;
    }
    if (!isOpen_) move(current_);
    return true;
  }

  void line(Double2 to) {
    if (!areUsable(to) || !begin(to)) return;
    sink_.lineTo(pointOf(to), Corner::Sharp);
    current_ = to;
  }

  void curve(Double2 p1, Double2 p2, Double2 p3) {
    if (!areUsable(p1, p2, p3) || !begin(p3)) return;
    const Double2 p0 = current_;
    current_ = p3;
    // A control point that coincides with an end gives no direction there; the next point does.
    const auto other = [](Double2 from, Double2 next, Double2 second, Double2 third) {
      return !areBothSet(next == from) ? next : !areBothSet(second == from) ? second : third;
    };
    splitsLeftOfCurve_ = maxSplitsOfCurve;
    if (!settings_.keepsLengths) sink_.leave(pointOf(other(p0, p1, p2, p3) - p0));
    // Nearly all curves are in the picture and need no splitting: the compiler can inline this short way.
    const bool isNeeded = settings_.keepsLengths || isVisible(p0);
    const float wanted = isNeeded ? wantedChords(p0, p1, p2, p3) : maxSteps + 1;
    leavesOut_ = !settings_.keepsLengths || !(wanted < maxStepsWithLength);
    if (wanted < maxSteps) step(p0, p1, p2, p3, int(wanted) + 1, Corner::Sharp);
    else split(p0, p1, p2, p3, Corner::Sharp, 0);
    if (!settings_.keepsLengths) sink_.arrive(pointOf(p3 - other(p3, p2, p1, p0)));
  }

  bool isVisible(Double2 p) const { return areBothSet(p >= leftTop_) && areBothSet(p <= rightBottom_); }

  // True if the whole curve lies beyond one side, where its chord covers the same as the curve.
  bool isBeside(Double2 p0, Double2 p1, Double2 p2, Double2 p3) const {
    const Double2 low = smaller(smaller(p0, p1), smaller(p2, p3)), high = larger(larger(p0, p1), larger(p2, p3));
    return !areBothSet(high >= leftTop_) || !areBothSet(low <= rightBottom_);
  }

  // How many chords are needed to stay within the tolerances.
  float wantedChords(Double2 p0, Double2 p1, Double2 p2, Double2 p3) const {
    const Double2 d0 = p1 - p0, d1 = p2 - p1, d2 = p3 - p2;
    // A sixth of the second derivative at either end; between them it is linear.
    const Double2 a = (d1 - d0) * (d1 - d0), b = (d2 - d1) * (d2 - d1);
    const Double2 squares = __builtin_shufflevector(a, b, 0, 2) + __builtin_shufflevector(a, b, 1, 3);
    // Single precision is enough for a number of chords, and takes half the time.
    float bend = std::sqrt(float(std::max(squares[0], squares[1])));
    // The first derivative times the second one is quadratic, with these Bernstein coefficients times 18.
    const auto cross = [](Double2 a, Double2 b) { return std::abs(float(a[0] * b[1] - a[1] * b[0])); };
    const float turn0 = cross(d0, d1), turn1 = cross(d1, d2);
    float sweep = std::max(std::max(turn0, turn1), 0.5f * cross(d0, d2)), least = 0;
    if constexpr (requires { Sink::wantsDirections; }) {
      // The pen's far edge is longer in proportion to how much farther out it lies than the curve: in the middle, and at an
      // end where the control points make the curve bend sharply.
      const Double2 all = p3 - p0;
      const float x = float(all[0]), y = float(all[1]), reach = float(settings_.reach);
      const auto atEnd = [&](float turn, Double2 leg) {
        const float squares = float(leg[0] * leg[0] + leg[1] * leg[1]);
        return squares > 0 ? std::min(turn * reach / (1.5f * squares * std::sqrt(squares)), 12.0f) : 0;
      };
      const float inMiddle = std::min(6 * bend * reach / (x * x + y * y + 1e-30f), 32.0f);
      // Where a curve turns back there is little area beside it, but as much as the pen is wide where the pen turns.
      const auto dot = [](Double2 a, Double2 b) { return a[0] * b[0] + a[1] * b[1]; };
      if (std::min({dot(d0, d1), dot(d1, d2), dot(d0, d2)}) < 0)
        least = std::sqrt(bend * perTolerance_) * settings_.shareAtTurns;
      const float longer = 1 + std::max(inMiddle, std::max(atEnd(turn0, d0), atEnd(turn1, d2)));
      bend *= longer;
      sweep *= longer * longer;
    }
    return std::max(std::min(std::sqrt(bend * perTolerance_), roughCubeRoot(sweep * perArea_)), least) + float(saved_);
  }

  // Uses the logarithm; accurate to a few hundredths.
  static float roughCubeRoot(float v) { return std::bit_cast<float>(std::bit_cast<std::uint32_t>(v) / 3 + 0x2a5137a0); }

  void split(Double2 p0, Double2 p1, Double2 p2, Double2 p3, Corner end, int depth) {
    if (leavesOut_ && !isVisible(p0) && !isVisible(p3) && isBeside(p0, p1, p2, p3)) return sink_.lineTo(pointOf(p3), end);
    const float wanted = wantedChords(p0, p1, p2, p3);
    if (!(wanted <= maxSteps) && depth < deepestSplit && splitsLeftOfCurve_ > 0 && splitsLeft_ > 0) {
      --splitsLeftOfCurve_;
      --splitsLeft_;
      const auto middle = [](Double2 a, Double2 b) { return (a + b) * bothOf(0.5); };
      const Double2 p01 = middle(p0, p1), p12 = middle(p1, p2), p23 = middle(p2, p3);
      const Double2 p012 = middle(p01, p12), p123 = middle(p12, p23), half = middle(p012, p123);
      split(p0, p01, p012, half, Corner::Smooth, depth + 1);
      split(half, p123, p23, p3, end, depth + 1);
      return;
    }
    step(p0, p1, p2, p3, wanted < maxSteps ? int(wanted) + 1 : maxSteps, end);
  }

  // Chords between evenly spaced parameters. A chord of step h lies h^2/12 |B''| inside its curve on average;
  // moving every inner point outward by that much leaves no area out, so that a third of the chords is enough. The
  // shift is linear in the parameter and costs nothing: it only changes the two lowest coefficients. A
  // curve's ends cannot be moved, so the chords there must be shorter.
  void step(Double2 p0, Double2 p1, Double2 p2, Double2 p3, int count, Corner end) {
    const double h = 1.0 / (count - saved_);
    const Double2 three = bothOf(3), a = p3 - p0 + three * (p1 - p2), b = three * (p0 - (p1 + p1) + p2);
    const double shift = settings_.keepsLengths ? 0 : h * h * (1.0 / 6);
    const Double2 c = three * (p1 - p0) - bothOf(3 * shift) * a, d = p0 - bothOf(shift) * b;
    const Double2 step = bothOf(h), a2 = three * a * step, b2 = (b + b) * step, c2 = c * step;
    const auto way = [&](double t) { return pointOf((a2 * bothOf(t) + b2) * bothOf(t) + c2); };
    // Not quite at the ends, where it may be zero.
    if (settings_.keepsLengths) sink_.leave(way(1e-6));
    double t = (1 - saved_ * 0.5) * h;
    for (int i = 1; i < count; ++i, t += h) {
      const Double2 at = bothOf(t), p = ((a * at + b) * at + c) * at + d;
      if constexpr (requires { Sink::wantsDirections; }) {
        sink_.curvePoint(pointOf(p), way(t));
      } else {
        sink_.lineTo(pointOf(p), Corner::Smooth);
      }
    }
    sink_.lineTo(pointOf(p3), end);
    if (settings_.keepsLengths) sink_.arrive(way(1 - 1e-6));
  }

  const FlattenSettings settings_;
  const Double2 leftTop_{settings_.visible.left, settings_.visible.top};
  const Double2 rightBottom_{settings_.visible.right, settings_.visible.bottom};
  const float perTolerance_ = float(1 / (2 * settings_.tolerance));
  // A chord of length L on radius r leaves an area of at most L^3 / 60 r on one side of it in one place.
  const float perArea_ = settings_.areaTolerance > 0 ? float(0.3 / settings_.areaTolerance)
                                                     : std::numeric_limits<float>::max();
  const double saved_ = 2 - 2 * settings_.endStep;  // steps saved at both ends together
  Sink& sink_;
  Double2 start_{}, current_{};
  bool hasStart_ = false, isOpen_ = false;
  bool leavesOut_ = true;  // whether parts of a curve beside the visible rectangle are left out
  int splitsLeftOfCurve_ = 0, splitsLeft_ = maxSplits;
};

}  // namespace tessaluna::backend::raster
