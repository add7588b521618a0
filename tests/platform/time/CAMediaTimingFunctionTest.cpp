#include "tessaluna/platform/time/CAMediaTimingFunction.h"

#include <gtest/gtest.h>

#include <cmath>

#include "tests/harness/printing.h"

using namespace tessaluna::platform;

namespace {

constexpr std::string_view names[] = {kCAMediaTimingFunctionLinear, kCAMediaTimingFunctionEaseIn,
                                      kCAMediaTimingFunctionEaseOut, kCAMediaTimingFunctionEaseInEaseOut,
                                      kCAMediaTimingFunctionDefault};

double at(std::string_view name, double time) { return CAMediaTimingFunction::functionWithName(name)->valueAt(time); }

}  // namespace

TEST(CAMediaTimingFunctionTest, BeginsAtZeroAndEndsAtOneExactly) {
  for (const std::string_view name : names) {
    EXPECT_EQ(at(name, 0), 0) << name;
    EXPECT_EQ(at(name, 1), 1) << name;
    EXPECT_EQ(at(name, -3), 0) << name;
    EXPECT_EQ(at(name, 7), 1) << name;
    EXPECT_EQ(at(name, NAN), 0) << name;
  }
}

TEST(CAMediaTimingFunctionTest, LinearIsTheTimeItself) {
  for (const double time : {0.001, 0.1, 0.25, 0.5, 0.9}) EXPECT_NEAR(at(kCAMediaTimingFunctionLinear, time), time, 1e-8);
}

// Worked out by hand: of (0.42, 0), (0.58, 1) the curve passes (0.5, 0.5), and at the parameter 1/4 the point
// (0.42 * 27/64 + 0.58 * 9/64 + 1/64, 9/64 + 1/64).
TEST(CAMediaTimingFunctionTest, EaseInEaseOutPassesThePointsOfItsCurve) {
  EXPECT_NEAR(at(kCAMediaTimingFunctionEaseInEaseOut, 0.5), 0.5, 1e-8);
  EXPECT_NEAR(at(kCAMediaTimingFunctionEaseInEaseOut, (0.42 * 27 + 0.58 * 9 + 1) / 64), 10.0 / 64, 1e-8);
}

// At the parameter 1/2 a curve passes (3 x1 + 3 x2 + 1) / 8, and so upward.
TEST(CAMediaTimingFunctionTest, EveryNamedCurvePassesItsMiddle) {
  for (const std::string_view name : names) {
    const auto function = CAMediaTimingFunction::functionWithName(name);
    const CGPoint first = function->getControlPointAtIndex(1), second = function->getControlPointAtIndex(2);
    EXPECT_NEAR(function->valueAt((3 * first.x + 3 * second.x + 1) / 8), (3 * first.y + 3 * second.y + 1) / 8, 1e-8) << name;
  }
}

TEST(CAMediaTimingFunctionTest, TheNamedOnesHaveTheirControlPoints) {
  const auto points = [](std::string_view name) {
    const auto function = CAMediaTimingFunction::functionWithName(name);
    return std::pair(function->getControlPointAtIndex(1), function->getControlPointAtIndex(2));
  };
  EXPECT_EQ(points(kCAMediaTimingFunctionEaseIn), std::pair(CGPoint{0.42, 0}, CGPoint{1, 1}));
  EXPECT_EQ(points(kCAMediaTimingFunctionEaseOut), std::pair(CGPoint{0, 0}, CGPoint{0.58, 1}));
  EXPECT_EQ(points(kCAMediaTimingFunctionEaseInEaseOut), std::pair(CGPoint{0.42, 0}, CGPoint{0.58, 1}));
  EXPECT_EQ(points(kCAMediaTimingFunctionDefault), std::pair(CGPoint{0.25, 0.1}, CGPoint{0.25, 1}));
}

TEST(CAMediaTimingFunctionTest, NoCurveRunsBackInTime) {
  // A curve whose tangent stands upright in its middle is the hardest to solve.
  const auto steep = CAMediaTimingFunction::functionWithControlPoints({1, 0}, {0, 1});
  const auto beyond = CAMediaTimingFunction::functionWithControlPoints({5, 0}, {-5, 1});
  EXPECT_EQ(beyond->getControlPointAtIndex(1), (CGPoint{1, 0}));
  EXPECT_EQ(beyond->getControlPointAtIndex(2), (CGPoint{0, 1}));
  double earlier = 0;
  for (int i = 1; i <= 1000; ++i) {
    const double value = steep->valueAt(i / 1000.0);
    EXPECT_GE(value, earlier) << i;
    earlier = value;
  }
  EXPECT_NEAR(steep->valueAt(0.5), 0.5, 1e-3);
}

TEST(CAMediaTimingFunctionTest, OrdinatesMayLieBeyondTheEnds) {
  const auto swinging = CAMediaTimingFunction::functionWithControlPoints({0.5, -1}, {0.5, 2});
  EXPECT_LT(swinging->valueAt(0.2), 0);
  EXPECT_GT(swinging->valueAt(0.8), 1);
}

TEST(CAMediaTimingFunctionTest, TheEndsAreControlPointsToo) {
  const auto function = CAMediaTimingFunction::functionWithName(kCAMediaTimingFunctionDefault);
  EXPECT_EQ(function->getControlPointAtIndex(0), (CGPoint{0, 0}));
  EXPECT_EQ(function->getControlPointAtIndex(3), (CGPoint{1, 1}));
}

TEST(CAMediaTimingFunctionDeathTest, AnUnknownNameOrIndexStopsTheProgram) {
  EXPECT_DEATH(CAMediaTimingFunction::functionWithName("bouncy"), "no function has the name bouncy");
  const auto function = CAMediaTimingFunction::functionWithName(kCAMediaTimingFunctionLinear);
  EXPECT_DEATH((void)function->getControlPointAtIndex(4), "control points 0 to 3");
}

TEST(CAMediaTimingFunctionDeathTest, ANegativeIndexStopsTheProgram) {
  const auto function = CAMediaTimingFunction::functionWithName(kCAMediaTimingFunctionLinear);
  EXPECT_DEATH((void)function->getControlPointAtIndex(-1), "control points 0 to 3");
}
