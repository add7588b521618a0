#include "tessaluna/platform/graphics/NSGradient.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "tessaluna/platform/graphics/CGContext.h"
#include "tessaluna/platform/graphics/NSBezierPath.h"
#include "tessaluna/platform/graphics/NSColor.h"
#include "tessaluna/platform/graphics/NSGraphicsContext.h"

namespace tessaluna::platform {

namespace {

struct Direction {
  double x, y;
};

// Exact at the quarter turns, where sine and cosine would leave a residue of 1e-17.
Direction directionAt(double degrees) {
  const double turned = std::fmod(std::fmod(degrees, 360) + 360, 360);
  if (turned == 0) return {1, 0};
  if (turned == 90) return {0, 1};
  if (turned == 180) return {-1, 0};
  if (turned == 270) return {0, -1};
  const double radians = turned * std::numbers::pi / 180;
  return {std::cos(radians), std::sin(radians)};
}

}  // namespace

const ClassInfo NSGradient::staticClassInfo{.name = "NSGradient", .base = &NSObject::staticClassInfo};

NSGradient::NSGradient(std::span<const Ref<NSColor>> colors, std::span<const CGFloat> locations, const Ref<NSColorSpace>&) {
  const std::size_t count = std::min(colors.size(), locations.size());
  stops_.reserve(count);
  for (std::size_t i = 0; i < count; ++i) stops_.push_back({locations[i], colors[i]->components()});
}

Ref<NSGradient> NSGradient::initWithColorsAndLocations(std::span<const Stop> stops) {
  std::vector<Ref<NSColor>> colors;
  std::vector<CGFloat> locations;
  for (const Stop& stop : stops) {
    colors.push_back(stop.color);
    locations.push_back(stop.location);
  }
  return make<NSGradient>(colors, locations, nullptr);
}

void NSGradient::drawInBezierPath(const NSBezierPath& path, CGFloat angle) const {
  CGContext* context = NSGraphicsContext::currentCGContextIfAny();
  if (!context || stops_.empty() || path.isEmpty()) return;
  const CGRect box = path.bounds();
  const Direction along = directionAt(angle);
  const double halfLength = (std::abs(along.x) * box.size.width + std::abs(along.y) * box.size.height) * 0.5;
  const CGPoint middle{CGRectGetMidX(box), CGRectGetMidY(box)};
  context->fillGradient(path.path(), path.fillRule(),
                        {.stops = stops_,
                         .start = {middle.x - along.x * halfLength, middle.y - along.y * halfLength},
                         .end = {middle.x + along.x * halfLength, middle.y + along.y * halfLength},
                         .angle = angle});
}

}  // namespace tessaluna::platform
