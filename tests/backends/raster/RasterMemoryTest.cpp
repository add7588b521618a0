// The memory that a canvas keeps between drawings.
#include <malloc.h>

#include <random>

#include <gtest/gtest.h>

#include "tessaluna/backends/raster/Bitmap.h"
#include "tessaluna/backends/raster/RasterCanvas.h"

namespace tessaluna::backend::raster::test {

namespace {

std::size_t bytesInUse() {
  const struct mallinfo2 info = mallinfo2();
  return info.uordblks + info.hblkhd;
}

Path manyLines() {
  std::mt19937 random(11);
  std::uniform_real_distribution<double> place(0, 600);
  Path path;
  path.moveTo({0, 0});
  for (int i = 0; i < 300; ++i) path.lineTo({place(random), place(random)});
  return path;
}

void drawMuch(RasterCanvas& canvas) {
  const Path lines = manyLines();
  canvas.strokePath(lines, {.width = 3, .cap = LineCap::Round, .join = LineJoin::Round});
  for (int i = 0; i < 10; ++i) {
    canvas.saveState();
    canvas.setShadow({{3, 3}, 20, Color{}});
    canvas.beginTransparencyLayer();
    canvas.clipPath(Path::oval({0.0 - i, 0.0 - i, 600.0 + 2 * i, 600.0 + 2 * i}), FillRule::NonZero);
    canvas.fillPath(Path::oval({0, 0, 600, 600}), FillRule::NonZero);
  }
  canvas.fillPath(Path::oval({0, 0, 600, 600}), FillRule::NonZero);
  for (int i = 0; i < 10; ++i) {
    canvas.endTransparencyLayer();
    canvas.restoreState();
  }
}

void drawLittle(RasterCanvas& canvas) {
  const double dash[] = {1, 1};
  canvas.saveState();
  canvas.clipPath(Path::oval({1, 1, 14, 14}), FillRule::NonZero);
  canvas.setShadow({{1, -1}, 2, Color{}});
  canvas.beginTransparencyLayer();
  canvas.strokePath(Path::oval({2, 2, 12, 12}), {.width = 1, .dash = dash});
  canvas.fillPath(Path::rect({4, 4, 8, 8}), FillRule::NonZero);
  canvas.endTransparencyLayer();
  canvas.restoreState();
  canvas.fillPath(Path::oval({2, 2, 12, 12}), FillRule::NonZero);
}

}  // namespace

TEST(RasterMemory, OfAHugeDrawingIsFreedWhileSmallOnesFollow) {
  auto large = Bitmap::make(600, 600), small = Bitmap::make(16, 16);
  RasterCanvas canvas(*small);
  drawLittle(canvas);
  const std::size_t before = bytesInUse();
  if (before == 0) GTEST_SKIP() << "this allocator does not report what is in use";
  canvas.begin(*large);
  drawMuch(canvas);
  EXPECT_GT(bytesInUse(), before + 4000000) << "the drawing was not huge";
  canvas.begin(*small);
  for (int i = 0; i < 5000; ++i) drawLittle(canvas);
  EXPECT_LT(bytesInUse(), before + 1000000);
}

TEST(RasterMemory, LayerWhoseShadowFallsFromAfarTakesNoMemoryBetween) {
  auto bitmap = Bitmap::make(64, 64);
  RasterCanvas canvas(*bitmap);
  const std::size_t before = bytesInUse();
  if (before == 0) GTEST_SKIP() << "this allocator does not report what is in use";
  canvas.setShadow({{12000, 0}, 4, Color{}});
  canvas.beginTransparencyLayer();
  for (const double red : {0.2, 0.9}) {
    canvas.setFillColor({red, 0, 0, 1});
    canvas.fillPath(Path::rect({-20000, -20000, 8030, 40000}), FillRule::NonZero);  // up to column 30 of the shadow
  }
  EXPECT_LT(bytesInUse(), before + 4000000);
  canvas.endTransparencyLayer();
  EXPECT_EQ(bitmap->pixel(20, 32), 0xff000000);
  EXPECT_EQ(bitmap->pixel(50, 32), 0u);
}

TEST(RasterMemory, NestsOfShadowedLayersAreBounded) {
  auto bitmap = Bitmap::make(64, 64);
  RasterCanvas canvas(*bitmap);
  const std::size_t before = bytesInUse();
  if (before == 0) GTEST_SKIP() << "this allocator does not report what is in use";
  for (int level = 0; level < 200; ++level) {
    canvas.setShadow({{1, 1}, 30, Color{}});
    canvas.beginTransparencyLayer();
    for (const double red : {0.2, 0.9}) {
      canvas.setFillColor({red, 0, 0, 1});
      canvas.fillPath(Path::rect({-20000, -20000, 40000, 40000}), FillRule::NonZero);
    }
  }
  EXPECT_LT(bytesInUse(), before + 300000000);
  for (int level = 0; level < 200; ++level) canvas.endTransparencyLayer();
  EXPECT_EQ(bitmap->pixel(32, 32), 0xffe60000);
}

TEST(RasterMemory, DeeplyNestedLayersAreFreedAsTheyEnd) {
  auto bitmap = Bitmap::make(600, 600);
  RasterCanvas canvas(*bitmap);
  const std::size_t before = bytesInUse();
  if (before == 0) GTEST_SKIP() << "this allocator does not report what is in use";
  constexpr int levels = 12, keptLevels = 8;
  for (int level = 0; level < levels; ++level) {
    canvas.beginTransparencyLayer();
    for (const double red : {0.2, 0.9}) {
      canvas.setFillColor({red, 0, 0, 1});
      canvas.fillPath(Path::rect({0, 0, 600, 600}), FillRule::NonZero);
    }
  }
  const std::size_t peak = bytesInUse() - before;
  for (int level = keptLevels; level < levels; ++level) canvas.endTransparencyLayer();
  EXPECT_LT(bytesInUse() - before, peak * 3 / 4);
}

}  // namespace tessaluna::backend::raster::test
