#include "tessaluna/backends/raster/Blur.h"

#include <cmath>

namespace tessaluna::backend::raster {

namespace {

// Below this a Gaussian at whole pixels is one pixel alone.
constexpr double leastDeviation = 0.1;
// Of a wide blur in its cells: so much wider than a cell, it hides how values are spread within.
constexpr double deviationInCells = 4;

}  // namespace

bool Plane::begin(const PixelRect& newBox) {
  box = newBox;
  const std::size_t count = std::size_t(box.width()) * std::size_t(box.height());
  float* values = memory.prepare(count);
  if (values) std::fill_n(values, count, 0.0f);
  return values != nullptr;
}

int Blur::cellSize(double deviation) { return deviation < 2 * deviationInCells ? 1 : int(deviation / deviationInCells); }

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
  const auto gaussian = [&](int i) { return std::exp(-0.5 * (i - center) * (i - center) / (deviation * deviation)); };
  double sum = 0;
  for (int i = kernel.first; i <= last; ++i) sum += gaussian(i);
  for (int i = kernel.first; i <= last; ++i) kernel.weights.push_back(float(gaussian(i) / sum));
}

bool Blur::convolve(Plane& from, Plane& to, const Style& style) {
  makeKernel(across_, style.deviation, style.dx);
  makeKernel(down_, style.deviation, style.dy);
  const int taps = int(across_.weights.size()), width = to.box.width();
  const PixelRect middle{to.box.left, from.box.top, to.box.right, from.box.bottom};
  // A row of the source with as many zeros around it as any weight may ask for.
  const int firstColumn = to.box.left + across_.first;
  const int padded = width + taps;
  float* source = padded_.prepare(std::size_t(padded));
  if (!source || !rows_.begin(middle)) return false;

  const int copyFrom = std::max(firstColumn, from.box.left), copyTo = std::min(firstColumn + padded, from.box.right);
  for (int y = middle.top; y < middle.bottom; ++y) {
    std::fill_n(source, padded, 0.0f);
    if (copyFrom < copyTo) {
      std::copy_n(from.row(y) + (copyFrom - from.box.left), copyTo - copyFrom, source + (copyFrom - firstColumn));
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

bool Blur::apply(Plane& from, Plane& to, const Style& style) {
  const int cell = cellSize(style.deviation);
  if (cell == 1) return convolve(from, to, style);
  // The mean over a cell and the way from one cell's middle to the next are blurs themselves, of known
  // variance.
  const double spread = style.deviation / cell;
  const double deviation = std::sqrt(spread * spread - 1.0 / 12 - 1.0 / 6);
  const DeviceRect seen{(to.box.left - style.dx) / cell - 2, (to.box.top - style.dy) / cell - 2,
                        (to.box.right - style.dx) / cell + 2, (to.box.bottom - style.dy) / cell + 2};
  if (!cells_.begin(seen.roundedOut()) || !convolve(from, cells_, {.deviation = deviation})) return false;
  return enlarge(cells_, to, cell, style);
}

// Each pixel between the middles of four cells gets its share of them.
bool Blur::enlarge(Plane& cells, Plane& to, int cell, const Style& style) {
  const auto place = [cell](int pixel, double move) { return (pixel + 0.5 - move) / cell - 0.5; };
  const int width = cells.box.width();
  float* between = padded_.prepare(std::size_t(width));
  if (!between) return false;
  for (int y = to.box.top; y < to.box.bottom; ++y) {
    const double row = place(y, style.dy), above = std::floor(row);
    const float below = float(row - above);
    const float *upper = cells.row(int(above)), *lower = cells.row(int(above) + 1);
    for (int x = 0; x < width; ++x) between[x] = upper[x] + (lower[x] - upper[x]) * below;
    float* out = to.row(y);
    for (int x = 0; x < to.box.width(); ++x) {
      const double column = place(to.box.left + x, style.dx), left = std::floor(column);
      const float* pair = between + (int(left) - cells.box.left);
      out[x] = pair[0] + (pair[1] - pair[0]) * float(column - left);
    }
  }
  return true;
}

}  // namespace tessaluna::backend::raster
