// The part of a picture that painting may change. A rectangle on whole pixels is kept as a box and costs nothing; other
// upright rectangles are kept as edges, and all other shapes as coverage within the box.
#pragma once

#include <memory>
#include <vector>

#include "tessaluna/backends/raster/CoverageBuffer.h"

namespace tessaluna::backend::raster {

struct ClipMask {
  PixelRect box;
  float* values = nullptr;  // row by row, those of the box
  WorkBuffer<float> memory;
  int passedBy = 0;  // how often another mask was taken while nobody held this one

  const float* row(int y) const { return values + std::size_t(y - box.top) * std::size_t(box.width()); }
  float* row(int y) { return values + std::size_t(y - box.top) * std::size_t(box.width()); }
};

// Hands out masks, and reuses those that no clip holds any more.
class ClipMaskPool {
 public:
  // The mask's values are undefined. Null when memory is short.
  std::shared_ptr<ClipMask> take(const PixelRect& box);

 private:
  static constexpr int maxPassedBy = 1000;
  std::vector<std::shared_ptr<ClipMask>> masks_;
};

struct Clip {
  PixelRect box;                              // nothing outside is painted
  std::optional<DeviceRect> edges = {};       // pixels are covered as far as they lie within these
  std::shared_ptr<const ClipMask> mask = {};  // contains the box

  // True where every pixel of the box may be painted fully.
  bool isPlain() const { return !edges && !mask; }

  void intersectRect(const DeviceRect& rect);
  // `shapeBox` is the part of the shape's box that lies in the clip's box.
  void intersectShape(const CoverageBuffer::Shape& shape, const PixelRect& shapeBox, CoverageBuffer& buffer,
                      ClipMaskPool& pool);
  void makeEmpty() { *this = {}; }

  // Multiplies the coverage of `count` pixels inside the box by the clip.
  void multiply(int x, int y, int count, float* coverage) const;
};

}  // namespace tessaluna::backend::raster
