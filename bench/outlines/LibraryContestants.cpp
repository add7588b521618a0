#include "bench/outlines/Contestant.h"
#include "tessaluna/backends/raster/Bitmap.h"
#include "tessaluna/backends/raster/RasterCanvas.h"
#include "tessaluna/platform/graphics/NSGraphicsContext.h"

namespace bench {

namespace {

using tessaluna::backend::raster::Bitmap;
using tessaluna::backend::raster::RasterCanvas;

// Moves each drawing to a place where none has been recently. The canvas distinguishes the steps, which together are an
// eighth of a pixel. That makes 65,536 shapes, many more than the 2,048 that the canvas remembers.
class Wanderer {
 public:
  Wanderer(RasterCanvas& canvas, double scale, Sight sight)
      : canvas_(canvas), step_(sight == Sight::Cold ? 1.0 / (1 << 19) / scale : 0) {}
  void goOn() {
    if (step_ == 0) return;
    constexpr int steps = 1 << 16;
    const bool isBack = ++taken_ == steps;
    canvas_.concat(tessaluna::backend::CGAffineTransform::translation(isBack ? -(steps - 1) * step_ : step_, 0));
    if (isBack) taken_ = 0;
  }

 private:
  RasterCanvas& canvas_;
  const double step_;
  int taken_ = 0;
};

class RoutineContestant final : public Contestant {
 public:
  RoutineContestant(const Subject& subject, Sight sight)
      : routine_(subject.routine),
        bitmap_(*Bitmap::make(subject.drawing.width, subject.drawing.height)),
        canvas_(bitmap_, {.scale = subject.scale, .origin = subject.routine.defaultFrame.origin}),
        scope_(canvas_),
        wanderer_(canvas_, subject.scale, sight) {}
  void draw() override {
    wanderer_.goOn();
    drawRoutine(routine_);
  }
  const std::uint32_t* row(int y) const override { return bitmap_.row(y); }

 private:
  const TessalunaUIKit::Routine& routine_;
  Bitmap bitmap_;
  RasterCanvas canvas_;
  tessaluna::platform::CanvasScope scope_;
  Wanderer wanderer_;
};

class OutlinesContestant final : public Contestant {
 public:
  OutlinesContestant(const Drawing& drawing, Sight sight)
      : drawing_(drawing),
        bitmap_(*Bitmap::make(drawing_.width, drawing_.height)),
        canvas_(bitmap_),
        wanderer_(canvas_, 1, sight) {
    canvas_.concat({1, 0, 0, -1, 0, double(drawing_.height)});
  }
  void draw() override {
    wanderer_.goOn();
    for (const Outline& outline : drawing_.outlines) {
      if (outline.pen) {
        canvas_.setStrokeColor(outline.color);
        canvas_.strokePath(outline.path, {.width = outline.pen->width,
                                          .cap = outline.pen->cap,
                                          .join = outline.pen->join,
                                          .miterLimit = outline.pen->miterLimit,
                                          .dash = outline.pen->dash,
                                          .dashPhase = outline.pen->dashPhase});
      } else {
        canvas_.setFillColor(outline.color);
        canvas_.fillPath(outline.path, outline.rule);
      }
    }
  }
  const std::uint32_t* row(int y) const override { return bitmap_.row(y); }

 private:
  const Drawing& drawing_;
  Bitmap bitmap_;
  RasterCanvas canvas_;
  Wanderer wanderer_;
};

}  // namespace

std::unique_ptr<Contestant> makeRoutineContestant(const Subject& subject, Sight sight) {
  return std::make_unique<RoutineContestant>(subject, sight);
}
std::unique_ptr<Contestant> makeOutlinesContestant(const Drawing& drawing, Sight sight) {
  return std::make_unique<OutlinesContestant>(drawing, sight);
}

}  // namespace bench
