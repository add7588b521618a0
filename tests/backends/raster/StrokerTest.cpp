#include "tessaluna/backends/raster/Stroker.h"

#include <gtest/gtest.h>

namespace tessaluna::backend::raster::test {

namespace {

constexpr DeviceRect visible{-1000, -1000, 1000, 1000};
constexpr StrokeStyle wide{.width = 10};

Path closedCurve(CGPoint at, CGPoint leaving, CGPoint arriving) {
  Path path;
  path.moveTo(at);
  path.curveTo(at, leaving, arriving);
  path.close();
  return path;
}

void addOutline(const Path& path, Polygons& polygons) { Stroker().stroke(path, wide, {}, visible, polygons); }

}  // namespace

// The first passage of such a ring lies on the inner side of a bend narrower than the pen.
TEST(StrokerTest, OutlineOfARingDoesNotDependOnWhatIsBeforeIt) {
  const Path rings[] = {closedCurve({4.6, 1.9}, {6.4, 1.4}, {4.6, 0.2}), closedCurve({1.8, 2.5}, {0.3, 2}, {2.7, 3.7})};
  for (const Path& ring : rings) {
    Polygons alone;
    addOutline(ring, alone);
    for (const CGPoint at : {CGPoint{300, 0}, {-300, 0}, {0, 300}, {0, -300}}) {
      Polygons second;
      addOutline(Path::rect({at.x, at.y, 20, 20}), second);
      const std::size_t before = second.pointCount();
      addOutline(ring, second);
      ASSERT_EQ(second.pointCount(), before + alone.pointCount()) << at.x << ", " << at.y;
      for (std::size_t i = 0; i < alone.pointCount(); ++i)
        ASSERT_EQ(second.points()[before + i], alone.points()[i]) << at.x << ", " << at.y << ": point " << i;
    }
  }
}

}  // namespace tessaluna::backend::raster::test
