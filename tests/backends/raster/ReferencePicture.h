// A picture of what a drawing must look like, painted slowly and in doubles, and the comparison of a bitmap with it.
#pragma once

#include <functional>
#include <string>

#include "tessaluna/backends/raster/Bitmap.h"
#include "tessaluna/backends/raster/RasterCanvas.h"
#include "tests/backends/raster/Region.h"

namespace tessaluna::backend::raster::test {

struct Channels {
  double red = 0, green = 0, blue = 0, alpha = 0;  // premultiplied
};

struct PaintStyle {
  BlendMode mode = BlendMode::Normal;
  double alpha = 1;
  const Coverage* clip = nullptr;
};

// A picture of `points` by `points` at a device scale, and what has been painted on it.
class ReferencePicture {
 public:
  ReferencePicture(double points, double scale);

  // From base space to device pixels.
  CGAffineTransform toDevice() const;
  Coverage fill(const Path& path, FillRule rule = FillRule::NonZero) const;
  Coverage fill(const Path& path, FillRule rule, const CGAffineTransform& transform) const;
  Coverage stroke(const Path& path, const StrokeStyle& style, const CGAffineTransform& transform = {}) const;
  // The coverage of the shape's region, moved by the shadow's offset and blurred; the shape may reach beyond the picture.
  Coverage shadow(const std::function<Region(const CGAffineTransform&)>& region, const Shadow& shadow) const;
  Coverage everywhere() const;

  void paint(const Color& color, const Coverage& coverage, const PaintStyle& style = {});
  void paint(const std::function<Color(CGPoint)>& colorAt, const Coverage& coverage, const PaintStyle& style = {});
  void paint(const ReferencePicture& layer, const PaintStyle& style = {});

  // Empty if the bitmap is right: within 1/255 where no painted coverage and no clip is partial, within 3/255 elsewhere.
  // Otherwise a sentence about the worst pixel.
  std::string difference(const Bitmap& bitmap) const;

  const int side;  // in pixels
  const double scale;

 private:
  Channels& at(int x, int y) { return pixels_[std::size_t(y) * std::size_t(side) + std::size_t(x)]; }
  void paintPixel(int x, int y, Channels source, double coverage, const PaintStyle& style);

  std::vector<Channels> pixels_;
  std::vector<char> isEdge_;
};

// Draws into a bitmap of that size with the canvas, and compares it with the reference.
struct Drawing {
  double points = 40;
  std::function<void(RasterCanvas&)> draw;
  std::function<void(ReferencePicture&)> expect;
};
// Fails, with the worst pixel, for each of the scales 1, 1.25, 1.5, 2 and 3 at which the two differ.
void expectRight(const Drawing& drawing);

}  // namespace tessaluna::backend::raster::test
