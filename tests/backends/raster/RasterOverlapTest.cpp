// Shapes and strokes that come near themselves: a pixel that is covered twice counts once.
#include <cmath>
#include <random>

#include <gtest/gtest.h>

#include "tests/backends/raster/ReferencePicture.h"
#include "tests/backends/raster/polygon.h"

namespace tessaluna::backend::raster::test {

namespace {

constexpr Color ink{0.1, 0.3, 0.8, 1};

void expectStroke(const Path& path, const StrokeStyle& style) {
  expectRight({.draw =
                   [&](RasterCanvas& canvas) {
                     canvas.setStrokeColor(ink);
                     canvas.strokePath(path, style);
                   },
               .expect = [&](ReferencePicture& picture) { picture.paint(ink, picture.stroke(path, style)); }});
}

// In a layer too, alone and before another shape.
void expectDashes(const Path& path, const StrokeStyle& style) {
  expectStroke(path, style);
  for (const bool isAlone : {true, false}) {
    SCOPED_TRACE(testing::Message() << "in a layer" << (isAlone ? "" : ", before another shape"));
    const Path other = isAlone ? Path() : Path::rect({1, 1, 2, 2});
    expectRight({.draw =
                     [&](RasterCanvas& canvas) {
                       canvas.setStrokeColor(ink);
                       canvas.setFillColor(ink);
                       canvas.beginTransparencyLayer();
                       canvas.strokePath(path, style);
                       if (!isAlone) canvas.fillPath(other, FillRule::NonZero);
                       canvas.endTransparencyLayer();
                     },
                 .expect =
                     [&](ReferencePicture& picture) {
                       picture.paint(ink, picture.stroke(path, style));
                       if (!isAlone) picture.paint(ink, picture.fill(other, FillRule::NonZero));
                     }});
  }
}

void expectFill(const Path& path, FillRule rule) {
  expectRight({.draw =
                   [&](RasterCanvas& canvas) {
                     canvas.setFillColor(ink);
                     canvas.fillPath(path, rule);
                   },
               .expect = [&](ReferencePicture& picture) { picture.paint(ink, picture.fill(path, rule)); }});
}

}  // namespace

TEST(RasterOverlap, RoundedCornersNarrowerThanThePen) {
  for (const double radius : {0.1, 0.25, 0.5, 0.8, 1.5}) {
    for (const double width : {0.7, 1.0, 2.2, 5.0}) {
      SCOPED_TRACE(testing::Message() << "radius " << radius << ", width " << width);
      expectStroke(Path::roundedRect({6.3, 7.1, 24, 20}, {radius, radius}), {.width = width});
    }
  }
}

TEST(RasterOverlap, OpenLineWithARoundedCornerNarrowerThanThePen) {
  Path path;
  path.moveTo({5, 9.2});
  path.lineTo({20.7, 9.2});
  path.curveTo({21, 9.5}, {20.87, 9.2}, {21, 9.33});
  path.lineTo({21, 33});
  for (const double width : {0.6, 1.0, 3.0}) expectStroke(path, {.width = width});
}

TEST(RasterOverlap, TheSameLineTwiceInOneStroke) {
  Path path = polyline({{20, 6.5}, {20, 33}, {33, 33}});
  path.append(polyline({{20, 6.5}, {20, 33}, {7, 33}}));
  for (const double width : {0.6, 1.0, 3.0}) expectStroke(path, {.width = width});
}

// Neither row has a pixel that is covered more than once on average: the sums of both bars stay below 1.
TEST(RasterOverlap, NearlyLevelSidesThatOverlapWithinOneRow) {
  const Path bar = polygon({{4, 10.6}, {24, 10.6}, {24, 11.4}, {4, 11.4}});
  const Path upper = polygon({{8, 10.6}, {24, 10.62}, {24, 11.42}, {8, 11.4}});
  const Path lower = polygon({{8, 10.6}, {8, 11.4}, {24, 11.38}, {24, 10.58}});
  const Path between = polygon({{8.5, 10.6}, {21.3, 10.62}, {21.3, 11.42}, {8.5, 11.4}});
  for (const Path& other : {upper, lower, between}) {
    Path both = bar;
    both.append(other);
    expectFill(both, FillRule::NonZero);
    expectFill(both, FillRule::EvenOdd);
  }
}

TEST(RasterOverlap, EndBesideALine) {
  Path path = polyline({{9.1, 5}, {9.1, 35}});
  path.append(polyline({{9.35, 20.4}, {33, 20.4}}));
  for (const double width : {0.6, 1.0, 3.0}) expectStroke(path, {.width = width});
}

TEST(RasterOverlap, MiterThatReachesIntoALine) {
  Path path = polyline({{8, 5}, {14, 25}, {20, 5}});
  path.append(polyline({{5, 27.4}, {33, 27.4}}));
  for (const double width : {0.6, 1.0, 2.0}) expectStroke(path, {.width = width});
}

TEST(RasterOverlap, StapleNarrowerThanThePen) {
  for (const LineJoin join : {LineJoin::Miter, LineJoin::Round, LineJoin::Bevel})
    expectStroke(polyline({{8, 30}, {8, 9.3}, {8.7, 9.3}, {8.7, 30}}), {.width = 1.2, .join = join});
}

TEST(RasterOverlap, CurveThatLeavesALineAtASharpAngle) {
  Path path = polyline({{20, 8}, {20, 31}});
  path.curveTo({36, 27}, {20, 31}, {24, 27.2});
  for (const double width : {0.6, 1.0, 3.0}) expectStroke(path, {.width = width});
}

TEST(RasterOverlap, CurveThatTurnsWithinThePensWidth) {
  Path path;
  path.moveTo({6, 8});
  path.curveTo({6, 9.2}, {36, 8}, {36, 9.2});
  path.lineTo({4, 12});
  for (const double width : {0.6, 1.0}) {
    SCOPED_TRACE(testing::Message() << "width " << width);
    expectStroke(path, {.width = width});
  }
}

TEST(RasterOverlap, ShortLinesBetweenCorners) {
  for (const LineJoin join : {LineJoin::Miter, LineJoin::Round, LineJoin::Bevel}) {
    expectStroke(polyline({{5, 20}, {12, 20}, {12.4, 20.5}, {12.1, 21}, {12.6, 21.2}, {30, 33}}),
                 {.width = 1.4, .join = join});
    expectStroke(polyline({{5, 20}, {12, 20}, {12.4, 18.5}, {12.9, 20}, {30, 20}}), {.width = 1.4, .join = join});
  }
}

TEST(RasterOverlap, ClosedLineThatBeginsInACorner) {
  for (const double width : {0.5, 1.0, 4.0}) {
    Path path = polyline({{6.2, 30.1}, {20.3, 6.4}, {33.1, 30.7}});
    path.close();
    expectStroke(path, {.width = width});
    Path back = polyline({{33.1, 30.7}, {20.3, 6.4}, {6.2, 30.1}});
    back.close();
    expectStroke(back, {.width = width});
  }
}

TEST(RasterOverlap, RingsOfOneStrokeThatTouch) {
  Path path = Path::oval({5, 12, 14.6, 14.6});
  path.append(Path::oval({19.9, 12, 14.6, 14.6}));
  for (const double width : {0.5, 1.0, 2.0}) expectStroke(path, {.width = width});
}

TEST(RasterOverlap, DashesThatMeetAtTheStartOfARing) {
  const double dash[] = {4, 0.4};
  for (const LineCap cap : {LineCap::Butt, LineCap::Round, LineCap::Square}) {
    SCOPED_TRACE(testing::Message() << "cap " << int(cap));
    expectStroke(Path::oval({7, 8, 25, 22}), {.width = 1.5, .cap = cap, .dash = dash});
  }
}

TEST(RasterOverlap, DashesThatShareAPixelInATightBend) {
  Path path = polyline({{13.5, 16.5}});
  path.curveTo({15, 9}, {18, 39}, {7.5, 12});
  path.lineTo({22.5, 34.5});
  path.curveTo({19.5, 37.5}, {9, 6}, {10.5, 10.5});
  path.close();
  const double dash[] = {1.14410338, 1.14410338};
  expectDashes(path, {.width = 1.6579125, .join = LineJoin::Bevel, .dash = dash});
}

TEST(RasterOverlap, UprightSideOfADashThatSharesItsPixels) {
  const double dash[] = {14.6786, 2.23892};
  const Path path = polyline({{21.457, 30}, {21.457, 13.0825}, {16.0698, 7.7418}, {14.1264, 24.6022}, {23.4474, 20.648}});
  expectDashes(path, {.width = 1.59052, .dash = dash});
}

TEST(RasterOverlap, HolesOfRingsNarrowerThanThePen) {
  for (const double width : {5.0, 6.0, 6.5, 7.0, 8.0}) {
    SCOPED_TRACE(testing::Message() << "width " << width);
    expectStroke(polygon({{5, 12}, {36, 12}, {36, 23}}), {.width = width});
    expectStroke(polygon({{36, 23}, {36, 12}, {5, 12}}), {.width = width});
  }
  expectStroke(polygon({{17.335, 22.971}, {13.602, 28.172}, {13.715, 20.735}}), {.width = 2.353});
}

// The whole inner side of such a ring goes backwards; only its outer side remains.
TEST(RasterOverlap, SlenderRingsThatEndWhereTheyBegan) {
  const Path path =
      polygon({{26.366181, 17.837813}, {26.562265, 18.633841}, {26.595297, 19.802528}, {27.029006, 20.550613}});
  for (const double width : {0.4, 0.5, 0.545, 0.6}) expectStroke(path, {.width = width});
  expectStroke(polygon({{18.397917, 16.693365},
                        {18.406985, 16.299473},
                        {18.852535, 14.42484},
                        {18.889211, 14.059811},
                        {18.969704, 13.16729}}),
               {.width = 0.666});
}

TEST(RasterOverlap, SidesShorterThanThePen) {
  expectStroke(polyline({{25.7513, 19.2598}, {25.1506, 18.9135}, {25.0077, 19.8487}, {25.1144, 20.3896}}), {.width = 5});
  expectStroke(polyline({{21.6902, 22.3317},
                         {21.1474, 22.6765},
                         {20.7053, 24.3877},
                         {19.0893, 22.5890},
                         {19.1112, 20.4653},
                         {19.0458, 19.7377}}),
               {.width = 3});
}

TEST(RasterOverlap, LineThatComesBackAfterTwoCorners) {
  expectStroke(polyline({{15.364, 25.729}, {19.488, 27.849}, {17.190, 31.219}, {14.691, 28.103}}), {.width = 2.698});
  expectStroke(polygon({{12.554, 27.999}, {15.307, 28.31}, {19.017, 24.569}, {21.497, 23.175}, {22.228, 23.522}}),
               {.width = 0.595, .join = LineJoin::Bevel});
}

TEST(RasterOverlap, TwoPlacesInTheSameRows) {
  // One overlap is expected, the other one shows in the sums.
  expectStroke(polygon({{5, 20}, {25, 20}, {25, 20.1}, {23, 20.1}, {8, 24}}), {.width = 3});
}

TEST(RasterOverlap, DotsOnLinesAndOnDots) {
  const auto addDot = [](Path& path, CGPoint at) {
    path.moveTo(at);
    path.lineTo(at);
  };
  for (const double y : {20.35, 20.85}) {
    Path path = polyline({{5, 20}, {35, 20}});
    addDot(path, {20, y});
    expectStroke(path, {.width = 1, .cap = LineCap::Round});
  }
  Path path;
  addDot(path, {14.014, 35});
  addDot(path, {14.014, 35});
  path.append(polyline({{12.001, 8.086}, {12.746, 7.91}}));
  path.append(polyline({{12.109, 8.551}, {12.746, 8.086}}));
  expectStroke(path, {.width = 1.576, .cap = LineCap::Round, .join = LineJoin::Round});
}

TEST(RasterOverlap, LinesOfAFewSidesOfAnyLengths) {
  std::mt19937 random(5);
  const auto between = [&](double low, double high) { return std::uniform_real_distribution<double>(low, high)(random); };
  for (int i = 0; i < 60; ++i) {
    SCOPED_TRACE(testing::Message() << "line " << i);
    const double width = between(0.5, 4);
    CGPoint at{between(12, 28), between(12, 28)};
    double direction = between(0, 6.28);
    Path path;
    path.moveTo(at);
    for (int side = 0; side < 2 + i % 3; ++side) {
      const double length = std::exp(between(std::log(0.5 * width), std::log(12)));
      direction += between(-2.6, 2.6);
      at = {at.x + length * std::cos(direction), at.y + length * std::sin(direction)};
      path.lineTo(at);
    }
    if (i % 2 == 0) path.close();
    expectStroke(path, {.width = width, .join = LineJoin(i / 2 % 3)});
  }
}

TEST(RasterOverlap, BarsThatCrossWithinAPixel) {
  Path bars = Path::rect({4, 18.229, 24, 0.573});
  bars.append(Path::rect({12.054, 4, 0.282, 24}));
  for (const FillRule rule : {FillRule::NonZero, FillRule::EvenOdd}) expectFill(bars, rule);
  Path slivers = polyline({{7, 35}, {9.9, -2.4}, {28.2, 3.3}});
  slivers.append(polyline({{23.46, 1.32}, {-1, 6}, {-2, 22}}));
  expectFill(slivers, FillRule::NonZero);
}

TEST(RasterOverlap, TheSameShapeTwiceInOneFill) {
  const Path once = polygon({{6.2, 8.1}, {33.4, 10.7}, {7.1, 12.3}, {30.9, 33.3}});
  Path twice = once;
  twice.append(once);
  for (const FillRule rule : {FillRule::NonZero, FillRule::EvenOdd}) expectFill(twice, rule);
}

TEST(RasterOverlap, LineThatComesAlmostStraightBack) {
  Path path;
  path.moveTo({12, 26});
  path.lineTo({13, 16});
  path.curveTo({7, 22}, {5, 23}, {12, 6});
  path.curveTo({26, 28}, {12, 10}, {14, 7});
  expectStroke(path, {.width = 0.825893, .cap = LineCap::Round, .join = LineJoin::Bevel});
  for (const LineJoin join : {LineJoin::Miter, LineJoin::Round, LineJoin::Bevel})
    expectStroke(polygon({{6.2, 7.3}, {31.4, 28.9}}), {.width = 3, .join = join});
}

TEST(RasterOverlap, SpikeCrossedByALine) {
  expectFill(polyline({{24, 9}, {7, 9}, {11, 18}, {20, 26}, {18, 26}, {26, 25}, {14, 21}}), FillRule::NonZero);
}

TEST(RasterOverlap, TwistedShapesSmallerThanAPixel) {
  expectFill(polygon({{20.6636, 13.2196}, {21.4849, 13.2892}, {19.9252, 13.2054}, {21.0196, 13.1487}, {19.9723, 13.1329}}),
             FillRule::NonZero);
  expectFill(polygon({{20.2, 13.2}, {20.8, 13.9}, {20.85, 13.3}, {20.15, 13.6}}), FillRule::NonZero);
}

}  // namespace tessaluna::backend::raster::test
