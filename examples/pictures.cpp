// Draws a picture of the program's own, with a glyph in it, into pixels and into SVG. No desktop is needed.
#include <cstdio>

#include "tessaluna/backends/raster/Bitmap.h"
#include "tessaluna/backends/raster/RasterCanvas.h"
#include "tessaluna/backends/svg/SvgCanvas.h"
#include "tessaluna/platform/graphics/NSBezierPath.h"
#include "tessaluna/platform/graphics/NSColor.h"
#include "tessaluna/platform/graphics/NSGradient.h"
#include "tessaluna/platform/graphics/NSGraphicsContext.h"
#include "tessaluna/platform/graphics/NSShadow.h"
#include "tessaluna/uikit/stylekit/TessalunaStyleKit.h"

using namespace tessaluna::backend;
using namespace tessaluna::platform;
using TessalunaUIKit::TessalunaStyleKit;

void drawTile() {
  const auto tile = NSBezierPath::bezierPathWithRoundedRect({6, 6, 52, 52}, 8, 8);
  NSGraphicsContext::saveGraphicsState();
  make<NSShadow>(NSColor::grayColor(), CGSize{0, -2}, 4)->set();
  NSColor::whiteColor()->setFill();
  tile->fill();
  NSGraphicsContext::restoreGraphicsState();
  const NSGradient::Stop stops[] = {{NSColor::lightGrayColor(), 0}, {NSColor::whiteColor(), 1}};
  NSGradient::initWithColorsAndLocations(stops)->drawInBezierPath(*tile, 90);
  TessalunaStyleKit::drawPlay({18, 16, 32, 32});
}

int main() {
  auto bitmap = raster::Bitmap::make(128, 128);
  if (!bitmap) return 1;
  raster::RasterCanvas pixels(*bitmap, {.scale = 2});
  {
    CanvasScope drawing(pixels);
    drawTile();
  }
  std::fprintf(stderr, "the pixel in the middle is %08x\n", bitmap->pixel(64, 64));

  svg::SvgCanvas vectors({0, 0, 64, 64});
  {
    CanvasScope drawing(vectors);
    drawTile();
  }
  if (vectors.error()) return 1;
  std::puts(vectors.document().c_str());
}
