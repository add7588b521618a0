// The part of a picture that painting may change. A rectangle on whole pixels is kept as such and costs
// nothing; other upright rectangles by their edges, all else as coverage within the box.
#pragma once

#include <memory>
#include <vector>

#include "tessaluna/backends/raster/CoverageBuffer.h"

namespace tessaluna::backend::raster {

struct ClipMask {
  PixelRect box;
  float* values = nullptr;  // row by row, those of the box
  WorkBuffer<float> memory;
  int passedBy = 0;  // times that another one was taken while nobody held this one

  const float* row(int y) const { return values + std::size_t(y - box.top) * std::size_t(box.width()); }
  float* row(int y) { return values + std::size_t(y - box.top) * std::size_t(box.width()); }
};

// Hands out masks, again those that no clip holds any more.
class ClipMaskPool {
 public:
  // Its values are undefined. Null when memory is short.
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
  // With a shape; the box is the part of it that lies in the clip's box.
  void intersectShape(const CoverageBuffer::Shape& shape, const PixelRect& shapeBox, CoverageBuffer& buffer,
                      ClipMaskPool& pool);
  void makeEmpty() { *this = {}; }

  // Lessens the coverage of `count` pixels inside the box.
  void multiply(int x, int y, int count, float* coverage) const;
};

}  // namespace tessaluna::backend::raster
