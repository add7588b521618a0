#include "tessaluna/backends/raster/CoverageBuffer.h"

namespace tessaluna::backend::raster {

namespace {

// More parts in a row are put into buckets first.
constexpr std::ptrdiff_t sortedByInsertion = 64;

// The last row of something that reaches down to this height. A row that it only borders on is not touched.
int lastRowOf(double y) {
  const int row = int(y);
  return y > row ? row : row - 1;
}

}  // namespace

bool CoverageBuffer::begin(const PixelRect& box, FillRule rule) {
  box_ = box;
  left_ = box.left;
  top_ = box.top;
  width_ = box.width();
  height_ = box.height();
  rowCount_ = box.height();
  relevant_ = rule == FillRule::EvenOdd ? 1 : ~0;
  partCount_ = 1;
  mostInRow_ = maxPillars;
  pillars_.clear();
  isFull_ = false;
  const std::size_t room = std::size_t(box.width()) + 2 * blockSize;
  return starts_.prepare(std::size_t(rowCount_)) && coverage_.prepare(room) && rows_[0].prepare(room) &&
         rows_[1].prepare(room);
}

void CoverageBuffer::add(const Shape& shape, bool isWholeBox) {
  const double left = left_, top = top_;
  for (std::size_t i = 0; i < shape.polygons.count() && !isFull_; ++i) {
    leaveChain();
    if (shape.liesInBox && isWholeBox) {
      Polygons::forEachSide(shape.polygons.polygon(i), [this, left, top](CGPoint from, CGPoint to) {
        addSide({from.x - left, from.y - top}, {to.x - left, to.y - top});
      });
    } else {
      const auto place = [&](CGPoint p) {
        return CGPoint{(p.x + shape.moved.x) * shape.scale, (p.y + shape.moved.y) * shape.scale};
      };
      Polygons::forEachSide(shape.polygons.polygon(i), [&](CGPoint from, CGPoint to) { addEdge(place(from), place(to)); });
    }
  }
  isFull_ = isFull_ || !order_.prepare(2 * mostInRow_ + 2);  // parts are inserted from either end
  if (isFull_) std::fill_n(starts_.data(), rowCount_, RowStart{});
}

// Whether there is room for so many more parts and pieces.
inline bool CoverageBuffer::reserve(int count) {
  const std::uint32_t needed = partCount_ + std::uint32_t(count);
  return needed <= partRoom_ || growTo(needed);
}

bool CoverageBuffer::growTo(std::uint32_t needed) {
  isFull_ = isFull_ || (needed > maxParts && rowCount_ > 1) ||
            !parts_.prepare(2 * std::size_t(needed), partRoom_ > 0 ? partCount_ : 0);
  partRoom_ = isFull_ ? 0 : 2 * needed;
  return !isFull_;
}

inline void CoverageBuffer::follow(int direction) {
  if (direction == direction_) return;
  direction_ = direction;
  rowOfChain_ = -1;
  ++mostInRow_;
}

// What follows belongs to another chain.
inline void CoverageBuffer::leaveChain() {
  direction_ = 0;
  rowOfChain_ = -1;
}

inline void CoverageBuffer::beginPart(int row, Float4 bounds, int direction, bool isRightwards) {
  Part& part = parts_.data()[partCount_];
  RowStart& start = starts_.data()[row];
  part.bounds = bounds;
  part.next = start.first;
  part.pieces = 0;
  part.direction = direction;
  part.isRightwards = isRightwards;
  start.first = partCount_++;
}

void CoverageBuffer::extendPart(Float4 bounds, int direction, bool isRightwards) {
  Part &part = parts_.data()[partOfChain_], *piece = &parts_.data()[partCount_];
  if (part.pieces == 0) {
    piece->bounds = part.bounds;
    piece->next = 0;
    piece->isRightwards = part.isRightwards;
    part.pieces = partCount_++;
    ++piece;
  }
  piece->bounds = bounds;
  piece->next = part.pieces;
  piece->isRightwards = isRightwards;
  part.pieces = partCount_++;
  part.bounds = __builtin_shufflevector(smaller(part.bounds, bounds), larger(part.bounds, bounds), 0, 1, 6, 7);
  part.direction |= direction;
}

// Adds a piece in the row that the chain reaches next.
inline void CoverageBuffer::addPiece(int row, Float4 bounds, bool isLevel, bool isRightwards) {
  const int direction = isLevel ? 0 : direction_;
  if (row == rowOfChain_) return extendPart(bounds, direction, isRightwards);
  rowOfChain_ = row;
  partOfChain_ = partCount_;
  beginPart(row, bounds, direction, isRightwards);
}

// Adds a side, in the shape's space, as far as it is in the box.
void CoverageBuffer::addEdge(CGPoint from, CGPoint to) {
  from = {from.x - left_, from.y - top_};
  to = {to.x - left_, to.y - top_};
  const double height = height_, width = width_;
  const double slope = (to.x - from.x) / (to.y - from.y);
  if (!std::isfinite(slope)) return addLevel(from.y, from.x, to.x);  // or as good as level
  // Cut at the same places in either direction.
  const CGPoint upper = from.y < to.y ? from : to;
  const auto cut = [&](CGPoint p) {
    const double y = std::clamp(p.y, 0.0, height);
    return CGPoint{y == p.y ? p.x : upper.x + (y - upper.y) * slope, y};
  };
  const CGPoint first = cut(from), last = cut(to);
  if (first.y == last.y || (first.x >= width && last.x >= width)) return leaveChain();
  // In the order in which the chain goes through them. Right of the box there is nothing to cover.
  CGPoint at = first;
  const auto goTo = [&](CGPoint p) {
    if (at.x <= 0 && p.x <= 0) addBeside(at.y, p.y);
    else if (at.x <= width && p.x <= width) addSide(at, p);
    at = p;
  };
  const auto goToEdge = [&](double x) {
    if ((first.x < x) == (last.x < x)) return;
    mostInRow_ += 2;
    goTo({x, std::clamp(upper.y + (x - upper.x) / slope, std::min(first.y, last.y), std::max(first.y, last.y))});
  };
  goToEdge(first.x < last.x ? 0 : width);
  goToEdge(first.x < last.x ? width : 0);
  goTo(last);
}

// A side left of the box covers as much as the box's left edge.
void CoverageBuffer::addBeside(double from, double to) {
  if (from == to || !reserve(4)) return;
  const int direction = from < to ? 1 : -1;
  follow(direction);
  const double y0 = std::min(from, to), y1 = std::max(from, to);
  const int first = int(y0), last = lastRowOf(y1);
  for (int i = 0; i <= last - first; ++i) {
    const int row = direction > 0 ? first + i : last - i;
    const float top = row == first ? float(y0 - first) : 0, bottom = row == last ? float(y1 - last) : 1;
    if (top == 0 && bottom == 1) starts_.data()[row].winding += direction;
    else addPiece(row, Float4{0, top, 0, bottom}, top == bottom, false);
  }
}

// Adds a side within the box.
inline void CoverageBuffer::addSide(CGPoint from, CGPoint to) {
  if (from.y < to.y) addInside(from.x, from.y, to.x, to.y, 1);
  else if (from.y > to.y) addInside(to.x, to.y, from.x, from.y, -1);
  else addLevel(from.y, from.x, to.x);
}

// The same with the upper end first. `direction` is that of the chain.
inline void CoverageBuffer::addInside(double x0, double y0, double x1, double y1, int direction) {
  const int first = int(y0), last = lastRowOf(y1);
  follow(direction);
  if (!reserve(last - first + 3)) return;
  // Most chords of a curve are about as long as a pixel.
  const float top = float(y0 - first), bottom = float(y1 - last);
  if (first == last) {
    const float above = float(x0), below = float(x1);
    addPiece(first, Float4{std::min(above, below), top, std::max(above, below), bottom}, top == bottom, x0 < x1);
  } else if (x0 < x1) {
    addToRows<true>({x0, y0}, {x1, y1}, {first, last});
  } else {
    addToRows<false>({x0, y0}, {x1, y1}, {first, last});
  }
}

// Adds a side that goes through several rows, to the right or to the left.
template <bool isRightwards>
void CoverageBuffer::addToRows(CGPoint from, CGPoint to, Span rows) {
  const auto bounds = [](double above, double below, float top, float bottom) {
    return isRightwards ? Float4{float(above), top, float(below), bottom} : Float4{float(below), top, float(above), bottom};
  };
  const float top = float(from.y - rows.first), bottom = float(to.y - rows.last);
  const double slope = (to.x - from.x) / (to.y - from.y);
  // Rounding must not move a place beyond the side's end.
  const auto within = [&](double x) { return isRightwards ? std::min(x, to.x) : std::max(x, to.x); };
  double x = within(from.x + (rows.first + 1 - from.y) * slope);
  const Float4 highest = bounds(from.x, x, top, 1);
  if (direction_ > 0) addPiece(rows.first, highest, top == 1, isRightwards);
  if (from.x == to.x && rows.last - rows.first > minPillar && pillars_.size() < maxPillars) {
    pillars_.push_back({partCount_, rows.first + 1, rows.last});
    Part& part = parts_.data()[partCount_++];
    part = {bounds(x, x, 0, 1), 0, 0, direction_, 0};
  } else {
    for (int row = rows.first + 1; row < rows.last; ++row) {
      const double next = within(x + slope);
      beginPart(row, bounds(x, next, 0, 1), direction_, isRightwards);
      x = next;
    }
  }
  addPiece(rows.last, bounds(x, to.x, 0, bottom), bottom == 0, isRightwards);
  if (direction_ < 0) addPiece(rows.first, highest, top == 1, isRightwards);
}

// A level side covers nothing, but what it bounds begins or ends there.
void CoverageBuffer::addLevel(double y, double from, double to) {
  const double left = std::clamp(std::min(from, to), 0.0, width_), right = std::clamp(std::max(from, to), 0.0, width_);
  if (!(y > 0 && y < height_) || left == right || y == int(y)) return;
  if (!reserve(2)) return;
  ++mostInRow_;
  const int row = int(y);
  const float inRow = float(y - row);
  addPiece(row, Float4{float(left), inRow, float(right), inRow}, true, false);
}

// Where nothing but the same pillars goes through several rows, this is the row after them; their starts are used up.
int CoverageBuffer::endOfRepeat(int row) {
  RowStart* const starts = starts_.data();
  if (starts[row].first != 0 || pillars_.empty()) return row + 1;
  int end = rowCount_;
  for (const Pillar& pillar : pillars_) {
    if (pillar.top > row) end = std::min(end, pillar.top);
    if (pillar.bottom > row) end = std::min(end, pillar.bottom);
  }
  int next = row + 1;
  for (; next < end && starts[next].first == 0 && starts[next].winding == starts[row].winding; ++next) starts[next] = {};
  return next;
}

// Sorts the parts of a row from the left. Each is inserted from the nearer end.
CoverageBuffer::Order CoverageBuffer::sortParts(int row) {
  const Part* const parts = parts_.data();
  std::uint64_t *first = order_.data() + mostInRow_ + 1, *end = first;
  const auto insert = [&](std::uint32_t part) {
    const float left = parts[part].left() + 0.0f;  // not -0
    const std::uint64_t key = std::uint64_t(std::bit_cast<std::uint32_t>(left)) << 32 | part;
    if (end - first >= sortedByInsertion) [[unlikely]] {
      *end++ = key;
    } else if (key < first[(end - first) / 2]) {
      std::uint64_t* at = --first;
      for (; at[1] < key; ++at) *at = at[1];
      *at = key;
    } else {
      std::uint64_t* at = end++;
      for (; at > first && at[-1] > key; --at) *at = at[-1];
      *at = key;
    }
  };
  *end = 0;  // what the first part is compared with
  for (std::uint32_t at = starts_.data()[row].first; at != 0; at = parts[at].next) insert(at);
  for (const Pillar& pillar : pillars_) {
    if (pillar.top <= row && row < pillar.bottom) insert(pillar.part);
  }
  if (end - first > sortedByInsertion) sortMany({first, end});
  return {first, std::size_t(end - first)};
}

// Puts keys into as many buckets, from the left to the right of the box.
void CoverageBuffer::sortMany(std::span<std::uint64_t> keys) {
  const std::size_t count = keys.size();
  const double perPixel = double(count) / (width_ + 1);
  const auto bucketOf = [perPixel](std::uint64_t key) { return std::size_t(leftOf(key) * perPixel); };
  unsorted_.assign(keys.begin(), keys.end());
  bucketEnds_.assign(count, 0);
  for (const std::uint64_t key : keys) ++bucketEnds_[bucketOf(key)];
  std::uint32_t end = 0;
  for (std::uint32_t& bucket : bucketEnds_) end += std::exchange(bucket, end);
  for (const std::uint64_t key : unsorted_) keys[bucketEnds_[bucketOf(key)]++] = key;
  std::size_t first = 0;
  for (const std::uint32_t next : bucketEnds_) {
    if (next - first > 1) std::sort(keys.begin() + std::ptrdiff_t(first), keys.begin() + std::ptrdiff_t(next));
    first = next;
  }
}

// After the last row there is nothing to find: then the last row only waits to be sent.
void CoverageBuffer::findRuns(int row, Rows& rows) {
  rows.first = row;
  if (row == rowCount_) return void(rows.end = row + 1);
  rows.end = endOfRepeat(row);
  RowStart& start = starts_.data()[row];
  int winding = start.winding;
  const Order order = start.first != 0 || !pillars_.empty() ? sortParts(row) : Order{};
  start = {};
  const Part* const parts = parts_.data();
  float* const changes = rows.changes.data();
  Run *const runs = rows.runs.data(), *end = runs;
  const int relevant = relevant_;
  const float width = float(width_);
  bool inside = (winding & relevant) != 0;
  for (const std::uint64_t *at = order.data(), *const last = at + order.size(); at < last;) {
    const std::uint64_t* const from = at++;
    const Part& part = parts[std::uint32_t(*from)];
    const float left = part.left();
    if (left >= width) break;
    float right = part.right();
    const bool before = inside;
    if (at == last || leftOf(*at) > right) [[likely]] {
      winding += part.direction;
      inside = (winding & relevant) != 0;
      if (inside == before) continue;
      addBounds(part, inside ? 1 : -1, changes);
    } else {
      do right = std::max(right, parts[std::uint32_t(*at++)].right());
      while (at < last && leftOf(*at) <= right);
      const Order cluster(from, at);
      addCluster(cluster, winding, changes);
      // What reaches the row's lower edge passes; what begins and ends within the row cancels out.
      for (const std::uint64_t key : cluster) {
        const Part& passing = parts[std::uint32_t(key)];
        winding += passing.bottom() == 1 ? passing.direction : 0;
      }
      inside = (winding & relevant) != 0;
    }
    const int firstBlock = int(unsigned(int(left)) / blockSize), lastBlock = int(unsigned(int(right)) / blockSize);
    if (end > runs && firstBlock <= end[-1].last + 1) end[-1].last = std::max(end[-1].last, lastBlock);
    else *end++ = {firstBlock, lastBlock, before};
  }
  rows.runCount = std::size_t(end - runs);
  rows.isCoveredAfter = inside;
}

// Adds a bound that crosses a row.
inline void CoverageBuffer::addBound(float left, float right, float cover, float* changes) {
  const int first = int(left), last = int(right), pixels = last - first;
  float* const change = changes + first;
  const float inFirst = left - float(first);
  // The area right of the bound grows quadratically in its first and last pixel, linearly between them. Each pixel gets its
  // area minus what the pixels before it got.
  if (pixels == 0) {
    const float later = cover * ((inFirst + (right - float(first))) * 0.5f);
    change[0] += cover - later;
    change[1] += later;
    return;
  }
  const float inLast = right - float(last), perPixel = cover / (right - left);
  const float in = 1 - inFirst;
  float level = perPixel * in;
  float before = 0.5f * level * in;
  change[0] += before;
  for (int i = 1; i < pixels; ++i) {
    const float here = level + 0.5f * perPixel;
    change[i] += here - before;
    before = here;
    level += perPixel;
  }
  const float lastArea = level + (cover - level) * (1 - 0.5f * inLast);
  change[pixels] += lastArea - before;
  change[pixels + 1] += cover - lastArea;
}

inline void CoverageBuffer::addBounds(const Part& part, float sign, float* changes) {
  if (part.pieces == 0) return addBound(part.left(), part.right(), sign * (part.bottom() - part.top()), changes);
  const Part* const parts = parts_.data();
  for (std::uint32_t at = part.pieces; at != 0; at = parts[at].next)
    addBound(parts[at].left(), parts[at].right(), sign * (parts[at].bottom() - parts[at].top()), changes);
}

// Goes down the pieces of a part.
class CoverageBuffer::PiecesFromTop {
 public:
  PiecesFromTop(const Part& part, const Part* parts, float top) {
    if (part.pieces == 0) pieces_[count_++] = &part;
    for (std::uint32_t at = part.pieces; at != 0; at = parts[at].next) {
      if (parts[at].isLevel() || parts[at].bottom() <= top) continue;
      if (isOneLine_ = count_ < maxPieces; !isOneLine_) return;
      pieces_[count_++] = &parts[at];
    }
    // The last piece of a chain comes first.
    if (part.direction > 0) std::reverse(pieces_, pieces_ + count_);
    for (int i = 1; i < count_; ++i) isOneLine_ = isOneLine_ && areConnected(*pieces_[i - 1], *pieces_[i]);
  }
  // False if there are too many of them, or if they are interrupted by level pieces or by the box's edge.
  bool isOneLine() const { return isOneLine_ && count_ > 0; }
  bool isAtEnd() const { return at_ == count_; }
  float bottom() const { return pieces_[at_]->bottom(); }
  // The place at a height within the current piece.
  float at(float y) const {
    const Part& piece = *pieces_[at_];
    if (y >= piece.bottom()) return piece.below();
    return piece.above() + (piece.below() - piece.above()) * ((y - piece.top()) / (piece.bottom() - piece.top()));
  }
  float goDownTo(float y) {
    const float place = at(y);
    at_ += y >= bottom();
    return place;
  }

