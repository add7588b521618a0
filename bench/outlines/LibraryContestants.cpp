#include "bench/outlines/Contestant.h"
#include "tessaluna/backends/raster/Bitmap.h"
#include "tessaluna/backends/raster/RasterCanvas.h"
#include "tessaluna/platform/graphics/NSGraphicsContext.h"

namespace bench {

namespace {

using tessaluna::backend::raster::Bitmap;
using tessaluna::backend::raster::RasterCanvas;

class RoutineContestant final : public Contestant {
 public:
  explicit RoutineContestant(const Subject& subject)
      : routine_(subject.routine),
        bitmap_(*Bitmap::make(subject.drawing.width, subject.drawing.height)),
        canvas_(bitmap_, {.scale = subject.scale, .origin = subject.routine.defaultFrame.origin}),
        scope_(canvas_) {}
  void draw() override { drawRoutine(routine_); }
  const std::uint32_t* row(int y) const override { return bitmap_.row(y); }

 private:
  const TessalunaUIKit::Routine& routine_;
  Bitmap bitmap_;
  RasterCanvas canvas_;
  tessaluna::platform::CanvasScope scope_;
};

class OutlinesContestant final : public Contestant {
 public:
  explicit OutlinesContestant(const Drawing& drawing)
      : drawing_(drawing), bitmap_(*Bitmap::make(drawing_.width, drawing_.height)), canvas_(bitmap_) {
    canvas_.concat({1, 0, 0, -1, 0, double(drawing_.height)});
  }
  void draw() override {
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
};

}  // namespace

std::unique_ptr<Contestant> makeRoutineContestant(const Subject& subject) {
  return std::make_unique<RoutineContestant>(subject);
}
std::unique_ptr<Contestant> makeOutlinesContestant(const Drawing& drawing) {
  return std::make_unique<OutlinesContestant>(drawing);
}

}  // namespace bench
