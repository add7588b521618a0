// Paints a source onto a bitmap or a layer, within its coverage and the clip.
#pragma once

#include "tessaluna/backends/raster/Bitmap.h"
#include "tessaluna/backends/raster/Blend.h"
#include "tessaluna/backends/raster/Clip.h"
#include "tessaluna/backends/raster/ColorPainter.h"
#include "tessaluna/backends/raster/Layer.h"
#include "tessaluna/backends/raster/RowPainter.h"
#include "tessaluna/backends/raster/RowSource.h"

namespace tessaluna::backend::raster {

// What is painted on: either of the two is set.
struct Surface {
  Bitmap* bitmap = nullptr;
  Layer* layer = nullptr;
};

// What is painted: one color, whose alpha includes the state's, or the colors of a gradient, an image or a layer.
struct Source {
  Float4 color{};
  RowSource* rows = nullptr;
  float alpha = 1;  // the state's; unused for one color

  bool isUniform() const { return !rows; }
};

struct Painting {
  Surface surface;
  Source source;
  BlendMode mode = BlendMode::Normal;
  const Clip& clip;
};

// A sink of a coverage buffer. Coverage must lie within the clip's box and the shape's.
class Painter {
 public:
  struct Memory {
    WorkBuffer<float> coverage, clip;
    Plane shape;  // its coverage, if the operator is unbounded
    WorkBuffer<Float4> source, destination;
    InkRow inks;
  };

  // Paints a shape that lies in `shapeBox`.
  Painter(const Painting& painting, const PixelRect& shapeBox, Memory& memory);

  // The box in which coverage matters; empty when nothing will be painted.
  const PixelRect& box() const { return box_; }

  void uniform(int x, int y, int count, float winding) { uniformRows({x, y, x + count, y + 1}, winding); }
  void varied(int x, int y, int count, const float* windings) { variedRows({x, y, x + count, y + 1}, windings); }
  void uniformRows(const PixelRect& box, float winding);
  void variedRows(const PixelRect& box, const float* windings);
  // Must be called once, after all coverage.
  void finish();

 private:
  template <class WriteCoverage>
  void paintRows(const PixelRect& box, WriteCoverage write);
  void paintUnboundedRow(int y);
  void blend(int x, int y, int count, const float* clip);
  void writeColors(int x, int y, int count);

  const Painting& painting_;
  Memory& memory_;
  const PixelRect shape_;
  PixelRect box_;
  const bool isUnbounded_;
  // These paint onto a bitmap with the normal operator, after the coverage has been multiplied by the clip.
  std::optional<ColorPainter> color_;
  std::optional<RowPainter> rows_;
  float* coverage_ = nullptr;  // of the row that is being painted
};

}  // namespace tessaluna::backend::raster
