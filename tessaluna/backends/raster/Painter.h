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

// What is painted on: exactly one of the three is set. A tint is painted with one color, of which only the alpha matters.
struct Surface {
  Bitmap* bitmap = nullptr;
  Layer* layer = nullptr;
  TintLayer* tint = nullptr;

  // Makes room for a box in a layer; the part for which there is room becomes its content.
  bool include(const PixelRect& box) const {
    if (bitmap) return true;
    return layer ? layer->include(box) : tint->include(box);
  }
  const PixelRect& content() const { return layer ? layer->content() : tint->content(); }
};

// What is painted: one color, whose alpha includes the state's, or the colors of a gradient, an image or a layer.
struct Source {
  Float4 color{};
  RowSource* rows = nullptr;
  const Layer* layer = nullptr;
  float alpha = 1;  // the state's; unused for one color

  bool isUniform() const { return !rows && !layer; }
};

struct Painting {
  Surface surface;
  Source source;
  BlendMode mode = BlendMode::Normal;
  const Clip& clip;
};

// A sink of a coverage buffer. Coverage must arrive row by row from the top, within the clip's box and the shape's.
class Painter {
 public:
  struct Memory {
    WorkBuffer<float> coverage, clip;
    WorkBuffer<Float4> source, destination;
    InkRow inks;
  };

  // Paints a shape that lies in `shapeBox`.
  Painter(const Painting& painting, const PixelRect& shapeBox, Memory& memory);

  // The box in which coverage matters; empty when nothing will be painted.
  const PixelRect& box() const { return box_; }

  void uniform(int x, int y, int count, float winding);
  void varied(int x, int y, int count, const float* windings);
  // Must be called once, after the last row.
  void finish();

 private:
  void goToRow(int y);
  void paintRow();
  void blend(int left, int right);
  void writeColors(int left, int right);

  const Painting& painting_;
  Memory& memory_;
  PixelRect box_;
  bool isUnbounded_ = false;
  // These paint onto a bitmap with the normal operator, after the coverage has been multiplied by the clip.
  std::optional<ColorPainter> color_;
  std::optional<RowPainter> rows_;
  int row_ = 0, left_ = 0, right_ = 0;  // columns of this row that have coverage
  float* coverage_ = nullptr;           // of the whole row of the box
};

}  // namespace tessaluna::backend::raster
