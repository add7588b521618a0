#include "tessaluna/backends/raster/GradientRamp.h"

#include <cmath>

namespace tessaluna::backend::raster {

bool GradientRamp::begin(const LinearGradient& gradient, const CGAffineTransform& toDevice, double alpha) {
  const std::optional<CGAffineTransform> toPath = toDevice.inverted();
  stops_.clear();
  for (const GradientStop& stop : gradient.stops) {
    if (std::isnan(stop.location)) continue;
    Color opaque = stop.color;
    opaque.alpha = 1;
    Float4 color = premultiplied(opaque, 1);
    color[3] = premultiplied(stop.color, 1)[3];
    stops_.push_back({stop.location, color});
  }
  if (!toPath || stops_.empty()) return false;
  alpha_ = alpha > 0 ? std::min(alpha, 1.0) : 0;

  const double dx = gradient.end.x - gradient.start.x, dy = gradient.end.y - gradient.start.y;
  const double squares = dx * dx + dy * dy;
  const CGPoint origin = toPath->apply({0.5, 0.5});
  start_ = ((origin.x - gradient.start.x) * dx + (origin.y - gradient.start.y) * dy) / squares;
  perColumn_ = (toPath->a * dx + toPath->b * dy) / squares;
  perRow_ = (toPath->c * dx + toPath->d * dy) / squares;
  if (!std::isfinite(start_) || !std::isfinite(perColumn_) || !std::isfinite(perRow_)) {
    // An axis without length has everything behind its end.
    start_ = stops_.back().location;
    perColumn_ = perRow_ = 0;
  }
  return true;
}

Float4 GradientRamp::colorAt(double position) const {
  // Of stops at one place the last one holds from there on.
  std::size_t next = 0;
  while (next < stops_.size() && stops_[next].location <= position) ++next;
  Float4 color;
  if (next == 0) {
    color = stops_.front().color;
  } else if (next == stops_.size()) {
    color = stops_.back().color;
  } else {
    const Stop &low = stops_[next - 1], &high = stops_[next];
    const float f = float((position - low.location) / (high.location - low.location));
    color = low.color + (high.color - low.color) * splat(f);
  }
  const float alpha = color[3] * float(alpha_);
  color[3] = 1;
  return color * splat(alpha);
}

void GradientRamp::row(int x, int y, int count, Float4* out) const {
  if (isEvenAlongRows()) return void(std::fill_n(out, count, colorAt(x, y)));
  for (int i = 0; i < count; ++i) out[i] = colorAt(x + i, y);
}

}  // namespace tessaluna::backend::raster
