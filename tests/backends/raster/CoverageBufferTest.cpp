#include "tessaluna/backends/raster/CoverageBuffer.h"

#include <algorithm>
#include <array>
#include <random>
#include <vector>

#include <gtest/gtest.h>

#include "tessaluna/backends/raster/Stroker.h"
#include "tessaluna/backends/recording/RecordingCanvas.h"
#include "tessaluna/platform/graphics/NSGraphicsContext.h"
#include "tessaluna/uikit/stylekit/Routines.h"
#include "tests/backends/raster/Region.h"
#include "tests/backends/raster/SquareOfCoverage.h"

namespace tessaluna::backend::raster::test {

namespace {

// TrackRowPlaying has the most by far, 6: its lines touch each other where the loudspeaker meets its cone.
constexpr std::size_t maxSidesPerPoint = 10;

struct Stroke {
  Path path;
  StrokeStyle style;
  std::vector<double> dash;  // the style's, whose span ends with the drawing
};

class KeepsStrokes final : public recording::RecordingCanvas {
 public:
  std::vector<Stroke> strokes;
  void strokePath(const Path& path, const StrokeStyle& style) override {
    strokes.push_back({path, style, {style.dash.begin(), style.dash.end()}});
  }
};

std::vector<Stroke> strokesOf(const TessalunaUIKit::Routine& routine) {
  KeepsStrokes canvas;
  const platform::CanvasScope scope(canvas);
  std::array<bool, 4> flags{};
  for (std::size_t i = 0; i < routine.flags.size(); ++i) flags.at(i) = routine.flags[i].isOnByDefault;
  routine.draw(routine.defaultFrame, std::span(flags).first(routine.flags.size()));
  return canvas.strokes;
}

struct IgnoresCoverage : RowByRowSink<IgnoresCoverage> {
  void uniform(int, int, int, float) {}
  void varied(int, int, int, const float*) {}
};

struct Search {
  std::size_t points = 0, sides = 0;  // of the outline; searched for overlaps
};

constexpr int side = 40;  // of the squares

Search searchIn(const Stroke& stroke, double scale) {
  Stroker stroker;
  Polygons polygons;
  StrokeStyle style = stroke.style;
  style.dash = stroke.dash;
  stroker.stroke(stroke.path, style, {scale, 0, 0, scale, 0, 0}, {-1000, -1000, 3000, 3000}, polygons);
  CoverageBuffer buffer;
  IgnoresCoverage sink;
  EXPECT_TRUE(buffer.sweep({.polygons = polygons}, polygons.bounds().roundedOut(), sink));
  return {polygons.pointCount(), buffer.sidesSearched()};
}

Path pathOf(const Polygons& polygons) {
  Path path;
  for (std::size_t i = 0; i < polygons.count(); ++i) {
    const std::span<const CGPoint> points = polygons.polygon(i);
    path.moveTo(points.front());
    for (const CGPoint& p : points.subspan(1)) path.lineTo(p);
    path.close();
  }
  return path;
}

}  // namespace

// A stroke's two sides share pixels all along a thin line. That alone is no reason to search them.
TEST(CoverageBufferTest, StrokesOfTheKitAreSearchedOnlyWhereTheyOverlap) {
  for (const double scale : {1.0, 2.0, 4.0}) {
    Search all;
    for (const TessalunaUIKit::Routine& routine : TessalunaUIKit::routines()) {
      for (const Stroke& stroke : strokesOf(routine)) {
        const Search search = searchIn(stroke, scale);
        EXPECT_LE(search.sides, maxSidesPerPoint * search.points) << routine.name << " at " << scale;
        all.points += search.points;
        all.sides += search.sides;
      }
    }
    EXPECT_GT(all.sides, 0u) << scale;
    EXPECT_LE(all.sides, all.points) << scale;
  }
}

TEST(CoverageBufferTest, DashesOfStraightLinesAreExactWhereverTheyMeet) {
  std::mt19937 random(1);
  // Not a distribution of the standard library, so that the drawings are the same everywhere.
  const auto between = [&](double low, double high) { return low + (high - low) * (random() / 4294967296.0); };
  const PixelRect box{0, 0, side, side};
  CoverageBuffer buffer;
  Stroker stroker;
  for (int i = 0; i < 100; ++i) {
    Path path;
    for (int line = 0; line < 3; ++line) {
      // The first one is upright.
      const double x = between(15, 25);
      path.moveTo({x, between(0, 10)});
      path.lineTo({line == 0 ? x : between(10, 30), between(30, 40)});
    }
    const double dash[] = {between(0.5, 16), between(0.3, 4)};
    Polygons polygons;
    stroker.stroke(path, {.width = between(0.3, 4), .dash = dash}, {}, DeviceRect::of(box), polygons);
    SquareOfCoverage pixels(side);
    ASSERT_TRUE(buffer.sweep({.polygons = polygons}, box, pixels));
    const Coverage exact(Region::filled(pathOf(polygons), FillRule::NonZero, {}), side, side);
    for (int y = 0; y < side; ++y) {
      for (int x = 0; x < side; ++x)
        ASSERT_NEAR(pixels.at(x, y), exact.at(x, y), 0.01) << "drawing " << i << ", pixel " << x << ", " << y;
    }
  }
}

// Beside the exact area of what a box leaves of a shape.
void expectExact(std::initializer_list<std::vector<CGPoint>> shapes, CGSize size, bool liesInBox = false) {
  Polygons polygons;
  for (const std::vector<CGPoint>& points : shapes)
    std::copy(points.begin(), points.end(), polygons.addPolygon(points.size()));
  const int width = int(size.width), height = int(size.height);
  SquareOfCoverage pixels(side);
  CoverageBuffer buffer;
  ASSERT_TRUE(buffer.sweep({.polygons = polygons, .liesInBox = liesInBox}, {0, 0, width, height}, pixels));
  const Coverage exact(Region::filled(pathOf(polygons), FillRule::NonZero, {}), width, height);
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x) EXPECT_NEAR(pixels.at(x, y), exact.at(x, y), 0.01) << "pixel " << x << ", " << y;
  }
}

