// Paints a gradient or an image onto a bitmap with the normal operator and no clip but the bitmap's box. It is a sink of a
// coverage buffer.
#pragma once

#include "tessaluna/backends/raster/Bitmap.h"
#include "tessaluna/backends/raster/CoverageBuffer.h"
#include "tessaluna/backends/raster/RowSource.h"

namespace tessaluna::backend::raster {

class RowPainter : public RowByRowSink<RowPainter> {
 public:
  // The row must have room for the longest run. `alpha` is the state's.
  RowPainter(Bitmap& bitmap, RowSource& source, float alpha, InkRow& row)
      : bitmap_(bitmap), source_(source), row_(row), alpha_(alpha), isOpaque_(source.isOpaque() && alpha >= fullCoverage) {}

  void uniform(int x, int y, int count, float winding) {
    std::uint32_t* pixels = bitmap_.row(y) + x;
    const float coverage = coverageOf(winding);
    if (isOpaque_ && coverage > fullCoverage) return source_.writePixels(x, y, count, pixels);
    source_.writeInks(x, y, count, row_);
    const Short8 share = shareOf(splat(coverage * alpha_));
    forEachFour(pixels, count, [&](std::uint32_t* four, int index) { paint(four, index, share); });
  }

  void uniformRows(const PixelRect& box, float winding) {
    if (isOpaque_ && coverageOf(winding) > fullCoverage)
      return source_.writeRows(box, bitmap_.row(box.top) + box.left, bitmap_.stride());
    RowByRowSink::uniformRows(box, winding);
  }
  void varied(int x, int y, int count, const float* windings) {
    source_.writeInks(x, y, count, row_);
    forEachFour(bitmap_.row(y) + x, windings, count, [&](std::uint32_t* four, int index, Float4 coverage) {
      paint(four, index, shareOf(coverage * splat(alpha_)));
    });
  }

 private:
  void paint(std::uint32_t* four, int index, Short8 share) {
    const FourInks inks = lessened(row_.at(index), share);
    storeFour(over(loadFour(four), inks, keptBelow(inks)), four);
  }

  Bitmap& bitmap_;
  RowSource& source_;
  InkRow& row_;
  const float alpha_;
  const bool isOpaque_;
};

}  // namespace tessaluna::backend::raster
