#include "backends/raster/OverlapResolver.h"

namespace backend::raster {

namespace {

// Distances, in pixels, that no coverage shows.
constexpr double sameHeight = 1e-5, samePlace = 1e-4;
// Of a row. Where more sides end and cross than strips may be made, these stay as they are and the order in
// their middle counts; so a tangle of very many sides costs time in proportion to their number.
constexpr int mostStrips = 192, fewestStrips = 4, mostSidesOfAllStrips = 60000;
constexpr int deepestSplit = 12;
constexpr std::size_t fewSides = 64;

}  // namespace

void OverlapResolver::collect(const Task& task) {
  clearForReuse(sides_);
  clearForReuse(across_);
  next_ = 0;
  const DeviceRect& box = task.box;
  const auto place = [&](CGPoint p) {
    return CGPoint{(p.x + task.moved.x) * task.scale, (p.y + task.moved.y) * task.scale};
  };
  for (std::size_t i = 0; i < task.polygons.count(); ++i) {
    const std::span<const CGPoint> points = task.polygons.polygon(i);
    // Of a stretch left of the box only the heights matter where it begins and ends.
    CGPoint from = place(points.back());
    CGPoint last = from.x < box.left ? CGPoint{box.left, from.y} : from;
    for (const CGPoint& point : points) {
      const CGPoint to = place(point);
      if (from.x < box.left && to.x < box.left) {
        from = to;
        continue;
      }
      if (from.x < box.left) {
        const CGPoint in{box.left, from.y + (box.left - from.x) * (to.y - from.y) / (to.x - from.x)};
        collectSide(last, in, box);
        last = in;
      }
      from = to;
      if (to.x < box.left) {
        const CGPoint out{box.left, last.y + (box.left - last.x) * (to.y - last.y) / (to.x - last.x)};
        collectSide(last, out, box);
        last = out;
      } else {
        collectSide(last, to, box);
        last = to;
      }
    }
    if (from.x < box.left) collectSide(last, {box.left, from.y}, box);
  }
  std::sort(sides_.begin(), sides_.end(), [](const Side& a, const Side& b) { return a.top < b.top; });
}

void OverlapResolver::collectSide(CGPoint from, CGPoint to, const DeviceRect& box) {
  const int direction = from.y < to.y ? 1 : -1;
  if (direction < 0) std::swap(from, to);
  if (!(from.y < to.y) || to.y <= box.top || from.y >= box.bottom || std::min(from.x, to.x) >= box.right) return;
  const double slope = (to.x - from.x) / (to.y - from.y);
  if (!std::isfinite(slope)) return;
  // Cut to the rows, so that a far end does not cost the near one its precision.
  if (from.y < box.top) from = {from.x + (box.top - from.y) * slope, box.top};
  sides_.push_back({from.y, std::min(to.y, box.bottom), from.x, slope, direction});
}

void OverlapResolver::addRow(double top, double bottom, FillRule rule) {
  const bool isEmpty = across_.empty() && (next_ == sides_.size() || sides_[next_].top >= bottom);
  if (isEmpty) return;

  clearForReuse(cuts_);
  std::size_t count = across_.size();
  for (const Side* side : across_) {
    if (side->bottom < bottom) cuts_.push_back(side->bottom);
  }
  for (std::size_t i = next_; i < sides_.size() && sides_[i].top < bottom; ++i, ++count) {
    if (sides_[i].top > top) cuts_.push_back(sides_[i].top);
    if (sides_[i].bottom < bottom) cuts_.push_back(sides_[i].bottom);
  }
  const int strips = std::clamp(mostSidesOfAllStrips / int(count), fewestStrips, mostStrips);
  stripsLeft_ = strips - int(std::min(cuts_.size(), std::size_t(strips)));
  if (stripsLeft_ == 0) {
    cuts_.clear();
    for (int i = 1; i < strips; ++i) cuts_.push_back(top + (bottom - top) * i / strips);
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
  goToStrip(top, bottom);
  if (depth < deepestSplit && stripsLeft_ > 0 && bottom - top > sameHeight) {
    if (const std::optional<double> crossing = firstCrossing(top, bottom)) {
      --stripsLeft_;
      addStrip(top, *crossing, rule, depth + 1);
      addStrip(*crossing, bottom, rule, depth + 1);
      return;
    }
  }
  // Those that are in order at the bottom as well are in order in the middle.
  const auto isOutOfOrder = [](const Side* a, const Side* b) { return a->below > b->below; };
  if (std::adjacent_find(across_.begin(), across_.end(), isOutOfOrder) != across_.end()) {
    for (Side* side : across_) side->place = side->above + side->below;
    sortByPlace();
  }
  const auto isInside = [rule](int winding) {
    return rule == FillRule::EvenOdd ? winding % 2 != 0 : winding != 0;
  };
  int winding = 0;
  for (Side* side : across_) {
    const bool was = isInside(winding);
    winding += side->direction;
    const bool is = isInside(winding);
    const int bound = int(is) - int(was);
    if (bound == side->bound) continue;
    endBound(*side, top);
    side->bound = bound;
    side->since = top;
  }
}

// Brings the sides that go through the middle of a strip into their order a little below its top, since at the top itself
// sides meet that have just crossed.
void OverlapResolver::goToStrip(double top, double bottom) {
  constexpr double little = 1e-4;
  const double middle = (top + bottom) * 0.5;
  std::size_t kept = 0;
  for (Side* side : across_) {
    if (side->bottom > middle) across_[kept++] = side;
    else endBound(*side, top);
  }
  across_.resize(kept);
  for (; next_ < sides_.size() && sides_[next_].top <= middle; ++next_) {
    if (sides_[next_].bottom > middle) across_.push_back(&sides_[next_]);
  }
  for (Side* side : across_) {
    side->above = side->at(top);
    side->below = side->at(bottom);
    side->place = side->above + (side->below - side->above) * little;
  }
  sortByPlace();
}

// Of two sides that are neighbours at the top.
std::optional<double> OverlapResolver::firstCrossing(double top, double bottom) const {
  for (std::size_t i = 0; i + 1 < across_.size(); ++i) {
    const Side &a = *across_[i], &b = *across_[i + 1];
    if (a.below <= b.below + samePlace || b.above - a.above < samePlace) continue;
    const double t = (b.above - a.above) / ((b.above - a.above) + (a.below - b.below));
    const double crossing = top + t * (bottom - top);
    if (crossing - top >= sameHeight && bottom - crossing >= sameHeight) return crossing;
  }
  return std::nullopt;
}

void OverlapResolver::sortByPlace() {
  if (across_.size() > fewSides) return sortManyByPlace();
  const auto isLeft = [](const Side* a, const Side* b) { return a->place < b->place; };
  // From strip to strip hardly any change places.
  for (std::size_t i = 1; i < across_.size(); ++i) {
    Side* const side = across_[i];
    std::size_t to = i;
    for (; to > 0 && isLeft(side, across_[to - 1]); --to) across_[to] = across_[to - 1];
    across_[to] = side;
  }
}

// With what is compared side by side in memory.
void OverlapResolver::sortManyByPlace() {
  clearForReuse(placed_);
  for (Side* side : across_) placed_.push_back({side->place, side});
  std::sort(placed_.begin(), placed_.end(), [](const Placed& a, const Placed& b) { return a.place < b.place; });
  for (std::size_t i = 0; i < placed_.size(); ++i) across_[i] = placed_[i].side;
}

void OverlapResolver::endBound(Side& side, double y) {
  if (side.bound == 0) return;
  const CGPoint above{side.at(side.since), side.since}, below{side.at(y), y};
  if (side.bound > 0) bounds_.push_back({above, below});
  else bounds_.push_back({below, above});
  side.bound = 0;
}

}  // namespace backend::raster
