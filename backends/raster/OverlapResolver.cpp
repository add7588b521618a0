#include "backends/raster/OverlapResolver.h"

namespace backend::raster {

namespace {

// Distances, in pixels, that no coverage shows.
constexpr double sameHeight = 1e-5, samePlace = 1e-4;
// Of a row's strips. Where more sides end and cross in one row than that, strips stay as they are and the
// order in their middle counts.
constexpr int mostStrips = 192, deepestSplit = 12;

}  // namespace

void OverlapResolver::collect(const Task& task) {
  sides_.clear();
  active_.clear();
  next_ = 0;
  task.polygons.forEachEdge([&](CGPoint from, CGPoint to) {
    from = {from.x + task.moved.x, from.y + task.moved.y};
    to = {to.x + task.moved.x, to.y + task.moved.y};
    const int direction = from.y < to.y ? 1 : -1;
    if (direction < 0) std::swap(from, to);
    if (!(from.y < to.y) || to.y <= task.top || from.y >= task.bottom || std::min(from.x, to.x) >= task.right)
      return;
    const double slope = (to.x - from.x) / (to.y - from.y);
    if (!std::isfinite(slope)) return;
    // Cut to the rows, so that a far end does not cost the near one its precision.
    if (from.y < task.top) from = {from.x + (task.top - from.y) * slope, task.top};
    sides_.push_back({from.y, std::min(to.y, task.bottom), from.x, slope, direction});
  });
  std::sort(sides_.begin(), sides_.end(), [](const Side& a, const Side& b) { return a.top < b.top; });
}

void OverlapResolver::addRow(double top, double bottom, FillRule rule) {
  std::erase_if(active_, [&](const Side* side) { return side->bottom <= top; });
  while (next_ < sides_.size() && sides_[next_].top < bottom) active_.push_back(&sides_[next_++]);
  if (active_.empty()) return;

  cuts_.clear();
  for (const Side* side : active_) {
    if (side->top > top) cuts_.push_back(side->top);
    if (side->bottom < bottom) cuts_.push_back(side->bottom);
  }
  stripsLeft_ = mostStrips;
  if (cuts_.size() > mostStrips) {
    cuts_.clear();
    for (int i = 1; i < mostStrips; ++i) cuts_.push_back(top + (bottom - top) * i / mostStrips);
    stripsLeft_ = 0;
  }
  cuts_.push_back(bottom);
  std::sort(cuts_.begin(), cuts_.end());
  double from = top;
  for (const double cut : cuts_) {
    if (cut - from < sameHeight && cut != bottom) continue;
    addStrip(from, cut, rule, 0);
    from = cut;
  }
}

void OverlapResolver::addStrip(double top, double bottom, FillRule rule, int depth) {
  const double middle = (top + bottom) * 0.5;
  crossings_.clear();
  for (const Side* side : active_) {
    if (side->top <= middle && side->bottom > middle) {
      crossings_.push_back({side->at(top), side->at(bottom), side->direction});
    }
  }
  const bool maySplit = depth < deepestSplit && stripsLeft_ > 0 && bottom - top > sameHeight;
  if (maySplit) {
    // In their order a little below the top, since at the top itself sides meet that have just crossed.
    std::sort(crossings_.begin(), crossings_.end(), [](const Crossing& a, const Crossing& b) {
      constexpr double little = 1e-4;
      return a.top + (a.bottom - a.top) * little < b.top + (b.bottom - b.top) * little;
    });
    for (std::size_t i = 0; i + 1 < crossings_.size(); ++i) {
      const Crossing &a = crossings_[i], &b = crossings_[i + 1];
      if (a.bottom <= b.bottom + samePlace || b.top - a.top < samePlace) continue;
      const double t = (b.top - a.top) / ((b.top - a.top) + (a.bottom - b.bottom));
      const double crossing = top + t * (bottom - top);
      if (crossing - top < sameHeight || bottom - crossing < sameHeight) continue;
      --stripsLeft_;
      addStrip(top, crossing, rule, depth + 1);
      addStrip(crossing, bottom, rule, depth + 1);
      return;
    }
  }
  std::sort(crossings_.begin(), crossings_.end(),
            [](const Crossing& a, const Crossing& b) { return a.top + a.bottom < b.top + b.bottom; });
  const auto isInside = [rule](int winding) {
    return rule == FillRule::EvenOdd ? winding % 2 != 0 : winding != 0;
  };
  int winding = 0;
  for (const Crossing& crossing : crossings_) {
    const bool was = isInside(winding);
    winding += crossing.direction;
    if (isInside(winding) == was) continue;
    const CGPoint above{crossing.top, top}, below{crossing.bottom, bottom};
    if (was) bounds_.push_back({below, above});
    else bounds_.push_back({above, below});
  }
}

}  // namespace backend::raster
