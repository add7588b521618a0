// What a drawing looks like: a bitmap of the base space from (0, 0), painted with one pixel per point unless stated otherwise.
#pragma once

#include <gtest/gtest.h>

#include <cstdlib>
#include <utility>

#include "tessaluna/backends/raster/Bitmap.h"
#include "tessaluna/backends/raster/RasterCanvas.h"
#include "tessaluna/platform/graphics/NSColor.h"
#include "tessaluna/platform/graphics/NSGraphicsContext.h"
#include "tessaluna/platform/graphics/NSRect.h"

namespace harness {

struct PictureSize {
  int width = 0, height = 0;  // points
  double scale = 1;
};

template <class Draw>
tessaluna::backend::raster::Bitmap pixelsOf(PictureSize size, Draw draw) {
  auto bitmap = tessaluna::backend::raster::Bitmap::make(static_cast<int>(size.width * size.scale),
                                                         static_cast<int>(size.height * size.scale));
  if (!bitmap) std::abort();
  {
    tessaluna::backend::raster::RasterCanvas canvas(*bitmap, {.scale = size.scale});
    const tessaluna::platform::CanvasScope scope(canvas);
    draw();
  }
  return std::move(*bitmap);
}

// The same on an opaque white ground.
template <class Draw>
tessaluna::backend::raster::Bitmap pixelsOnWhite(PictureSize size, Draw draw) {
  return pixelsOf(size, [&] {
    tessaluna::platform::NSColor::whiteColor()->setFill();
    tessaluna::platform::NSRectFill({0, 0, double(size.width), double(size.height)});
    draw();
  });
}

inline bool arePixelsEqual(const tessaluna::backend::raster::Bitmap& a, const tessaluna::backend::raster::Bitmap& b) {
  if (a.width() != b.width() || a.height() != b.height()) return false;
  for (int y = 0; y < a.height(); ++y)
    for (int x = 0; x < a.width(); ++x)
      if (a.pixel(x, y) != b.pixel(x, y)) return false;
  return true;
}

inline int alphaOf(std::uint32_t pixel) { return static_cast<int>(pixel >> 24); }

}  // namespace harness
