// A canvas that paints pixels.
//
//   auto bitmap = Bitmap::make(64, 64);
//   RasterCanvas canvas(*bitmap, {.scale = 2});     // shows the base space from (0, 0) to (32, 32)
//   canvas.fillPath(Path::oval({4, 4, 24, 24}), FillRule::NonZero);
//
// Pixels are right within 1/255 inside shapes and 3/255 on their edges, however they overlap, except for a few where dashes
// end in bends narrower than the pen (docs/performance.md lists cases).
// Whatever the input, the canvas neither throws nor hangs: it leaves out points that are not finite, and it does not paint
// what does not fit into memory. It keeps its working memory between operations, up to some thousands of them, and it
// remembers the coverage of small shapes and glyphs, so that drawing the same again is fast and allocates nothing.
#pragma once

#include <memory>

#include "tessaluna/platform/backend/Canvas.h"

namespace tessaluna::backend::raster {

class Bitmap;

// The part of base space that a canvas shows.
struct View {
  double scale = 1;     // device pixels per point; nothing is painted unless it is positive and finite
  CGPoint origin = {};  // the point of base space at the bitmap's lower left corner
};

class RasterCanvas final : public Canvas {
 public:
  // The bitmap must outlive the canvas. Its pixels stay and are painted over.
  explicit RasterCanvas(Bitmap& bitmap, const View& view = {});
  ~RasterCanvas() override;

  // Starts again on another bitmap, with the state of a new canvas and the working memory of this one.
  void begin(Bitmap& bitmap, const View& view = {});

  void saveState() override;
  void restoreState() override;
  void concat(const CGAffineTransform& transform) override;
  void clipRect(CGRect rect) override;
  void clipPath(const Path& path, FillRule rule) override;
  void setFillColor(const Color& color) override;
  void setStrokeColor(const Color& color) override;
  void setShadow(const Shadow& shadow) override;
  void setAlpha(double alpha) override;
  void setBlendMode(BlendMode mode) override;
  void beginTransparencyLayer() override;
  void endTransparencyLayer() override;
  void fillPath(const Path& path, FillRule rule) override;
  void strokePath(const Path& path, const StrokeStyle& style) override;
  void fillGradient(const Path& path, FillRule rule, const LinearGradient& gradient) override;
  // Glyphs are placed on whole rows of pixels and at quarters of a pixel across.
  void drawGlyphs(const GlyphRun& run, CGPoint origin) override;
  void drawImage(const ImagePixels& image, CGRect source, CGRect destination) override;

 private:
  class Pipeline;
  std::unique_ptr<Pipeline> pipeline_;
};

}  // namespace tessaluna::backend::raster
