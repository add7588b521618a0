// Draws a glyph into pixels in memory and shows the coverage of every pixel as a letter.
#include <cstdio>

#include "tessaluna/backends/raster/Bitmap.h"
#include "tessaluna/backends/raster/RasterCanvas.h"
#include "tessaluna/platform/graphics/NSGraphicsContext.h"
#include "tessaluna/uikit/stylekit/TessalunaStyleKit.h"

using TessalunaUIKit::TessalunaStyleKit;

int main() {
  auto bitmap = tessaluna::backend::raster::Bitmap::make(32, 32);
  if (!bitmap) return 1;
  tessaluna::backend::raster::RasterCanvas canvas(*bitmap, {.scale = 2});  // two pixels per point
  tessaluna::platform::CanvasScope drawing(canvas);
  TessalunaStyleKit::drawLeftArrow({2, 2, 12, 12});

  for (int y = 0; y < bitmap->height(); ++y) {
    for (int x = 0; x < bitmap->width(); ++x) std::putchar(" .:+*%#@"[bitmap->pixel(x, y) >> 29]);
    std::putchar('\n');
  }
}
