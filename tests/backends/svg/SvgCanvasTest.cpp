#include "tessaluna/backends/svg/SvgCanvas.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <limits>
#include <string>
#include <vector>

#include "tessaluna/platform/graphics/NSGraphicsContext.h"
#include "tessaluna/uikit/stylekit/Routines.h"

namespace tessaluna::backend::svg {
namespace {

using testing::HasSubstr;
using testing::Not;

constexpr Color red{1, 0, 0, 1}, paleBlue{0, 0, 1, 0.25};

Path square(double left, double bottom, double side) { return Path::rect({left, bottom, side, side}); }

class Boxes : public Typeface {
 public:
  Path outline(std::uint32_t glyph) const override { return square(0, 0, glyph); }
};

// What stands between the document's first and last line, of a picture of 20 by 10 points.
std::string bodyOf(const std::function<void(Canvas&)>& draw) {
  SvgCanvas canvas({0, 0, 20, 10});
  draw(canvas);
  EXPECT_FALSE(canvas.error()) << *canvas.error();
  const std::string document = canvas.document();
  const std::size_t start = document.find('\n') + 1, end = document.find("</svg>");
  return document.substr(start, end - start);
}

std::string errorOf(const std::function<void(Canvas&)>& draw) {
  SvgCanvas canvas({0, 0, 20, 10});
  draw(canvas);
  return canvas.error().value_or("none");
}

TEST(SvgCanvas, DocumentHasTheAreasPointsAndTheScalesSize) {
  const SvgCanvas canvas({-2, -3, 20, 10}, 1.5);
  EXPECT_EQ(canvas.document(),
            "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"30\" height=\"15\" viewBox=\"0 0 20 10\">\n</svg>\n");
}

TEST(SvgCanvas, FillCountsFromTheUpperLeft) {
  EXPECT_EQ(bodyOf([](Canvas& canvas) {
              canvas.setFillColor(red);
              canvas.fillPath(square(1, 2, 3), FillRule::NonZero);
            }),
            "<path d=\"M1 8L4 8L4 5L1 5Z\" fill=\"#ff0000\"/>\n");
  SvgCanvas shifted({-2, -3, 20, 10});
  shifted.fillPath(square(-2, -3, 1), FillRule::NonZero);
  EXPECT_THAT(shifted.document(), HasSubstr("d=\"M0 10L1 10L1 9L0 9Z\" fill=\"#000000\""));
}

TEST(SvgCanvas, CoordinatesHaveFiveDecimals) {
  EXPECT_THAT(bodyOf([](Canvas& canvas) { canvas.fillPath(square(0.123454, 0, 1.0 / 3), FillRule::NonZero); }),
              HasSubstr("d=\"M0.12345 10L0.45679 10L0.45679 9.66667L0.12345 9.66667Z\""));
}

TEST(SvgCanvas, FillSaysItsRuleAndOpacity) {
  const std::string body = bodyOf([](Canvas& canvas) {
    canvas.setFillColor(paleBlue);
    Path curve;
    curve.moveTo({0, 0});
    curve.curveTo({6, 8}, {0, 4}, {4, 6});
    canvas.fillPath(curve, FillRule::EvenOdd);
  });
  EXPECT_EQ(body, "<path d=\"M0 10C0 6 4 4 6 2\" fill=\"#0000ff\" fill-opacity=\"0.25\" fill-rule=\"evenodd\"/>\n");
}

TEST(SvgCanvas, StrokeSaysWidthCapsJoinsAndDashes) {
  const double dash[] = {3, 1.5};
  const std::string body = bodyOf([&](Canvas& canvas) {
    canvas.setStrokeColor(red);
    canvas.concat(CGAffineTransform::scale(2, 2));
    canvas.strokePath(square(1, 1, 2),
                      {.width = 0.5, .cap = LineCap::Round, .join = LineJoin::Bevel, .dash = dash, .dashPhase = 1});
  });
  EXPECT_EQ(body,
            "<path d=\"M2 8L6 8L6 4L2 4Z\" fill=\"none\" stroke=\"#ff0000\" stroke-width=\"1\" stroke-linecap=\"round\""
            " stroke-linejoin=\"bevel\" stroke-dasharray=\"6 3\" stroke-dashoffset=\"2\"/>\n");
  EXPECT_THAT(bodyOf([](Canvas& canvas) { canvas.strokePath(square(1, 1, 2), {.miterLimit = 3}); }),
              HasSubstr("stroke-width=\"1\" stroke-miterlimit=\"3\""));
}

TEST(SvgCanvas, StrokeInAStretchedSpaceIsStretched) {
  const std::string body = bodyOf([](Canvas& canvas) {
    canvas.concat(CGAffineTransform::scale(2, 1));
    canvas.strokePath(square(1, 2, 3), {});
  });
  EXPECT_THAT(body, HasSubstr("d=\"M1 2L4 2L4 5L1 5Z\""));
  EXPECT_THAT(body, HasSubstr("transform=\"matrix(2 0 0 -1 0 10)\" stroke-width=\"1\""));
}

TEST(SvgCanvas, StrokeWithoutWidthIsTheThinnestLine) {
  EXPECT_THAT(bodyOf([](Canvas& canvas) { canvas.strokePath(square(1, 2, 3), {.width = 0}); }),
              HasSubstr("d=\"M1 8L4 8L4 5L1 5Z\" fill=\"none\" stroke=\"#000000\" stroke-width=\"1\""));
  SvgCanvas enlarged({0, 0, 20, 10}, 4);
  enlarged.concat(CGAffineTransform::scale(2, 1));
  enlarged.strokePath(square(1, 2, 3), {.width = 0});
  EXPECT_THAT(enlarged.document(),
              HasSubstr("d=\"M2 8L8 8L8 5L2 5Z\" fill=\"none\" stroke=\"#000000\" stroke-width=\"0.25\""));
}

TEST(SvgCanvas, StrokesThatMakeNoSense) {
  const auto strokeOf = [](const StrokeStyle& style) {
    return bodyOf([&](Canvas& canvas) { canvas.strokePath(square(1, 2, 3), style); });
  };
  const double nan = std::nan(""), infinity = std::numeric_limits<double>::infinity();
  EXPECT_EQ(strokeOf({.width = -3}), "");
  EXPECT_EQ(strokeOf({.width = nan}), "");
  EXPECT_EQ(errorOf([&](Canvas& canvas) { canvas.strokePath(square(1, 2, 3), {.width = infinity}); }),
            "SVG cannot say a line of infinite width");
  for (const double limit : {0.5, -1.0, nan}) {
    EXPECT_THAT(strokeOf({.miterLimit = limit}), HasSubstr("stroke-linejoin=\"bevel\""));
    EXPECT_THAT(strokeOf({.miterLimit = limit}), Not(HasSubstr("miterlimit")));
  }
  EXPECT_THAT(strokeOf({.miterLimit = infinity}), HasSubstr("stroke-miterlimit=\"1000\""));
  const double negative[] = {-4, 2}, zeros[] = {0, 0}, endless[] = {infinity, 1}, unknown[] = {nan}, dots[] = {0, 2};
  for (const std::span<const double> dash : {std::span<const double>(negative), std::span<const double>(zeros),
                                             std::span<const double>(endless), std::span<const double>(unknown)})
    EXPECT_THAT(strokeOf({.dash = dash}), Not(HasSubstr("stroke-dash")));
  EXPECT_THAT(strokeOf({.dash = dots, .dashPhase = nan}), HasSubstr("stroke-dasharray=\"0 2\"/>"));
}

TEST(SvgCanvas, ColorsAndAlphasAreCutToTheirRange) {
  const double nan = std::nan("");
  const auto fillOf = [](const Color& color, double alpha) {
    return bodyOf([&](Canvas& canvas) {
      canvas.setFillColor(color);
      canvas.setAlpha(alpha);
      canvas.fillPath(square(1, 2, 3), FillRule::NonZero);
    });
  };
  EXPECT_THAT(fillOf({-1, 2, nan, 1}, 1), HasSubstr("fill=\"#00ff00\"/>"));
  EXPECT_THAT(fillOf({0, 0, 0, nan}, 1), HasSubstr("fill-opacity=\"0\""));
  EXPECT_THAT(fillOf({0, 0, 0, 7}, 1), HasSubstr("fill-opacity=\"1\""));
  EXPECT_THAT(fillOf({0, 0, 0, 1}, nan), HasSubstr("<g opacity=\"0\">"));
  const GradientStop stops[] = {{0, {0, 0, 0, 7}}, {nan, red}, {1, {0, 0, 0, nan}}};
  SvgCanvas canvas({0, 0, 20, 10});
  canvas.setShadow({.offset = {1, 1}, .blur = 2, .color = Color{0, 0, 0, 7}});
  canvas.fillGradient(square(1, 2, 3), FillRule::NonZero, {.stops = stops, .start = {0, 0}, .end = {0, 9}});
  EXPECT_THAT(canvas.document(), HasSubstr("flood-opacity=\"1\""));
  EXPECT_THAT(canvas.document(), HasSubstr("offset=\"0\" stop-color=\"#000000\" stop-opacity=\"1\"/><stop "
                                           "offset=\"1\" stop-color=\"#000000\" stop-opacity=\"0\""));
}

TEST(SvgCanvas, GradientStopsThatAreNotFiniteAreLeftOut) {
  const double nan = std::nan(""), infinity = std::numeric_limits<double>::infinity();
  const Color green{0, 1, 0, 1};
  const GradientStop stops[] = {{-infinity, red}, {nan, red}, {0.5, green}, {infinity, red}};
  const auto gradientOf = [](std::span<const GradientStop> used, CGPoint end) {
    SvgCanvas canvas({0, 0, 20, 10});
    canvas.fillGradient(square(1, 2, 3), FillRule::NonZero, {.stops = used, .start = {0, 0}, .end = end});
    return canvas.document();
  };
  EXPECT_THAT(gradientOf(stops, {0, 9}), HasSubstr("><stop offset=\"0.5\" stop-color=\"#00ff00\"/></linearGradient>"));
  EXPECT_THAT(gradientOf(stops, {0, 0}), HasSubstr(" fill=\"#00ff00\"/>")) << "an axis without length";
  const std::span<const GradientStop> unusable = std::span<const GradientStop>(stops).first(2);
  EXPECT_THAT(gradientOf(unusable, {0, 9}), Not(HasSubstr("<path")));
  EXPECT_THAT(gradientOf(unusable, {0, 0}), Not(HasSubstr("<path")));
}

TEST(SvgCanvas, DashesOfALineWithoutWidthFollowTheXAxisOfAStretchedSpace) {
  const double dash[] = {2, 2};
  EXPECT_THAT(bodyOf([&](Canvas& canvas) {
                canvas.concat(CGAffineTransform::scale(4, 1));
                canvas.strokePath(square(1, 2, 3), {.width = 0, .dash = dash});
              }),
              HasSubstr("stroke-dasharray=\"8 8\""));
}

TEST(SvgCanvas, ShadowThatIsNotFiniteIsNotDrawn) {
  const double nan = std::nan("");
  for (const Shadow& shadow : {Shadow{{nan, 1}, 2, red}, Shadow{{1, -HUGE_VAL}, 2, red}, Shadow{{1, 1}, HUGE_VAL, red}})
    EXPECT_THAT(bodyOf([&](Canvas& canvas) {
                  canvas.setShadow(shadow);
                  canvas.fillPath(square(1, 2, 3), FillRule::NonZero);
                }),
                Not(HasSubstr("filter")));
}

TEST(SvgCanvas, DocumentClosesWhatIsOpenAndDrawingCanContinue) {
  const auto layers = [](SvgCanvas& canvas) {
    canvas.setAlpha(0.5);
    canvas.beginTransparencyLayer();
    canvas.fillPath(square(1, 2, 3), FillRule::NonZero);
    canvas.beginTransparencyLayer();
    canvas.fillPath(square(4, 2, 3), FillRule::NonZero);
  };
  SvgCanvas open({0, 0, 20, 10}), closed({0, 0, 20, 10});
  layers(open);
  layers(closed);
  closed.endTransparencyLayer();
  closed.endTransparencyLayer();
  EXPECT_EQ(open.document(), closed.document());
  open.endTransparencyLayer();
  open.endTransparencyLayer();
  EXPECT_EQ(open.document(), closed.document());
  EXPECT_THAT(closed.document(), HasSubstr("opacity=\"0.5\""));
}

TEST(SvgCanvas, ClipsShrinkEachOtherAndEndWithTheState) {
  const std::string body = bodyOf([](Canvas& canvas) {
    canvas.saveState();
    canvas.clipRect({0, 0, 5, 5});
    canvas.clipPath(square(1, 1, 2), FillRule::EvenOdd);
    canvas.fillPath(square(0, 0, 9), FillRule::NonZero);
    canvas.restoreState();
    canvas.restoreState();  // one too many does nothing
    canvas.fillPath(square(0, 0, 1), FillRule::NonZero);
  });
  EXPECT_THAT(body, HasSubstr("<clipPath id=\"c1\"><path d=\"M0 10L5 10L5 5L0 5Z\"/></clipPath>"));
  EXPECT_THAT(body, HasSubstr("<clipPath id=\"c2\"><path d=\"M1 9L3 9L3 7L1 7Z\" clip-rule=\"evenodd\"/>"));
  EXPECT_THAT(body, HasSubstr("<g clip-path=\"url(#c1)\"><g clip-path=\"url(#c2)\"><path d=\"M0 10L9"));
  EXPECT_THAT(body, HasSubstr("\n<path d=\"M0 10L1 10L1 9L0 9Z\" fill=\"#000000\"/>\n"));
}

TEST(SvgCanvas, LayerIsOneGroupUnderItsAlpha) {
  const std::string body = bodyOf([](Canvas& canvas) {
    canvas.setAlpha(0.5);
    canvas.beginTransparencyLayer();
    canvas.fillPath(square(0, 0, 4), FillRule::NonZero);
    canvas.fillPath(square(2, 2, 4), FillRule::NonZero);
    canvas.endTransparencyLayer();
    canvas.endTransparencyLayer();  // one too many does nothing
  });
  EXPECT_EQ(body,
            "<g opacity=\"0.5\"><g>\n<path d=\"M0 10L4 10L4 6L0 6Z\" fill=\"#000000\"/>\n"
            "<path d=\"M2 8L6 8L6 4L2 4Z\" fill=\"#000000\"/>\n</g></g>\n");
}

TEST(SvgCanvas, ClipAroundALayerCutsItAsAWhole) {
  const std::string body = bodyOf([](Canvas& canvas) {
    canvas.clipRect({0, 0, 5, 5});
    canvas.beginTransparencyLayer();
    canvas.fillPath(square(1, 1, 2), FillRule::NonZero);
    canvas.endTransparencyLayer();
    canvas.fillPath(square(0, 0, 1), FillRule::NonZero);
  });
  EXPECT_THAT(body,
              HasSubstr("<g clip-path=\"url(#c1)\"><g>\n<path d=\"M1 9L3 9L3 7L1 7Z\" fill=\"#000000\"/>\n</g></g>\n"));
  EXPECT_THAT(body, HasSubstr("<g clip-path=\"url(#c1)\"><path d=\"M0 10L1 10L1 9L0 9Z\""))
      << "the clip lasts after the layer";
}

TEST(SvgCanvas, StatesSavedInALayerEndWithItAndThoseAroundItStay) {
  const std::string body = bodyOf([](Canvas& canvas) {
    canvas.setFillColor(red);
    canvas.saveState();
    canvas.setFillColor({0, 1, 0, 1});
    canvas.beginTransparencyLayer();
    canvas.restoreState();  // belongs to what is around the layer: nothing
    canvas.fillPath(square(0, 0, 1), FillRule::NonZero);
    canvas.setFillColor({0, 0, 1, 1});
    canvas.saveState();
    canvas.endTransparencyLayer();
    canvas.fillPath(square(0, 0, 2), FillRule::NonZero);
    canvas.restoreState();
    canvas.fillPath(square(0, 0, 3), FillRule::NonZero);
  });
  EXPECT_THAT(body, HasSubstr("<path d=\"M0 10L1 10L1 9L0 9Z\" fill=\"#00ff00\"/>"));
  EXPECT_THAT(body, HasSubstr("<path d=\"M0 10L2 10L2 8L0 8Z\" fill=\"#00ff00\"/>"));
  EXPECT_THAT(body, HasSubstr("<path d=\"M0 10L3 10L3 7L0 7Z\" fill=\"#ff0000\"/>"));
}

TEST(SvgCanvas, ALayerStartsWithAPlainState) {
  const auto layerUnder = [](BlendMode mode) {
    return bodyOf([mode](Canvas& canvas) {
      canvas.setBlendMode(mode);
      canvas.beginTransparencyLayer();
      canvas.setFillColor(paleBlue);
      canvas.fillPath(square(1, 2, 3), FillRule::NonZero);
      canvas.fillPath(square(2, 2, 3), FillRule::NonZero);  // over the first, which the mode would not allow
      canvas.endTransparencyLayer();
    });
  };
  for (const BlendMode mode : {BlendMode::SourceOut, BlendMode::Copy})
    EXPECT_EQ(layerUnder(mode), layerUnder(BlendMode::Normal));
}

TEST(SvgCanvas, EmptyLayerIsNothing) {
  EXPECT_EQ(bodyOf([](Canvas& canvas) {
              canvas.beginTransparencyLayer();
              canvas.saveState();  // what is left open ends with the layer
              canvas.setFillColor(red);
              canvas.endTransparencyLayer();
            }),
            "");
}

TEST(SvgCanvas, ShadowIsAFilterWhoseOffsetCountsDownward) {
  const std::string body = bodyOf([](Canvas& canvas) {
    canvas.setShadow({.offset = {1, -2}, .blur = 3, .color = Color{0, 0, 0, 0.5}});
    canvas.fillPath(square(1, 2, 3), FillRule::NonZero);
    canvas.setShadow({.offset = {1, -2}, .blur = 3, .color = {}});
    canvas.fillPath(square(1, 2, 3), FillRule::NonZero);
  });
  EXPECT_THAT(body, HasSubstr("<feOffset in=\"SourceAlpha\" dx=\"1\" dy=\"2\"/>"));
  EXPECT_THAT(body, HasSubstr("<feGaussianBlur stdDeviation=\"1.5\" result=\"shape\"/>"));
  EXPECT_THAT(body, HasSubstr("flood-color=\"#000000\" flood-opacity=\"0.5\""));
  EXPECT_THAT(body, HasSubstr("<g filter=\"url(#f1)\"><path"));
  EXPECT_THAT(body, HasSubstr("\n<path d=\"M1 8")) << "without a color there is no shadow";
  EXPECT_THAT(body, Not(HasSubstr("f2")));
}

TEST(SvgCanvas, GradientRunsAlongItsAxis) {
  const GradientStop stops[] = {{0, red}, {1, paleBlue}};
  const LinearGradient gradient{.stops = stops, .start = {0, 0}, .end = {0, 4}};
  const std::string body =
      bodyOf([&](Canvas& canvas) { canvas.fillGradient(square(0, 0, 4), FillRule::NonZero, gradient); });
  EXPECT_THAT(body, HasSubstr("gradientUnits=\"userSpaceOnUse\" x1=\"0\" y1=\"10\" x2=\"0\" y2=\"6\">"));
  EXPECT_THAT(body, HasSubstr("<stop offset=\"0\" stop-color=\"#ff0000\"/><stop offset=\"1\" stop-color=\"#0000ff\""
                              " stop-opacity=\"0.25\"/>"));
  EXPECT_THAT(body, HasSubstr("fill=\"url(#g1)\""));
  EXPECT_THAT(bodyOf([&](Canvas& canvas) {
                canvas.concat({1, 0, 1, 1, 0, 0});
                canvas.fillGradient(square(0, 0, 4), FillRule::NonZero, gradient);
              }),
              HasSubstr("gradientTransform=\"matrix(1 0 1 -1 0 10)\" x1=\"0\" y1=\"0\" x2=\"0\" y2=\"4\">"));
}

TEST(SvgCanvas, GradientOnAnAxisWithoutLengthIsItsLastColor) {
  const GradientStop stops[] = {{0, {0, 0, 0, 1}}, {0.5, red}};
  EXPECT_EQ(bodyOf([&](Canvas& canvas) {
              canvas.fillGradient(square(1, 2, 3), FillRule::EvenOdd, {.stops = stops, .start = {4, 4}, .end = {4, 4}});
            }),
            "<path d=\"M1 8L4 8L4 5L1 5Z\" fill=\"#ff0000\" fill-rule=\"evenodd\"/>\n");
}

TEST(SvgCanvas, GlyphsAreOutlines) {
  EXPECT_EQ(bodyOf([](Canvas& canvas) {
              const GlyphRun run{.typeface = std::make_shared<Boxes>(), .glyphs = {1, 2}, .positions = {{0, 0}, {3, 0}}};
              canvas.setFillColor(red);
              canvas.drawGlyphs(run, {1, 1});
              canvas.drawGlyphs({}, {1, 1});
            }),
            "<path d=\"M1 9L2 9L2 8L1 8ZM4 9L6 9L6 7L4 7Z\" fill=\"#ff0000\"/>\n");
}

TEST(SvgCanvas, ImageOfPixelsIsAnError) {
  EXPECT_EQ(errorOf([](Canvas& canvas) {
              canvas.drawImage({}, {0, 0, 1, 1}, {0, 0, 1, 1});
            }),
            "SVG cannot say an image of pixels");
}

TEST(SvgCanvas, SourceOutIsAnErrorBehindSomethingElse) {
  const auto draw = [](Canvas& canvas) {
    canvas.setShadow({.offset = {0, -1}, .blur = 2, .color = red});
    canvas.setBlendMode(BlendMode::SourceOut);
    canvas.fillPath(square(1, 1, 4), FillRule::NonZero);
  };
  EXPECT_THAT(bodyOf(draw), HasSubstr("operator=\"out\""));
  EXPECT_THAT(bodyOf([&](Canvas& canvas) {
                canvas.fillPath(square(0, 0, 9), FillRule::NonZero);
                canvas.beginTransparencyLayer();  // in which it is the first thing
                draw(canvas);
                canvas.endTransparencyLayer();
              }),
              HasSubstr("operator=\"out\""));
  EXPECT_EQ(errorOf([&](Canvas& canvas) {
              canvas.fillPath(square(0, 0, 1), FillRule::NonZero);
              draw(canvas);
            }),
            "SVG cannot say \"source out\" over something that is already in its layer");
  EXPECT_NE(errorOf([&](Canvas& canvas) {
              canvas.fillPath(square(0, 0, 1), FillRule::NonZero);
              canvas.setBlendMode(BlendMode::SourceOut);
              canvas.beginTransparencyLayer();
              canvas.fillPath(square(0, 0, 1), FillRule::NonZero);
              canvas.endTransparencyLayer();
            }),
            "none");
}

TEST(SvgCanvas, ALayerIsSomethingThatIsAlreadyThere) {
  for (const auto& [mode, name] : {std::pair{BlendMode::SourceOut, "\"source out\""}, {BlendMode::Copy, "\"copy\""}})
    EXPECT_THAT(errorOf([mode = mode](Canvas& canvas) {
                  canvas.beginTransparencyLayer();
                  canvas.fillPath(square(1, 1, 4), FillRule::NonZero);
                  canvas.endTransparencyLayer();
                  canvas.setBlendMode(mode);
                  canvas.strokePath(square(1, 1, 4), {});
                }),
                HasSubstr(name));
}

TEST(SvgCanvas, FilterOfAShadowReachesAsFarAsTheShadow) {
  SvgCanvas canvas({0, 0, 20, 10});
  canvas.setShadow({.offset = {3, -4}, .blur = 5, .color = red});
  canvas.fillPath(square(1, 1, 4), FillRule::NonZero);
  // Three times the blur, the offset and a point for the edge, on every side.
  EXPECT_THAT(canvas.document(), HasSubstr("x=\"-23\" y=\"-23\" width=\"66\" height=\"56\""));
}

TEST(SvgCanvas, CopyIsAnErrorWhereWhatIsBehindWouldShow) {
  const auto copyOver = [](const Color& color, double alpha) {
    return [=](Canvas& canvas) {
      canvas.fillPath(square(0, 0, 9), FillRule::NonZero);
      canvas.setFillColor(color);
      canvas.setAlpha(alpha);
      canvas.setBlendMode(BlendMode::Copy);
      canvas.fillPath(square(1, 1, 4), FillRule::NonZero);
    };
  };
  EXPECT_EQ(errorOf(copyOver(red, 1)), "none");
  EXPECT_THAT(errorOf(copyOver(paleBlue, 1)), HasSubstr("\"copy\" of something translucent"));
  EXPECT_THAT(errorOf(copyOver(red, 0.5)), HasSubstr("\"copy\" of something translucent"));
  EXPECT_EQ(errorOf([](Canvas& canvas) {
              canvas.setBlendMode(BlendMode::Copy);
              canvas.setFillColor(paleBlue);
              canvas.fillPath(square(1, 1, 4), FillRule::NonZero);
            }),
            "none");
}

TEST(SvgCanvas, OtherModesAreErrorsByName) {
  const std::pair<BlendMode, std::string> modes[] = {
      {BlendMode::Clear, "clear"},
      {BlendMode::SourceIn, "source in"},
      {BlendMode::SourceAtop, "source atop"},
      {BlendMode::DestinationOver, "destination over"},
      {BlendMode::DestinationIn, "destination in"},
      {BlendMode::DestinationOut, "destination out"},
      {BlendMode::DestinationAtop, "destination atop"},
      {BlendMode::Xor, "xor"},
      {BlendMode::PlusLighter, "plus lighter"},
  };
  for (const auto& [mode, name] : modes)
    EXPECT_EQ(errorOf([mode = mode](Canvas& canvas) {
                canvas.setBlendMode(mode);
                canvas.strokePath(square(1, 1, 4), {});
              }),
              "SVG cannot say the blend mode \"" + name + "\"");
}

TEST(SvgCanvas, PointsThatAreNotFiniteAreAnError) {
  const double infinity = std::numeric_limits<double>::infinity();
  LinearGradient gradient, beginsNowhere, endsNowhere;
  beginsNowhere.start = {infinity, 0};
  endsNowhere.end = {0, std::nan("")};
  for (const std::function<void(Canvas&)>& draw : std::vector<std::function<void(Canvas&)>>{
           [&](Canvas& canvas) { canvas.fillPath(square(infinity, 0, 1), FillRule::NonZero); },
           [&](Canvas& canvas) { canvas.strokePath(square(0, std::nan(""), 1), {}); },
           [&](Canvas& canvas) { canvas.fillGradient(square(0, -infinity, 1), FillRule::NonZero, gradient); },
           [&](Canvas& canvas) { canvas.fillGradient(square(0, 0, 1), FillRule::NonZero, beginsNowhere); },
           [&](Canvas& canvas) { canvas.fillGradient(square(0, 0, 1), FillRule::NonZero, endsNowhere); },
           [&](Canvas& canvas) {
             canvas.drawGlyphs({.typeface = std::make_shared<Boxes>(), .glyphs = {1}, .positions = {{0, 0}}}, {infinity, 0});
           },
           [&](Canvas& canvas) {
             canvas.clipRect({0, 0, infinity, 1});
           }})
    EXPECT_EQ(errorOf(draw), "SVG cannot say a point that is not finite");
}

TEST(SvgCanvas, TheFirstErrorIsReportedAndNothingIsDrawnInItsPlace) {
  SvgCanvas canvas({0, 0, 20, 10});
  canvas.setBlendMode(BlendMode::Xor);
  canvas.fillPath(square(1, 1, 4), FillRule::NonZero);
  canvas.drawImage({}, {}, {});
  EXPECT_EQ(canvas.error(), "SVG cannot say the blend mode \"xor\"");
  EXPECT_THAT(canvas.document(), Not(HasSubstr("<path")));
}

TEST(SvgCanvas, SaysEveryRoutineWithAllItsFlags) {
  for (const TessalunaUIKit::Routine& routine : TessalunaUIKit::routines()) {
    const std::size_t count = routine.flags.size();
    for (unsigned combination = 0; combination < 1u << count; ++combination) {
      bool flags[8] = {};
      ASSERT_LE(count, std::size(flags));
      for (std::size_t i = 0; i < count; ++i) flags[i] = combination >> i & 1;
      SvgCanvas canvas(routine.defaultFrame);
      {
        const tessaluna::platform::CanvasScope scope(canvas);
        routine.draw(routine.defaultFrame, std::span<const bool>(flags, count));
      }
      EXPECT_FALSE(canvas.error()) << routine.name << " " << combination << ": " << *canvas.error();
      const bool isEmpty = routine.name == "Repeat";
      EXPECT_EQ(canvas.document().find("<path") == std::string::npos, isEmpty) << routine.name;
    }
  }
}

}  // namespace
}  // namespace tessaluna::backend::svg
