#include "tessaluna/platform/backend/Path.h"

#include <gtest/gtest.h>

#include "tests/harness/printing.h"

using namespace tessaluna::backend;
using enum PathVerb;

namespace {

std::vector<PathVerb> verbsOf(const Path& path) { return {path.verbs().begin(), path.verbs().end()}; }

}  // namespace

TEST(Path, AFreshOneIsEmptyAndHasNoCurrentPoint) {
  const Path path;
  EXPECT_TRUE(path.isEmpty());
  EXPECT_FALSE(path.hasCurrentPoint());
  EXPECT_EQ(path.bounds(), tessaluna::platform::NSZeroRect);
}

TEST(Path, ClosingAnEmptyPathAddsNothing) {
  Path path;
  path.close();
  EXPECT_TRUE(path.isEmpty());
}

TEST(Path, AfterClosingTheCurrentPointIsTheStartOfTheSubpath) {
  Path path;
  path.moveTo({1, 2});
  path.lineTo({5, 6});
  path.close();
  EXPECT_EQ(path.currentPoint(), (CGPoint{1, 2}));
}

TEST(Path, ARectangleRemembersItsCall) {
  const Path path = Path::rect({1, 2, 3, 4});
  EXPECT_EQ(verbsOf(path), (std::vector{Move, Line, Line, Line, Close}));
  EXPECT_EQ(path.shape().kind, PathShape::Kind::Rect);
  EXPECT_EQ(path.shape().rect, (CGRect{1, 2, 3, 4}));
  EXPECT_EQ(path.bounds(), (CGRect{1, 2, 3, 4}));
}

TEST(Path, AnythingAddedToAFigureMakesItAnOrdinaryPath) {
  Path path = Path::oval({0, 0, 4, 4});
  path.lineTo({9, 9});
  EXPECT_EQ(path.shape().kind, PathShape::Kind::None);
}

TEST(Path, ATransformedFigureIsAnOrdinaryPath) {
  Path path = Path::rect({0, 0, 4, 4});
  path.transform(CGAffineTransform::translation(1, 1));
  EXPECT_EQ(path.shape().kind, PathShape::Kind::None);
  EXPECT_EQ(path.bounds(), (CGRect{1, 1, 4, 4}));
}

TEST(Path, AFigureAppendedToAnEmptyPathStaysThatFigure) {
  Path path;
  path.append(Path::oval({1, 1, 2, 2}));
  EXPECT_EQ(path.shape().kind, PathShape::Kind::Oval);
}

TEST(Path, TwoFiguresInOnePathAreNone) {
  Path path = Path::rect({0, 0, 4, 4});
  path.append(Path::rect({10, 10, 4, 4}));
  EXPECT_EQ(path.shape().kind, PathShape::Kind::None);
  EXPECT_EQ(path.bounds(), (CGRect{0, 0, 14, 14}));
}

TEST(Path, AppendedToItselfItHoldsEverythingTwice) {
  Path path = Path::rect({0, 0, 4, 4});
  path.append(path);
  EXPECT_EQ(verbsOf(path), (std::vector{Move, Line, Line, Line, Close, Move, Line, Line, Line, Close}));
  ASSERT_EQ(path.points().size(), 8u);
  EXPECT_EQ(path.points()[6], (CGPoint{4, 4}));
}

TEST(Path, AnOvalsBoundsAreItsRectangle) {
  const CGRect box = Path::oval({10, 20, 30, 50}).bounds();
  EXPECT_NEAR(box.origin.x, 10, 1e-12);
  EXPECT_NEAR(box.origin.y, 20, 1e-12);
  EXPECT_NEAR(box.size.width, 30, 1e-12);
  EXPECT_NEAR(box.size.height, 50, 1e-12);
}