 private:
  static constexpr int maxPieces = 8;  // few parts have more
  static bool areConnected(const Part& upper, const Part& lower) {
    return upper.below() == lower.above() && upper.bottom() == lower.top();
  }
  const Part* pieces_[maxPieces];
  int count_ = 0, at_ = 0;
  bool isOneLine_ = true;
};

// Adds the bounds among parts whose places overlap.
void CoverageBuffer::addCluster(Order cluster, int winding, float* changes) {
  if (addUncrossed(cluster, winding, changes)) return;
  const Part* const parts = parts_.data();
  const float left = leftOf(cluster[0]);
  resolver_.begin();
  float right = left;
  for (const std::uint64_t key : cluster) {
    const Part& part = parts[std::uint32_t(key)];
    right = std::max(right, part.right());
    const auto add = [&](const Part& piece) {
      resolver_.add({piece.above(), piece.top()}, {piece.below(), piece.bottom()}, part.direction);
    };
    if (part.pieces == 0) add(part);
    for (std::uint32_t at = part.pieces; at != 0; at = parts[at].next) add(parts[at]);
  }
  for (const OverlapResolver::Bound& bound : resolver_.resolve(winding, relevant_)) {
    // Rounding may place the end of a very flat side beyond it.
    const auto within = [&](double x) { return std::clamp(float(x), left, right); };
    const float from = within(bound.from.x), to = within(bound.to.x);
    addBound(std::min(from, to), std::max(from, to), float(bound.to.y - bound.from.y), changes);
  }
  sidesSearched_ += resolver_.sidesOfStrips();
}

// The same if there are only a few parts, none of which cross.
bool CoverageBuffer::addUncrossed(Order cluster, int winding, float* changes) {
  constexpr std::size_t fewParts = 6;
  const std::size_t count = cluster.size();
  if (count > fewParts) return false;
  const auto add = [&](const Part& part, int outside) {
    const bool before = isInside(outside), after = isInside(outside + part.direction);
    if (before != after) addBounds(part, after ? 1 : -1, changes);
  };
  // Most are two that begin and end together. They may touch, and what is level is between them.
  const Part &one = parts_.data()[std::uint32_t(cluster[0])], &other = parts_.data()[std::uint32_t(cluster[1])];
  if (count == 2 && one.top() == other.top() && one.bottom() == other.bottom()) {
    const Sides sides = sidesOf(one, other, true);
    if (sides == Sides::Unknown) return false;
    const bool isInOrder = sides != Sides::RightLeft;
    add(one, isInOrder ? winding : winding + other.direction);
    add(other, isInOrder ? winding + one.direction : winding);
    return true;
  }
  const Part* parts[fewParts];
  unsigned left[fewParts] = {};  // a bit for each part that is left of this one where both are
  for (std::size_t i = 0; i < count; ++i) {
    parts[i] = &parts_.data()[std::uint32_t(cluster[i])];
    if (hasLevelPiece(*parts[i])) return false;  // which is in no order with what crosses it
    for (std::size_t k = 0; k < i; ++k) {
      const Sides sides = sidesOf(*parts[k], *parts[i], false);
      if (sides == Sides::Unknown) return false;
      if (sides == Sides::LeftRight) left[i] |= 1u << k;
      if (sides == Sides::RightLeft) left[k] |= 1u << i;
    }
  }
  for (std::size_t i = 0; i < count; ++i) {
    // What lies left of a part is the same along all of it.
    const float middle = (parts[i]->top() + parts[i]->bottom()) * 0.5f;
    int outside = winding;
    for (std::size_t k = 0; k < count; ++k) {
      if ((left[i] >> k & 1) != 0 && parts[k]->top() <= middle && middle < parts[k]->bottom())
        outside += parts[k]->direction;
    }
    add(*parts[i], outside);
  }
  return true;
}

bool CoverageBuffer::hasLevelPiece(const Part& part) {
  if (part.pieces == 0) return part.isLevel();
  std::uint32_t at = part.pieces;
  while (at != 0 && !parts_.data()[at].isLevel()) at = parts_.data()[at].next;
  return at != 0;
}

CoverageBuffer::Sides CoverageBuffer::sidesOf(const Part& a, const Part& b, bool mayTouch) {
  const float top = std::max(a.top(), b.top()), bottom = std::min(a.bottom(), b.bottom());
  if (top >= bottom) return Sides::Apart;
  if (a.right() < b.left() || (mayTouch && a.right() == b.left())) return Sides::LeftRight;
  PiecesFromTop ofA(a, parts_.data(), top), ofB(b, parts_.data(), top);
  if (!ofA.isOneLine() || !ofB.isOneLine()) return Sides::Unknown;
  // How far right of the other one the first part is at least and at most: at one of the ends of pieces.
  float least = ofA.at(top) - ofB.at(top), most = least;
  if (least == 0 && !mayTouch && a.top() != b.top()) return Sides::Unknown;
  while (!ofA.isAtEnd() && !ofB.isAtEnd()) {
    const float y = std::min({ofA.bottom(), ofB.bottom(), bottom}), apart = ofA.goDownTo(y) - ofB.goDownTo(y);
    const bool endTogether = y == bottom && a.bottom() == b.bottom();
    if (apart == 0 && !mayTouch && !endTogether) return Sides::Unknown;
    least = std::min(least, apart);
    most = std::max(most, apart);
    if (y == bottom) break;
  }
  if (most == 0 && least == 0 && !mayTouch) return Sides::Unknown;
  return most <= 0 ? Sides::LeftRight : least >= 0 ? Sides::RightLeft : Sides::Unknown;
}

}  // namespace tessaluna::backend::raster
