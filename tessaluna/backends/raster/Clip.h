// The part of a picture that painting may change. A rectangle on whole pixels is kept as a box and costs nothing; other
// upright rectangles are kept as edges, and all other shapes as coverage within the box.
#pragma once

#include <memory>
#include <vector>

#include "tessaluna/backends/raster/Plane.h"

namespace tessaluna::backend::raster {

// Hands out masks of clips, and reuses those that no clip holds any more.
class ClipMaskPool {
 public:
  // All values of the mask are 0. Null when memory is short.
  std::shared_ptr<Plane> take(const PixelRect& box);

 private:
  std::vector<std::shared_ptr<Plane>> kept_;
};

struct Clip {
  PixelRect box;                           // nothing outside is painted
  std::optional<DeviceRect> edges = {};    // pixels are covered as far as they lie within these
  std::shared_ptr<const Plane> mask = {};  // contains the box

  // True where every pixel of the box may be painted fully.
  bool isPlain() const { return !edges && !mask; }

  void intersectRect(const DeviceRect& rect);
  // `shapeBox` is the part of the shape's box that lies in the clip's box.
  void intersectShape(const CoverageBuffer::Shape& shape, const PixelRect& shapeBox, CoverageBuffer& buffer,
                      ClipMaskPool& pool);
  void makeEmpty() { *this = {}; }

  // Multiplies the coverage of `count` pixels inside the box by the clip.
  void multiply(int x, int y, int count, float* coverage) const;
  // The row down to which that is the same as in row y of the box.
  int endOfRepeat(int y) const {
    if (mask) return y + 1;
    // Only the first and the last row can be cut.
    return edges && (y == box.top || y + 1 >= box.bottom - 1) ? y + 1 : box.bottom - (edges ? 1 : 0);
  }
};

}  // namespace tessaluna::backend::raster
