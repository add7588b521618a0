// What of a window is to be redrawn: a few rectangles that do not touch, each in whole device pixels, so that a view that
// was marked as a whole lies in one of them as a whole.
#pragma once

#include <vector>

#include "tessaluna/platform/foundation/Geometry.h"

namespace tessaluna::platform {

// The device pixels that a rectangle of base space touches.
CGRect roundedOutward(CGRect rect, double scale);

class DirtyRegion {
 public:
  // Adds a rectangle of base space, rounded outward to the device pixels of the scale.
  void add(CGRect rect, double scale);
  bool isEmpty() const { return rects_.empty(); }
  void clear() { rects_.clear(); }
  // The rectangles, cut to the device pixels that the window's area touches; the region is empty afterwards.
  std::vector<CGRect> take(CGRect area, double scale);

 private:
  std::vector<CGRect> rects_;
};

}  // namespace tessaluna::platform
