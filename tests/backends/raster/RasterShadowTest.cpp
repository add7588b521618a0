// Shadows of shapes and of layers, and the inner shadow, which is made from both.
#include <gtest/gtest.h>

#include "tests/backends/raster/ReferencePicture.h"

namespace tessaluna::backend::raster::test {

namespace {

constexpr Color ink{0.1, 0.3, 0.8, 1};
constexpr Color glass{0.7, 0.2, 0.4, 0.6};
constexpr Color dark{0.167, 0.167, 0.167, 1};
constexpr FillRule nonZero = FillRule::NonZero;
const Shadow kitShadow{{1, -1}, 1.5, dark};
const Path disc = Path::oval({9.3, 8.2, 23.4, 24.1});

std::function<Region(const CGAffineTransform&)> filled(const Path& path) {
  return [path](const CGAffineTransform& toDevice) { return Region::filled(path, nonZero, toDevice); };
}

Path arrow() {
  Path path;
  path.moveTo({4, 4});
  path.lineTo({12.2, 4});
  path.lineTo({12.2, 16.1});
  path.lineTo({36.1, 4});
  path.lineTo({36.1, 35.6});
  path.lineTo({12.2, 23.1});
  path.lineTo({12.2, 35.6});
  path.lineTo({4, 35.6});
  path.close();
  return path;
}

// Paints a soft shadow along the inside of a path's edge, over what is there.
void drawInnerShadow(RasterCanvas& canvas, const Path& path, const Shadow& shadow) {
  Color opaque = *shadow.color;
  opaque.alpha = 1;
  canvas.saveState();
  canvas.clipRect(path.bounds());
  canvas.setShadow({});
  canvas.setAlpha(shadow.color->alpha);
  canvas.beginTransparencyLayer();
  canvas.setShadow({shadow.offset, shadow.blur, opaque});
  canvas.setBlendMode(BlendMode::SourceOut);
  canvas.beginTransparencyLayer();
  canvas.setFillColor(opaque);
  canvas.fillPath(path, nonZero);
  canvas.endTransparencyLayer();
  canvas.endTransparencyLayer();
  canvas.restoreState();
}

void paintInnerShadow(ReferencePicture& picture, const Path& path, const Shadow& shadow) {
  Color opaque = *shadow.color;
  opaque.alpha = 1;
  ReferencePicture layer(40, picture.scale);
  const PaintStyle out{.mode = BlendMode::SourceOut};
  layer.paint(opaque, layer.shadow(filled(path), shadow), out);
  layer.paint(opaque, layer.fill(path), out);
  const Coverage clip = picture.fill(Path::rect(path.bounds()));
  picture.paint(layer, {.alpha = shadow.color->alpha, .clip = &clip});
}

void expectInnerShadow(const Path& path, const Shadow& shadow) {
  expectRight({.draw =
                   [&](RasterCanvas& canvas) {
                     canvas.setFillColor(glass);
                     canvas.fillPath(path, nonZero);
                     drawInnerShadow(canvas, path, shadow);
                   },
               .expect =
                   [&](ReferencePicture& picture) {
                     picture.paint(glass, picture.fill(path));
                     paintInnerShadow(picture, path, shadow);
                   }});
}

}  // namespace

TEST(RasterShadow, LiesBelowAndBesideTheShape) {
  for (const double blur : {0.0, 1.5, 5.0}) {
    const Shadow shadow{{3.3, -2.4}, blur, Color{0.2, 0, 0.3, 0.7}};
    expectRight({.draw =
                     [&](RasterCanvas& canvas) {
                       canvas.setShadow(shadow);
                       canvas.setFillColor(ink);
                       canvas.fillPath(disc, nonZero);
                     },
                 .expect =
                     [&](ReferencePicture& picture) {
                       picture.paint(*shadow.color, picture.shadow(filled(disc), shadow));
                       picture.paint(ink, picture.fill(disc));
                     }});
  }
}

TEST(RasterShadow, ComesFromAShapeOutsideTheClip) {
  const Shadow shadow{{20, 0}, 3, dark};
  const Path left = Path::oval({-18, 8, 16, 20});
  expectRight({.draw =
                   [&](RasterCanvas& canvas) {
                     canvas.clipRect({0, 0, 30.5, 40});
                     canvas.setShadow(shadow);
                     canvas.setFillColor(ink);
                     canvas.fillPath(left, nonZero);
                   },
               .expect =
                   [&](ReferencePicture& picture) {
                     const Coverage clip = picture.fill(Path::rect({0, 0, 30.5, 40}));
                     picture.paint(dark, picture.shadow(filled(left), shadow), {.clip = &clip});
                   }});
}

TEST(RasterShadow, OfATallBarInAClipThatCutsRows) {
  const Shadow shadow{{3, 0}, 3, dark};
  const Path bar = Path::rect({9.5, -30, 12, 100}), clip = Path::rect({4.3, 9.4, 31.2, 17.3});
  expectRight({.draw =
                   [&](RasterCanvas& canvas) {
                     canvas.clipRect(clip.bounds());
                     canvas.setShadow(shadow);
                     canvas.setFillColor(ink);
                     canvas.fillPath(bar, nonZero);
                   },
               .expect =
                   [&](ReferencePicture& picture) {
                     const Coverage covered = picture.fill(clip);
                     picture.paint(dark, picture.shadow(filled(bar), shadow), {.clip = &covered});
                     picture.paint(ink, picture.fill(bar), {.clip = &covered});
                   }});
}

TEST(RasterShadow, IsAsFaintAsItsShape) {
  const Shadow shadow{{2, -3}, 4, Color{0, 0, 0, 0.8}};
  expectRight({.draw =
                   [&](RasterCanvas& canvas) {
                     canvas.setShadow(shadow);
                     canvas.setAlpha(0.5);
                     canvas.setFillColor(glass);
                     canvas.fillPath(disc, nonZero);
                   },
               .expect =
                   [&](ReferencePicture& picture) {
                     picture.paint({0, 0, 0, 0.8 * 0.6}, picture.shadow(filled(disc), shadow), {.alpha = 0.5});
                     picture.paint(glass, picture.fill(disc), {.alpha = 0.5});
                   }});
}

TEST(RasterShadow, DoesNotFollowTheTransform) {
  const Shadow shadow{{4, -3}, 3, dark};
  const CGAffineTransform transform{0, 0.5, -0.5, 0, 30, 5};
  const auto region = [&](const CGAffineTransform& toDevice) {
    return Region::filled(disc, nonZero, transform.then(toDevice));
  };
  expectRight({.draw =
                   [&](RasterCanvas& canvas) {
                     canvas.concat(transform);
                     canvas.setShadow(shadow);
                     canvas.setFillColor(ink);
                     canvas.fillPath(disc, nonZero);
                   },
               .expect =
                   [&](ReferencePicture& picture) {
                     picture.paint(dark, picture.shadow(region, shadow));
                     picture.paint(ink, picture.fill(disc, nonZero, transform));
                   }});
}

TEST(RasterShadow, OfAStroke) {
  const Shadow shadow{{2, -2}, 2, dark};
  const StrokeStyle style{.width = 3, .cap = LineCap::Round};
  Path path;
  path.moveTo({6, 8});
  path.curveTo({33, 30}, {30, 4}, {8, 36});
  const auto region = [&](const CGAffineTransform& toDevice) { return Region::stroked(path, style, toDevice); };
  expectRight({.draw =
                   [&](RasterCanvas& canvas) {
                     canvas.setShadow(shadow);
                     canvas.setStrokeColor(ink);
                     canvas.strokePath(path, style);
                   },
               .expect =
                   [&](ReferencePicture& picture) {
                     picture.paint(dark, picture.shadow(region, shadow));
                     picture.paint(ink, picture.stroke(path, style));
                   }});
}

TEST(RasterShadow, OfAnOverlapIsUniform) {
  const Shadow shadow{{2, -2}, 2, dark};
  Path two = Path::rect({5.3, 6.3, 15, 14});
  two.append(Path::rect({12.2, 13.1, 18, 15}));
  expectRight({.draw =
                   [&](RasterCanvas& canvas) {
                     canvas.setShadow(shadow);
                     canvas.setFillColor(ink);
                     canvas.fillPath(two, nonZero);
                   },
               .expect =
                   [&](ReferencePicture& picture) {
                     picture.paint(dark, picture.shadow(filled(two), shadow));
                     picture.paint(ink, picture.fill(two));
                   }});
}

TEST(RasterShadow, OfALayerFallsFromItsWholePicture) {
  const Shadow shadow{{3, -2}, 4, Color{0, 0, 0, 0.9}};
  const Path left = Path::rect({8, 8, 8, 24}), right = Path::rect({12, 8, 16, 12});
  Path both = left;
  both.append(right);
  expectRight({.draw =
                   [&](RasterCanvas& canvas) {
                     canvas.setShadow(shadow);
                     canvas.setAlpha(0.8);
                     canvas.beginTransparencyLayer();
                     canvas.setFillColor(ink);
                     canvas.fillPath(left, nonZero);
                     canvas.fillPath(right, nonZero);
                     canvas.endTransparencyLayer();
                   },
               .expect =
                   [&](ReferencePicture& picture) {
                     picture.paint(*shadow.color, picture.shadow(filled(both), shadow), {.alpha = 0.8});
                     picture.paint(ink, picture.fill(both), {.alpha = 0.8});
                   }});
}

TEST(RasterShadow, OfALayerMovesByPartsOfAPixelHoweverNarrowItsBlurIs) {
  const Path left = Path::rect({8, 8, 8, 24}), right = Path::rect({16, 8, 8, 24}), both = Path::rect({8, 8, 16, 24});
  for (const double blur : {0.0, 0.1, 0.25, 0.4}) {
    const Shadow shadow{{12.3, -2.7}, blur, dark};
    expectRight({.draw =
                     [&](RasterCanvas& canvas) {
                       canvas.setShadow(shadow);
                       canvas.beginTransparencyLayer();
                       canvas.setFillColor(ink);
                       canvas.fillPath(left, nonZero);
                       canvas.setFillColor(dark);
                       canvas.fillPath(right, nonZero);
                       canvas.endTransparencyLayer();
                     },
                 .expect =
                     [&](ReferencePicture& picture) {
                       picture.paint(dark, picture.shadow(filled(both), shadow));
                       picture.paint(ink, picture.fill(left));
                       picture.paint(dark, picture.fill(right));
                     }});
  }
}

TEST(RasterShadow, OfALayerComesFromOutsideTheClip) {
  const Shadow shadow{{18, 3}, 3, dark};
  const Path left = Path::rect({-14, 8, 12, 18});
  expectRight({.draw =
                   [&](RasterCanvas& canvas) {
                     canvas.setShadow(shadow);
                     canvas.beginTransparencyLayer();
                     canvas.setFillColor(ink);
                     canvas.fillPath(left, nonZero);
                     canvas.endTransparencyLayer();
                   },
               .expect = [&](ReferencePicture& picture) { picture.paint(dark, picture.shadow(filled(left), shadow)); }});
}

TEST(RasterShadow, OfALayerComesFromAsFarAsItsBlurReaches) {
  for (const CGPoint corner : {CGPoint{-50, 0}, {50, 0}, {0, -50}, {0, 50}}) {
    Bitmap bitmap = std::move(*Bitmap::make(40, 40)), expected = std::move(*Bitmap::make(40, 40));
    RasterCanvas canvas(bitmap), other(expected);
    const CGRect upper{corner.x, corner.y + 20, 40, 20}, lower{corner.x, corner.y, 40, 20};
    Path both = Path::rect(upper);
    both.append(Path::rect(lower));
    const Shadow shadow{{0, 0}, 60, dark};
    canvas.setShadow(shadow);
    canvas.beginTransparencyLayer();
    canvas.fillPath(Path::rect(upper), nonZero);
    canvas.setFillColor(ink);
    canvas.fillPath(Path::rect(lower), nonZero);
    canvas.endTransparencyLayer();
    other.setShadow(shadow);
    other.fillPath(both, nonZero);
    EXPECT_GT(expected.pixel(20, 20) >> 24, 10u);
    for (int i = 0; i < 40; ++i) {
      ASSERT_NEAR(int(bitmap.pixel(i, 20) >> 24), int(expected.pixel(i, 20) >> 24), 1) << i;
      ASSERT_NEAR(int(bitmap.pixel(20, i) >> 24), int(expected.pixel(20, i) >> 24), 1) << i;
    }
  }
}

TEST(RasterShadow, OfALayerInALayerComesFromAfar) {
  Bitmap bitmap = std::move(*Bitmap::make(40, 40));
  RasterCanvas canvas(bitmap);
  canvas.setShadow({{2000, 0}, 0, dark});
  canvas.beginTransparencyLayer();
  canvas.setShadow({{40, 0}, 0, dark});
  canvas.beginTransparencyLayer();
  canvas.fillPath(Path::rect({-2050, 10, 20, 10}), nonZero);
  canvas.setFillColor(ink);
  canvas.fillPath(Path::rect({-2050, 20, 20, 10}), nonZero);
  canvas.endTransparencyLayer();
  canvas.endTransparencyLayer();
  for (const int row : {15, 25}) {
    EXPECT_EQ(bitmap.pixel(5, row), 0xff2b2b2b);
    EXPECT_EQ(bitmap.pixel(15, row), 0u);
  }
}

TEST(RasterShadow, OfAGradientFollowsItsAlpha) {
  // One hard stop on a whole pixel at every scale, so that the shadow is that of the opaque half.
  const GradientStop stops[] = {{0.5, ink}, {0.5, {1, 1, 1, 0}}};
  const Shadow shadow{{4, -4}, 3, dark};
  const Path whole = Path::rect({8, 8, 24, 24}), half = Path::rect({8, 8, 12, 24});
  expectRight({.draw =
                   [&](RasterCanvas& canvas) {
                     canvas.setShadow(shadow);
                     canvas.fillGradient(whole, nonZero, {stops, {8, 0}, {32, 0}});
                   },
               .expect =
                   [&](ReferencePicture& picture) {
                     picture.paint(dark, picture.shadow(filled(half), shadow));
                     picture.paint(ink, picture.fill(half));
                   }});
}

TEST(RasterShadow, OfAGradientWithStripesIsThatOfItsStripes) {
  // Narrower than what a wide blur takes its values from.
  std::vector<GradientStop> stops;
  Path bars;
  for (int i = 0; i < 14; ++i) {
    const Color color{0, 0, 0, double(i % 2)};
    stops.push_back({i / 14.0, color});
    stops.push_back({(i + 1) / 14.0, color});
    if (i % 2 == 1) bars.append(Path::rect({i * 3.0 - 60, 0, 3, 40}));
  }
  const Shadow shadow{{60, 0}, 20, dark};
  Bitmap bitmap = std::move(*Bitmap::make(40, 40)), expected = std::move(*Bitmap::make(40, 40));
  RasterCanvas canvas(bitmap), other(expected);
  canvas.setShadow(shadow);
  canvas.fillGradient(Path::rect({-60, 0, 42, 40}), nonZero, {stops, {-60, 0}, {-18, 0}});
  other.setShadow(shadow);
  other.fillPath(bars, nonZero);
  EXPECT_GT(bitmap.pixel(20, 20) >> 24, 100u);
  for (int x = 0; x < 40; ++x) ASSERT_NEAR(int(bitmap.pixel(x, 20) >> 24), int(expected.pixel(x, 20) >> 24), 1) << x;
}

TEST(RasterShadow, TakesTheBlendModeOfItsShape) {
  const Shadow shadow{{4, -3}, 3, Color{0.5, 0.1, 0, 0.8}};
  for (const BlendMode mode : {BlendMode::SourceOut, BlendMode::Xor, BlendMode::DestinationOver, BlendMode::Copy}) {
    SCOPED_TRACE(int(mode));
    expectRight({.draw =
                     [&](RasterCanvas& canvas) {
                       canvas.setFillColor(glass);
                       canvas.fillPath(Path::rect({0, 0, 22, 40}), nonZero);
                       canvas.setBlendMode(mode);
                       canvas.setShadow(shadow);
                       canvas.setFillColor(ink);
                       canvas.fillPath(disc, nonZero);
                     },
                 .expect =
                     [&](ReferencePicture& picture) {
                       picture.paint(glass, picture.fill(Path::rect({0, 0, 22, 40})));
                       picture.paint(*shadow.color, picture.shadow(filled(disc), shadow), {.mode = mode});
                       picture.paint(ink, picture.fill(disc), {.mode = mode});
                     }});
  }
}

TEST(RasterInnerShadow, OfAnArrow) { expectInnerShadow(arrow(), kitShadow); }

TEST(RasterInnerShadow, OfADisc) { expectInnerShadow(disc, kitShadow); }

TEST(RasterInnerShadow, OfARectangleBetweenPixels) { expectInnerShadow(Path::rect({6.3, 5.4, 25.2, 28.9}), kitShadow); }

TEST(RasterInnerShadow, WideAndTranslucent) { expectInnerShadow(disc, {{-2.5, -3.5}, 6, Color{0.4, 0, 0, 0.6}}); }

TEST(RasterInnerShadow, OfATranslucentShapeThatThePictureCutsOff) {
  const Path path = Path::oval({-8, 6, 40, 50});
  const Shadow shadow{{3, -2}, 4, glass};
  const Color fill{glass.red, glass.green, glass.blue, 0.8};
  const Color fallen{glass.red, glass.green, glass.blue, glass.alpha * fill.alpha};
  expectRight({.draw =
                   [&](RasterCanvas& canvas) {
                     canvas.beginTransparencyLayer();
                     canvas.setShadow(shadow);
                     canvas.setBlendMode(BlendMode::SourceOut);
                     canvas.setFillColor(fill);
                     canvas.fillPath(path, nonZero);
                     canvas.endTransparencyLayer();
                   },
               .expect =
                   [&](ReferencePicture& picture) {
                     ReferencePicture layer(40, picture.scale);
                     layer.paint(fallen, layer.shadow(filled(path), shadow), {.mode = BlendMode::SourceOut});
                     layer.paint(fill, layer.fill(path), {.mode = BlendMode::SourceOut});
                     picture.paint(layer, {});
                   }});
}

TEST(RasterInnerShadow, ClippedBetweenPixels) {
  const Path bars = Path::rect({4.2, 2.3, 30, 35}), clip = Path::rect({7.4, 5.3, 20.1, 27.9});
  expectRight({.draw =
                   [&](RasterCanvas& canvas) {
                     canvas.clipRect(clip.bounds());
                     canvas.beginTransparencyLayer();
                     drawInnerShadow(canvas, bars, kitShadow);
                     canvas.endTransparencyLayer();
                   },
               .expect =
                   [&](ReferencePicture& picture) {
                     ReferencePicture layer(40, picture.scale);
                     paintInnerShadow(layer, bars, kitShadow);
                     const Coverage cover = picture.fill(clip);
                     picture.paint(layer, {.clip = &cover});
                   }});
}

TEST(RasterInnerShadow, CastsAShadowWithItsLayer) {
  const Shadow below{{5, -6}, 3, Color{0.1, 0, 0.4, 0.8}};
  const Color fill{0.9, 0.5, 0.1, 1};
  const Path box = Path::rect({8, 12, 20, 16});  // on whole pixels at every scale
  expectRight({.draw =
                   [&](RasterCanvas& canvas) {
                     canvas.setShadow(below);
                     canvas.beginTransparencyLayer();
                     canvas.setShadow({{4, 0}, 0, dark});
                     canvas.setBlendMode(BlendMode::SourceOut);
                     canvas.setFillColor(fill);
                     canvas.fillPath(box, nonZero);
                     canvas.endTransparencyLayer();
                   },
               .expect =
                   [&](ReferencePicture& picture) {
                     const Path left = Path::rect({8, 12, 4, 16});
                     picture.paint(*below.color, picture.shadow(filled(left), below));
                     picture.paint(fill, picture.fill(left));
                   }});
}

TEST(RasterInnerShadow, StaysBelowWhatFollowsInItsLayer) {
  const Shadow shadow{{2, -3}, 3, dark};
  expectRight({.draw =
                   [&](RasterCanvas& canvas) {
                     canvas.beginTransparencyLayer();
                     canvas.saveState();
                     canvas.setShadow(shadow);
                     canvas.setBlendMode(BlendMode::SourceOut);
                     canvas.setFillColor(ink);
                     canvas.fillPath(disc, nonZero);
                     canvas.restoreState();
                     canvas.setFillColor(glass);
                     canvas.fillPath(Path::rect({5, 5, 18.5, 30}), nonZero);
                     canvas.endTransparencyLayer();
                   },
               .expect =
                   [&](ReferencePicture& picture) {
                     ReferencePicture layer(40, picture.scale);
                     layer.paint(dark, layer.shadow(filled(disc), shadow), {.mode = BlendMode::SourceOut});
                     layer.paint(ink, layer.fill(disc), {.mode = BlendMode::SourceOut});
                     layer.paint(glass, layer.fill(Path::rect({5, 5, 18.5, 30})));
                     picture.paint(layer, {});
                   }});
}

TEST(RasterInnerShadow, WithAlphaZeroLeavesTheShapeAsItWas) {
  expectRight({.draw =
                   [](RasterCanvas& canvas) {
                     canvas.setFillColor(glass);
                     canvas.fillPath(disc, nonZero);
                     drawInnerShadow(canvas, disc, {{0, 0}, 0, Color{0, 0, 0, 0}});
                   },
               .expect = [](ReferencePicture& picture) { picture.paint(glass, picture.fill(disc)); }});
}

}  // namespace tessaluna::backend::raster::test
