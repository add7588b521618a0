#include "tessaluna/platform/time/CAMediaTimingFunction.h"

#include <cmath>
#include <string>

#include "tessaluna/platform/foundation/stopProgram.h"

namespace tessaluna::platform {

namespace {

struct NamedCurve {
  std::string_view name;
  CGPoint first, second;
};

constexpr NamedCurve namedCurves[] = {
    {kCAMediaTimingFunctionLinear, {0, 0}, {1, 1}},          {kCAMediaTimingFunctionEaseIn, {0.42, 0}, {1, 1}},
    {kCAMediaTimingFunctionEaseOut, {0, 0}, {0.58, 1}},      {kCAMediaTimingFunctionEaseInEaseOut, {0.42, 0}, {0.58, 1}},
    {kCAMediaTimingFunctionDefault, {0.25, 0.1}, {0.25, 1}},
};

double clamp01(double value) { return value > 0 ? std::fmin(value, 1) : 0; }

// The Bernstein form of a cubic with the ends 0 and 1, and its derivative (G. Farin, "Curves and Surfaces for CAGD").
double bezier(double p1, double p2, double s) {
  return 3 * (1 - s) * (1 - s) * s * p1 + 3 * (1 - s) * s * s * p2 + s * s * s;
}
double slope(double p1, double p2, double s) {
  return 3 * (1 - s) * (1 - s) * p1 + 6 * (1 - s) * s * (p2 - p1) + 3 * s * s * (1 - p2);
}

}  // namespace

const ClassInfo CAMediaTimingFunction::staticClassInfo{.name = "CAMediaTimingFunction", .base = &NSObject::staticClassInfo};

Ref<CAMediaTimingFunction> CAMediaTimingFunction::functionWithName(std::string_view name) {
  for (const NamedCurve& curve : namedCurves)
    if (curve.name == name) return functionWithControlPoints(curve.first, curve.second);
  stopProgram("CAMediaTimingFunction: no function has the name " + std::string(name));
}

Ref<CAMediaTimingFunction> CAMediaTimingFunction::functionWithControlPoints(CGPoint first, CGPoint second) {
  return make<CAMediaTimingFunction>(first, second);
}

CAMediaTimingFunction::CAMediaTimingFunction(CGPoint first, CGPoint second)
    : first_{clamp01(first.x), first.y}, second_{clamp01(second.x), second.y} {}

CGPoint CAMediaTimingFunction::getControlPointAtIndex(int index) const {
  if (index < 0 || index > 3) stopProgram("CAMediaTimingFunction: a curve has the control points 0 to 3");
  const CGPoint points[] = {{0, 0}, first_, second_, {1, 1}};
  return points[index];
}

double CAMediaTimingFunction::valueAt(double time) const {
  if (!(time > 0)) return 0;
  if (time >= 1) return 1;
  return bezier(first_.y, second_.y, parameterAt(time));
}

// Newton's method inside a bracket that bisection narrows wherever a step of Newton's would leave it (W. Press et al.,
// "Numerical Recipes", section 9.4). The abscissas never run back, so there is one solution.
double CAMediaTimingFunction::parameterAt(double time) const {
  constexpr double epsilon = 1e-9;  // of the duration; nobody sees a millionth of a step
  constexpr int maxSteps = 64;      // a bracket that is only halved is as narrow as doubles are by then
  double low = 0, high = 1, s = time;
  for (int step = 0; step < maxSteps; ++step) {
    const double error = bezier(first_.x, second_.x, s) - time;
    if (std::fabs(error) < epsilon) break;
    (error < 0 ? low : high) = s;
    const double next = s - error / slope(first_.x, second_.x, s);
    s = next > low && next < high ? next : (low + high) / 2;
  }
  return s;
}

}  // namespace tessaluna::platform
