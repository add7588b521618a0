#include "tessaluna/backends/raster/RasterCanvas.h"

#include "tessaluna/backends/raster/Pipeline.h"

namespace tessaluna::backend::raster {

RasterCanvas::RasterCanvas(Bitmap& bitmap, const View& view) : pipeline_(std::make_unique<Pipeline>()) {
  pipeline_->begin(bitmap, view);
}

RasterCanvas::~RasterCanvas() = default;

void RasterCanvas::begin(Bitmap& bitmap, const View& view) { pipeline_->begin(bitmap, view); }

void RasterCanvas::saveState() { pipeline_->saveState(); }
void RasterCanvas::restoreState() { pipeline_->restoreState(); }

void RasterCanvas::concat(const CGAffineTransform& transform) {
  CGAffineTransform& toDevice = pipeline_->state().toDevice;
  toDevice = transform.then(toDevice);
}

void RasterCanvas::clipRect(CGRect rect) { pipeline_->atFullSpeed().clip(rect); }
void RasterCanvas::clipPath(const Path& path, FillRule rule) { pipeline_->atFullSpeed().clip(path, rule); }

void RasterCanvas::setFillColor(const Color& color) { pipeline_->state().fillColor = color; }
void RasterCanvas::setStrokeColor(const Color& color) { pipeline_->state().strokeColor = color; }
void RasterCanvas::setShadow(const Shadow& shadow) { pipeline_->state().shadow = shadow; }
void RasterCanvas::setAlpha(double alpha) { pipeline_->state().alpha = alpha; }
void RasterCanvas::setBlendMode(BlendMode mode) { pipeline_->state().blendMode = mode; }

void RasterCanvas::beginTransparencyLayer() { pipeline_->beginLayer(); }
void RasterCanvas::endTransparencyLayer() { pipeline_->atFullSpeed().endLayer(); }

void RasterCanvas::fillPath(const Path& path, FillRule rule) { pipeline_->atFullSpeed().fill(path, rule); }
void RasterCanvas::strokePath(const Path& path, const StrokeStyle& style) { pipeline_->atFullSpeed().stroke(path, style); }
void RasterCanvas::fillGradient(const Path& path, FillRule rule, const LinearGradient& gradient) {
  pipeline_->atFullSpeed().fillGradient(path, rule, gradient);
}

void RasterCanvas::drawGlyphs(const GlyphRun& run, CGPoint origin) { pipeline_->atFullSpeed().drawGlyphs(run, origin); }
void RasterCanvas::drawImage(const ImagePixels& image, CGRect source, CGRect destination) {
  pipeline_->atFullSpeed().drawImage(image, source, destination);
}

}  // namespace tessaluna::backend::raster
