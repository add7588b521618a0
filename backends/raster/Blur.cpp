#include "backends/raster/Blur.h"

#include <cmath>

namespace backend::raster {

namespace {

// Below this a Gaussian at whole pixels is one pixel alone.
constexpr double leastDeviation = 0.1;

}  // namespace

bool Plane::begin(const PixelRect& newBox) {
  box = newBox;
  const std::size_t count = std::size_t(box.width()) * std::size_t(box.height());
  float* values = memory.prepare(count);
  if (values) std::fill_n(values, count, 0.0f);
  return values != nullptr;
}

int Blur::reach(double deviation) { return deviation < leastDeviation ? 0 : int(std::ceil(deviation * 4)); }

void Blur::makeKernel(Kernel& kernel, double deviation, double move) {
  // The value of a pixel comes from the one `move` before it, and from its neighbours.
  const double center = -move;
  kernel.weights.clear();
  if (deviation < leastDeviation) {
    const double whole = std::floor(center), part = center - whole;
    kernel.first = int(whole);
    kernel.weights.push_back(float(1 - part));
    if (part > 0) kernel.weights.push_back(float(part));
    return;
  }
  const int reach = Blur::reach(deviation);
  kernel.first = int(std::floor(center)) - reach;
  const int last = int(std::ceil(center)) + reach;
  double sum = 0;
  for (int i = kernel.first; i <= last; ++i) {
    const double distance = (i - center) / deviation;
    sum += std::exp(-0.5 * distance * distance);
  }
  for (int i = kernel.first; i <= last; ++i) {
    const double distance = (i - center) / deviation;
    kernel.weights.push_back(float(std::exp(-0.5 * distance * distance) / sum));
  }
}

bool Blur::apply(Plane& from, Plane& to, double deviation, double dx, double dy) {
  makeKernel(across_, deviation, dx);
  makeKernel(down_, deviation, dy);
  const int taps = int(across_.weights.size()), width = to.box.width();
  const PixelRect middle{to.box.left, from.box.top, to.box.right, from.box.bottom};
  // A row of the source with as many zeros around it as any weight may ask for.
  const int firstColumn = to.box.left + across_.first;
  const int padded = width + taps;
  float* source = padded_.prepare(std::size_t(padded));
  if (!source || !rows_.begin(middle)) return false;

  const int copyFrom = std::max(firstColumn, from.box.left),
            copyTo = std::min(firstColumn + padded, from.box.right);
  for (int y = middle.top; y < middle.bottom; ++y) {
    std::fill_n(source, padded, 0.0f);
    if (copyFrom < copyTo) {
      std::copy_n(from.row(y) + (copyFrom - from.box.left), copyTo - copyFrom,
                  source + (copyFrom - firstColumn));
    }
    float* out = rows_.row(y);
    for (int tap = 0; tap < taps; ++tap) {
      const float weight = across_.weights[std::size_t(tap)];
      for (int x = 0; x < width; ++x) out[x] += weight * source[x + tap];
    }
  }
  for (int y = to.box.top; y < to.box.bottom; ++y) {
    float* out = to.row(y);
    const int first = std::max(y + down_.first, middle.top);
    const int last = std::min(y + down_.first + int(down_.weights.size()), middle.bottom);
    for (int row = first; row < last; ++row) {
      const float weight = down_.weights[std::size_t(row - y - down_.first)];
      const float* in = rows_.row(row);
      for (int x = 0; x < width; ++x) out[x] += weight * in[x];
    }
  }
  return true;
}

}  // namespace backend::raster
