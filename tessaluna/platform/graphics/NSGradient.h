// Colors that pass into each other along an axis.
#pragma once

#include <span>
#include <vector>

#include "tessaluna/platform/backend/Canvas.h"
#include "tessaluna/platform/foundation/NSObject.h"
#include "tessaluna/platform/graphics/Forward.h"

namespace tessaluna::platform {

class NSGradient : public NSObject {
 public:
  static const ClassInfo staticClassInfo;
  const ClassInfo& classInfo() const override { return staticClassInfo; }

  struct Stop {
    Ref<NSColor> color;
    CGFloat location = 0;
  };

  // One location from 0 to 1 for each color, ascending; fewer locations or colors than of the other are left out. The
  // color space is a name: components go to the pixels unchanged.
  NSGradient(std::span<const Ref<NSColor>> colors, std::span<const CGFloat> locations, const Ref<NSColorSpace>& space);
  static Ref<NSGradient> initWithColorsAndLocations(std::span<const Stop> stops);

  // Fills the path across its bounds. The angle is in degrees, counterclockwise from left to right: at 90 location 0 lies
  // at the bottom of the bounds and location 1 at the top. At a slant the axis is as long as it takes for the corners
  // to be reached. Nothing for an empty path.
  void drawInBezierPath(const NSBezierPath& path, CGFloat angle) const;

 private:
  std::vector<backend::GradientStop> stops_;
};

}  // namespace tessaluna::platform
