// Fills and strokes: which pixels a shape covers, and by how much.
#include <cmath>

#include <gtest/gtest.h>

#include "tests/backends/raster/ReferencePicture.h"
#include "tests/backends/raster/Region.h"
#include "tests/backends/raster/polygon.h"

namespace tessaluna::backend::raster::test {

namespace {

constexpr Color ink{0.1, 0.3, 0.8, 1};
constexpr CGAffineTransform skewed{1.5, 0.25, -0.4, 0.6, 6.2, 3.1};

void expectFill(const Path& path, FillRule rule = FillRule::NonZero) {
  expectRight({.draw =
                   [&](RasterCanvas& canvas) {
                     canvas.setFillColor(ink);
                     canvas.fillPath(path, rule);
                   },
               .expect = [&](ReferencePicture& picture) { picture.paint(ink, picture.fill(path, rule)); }});
}

void expectStroke(const Path& path, const StrokeStyle& style, const CGAffineTransform& transform = {}) {
  expectRight({.draw =
                   [&](RasterCanvas& canvas) {
                     canvas.setStrokeColor(ink);
                     canvas.concat(transform);
                     canvas.strokePath(path, style);
                   },
               .expect = [&](ReferencePicture& picture) { picture.paint(ink, picture.stroke(path, style, transform)); }});
}

Path star(CGPoint center, double radius) {
  Path path;
  for (int i = 0; i < 5; ++i) {
    const double angle = 1.5707963 + i * 2.5132741;
    const CGPoint p{center.x + radius * std::cos(angle), center.y + radius * std::sin(angle)};
    i ? path.lineTo(p) : path.moveTo(p);
  }
  path.close();
  return path;
}

Path wave() {
  Path path;
  path.moveTo({5, 6});
  path.curveTo({20.3, 20}, {25, 4}, {3, 21});
  path.curveTo({34, 33}, {40, 19}, {18, 37});
  return path;
}

}  // namespace

TEST(RasterFill, TriangleWithEdgesOfAllSlopes) { expectFill(polygon({{3.3, 2.1}, {36.7, 9.8}, {14.2, 37.9}})); }

TEST(RasterFill, RectangleOnWholePoints) { expectFill(Path::rect({4, 6, 20, 16})); }

TEST(RasterFill, RectangleBetweenPixels) { expectFill(Path::rect({4.3, 6.7, 20.1, 16.9})); }

TEST(RasterFill, RectangleThinnerThanAPixel) { expectFill(Path::rect({4.3, 6.1, 0.2, 30.3})); }

TEST(RasterFill, RectangleFlatterThanAPixel) { expectFill(Path::rect({4.3, 6.1, 30.2, 0.3})); }

TEST(RasterFill, Oval) { expectFill(Path::oval({3.2, 5.1, 33, 28.4})); }

TEST(RasterFill, SmallOval) { expectFill(Path::oval({3.2, 5.1, 3, 2.5})); }

TEST(RasterFill, RoundedRectangle) { expectFill(Path::roundedRect({3.5, 4.5, 30, 22}, {6, 4})); }

TEST(RasterFill, CurveThatCrossesItself) {
  Path path;
  path.moveTo({4, 5});
  path.curveTo({36, 6}, {60, 55}, {-20, 50});
  path.close();
  expectFill(path);
}

TEST(RasterFill, SubpathsAreClosedAutomatically) { expectFill(polyline({{5, 5}, {33, 12}, {20, 35}})); }

TEST(RasterFill, HoleInTheOppositeDirection) {
  Path path = Path::oval({4, 4, 32, 32});
  path.append(polygon({{12, 12}, {12, 27.3}, {27.6, 27.3}, {27.6, 12}}));
  expectFill(path);
}

TEST(RasterFill, InnerShapeInTheSameDirectionIsNotAHole) {
  Path path = Path::oval({4, 4, 32, 32});
  path.append(Path::oval({12.2, 12, 16, 16}));
  expectFill(path);
}

TEST(RasterFill, StarIsFullInTheMiddle) { expectFill(star({20, 19}, 18)); }

TEST(RasterFill, EvenOddStarIsEmptyInTheMiddle) { expectFill(star({20, 19}, 18), FillRule::EvenOdd); }

TEST(RasterFill, EvenOddRing) {
  Path path = Path::oval({4, 4, 32, 32});
  path.append(Path::oval({12.2, 12, 16, 16}));
  expectFill(path, FillRule::EvenOdd);
}

TEST(RasterFill, OverlappingRectanglesAreOne) {
  Path path = Path::rect({4.3, 4.3, 20, 20});
  path.append(Path::rect({14.6, 12.4, 20.2, 22.2}));
  expectFill(path);
}

TEST(RasterFill, TheSameShapeTwiceCoversItsEdgesOnce) {
  Path path = Path::oval({4.2, 4.3, 30, 30});
  path.append(Path::oval({4.2, 4.3, 30, 30}));
  expectFill(path);
}

TEST(RasterFill, ShapesInOppositeDirectionsDoNotCancel) {
  Path path = polygon({{5.5, 5.5}, {24.4, 5.5}, {24.4, 24.4}, {5.5, 24.4}});
  path.append(polygon({{24.4, 10}, {24.4, 33}, {36.2, 33}, {36.2, 10}}));
  expectFill(path);
}

TEST(RasterFill, BowTie) { expectFill(polygon({{4, 5}, {36, 34}, {36, 6}, {5, 33}})); }

TEST(RasterFill, FoldedBars) {
  // The outer edge of the right bar lies left of its inner one, so the bar is turned over.
  Path path = polygon({{2, 10.3}, {14.375, 2}, {14.375, 37}, {2, 37}, {2, 10.3}});
  path.append(polygon({{26.25, 2}, {22, 10.3}, {22, 37}, {26.25, 37}, {26.25, 2}}));
  expectFill(path);
}

TEST(RasterStroke, ButtCaps) { expectStroke(polyline({{6.2, 7.9}, {33.1, 30.4}}), {.width = 5}); }

TEST(RasterStroke, RoundCaps) { expectStroke(polyline({{6.2, 7.9}, {33.1, 30.4}}), {.width = 5, .cap = LineCap::Round}); }

TEST(RasterStroke, SquareCaps) { expectStroke(polyline({{6.2, 7.9}, {33.1, 30.4}}), {.width = 5, .cap = LineCap::Square}); }

TEST(RasterStroke, MiterJoins) { expectStroke(polyline({{5, 8}, {20, 31}, {33, 9.5}, {36, 30}}), {.width = 4}); }

TEST(RasterStroke, RoundJoins) {
  expectStroke(polyline({{5, 8}, {20, 31}, {33, 9.5}, {36, 30}}), {.width = 4, .join = LineJoin::Round});
}

TEST(RasterStroke, BevelJoins) {
  expectStroke(polyline({{5, 8}, {20, 31}, {33, 9.5}, {36, 30}}), {.width = 4, .join = LineJoin::Bevel});
}

TEST(RasterStroke, MiterJustWithinItsLimitIsPointed) {
  // The lines meet at 60 degrees: the miter is twice as long as the line is wide.
  expectStroke(polyline({{8, 6}, {20, 26.7846}, {32, 6}}), {.width = 4, .miterLimit = 2.01});
}

TEST(RasterStroke, MiterBeyondItsLimitIsABevel) {
  expectStroke(polyline({{8, 6}, {20, 26.7846}, {32, 6}}), {.width = 4, .miterLimit = 1.99});
}

TEST(RasterStroke, MiterLimitOfTenIsTheDefault) {
  // 11.5 degrees make a miter of just under ten widths, 11.4 degrees one of just over ten.
  expectStroke(polyline({{20 - 2.01, 3}, {20, 23}, {20 + 2.01, 3}}), {.width = 1.5});
  expectStroke(polyline({{20 - 1.99, 3}, {20, 23}, {20 + 1.99, 3}}), {.width = 1.5});
}

TEST(RasterStroke, ClosedTriangleHasThreeJoinsAndNoCaps) {
  expectStroke(polygon({{6, 7}, {34, 12}, {16, 33}}), {.width = 3, .cap = LineCap::Square});
}

TEST(RasterStroke, ClosedRectangle) {
  for (const LineJoin join : {LineJoin::Miter, LineJoin::Round, LineJoin::Bevel}) {
    expectStroke(Path::rect({5.5, 6.5, 28, 25}), {.width = 3, .join = join});
  }
}

TEST(RasterStroke, Hairline) { expectStroke(wave(), {.width = 0.5}); }

TEST(RasterStroke, HairlineOfAPolygon) { expectStroke(polygon({{4, 36}, {36, 20}, {4, 4}}), {.width = 0.5}); }

TEST(RasterStroke, Curve) { expectStroke(wave(), {.width = 3}); }

TEST(RasterStroke, CurveWithAPenWiderThanItsBends) { expectStroke(wave(), {.width = 11}); }

TEST(RasterStroke, CurveThatEndsInABendNarrowerThanThePen) {
  Path path;
  path.moveTo({22, 13});
  path.curveTo({24, 19}, {19, 12}, {16, 22});
  for (const LineCap cap : {LineCap::Round, LineCap::Square}) {
    SCOPED_TRACE(testing::Message() << "cap " << int(cap));
    expectStroke(path, {.width = 5.68724419, .cap = cap, .join = LineJoin::Round, .miterLimit = 3});
  }
}

TEST(RasterStroke, MiterBesideABendNarrowerThanThePen) {
  Path toCorner;
  toCorner.moveTo({8, 20});
  toCorner.lineTo({20, 20});
  toCorner.curveTo({22, 22}, {21.1, 20}, {22, 20.9});
  toCorner.lineTo({32, 21});
  Path fromCorner;
  fromCorner.moveTo({32, 21});
  fromCorner.lineTo({22, 22});
  fromCorner.curveTo({20, 20}, {22, 20.9}, {21.1, 20});
  fromCorner.lineTo({8, 20});
  for (const Path& path : {toCorner, fromCorner}) expectStroke(path, {.width = 6, .miterLimit = 10});
}

TEST(RasterStroke, MiterBesideACurveThatBendsSharplyAtItsEnd) {
  Path path;
  path.moveTo({10, 13});
  path.curveTo({24, 20}, {10, 13}, {24, 18});
  path.lineTo({4, 15});
  expectStroke(path, {.width = 3.21726773});
}

TEST(RasterStroke, CurveThatTurnsBackWithinLessThanAPixel) {
  Path path;
  path.moveTo({12, 17});
  path.curveTo({13, 21}, {6, 21}, {19, 12});
  expectStroke(path, {.width = 0.707711126, .cap = LineCap::Square, .miterLimit = 3});
}

TEST(RasterStroke, InnerSidesThatMeetBeyondTheEndOfABend) {
  Path path;
  path.moveTo({18, 8});
  path.lineTo({6, 25});
  path.curveTo({24, 25}, {9, 21}, {4, 20.5});
  expectStroke(path, {.width = 3, .join = LineJoin::Bevel});
}

TEST(RasterStroke, CurveWithACuspIsRoundedThere) {
  Path path;
  path.moveTo({6, 8});
  path.curveTo({34, 8}, {42, 34}, {-2, 34});
  expectStroke(path, {.width = 4});
}

TEST(RasterStroke, Oval) { expectStroke(Path::oval({6, 7, 28, 24}), {.width = 2}); }

TEST(RasterStroke, OvalWithAPenWiderThanItself) { expectStroke(Path::oval({16, 17, 8, 5}), {.width = 14}); }

TEST(RasterStroke, LineThatCrossesItself) {
  expectStroke(polyline({{5, 5}, {34.3, 33}, {33, 7}, {6, 32.2}}), {.width = 5, .join = LineJoin::Round});
}

TEST(RasterStroke, ThinLineThatCrossesItself) {
  expectStroke(polyline({{5, 5}, {34.3, 33}, {33, 7}, {6, 32.2}}), {.width = 0.6});
}

TEST(RasterStroke, TwoLinesThatCross) {
  Path path = polyline({{4, 4}, {36, 36}});
  path.append(polyline({{4, 36}, {36, 4}}));
  for (const double width : {0.5, 1.0, 2.0, 4.0}) expectStroke(path, {.width = width});
}

TEST(RasterStroke, LineBackOntoItself) { expectStroke(polyline({{6, 8.3}, {33, 21}, {12, 11.1240741}}), {.width = 3}); }

TEST(RasterStroke, ClosedLineThereAndBack) { expectStroke(polygon({{6, 8}, {33, 21}}), {.width = 3}); }

TEST(RasterStroke, ThickZigzagOfShortLines) {
  Path path;
  path.moveTo({8, 20});
  for (int i = 1; i < 16; ++i) path.lineTo({8 + 1.5 * i, i % 2 ? 21.3 : 18.8});
  for (const LineJoin join : {LineJoin::Miter, LineJoin::Round, LineJoin::Bevel}) {
    expectStroke(path, {.width = 7, .join = join, .miterLimit = 4});
  }
}

TEST(RasterStroke, RoundDotForALineWithoutLength) {
  expectStroke(polyline({{18.4, 20.2}, {18.4, 20.2}}), {.width = 9, .cap = LineCap::Round});
}

TEST(RasterStroke, NothingForAButtLineWithoutLength) { expectStroke(polyline({{18, 20}, {18, 20}}), {.width = 9}); }

TEST(RasterStroke, PenIsDistortedByATransform) {
  for (const LineCap cap : {LineCap::Butt, LineCap::Round, LineCap::Square}) {
    expectStroke(polyline({{2, 6}, {9, 38}, {17, 12}}), {.width = 3, .cap = cap, .join = LineJoin::Round}, skewed);
  }
}

TEST(RasterStroke, CurveUnderATransform) {
  Path path;
  path.moveTo({0, 4});
  path.curveTo({20, 40}, {26, 0}, {-8, 34});
  expectStroke(path, {.width = 4}, skewed);
}

TEST(RasterDash, PatternStartsAgainAtEachSubpath) {
  const double dash[] = {5, 2.5};
  Path path = polyline({{3, 8.2}, {37, 11.9}});
  path.append(polyline({{3, 20}, {37, 24}}));
  expectStroke(path, {.width = 2.5, .dash = dash});
}

TEST(RasterDash, PhaseStartsInsideThePattern) {
  const double dash[] = {5, 2.5};
  for (const double phase : {1.0, 6.0, 8.5}) {
    expectStroke(polyline({{3, 8.2}, {37, 11.9}}), {.width = 2.5, .dash = dash, .dashPhase = phase});
  }
}

TEST(RasterDash, OddPatternSwapsItsGapsTheSecondTime) {
  const double dash[] = {5, 2, 3};
  expectStroke(polyline({{3, 8.2}, {37, 11.9}}), {.width = 2.5, .dash = dash});
}

TEST(RasterDash, BendsAroundCornersWithTheJoin) {
  const double dash[] = {11, 3};
  for (const LineJoin join : {LineJoin::Miter, LineJoin::Round, LineJoin::Bevel}) {
    expectStroke(Path::rect({5, 6, 28, 25}), {.width = 3, .join = join, .dash = dash});
  }
}

TEST(RasterDash, EachDashHasItsCaps) {
  const double dash[] = {6, 5};
  for (const LineCap cap : {LineCap::Butt, LineCap::Round, LineCap::Square}) {
    expectStroke(polyline({{4, 8}, {35, 16}, {8, 31}}), {.width = 3, .cap = cap, .dash = dash});
  }
}

TEST(RasterDash, FollowsCurves) {
  const double dash[] = {4, 3};
  expectStroke(wave(), {.width = 2, .dash = dash});
}

// The sides of the bend meet beyond the dash's end, where nothing else covers what lies between them.
TEST(RasterDash, NoLongerThanABendNarrowerThanThePen) {
  const double dash[] = {5.31605274, 5.31605274};
  Path path;
  path.moveTo({23.9550062, 5.31703966});
  path.curveTo({19.9045936, 12.033194}, {18.8821035, 6.10980944}, {11.4166069, 4.85741853});
  path.lineTo({25.8104158, 10.5727851});
  expectStroke(path, {.width = 4.34135907, .join = LineJoin::Round, .dash = dash});
}

// A tiny part of a dash's length decides in which direction it ends.
TEST(RasterDash, EndsInABendFarNarrowerThanThePen) {
  const double dash[] = {1.03936661, 1.03936661};
  Path path;
  path.moveTo({14, 24});
  path.curveTo({21, 10}, {18, 25}, {4, 20});
  expectStroke(path, {.width = 3.02501493, .join = LineJoin::Round, .dash = dash, .dashPhase = 7.866176});
}

TEST(RasterDash, TurnsInACurveAsNarrowAsThePen) {
  const double dash[] = {9, 1.3};
  for (const double radius : {0.85, 0.95, 1.05}) {
    SCOPED_TRACE(testing::Message() << "radius " << radius);
    const double bend = radius * 0.5523, right = 20 + radius, top = 20 + 2 * radius;
    Path path;
    path.moveTo({14, 20});
    path.lineTo({20, 20});
    path.curveTo({right, 20 + radius}, {20 + bend, 20}, {right, 20 + radius - bend});
    path.curveTo({20, top}, {right, 20 + radius + bend}, {20 + bend, top});
    path.lineTo({14, top + 1});
    expectStroke(path, {.width = 2, .dash = dash});
  }
}

TEST(RasterDash, EndsWithinABendNarrowerThanThePen) {
  const double dash[] = {3.00736589};
  Path path;
  path.moveTo({25.4233517, 15.1948637});
  path.curveTo({17.288722, 24.214225}, {17.3233222, 9.88735586}, {15.7798322, 11.896692});
  path.close();
  expectStroke(path, {.width = 4.89466286, .join = LineJoin::Round, .dash = dash, .dashPhase = 1.64370465});
}

TEST(RasterDash, InnerSideThatGoesBackInManySmallSteps) {
  const double dash[] = {4.03045, 0.689135};
  Path path;
  path.moveTo({28.8321, 17.2011});
  path.curveTo({30.4523, 20.0087}, {29.7831, 18.0825}, {29.5101, 19.1179});
  path.curveTo({31.0197, 24.4347}, {31.1923, 21.6329}, {32.0572, 22.9823});
  path.curveTo({28.4612, 26.1398}, {30.2435, 25.3887}, {28.0803, 24.9705});
  Bitmap bitmap = *Bitmap::make(40, 40);
  RasterCanvas(bitmap).strokePath(path, {.width = 2, .dash = dash});
  const Coverage exact(Region::stroked(path, {.width = 2, .dash = dash}, {1, 0, 0, -1, 0, 40}), 40, 40);
  for (int y = 0; y < 40; ++y) {
    for (int x = 0; x < 40; ++x) ASSERT_NEAR(bitmap.pixel(x, y) >> 24, 255 * exact.at(x, y), 3) << x << ", " << y;
  }
}

TEST(RasterDash, CountsInvisibleCurves) {
  const double dash[] = {7, 4};
  const auto draw = [&](CGRect seen) {
    Bitmap bitmap = *Bitmap::make(400, 400);
    RasterCanvas canvas(bitmap);
    canvas.clipRect(seen);
    canvas.strokePath(Path::oval({10, 10, 380, 380}), {.width = 3, .dash = dash});
    return bitmap;
  };
  const Bitmap whole = draw({0, 0, 400, 400});
  for (const double x : {0.0, 350.0}) {
    for (const double y : {0.0, 180.0, 360.0}) {
      const CGRect seen{x, y, 50, 40};
      const Bitmap part = draw(seen);
      for (int row = int(360 - y); row < int(400 - y); ++row) {
        for (int column = int(x); column < int(x + 50); ++column)
          ASSERT_NEAR(int(part.pixel(column, row) >> 24), int(whole.pixel(column, row) >> 24), 1) << column << ", " << row;
      }
    }
  }
}

TEST(RasterDash, IsMeasuredBeforeTheTransform) {
  const double dash[] = {4, 3};
  expectStroke(polyline({{2, 6}, {9, 38}, {17, 12}}), {.width = 2, .dash = dash}, skewed);
}

TEST(RasterDash, SquareTenTwoAroundARectangle) {
  const double dash[] = {10, 2};
  expectStroke(Path::rect({3.5, 3.5, 33, 33}), {.width = 1, .dash = dash});
}

}  // namespace tessaluna::backend::raster::test
