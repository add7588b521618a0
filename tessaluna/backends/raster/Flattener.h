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
  // True if lengths matter: invisible parts are then divided into chords too, unless the curve is huge.
  bool keepsLengths = false;
  double endStep = 1;  // the length of a curve's first and last chord, in steps of its parameter
};

// Points farther out than this count as infinite. The product of two coordinates still fits a double.
constexpr double farthestPoint = 1e100;

inline bool isUsable(CGPoint p) { return std::abs(p.x) <= farthestPoint && std::abs(p.y) <= farthestPoint; }

template <class Sink>
class Flattener {
 public:
  Flattener(const FlattenSettings& settings, Sink& sink) : settings_(settings), sink_(sink) {}

  void add(const Path& path, const CGAffineTransform& transform) {
    const CGPoint* point = path.points().data();
    for (const PathVerb verb : path.verbs()) {
      switch (verb) {
        case PathVerb::Move: move(transform.apply(point[0])); break;
        case PathVerb::Line: line(transform.apply(point[0])); break;
        case PathVerb::Curve: curve(transform.apply(point[0]), transform.apply(point[1]), transform.apply(point[2])); break;
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

  void move(CGPoint to) {
    hasStart_ = isUsable(to);
    if (!hasStart_) return;
    start_ = current_ = to;
    sink_.moveTo(to);
    isOpen_ = true;
  }

  // After a close the next segment begins a subpath at the old start; after a lost start, at its own end.
  bool begin(CGPoint to) {
    if (!hasStart_) {
      move(to);
      return false;
    }
    if (!isOpen_) move(current_);
    return true;
  }

  void line(CGPoint to) {
    if (!isUsable(to) || !begin(to)) return;
    sink_.lineTo(to, Corner::Sharp);
    current_ = to;
  }

  void curve(CGPoint p1, CGPoint p2, CGPoint p3) {
    if (!isUsable(p1) || !isUsable(p2) || !isUsable(p3) || !begin(p3)) return;
    const CGPoint p0 = current_;
    current_ = p3;
    const auto direction = [](CGPoint a, CGPoint b) { return CGPoint{b.x - a.x, b.y - a.y}; };
    // A control point that coincides with an end gives no direction there; the next point does.
    splitsLeftOfCurve_ = maxSplitsOfCurve;
    sink_.leave(direction(p0, p1 != p0 ? p1 : p2 != p0 ? p2 : p3));
    // Nearly all curves are in the picture and need no splitting: the compiler can inline this short way.
    const bool isNeeded = settings_.keepsLengths || isVisible(p0);
    const float wanted = isNeeded ? wantedChords(p0, p1, p2, p3) : maxSteps + 1;
    leavesOut_ = !settings_.keepsLengths || !(wanted < maxStepsWithLength);
    if (wanted < maxSteps) step(p0, p1, p2, p3, int(wanted) + 1, Corner::Sharp);
    else split(p0, p1, p2, p3, Corner::Sharp, 0);
    sink_.arrive(direction(p2 != p3 ? p2 : p1 != p3 ? p1 : p0, p3));
  }

  bool isVisible(CGPoint p) const {
    const DeviceRect& v = settings_.visible;
    return p.x >= v.left && p.x <= v.right && p.y >= v.top && p.y <= v.bottom;
  }

  // True if the whole curve lies beyond one side, where its chord covers the same as the curve.
  bool isBeside(CGPoint p0, CGPoint p1, CGPoint p2, CGPoint p3) const {
    const DeviceRect& v = settings_.visible;
    return std::max(std::max(p0.x, p1.x), std::max(p2.x, p3.x)) < v.left ||
           std::min(std::min(p0.x, p1.x), std::min(p2.x, p3.x)) > v.right ||
           std::max(std::max(p0.y, p1.y), std::max(p2.y, p3.y)) < v.top ||
           std::min(std::min(p0.y, p1.y), std::min(p2.y, p3.y)) > v.bottom;
  }

  // How many chords are needed to stay within the tolerances.
  float wantedChords(CGPoint p0, CGPoint p1, CGPoint p2, CGPoint p3) const {
    const CGPoint d0{p1.x - p0.x, p1.y - p0.y}, d1{p2.x - p1.x, p2.y - p1.y}, d2{p3.x - p2.x, p3.y - p2.y};
    // A sixth of the second derivative at either end; between them it is linear.
    const double ax = d1.x - d0.x, ay = d1.y - d0.y, bx = d2.x - d1.x, by = d2.y - d1.y;
    // Single precision is enough for a number of chords, and takes half the time.
    float bend = std::sqrt(float(std::max(ax * ax + ay * ay, bx * bx + by * by)));
    // The first derivative times the second one is quadratic, with these Bernstein coefficients times 18.
    const auto cross = [](CGPoint a, CGPoint b) { return std::abs(float(a.x * b.y - a.y * b.x)); };
    float sweep = std::max(std::max(cross(d0, d1), cross(d1, d2)), 0.5f * cross(d0, d2));
    if constexpr (requires { Sink::wantsDirections; }) {
      // The pen's far edge is longer in proportion to how much farther out it lies than the curve: in the middle, and at an
      // end where the control points make the curve bend sharply.
      const float x = float(p3.x - p0.x), y = float(p3.y - p0.y), reach = float(settings_.reach);
      const auto atEnd = [&](float turn, CGPoint leg) {
        const float squares = float(leg.x * leg.x + leg.y * leg.y);
        return squares > 0 ? std::min(turn * reach / (1.5f * squares * std::sqrt(squares)), 12.0f) : 0;
      };
      const float inMiddle = std::min(6 * bend * reach / (x * x + y * y + 1e-30f), 32.0f);
      const float longer = 1 + std::max(inMiddle, std::max(atEnd(cross(d0, d1), d0), atEnd(cross(d1, d2), d2)));
      bend *= longer;
      sweep *= longer * longer;
    }
    return std::min(std::sqrt(bend * perTolerance_), roughCubeRoot(sweep * perArea_)) + float(saved_);
  }

  // Uses the logarithm; accurate to a few hundredths.
  static float roughCubeRoot(float v) { return std::bit_cast<float>(std::bit_cast<std::uint32_t>(v) / 3 + 0x2a5137a0); }

  void split(CGPoint p0, CGPoint p1, CGPoint p2, CGPoint p3, Corner end, int depth) {
    if (leavesOut_ && !isVisible(p0) && !isVisible(p3) && isBeside(p0, p1, p2, p3)) return sink_.lineTo(p3, end);
    const float wanted = wantedChords(p0, p1, p2, p3);
    if (!(wanted <= maxSteps) && depth < deepestSplit && splitsLeftOfCurve_ > 0 && splitsLeft_ > 0) {
      --splitsLeftOfCurve_;
      --splitsLeft_;
      const auto middle = [](CGPoint a, CGPoint b) { return CGPoint{(a.x + b.x) * 0.5, (a.y + b.y) * 0.5}; };
      const CGPoint p01 = middle(p0, p1), p12 = middle(p1, p2), p23 = middle(p2, p3);
      const CGPoint p012 = middle(p01, p12), p123 = middle(p12, p23), half = middle(p012, p123);
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
  void step(CGPoint p0, CGPoint p1, CGPoint p2, CGPoint p3, int count, Corner end) {
    const double h = 1.0 / (count - saved_);
    const CGPoint a{p3.x - p0.x + 3 * (p1.x - p2.x), p3.y - p0.y + 3 * (p1.y - p2.y)};
    const CGPoint b{3 * (p0.x - 2 * p1.x + p2.x), 3 * (p0.y - 2 * p1.y + p2.y)};
    CGPoint c{3 * (p1.x - p0.x), 3 * (p1.y - p0.y)};
    const double half = h * h * 0.5, sixth = h * h * (1.0 / 6);
    c = {c.x - half * a.x, c.y - half * a.y};
    const CGPoint d{p0.x - sixth * b.x, p0.y - sixth * b.y};
    for (int i = 1; i < count; ++i) {
      const double t = (i - saved_ * 0.5) * h;
      const CGPoint p{((a.x * t + b.x) * t + c.x) * t + d.x, ((a.y * t + b.y) * t + c.y) * t + d.y};
      if constexpr (requires { Sink::wantsDirections; }) {
        sink_.curvePoint(p, {(3 * a.x * t + 2 * b.x) * t + c.x, (3 * a.y * t + 2 * b.y) * t + c.y});
      } else {
        sink_.lineTo(p, Corner::Smooth);
      }
    }
    sink_.lineTo(p3, end);
  }

  const FlattenSettings settings_;
  const float perTolerance_ = float(1 / (2 * settings_.tolerance));
  // A chord of length L on radius r leaves an area of at most L^3 / 60 r on one side of it in one place.
  const float perArea_ = settings_.areaTolerance > 0 ? float(0.3 / settings_.areaTolerance)
                                                     : std::numeric_limits<float>::max();
  const double saved_ = 2 - 2 * settings_.endStep;  // steps saved at both ends together
  Sink& sink_;
  CGPoint start_, current_;
  bool hasStart_ = false, isOpen_ = false;
  bool leavesOut_ = true;  // whether parts of a curve beside the visible rectangle are left out
  int splitsLeftOfCurve_ = 0, splitsLeft_ = maxSplits;
};

}  // namespace tessaluna::backend::raster
