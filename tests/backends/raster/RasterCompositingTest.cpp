// How colors come together: alpha, gradients, clips, blend modes, layers and shadows.
#include <cmath>

#include <gtest/gtest.h>

#include "tests/backends/raster/ReferencePicture.h"

namespace tessaluna::backend::raster::test {

namespace {

constexpr Color ground{0.9, 0.8, 0.3, 0.7};
constexpr Color ink{0.1, 0.3, 0.8, 1};
constexpr Color glass{0.7, 0.2, 0.4, 0.6};
constexpr FillRule nonZero = FillRule::NonZero;

const Path disc = Path::oval({9.3, 8.2, 23.4, 24.1});
const Path square = Path::rect({4.25, 12.5, 18.1, 21.3});

Path triangle() {
  Path path;
  path.moveTo({5.2, 4.1});
  path.lineTo({36.3, 12.9});
  path.lineTo({14.6, 36.2});
  path.close();
  return path;
}

void fill(RasterCanvas& canvas, const Path& path, const Color& color, FillRule rule = nonZero) {
  canvas.setFillColor(color);
  canvas.fillPath(path, rule);
}

// Every drawing begins on the same translucent background, which covers half of the picture.
const Path halfGround = Path::rect({0, 0, 20, 40});
void begin(RasterCanvas& canvas) { fill(canvas, halfGround, ground); }
void begin(ReferencePicture& picture) { picture.paint(ground, picture.fill(halfGround)); }

constexpr BlendMode allModes[] = {BlendMode::Normal,          BlendMode::Clear,         BlendMode::Copy,
                                  BlendMode::SourceIn,        BlendMode::SourceOut,     BlendMode::SourceAtop,
                                  BlendMode::DestinationOver, BlendMode::DestinationIn, BlendMode::DestinationOut,
                                  BlendMode::DestinationAtop, BlendMode::Xor,           BlendMode::PlusLighter};

Color mixed(const Color& a, const Color& b, double f) {
  return {a.red + (b.red - a.red) * f, a.green + (b.green - a.green) * f, a.blue + (b.blue - a.blue) * f,
          a.alpha + (b.alpha - a.alpha) * f};
}

}  // namespace

TEST(RasterColor, TranslucentOverTranslucent) {
  expectRight({.draw =
                   [](RasterCanvas& canvas) {
                     begin(canvas);
                     fill(canvas, disc, glass);
                   },
               .expect =
                   [](ReferencePicture& picture) {
                     begin(picture);
                     picture.paint(glass, picture.fill(disc));
                   }});
}

TEST(RasterColor, ManyTranslucentLayersStayWithinRounding) {
  for (const Color& color : {Color{1, 1, 1, 0.004}, Color{0.5, 0.5, 0.5, 0.5}, Color{0, 0, 0, 0.1}}) {
    expectRight({.draw =
                     [&](RasterCanvas& canvas) {
                       begin(canvas);
                       fill(canvas, square, color);
                     },
                 .expect =
                     [&](ReferencePicture& picture) {
                       begin(picture);
                       picture.paint(color, picture.fill(square));
                     }});
  }
}

TEST(RasterColor, ClearColorChangesNothing) {
  expectRight({.draw =
                   [](RasterCanvas& canvas) {
                     begin(canvas);
                     fill(canvas, disc, {1, 0, 0, 0});
                     canvas.setStrokeColor({1, 0, 0, 0});
                     canvas.strokePath(disc, {.width = 3});
                   },
               .expect = [](ReferencePicture& picture) { begin(picture); }});
}

TEST(RasterColor, ComponentsBeyondTheirRangeAreClamped) {
  expectRight({.draw =
                   [](RasterCanvas& canvas) {
                     fill(canvas, disc, {2, -1, NAN, 7});
                   },
               .expect =
                   [](ReferencePicture& picture) {
                     picture.paint({1, 0, 0, 1}, picture.fill(disc));
                   }});
}

TEST(RasterAlpha, FadesFillAndStrokeAlike) {
  expectRight({.draw =
                   [](RasterCanvas& canvas) {
                     begin(canvas);
                     canvas.setAlpha(0.4);
                     fill(canvas, disc, glass);
                     canvas.setStrokeColor(ink);
                     canvas.strokePath(square, {.width = 2});
                   },
               .expect =
                   [](ReferencePicture& picture) {
                     begin(picture);
                     picture.paint(glass, picture.fill(disc), {.alpha = 0.4});
                     picture.paint(ink, picture.stroke(square, {.width = 2}), {.alpha = 0.4});
                   }});
}

TEST(RasterGradient, UpwardsWithThreeStops) {
  const Color low{0.333, 0.333, 0.333, 1}, middle{0.4167, 0.4167, 0.4167, 1}, high{0.5, 0.5, 0.5, 1};
  const GradientStop stops[] = {{0, low}, {0.43, middle}, {1, high}};
  expectRight({.draw =
                   [&](RasterCanvas& canvas) {
                     canvas.fillGradient(triangle(), nonZero, {stops, {0, 4.1}, {0, 36.2}, 90});
                   },
               .expect =
                   [&](ReferencePicture& picture) {
                     const auto colorAt = [&](CGPoint p) {
                       const double t = std::clamp((p.y - 4.1) / 32.1, 0.0, 1.0);
                       return t < 0.43 ? mixed(low, middle, t / 0.43) : mixed(middle, high, (t - 0.43) / 0.57);
                     };
                     picture.paint(colorAt, picture.fill(triangle()));
                   }});
}

TEST(RasterGradient, SlantedWithAlphaOverABackground) {
  const GradientStop stops[] = {{0.1, ink}, {0.9, {1, 0.5, 0, 0.2}}};
  expectRight({.draw =
                   [&](RasterCanvas& canvas) {
                     begin(canvas);
                     canvas.setAlpha(0.8);
                     canvas.fillGradient(disc, nonZero, {stops, {10, 10}, {30, 25}});
                   },
               .expect =
                   [&](ReferencePicture& picture) {
                     begin(picture);
                     const auto colorAt = [&](CGPoint p) {
                       const double t = ((p.x - 10) * 20 + (p.y - 10) * 15) / 625;
                       return mixed(ink, stops[1].color, std::clamp((t - 0.1) / 0.8, 0.0, 1.0));
                     };
                     picture.paint(colorAt, picture.fill(disc), {.alpha = 0.8});
                   }});
}

TEST(RasterGradient, TwoStopsAtOnePlaceAreAHardEdge) {
  const GradientStop stops[] = {{0, ink}, {0.5, ink}, {0.5, glass}, {1, glass}};
  expectRight(
      {.draw =
           [&](RasterCanvas& canvas) {
             canvas.fillGradient(Path::rect({4, 4, 32, 32}), nonZero, {stops, {4, 0}, {36, 0}});
           },
       .expect =
           [&](ReferencePicture& picture) {
             picture.paint([](CGPoint p) { return p.x < 20 ? ink : glass; }, picture.fill(Path::rect({4, 4, 32, 32})));
           }});
}

TEST(RasterGradient, AxisWithoutLengthShowsTheLastColor) {
  const GradientStop stops[] = {{0, ink}, {1, glass}};
  expectRight({.draw =
                   [&](RasterCanvas& canvas) {
                     canvas.fillGradient(disc, nonZero, {stops, {20, 20}, {20, 20}});
                   },
               .expect = [](ReferencePicture& picture) { picture.paint(glass, picture.fill(disc)); }});
}

TEST(RasterGradient, OnAnAxisOfAnyLengthIsInTheMiddleOfIt) {
  const GradientStop stops[] = {{0, ink}, {1, glass}};
  for (const double length : {1e15, 1e90, 1e160, 1e300}) {
    expectRight({.draw =
                     [&](RasterCanvas& canvas) {
                       canvas.fillGradient(disc, nonZero, {stops, {-length, 20}, {length, 20}});
                     },
                 .expect = [](ReferencePicture& picture) { picture.paint(mixed(ink, glass, 0.5), picture.fill(disc)); }});
  }
}

TEST(RasterGradient, FollowsTheTransform) {
  const CGAffineTransform transform{0.8, 0.3, -0.5, 0.9, 12, 2};
  const GradientStop stops[] = {{0, ink}, {1, glass}};
  expectRight({.draw =
                   [&](RasterCanvas& canvas) {
                     canvas.concat(transform);
                     canvas.fillGradient(square, nonZero, {stops, {6, 14}, {20, 30}});
                   },
               .expect =
                   [&](ReferencePicture& picture) {
                     const CGAffineTransform back = *transform.inverted();
                     const auto colorAt = [&](CGPoint p) {
                       const CGPoint q = back.apply(p);
                       return mixed(ink, glass, std::clamp(((q.x - 6) * 14 + (q.y - 14) * 16) / 452, 0.0, 1.0));
                     };
                     picture.paint(colorAt, picture.fill(square, nonZero, transform));
                   }});
}

TEST(RasterClip, RectangleOnWholePointsIsSharp) {
  expectRight({.draw =
                   [](RasterCanvas& canvas) {
                     canvas.clipRect({8, 12, 20, 16});
                     fill(canvas, disc, ink);
                   },
               .expect =
                   [](ReferencePicture& picture) {
                     const Coverage clip = picture.fill(Path::rect({8, 12, 20, 16}));
                     picture.paint(ink, picture.fill(disc), {.clip = &clip});
                   }});
}

TEST(RasterClip, RectangleBetweenPixelsCoversItsEdgesPartly) {
  expectRight({.draw =
                   [](RasterCanvas& canvas) {
                     begin(canvas);
                     canvas.clipRect({8.4, 12.3, 19.7, 15.5});
                     fill(canvas, disc, glass);
                   },
               .expect =
                   [](ReferencePicture& picture) {
                     begin(picture);
                     const Coverage clip = picture.fill(Path::rect({8.4, 12.3, 19.7, 15.5}));
                     picture.paint(glass, picture.fill(disc), {.clip = &clip});
                   }});
}

TEST(RasterClip, TwoRectanglesBetweenPixelsLeaveWhatTheyShare) {
  expectRight({.draw =
                   [](RasterCanvas& canvas) {
                     canvas.clipRect({8.4, 12.3, 19.7, 15.5});
                     canvas.clipRect({4.6, 14.7, 19.6, 20.2});
                     fill(canvas, Path::rect({0, 0, 40, 40}), ink);
                   },
               .expect =
                   [](ReferencePicture& picture) {
                     picture.paint(ink, picture.fill(Path::rect({8.4, 14.7, 15.8, 13.1})));
                   }});
}

TEST(RasterClip, RectangleWithinOneColumnCutsItOnce) {
  expectRight({.draw =
                   [](RasterCanvas& canvas) {
                     canvas.clipRect({8.04, 12.3, 0.2, 15.5});
                     fill(canvas, Path::rect({0, 0, 40, 40}), ink);
                   },
               .expect =
                   [](ReferencePicture& picture) {
                     picture.paint(ink, picture.fill(Path::rect({8.04, 12.3, 0.2, 15.5})));
                   }});
}

TEST(RasterClip, TheSameRectangleTwiceIsOne) {
  expectRight({.draw =
                   [](RasterCanvas& canvas) {
                     canvas.clipRect({8.4, 12.3, 19.7, 15.5});
                     canvas.clipRect({8.4, 12.3, 19.7, 15.5});
                     fill(canvas, Path::rect({0, 0, 40, 40}), ink);
                   },
               .expect =
                   [](ReferencePicture& picture) {
                     picture.paint(ink, picture.fill(Path::rect({8.4, 12.3, 19.7, 15.5})));
                   }});
}

TEST(RasterClip, PathsByCoverageOneInAnother) {
  expectRight({.draw =
                   [](RasterCanvas& canvas) {
                     begin(canvas);
                     canvas.clipPath(triangle(), nonZero);
                     canvas.clipPath(disc, nonZero);
                     fill(canvas, Path::rect({0, 0, 40, 40}), ink);
                   },
               .expect =
                   [](ReferencePicture& picture) {
                     begin(picture);
                     const Coverage clip = picture.fill(triangle()).times(picture.fill(disc));
                     picture.paint(ink, picture.everywhere(), {.clip = &clip});
                   }});
}

TEST(RasterClip, EvenOddPathLeavesAHole) {
  Path ring = disc;
  ring.append(Path::oval({14.1, 14.2, 12, 11}));
  expectRight({.draw =
                   [&](RasterCanvas& canvas) {
                     canvas.clipPath(ring, FillRule::EvenOdd);
                     fill(canvas, square, glass);
                   },
               .expect =
                   [&](ReferencePicture& picture) {
                     const Coverage clip = picture.fill(ring, FillRule::EvenOdd);
                     picture.paint(glass, picture.fill(square), {.clip = &clip});
                   }});
}

TEST(RasterClip, RotatedRectangle) {
  const CGAffineTransform turned{0.8, 0.6, -0.6, 0.8, 14, -6};
  expectRight({.draw =
                   [&](RasterCanvas& canvas) {
                     canvas.saveState();
                     canvas.concat(turned);
                     canvas.clipRect({10, 8, 16, 20});
                     canvas.concat(*turned.inverted());
                     fill(canvas, Path::rect({0, 0, 40, 40}), ink);
                     canvas.restoreState();
                   },
               .expect =
                   [&](ReferencePicture& picture) {
                     picture.paint(ink, picture.fill(Path::rect({10, 8, 16, 20}), nonZero, turned));
                   }});
}

TEST(RasterClip, NothingIsPaintedInAnEmptyOne) {
  const auto expectNothing = [](const std::function<void(RasterCanvas&)>& clip) {
    expectRight({.draw =
                     [&](RasterCanvas& canvas) {
                       clip(canvas);
                       fill(canvas, disc, ink);
                       canvas.strokePath(disc, {.width = 4});
                       canvas.beginTransparencyLayer();
                       fill(canvas, disc, ink);
                       canvas.endTransparencyLayer();
                     },
                 .expect = [](ReferencePicture&) {}});
  };
  expectNothing([](RasterCanvas& canvas) { canvas.clipRect({10, 10, 0, 20}); });
  expectNothing([](RasterCanvas& canvas) { canvas.clipPath({}, nonZero); });
  expectNothing([](RasterCanvas& canvas) { canvas.clipRect({-30, 10, 20, 20}); });
  expectNothing([](RasterCanvas& canvas) {
    canvas.clipRect({2, 2, 10, 10});
    canvas.clipRect({12, 12, 10, 10});
  });
}

TEST(RasterState, RestoreBringsEverythingBack) {
  expectRight({.draw =
                   [](RasterCanvas& canvas) {
                     canvas.setFillColor(ink);
                     canvas.setStrokeColor(glass);
                     canvas.saveState();
                     canvas.clipPath(triangle(), nonZero);
                     canvas.concat(CGAffineTransform::scale(0.5, 2));
                     canvas.setFillColor(ground);
                     canvas.setStrokeColor(ground);
                     canvas.setAlpha(0.2);
                     canvas.setBlendMode(BlendMode::Xor);
                     canvas.setShadow({{2, 2}, 4, Color{1, 0, 0, 1}});
                     canvas.restoreState();
                     canvas.restoreState();  // one too many does nothing
                     canvas.fillPath(disc, nonZero);
                     canvas.strokePath(square, {.width = 2});
                   },
               .expect =
                   [](ReferencePicture& picture) {
                     picture.paint(ink, picture.fill(disc));
                     picture.paint(glass, picture.stroke(square, {.width = 2}));
                   }});
}

TEST(RasterState, StartsOpaqueBlackAndUnclipped) {
  expectRight({.draw =
                   [](RasterCanvas& canvas) {
                     canvas.fillPath(disc, nonZero);
                     canvas.strokePath(square, {});
                   },
               .expect =
                   [](ReferencePicture& picture) {
                     picture.paint({0, 0, 0, 1}, picture.fill(disc));
                     picture.paint({0, 0, 0, 1}, picture.stroke(square, {}));
                   }});
}

TEST(RasterBlend, EveryModeOnAHalfCoveredBackground) {
  for (const BlendMode mode : allModes) {
    SCOPED_TRACE(int(mode));
    expectRight({.draw =
                     [&](RasterCanvas& canvas) {
                       begin(canvas);
                       canvas.setBlendMode(mode);
                       fill(canvas, disc, glass);
                     },
                 .expect =
                     [&](ReferencePicture& picture) {
                       begin(picture);
                       picture.paint(glass, picture.fill(disc), {.mode = mode});
                     }});
  }
}

TEST(RasterBlend, EveryModeStaysInsideTheClip) {
  for (const BlendMode mode : allModes) {
    SCOPED_TRACE(int(mode));
    expectRight({.draw =
                     [&](RasterCanvas& canvas) {
                       begin(canvas);
                       canvas.clipPath(triangle(), nonZero);
                       canvas.setBlendMode(mode);
                       fill(canvas, disc, glass);
                     },
                 .expect =
                     [&](ReferencePicture& picture) {
                       begin(picture);
                       const Coverage clip = picture.fill(triangle());
                       picture.paint(glass, picture.fill(disc), {.mode = mode, .clip = &clip});
                     }});
  }
}

TEST(RasterBlend, UnboundedModesWorkOnTheWholeClipWithoutAnyShape) {
  for (const BlendMode mode :
       {BlendMode::SourceIn, BlendMode::SourceOut, BlendMode::DestinationIn, BlendMode::DestinationAtop}) {
    SCOPED_TRACE(int(mode));
    expectRight({.draw =
                     [&](RasterCanvas& canvas) {
                       begin(canvas);
                       canvas.clipRect({8.5, 9, 20, 20});
                       canvas.setBlendMode(mode);
                       fill(canvas, {}, glass);
                     },
                 .expect =
                     [&](ReferencePicture& picture) {
                       begin(picture);
                       const Coverage clip = picture.fill(Path::rect({8.5, 9, 20, 20}));
                       picture.paint(glass, Coverage(picture.side, picture.side), {.mode = mode, .clip = &clip});
                     }});
  }
}

TEST(RasterLayer, IsCompositedAsOnePictureWithItsAlpha) {
  expectRight({.draw =
                   [](RasterCanvas& canvas) {
                     begin(canvas);
                     canvas.setAlpha(0.5);
                     canvas.beginTransparencyLayer();
                     fill(canvas, disc, ink);
                     fill(canvas, square, glass);
                     canvas.endTransparencyLayer();
                   },
               .expect =
                   [](ReferencePicture& picture) {
                     begin(picture);
                     ReferencePicture layer(40, picture.scale);
                     layer.paint(ink, layer.fill(disc));
                     layer.paint(glass, layer.fill(square));
                     picture.paint(layer, {.alpha = 0.5});
                   }});
}

TEST(RasterLayer, OfOneColorAddsEachChannelUpToOne) {
  expectRight({.draw =
                   [](RasterCanvas& canvas) {
                     canvas.beginTransparencyLayer();
                     fill(canvas, disc, glass);
                     canvas.setBlendMode(BlendMode::PlusLighter);
                     fill(canvas, square, glass);
                     canvas.endTransparencyLayer();
                   },
               .expect =
                   [](ReferencePicture& picture) {
                     picture.paint(glass, picture.fill(disc));
                     picture.paint(glass, picture.fill(square), {.mode = BlendMode::PlusLighter});
                   }});
}

TEST(RasterLayer, StartsWithFullAlphaNormalModeAndNoShadow) {
  expectRight({.draw =
                   [](RasterCanvas& canvas) {
                     begin(canvas);
                     canvas.setAlpha(0.3);
                     canvas.setBlendMode(BlendMode::DestinationOver);
                     canvas.beginTransparencyLayer();
                     fill(canvas, disc, ink);
                     fill(canvas, square, glass);
                     canvas.endTransparencyLayer();
                     fill(canvas, triangle(), ink);  // alpha and mode are restored
                   },
               .expect =
                   [](ReferencePicture& picture) {
                     begin(picture);
                     ReferencePicture layer(40, picture.scale);
                     layer.paint(ink, layer.fill(disc));
                     layer.paint(glass, layer.fill(square));
                     picture.paint(layer, {.mode = BlendMode::DestinationOver, .alpha = 0.3});
                     picture.paint(ink, picture.fill(triangle()), {.mode = BlendMode::DestinationOver, .alpha = 0.3});
                   }});
}

TEST(RasterLayer, ClipIsAppliedOnceWhenItEnds) {
  expectRight({.draw =
                   [](RasterCanvas& canvas) {
                     canvas.clipPath(triangle(), nonZero);
                     canvas.beginTransparencyLayer();
                     fill(canvas, Path::rect({0, 0, 40, 40}), ink);
                     fill(canvas, Path::rect({0, 0, 40, 40}), glass);
                     canvas.endTransparencyLayer();
                   },
               .expect =
                   [](ReferencePicture& picture) {
                     ReferencePicture layer(40, picture.scale);
                     layer.paint(ink, layer.everywhere());
                     layer.paint(glass, layer.everywhere());
                     const Coverage clip = picture.fill(triangle());
                     picture.paint(layer, {.clip = &clip});
                   }});
}

TEST(RasterLayer, EachBlendModeBetweenLayers) {
  for (const BlendMode mode : allModes) {
    SCOPED_TRACE(int(mode));
    expectRight({.draw =
                     [&](RasterCanvas& canvas) {
                       begin(canvas);
                       canvas.beginTransparencyLayer();
                       fill(canvas, disc, ink);
                       canvas.setBlendMode(mode);
                       canvas.clipRect({6, 6, 24, 28});
                       canvas.beginTransparencyLayer();
                       fill(canvas, square, glass);
                       canvas.endTransparencyLayer();
                       canvas.endTransparencyLayer();
                     },
                 .expect =
                     [&](ReferencePicture& picture) {
                       begin(picture);
                       ReferencePicture outer(40, picture.scale), inner(40, picture.scale);
                       outer.paint(ink, outer.fill(disc));
                       inner.paint(glass, inner.fill(square));
                       const Coverage clip = picture.fill(Path::rect({6, 6, 24, 28}));
                       outer.paint(inner, {.mode = mode, .clip = &clip});
                       picture.paint(outer);
                     }});
  }
}

TEST(RasterLayer, ManyShapesInAllCorners) {
  const CGPoint corners[] = {{18, 18}, {3, 30}, {33, 4}, {2, 2}, {34, 33}};
  expectRight({.draw =
                   [&](RasterCanvas& canvas) {
                     canvas.setAlpha(0.7);
                     canvas.beginTransparencyLayer();
                     for (const CGPoint& c : corners) fill(canvas, Path::oval({c.x, c.y, 4.5, 3.5}), ink);
                     canvas.endTransparencyLayer();
                   },
               .expect =
                   [&](ReferencePicture& picture) {
                     for (const CGPoint& c : corners) {
                       picture.paint(ink, picture.fill(Path::oval({c.x, c.y, 4.5, 3.5})), {.alpha = 0.7});
                     }
                   }});
}

TEST(RasterLayer, OfOneShapeInManyOthersIsTheShape) {
  expectRight({.draw =
                   [](RasterCanvas& canvas) {
                     begin(canvas);
                     for (int i = 0; i < 40; ++i) canvas.beginTransparencyLayer();
                     fill(canvas, disc, glass);
                     for (int i = 0; i < 40; ++i) canvas.endTransparencyLayer();
                   },
               .expect =
                   [](ReferencePicture& picture) {
                     begin(picture);
                     picture.paint(glass, picture.fill(disc));
                   }});
}

TEST(RasterLayer, OneColorInSeveralStrengthsAndThenAnother) {
  const Color faint{glass.red, glass.green, glass.blue, 0.2};
  for (const BlendMode mode : {BlendMode::Normal, BlendMode::DestinationOut, BlendMode::SourceIn, BlendMode::Xor}) {
    for (const bool hasOther : {false, true}) {
      expectRight({.draw =
                       [&](RasterCanvas& canvas) {
                         begin(canvas);
                         canvas.setAlpha(0.8);
                         canvas.beginTransparencyLayer();
                         fill(canvas, disc, glass);
                         canvas.setBlendMode(mode);
                         fill(canvas, square, faint);
                         canvas.setBlendMode(BlendMode::Normal);
                         if (hasOther) fill(canvas, triangle(), ink);
                         canvas.endTransparencyLayer();
                       },
                   .expect =
                       [&](ReferencePicture& picture) {
                         begin(picture);
                         ReferencePicture layer(40, picture.scale);
                         layer.paint(glass, layer.fill(disc));
                         layer.paint(faint, layer.fill(square), {.mode = mode});
                         if (hasOther) layer.paint(ink, layer.fill(triangle()));
                         picture.paint(layer, {.alpha = 0.8});
                       }});
    }
  }
}

TEST(RasterLayer, EndWithoutBeginDoesNothing) {
  expectRight({.draw =
                   [](RasterCanvas& canvas) {
                     canvas.endTransparencyLayer();
                     canvas.saveState();
                     canvas.clipRect({0, 0, 10, 10});
                     canvas.endTransparencyLayer();
                     canvas.restoreState();
                     fill(canvas, disc, ink);
                   },
               .expect = [](ReferencePicture& picture) { picture.paint(ink, picture.fill(disc)); }});
}

TEST(RasterLayer, ItsEndUndoesSavesLeftOpenAndItsBeginStopsRestores) {
  expectRight({.draw =
                   [](RasterCanvas& canvas) {
                     canvas.saveState();
                     canvas.beginTransparencyLayer();
                     canvas.restoreState();  // would leave the layer, so does nothing
                     canvas.saveState();
                     canvas.clipRect({0, 0, 4, 4});
                     canvas.saveState();
                     canvas.endTransparencyLayer();
                     fill(canvas, disc, ink);
                     canvas.restoreState();
                   },
               .expect = [](ReferencePicture& picture) { picture.paint(ink, picture.fill(disc)); }});
}

}  // namespace tessaluna::backend::raster::test
