#include "tessaluna/backends/raster/CoverageBuffer.h"

#include "tessaluna/backends/raster/StrokePoint.h"

namespace tessaluna::backend::raster {

namespace {

// Each patch searches all polygons, so beyond this number a few larger patches are faster. Rows come from the top, so the
// patches that a new one may be near to are among the last.
constexpr std::size_t maxPatches = 256, lastPatches = 32;

// Shorter sides within a row, in pixels, are not compared: most are chords of curves, and an icon would take 4 % more
// instructions.
constexpr int minCrossed = 8;

// How many words of marks are searched for what dashes share. That takes some 10 milliseconds. Lines of dashes need far
// fewer; where hundreds of dashes each cross a large picture, the search would take longer than everything else.
constexpr std::size_t maxWordsShared = std::size_t(1) << 22;

constexpr std::uint64_t firstBlock = 0xf;  // among marks

constexpr double pointsPerPixel = 1000;  // how many points are searched in the time that one pixel takes to resolve

// The last row of something that reaches down to this height. A row that it only borders on is not touched.
int lastRowOf(double y) {
  const int row = int(y);
  return y > row ? row : row - 1;
}

}  // namespace

bool CoverageBuffer::begin(const PixelRect& box) {
  box_ = box;
  left_ = box.left;
  top_ = box.top;
  width_ = box.width();
  height_ = box.height();
  stride_ = (box.width() + blockSize - 1) / blockSize * blockSize + blockSize;
  words_ = (stride_ + 63) / 64;
  rows_ = box.height();
  chain_ = {};
  firstTwice_ = rows_;
  sidesSearched_ = 0;
  wordsShared_ = 0;
  pillars_.clear();
  repeats_.clear();
  clearForReuse(crossed_);
  // All buffers but the last stay zero between uses: a row is cleared after it was sent to the sink.
  const std::size_t rows = std::size_t(box.height());
  return values_.prepare(rows * std::size_t(stride_)) && marks_.prepare(rows * std::size_t(4 * words_)) &&
         isOverlap_.prepare(rows);
}

void CoverageBuffer::add(const Shape& shape) {
  if (shape.liesInBox) return addWhole(shape);
  const auto place = [&](CGPoint p) {
    return CGPoint{(p.x + shape.moved.x) * shape.scale, (p.y + shape.moved.y) * shape.scale};
  };
  for (std::size_t i = 0; i < shape.polygons.count(); ++i) {
    Polygons::forEachSide(shape.polygons.polygon(i), [&](CGPoint from, CGPoint to) { addEdge(place(from), place(to)); });
    endPolygon();
    if (shape.kind.isDashed) noteShared(shape.polygons.polygon(i), shape);
  }
}

void CoverageBuffer::addWhole(const Shape& shape) {
  const double left = left_, top = top_;
  for (std::size_t i = 0; i < shape.polygons.count(); ++i) {
    Polygons::forEachSide(shape.polygons.polygon(i), [this, left, top](CGPoint from, CGPoint to) {
      const double x = from.x - left, y = from.y - top, toX = to.x - left, toY = to.y - top;
      if (y < toY) addInside(x, y, toX, toY, 1);
      else if (y > toY) addInside(toX, toY, x, y, -1);
      else markLevel(y, x, toX);
    });
    endPolygon();
    if (shape.kind.isDashed) noteShared(shape.polygons.polygon(i), shape);
  }
}

inline void CoverageBuffer::endPolygon() {
  leaveRow();
  chain_ = {};
}

// Notes the pixels in the dash's box that have chains of both directions and are marked as touched. While sides are added,
// those are the pixels of earlier dashes and the first block beside sides left of the box. So all pixels are noted that this
// dash shares with an earlier one that goes the other way, and some through which an earlier one alone goes down and up.
void CoverageBuffer::noteShared(std::span<const CGPoint> dash, const Shape& shape) {
  const DeviceRect bounds = Polygons::boundsOf(dash).moved(shape.moved.x, shape.moved.y).scaled(shape.scale);
  const PixelRect pixels = bounds.roundedOut().intersected(box_).moved({-box_.left, -box_.top});
  if (pixels.isEmpty()) return;
  wordsShared_ += std::size_t(pixels.height()) * std::size_t((pixels.right - 1) / 64 - pixels.left / 64 + 1);
  if (wordsShared_ > maxWordsShared) return;
  for (int row = pixels.top; row < pixels.bottom; ++row) {
    forEachWord(pixels.left, pixels.right - 1, [&](int word, std::uint64_t bits) {
      std::uint64_t* const before = rowMarks(row) + word;
      const std::uint64_t down = before[words_] & bits, up = before[2 * words_] & bits;
      if (const std::uint64_t shared = *before & down & up; shared != 0) noteTwice(before, shared);
      *before |= down | up;
    });
  }
}

void CoverageBuffer::addEdge(CGPoint from, CGPoint to) {
  // Downwards, in separate variables: swapping points would go through memory, and this is called for every chord.
  const bool isDown = from.y < to.y;
  const float direction = isDown ? 1.0f : -1.0f;
  const double fromX = (isDown ? from.x : to.x) - left_, fromY = (isDown ? from.y : to.y) - top_;
  const double toX = (isDown ? to.x : from.x) - left_, toY = (isDown ? to.y : from.y) - top_;
  const double height = height_, width = width_;
  if (fromY == toY) return markLevel(fromY, fromX, toX);
  if (!(fromY < toY) || fromY >= height || toY <= 0) return;
  const bool isInside = fromY >= 0 && toY <= height && fromX >= 0 && toX >= 0 && fromX <= width && toX <= width;
  if (isInside) return addInside(fromX, fromY, toX, toY, direction);

  const double slope = (toX - fromX) / (toY - fromY);
  if (!std::isfinite(slope)) return;  // as good as level
  double x0 = fromX, y0 = fromY, x1 = toX, y1 = toY;
  if (y0 < 0) {
    y0 = 0;
    x0 = fromX - fromY * slope;
  }
  if (y1 > height) {
    y1 = height;
    x1 = fromX + (height - fromY) * slope;
  }
  if (x0 >= width && x1 >= width) return;
  if (x0 <= 0 && x1 <= 0) return addBeside(y0, y1, direction);

  // The part left of the box covers as much as the same height of its left edge; the part right of the box covers nothing.
  const auto heightAt = [&](double x) { return std::min(std::max(y0, fromY + (x - fromX) / slope), y1); };
  const double atLeft = heightAt(0), atRight = heightAt(width);
  if (x0 < 0) {
    addBeside(y0, atLeft, direction);
    x0 = 0;
    y0 = atLeft;
  } else if (x1 < 0) {
    addBeside(atLeft, y1, direction);
    x1 = 0;
    y1 = atLeft;
  }
  if (x0 > width) {
    x0 = width;
    y0 = atRight;
  } else if (x1 > width) {
    x1 = width;
    y1 = atRight;
  }
  if (y0 < y1) addInside(x0, y0, x1, y1, direction);
}

// Adds a side that stays in one pixel of a row. `middle` is the distance of its middle from the pixel's left edge.
inline void CoverageBuffer::Row::addToPixel(int column, float middle, float cover) {
  const float later = cover * middle;
  values[column] += cover - later;
  values[column + 1] += later;
}

// A side left of the box covers as much as the box's left edge, but marks no pixel.
void CoverageBuffer::addBeside(double y0, double y1, float direction) {
  if (!(y0 < y1)) return;  // at the box's bottom edge there is no row for it
  const int first = int(y0), last = lastRowOf(y1);
  Row row = rowAt(first);
  for (int i = first; i <= last; ++i, goDown(row)) {
    row.marks[0] |= firstBlock;
    row.addToPixel(0, 0, direction * float(std::min(y1, i + 1.0) - std::max(y0, double(i))));
  }
}

// Adds a side within the box, which goes down.
inline void CoverageBuffer::addInside(double x0, double y0, double x1, double y1, float direction) {
  const int first = int(y0), last = lastRowOf(y1);
  const Place from = placeOf(x0), to = placeOf(x1);
  direction_ = direction;
  // Most chords of a curve are about as long as a pixel.
  if (first == last) {
    const float cover = direction * float(y1 - y0);
    Row row = rowAt(first);
    const bool isRightwards = from.column < to.column;
    stayIn(marksOf(row, direction), std::min(from.column, to.column), std::max(from.column, to.column));
    if (from.column == to.column) return row.addToPixel(from.column, (from.inPixel + to.inPixel) * 0.5f, cover);
    if (std::abs(to.column - from.column) >= minCrossed) [[unlikely]]
      noteCrossed(first, std::min(from.column, to.column), std::max(from.column, to.column),
                  isRightwards == (direction > 0));
    return row.addToPixels(isRightwards ? from : to, isRightwards ? to : from, {cover, cover / float(std::abs(x1 - x0))});
  }
  if (x0 == x1) addUpright(from, y0, y1, direction);
  else if (x0 < x1) addToRows<true>(x0, y0, x1, y1, first, last, direction);
  else addToRows<false>(x0, y0, x1, y1, first, last, direction);
}

inline CoverageBuffer::Place CoverageBuffer::placeOf(double x) {
  const int column = int(x);
  return {float(x - column), column};
}

inline void CoverageBuffer::addWholeRow(Row row, Place at, float direction) {
  mark(marksOf(row, direction), at.column, at.column);
  row.addToPixel(at.column, at.inPixel, direction);
}

void CoverageBuffer::addUpright(Place at, double y0, double y1, float direction) {
  const int first = int(y0), last = lastRowOf(y1);
  Row row = rowAt(first);
  const Chain highest{marksOf(row, direction), at.column, at.column};
  row.addToPixel(at.column, at.inPixel, direction * float(first + 1 - y0));
  goDown(row);
  if (last - first > minPillar && pillars_.size() < maxPillars) {
    pillars_.push_back({at, direction, first + 1, last});
    row = rowAt(last);
  } else {
    for (int i = first + 1; i < last; ++i, goDown(row)) addWholeRow(row, at, direction);
  }
  row.addToPixel(at.column, at.inPixel, direction * float(y1 - last));
  passRows(highest, {marksOf(row, direction), at.column, at.column}, direction);
}

// Adds a side that goes through several rows, to the right or to the left.
template <bool isRightwards>
void CoverageBuffer::addToRows(double x0, double y0, double x1, double y1, int first, int last, float direction) {
  const double slope = (x1 - x0) / (y1 - y0), slopeAcross = (y1 - y0) / (x1 - x0);
  const float perPixel = direction * std::abs(float(slopeAcross));
  const std::ptrdiff_t kind = kindOf(direction), stride = stride_, marksPerRow = 4 * words_;
  Place at = placeOf(x0);
  Row row = rowAt(first);
  const auto addPart = [&](Place to, float cover) {
    const Place left = isRightwards ? at : to, right = isRightwards ? to : at;
    if (left.column == right.column) row.addToPixel(left.column, (left.inPixel + right.inPixel) * 0.5f, cover);
    else row.addToPixels(left, right, {cover, perPixel});
    at = to;
    const Chain part{row.marks + kind, left.column, right.column};
    row = {row.values + stride, row.marks + marksPerRow};
    return part;
  };
  // Where the side meets a row's lower edge, in parts of a pixel. Their errors add up to less than a thousandth of a pixel in
  // millions of rows. Rounding must not move this beyond the side's end.
  constexpr double partsOfPixel = 4294967296;
  const std::int64_t end = std::int64_t(x1 * partsOfPixel);
  std::int64_t x = std::int64_t((x0 + (first + 1 - y0) * slope) * partsOfPixel);
  const auto placeBelow = [&] {
    x = isRightwards ? std::min(x, end) : std::max(x, end);
    return Place{float(std::int32_t(std::uint32_t(x) >> 8)) * 0x1p-24f, int(x >> 32)};
  };
  const Chain highest = addPart(placeBelow(), direction * float(first + 1 - y0));
  if (first + 1 < last) {
    const std::int64_t step = std::int64_t(slope * partsOfPixel);
    for (int i = first + 1; i < last; ++i) {
      x += step;
      const Chain through = addPart(placeBelow(), direction);
      mark(through.marks, through.first, through.last);
    }
  }
  passRows(highest, addPart(placeOf(x1), direction * float(y1 - last)), direction);
}

// The chain has passed several rows, from the highest to the lowest or the other way.
inline void CoverageBuffer::passRows(const Chain& highest, const Chain& lowest, float direction) {
  const Chain from = direction > 0 ? highest : lowest;
  stayIn(from.marks, from.first, from.last);
  leaveRow();
  chain_ = direction > 0 ? lowest : highest;
}

// Pillars share nothing with each other: they do not cross.
void CoverageBuffer::noteSharedPillars() {
  for (const Pillar& pillar : pillars_) {
    const std::uint64_t bit = std::uint64_t(1) << pillar.at.column % 64;
    for (int row = pillar.top; row < pillar.bottom; ++row) {
      std::uint64_t* const others = rowMarks(row) + pillar.at.column / 64;
      if ((*others & bit) != 0) noteTwice(others, bit);
    }
  }
}

// Where only the same pillars go through several rows, the first row represents all of them.
void CoverageBuffer::placePillars() {
  if (pillars_.empty()) return;
  int row = rows_, end = 0;
  for (const Pillar& pillar : pillars_) {
    row = std::min(row, pillar.top);
    end = std::max(end, pillar.bottom);
  }
  while (row < end) {
    // The next row where a pillar begins or ends.
    int next = end;
    for (const Pillar& pillar : pillars_) {
      if (pillar.top > row) next = std::min(next, pillar.top);
      if (pillar.bottom > row) next = std::min(next, pillar.bottom);
    }
    while (row < next) {
      const int first = row;
      row = std::max(firstTouched(row, next), row + 1);
      addPillars(first);
      if (row > first + 1) repeats_.push_back({first, row});
    }
  }
}

void CoverageBuffer::addPillars(int row) {
  for (const Pillar& pillar : pillars_) {
    if (pillar.top <= row && row < pillar.bottom) addWholeRow(rowAt(row), pillar.at, pillar.direction);
  }
}

// The first of these rows that has a mark, or `end`. The rows' marks are contiguous.
int CoverageBuffer::firstTouched(int row, int end) {
  const std::uint64_t *const marks = rowMarks(row), *const last = rowMarks(end), *at = marks;
  const auto two = [&at](int index) {
    Long2 v;
    std::memcpy(&v, at + index, sizeof v);
    return v;
  };
  const auto isEmpty = [&two] {
    const Long2 any = two(0) | two(2) | two(4) | two(6);
    return (any[0] | any[1]) == 0;
  };
  while (last - at >= 8 && isEmpty()) at += 8;
  while (at < last && *at == 0) ++at;
  return row + int((at - marks) / (4 * words_));
}

// From this row on, gives each row of a repeat its own sides.
void CoverageBuffer::writeRepeats(int firstRow) {
  for (const Repeat& rows : repeats_) {
    for (int row = std::max(rows.first + 1, firstRow); row < rows.end; ++row) addPillars(row);
  }
}

// Adds a side that crosses several pixels of a row.
inline void CoverageBuffer::Row::addToPixels(Place left, Place right, Cover cover) {
  float* const value = values + left.column;
  // The area right of the side grows quadratically in its first and last pixel, linearly between them. Each pixel gets its
  // area minus what the pixels before it got.
  const int pixels = right.column - left.column;
  const float in = 1 - left.inPixel;
  float level = cover.perPixel * in;
  float before = 0.5f * level * in;
  value[0] += before;
  for (int i = 1; i < pixels; ++i) {
    const float here = level + 0.5f * cover.perPixel;
    value[i] += here - before;
    before = here;
    level += cover.perPixel;
  }
  const float lastArea = level + (cover.whole - level) * (1 - 0.5f * right.inPixel);
  value[pixels] += lastArea - before;
  value[pixels + 1] += cover.whole - lastArea;
}

// A level side covers nothing, but it bounds what is covered. It has the direction of the side before it.
void CoverageBuffer::markLevel(double y, double from, double to) {
  const double left = std::max(std::min(from, to), 0.0), right = std::min(std::max(from, to), width_);
  if (!(y > 0 && y < height_ && left < right) || y == int(y)) return;
  stayIn(marksOf(rowAt(int(y)), direction_), int(left), int(right));
  noteCrossed(int(y), int(left), int(right), from < to);
}

// A side that stays in the row goes from one of these pixels to the other.
void CoverageBuffer::noteCrossed(int row, int left, int right, bool isRightwards) {
  if (right - left >= minCrossed) crossed_.push_back({row, isRightwards, left + 1, right - 1});
}

// Where chains of one direction meet in a pixel, it is marked already.
void CoverageBuffer::findCrossedTwice() {
  // Calls visit(word, bits) where chains of both directions go through some of the pixels.
  const auto forEachShared = [this](int row, int first, int last, auto visit) {
    std::uint64_t *const down = rowMarks(row) + words_, *const up = down + words_, *const twice = up + words_;
    forEachWord(first, last, [&](int word, std::uint64_t bits) {
      if (bits &= down[word] & up[word]; bits != 0) visit(twice + word, bits);
    });
  };
  std::erase_if(crossed_, [&](const Crossed& pixels) {
    bool isAlone = true;
    forEachShared(pixels.row, pixels.first, pixels.last, [&](std::uint64_t*, std::uint64_t) { isAlone = false; });
    return isAlone;
  });
  std::sort(crossed_.begin(), crossed_.end());
  const Crossed* widest = nullptr;  // of those before that are in the same row and go the same way
  for (const Crossed& pixels : crossed_) {
    const bool isBeside = widest && pixels.row == widest->row && pixels.isRightwards == widest->isRightwards;
    const int last = isBeside ? std::min(pixels.last, widest->last) : -1;
    if (pixels.first <= last) {
      // Beside what both cross one of them ends.
      forEachShared(pixels.row, pixels.first - 1, last + 1,
                    [this](std::uint64_t* twice, std::uint64_t bits) { noteTwice(twice, bits); });
    }
    if (!isBeside || pixels.last > widest->last) widest = &pixels;
  }
}

void CoverageBuffer::markWords(std::uint64_t* marks, int first, int last) {
  forEachWord(first, last, [&](int word, std::uint64_t bits) {
    const std::uint64_t twice = marks[word] & bits;
    marks[word] |= bits;
    if (twice != 0) noteTwice(marks + word, twice);
  });
}

void CoverageBuffer::noteTwice(std::uint64_t* at, std::uint64_t bits) {
  const std::ptrdiff_t word = at - marks_.data(), ofRow = 4 * words_;
  marks_.data()[word / ofRow * ofRow + 3 * words_ + word % words_] |= bits;
  firstTwice_ = std::min(firstTwice_, int(word / ofRow));
}

// Near its tip a shape may be so narrow that a side that goes down and one that goes up cross within one pixel. After the
// crossing the sum counts what they cover as a hole.
void CoverageBuffer::findCrossedTips(const Shape& shape) {
  for (std::size_t i = 0; i < shape.polygons.count(); ++i) {
    const std::span<const CGPoint> points = shape.polygons.polygon(i);
    const std::size_t count = points.size();
    std::size_t at = count - 1;
    Double2 in = pairOf(points[at]) - pairOf(points[at > 0 ? at - 1 : at]);
    for (std::size_t next = 0; next < count; at = next++) {
      const Double2 out = pairOf(points[next]) - pairOf(points[at]), products = in * out;
      if (std::min(products[1], products[0] + products[1]) <= 0) [[unlikely]] {
        if (products[1] > 0) noteSpike(placed(points[at], shape));
        else if (in[1] != 0) noteTip(points, at, shape);
      }
      in = out;
    }
  }
}

// Examines the tip between a chain that ends at this point and the next chain; at most level sides lie between them.
void CoverageBuffer::noteTip(std::span<const CGPoint> points, std::size_t end, const Shape& shape) {
  const std::size_t count = points.size();
  std::size_t start = end, next = end + 1 < count ? end + 1 : 0;
  for (; next != end && points[next].y == points[end].y; next = next + 1 < count ? next + 1 : 0) start = next;
  const CGPoint before = points[end > 0 ? end - 1 : count - 1];
  const CGPoint in = before - points[end], out = points[next] - points[start];
  const bool isChainsEnd = out.y * in.y > 0;
  if (!isChainsEnd) return;
  // Most tips are those of curves: the curve turns the same way before and after the tip, and its sides diverge.
  const CGPoint first = points[end > 1 ? end - 2 : end + count - 2], last = points[next + 1 < count ? next + 1 : 0];
  const double turn = cross(out, in);
  if (turn * cross(before - first, in) < 0 && turn * cross(last - points[next], out) < 0) return;
  const std::optional<CGPoint> crossing = crossingNearTip(points, {end, start}, 1 / shape.scale);
  if (crossing) noteCrossedTip(placed(points[end], shape), placed(*crossing, shape));
}

CGPoint CoverageBuffer::placed(CGPoint p, const Shape& shape) const {
  return {(p.x + shape.moved.x) * shape.scale - left_, (p.y + shape.moved.y) * shape.scale - top_};
}

// Follows both chains from a tip, up to a distance of `reach`.
std::optional<CGPoint> CoverageBuffer::crossingNearTip(std::span<const CGPoint> points, Tip tip, double reach) {
  const std::size_t count = points.size();
  std::size_t a = tip.end, b = tip.start;
  const double top = points[a].y;
  CGPoint fromA = points[a], fromB = points[b];  // at the same height
  const bool isDown = points[b + 1 < count ? b + 1 : 0].y > top;
  while (std::abs(fromA.y - top) < reach && std::abs(fromA.x - fromB.x) < reach) {
    const std::size_t nextA = a > 0 ? a - 1 : count - 1, nextB = b + 1 < count ? b + 1 : 0;
    const CGPoint ofA = points[nextA], ofB = points[nextB];
    const bool isTip = isDown ? std::min(ofA.y, ofB.y) < fromA.y : std::max(ofA.y, ofB.y) > fromA.y;
    if (isTip || nextA == b) break;
    const double y = isDown ? std::min(ofA.y, ofB.y) : std::max(ofA.y, ofB.y);
    const auto along = [y](CGPoint from, CGPoint to) {
      return to.y == y ? to : CGPoint{from.x + (to.x - from.x) * ((y - from.y) / (to.y - from.y)), y};
    };
    const CGPoint toA = along(fromA, ofA), toB = along(fromB, ofB);
    const double before = fromA.x - fromB.x, after = toA.x - toB.x;
    if (before * after < 0) {
      const double part = before / (before - after);
      const CGPoint crossing{fromA.x + (toA.x - fromA.x) * part, fromA.y + (toA.y - fromA.y) * part};
      if (std::abs(crossing.y - top) < reach) return crossing;
      break;
    }
    fromA = toA;
    fromB = toB;
    if (ofA.y == y) a = nextA;
    if (ofB.y == y) b = nextB;
  }
  return std::nullopt;
}

// Where a chain turns sharply to the side, a side of another chain may cross it, in any of the pixels that contain this
// point.
void CoverageBuffer::noteSpike(CGPoint p) {
  if (!(p.x >= 0 && p.x < width_ && p.y >= 0 && p.y < height_)) return;
  const int right = int(p.x), bottom = int(p.y);
  const int left = std::max(int(std::ceil(p.x)) - 1, 0), top = std::max(int(std::ceil(p.y)) - 1, 0);
  for (int y = top; y <= bottom; ++y) {
    std::uint64_t* const marks = rowMarks(y);
    for (int x = left; x <= right; ++x) {
      const int word = x / 64;
      const std::uint64_t bits = marks[words_ + word] & marks[2 * words_ + word] & std::uint64_t(1) << (x % 64);
      marks[3 * words_ + word] |= bits;
      if (bits != 0) firstTwice_ = std::min(firstTwice_, y);
    }
  }
}

void CoverageBuffer::noteCrossedTip(CGPoint tip, CGPoint crossing) {
  const double left = std::max(std::min(tip.x, crossing.x), 0.0), right = std::min(std::max(tip.x, crossing.x), width_ - 1);
  const double top = std::max(std::min(tip.y, crossing.y), 0.0), bottom = std::min(std::max(tip.y, crossing.y), height_ - 1);
  if (!(left <= right && top <= bottom)) return;
  for (int y = int(top); y <= int(bottom); ++y) {
    std::uint64_t* const twice = rowMarks(y) + 3 * words_;
    for (int x = int(left); x <= int(right); ++x) twice[x / 64] |= std::uint64_t(1) << (x % 64);
  }
  firstTwice_ = std::min(firstTwice_, int(top));
}

// Corrects what the sums do not show, from the row before this one on. This row is the last one that has been summed.
void CoverageBuffer::correctFrom(int firstRow, Range before, const Shape& shape) {
  std::uint8_t* const isOverlap = isOverlap_.data();
  const int from = std::max(firstRow - 1, 0);
  if (from < firstRow) isOverlap[from] = 0;
  for (int row = firstRow + 1; row < rows_; ++row) {
    const Range range = sumRow(row);
    isOverlap[row] = range.showsOverlap(before);
    before = range;
  }
  if (shape.kind.rule == FillRule::EvenOdd) {
    for (int row = from; row < rows_; ++row) {
      if (isOverlap[row]) fold(row);
    }
  }
  findPatches(from, shape.polygons);
  if (patches_.empty()) return;
  resolver_.take(shape.polygons);
  for (const PixelRect& patch : patches_) replacePatch(shape, patch);
}

// From one whole winding to the next, even-odd coverage alternately rises and falls.
void CoverageBuffer::fold(int row) {
  float* const values = rowValues(row);
  forEachRun(row, [values](int first, int count) {
    for (float *v = values + first, *end = v + count; v < end; ++v) *v = std::abs(*v - 2 * std::round(*v * 0.5f));
  });
}

// The approximate cost of resolving polygons there: it grows with the pixels, and all polygons are searched.
double CoverageBuffer::costOf(const PixelRect& patch) const {
  return (patch.width() + 3.0) * (patch.height() + 4.0) + costOfPatch_;
}

// Collects the suspicious pixels in rectangles.
void CoverageBuffer::findPatches(int firstRow, const Polygons& polygons) {
  clearForReuse(patches_);
  costOfPatch_ = double(polygons.pointCount()) / pointsPerPixel;
  const std::uint8_t* const isOverlap = isOverlap_.data();
  for (int row = firstRow; row < rows_; ++row) {
    const bool isNear = isOverlap[row] || (row > firstRow && isOverlap[row - 1]) || (row + 1 < rows_ && isOverlap[row + 1]);
    const std::uint64_t *const down = rowMarks(row) + words_, *const up = down + words_, *const twice = up + words_;
    for (int word = 0; word < words_; ++word) {
      std::uint64_t bits = twice[word] | (isNear ? down[word] & up[word] : 0);
      while (bits != 0) {
        const int first = std::countr_zero(bits), count = std::countr_one(bits >> first);
        bits &= bits + (std::uint64_t(1) << first);
        const int x = box_.left + word * 64 + first, y = box_.top + row;
        // A chain along the box's right edge is in none of its pixels.
        if (x < box_.right) addPatch({x, y, std::min(x + count, box_.right), y + 1});
      }
    }
  }
}

// Joins the patch with others where that does not cost more.
void CoverageBuffer::addPatch(PixelRect patch) {
  const auto firstOfLast = [this] { return patches_.size() - std::min(patches_.size(), lastPatches); };
  for (std::size_t i = patches_.size(); i-- > firstOfLast();) {
    const PixelRect both = patch.united(patches_[i]);
    if (costOf(both) > costOf(patch) + costOf(patches_[i])) continue;
    patch = both;
    patches_.erase(patches_.begin() + std::ptrdiff_t(i));
    i = patches_.size();  // the patch is larger now
  }
  if (patches_.size() < maxPatches) return patches_.push_back(patch);
  const auto more = [&](const PixelRect& other) { return costOf(patch.united(other)) - costOf(other); };
  PixelRect& nearest = *std::min_element(patches_.begin() + std::ptrdiff_t(firstOfLast()), patches_.end(),
                                         [&](const PixelRect& a, const PixelRect& b) { return more(a) < more(b); });
  nearest = patch.united(nearest);
}

void CoverageBuffer::giveResolverBack() {
  resolver_ = {};
  sweeps_ = 0;
}

// Writes the sum into those blocks of a row to which nothing was added.
void CoverageBuffer::writeOut(int row, int first, int last) {
  std::uint64_t* const touched = rowMarks(row);
  const auto bitsOf = [](int block) { return firstBlock << (block * blockSize % 64); };
  const auto isTouched = [&](int block) { return (touched[block * blockSize / 64] & bitsOf(block)) != 0; };
  float* const values = rowValues(row);
  int before = first / blockSize - 1;
  while (before >= 0 && !isTouched(before)) --before;
  float sum = before >= 0 ? values[before * blockSize + blockSize - 1] : 0;
  for (int block = first / blockSize; block <= last / blockSize; ++block) {
    float* const end = values + (block + 1) * blockSize;
    if (isTouched(block)) sum = end[-1];
    else std::fill(end - blockSize, end, sum);
    touched[block * blockSize / 64] |= bitsOf(block);
  }
}

void CoverageBuffer::replacePatch(const Shape& shape, const PixelRect& patch) {
  const int row = patch.top - box_.top;
  // The rest of the row needs its sum in the pixel after the patch.
  for (int i = row; i < row + patch.height(); ++i) writeOut(i, patch.left - box_.left, patch.right - box_.left);
  resolver_.cover({.moved = shape.moved, .scale = shape.scale, .rule = shape.kind.rule, .box = DeviceRect::of(patch)},
                  rowValues(row) + (patch.left - box_.left), stride_);
  sidesSearched_ += resolver_.sidesOfStrips();
}

// Turns the changes of a row into sums.
CoverageBuffer::Range CoverageBuffer::sumRow(int row) {
  float* values = rowValues(row);
  const Float4 zero{};
  Float4 before{}, lowest{}, highest{};
  std::uint64_t *const touched = rowMarks(row), *const down = touched + words_, *const up = down + words_, last = 0;
  for (int word = 0, words = words_; word < words; ++word) {
    const std::uint64_t pixels = down[word] | up[word];
    if ((pixels | last | touched[word]) == 0) continue;
    // A chain's pixels also change the pixel on their right.
    const std::uint64_t both = pixels | pixels << 1 | last;
    constexpr std::uint64_t firstOfBlocks = 0x1111111111111111;
    touched[word] |= ((both | both >> 1 | both >> 2 | both >> 3) & firstOfBlocks) * firstBlock;
    last = pixels >> 63;
    forEachRunOf(touched[word], [&](int first, int count) {
      for (float *four = values + word * 64 + first, *const end = four + count; four < end; four += 4) {
        Float4 v = fourOf(four);
        v += __builtin_shufflevector(zero, v, 0, 4, 5, 6);
        v += __builtin_shufflevector(zero, v, 0, 1, 4, 5);
        v += before;
        before = __builtin_shufflevector(v, v, 3, 3, 3, 3);
        lowest = smaller(lowest, v);
        highest = larger(highest, v);
        std::memcpy(four, &v, sizeof v);
      }
    });
  }
  return {lowest, highest};
}

}  // namespace tessaluna::backend::raster
