// A user of the installed library: draws a glyph into a bitmap and looks at the pixels.
#include <cstdint>
#include <cstdio>

#include "tessaluna/backends/raster/Bitmap.h"
#include "tessaluna/backends/raster/RasterCanvas.h"
#include "tessaluna/platform/graphics/NSGraphicsContext.h"
#include "tessaluna/uikit/stylekit/TessalunaStyleKit.h"

using namespace TessalunaUIKit;

int main() {
  auto bitmap = tessaluna::backend::raster::Bitmap::make(32, 32);
  if (!bitmap) return 1;
  {
    tessaluna::backend::raster::RasterCanvas canvas(*bitmap);
    const tessaluna::platform::CanvasScope scope(canvas);
    TessalunaStyleKit::drawPlay();
  }
  // The triangle points to the right: its base fills the left edge, and the corners on the right stay empty.
  const auto alpha = [&](int x, int y) { return bitmap->pixel(x, y) >> 24; };
  const bool isTriangle = alpha(2, 16) == 255 && alpha(10, 16) == 255 && alpha(30, 1) == 0 && alpha(30, 30) == 0;
  if (!isTriangle) std::fprintf(stderr, "drawPlay did not draw its triangle\n");
  return isTriangle ? 0 : 1;
}
