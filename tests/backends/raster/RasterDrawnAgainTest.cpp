// What a canvas remembers of shapes affects only the time: all pixels equal those of a canvas that remembers nothing.
#include <malloc.h>

#include <cmath>
#include <functional>
#include <vector>

#include <gtest/gtest.h>

#include "tessaluna/backends/raster/Bitmap.h"
#include "tessaluna/backends/raster/RasterCanvas.h"
#include "tessaluna/platform/graphics/NSGraphicsContext.h"
#include "tessaluna/uikit/stylekit/Routines.h"

namespace tessaluna::backend::raster::test {

namespace {

using Draw = std::function<void(RasterCanvas&)>;
using Pixels = std::vector<std::uint32_t>;

struct Picture {
  int width = 60, height = 60;
  View view = {};
};

Pixels drawnBy(RasterCanvas& canvas, const Picture& picture, const Draw& draw) {
  auto bitmap = Bitmap::make(picture.width, picture.height);
  canvas.begin(*bitmap, picture.view);
  draw(canvas);
  Pixels pixels;
  for (int y = 0; y < picture.height; ++y) pixels.insert(pixels.end(), bitmap->row(y), bitmap->row(y) + picture.width);
  return pixels;
}

Pixels drawnFirst(const Picture& picture, const Draw& draw) {
  auto bitmap = Bitmap::make(1, 1);
  RasterCanvas canvas(*bitmap);
  return drawnBy(canvas, picture, draw);
}

class RasterDrawnAgain : public testing::Test {
 protected:
  // Draws the shape until it is remembered.
  void remember(const Picture& picture, const Draw& draw) {
    for (int i = 0; i < 3; ++i) drawnBy(canvas_, picture, draw);
  }
  void expectSame(const Picture& picture, const Draw& draw) {
    EXPECT_TRUE(drawnBy(canvas_, picture, draw) == drawnFirst(picture, draw));
  }

  Bitmap bitmap_ = *Bitmap::make(1, 1);
  RasterCanvas canvas_{bitmap_};
};

void drawWave(RasterCanvas& canvas) {
  Path wave;
  wave.moveTo({4.3, 8.1});
  wave.curveTo({50.2, 40.7}, {30, 60}, {20, -30});
  wave.lineTo({12, 33});
  canvas.setFillColor({0.2, 0.4, 0.8, 0.7});
  canvas.fillPath(wave, FillRule::EvenOdd);
  canvas.strokePath(wave, {.width = 1.3, .cap = LineCap::Round, .join = LineJoin::Round});
  const GradientStop stops[] = {{0, {1, 0, 0, 1}}, {1, {0, 0, 1, 0.5}}};
  canvas.fillGradient(Path::oval({10, 10, 21, 17}), FillRule::NonZero, {.stops = stops, .start = {0, 0}, .end = {40, 40}});
}

}  // namespace

TEST_F(RasterDrawnAgain, EveryRoutineHasTheSamePixels) {
  for (const TessalunaUIKit::Routine& routine : TessalunaUIKit::routines()) {
    for (const double scale : {1.0, 1.25, 2.0, 4.0}) {
      const CGRect frame = routine.defaultFrame;
      const Picture picture{int(std::ceil(frame.size.width * scale)),
                            int(std::ceil(frame.size.height * scale)),
                            {.scale = scale, .origin = frame.origin}};
      const Draw draw = [&](RasterCanvas& canvas) {
        const platform::CanvasScope scope(canvas);
        routine.drawByDefault();
      };
      SCOPED_TRACE(testing::Message() << routine.name << " at " << scale);
      remember(picture, draw);
      expectSame(picture, draw);
    }
  }
}

TEST_F(RasterDrawnAgain, PixelsAreTheSameElsewhere) {
  remember({}, drawWave);
  for (const CGPoint& away : {CGPoint{-3, -5}, {7, 2}, {-30, 11}, {0.25, 0}, {0, 0.1}, {-1000.75, -500}}) {
    SCOPED_TRACE(testing::Message() << away.x << ", " << away.y);
    const Picture moved{.view = {.origin = away}};
    const Draw draw = [&](RasterCanvas& canvas) {
      canvas.concat(CGAffineTransform::translation(std::trunc(away.x / 2), std::trunc(away.y / 2)));
      drawWave(canvas);
    };
    for (int i = 0; i < 3; ++i) expectSame(moved, draw);
  }
}

TEST_F(RasterDrawnAgain, PixelsAreTheSameInOtherClips) {
  remember({}, drawWave);
  for (const CGRect& clip : {CGRect{20, 0, 15, 60}, {0, 22, 60, 13}, {20.5, 10.2, 15, 13}, {0, 0, 5, 5}}) {
    const Draw draw = [&](RasterCanvas& canvas) {
      canvas.clipRect(clip);
      drawWave(canvas);
    };
    for (int i = 0; i < 4; ++i) expectSame({}, draw);
    expectSame({}, drawWave);
  }
}

TEST_F(RasterDrawnAgain, PixelsAreTheSameInOtherStates) {
  const std::function<void(RasterCanvas&)> states[] = {
      [](RasterCanvas& canvas) { canvas.setAlpha(0.3); },
      [](RasterCanvas& canvas) { canvas.setBlendMode(BlendMode::Xor); },
      [](RasterCanvas& canvas) { canvas.setBlendMode(BlendMode::SourceIn); },
      [](RasterCanvas& canvas) {
        canvas.setShadow({{2, 3}, 3, Color{}});
      },
      [](RasterCanvas& canvas) {
        canvas.clipPath(Path::oval({3, 4, 40, 30}), FillRule::NonZero);
      },
      [](RasterCanvas& canvas) { canvas.beginTransparencyLayer(); }};
  remember({}, drawWave);
  for (const auto& set : states) {
    const Draw draw = [&](RasterCanvas& canvas) {
      canvas.fillPath(Path::rect({0, 0, 30, 60}), FillRule::NonZero);
      set(canvas);
      drawWave(canvas);
      canvas.endTransparencyLayer();
    };
    for (int i = 0; i < 3; ++i) expectSame({}, draw);
  }
}

// A shape's second drawing allocates memory that stays only if the shape is remembered.
TEST_F(RasterDrawnAgain, ShapesAreRememberedFromTheSecondDrawingOnAndForgottenWhenNotDrawn) {
  const auto bytesInUse = [] {
    const struct mallinfo2 info = mallinfo2();
    return info.uordblks + info.hblkhd;
  };
  if (bytesInUse() == 0) GTEST_SKIP() << "this allocator does not report what is in use";
  const auto circles = [&](double from) {
    for (int i = 0; i < 100; ++i) canvas_.fillPath(Path::oval({from + i * 0.01, 5, 40, 40}), FillRule::NonZero);
  };
  Bitmap bitmap = *Bitmap::make(60, 60);
  canvas_.begin(bitmap);
  circles(1.003);
  const std::size_t before = bytesInUse();
  circles(3.001);
  constexpr std::size_t ofCircles = 100 * 40 * 2 * sizeof(float);  // at least
  EXPECT_LT(bytesInUse(), before + ofCircles);
  circles(3.001);
  EXPECT_GT(bytesInUse(), before + ofCircles);
  for (int i = 0; i < 250; ++i) circles(4 + i * 0.00003);
  EXPECT_LT(bytesInUse(), before + ofCircles);
}

}  // namespace tessaluna::backend::raster::test
