#include "tessaluna/backends/raster/OverlapResolver.h"

#include <array>
#include <bit>
#include <utility>

namespace tessaluna::backend::raster {

namespace {

// Distances, in pixels, that are too small to change coverage.
constexpr double sameHeight = 1e-5, samePlace = 1e-4;
// At most this many sides go through a strip of the least height. More sides make strips higher, so that a tangle of very
// many sides costs no more time per row than this many: sides that end or cross within a strip stay as they are, and their
// order in its middle counts.
constexpr std::size_t fewSides = 16;
constexpr double maxSidesOfRow = 60000;
// Few sides are sorted by insertion, since hardly any of them change places from strip to strip; more by comparison; even
// more by digits, where a step costs more but the number of steps does not depend on the tangle.
constexpr std::size_t sortedByInsertion = 64, sortedByComparison = 512;

constexpr double farthestRight = 1e9;  // in pixels: columns fit an int, and no box reaches that far

double leastHeight(std::size_t sides) { return sides <= fewSides ? sameHeight : double(sides) / maxSidesOfRow; }

}  // namespace

// The values to which bounds add the change of coverage from each pixel's left neighbour. What lies right of them is left
// out.
struct OverlapResolver::Pixels {
  float* rows;
  std::ptrdiff_t stride;
  int width;
  void add(CGPoint from, CGPoint to);
  void addToRow(float* values, double from, double to, float cover) const;
  void sum(int rowCount);
};

void OverlapResolver::take(const Polygons& polygons) {
  constexpr std::ptrdiff_t sides = 8;
  clearForReuse(stretches_);
  for (std::size_t i = 0; i < polygons.count(); ++i) {
    const std::span<const CGPoint> points = polygons.polygon(i);
    const CGPoint* const end = points.data() + points.size();
    const CGPoint* before = end - 1;
    for (const CGPoint* first = points.data(); first < end;) {
      const CGPoint* const next = end - first > sides ? first + sides : end;
      Double2 low{before->x, before->y}, high = low;
      for (const CGPoint* p = first; p < next; ++p) {
        const Double2 at{p->x, p->y};
        low = at < low ? at : low;
        high = at > high ? at : high;
      }
      stretches_.push_back({before, first, next, low, high, first == points.data(), next == end});
      before = next - 1;
      first = next;
    }
  }
}

void OverlapResolver::cover(const Task& task, float* values, std::ptrdiff_t stride) {
  sidesOfStrips_ = 0;
  collect(task);
  clearForReuse(bounds_);
  addRows(task.box.top, task.box.bottom, task.rule);
  const auto inBox = [&](CGPoint p) { return CGPoint{p.x - task.box.left, p.y - task.box.top}; };
  const int rows = int(task.box.bottom - task.box.top);
  Pixels pixels{values, stride, int(task.box.right - task.box.left)};
  for (int row = 0; row < rows; ++row) std::fill_n(values + row * stride, pixels.width, 0.0f);
  for (const Bound& bound : bounds_) pixels.add(inBox(bound.from), inBox(bound.to));
  pixels.sum(rows);
}

void OverlapResolver::Pixels::add(CGPoint from, CGPoint to) {
  const bool isDown = from.y < to.y;
  const float direction = isDown ? 1.0f : -1.0f;
  if (!isDown) std::swap(from, to);
  if (!(from.y < to.y) || std::min(from.x, to.x) >= width) return;
  const double slope = (to.x - from.x) / (to.y - from.y);
  if (!std::isfinite(slope)) return;  // as good as level
  int row = int(from.y);
  float* values = rows + row * stride;
  double x = from.x;
  for (double y = from.y; y < to.y; values += stride) {
    const double bottom = std::min(double(++row), to.y);
    const double next = from.x + (bottom - from.y) * slope;
    addToRow(values, x, next, direction * float(bottom - y));
    x = next;
    y = bottom;
  }
}

// Adds the part of a bound within a row.
inline void OverlapResolver::Pixels::addToRow(float* values, double from, double to, float cover) const {
  // Rounding may place a very flat side left of the box.
  const double left = std::max(std::min(from, to), 0.0);
  if (!(left < width)) return;
  const double right = std::min(std::max(std::max(from, to), left), farthestRight);
  const int first = int(left), last = int(right);
  if (first == last) {
    const float later = cover * float((left + right) * 0.5 - first);
    values[first] += cover - later;
    if (first + 1 < width) values[first + 1] += later;
    return;
  }
  // The area right of the bound in the pixels that it crosses, each minus what the pixels before it got.
  const float perPixel = cover / float(right - left), in = float(first + 1 - left);
  float level = perPixel * in, before = 0.5f * level * in;
  values[first] += before;
  for (int column = first + 1; column < std::min(last, width); ++column) {
    const float here = level + 0.5f * perPixel;
    values[column] += here - before;
    before = here;
    level += perPixel;
  }
  if (last >= width) return;
  const float here = level + (cover - level) * (1 - 0.5f * float(right - last));
  values[last] += here - before;
  if (last + 1 < width) values[last + 1] += cover - here;
}

void OverlapResolver::Pixels::sum(int rowCount) {
  for (int row = 0; row < rowCount; ++row) {
    float* const values = rows + row * stride;
    float sum = 0;
    for (int column = 0; column < width; ++column) {
      sum += values[column];
      values[column] = std::clamp(sum, 0.0f, 1.0f);  // rounding of very many sides may leave this range
    }
  }
}

void OverlapResolver::collect(const Task& task) {
  clearForReuse(sides_);
  for (std::vector<Across>* list : {&across_, &unsorted_}) clearForReuse(*list);
  clearForReuse(keys_);
  clearForReuse(leftChanges_);
  next_ = nextLeftChange_ = 0;
  leftWinding_ = 0;
  left_ = {.top = task.box.top, .bottom = task.box.bottom, .x = task.box.left, .slope = 0, .direction = 0};
  const double perPixel = 1 / task.scale;
  const DeviceRect box = task.box.scaled(perPixel).moved(-task.moved.x, -task.moved.y).grown(1e-6 * perPixel);
  const auto placed = [&task](CGPoint p) {
    return CGPoint{(p.x + task.moved.x) * task.scale, (p.y + task.moved.y) * task.scale};
  };
  LeftPart part;
  const auto continueAt = [&](CGPoint p) { part = {p.x < task.box.left, p.y}; };
  for (const Stretch& stretch : stretches_) {
    if (stretch.isFirst) continueAt(placed(*stretch.before));
    if (stretch.high[0] < box.left) {
      if (!part.isLeft) part = {true, placed(*stretch.before).y};
    } else if (stretch.low[0] > box.right || stretch.low[1] > box.bottom || stretch.high[1] < box.top) {
      if (part.isLeft) collectLeft(part.since, placed(*stretch.before).y, task.box);
      continueAt(placed(stretch.end[-1]));
    } else {
      collectStretch(stretch, task, part);
    }
    if (stretch.isLast && part.isLeft) collectLeft(part.since, placed(stretch.end[-1]).y, task.box);
  }
  std::sort(sides_.begin(), sides_.end(), [](const Side& a, const Side& b) { return a.top < b.top; });
  std::sort(leftChanges_.begin(), leftChanges_.end(), [](const LeftChange& a, const LeftChange& b) { return a.y < b.y; });
}

// Where sides lie left of the box, only the heights at which they begin and end matter.
void OverlapResolver::collectStretch(const Stretch& stretch, const Task& task, LeftPart& part) {
  const DeviceRect box = task.box;
  const CGPoint moved = task.moved;
  const double scale = task.scale;
  const auto placed = [&](CGPoint p) { return CGPoint{(p.x + moved.x) * scale, (p.y + moved.y) * scale}; };
  CGPoint from = placed(*stretch.before);
  for (const CGPoint* p = stretch.first; p < stretch.end; ++p) {
    const CGPoint to = placed(*p);
    const bool isLeft = to.x < box.left;
    if (part.isLeft != isLeft) {
      const CGPoint entry{box.left, from.y + (box.left - from.x) * (to.y - from.y) / (to.x - from.x)};
      if (isLeft) {
        collectSide(from, entry, box);
      } else {
        collectLeft(part.since, entry.y, box);
        collectSide(entry, to, box);
      }
      part = {isLeft, entry.y};
    } else if (!isLeft) {
      collectSide(from, to, box);
    }
    from = to;
  }
}

void OverlapResolver::collectLeft(double from, double to, const DeviceRect& box) {
  from = std::clamp(from, box.top, box.bottom);
  to = std::clamp(to, box.top, box.bottom);
  if (from == to) return;
  leftChanges_.push_back({from, 1});
  leftChanges_.push_back({to, -1});
}

inline void OverlapResolver::collectSide(CGPoint from, CGPoint to, const DeviceRect& box) {
  const bool isBeside =
      std::max(from.y, to.y) <= box.top || std::min(from.y, to.y) >= box.bottom || std::min(from.x, to.x) >= box.right;
  if (isBeside || from.y == to.y) return;
  const int direction = from.y < to.y ? 1 : -1;
  if (direction < 0) std::swap(from, to);
  const double slope = (to.x - from.x) / (to.y - from.y);
  if (!std::isfinite(slope)) return;  // as good as level
  // The side is cut to the rows, so that a far end does not cost the near end its precision.
  if (from.y < box.top) from = {from.x + (box.top - from.y) * slope, box.top};
  sides_.push_back({from.y, std::min(to.y, box.bottom), from.x, slope, direction});
}

void OverlapResolver::addRows(double top, double bottom, FillRule rule) {
  for (double y = top; y < bottom;) {
    const double least = std::min(leastHeight(across_.size()), bottom - y);
    const double end = goTo(y, least, bottom);
    // The height depends on the sides that go through the strip now, which are many more where a tangle begins.
    addStrip(y, end, leastHeight(across_.size()), rule);
    y = end;
  }
  endBounds(bottom);
}

// Takes the sides that go through the strip that begins at `top`. The strip ends where one of them ends or another begins,
// but its height is at least `least`.
double OverlapResolver::goTo(double top, double least, double bottom) {
  const double middle = top + least * 0.5;
  double end = bottom;
  std::size_t kept = 0;
  for (const Across& across : across_) {
    Side& side = *across.side;
    if (side.bottom > middle) {
      across_[kept++].side = &side;
      end = std::min(end, side.bottom);
    } else {
      endBound(side, top);
    }
  }
  across_.resize(kept);
  for (; next_ < sides_.size() && sides_[next_].top <= middle; ++next_) {
    Side& side = sides_[next_];
    if (side.bottom <= middle) continue;
    across_.push_back({0, 0, 0, &side});
    end = std::min(end, side.bottom);
  }
  if (next_ < sides_.size()) end = std::min(end, sides_[next_].top);
  end = passLeftChanges(middle, end);
  return end - top < least || bottom - end < sameHeight ? std::min(std::max(end, top + least), bottom) : end;
}

double OverlapResolver::passLeftChanges(double middle, double end) {
  const std::size_t count = leftChanges_.size();
  while (nextLeftChange_ < count && leftChanges_[nextLeftChange_].y <= middle) {
    leftWinding_ += leftChanges_[nextLeftChange_++].winding;
  }
  return nextLeftChange_ < count ? std::min(end, leftChanges_[nextLeftChange_].y) : end;
}

// Cuts the strip where sides cross.
void OverlapResolver::addStrip(double top, double bottom, double least, FillRule rule) {
  for (double y = top; y < bottom;) {
    place(y, bottom);
    const double end = firstCrossing(y, bottom, least);
    if (!isInOrder_) sortByMiddle(end);
    findBounds(y, rule);
    y = end;
  }
}

// Sorts the sides by their places a little below the top, since sides that have just crossed meet at the top itself.
void OverlapResolver::place(double top, double bottom) {
  sidesOfStrips_ += across_.size();
  constexpr double little = 1e-4;  // of the height: too little to change coverage, but more than rounding
  for (Across& across : across_) {
    across.above = across.side->at(top);
    across.below = across.side->at(bottom);
    across.place = across.above + (across.below - across.above) * little;
  }
  sortByPlace();
}

void OverlapResolver::sortByPlace() {
  if (across_.size() > sortedByComparison) return sortByDigits();
  if (across_.size() > sortedByInsertion) {
    std::sort(across_.begin(), across_.end(), [](const Across& a, const Across& b) { return a.place < b.place; });
    return;
  }
  // From strip to strip hardly any change places.
  Across* const all = across_.data();
  for (std::size_t i = 1; i < across_.size(); ++i) {
    if (!(all[i].place < all[i - 1].place)) continue;
    const Across across = all[i];
    std::size_t to = i;
    for (; to > 0 && across.place < all[to - 1].place; --to) all[to] = all[to - 1];
    all[to] = across;
  }
}

// Sorts from the last digit to the first. Places are in single precision, which is finer than anything visible.
void OverlapResolver::sortByDigits() {
  constexpr int digits = 3, bitsOfDigit = 11;
  constexpr std::size_t values = std::size_t(1) << bitsOfDigit;
  const std::size_t count = across_.size();
  const auto digitOf = [](std::uint32_t key, int digit) { return key >> (digit * bitsOfDigit) & (values - 1); };
  std::array<std::array<std::uint32_t, values>, digits> starts{};
  keys_.resize(2 * count);
  Key *from = keys_.data(), *to = from + count;
  for (std::size_t i = 0; i < count; ++i) {
    const auto bits = std::bit_cast<std::uint32_t>(float(across_[i].place));
    // The keys have the order of the numbers: negative numbers come before positive ones, in reverse order of their bits.
    const std::uint32_t key = bits ^ (bits >> 31 ? ~0u : 1u << 31);
    from[i] = {key, std::uint32_t(i)};
    for (int digit = 0; digit < digits; ++digit) ++starts[digit][digitOf(key, digit)];
  }
  for (int digit = 0; digit < digits; ++digit, std::swap(from, to)) {
    std::uint32_t start = 0;
    for (std::uint32_t& of : starts[digit]) start += std::exchange(of, start);
    for (std::size_t i = 0; i < count; ++i) to[starts[digit][digitOf(from[i].place, digit)]++] = from[i];
  }
  unsorted_.swap(across_);
  across_.resize(count);
  for (std::size_t i = 0; i < count; ++i) across_[i] = unsorted_[from[i].index];
}

// The height of the first crossing, which is always between two neighbours, or the bottom.
double OverlapResolver::firstCrossing(double top, double bottom, double least) {
  isInOrder_ = true;
  double first = bottom;
  for (std::size_t i = 0; i + 1 < across_.size(); ++i) {
    const Across &a = across_[i], &b = across_[i + 1];
    if (a.below <= b.below) continue;
    const double before = b.above - a.above, after = a.below - b.below;
    const double crossing = top + before / (before + after) * (bottom - top);
    if (after > samePlace && before >= samePlace && crossing - top >= least && bottom - crossing >= least) {
      first = std::min(first, crossing);
    } else {
      isInOrder_ = false;
    }
  }
  return first;
}

void OverlapResolver::sortByMiddle(double bottom) {
  for (Across& across : across_) across.place = across.above + across.side->at(bottom);
  sortByPlace();
}

void OverlapResolver::findBounds(double top, FillRule rule) {
  const int relevant = rule == FillRule::EvenOdd ? 1 : ~0;
  int winding = leftWinding_;
  bool isInside = (winding & relevant) != 0;
  setBound(left_, isInside, top);
  for (const Across& across : across_) {
    Side& side = *across.side;
    const bool was = isInside;
    winding += side.direction;
    isInside = (winding & relevant) != 0;
    setBound(side, int(isInside) - int(was), top);
  }
}

inline void OverlapResolver::setBound(Side& side, int bound, double top) {
  if (bound == side.bound) return;
  endBound(side, top);
  side.bound = bound;
  side.since = top;
}

void OverlapResolver::endBounds(double y) {
  endBound(left_, y);
  for (const Across& across : across_) endBound(*across.side, y);
}

void OverlapResolver::endBound(Side& side, double y) {
  if (side.bound == 0) return;
  const CGPoint above{side.at(side.since), side.since}, below{side.at(y), y};
  if (side.bound > 0) bounds_.push_back({above, below});
  else bounds_.push_back({below, above});
  side.bound = 0;
}

}  // namespace tessaluna::backend::raster
