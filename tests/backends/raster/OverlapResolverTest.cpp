#include "tessaluna/backends/raster/OverlapResolver.h"

#include <algorithm>
#include <random>

#include <gtest/gtest.h>

#include "tessaluna/backends/raster/CoverageBuffer.h"
#include "tessaluna/backends/raster/Stroker.h"
#include "tests/backends/raster/SquareOfCoverage.h"

namespace tessaluna::backend::raster::test {

namespace {

constexpr int side = 20;  // of the box, in pixels
constexpr PixelRect box{0, 0, side, side};
// How many sides may go through the strips of a row, with a margin for its first and last strip.
constexpr std::size_t maxPerRow = 4 * 60000;

struct Resolved {
  SquareOfCoverage coverage{side};
  std::size_t work = 0;
};

Resolved resolve(const Polygons& polygons) {
  Resolved resolved;
  CoverageBuffer buffer;
  EXPECT_TRUE(buffer.sweep({.polygons = polygons}, box, resolved.coverage));
  resolved.work = buffer.sidesSearched();
  return resolved;
}

// Triangles from above the box to below it, all of them clockwise.
Polygons tangle(int triangles) {
  std::mt19937 random(1);
  std::uniform_real_distribution<double> column(0, side);
  Polygons polygons;
  for (int i = 0; i < triangles; ++i) {
    const double a = column(random), b = column(random);
    polygons.moveTo({column(random), -20});
    polygons.lineTo({std::max(a, b), side + 20});
    polygons.lineTo({std::min(a, b), side + 20});
  }
  return polygons;
}

}  // namespace

TEST(OverlapResolverTest, WorkDoesNotGrowWithTheSidesOfATangle) {
  for (const int triangles : {20000, 60000}) {
    EXPECT_LE(resolve(tangle(triangles)).work, side * maxPerRow) << triangles << " triangles";
  }
}

TEST(OverlapResolverTest, TheInsideOfATangleIsCovered) {
  const Resolved resolved = resolve(tangle(20000));
  EXPECT_EQ(resolved.coverage.at(side / 2, side / 2), 1);
}

TEST(OverlapResolverTest, HugePensOverPointsFarAwayTakeBoundedWork) {
  std::mt19937 random(7);
  for (const double far : {1e6, 1e15}) {
    std::uniform_real_distribution<double> place(-far, far);
    const auto point = [&] { return CGPoint{place(random), place(random)}; };
    Path path;
    path.moveTo(point());
    for (int i = 0; i < 8; ++i) path.curveTo(point(), point(), point());
    SCOPED_TRACE(testing::Message() << "points up to " << far);
    Polygons polygons;
    const StrokeStyle pen{.width = 1e7, .cap = LineCap::Round, .join = LineJoin::Round};
    Stroker().stroke(path, pen, {}, DeviceRect::of(box), polygons);
    EXPECT_LE(polygons.pointCount(), std::size_t{2} << 20);
    EXPECT_LE(resolve(polygons).work, side * maxPerRow);
  }
}

}  // namespace tessaluna::backend::raster::test
