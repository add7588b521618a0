#include "tessaluna/backends/raster/RasterCanvas.h"

#include "tessaluna/backends/raster/Studio.h"

namespace tessaluna::backend::raster {

RasterCanvas::RasterCanvas(Bitmap& bitmap, const View& view) : studio_(std::make_unique<Studio>()) {
  studio_->begin(bitmap, view);
}

RasterCanvas::~RasterCanvas() = default;

void RasterCanvas::begin(Bitmap& bitmap, const View& view) { studio_->begin(bitmap, view); }

void RasterCanvas::saveState() { studio_->saveState(); }
void RasterCanvas::restoreState() { studio_->restoreState(); }

void RasterCanvas::concat(const CGAffineTransform& transform) {
  CGAffineTransform& toDevice = studio_->state().toDevice;
  toDevice = transform.then(toDevice);
}

void RasterCanvas::clipRect(CGRect rect) { studio_->clip(rect); }
void RasterCanvas::clipPath(const Path& path, FillRule rule) { studio_->clip(path, rule); }

void RasterCanvas::setFillColor(const Color& color) { studio_->state().fillColor = color; }
void RasterCanvas::setStrokeColor(const Color& color) { studio_->state().strokeColor = color; }
void RasterCanvas::setShadow(const Shadow& shadow) { studio_->state().shadow = shadow; }
void RasterCanvas::setAlpha(double alpha) { studio_->state().alpha = alpha; }
void RasterCanvas::setBlendMode(BlendMode mode) { studio_->state().blendMode = mode; }

void RasterCanvas::beginTransparencyLayer() { studio_->beginLayer(); }
void RasterCanvas::endTransparencyLayer() { studio_->endLayer(); }

void RasterCanvas::fillPath(const Path& path, FillRule rule) { studio_->fill(path, rule); }
void RasterCanvas::strokePath(const Path& path, const StrokeStyle& style) { studio_->stroke(path, style); }
void RasterCanvas::fillGradient(const Path& path, FillRule rule, const LinearGradient& gradient) {
  studio_->fillGradient(path, rule, gradient);
}

void RasterCanvas::drawGlyphs(const GlyphRun& run, CGPoint origin) { studio_->drawGlyphs(run, origin); }
void RasterCanvas::drawImage(const ImagePixels& image, CGRect source, CGRect destination) {
  studio_->drawImage(image, source, destination);
}

}  // namespace tessaluna::backend::raster
