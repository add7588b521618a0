#include "tessaluna/platform/graphics/PaletteCanvas.h"

#include <gmock/gmock.h>

#include "tessaluna/platform/graphics/CGContext.h"
#include "tessaluna/platform/graphics/NSBezierPath.h"
#include "tessaluna/platform/graphics/NSColor.h"
#include "tessaluna/platform/graphics/NSGradient.h"
#include "tessaluna/platform/graphics/NSImage.h"
#include "tests/harness/pixelsOf.h"
#include "tests/harness/recordingOf.h"

using namespace tessaluna::platform;
using tessaluna::backend::Color;
using testing::ElementsAreArray;

namespace {

const NeutralAxis whiteOnBlack({1, 1, 1, 1}, {0, 0, 0, 1});

template <class Draw>
harness::Lines mappedRecordingOf(Draw draw) {
  tessaluna::backend::recording::RecordingCanvas recording;
  {
    PaletteCanvas canvas(recording, whiteOnBlack);
    const CanvasScope scope(canvas);
    draw();
  }
  // Those of the colors at the start.
  return {recording.lines().begin() + 2, recording.lines().end()};
}

void fill(const Ref<NSColor>& color) {
  color->setFill();
  NSBezierPath::bezierPathWithRect({0, 0, 4, 4})->fill();
}

}  // namespace

TEST(PaletteCanvasTest, EveryOperationReachesTheCanvasBelow) {
  const auto draw = [] {
    CGContext& context = NSGraphicsContext::currentCgContext();
    const GraphicsStateScope state(context);
    context.concat(CGAffineTransform::translation(1, 2));
    context.clipRect({0, 0, 9, 9});
    context.clipPath(NSBezierPath::bezierPathWithRect({0, 0, 8, 8})->path(), tessaluna::backend::FillRule::EvenOdd);
    context.setAlpha(0.5);
    context.setBlendMode(kCGBlendModeCopy);
    context.beginTransparencyLayer();
    NSColor::redColor()->set();
    NSBezierPath::bezierPathWithRect({0, 0, 4, 4})->stroke();
    NSBezierPath::bezierPathWithRect({0, 0, 4, 4})->fill();
    context.endTransparencyLayer();
  };
  EXPECT_THAT(mappedRecordingOf(draw), ElementsAreArray(harness::recordingOf(draw)));
}

TEST(PaletteCanvasTest, FillsStrokesGradientsAreMapped) {
  const auto draw = [](double black, double white) {
    const auto from = NSColor::colorWithCalibratedWhite(black, 1), to = NSColor::colorWithCalibratedWhite(white, 1);
    fill(from);
    to->setStroke();
    NSBezierPath::bezierPathWithRect({0, 0, 4, 4})->stroke();
    NSGradient::initWithColorsAndLocations(std::vector<NSGradient::Stop>{{from, 0}, {to, 1}})
        ->drawInBezierPath(*NSBezierPath::bezierPathWithRect({0, 0, 4, 4}), 90);
  };
  EXPECT_THAT(mappedRecordingOf([&] { draw(0, 1); }), ElementsAreArray(harness::recordingOf([&] { draw(1, 0); })));
}

TEST(PaletteCanvasTest, LettersOfADarkBlueAreLighterThanShapesAlsoAfterALayer) {
  const Color blue{0.1, 0.1, 0.8};
  tessaluna::backend::recording::RecordingCanvas recording;
  PaletteCanvas canvas(recording, whiteOnBlack);
  canvas.setFillColor(blue);
  canvas.beginTransparencyLayer();
  canvas.saveState();
  canvas.setFillColor({0, 0, 0});
  canvas.endTransparencyLayer();
  const std::size_t before = recording.lines().size();
  canvas.drawGlyphs({}, {0, 0});
  const harness::Lines lines(recording.lines().begin() + static_cast<std::ptrdiff_t>(before), recording.lines().end());
  const auto fillOf = [](const Color& color) {
    tessaluna::backend::recording::RecordingCanvas one;
    one.setFillColor(color);
    return one.lines().front();
  };
  ASSERT_EQ(lines.size(), 3u);
  EXPECT_EQ(lines[0], fillOf(whiteOnBlack.mappedText(blue)));
  EXPECT_EQ(lines[2], fillOf(whiteOnBlack.mapped(blue)));
}

TEST(PaletteCanvasTest, LettersHaveTheColorThatARestoreBroughtBack) {
  const Color blue{0.1, 0.1, 0.8};
  tessaluna::backend::recording::RecordingCanvas recording;
  PaletteCanvas canvas(recording, whiteOnBlack);
  const auto letters = [&] {
    const std::size_t before = recording.lines().size();
    canvas.drawGlyphs({}, {0, 0});
    return harness::Lines(recording.lines().begin() + static_cast<std::ptrdiff_t>(before), recording.lines().end());
  };
  canvas.setFillColor(blue);
  const harness::Lines ofBlue = letters();
  canvas.restoreState();  // without a save
  EXPECT_EQ(letters(), ofBlue);
  canvas.saveState();
  canvas.setFillColor({0, 0, 0});
  EXPECT_EQ(letters().size(), 1u) << "black is the same for shapes";
  canvas.restoreState();
  EXPECT_EQ(letters(), ofBlue);
  canvas.beginTransparencyLayer();
  canvas.setFillColor({0, 0, 0});
  canvas.restoreState();  // of no save within the layer
  EXPECT_EQ(letters().size(), 1u);
  canvas.endTransparencyLayer();
  EXPECT_EQ(letters(), ofBlue);
}

TEST(PaletteCanvasTest, WhatSetsNoColorIsBlackMapped) {
  const auto bitmap = harness::pixelsOf({4, 4}, [] {
    PaletteCanvas canvas(NSGraphicsContext::currentCgContext().canvas(), whiteOnBlack);
    const CanvasScope scope(canvas);
    NSBezierPath::bezierPathWithRect({0, 0, 4, 4})->fill();
  });
  EXPECT_EQ(bitmap.pixel(1, 1), 0xFFFFFFFFu);
}

TEST(PaletteCanvasTest, ImagesAreHandedOnAsTheyAre) {
  const tessaluna::backend::ImagePixels black{.width = 1, .height = 1, .argb = {0xFF000000u}};
  const auto bitmap = harness::pixelsOf({4, 4}, [&] {
    PaletteCanvas canvas(NSGraphicsContext::currentCgContext().canvas(), whiteOnBlack);
    canvas.drawImage(black, {0, 0, 1, 1}, {0, 0, 4, 4});
  });
  EXPECT_EQ(bitmap.pixel(1, 1), 0xFF000000u);
}

TEST(PaletteCanvasTest, WithinAnotherTheInnerAxisCounts) {
  const auto bitmap = harness::pixelsOf({4, 4}, [] {
    PaletteCanvas outer(NSGraphicsContext::currentCgContext().canvas(), whiteOnBlack);
    PaletteCanvas inner(outer, NeutralAxis({0, 0, 0, 1}, {1, 1, 1, 1}));
    const CanvasScope scope(inner);
    fill(NSColor::blackColor());
  });
  EXPECT_EQ(bitmap.pixel(1, 1), 0xFF000000u);
}
