#include "bench/outlines/Exactness.h"

#include <algorithm>
#include <cmath>

#include "tessaluna/backends/raster/Bitmap.h"
#include "tessaluna/backends/raster/RasterCanvas.h"

namespace bench {

namespace {

using tessaluna::backend::raster::Bitmap;
using tessaluna::backend::raster::RasterCanvas;

constexpr int enlarged = 8;
constexpr int bandHeight = 64;  // in pixels of the picture, so that an enlarged band fits into memory

// Draws only the outline, opaque, from this row of the picture on.
void drawEnlarged(const Outline& outline, int top, Bitmap& bitmap) {
  bitmap.clear();
  RasterCanvas canvas(bitmap);
  canvas.concat({enlarged, 0, 0, -enlarged, 0, double(bitmap.height() + top * enlarged)});
  const tessaluna::backend::Color opaque{.alpha = 1};
  if (!outline.pen) {
    canvas.setFillColor(opaque);
    canvas.fillPath(outline.path, outline.rule);
    return;
  }
  canvas.setStrokeColor(opaque);
  canvas.strokePath(outline.path, {.width = outline.pen->width,
                                   .cap = outline.pen->cap,
                                   .join = outline.pen->join,
                                   .miterLimit = outline.pen->miterLimit,
                                   .dash = outline.pen->dash,
                                   .dashPhase = outline.pen->dashPhase});
}

double coverage(const Bitmap& bitmap, int x, int y) {
  std::uint64_t sum = 0;
  for (int row = y * enlarged; row < (y + 1) * enlarged; ++row) {
    for (int column = x * enlarged; column < (x + 1) * enlarged; ++column) sum += bitmap.row(row)[column] >> 24;
  }
  return double(sum) / (255.0 * enlarged * enlarged);
}

}  // namespace

ExactPicture exactPictureOf(const Drawing& drawing) {
  ExactPicture exact{drawing.width, drawing.height, {}};
  exact.alpha.resize(std::size_t(exact.width) * std::size_t(exact.height));
  Bitmap bitmap = *Bitmap::make(exact.width * enlarged, bandHeight * enlarged);
  for (int top = 0; top < exact.height; top += bandHeight) {
    const int bottom = std::min(top + bandHeight, exact.height);
    for (const Outline& outline : drawing.outlines) {
      drawEnlarged(outline, top, bitmap);
      auto alpha = exact.alpha.begin() + std::ptrdiff_t(top) * exact.width;
      for (int y = 0; y < bottom - top; ++y) {
        for (int x = 0; x < exact.width; ++x, ++alpha) *alpha += (1 - *alpha) * outline.color.alpha * coverage(bitmap, x, y);
      }
    }
  }
  return exact;
}

double largestDifference(const Contestant& contestant, const ExactPicture& exact) {
  double largest = 0;
  auto alpha = exact.alpha.begin();
  for (int y = 0; y < exact.height; ++y) {
    for (int x = 0; x < exact.width; ++x, ++alpha)
      largest = std::max(largest, std::abs(double(contestant.row(y)[x] >> 24) - 255 * *alpha));
  }
  return largest;
}

}  // namespace bench