TEST(CoverageBufferTest, SidesThatEnterTheBoxRightAtARowsBorder) {
  expectExact({{{6, 10}, {19, 0}, {-4.5, 2.9999999999999996}}}, {22, 6});
  expectExact({{{6, 10}, {19, 0}, {-3, 2.99999999}}}, {22, 6});
}

TEST(CoverageBufferTest, NearlyLevelSidesThatTheBoxCuts) {
  const double below = 3.5 + 0x1p-51;
  expectExact({{{5, 0.25}, {5, 3.5}, {100, below}, {100, 0.25}}}, {24, 6});
  expectExact({{{-50, 0.25}, {-50, 3.5}, {100, below}, {100, 0.25}}}, {24, 6});
}

TEST(CoverageBufferTest, LevelSidesWithinARowThatCrossAnotherShape) {
  expectExact({{{3, 0}, {3, 2.5}, {20, 2.5}, {3, 3}, {3, 6}, {1, 6}, {1, 0}}, {{6, 0}, {6, 6}, {1.5, 6}, {1.5, 0}}},
              {24, 6});
}

TEST(CoverageBufferTest, ChainsThatLeaveTheBoxAndReturnInOneRow) {
  expectExact({{{5, 2}, {40, 2.6}, {40, 2.6001}, {19, 3}, {19, 4}, {2, 4}, {2, 2}},
               {{6, 2}, {60, 2.5}, {20, 3}, {20, 4}, {1, 4}, {1, 2}}},
              {24, 6});
}

TEST(CoverageBufferTest, ANegativeZeroIsTheLeftEdge) {
  expectExact({{{-0.0, 1}, {8, 1}, {8, 5}, {-0.0, 5}}}, {10, 6}, true);
}

// A part that begins where another one's chain continues on the other side of it.
TEST(CoverageBufferTest, ChainsThatCrossWhereTheyHaveACorner) {
  expectExact({{{2, 0}, {4, 2.5}, {9, 6}, {2, 6}}, {{4, 0}, {4, 6}, {1, 6}, {1, 0}}}, {12, 6});
  expectExact({{{-3, 2}, {0.0, 2.5}, {3, 4}, {-3, 4}}, {{0.0, 1}, {0.0, 5}, {-4, 5}, {-4, 1}}}, {12, 6});
}

// More parts than are kept at a time.
TEST(CoverageBufferTest, ManySidesInManyRows) {
  Polygons polygons;
  for (int i = 0; i < 1200; ++i) {
    const double x = 0.5 + i * 0.03;
    polygons.moveTo({x, 1.25});
    for (const CGPoint& p : {CGPoint{x + 0.01, 1.25}, {x + 0.012, 38.5}, {x + 0.002, 38.5}}) polygons.lineTo(p);
  }
  SquareOfCoverage pixels(side);
  CoverageBuffer buffer;
  ASSERT_TRUE(buffer.sweep({.polygons = polygons}, {0, 0, side, side}, pixels));
  for (int y : {2, 12, 20, 30, 37}) EXPECT_NEAR(pixels.at(10, y), 1.0 / 3, 0.01) << y;
  EXPECT_NEAR(pixels.at(10, 1), 0.25, 0.01);
  EXPECT_NEAR(pixels.at(10, 38), 1.0 / 6, 0.01);
}

}  // namespace tessaluna::backend::raster::test
