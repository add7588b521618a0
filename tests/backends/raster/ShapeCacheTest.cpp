#include "tessaluna/backends/raster/ShapeCache.h"

#include <gtest/gtest.h>

namespace tessaluna::backend::raster::test {

namespace {

constexpr PixelRect clip{0, 0, 100, 100};
const Path square = Path::rect({2, 3, 4, 5});

ShapeCache::Key keyOf(const Path& path, const CGAffineTransform& transform = {}) {
  return {path, FillRule::NonZero, nullptr, transform};
}

KeptShape shapeOf(const PixelRect& box, int runs = 1) {
  KeptShape shape;
  shape.coverage.begin(box);
  for (int i = 0; i < runs; ++i) shape.coverage.uniform(box.left, box.top, 1, 1);
  return shape;
}

// True if the shape is kept now.
bool seeTwice(ShapeCache& cache, const Path& path, const KeptShape& shape) {
  cache.look(keyOf(path), clip);
  if (!cache.look(keyOf(path), clip).isSecond) return false;
  cache.keep(keyOf(path), shape);
  return cache.look(keyOf(path), clip).kept != nullptr;
}

}  // namespace

TEST(ShapeCacheTest, KeepsAShapeSeenForTheSecondTime) {
  ShapeCache cache;
  const ShapeCache::Sight first = cache.look(keyOf(square), clip);
  EXPECT_FALSE(first.kept || first.isSecond);
  const ShapeCache::Sight second = cache.look(keyOf(square), clip);
  EXPECT_TRUE(!second.kept && second.isSecond);
  cache.keep(keyOf(square), shapeOf({2, 3, 6, 8}));
  const ShapeCache::Sight third = cache.look(keyOf(square), clip);
  ASSERT_TRUE(third.kept);
  EXPECT_EQ(third.kept->coverage.box(), (PixelRect{2, 3, 6, 8}));
}

TEST(ShapeCacheTest, WholeShapeFitsEveryClipThatContainsIt) {
  ShapeCache cache;
  ASSERT_TRUE(seeTwice(cache, square, shapeOf({2, 3, 6, 8})));
  EXPECT_TRUE(cache.look(keyOf(square), {2, 3, 6, 8}).kept);
  EXPECT_FALSE(cache.look(keyOf(square), {3, 3, 6, 8}).kept);
}

TEST(ShapeCacheTest, CutShapeFitsItsOwnClipAndIsKeptForAnotherTheSecondTime) {
  ShapeCache cache;
  KeptShape cut = shapeOf({2, 3, 6, 4});
  cut.isWhole = false;
  cut.clip = clip;
  ASSERT_TRUE(seeTwice(cache, square, cut));
  constexpr PixelRect other{0, 0, 100, 5};
  EXPECT_FALSE(cache.look(keyOf(square), other).isSecond);
  ASSERT_TRUE(cache.look(keyOf(square), other).isSecond);
  cut.clip = other;
  cache.keep(keyOf(square), cut);
  EXPECT_TRUE(cache.look(keyOf(square), other).kept);
  EXPECT_FALSE(cache.look(keyOf(square), clip).kept);
}

TEST(ShapeCacheTest, EverythingThatAffectsCoverageDistinguishesShapes) {
  Path line;
  line.moveTo({1, 2});
  line.lineTo({3, 4});
  line.lineTo({8, 2});
  Path lineAndMove;
  lineAndMove.moveTo({1, 2});
  lineAndMove.lineTo({3, 4});
  lineAndMove.moveTo({8, 2});
  Path other;
  other.moveTo({1, 2});
  other.lineTo({3, 4});
  other.lineTo({8, 2.0000001});
  const double dash[] = {1, 2}, otherDash[] = {1, 3};
  const StrokeStyle pen{.dash = dash};
  const auto styled = [&](auto change) {
    StrokeStyle style = pen;
    change(style);
    return style;
  };
  const StrokeStyle pens[] = {styled([](StrokeStyle& s) { s.width = 2; }),
                              styled([](StrokeStyle& s) { s.cap = LineCap::Round; }),
                              styled([](StrokeStyle& s) { s.join = LineJoin::Round; }),
                              styled([](StrokeStyle& s) { s.miterLimit = 4; }),
                              styled([](StrokeStyle& s) { s.dashPhase = 1; }),
                              styled([&](StrokeStyle& s) { s.dash = otherDash; }),
                              styled([](StrokeStyle& s) { s.dash = {}; })};
  std::vector<ShapeCache::Key> keys{keyOf(line),
                                    keyOf(lineAndMove),
                                    keyOf(other),
                                    {line, FillRule::EvenOdd, nullptr, {}},
                                    {line, FillRule::NonZero, &pen, {}},
                                    keyOf(line, {2, 0, 0, 1, 0, 0}),
                                    keyOf(line, {1, 2, 0, 1, 0, 0}),
                                    keyOf(line, {1, 0, 2, 1, 0, 0}),
                                    keyOf(line, {1, 0, 0, 2, 0, 0}),
                                    keyOf(line, {1, 0, 0, 1, 0.5, 0}),
                                    keyOf(line, {1, 0, 0, 1, 0, 0.5})};
  for (const StrokeStyle& p : pens) keys.push_back({line, FillRule::NonZero, &p, {}});
  for (const ShapeCache::Key& kept : keys) {
    ShapeCache cache;
    cache.look(kept, clip);
    cache.keep(kept, shapeOf({1, 2, 8, 4}));
    for (const ShapeCache::Key& key : keys) EXPECT_EQ(cache.look(key, clip).kept != nullptr, &key == &kept);
  }
}

TEST(ShapeCacheTest, MovesAreSplitIntoWholePixelsAndTheRest) {
  const PixelPlacement place({2, 0, 0, -2, 7.25, -3.5});
  EXPECT_EQ(place.moved.x, 7);
  EXPECT_EQ(place.moved.y, -4);
  EXPECT_EQ(place.rest.tx, 0.25);
  EXPECT_EQ(place.rest.ty, 0.5);
  // Rounding left this instead of a whole sum.
  const PixelPlacement rounded({1, 0, 0, 1, 7.0 - 1e-12, 100.3 - 98.0});
  EXPECT_EQ(rounded.moved.x, 7);
  EXPECT_EQ(rounded.rest.tx, 0);
  EXPECT_EQ(rounded.rest.ty, PixelPlacement({1, 0, 0, 1, 0, 0.3}).rest.ty);
}

TEST(ShapeCacheTest, MemoryIsBoundedAndFreedForShapesNoLongerDrawn) {
  ShapeCache cache;
  constexpr int many = 4000, runs = 1000;
  std::size_t largest = 0;
  for (int i = 0; i < many; ++i) {
    seeTwice(cache, Path::rect({double(i), 0, 1, 1}), shapeOf({i, 0, i + 1, 1}, runs));
    largest = std::max(largest, cache.bytes());
  }
  EXPECT_GT(largest, std::size_t{4} << 20);
  EXPECT_LE(largest, std::size_t{8} << 20);
  for (std::uint32_t i = 0; i < ShapeCache::operationsKept + 10000; ++i) cache.look(keyOf(square), clip);
  EXPECT_LT(cache.bytes(), std::size_t{100} << 10);
}

TEST(ShapeCacheTest, ShapeDrawnNowAndThenStays) {
  ShapeCache cache;
  ASSERT_TRUE(seeTwice(cache, square, shapeOf({2, 3, 6, 8})));
  for (int i = 0; i < 100000; ++i) {
    cache.look(keyOf(Path::rect({double(i), 0, 1, 1})), clip);
    if (i % 10000 == 0) {
      EXPECT_TRUE(cache.look(keyOf(square), clip).kept) << i;
    }
  }
}

TEST(ShapeCacheTest, ShapeThatIsTooLargeIsNeitherKeptNorRequestedAgain) {
  ShapeCache cache;
  EXPECT_FALSE(seeTwice(cache, square, shapeOf({2, 3, 6, 8}, 100000)));
  EXPECT_FALSE(cache.look(keyOf(square), clip).isSecond);
  EXPECT_EQ(cache.bytes(), 0u);
}

}  // namespace tessaluna::backend::raster::test