TEST(Path, AnOvalStaysWithinAFewTenThousandthsOfTheEllipse) {
  const Path path = Path::oval({-1, -1, 2, 2});
  CGPoint from = path.points()[0];
  for (int quarter = 0; quarter < 4; ++quarter) {
    const CGPoint c1 = path.points()[1 + 3 * quarter], c2 = path.points()[2 + 3 * quarter],
                  to = path.points()[3 + 3 * quarter];
    for (double t = 0; t <= 1; t += 0.125) {
      const double u = 1 - t, b0 = u * u * u, b1 = 3 * u * u * t, b2 = 3 * u * t * t, b3 = t * t * t;
      const double x = b0 * from.x + b1 * c1.x + b2 * c2.x + b3 * to.x;
      const double y = b0 * from.y + b1 * c1.y + b2 * c2.y + b3 * to.y;
      EXPECT_NEAR(x * x + y * y, 1, 6e-4);
    }
    from = to;
  }
}

TEST(Path, ARadiusBeyondHalfASideIsCutToThatHalf) {
  const Path path = Path::roundedRect({0, 0, 10, 4}, {100, 100});
  EXPECT_EQ(path.points()[0], (CGPoint{5, 0}));
  EXPECT_EQ(path.shape().radii, (CGSize{100, 100}));
  EXPECT_EQ(path.bounds(), (CGRect{0, 0, 10, 4}));
}

TEST(Path, TheBoundsOfACurveAreTightAndDoNotReachItsControls) {
  Path path;
  path.moveTo({0, 0});
  path.curveTo({10, 0}, {0, 10}, {10, 10});
  EXPECT_EQ(path.bounds(), (CGRect{0, 0, 10, 7.5}));
}

TEST(Path, TheBoundsOfACurveReachItsTurningPointsOnBothSides) {
  // y(t) = 3 t (1 - t) (1 - 2 t) * 10 turns at t = 1/2 -+ sqrt(3)/6, at +-10 sqrt(3)/6.
  Path path;
  path.moveTo({0, 0});
  path.curveTo({9, 0}, {3, 10}, {6, -10});
  const CGRect box = path.bounds();
  EXPECT_NEAR(box.origin.y, -2.886751345948129, 1e-12);
  EXPECT_NEAR(box.size.height, 5.773502691896258, 1e-12);
  EXPECT_EQ(box.size.width, 9);
}

TEST(Path, TheBoundsOfACurveAfterACloseBeginAtTheSubpathsStart) {
  Path path;
  path.moveTo({0, 0});
  path.lineTo({4, 0});
  path.close();
  path.curveTo({0, 8}, {-4, 0}, {-4, 8});
  EXPECT_EQ(path.bounds(), (CGRect{-3, 0, 7, 8}));
}

TEST(Path, ALonePointCountsForTheBounds) {
  Path path = Path::rect({0, 0, 4, 4});
  path.moveTo({10, 2});
  EXPECT_EQ(path.bounds(), (CGRect{0, 0, 10, 4}));
}

TEST(Path, ManySegmentsAddedAtOnceMakeAFigureAnOrdinaryPath) {
  Path path = Path::rect({0, 0, 4, 4});
  constexpr PathVerb verbs[] = {Move, Curve, Close};
  const std::span<CGPoint> points = path.append(verbs, 4);
  for (int i = 0; i < 4; ++i) points[i] = {10.0 + i, 0};
  EXPECT_EQ(verbsOf(path), (std::vector{Move, Line, Line, Line, Close, Move, Curve, Close}));
  EXPECT_EQ(path.points()[7], (CGPoint{13, 0}));
  EXPECT_EQ(path.currentPoint(), (CGPoint{10, 0}));
  EXPECT_EQ(path.shape().kind, PathShape::Kind::None);
}

TEST(Path, WhatClosesNothingIsLeftOut) {
  Path path;
  constexpr PathVerb verbs[] = {Close, Move, Close};
  path.append(verbs, 1)[0] = {1, 2};
  EXPECT_EQ(verbsOf(path), (std::vector{Move, Close}));
}

TEST(Path, AnEmptiedPathStartsAgain) {
  Path path = Path::oval({0, 0, 4, 4});
  path.clear();
  EXPECT_FALSE(path.hasCurrentPoint());
  EXPECT_EQ(path.shape().kind, PathShape::Kind::None);
  path.moveTo({1, 2});
  EXPECT_EQ(path.currentPoint(), (CGPoint{1, 2}));
}
