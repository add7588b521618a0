// Paints one color onto a bitmap with the normal operator and no clip but the bitmap's box, as nearly all of an icon is
// painted. It is a sink of a coverage buffer that processes four pixels at a time and keeps nothing between rows. All of it
// is in this header, because runs are short and a call for each of them would take as long as painting it.
#pragma once

#include "tessaluna/backends/raster/Bitmap.h"
#include "tessaluna/backends/raster/Blend.h"
#include "tessaluna/backends/raster/CoverageBuffer.h"
#include "tessaluna/backends/raster/Inks.h"

namespace tessaluna::backend::raster {

class ColorPainter : public RowByRowSink<ColorPainter> {
 public:
  ColorPainter(Bitmap& bitmap, Float4 color) : bitmap_(bitmap), isOpaque_(color[3] >= fullCoverage) {
    storeRow(&color, &pixel_, 1);
    const auto part = [&](int channel, int ofOne) {
      const int v = int(std::clamp(color[channel], 0.0f, 1.0f) * float(ofOne));
      return Int4{v, v, v, v};
    };
    alpha_ = inBothHalves(part(3, fullShare));
    inks_ = {halves(part(0, 0xff00) | part(2, 0xff00) << 16), halves(part(1, 0xff00) | part(3, 0xff00) << 16)};
  }

  void uniform(int x, int y, int count, float winding) {
    std::uint32_t* pixels = bitmap_.row(y) + x;
    const float coverage = coverageOf(winding);
    if (isOpaque_ && coverage > fullCoverage) return fillPixels(pixels, count, pixel_);
    const Short8 share = shareOf(splat(coverage)), kept = ~highHalf(share, alpha_);
    const FourInks inks = lessened(inks_, share);
    forEachFour(pixels, count,
                [inks, kept](std::uint32_t* four, int) { storeFour(over(loadFour(four), inks, kept), four); });
  }
  void uniformRows(const PixelRect& box, float winding) {
    const bool isWhole = isOpaque_ && coverageOf(winding) > fullCoverage;
    if (isWhole && box.width() < longRun) return fillRows(box);
    RowByRowSink::uniformRows(box, winding);
  }

  void varied(int x, int y, int count, const float* windings) {
    forEachFour(bitmap_.row(y) + x, windings, count,
                [&](std::uint32_t* four, int, Float4 coverage) { paintFour(four, coverage); });
  }
  // For runs that may have long gaps without coverage.
  void sparse(int x, int y, int count, const float* windings) {
    forEachFour(bitmap_.row(y) + x, windings, count, [&](std::uint32_t* four, int, Float4 coverage) {
      if (isAnySet(coverage > splat(leastCoverage))) paintFour(four, coverage);
    });
  }

  // Upright sides on a pixel's edge leave blocks that are empty or fully covered.
  void variedRows(const PixelRect& box, const float* windings) {
    if (box.height() == 1) return sparse(box.left, box.top, box.width(), windings);
    int x = box.left;
    for (; x + 4 <= box.right; x += 4, windings += 4) paintRows(x, box, coverageOfFour(windings));
    if (x == box.right) return;
    // The last pixels are painted with some before them, whose coverage is 0.
    float last[4] = {};
    if (box.right >= 4) {
      std::copy_n(windings, box.right - x, last + 4 - (box.right - x));
      return paintRows(box.right - 4, box, coverageOfFour(last));
    }
    for (int y = box.top; y < box.bottom; ++y) varied(x, y, box.right - x, windings);
  }

 private:
  // Applies paint(pixels) to the pixels from this column on in each row of the box.
  template <class Paint>
  void forEachRow(int x, const PixelRect& box, Paint paint) {
    std::uint32_t* pixels = bitmap_.row(box.top) + x;
    const std::size_t step = bitmap_.stride() / sizeof *pixels;
    for (int rows = box.height(); rows > 0; --rows, pixels += step) paint(pixels);
  }

  // Fills strip by strip, since runs are too short for a loop in each row. The last strip may overlap the one before it.
  template <int fours>
  void fillStrips(const PixelRect& box) {
    const int p = int(pixel_), width = 4 * fours, last = box.right - width;
    const Short8 four = halves(Int4{p, p, p, p});
    for (int left = box.left;; left = std::min(left + width, last)) {
      forEachRow(left, box, [four](std::uint32_t* pixels) {
        for (int i = 0; i < fours; ++i) storeFour(four, pixels + 4 * i);
      });
      if (left == last) return;
    }
  }
  void fillRows(const PixelRect& box) {
    if (box.width() >= 16) return fillStrips<4>(box);
    if (box.width() >= 4) return fillStrips<1>(box);
    forEachRow(box.left, box, [&](std::uint32_t* pixels) { std::fill_n(pixels, box.width(), pixel_); });
  }

  void paintRows(int x, const PixelRect& box, Float4 coverage) {
    if (!isAnySet(coverage > splat(leastCoverage))) return;
    if (isOpaque_ && !isAnySet(coverage <= splat(fullCoverage))) return fillStrips<1>({x, box.top, x + 4, box.bottom});
    const Short8 share = shareOf(coverage), kept = ~highHalf(share, alpha_);
    const FourInks inks = lessened(inks_, share);
    forEachRow(x, box, [inks, kept](std::uint32_t* four) { storeFour(over(loadFour(four), inks, kept), four); });
  }

  void paintFour(std::uint32_t* pixels, Float4 coverage) const {
    const Short8 share = shareOf(coverage);
    storeFour(over(loadFour(pixels), lessened(inks_, share), ~highHalf(share, alpha_)), pixels);
  }

  Bitmap& bitmap_;
  const bool isOpaque_;
  std::uint32_t pixel_;  // the color where coverage is full
  Short8 alpha_;         // eight times
  FourInks inks_;
};

}  // namespace tessaluna::backend::raster
