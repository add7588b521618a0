#include "bench/outlines/Drawing.h"

#include <array>
#include <cmath>

#include "tessaluna/platform/foundation/stopProgram.h"
#include "tessaluna/platform/graphics/NSGraphicsContext.h"

namespace bench {

namespace {

using namespace tessaluna::backend;

class TakesDown final : public Canvas {
 public:
  TakesDown(Drawing& drawing, const CGAffineTransform& toDevice) : drawing_(drawing), toDevice_(toDevice) {}

  void saveState() override { saved_.push_back({fill_, stroke_}); }
  void restoreState() override {
    fill_ = saved_.back().fill;
    stroke_ = saved_.back().stroke;
    saved_.pop_back();
  }
  void setFillColor(const Color& color) override { fill_ = color; }
  void setStrokeColor(const Color& color) override { stroke_ = color; }
  void beginTransparencyLayer() override {
    ++layers_;
    drawing_.hasRecipe = true;
  }
  void endTransparencyLayer() override { --layers_; }
  void fillPath(const Path& path, FillRule rule) override { add(path, {.color = fill_, .rule = rule}); }
  void strokePath(const Path& path, const StrokeStyle& style) override {
    const double scale = std::abs(toDevice_.a);
    Pen pen{style.width * scale, style.cap, style.join, style.miterLimit, {}, style.dashPhase * scale};
    for (const double length : style.dash) pen.dash.push_back(length * scale);
    add(path, {.color = stroke_, .pen = std::move(pen)});
  }
  void fillGradient(const Path& path, FillRule rule, const LinearGradient& gradient) override {
    drawing_.hasRecipe = true;
    add(path, {.color = gradient.stops.front().color, .rule = rule});
  }

  // This is part of the inner shadow, which no outline shows.
  void clipRect(CGRect) override {}
  void setShadow(const Shadow&) override {}
  void setAlpha(double) override {}
  void setBlendMode(BlendMode) override {}

  void concat(const CGAffineTransform&) override { refuse(); }
  void clipPath(const Path&, FillRule) override { refuse(); }
  void drawGlyphs(const GlyphRun&, CGPoint) override { refuse(); }
  void drawImage(const ImagePixels&, CGRect, CGRect) override { refuse(); }

 private:
  struct Colors {
    Color fill, stroke;
  };

  [[noreturn]] static void refuse() {
    tessaluna::platform::stopProgram("bench: a routine does what outlines do not tell; the peers would draw something else");
  }
  void add(const Path& path, Outline outline) {
    if (layers_ > 0) return;
    outline.path = path;
    outline.path.transform(toDevice_);
    drawing_.outlines.push_back(std::move(outline));
  }

  Drawing& drawing_;
  const CGAffineTransform toDevice_;
  Color fill_, stroke_;
  std::vector<Colors> saved_;
  int layers_ = 0;
};

}  // namespace

void drawRoutine(const TessalunaUIKit::Routine& routine) {
  std::array<bool, 4> flags{};
  for (std::size_t i = 0; i < routine.flags.size(); ++i) flags.at(i) = routine.flags[i].isOnByDefault;
  routine.draw(routine.defaultFrame, std::span(flags).first(routine.flags.size()));
}

Drawing drawingOf(const TessalunaUIKit::Routine& routine, double scale) {
  const CGRect frame = routine.defaultFrame;
  Drawing drawing{.width = int(std::ceil(frame.size.width * scale)), .height = int(std::ceil(frame.size.height * scale))};
  const CGAffineTransform toDevice{scale, 0, 0, -scale, -frame.origin.x * scale, drawing.height + frame.origin.y * scale};
  TakesDown canvas(drawing, toDevice);
  const tessaluna::platform::CanvasScope scope(canvas);
  drawRoutine(routine);
  return drawing;
}

}  // namespace bench
