#include "tessaluna/platform/graphics/PaletteCanvas.h"

namespace tessaluna::platform {

PaletteCanvas::PaletteCanvas(backend::Canvas& canvas, const NeutralAxis& axis) : canvas_(canvas), axis_(axis) {
  setFillColor({});
  setStrokeColor({});
}

void PaletteCanvas::saveState() {
  saved_.push_back({fill_, /*isLayer=*/false});
  canvas_.saveState();
}

void PaletteCanvas::restoreState() {
  if (!saved_.empty() && !saved_.back().isLayer) {
    fill_ = saved_.back().fill;
    saved_.pop_back();
  }
  canvas_.restoreState();
}

void PaletteCanvas::beginTransparencyLayer() {
  saved_.push_back({fill_, /*isLayer=*/true});
  canvas_.beginTransparencyLayer();
}

void PaletteCanvas::endTransparencyLayer() {
  // What was saved within the layer ends with it.
  for (bool isWithin = true; isWithin && !saved_.empty(); saved_.pop_back()) {
    fill_ = saved_.back().fill;
    isWithin = !saved_.back().isLayer;
  }
  canvas_.endTransparencyLayer();
}

void PaletteCanvas::setFillColor(const backend::Color& color) {
  fill_ = color;
  canvas_.setFillColor(axis_.mapped(color));
}

void PaletteCanvas::drawGlyphs(const backend::GlyphRun& run, CGPoint origin) {
  const backend::Color text = axis_.mappedText(fill_), shape = axis_.mapped(fill_);
  if (text == shape) return canvas_.drawGlyphs(run, origin);
  canvas_.setFillColor(text);
  canvas_.drawGlyphs(run, origin);
  canvas_.setFillColor(shape);
}

void PaletteCanvas::setShadow(const backend::Shadow& shadow) {
  backend::Shadow mapped = shadow;
  if (mapped.color) mapped.color = axis_.mappedShadow(*mapped.color);
  canvas_.setShadow(mapped);
}

void PaletteCanvas::fillGradient(const backend::Path& path, backend::FillRule rule,
                                 const backend::LinearGradient& gradient) {
  stops_.assign(gradient.stops.begin(), gradient.stops.end());
  for (backend::GradientStop& stop : stops_) stop.color = axis_.mapped(stop.color);
  backend::LinearGradient mapped = gradient;
  mapped.stops = stops_;
  canvas_.fillGradient(path, rule, mapped);
}

}  // namespace tessaluna::platform
