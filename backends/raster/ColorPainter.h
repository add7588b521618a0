// Puts one color onto a bitmap, by the plain operator and with no clip but the bitmap's box: what nearly all of an icon is
// painted by. A sink of a coverage buffer that looks at four pixels at a time and keeps nothing between rows.
#pragma once

#include "backends/raster/Bitmap.h"
#include "backends/raster/CoverageBuffer.h"
#include "backends/raster/Float4.h"

namespace backend::raster {

class ColorPainter {
 public:
  ColorPainter(Bitmap& bitmap, Float4 color);

  void even(int x, int y, int count, float winding);
  void varied(int x, int y, int count, const float* windings);

 private:
  void paintFour(std::uint32_t* pixels, Float4 coverage) const;

  Bitmap& bitmap_;
  const float alpha_;
  const bool isOpaque_;
  std::uint32_t pixel_;                  // the color where it covers all
  Float4 inks_[4];  // each channel of the color four times, of 255
};

}  // namespace backend::raster
