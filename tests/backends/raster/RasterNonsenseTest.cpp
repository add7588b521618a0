// Input that no artist intends: the canvas quickly paints as much of it as possible, and nothing else breaks.
#include <cmath>
#include <limits>
#include <random>

#include <gtest/gtest.h>

#include "tessaluna/backends/raster/Bitmap.h"
#include "tessaluna/backends/raster/RasterCanvas.h"

namespace tessaluna::backend::raster::test {

namespace {

constexpr double infinite = std::numeric_limits<double>::infinity();
constexpr double none = std::numeric_limits<double>::quiet_NaN();
constexpr double tiny = std::numeric_limits<double>::denorm_min();
constexpr double largest = std::numeric_limits<double>::max();
constexpr double strange[] = {none, infinite, -infinite, 1e30, -1e30, largest, -largest, tiny, -tiny, 0.0, -0.0, 1e-30};
constexpr FillRule nonZero = FillRule::NonZero;

Bitmap canvasBitmap() { return std::move(*Bitmap::make(64, 64)); }

std::uint32_t everything(const Bitmap& bitmap) {
  std::uint32_t all = 0;
  for (int y = 0; y < bitmap.height(); ++y) {
    for (int x = 0; x < bitmap.width(); ++x) all |= bitmap.pixel(x, y);
  }
  return all;
}

}  // namespace

TEST(RasterNonsense, PointsThatAreNotFiniteAreLeftOut) {
  Bitmap bitmap = canvasBitmap(), expected = canvasBitmap();
  Path path, clean;
  path.moveTo({10, 10});
  path.lineTo({none, 20});
  path.lineTo({50, 10});
  path.curveTo({20, 20}, {infinite, 5}, {8, 8});
  path.lineTo({30, 50});
  path.close();
  clean.moveTo({10, 10});
  clean.lineTo({50, 10});
  clean.lineTo({30, 50});
  clean.close();
  RasterCanvas(bitmap).fillPath(path, nonZero);
  RasterCanvas(expected).fillPath(clean, nonZero);
  for (int y = 0; y < 64; ++y) {
    for (int x = 0; x < 64; ++x) ASSERT_EQ(bitmap.pixel(x, y), expected.pixel(x, y)) << x << ", " << y;
  }
}

TEST(RasterNonsense, GradientStopsThatAreNotFiniteAreLeftOut) {
  const Color red{1, 0, 0, 1}, green{0, 1, 0, 1};
  const GradientStop stops[] = {{-infinite, red}, {none, red}, {0.5, green}, {infinite, red}};
  Bitmap bitmap = canvasBitmap();
  RasterCanvas(bitmap).fillGradient(Path::rect({0, 0, 64, 64}), nonZero, {stops, {0, 0}, {64, 0}});
  for (int x = 0; x < 64; ++x) ASSERT_EQ(bitmap.pixel(x, 30), 0xff00ff00) << x;
}

TEST(RasterNonsense, HugeRectangleCoversThePicture) {
  for (const double size : {1e6, 1e15, 1e30, 1e90}) {
    Bitmap bitmap = canvasBitmap();
    Path path;
    path.moveTo({-size, -size});
    path.lineTo({size, -size});
    path.lineTo({size, size});
    path.lineTo({-size, size});
    path.close();
    RasterCanvas(bitmap).fillPath(path, nonZero);
    for (int y = 0; y < 64; ++y) {
      for (int x = 0; x < 64; ++x) ASSERT_EQ(bitmap.pixel(x, y), 0xff000000) << size << ": " << x << ", " << y;
    }
  }
}

TEST(RasterNonsense, HugeOvalCoversThePicture) {
  for (const double size : {1e6, 1e12, 1e30}) {
    Bitmap bitmap = canvasBitmap();
    RasterCanvas(bitmap).fillPath(Path::oval({-size, -size, 2 * size, 2 * size}), nonZero);
    EXPECT_EQ(bitmap.pixel(5, 60), 0xff000000) << size;
  }
}

TEST(RasterNonsense, ExtremelyLongLinePassesThroughThePicture) {
  for (const double far : {1e6, 1e15, 1e30, 1e90}) {
    Bitmap bitmap = canvasBitmap();
    Path path;
    path.moveTo({-far, 32});
    path.lineTo({far, 32});
    RasterCanvas(bitmap).strokePath(path, {.width = 4});
    EXPECT_EQ(bitmap.pixel(3, 31), 0xff000000) << far;
    EXPECT_EQ(bitmap.pixel(60, 33), 0xff000000) << far;
    EXPECT_EQ(bitmap.pixel(30, 28), 0u) << far;
  }
}

TEST(RasterNonsense, ExtremelyLongDashedLineIsDashedInThePicture) {
  const double dash[] = {4, 4};
  for (const double far : {1e6, 1e12}) {
    Bitmap bitmap = canvasBitmap();
    Path path;
    path.moveTo({0, 32});
    path.lineTo({far, 32});
    RasterCanvas(bitmap).strokePath(path, {.width = 4, .dash = dash});
    for (int x = 0; x < 64; ++x) ASSERT_EQ(bitmap.pixel(x, 31), x % 8 < 4 ? 0xff000000 : 0u) << far << ": " << x;
  }
}

TEST(RasterNonsense, NearlyLevelSidesOfAHugePen) {
  Bitmap bitmap = canvasBitmap();
  Path path;
  path.moveTo({26.752, 63.9999999});
  path.lineTo({46.425000628, 64.00000001});
  path.close();
  RasterCanvas(bitmap).strokePath(path, {.width = 1e30, .cap = LineCap::Round, .join = LineJoin::Round});
  EXPECT_EQ(bitmap.pixel(20, 30), 0xff000000);
}

TEST(RasterNonsense, DashesThatEachCoverEverythingFinishInTime) {
  const double dash[] = {79.395, 16};
  Bitmap bitmap = canvasBitmap();
  Path path;
  path.moveTo({64, 77.839});
  for (const CGPoint& p : {CGPoint{28.415, 18}, {64, 72.207}, {1e99, 4}, {0, 24}, {55, 1.149}, {-5.613, 60}, {0, -1e15}})
    path.lineTo(p);
  RasterCanvas(bitmap).strokePath(path, {.width = 1e100, .join = LineJoin::Bevel, .dash = dash, .dashPhase = 29});
  EXPECT_EQ(bitmap.pixel(20, 30), 0xff000000);
}

TEST(RasterNonsense, DashesTooFineToSeeTakeNoTime) {
  for (const double fine : {1e-3, 1e-9, 1e-300, tiny}) {
    const double dash[] = {fine, fine};
    Bitmap bitmap = canvasBitmap();
    RasterCanvas canvas(bitmap);
    Path path;
    path.moveTo({-1e9, 30});
    for (int i = 0; i < 100; ++i) path.lineTo({i % 2 ? -1e9 : 1e9, 30.0 + i * 0.1});
    canvas.strokePath(path, {.width = 4, .dash = dash});
    EXPECT_NE(everything(bitmap), 0u);
  }
}

TEST(RasterNonsense, DashPatternsOfNothing) {
  const double zeros[] = {0, 0}, negative[] = {-4, 2}, infinities[] = {infinite, 1}, nothings[] = {none}, dots[] = {0, 6};
  for (const std::span<const double> dash : {std::span<const double>(zeros), std::span<const double>(negative),
                                             std::span<const double>(infinities), std::span<const double>(nothings)}) {
    Bitmap bitmap = canvasBitmap();
    RasterCanvas(bitmap).strokePath(Path::rect({10, 10, 40, 40}), {.width = 4, .dash = dash});
    EXPECT_EQ(bitmap.pixel(30, 10), 0u);
    EXPECT_EQ(bitmap.pixel(30, 13), 0xff000000) << "a pattern that makes no sense is a solid line";
  }
  Bitmap bitmap = canvasBitmap();
  Path line;
  line.moveTo({6, 32});
  line.lineTo({60, 32});
  RasterCanvas(bitmap).strokePath(line, {.width = 4, .cap = LineCap::Round, .dash = dots});
  EXPECT_EQ(bitmap.pixel(12, 31), 0xff000000) << "a dash of no length with round ends is a dot";
  EXPECT_EQ(bitmap.pixel(8, 31), 0u);
}

TEST(RasterNonsense, StrokeWidths) {
  for (const double width : strange) {
    for (const LineJoin join : {LineJoin::Miter, LineJoin::Round, LineJoin::Bevel}) {
      Bitmap bitmap = canvasBitmap();
      RasterCanvas(bitmap).strokePath(Path::oval({10, 10, 40, 40}), {.width = width, .cap = LineCap::Round, .join = join});
    }
  }
  Bitmap bitmap = canvasBitmap();
  RasterCanvas(bitmap).strokePath(Path::oval({10, 10, 40, 40}), {.width = 1e30});
  EXPECT_EQ(bitmap.pixel(1, 1), 0xff000000);
  Bitmap thin = canvasBitmap();
  RasterCanvas(thin, {.scale = 2}).strokePath(Path::rect({4.25, 4.25, 20, 20}), {.width = 0});
  EXPECT_EQ(thin.pixel(8, 30), 0xff000000) << "no width is the thinnest line: one pixel";
  EXPECT_EQ(thin.pixel(9, 30), 0u);
  Bitmap negative = canvasBitmap();
  RasterCanvas(negative).strokePath(Path::rect({4, 4, 20, 20}), {.width = -3});
  EXPECT_EQ(everything(negative), 0u);
}

TEST(RasterNonsense, PensTooThinForDirectionsPaintNothing) {
  Path path;
  path.moveTo({10, 10});
  path.lineTo({50, 20});
  path.lineTo({10, 30});
  path.curveTo({50, 50}, {60, 30}, {20, 50});
  for (const double width : {tiny, 2 * tiny, 1e-300, 1e-30, 1e-12}) {
    for (const LineJoin join : {LineJoin::Miter, LineJoin::Round, LineJoin::Bevel}) {
      Bitmap bitmap = canvasBitmap();
      RasterCanvas(bitmap).strokePath(path, {.width = width, .cap = LineCap::Round, .join = join});
      EXPECT_EQ(everything(bitmap), 0u) << width;
    }
  }
}

TEST(RasterNonsense, MiterLimits) {
  Path path;
  path.moveTo({10, 10});
  path.lineTo({30, 50});
  path.lineTo({31, 10});
  path.lineTo({10.0001, 10});
  path.close();
  for (const double limit : strange) {
    Bitmap bitmap = canvasBitmap();
    RasterCanvas(bitmap).strokePath(path, {.width = 3, .miterLimit = limit});
    EXPECT_NE(everything(bitmap), 0u);
  }
}

TEST(RasterNonsense, ShapesWithoutSizePaintNothing) {
  Bitmap bitmap = canvasBitmap();
  RasterCanvas canvas(bitmap);
  canvas.setShadow({{2, 2}, 3, Color{}});
  Path lone, flat;
  lone.moveTo({20, 20});
  flat.moveTo({10, 20});
  flat.lineTo({40, 20});
  for (const Path& path : {Path(), lone, flat, Path::rect({10, 10, 0, 0}), Path::rect({10, 10, 0, 20}),
                           Path::oval({8, 8, 0, 9}), Path::roundedRect({8, 8, 0, 0}, {4, 4})}) {
    canvas.fillPath(path, nonZero);
    canvas.fillPath(path, FillRule::EvenOdd);
    canvas.fillGradient(path, nonZero, {{}, {0, 0}, {1, 1}});
  }
  canvas.strokePath({}, {});
  canvas.strokePath(lone, {.cap = LineCap::Square});
  EXPECT_EQ(everything(bitmap), 0u);
}

TEST(RasterNonsense, TransformsThatFlattenPaintNothing) {
  Bitmap bitmap = canvasBitmap();
  RasterCanvas canvas(bitmap);
  for (const CGAffineTransform& flat :
       {CGAffineTransform{0, 0, 0, 0, 5, 5}, CGAffineTransform{1, 1, 1, 1, 0, 0}, CGAffineTransform{0, 0, 0, 1, 3, 3}}) {
    canvas.saveState();
    canvas.concat(flat);
    canvas.fillPath(Path::rect({1, 1, 30, 30}), nonZero);
    canvas.strokePath(Path::rect({1, 1, 30, 30}), {.width = 5});
    canvas.restoreState();
  }
  EXPECT_EQ(everything(bitmap), 0u);
}

TEST(RasterNonsense, ViewsThatShowNothingPaintNothing) {
  for (const double scale : {0.0, -1.0, none, infinite}) {
    Bitmap bitmap = canvasBitmap();
    RasterCanvas(bitmap, {.scale = scale}).fillPath(Path::rect({0, 0, 99, 99}), nonZero);
    EXPECT_EQ(everything(bitmap), 0u);
  }
  Bitmap bitmap = canvasBitmap();
  RasterCanvas(bitmap, {.origin = {none, 0}}).fillPath(Path::rect({0, 0, 99, 99}), nonZero);
  EXPECT_EQ(everything(bitmap), 0u);
}

TEST(RasterNonsense, ShadowsOfAllSizes) {
  for (const double blur : strange) {
    for (const double offset : {0.0, 5.0, none, infinite, 1e30}) {
      Bitmap bitmap = canvasBitmap();
      RasterCanvas canvas(bitmap);
      canvas.setShadow({{offset, -offset}, blur, Color{1, 0, 0, 1}});
      canvas.fillPath(Path::rect({20, 20, 20, 20}), nonZero);
      canvas.beginTransparencyLayer();
      canvas.fillPath(Path::oval({20, 20, 20, 20}), nonZero);
      canvas.endTransparencyLayer();
      EXPECT_EQ(bitmap.pixel(30, 34), 0xff000000) << "the shape itself is there";
    }
  }
}

TEST(RasterNonsense, HugeShapesInLayersWithHugeShadows) {
  Bitmap bitmap = canvasBitmap();
  RasterCanvas canvas(bitmap, {.scale = 3});
  canvas.setShadow({{300, 200}, 1000, Color{1, 0, 0, 1}});
  canvas.beginTransparencyLayer();
  canvas.fillPath(Path::rect({-1e9, -1e9, 2e9, 2e9}), nonZero);
  canvas.endTransparencyLayer();
  EXPECT_EQ(bitmap.pixel(1, 1), 0xff000000);
}

// An image's outermost pixels continue beyond it, however far away that is.
TEST(RasterNonsense, SourcesFarFromTheirPixels) {
  constexpr std::uint32_t red = 0xffff0000, blue = 0xff0000ff;
  const ImagePixels image{.width = 2, .height = 1, .argb = {red, blue}};
  for (const double from : {4.0, 1e6, 1e12, 1e15}) {
    Bitmap upright = canvasBitmap(), turned = canvasBitmap();
    RasterCanvas(upright).drawImage(image, {from, 0, 32, 1}, {0, 0, 64, 64});
    EXPECT_EQ(upright.pixel(32, 32), blue) << from;
    RasterCanvas(upright).drawImage(image, {-from - 32, 0, 32, 1}, {0, 0, 64, 64});
    EXPECT_EQ(upright.pixel(32, 32), red) << from;
    RasterCanvas canvas(turned);
    canvas.concat({0, 1, -1, 0, 64, 0});
    canvas.drawImage(image, {from, 0, 32, 32}, {0, 0, 64, 64});
    EXPECT_EQ(turned.pixel(32, 32), blue) << from;
  }
}

TEST(RasterNonsense, SourcesOfStrangeSizes) {
  const ImagePixels image{.width = 2, .height = 1, .argb = {0xffff0000, 0xff0000ff}};
  for (const double at : strange) {
    for (const double size : strange) {
      Bitmap bitmap = canvasBitmap();
      RasterCanvas canvas(bitmap);
      canvas.drawImage(image, {at, at, size, size}, {0, 0, 64, 64});
      canvas.drawImage(image, {0, 0, 2, 1}, {at, at, size, size});
      canvas.concat({0, 1, -1, 0, 64, 0});
      canvas.drawImage(image, {at, at, size, size}, {0, 0, 64, 64});
      canvas.fillPath(Path::rect({0, 0, 9, 9}), nonZero);
      EXPECT_NE(everything(bitmap), 0u) << at << ", " << size;
    }
  }
}

TEST(RasterNonsense, DeepNesting) {
  Bitmap bitmap = canvasBitmap();
  RasterCanvas canvas(bitmap);
  for (int i = 0; i < 300; ++i) {
    canvas.saveState();
    canvas.beginTransparencyLayer();
    canvas.clipPath(Path::oval({0.0 - i, 0.0 - i, 64.0 + 2 * i, 64.0 + 2 * i}), nonZero);
  }
  canvas.fillPath(Path::rect({0, 0, 64, 64}), nonZero);
  for (int i = 0; i < 300; ++i) {
    canvas.endTransparencyLayer();
    canvas.restoreState();
  }
  EXPECT_EQ(bitmap.pixel(32, 32), 0xff000000);
}

TEST(RasterNonsense, TensOfThousandsOfCrossingSides) {
  std::mt19937 random(7);
  std::uniform_real_distribution<double> place(-10, 74);
  Path path;
  path.moveTo({0, 0});
  for (int i = 0; i < 20000; ++i) path.lineTo({place(random), place(random)});
  for (const FillRule rule : {nonZero, FillRule::EvenOdd}) {
    Bitmap bitmap = canvasBitmap();
    RasterCanvas(bitmap).fillPath(path, rule);
    EXPECT_NE(everything(bitmap), 0u);
  }
  Bitmap bitmap = canvasBitmap();
  RasterCanvas(bitmap).strokePath(path, {.width = 0.2});
  EXPECT_EQ(bitmap.pixel(30, 30), 0xff000000);
}

TEST(RasterNonsense, EveryStrangeNumberEverywhere) {
  std::mt19937 random(3);
  const auto number = [&] { return random() % 3 ? double(random() % 64) : strange[random() % std::size(strange)]; };
  const auto point = [&] { return CGPoint{number(), number()}; };
  Bitmap bitmap = canvasBitmap();
  RasterCanvas canvas(bitmap);
  for (int i = 0; i < 60; ++i) {
    Path path;
    path.moveTo(point());
    for (unsigned n = random() % 5; n > 0; --n)
      random() % 2 ? path.lineTo(point()) : path.curveTo(point(), point(), point());
    if (random() % 2) path.close();
    const double dash[] = {std::abs(number()), number()};
    const GradientStop stops[] = {{number(), {number(), 0, 1, 1}}, {number(), {0, 0, 1, number()}}};
    canvas.saveState();
    if (random() % 4 == 0) canvas.concat({number(), number(), number(), number(), number(), number()});
    if (random() % 4 == 0) canvas.clipPath(path, random() % 2 ? nonZero : FillRule::EvenOdd);
    if (random() % 4 == 0) canvas.clipRect({number(), number(), number(), number()});
    if (random() % 4 == 0) canvas.setShadow({{number(), number()}, number() / 8, Color{0, 0, 0, number()}});
    if (random() % 4 == 0) canvas.setAlpha(number());
    const bool hasLayer = random() % 4 == 0;
    if (hasLayer) canvas.beginTransparencyLayer();
    canvas.fillPath(path, random() % 2 ? nonZero : FillRule::EvenOdd);
    canvas.strokePath(path, {.width = number(),
                             .cap = LineCap(random() % 3),
                             .join = LineJoin(random() % 3),
                             .miterLimit = number(),
                             .dash = random() % 2 ? std::span<const double>(dash) : std::span<const double>(),
                             .dashPhase = number()});
    canvas.fillGradient(path, nonZero, {stops, point(), point()});
    if (hasLayer) canvas.endTransparencyLayer();
    canvas.restoreState();
  }
  // The canvas still paints.
  RasterCanvas(bitmap).fillPath(Path::rect({0, 0, 64, 64}), nonZero);
  EXPECT_EQ(bitmap.pixel(40, 40), 0xff000000);
}

}  // namespace tessaluna::backend::raster::test
