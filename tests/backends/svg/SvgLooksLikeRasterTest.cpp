// What the SVG canvas writes, painted by rsvg-convert, beside what the raster canvas paints when it is told the same.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>

#include "tessaluna/backends/raster/Bitmap.h"
#include "tessaluna/backends/raster/RasterCanvas.h"
#include "tessaluna/backends/svg/SvgCanvas.h"
#include "tests/tools/artwork/PngPicture.h"

namespace tessaluna::backend::svg {
namespace {

constexpr CGRect area{-4, -6, 48, 40};  // points
constexpr int scale = 2;
constexpr Color white{1, 1, 1, 1}, red{1, 0, 0, 1}, green{0, 0.6, 0, 1}, paleBlue{0, 0, 1, 0.4};

struct Difference {
  double mean = 0;     // of a component, in 255ths
  double visible = 0;  // share of the pixels that are further off than an edge may be
};

Difference differenceOf(const std::function<void(Canvas&)>& draw) {
  const auto onWhite = [&](Canvas& canvas) {
    canvas.setFillColor(white);
    canvas.fillPath(Path::rect(area), FillRule::NonZero);
    canvas.setFillColor({});
    draw(canvas);
  };
  auto bitmap = raster::Bitmap::make(int(area.size.width) * scale, int(area.size.height) * scale);
  {
    raster::RasterCanvas canvas(*bitmap, {.scale = scale, .origin = area.origin});
    onWhite(canvas);
  }
  SvgCanvas vectors(area, scale);
  onWhite(vectors);
  EXPECT_FALSE(vectors.error()) << *vectors.error();

  std::string folder = (std::filesystem::temp_directory_path() / "svgXXXXXX").string();
  if (!mkdtemp(folder.data())) return {HUGE_VAL, 1};
  std::ofstream(folder + "/a.svg") << vectors.document();
  const std::string convert = "rsvg-convert -o '" + folder + "/a.png' '" + folder + "/a.svg'";
  const int status = std::system(convert.c_str());
  const auto theirs = artwork::readPng(folder + "/a.png");
  std::filesystem::remove_all(folder);
  if (status != 0 || !theirs || theirs->width != bitmap->width() || theirs->height != bitmap->height()) return {HUGE_VAL, 1};

  Difference result;
  for (int y = 0; y < bitmap->height(); ++y)
    for (int x = 0; x < bitmap->width(); ++x) {
      const artwork::PngPicture::Pixel b = theirs->at(x, y);
      const std::uint32_t a = bitmap->pixel(x, y);
      const int away[] = {std::abs(int(a >> 16 & 255) - b.red), std::abs(int(a >> 8 & 255) - b.green),
                          std::abs(int(a & 255) - b.blue)};
      result.mean += away[0] + away[1] + away[2];
      result.visible += std::max({away[0], away[1], away[2]}) > 16;
    }
  const double pixels = double(bitmap->width()) * bitmap->height();
  result.mean /= 3 * pixels;
  result.visible /= pixels;
  return result;
}

void expectAlike(const std::function<void(Canvas&)>& draw) {
  const Difference difference = differenceOf(draw);
  EXPECT_LE(difference.mean, 1);
  EXPECT_LE(difference.visible, 0.003);
}

Path star() {
  Path path;
  for (int i = 0; i < 5; ++i) {
    const double angle = i * 4 * 3.14159265358979 / 5;
    const CGPoint point{20 + 15 * std::sin(angle), 14 + 15 * std::cos(angle)};
    i == 0 ? path.moveTo(point) : path.lineTo(point);
  }
  path.close();
  return path;
}

Path zigzag() {
  Path path;
  path.moveTo({2, 4});
  path.lineTo({12, 24});
  path.lineTo({20, 6});
  path.curveTo({38, 8}, {26, -4}, {34, 40});
  return path;
}

const Shadow softShadow{.offset = {3, -4}, .blur = 5, .color = Color{0, 0, 0, 0.7}};

TEST(SvgLooksLikeRaster, ADifferenceIsSeen) {
  // Of two pictures that should not be alike: the canvas has a state that only one of the two is told.
  int calls = 0;
  const Difference difference = differenceOf([&](Canvas& canvas) {
    canvas.setFillColor(calls++ == 0 ? red : green);
    canvas.fillPath(star(), FillRule::NonZero);
  });
  EXPECT_GT(difference.mean, 5);
  EXPECT_GT(difference.visible, 0.05);
}

TEST(SvgLooksLikeRaster, Fills) {
  for (const FillRule rule : {FillRule::NonZero, FillRule::EvenOdd})
    expectAlike([rule](Canvas& canvas) {
      canvas.setFillColor(paleBlue);
      canvas.fillPath(star(), rule);
      canvas.setAlpha(0.5);
      canvas.setFillColor(red);
      canvas.fillPath(Path::oval({0, 0, 25, 12}), rule);
    });
}

TEST(SvgLooksLikeRaster, Strokes) {
  const double dash[] = {6, 2, 1, 2};
  expectAlike([](Canvas& canvas) {
    canvas.setStrokeColor(green);
    canvas.strokePath(zigzag(), {.width = 3});
  });
  expectAlike([](Canvas& canvas) { canvas.strokePath(zigzag(), {.width = 4, .cap = LineCap::Square, .miterLimit = 1.5}); });
  expectAlike([&](Canvas& canvas) {
    canvas.setStrokeColor(paleBlue);
    canvas.strokePath(zigzag(), {.width = 3, .cap = LineCap::Round, .join = LineJoin::Round});
    canvas.strokePath(star(), {.width = 2, .join = LineJoin::Bevel, .dash = dash, .dashPhase = 4});
  });
}

TEST(SvgLooksLikeRaster, StretchedAndTurnedSpaces) {
  expectAlike([](Canvas& canvas) {
    canvas.saveState();
    canvas.concat({0.5, 0, 0.4, 1.1, 2, -3});
    canvas.strokePath(star(), {.width = 4});
    canvas.restoreState();
    canvas.concat({0.6, 0.6, -0.6, 0.6, 20, -10});
    canvas.setFillColor(red);
    canvas.fillPath(Path::rect({10, 5, 20, 8}), FillRule::NonZero);
    canvas.strokePath(Path::rect({10, 5, 20, 8}), {.width = 2});
  });
}

TEST(SvgLooksLikeRaster, Clips) {
  expectAlike([](Canvas& canvas) {
    canvas.saveState();
    canvas.clipPath(star(), FillRule::EvenOdd);
    canvas.clipRect({10, 0, 12, 30});
    canvas.setFillColor(green);
    canvas.fillPath(Path::rect(area), FillRule::NonZero);
    canvas.restoreState();
    canvas.setFillColor(paleBlue);
    canvas.fillPath(Path::oval({0, 0, 8, 8}), FillRule::NonZero);
  });
}

TEST(SvgLooksLikeRaster, Shadows) {
  expectAlike([](Canvas& canvas) {
    canvas.setShadow(softShadow);
    canvas.setFillColor(red);
    canvas.fillPath(star(), FillRule::NonZero);
  });
  expectAlike([](Canvas& canvas) {
    canvas.setShadow({.offset = {-2, 3}, .blur = 0, .color = green});
    canvas.strokePath(zigzag(), {.width = 2});
  });
}

TEST(SvgLooksLikeRaster, ShadowUnderSomethingTranslucentShowsThroughIt) {
  expectAlike([](Canvas& canvas) {
    canvas.setShadow(softShadow);
    canvas.setAlpha(0.5);
    canvas.setFillColor(red);
    canvas.fillPath(Path::rect({5, 5, 20, 16}), FillRule::NonZero);
  });
  expectAlike([](Canvas& canvas) {
    canvas.setShadow(softShadow);
    canvas.setFillColor(paleBlue);
    canvas.fillPath(Path::rect({5, 5, 20, 16}), FillRule::NonZero);
  });
}

TEST(SvgLooksLikeRaster, ShadowIsCutByTheClipAndNotItsShape) {
  expectAlike([](Canvas& canvas) {
    canvas.clipRect({15, -6, 30, 40});
    canvas.setShadow({.offset = {20, 0}, .blur = 4, .color = Color{0, 0, 0, 1}});
    canvas.setFillColor(red);
    canvas.fillPath(Path::rect({-2, 5, 12, 12}), FillRule::NonZero);
  });
}

TEST(SvgLooksLikeRaster, Layers) {
  expectAlike([](Canvas& canvas) {
    canvas.setAlpha(0.6);
    canvas.setShadow(softShadow);
    canvas.beginTransparencyLayer();
    canvas.setFillColor(red);
    canvas.fillPath(Path::rect({2, 2, 16, 16}), FillRule::NonZero);
    canvas.setFillColor(green);
    canvas.setAlpha(0.5);
    canvas.beginTransparencyLayer();
    canvas.fillPath(Path::rect({10, 8, 16, 16}), FillRule::NonZero);
    canvas.fillPath(Path::rect({14, 12, 16, 16}), FillRule::NonZero);
    canvas.endTransparencyLayer();
    canvas.endTransparencyLayer();
    canvas.fillPath(Path::rect({34, 0, 6, 6}), FillRule::NonZero);
  });
}

TEST(SvgLooksLikeRaster, Gradients) {
  const GradientStop stops[] = {{0.1, red}, {0.5, paleBlue}, {0.9, green}};
  for (const CGAffineTransform& space :
       {CGAffineTransform{}, CGAffineTransform{0.6, 0.6, -0.6, 0.6, 20, -10}, CGAffineTransform{1, 0, 0.8, 0.5, -4, 2}})
    expectAlike([&](Canvas& canvas) {
      canvas.concat(space);
      canvas.fillGradient(star(), FillRule::NonZero, {.stops = stops, .start = {8, 4}, .end = {30, 20}});
    });
}

TEST(SvgLooksLikeRaster, TheInnerShadow) {
  for (const Color& shadow : {Color{0, 0, 0, 1}, Color{0, 0, 1, 0.5}})
    expectAlike([&](Canvas& canvas) {
      canvas.setFillColor(green);
      canvas.fillPath(star(), FillRule::NonZero);
      canvas.saveState();
      canvas.clipPath(star(), FillRule::NonZero);
      canvas.setAlpha(0.8);
      canvas.beginTransparencyLayer();
      canvas.setBlendMode(BlendMode::SourceOut);
      canvas.setShadow({.offset = {2, -2}, .blur = 3, .color = shadow});
      canvas.setFillColor({0, 0, 0, 1});
      canvas.fillPath(star(), FillRule::NonZero);
      canvas.endTransparencyLayer();
      canvas.restoreState();
    });
}

TEST(SvgLooksLikeRaster, CopiesAndGlyphs) {
  class Stars : public Typeface {
   public:
    Path outline(std::uint32_t) const override { return star(); }
  };
  expectAlike([](Canvas& canvas) {
    const GlyphRun run{.typeface = std::make_shared<Stars>(), .glyphs = {1}, .positions = {{0, 0}}};
    canvas.setBlendMode(BlendMode::Copy);
    canvas.setFillColor(green);
    canvas.fillPath(Path::rect({4, 4, 30, 20}), FillRule::NonZero);
    canvas.setBlendMode(BlendMode::Normal);
    canvas.setFillColor(paleBlue);
    canvas.drawGlyphs(run, {0, 0});
  });
}

}  // namespace
}  // namespace tessaluna::backend::svg
