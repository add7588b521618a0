// A canvas above another: it passes every call on, with the colors mapped to an axis. Images are passed on as they
// are.
#pragma once

#include <vector>

#include "tessaluna/platform/graphics/NeutralAxis.h"

namespace tessaluna::platform {

class PaletteCanvas : public backend::Canvas {
 public:
  // The canvas outlives it. Its colors become those that black is mapped to.
  PaletteCanvas(backend::Canvas& canvas, const NeutralAxis& axis);

  void saveState() override;
  void restoreState() override;
  void concat(const CGAffineTransform& transform) override { canvas_.concat(transform); }
  void clipRect(CGRect rect) override { canvas_.clipRect(rect); }
  void clipPath(const backend::Path& path, backend::FillRule rule) override { canvas_.clipPath(path, rule); }
  void setFillColor(const backend::Color& color) override;
  void setStrokeColor(const backend::Color& color) override { canvas_.setStrokeColor(axis_.mapped(color)); }
  void setShadow(const backend::Shadow& shadow) override;
  void setAlpha(double alpha) override { canvas_.setAlpha(alpha); }
  void setBlendMode(backend::BlendMode mode) override { canvas_.setBlendMode(mode); }
  void beginTransparencyLayer() override;
  void endTransparencyLayer() override;
  void fillPath(const backend::Path& path, backend::FillRule rule) override { canvas_.fillPath(path, rule); }
  void strokePath(const backend::Path& path, const backend::StrokeStyle& style) override { canvas_.strokePath(path, style); }
  void fillGradient(const backend::Path& path, backend::FillRule rule, const backend::LinearGradient& gradient) override;
  void drawGlyphs(const backend::GlyphRun& run, CGPoint origin) override;
  void drawImage(const backend::ImagePixels& image, CGRect source, CGRect destination) override {
    canvas_.drawImage(image, source, destination);
  }

 private:
  backend::Canvas& canvas_;
  NeutralAxis axis_;
  // As it was set: letters take more of it than shapes do.
  backend::Color fill_;
  struct Saved {
    backend::Color fill;
    bool isLayer;
  };
  std::vector<Saved> saved_;
  std::vector<backend::GradientStop> stops_;  // of the gradient that is painted
};

}  // namespace tessaluna::platform
