#include "tessaluna/platform/windows/DirtyRegion.h"

#include <cmath>
#include <utility>

namespace tessaluna::platform {

namespace {

// With more than these, redrawing what lies between two costs less than going through the views once more.
constexpr std::size_t maxRects = 8;

double area(CGRect rect) { return rect.size.width * rect.size.height; }

}  // namespace

CGRect roundedOutward(CGRect rect, double scale) {
  // An edge that is a whole pixel but for the rounding of a conversion stays where it is.
  constexpr double epsilon = 1e-6;
  const double x0 = std::floor(CGRectGetMinX(rect) * scale + epsilon), x1 = std::ceil(CGRectGetMaxX(rect) * scale - epsilon);
  const double y0 = std::floor(CGRectGetMinY(rect) * scale + epsilon), y1 = std::ceil(CGRectGetMaxY(rect) * scale - epsilon);
  return {x0 / scale, y0 / scale, (x1 - x0) / scale, (y1 - y0) / scale};
}

void DirtyRegion::add(CGRect rect, double scale) {
  if (NSIsEmptyRect(rect)) return;
  CGRect merged = roundedOutward(rect, scale);
  // A union may meet others that neither part met: continue until none does.
  for (std::size_t i = 0; i < rects_.size();) {
    if (!NSIntersectsRect(rects_[i], merged)) {
      ++i;
      continue;
    }
    merged = NSUnionRect(rects_[i], merged);
    rects_[i] = rects_.back();
    rects_.pop_back();
    i = 0;
  }
  rects_.push_back(merged);
  if (rects_.size() <= maxRects) return;

  std::pair<std::size_t, std::size_t> cheapest{0, 1};
  double leastWaste = HUGE_VAL;
  for (std::size_t i = 0; i < rects_.size(); ++i) {
    for (std::size_t j = i + 1; j < rects_.size(); ++j) {
      const double waste = area(NSUnionRect(rects_[i], rects_[j])) - area(rects_[i]) - area(rects_[j]);
      if (waste >= leastWaste) continue;
      leastWaste = waste;
      cheapest = {i, j};
    }
  }
  // It meets both, and so takes their place.
  add(NSUnionRect(rects_[cheapest.first], rects_[cheapest.second]), scale);
}

std::vector<CGRect> DirtyRegion::take(CGRect area, double scale) {
  const CGRect pixels = roundedOutward(area, scale);
  std::vector<CGRect> result;
  for (const CGRect& rect : std::exchange(rects_, {})) {
    const CGRect visible = NSIntersectionRect(rect, pixels);
    if (!NSIsEmptyRect(visible)) result.push_back(visible);
  }
  return result;
}

}  // namespace tessaluna::platform
