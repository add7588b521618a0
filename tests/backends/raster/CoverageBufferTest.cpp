#include "tessaluna/backends/raster/CoverageBuffer.h"

#include <array>
#include <vector>

#include <gtest/gtest.h>

#include "tessaluna/backends/raster/Stroker.h"
#include "tessaluna/backends/recording/RecordingCanvas.h"
#include "tessaluna/platform/graphics/NSGraphicsContext.h"
#include "tessaluna/uikit/stylekit/Routines.h"

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

Search searchIn(const Stroke& stroke, double scale) {
  Stroker stroker;
  Polygons polygons;
  StrokeStyle style = stroke.style;
  style.dash = stroke.dash;
  stroker.stroke(stroke.path, style, {scale, 0, 0, scale, 0, 0}, {-1000, -1000, 3000, 3000}, polygons);
  CoverageBuffer buffer;
  IgnoresCoverage sink;
  EXPECT_TRUE(buffer.sweep({.polygons = polygons, .isStroke = true}, polygons.bounds().roundedOut(), sink));
  return {polygons.pointCount(), buffer.sidesSearched()};
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

}  // namespace tessaluna::backend::raster::test
