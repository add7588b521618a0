#include "tessaluna/platform/graphics/PaletteCanvas.h"

namespace tessaluna::platform {

PaletteCanvas::PaletteCanvas(backend::Canvas& canvas, const NeutralAxis& axis) : canvas_(canvas), axis_(axis) {
  setFillColor({});
  setStrokeColor({});
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
