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

double leastHeight(std::size_t sides) { return sides <= fewSides ? sameHeight : double(sides) / maxSidesOfRow; }

}  // namespace

void OverlapResolver::begin() {
  sides_.clear();
  across_.clear();
  bounds_.clear();
  next_ = 0;
  sidesOfStrips_ = 0;
}

void OverlapResolver::add(CGPoint above, CGPoint below, int direction) {
  const double slope = (below.x - above.x) / (below.y - above.y);
  if (!std::isfinite(slope)) return;  // as good as level
  sides_.push_back({above.y, below.y, above.x, slope, direction});
}

std::span<const OverlapResolver::Bound> OverlapResolver::resolve(int winding, int relevant) {
  winding_ = winding;
  relevant_ = relevant;
  std::sort(sides_.begin(), sides_.end(), [](const Side& a, const Side& b) { return a.top < b.top; });
  for (double y = 0; y < 1;) {
    const double end = goTo(y, std::min(leastHeight(across_.size()), 1 - y));
    // The height depends on the sides that go through the strip now, which are many more where a tangle begins.
    addStrip(y, end, leastHeight(across_.size()));
    y = end;
  }
  for (const Across& across : across_) endBound(*across.side, 1);
  return bounds_;
}

// Takes the sides that go through the strip that begins at `top`. The strip ends where one of them ends or another begins,
// but its height is at least `least`.
double OverlapResolver::goTo(double top, double least) {
  constexpr double bottom = 1;
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
  return end - top < least || bottom - end < sameHeight ? std::min(std::max(end, top + least), bottom) : end;
}

// Cuts the strip where sides cross.
void OverlapResolver::addStrip(double top, double bottom, double least) {
  for (double y = top; y < bottom;) {
    place(y, bottom);
    const double end = firstCrossing(y, bottom, least);
    if (!isInOrder_) sortByMiddle(end);
    findBounds(y);
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

void OverlapResolver::findBounds(double top) {
  int winding = winding_;
  bool isInside = (winding & relevant_) != 0;
  for (const Across& across : across_) {
    Side& side = *across.side;
    const bool was = isInside;
    winding += side.direction;
    isInside = (winding & relevant_) != 0;
    setBound(side, int(isInside) - int(was), top);
  }
}

inline void OverlapResolver::setBound(Side& side, int bound, double top) {
  if (bound == side.bound) return;
  endBound(side, top);
  side.bound = bound;
  side.since = top;
}

void OverlapResolver::endBound(Side& side, double y) {
  if (side.bound == 0) return;
  const CGPoint above{side.at(side.since), side.since}, below{side.at(y), y};
  if (side.bound > 0) bounds_.push_back({above, below});
  else bounds_.push_back({below, above});
  side.bound = 0;
}

}  // namespace tessaluna::backend::raster
