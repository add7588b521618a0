// Passes all its calls to two canvases: one paints, the other records.
#pragma once

#include "tessaluna/platform/backend/Canvas.h"

namespace tessaluna::backend::headless {

class TeeCanvas : public Canvas {
 public:
  // Both outlive it.
  TeeCanvas(Canvas& first, Canvas& second) : first_(first), second_(second) {}

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
  void drawGlyphs(const GlyphRun& run, CGPoint origin) override;
  void drawImage(const ImagePixels& image, CGRect source, CGRect destination) override;

 private:
  template <class Operation>
  void both(Operation operation) {
    operation(first_);
    operation(second_);
  }

  Canvas& first_;
  Canvas& second_;
};

}  // namespace tessaluna::backend::headless
