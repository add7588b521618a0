// Strokes that come near themselves: where a pen covers a pixel twice, it still covers it once.
#include <gtest/gtest.h>

#include "tests/backends/raster/ReferencePicture.h"

namespace backend::raster::test {

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

Path polyline(std::initializer_list<CGPoint> points) {
  Path path;
  for (const CGPoint& p : points) path.isEmpty() ? path.moveTo(p) : path.lineTo(p);
  return path;
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
    expectStroke(polyline({{5, 20}, {12, 20}, {12.4, 20.5}, {12.1, 21}, {12.6, 21.2}, {30, 33}}), {.width = 1.4, .join = join});
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

}  // namespace backend::raster::test
