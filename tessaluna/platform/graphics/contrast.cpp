#include "tessaluna/platform/graphics/contrast.h"

#include <algorithm>
#include <cmath>

namespace tessaluna::platform {

namespace {

double linear(double component) {
  return component <= 0.04045 ? component / 12.92 : std::pow((component + 0.055) / 1.055, 2.4);
}

double luminance(const backend::Color& color) {
  return 0.2126 * linear(color.red) + 0.7152 * linear(color.green) + 0.0722 * linear(color.blue);
}

}  // namespace

backend::Color painted(backend::Color color, backend::Color ground) {
  const auto mixed = [&](double above, double below) { return below + (above - below) * color.alpha; };
  return {mixed(color.red, ground.red), mixed(color.green, ground.green), mixed(color.blue, ground.blue), 1};
}

double contrastRatio(backend::Color color, backend::Color ground) {
  const double a = luminance(painted(color, ground)), b = luminance(ground);
  return (std::max(a, b) + 0.05) / (std::min(a, b) + 0.05);
}

}  // namespace tessaluna::platform
