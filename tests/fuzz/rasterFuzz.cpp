// Calls the raster canvas with anything: paths, widths, dashes, clips, layers, shadows, gradients, pictures and transforms
// with any numbers. The canvas must finish, paint only valid pixels, and still work afterwards.
#include <cstdio>
#include <cstdlib>
#include <vector>

#include "tessaluna/backends/raster/Bitmap.h"
#include "tessaluna/backends/raster/RasterCanvas.h"
#include "tests/fuzz/FuzzInput.h"

namespace {

using namespace tessaluna::backend;
using fuzz::FuzzInput;
using tessaluna::backend::raster::Bitmap;
using tessaluna::backend::raster::RasterCanvas;

// More would only repeat the same and take longer.
constexpr int maxOperations = 48, maxSegments = 24;
constexpr int width = 48, height = 40;

CGPoint readPoint(FuzzInput& in) {
  const double x = in.number();
  return {x, in.number()};
}

CGRect readRect(FuzzInput& in) {
  const CGPoint origin = readPoint(in);
  const CGPoint size = readPoint(in);
  return {origin.x, origin.y, size.x, size.y};
}

Color readColor(FuzzInput& in) {
  const auto channel = [&] { return in.flag() ? in.byte() / 255.0 : in.number(); };
  Color color;
  color.red = channel();
  color.green = channel();
  color.blue = channel();
  color.alpha = channel();
  return color;
}

FillRule readRule(FuzzInput& in) { return in.flag() ? FillRule::EvenOdd : FillRule::NonZero; }

Path readPath(FuzzInput& in) {
  switch (in.below(8)) {
    case 0: return Path::rect(readRect(in));
    case 1: return Path::oval(readRect(in));
    case 2: {
      const CGRect rect = readRect(in);
      const CGPoint radii = readPoint(in);
      return Path::roundedRect(rect, {radii.x, radii.y});
    }
    default: break;
  }
  Path path;
  path.moveTo(readPoint(in));
  for (unsigned left = in.below(maxSegments); left > 0; --left) {
    switch (in.below(8)) {
      case 0: path.moveTo(readPoint(in)); break;
      case 1: path.close(); break;
      case 2:
      case 3:
      case 4: path.lineTo(readPoint(in)); break;
      default: {
        const CGPoint to = readPoint(in), control1 = readPoint(in);
        path.curveTo(to, control1, readPoint(in));
      }
    }
  }
  return path;
}

CGAffineTransform readTransform(FuzzInput& in) {
  CGAffineTransform t;
  for (double* v : {&t.a, &t.b, &t.c, &t.d, &t.tx, &t.ty}) *v = in.number();
  return t;
}

void stroke(RasterCanvas& canvas, FuzzInput& in) {
  const Path path = readPath(in);
  std::vector<double> dash(in.below(5));
  for (double& length : dash) length = in.number();
  StrokeStyle style{.width = in.number(), .cap = LineCap(in.below(3)), .join = LineJoin(in.below(3))};
  style.miterLimit = in.number();
  style.dash = dash;
  style.dashPhase = in.number();
  canvas.strokePath(path, style);
}

void fillGradient(RasterCanvas& canvas, FuzzInput& in) {
  const Path path = readPath(in);
  std::vector<GradientStop> stops(in.below(5));
  for (GradientStop& stop : stops) {
    stop.location = in.number();
    stop.color = readColor(in);
  }
  const FillRule rule = readRule(in);
  const CGPoint start = readPoint(in), end = readPoint(in);
  canvas.fillGradient(path, rule, {.stops = stops, .start = start, .end = end});
}

void drawImage(RasterCanvas& canvas, FuzzInput& in) {
  ImagePixels image{.width = int(in.below(4)), .height = int(in.below(4)), .argb = {}};
  image.argb.assign(std::size_t(image.width) * std::size_t(image.height), 0x80402010);
  const CGRect source = readRect(in);
  canvas.drawImage(image, source, readRect(in));
}

BlendMode readMode(FuzzInput& in) {
  constexpr BlendMode modes[] = {BlendMode::Normal,          BlendMode::Clear,         BlendMode::Copy,
                                 BlendMode::SourceIn,        BlendMode::SourceOut,     BlendMode::SourceAtop,
                                 BlendMode::DestinationOver, BlendMode::DestinationIn, BlendMode::DestinationOut,
                                 BlendMode::DestinationAtop, BlendMode::Xor,           BlendMode::PlusLighter};
  return modes[in.below(std::size(modes))];
}

void operate(RasterCanvas& canvas, FuzzInput& in) {
  switch (in.below(16)) {
    case 0: return canvas.saveState();
    case 1: return canvas.restoreState();
    case 2: return canvas.concat(readTransform(in));
    case 3: return canvas.clipRect(readRect(in));
    case 4: {
      const Path path = readPath(in);
      return canvas.clipPath(path, readRule(in));
    }
    case 5: return canvas.setFillColor(readColor(in));
    case 6: return canvas.setStrokeColor(readColor(in));
    case 7: {
      const CGPoint offset = readPoint(in);
      Shadow shadow{{offset.x, offset.y}, in.number(), std::nullopt};
      if (in.flag()) shadow.color = readColor(in);
      return canvas.setShadow(shadow);
    }
    case 8: return canvas.setAlpha(in.number());
    case 9: return canvas.setBlendMode(readMode(in));
    case 10: return canvas.beginTransparencyLayer();
    case 11: return canvas.endTransparencyLayer();
    case 12: return stroke(canvas, in);
    case 13: return fillGradient(canvas, in);
    case 14: return drawImage(canvas, in);
    default: {
      const Path path = readPath(in);
      return canvas.fillPath(path, readRule(in));
    }
  }
}

[[noreturn]] void fail(const char* what, int x, int y, std::uint32_t pixel) {
  std::fprintf(stderr, "rasterFuzz: %s: pixel %d, %d is %08x\n", what, x, y, unsigned(pixel));
  std::abort();
}

// No channel of a premultiplied pixel is larger than its alpha, except for rounding.
void checkPixels(const Bitmap& bitmap) {
  for (int y = 0; y < bitmap.height(); ++y) {
    for (int x = 0; x < bitmap.width(); ++x) {
      const std::uint32_t p = bitmap.pixel(x, y), maxChannel = (p >> 24) + 1;
      if ((p >> 16 & 255) > maxChannel || (p >> 8 & 255) > maxChannel || (p & 255) > maxChannel)
        fail("a color exceeds its alpha", x, y, p);
    }
  }
}

// The same canvas paints as if nothing had happened.
void checkStillPaints(RasterCanvas& canvas, Bitmap& bitmap) {
  canvas.begin(bitmap);
  canvas.fillPath(Path::rect({0, 0, width, height}), FillRule::NonZero);
  canvas.setFillColor({1, 1, 1, 1});
  canvas.fillPath(Path::oval({4, 4, width - 8, height - 8}), FillRule::NonZero);
  const auto expect = [&](int x, int y, std::uint32_t pixel) {
    if (bitmap.pixel(x, y) != pixel) fail("the canvas no longer paints", x, y, bitmap.pixel(x, y));
  };
  expect(0, 0, 0xff000000);
  expect(width - 1, height - 1, 0xff000000);
  expect(width / 2, height / 2, 0xffffffff);
  expect(6, height / 2, 0xffffffff);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  FuzzInput in({data, size});
  auto bitmap = Bitmap::make(width, height);
  const double scale = in.flag() ? 1 : in.number();
  RasterCanvas canvas(*bitmap, {.scale = scale});
  for (int i = 0; i < maxOperations && !in.isAtEnd(); ++i) operate(canvas, in);
  checkPixels(*bitmap);
  checkStillPaints(canvas, *bitmap);
  return 0;
}
