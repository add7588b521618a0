#include "tessaluna/backends/raster/CoverageBuffer.h"

namespace tessaluna::backend::raster {

namespace {

constexpr std::size_t mostPatches = 16;  // where there would be more, one is as good

// What it takes to resolve polygons there, roughly.
double costOf(const PixelRect& patch) { return (patch.width() + 3.0) * (patch.height() + 4.0); }

constexpr std::uint64_t firstBlock = 0xf;  // among marks

// The row above a height, to which something reaches down: rows that it only borders on are not touched.
int lastRowOf(double y) {
  const int row = int(y);
  return row == y ? row - 1 : row;
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
  // All but the last stay all zero between uses: a row is cleared once the sink has it.
  const std::size_t rows = std::size_t(box.height());
  return values_.prepare(rows * std::size_t(stride_)) && marks_.prepare(rows * std::size_t(4 * words_)) &&
         isOverlap_.prepare(rows);
}

void CoverageBuffer::add(const Shape& shape) {
  if (shape.liesInBox) return addWhole(shape.polygons);
  const auto place = [&](CGPoint p) {
    return CGPoint{(p.x + shape.moved.x) * shape.scale, (p.y + shape.moved.y) * shape.scale};
  };
  for (std::size_t i = 0; i < shape.polygons.count(); ++i) {
    chain_ = {};
    Polygons::forEachSide(shape.polygons.polygon(i), [&](CGPoint from, CGPoint to) { addEdge(place(from), place(to)); });
  }
}

void CoverageBuffer::addWhole(const Polygons& polygons) {
  const double left = left_, top = top_;
  for (std::size_t i = 0; i < polygons.count(); ++i) {
    chain_ = {};
    Polygons::forEachSide(polygons.polygon(i), [this, left, top](CGPoint from, CGPoint to) {
      const double x = from.x - left, y = from.y - top, toX = to.x - left, toY = to.y - top;
      if (y < toY) goAlong(true), addInside(x, y, toX, toY, 1);
      else if (y > toY) goAlong(false), addInside(toX, toY, x, y, -1);
      else countLevel(y, x, toX);
    });
  }
}

void CoverageBuffer::addEdge(CGPoint from, CGPoint to) {
  // Downwards, in numbers of its own: points that change places go through memory, and this is called for every chord.
  const bool isDown = from.y < to.y;
  const float direction = isDown ? 1.0f : -1.0f;
  const double fromX = (isDown ? from.x : to.x) - left_, fromY = (isDown ? from.y : to.y) - top_;
  const double toX = (isDown ? to.x : from.x) - left_, toY = (isDown ? to.y : from.y) - top_;
  const double height = height_, width = width_;
  if (fromY == toY) return countLevel(fromY, fromX, toX);
  if (!(fromY < toY) || fromY >= height || toY <= 0) return;
  goAlong(isDown);
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

  // The part left of the box covers as much as the same height of its left edge; the part right of it
  // nothing.
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

// Of a side that stays in one pixel of a row: `middle` is how far from the pixel's left edge its middle lies.
inline void CoverageBuffer::Row::addToPixel(int column, float middle, float cover) {
  const float later = cover * middle;
  values[column] += cover - later;
  values[column + 1] += later;
}

// What lies left of the box covers as much as its left edge, but is in no pixel.
void CoverageBuffer::addBeside(double y0, double y1, float direction) {
  if (!(y0 < y1)) return;  // at the box's last edge there would be no row for it
  const int first = int(y0), last = lastRowOf(y1);
  Row row = rowAt(first);
  for (int i = first; i <= last; ++i, goDown(row)) {
    row.marks[0] |= firstBlock;
    row.addToPixel(0, 0, direction * float(std::min(y1, i + 1.0) - std::max(y0, double(i))));
  }
}

void CoverageBuffer::addUpright(double x, double y0, double y1, float direction) {
  const int column = int(x), first = int(y0), last = lastRowOf(y1);
  const float middle = float(x - column);
  Row row = rowAt(first);
  const Chain before = chain_;
  Chain highest;
  double y = y0;
  for (int i = first; i < last; ++i, goDown(row)) {
    const double bottom = i + 1;
    count(row, column, column);
    if (i == first) highest = chain_;
    row.addToPixel(column, middle, direction * float(bottom - y));
    y = bottom;
  }
  const bool isUpwards = direction < 0 && first < last;
  if (isUpwards) chain_ = before;
  count(row, column, column);
  if (isUpwards) chain_ = highest;
  row.addToPixel(column, middle, direction * float(y1 - y));
}

// A side within the box, downwards.
void CoverageBuffer::addInside(double x0, double y0, double x1, double y1, float direction) {
  const int first = int(y0), last = lastRowOf(y1);
  const int column = int(x0), lastColumn = int(x1);
  Row row = rowAt(first);
  const float cover = direction * float(y1 - y0);
  // Most chords of a curve are about as long as a pixel.
  if (first == last) {
    count(row, std::min(column, lastColumn), std::max(column, lastColumn));
    if (column == lastColumn) row.addToPixel(column, float((x0 + x1) * 0.5 - column), cover);
    else row.addToPixels({x0, column}, {x1, lastColumn}, {cover, cover / float(std::abs(x1 - x0))});
    return;
  }
  const double slope = (x1 - x0) / (y1 - y0);
  if (slope == 0) return addUpright(x0, y0, y1, direction);
  const bool isInColumn = column == lastColumn;
  const float perPixel = isInColumn ? 0 : direction * float(1 / std::abs(slope));
  Place at{x0, column};
  double y = y0;
  // Rows come from the top: a chain that goes up enters at the side's lowest row and continues from its highest.
  const Chain before = chain_;
  Chain highest;
  const auto addTo = [&](Place next, double bottom) {
    count(row, std::min(at.column, next.column), std::max(at.column, next.column));
    const float part = direction * float(bottom - y);
    if (at.column == next.column) row.addToPixel(at.column, float((at.x + next.x) * 0.5 - at.column), part);
    else row.addToPixels(at, next, {part, perPixel});
    at = next;
    y = bottom;
  };
  for (int i = first; i < last; ++i, goDown(row)) {
    // From the start every time, so that errors do not add up.
    const double next = x0 + (i + 1 - y0) * slope;
    addTo({next, isInColumn ? column : int(next)}, i + 1);  // which rounding must not leave
    if (i == first) highest = chain_;
  }
  if (direction < 0) chain_ = before;
  addTo({x1, lastColumn}, y1);
  if (direction < 0) chain_ = highest;
}

// Of a side that crosses several pixels of a row.
inline void CoverageBuffer::Row::addToPixels(Place from, Place to, Cover cover) {
  const bool isRightwards = from.column < to.column;
  const Place left = isRightwards ? from : to, right = isRightwards ? to : from;
  float* const value = values + left.column;
  // The area right of the side grows quadratically in its first and last pixel, linearly between. Each pixel
  // gets its area less what the pixels before it got.
  const int pixels = right.column - left.column;
  const float in = float(left.column + 1 - left.x), out = float(right.x - right.column);
  float level = cover.perPixel * in;
  float before = 0.5f * level * in;
  value[0] += before;
  for (int i = 1; i < pixels; ++i) {
    const float here = level + 0.5f * cover.perPixel;
    value[i] += here - before;
    before = here;
    level += cover.perPixel;
  }
  const float lastArea = level + (cover.whole - level) * (1 - 0.5f * out);
  value[pixels] += lastArea - before;
  value[pixels + 1] += cover.whole - lastArea;
}

// A level side covers nothing, but what it bounds does. It continues in the direction of the side before it.
void CoverageBuffer::countLevel(double y, double from, double to) {
  const double left = std::max(std::min(from, to), 0.0), right = std::min(std::max(from, to), width_);
  if (!(y > 0 && y < height_ && left < right) || y == int(y)) return;
  count(rowAt(int(y)), int(left), int(right));
}

void CoverageBuffer::countWords(const Row& row, int first, int last) {
  std::uint64_t *const from = row.marks + direction_ + first / 64, *const to = row.marks + direction_ + last / 64;
  const Chain before = chain_;
  chain_ = {.at = to, .other = from};
  for (std::uint64_t* at = from; at <= to; ++at) {
    std::uint64_t bits = ~std::uint64_t(0);
    if (at == from) bits = chain_.otherBits = bits << (first % 64);
    if (at == to) bits = chain_.bits = bits >> (63 - last % 64);
    const std::uint64_t twice = *at & bits & ~before.bitsAt(at);
    *at |= bits;
    if (twice != 0) noteTwice(at, twice);
  }
  // It may have come from farther on the same side.
  chain_.bits |= before.bitsAt(to);
  chain_.otherBits |= before.bitsAt(from);
}

void CoverageBuffer::noteTwice(std::uint64_t* at, std::uint64_t bits) {
  at[3 * words_ - direction_] |= bits;
  firstTwice_ = std::min(firstTwice_, int((at - marks_.data()) / (4 * words_)));
}

// Puts right what sums do not tell, from the row before this one on, which is the last that is summed up.
void CoverageBuffer::correctFrom(int firstRow, Range before, const Shape& shape) {
  std::uint8_t* const isOverlap = isOverlap_.data();
  const int from = std::max(firstRow - 1, 0);
  if (from < firstRow) isOverlap[from] = 0;
  for (int row = firstRow + 1; row < rows_; ++row) {
    const Range range = sumRow(row);
    isOverlap[row] = range.showsOverlap(before);
    before = range;
  }
  if (shape.rule == FillRule::EvenOdd) {
    for (int row = from; row < rows_; ++row) {
      if (isOverlap[row]) fold(row);
    }
  }
  findPatches(from);
  if (patches_.empty()) return;
  resolver_.take(shape.polygons);
  for (const PixelRect& patch : patches_) replacePatch(shape, patch);
}

// Between two neighbouring windings coverage goes up and down in turn.
void CoverageBuffer::fold(int row) {
  float* const values = rowValues(row);
  forEachRun(row, [values](int block, int count) {
    for (float *v = values + block * blockSize, *end = v + count * blockSize; v < end; ++v)
      *v = std::abs(*v - 2 * std::round(*v * 0.5f));
  });
}

// The suspicious pixels in rectangles.
void CoverageBuffer::findPatches(int firstRow) {
  clearForReuse(patches_);
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
        // A chain along the box's right edge is in no pixel of it.
        if (x < box_.right) addPatch({x, y, std::min(x + count, box_.right), y + 1});
      }
    }
  }
}

// Joins it with others where that is as good.
void CoverageBuffer::addPatch(PixelRect patch) {
  for (std::size_t i = patches_.size(); i-- > 0;) {
    const PixelRect both = patch.united(patches_[i]);
    if (costOf(both) > costOf(patch) + costOf(patches_[i])) continue;
    patch = both;
    patches_.erase(patches_.begin() + std::ptrdiff_t(i));
    i = patches_.size();  // it is larger now
  }
  if (patches_.size() < mostPatches) return patches_.push_back(patch);
  const auto more = [&](const PixelRect& other) { return costOf(patch.united(other)) - costOf(other); };
  PixelRect& nearest = *std::min_element(patches_.begin(), patches_.end(),
                                         [&](const PixelRect& a, const PixelRect& b) { return more(a) < more(b); });
  nearest = patch.united(nearest);
}

void CoverageBuffer::giveResolverBack() {
  resolver_ = {};
  sweeps_ = 0;
}

// Writes the sum into blocks of a row where nothing was added and it stands still.
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
  // What follows in the row counts from the pixel behind the patch.
  for (int i = row; i < row + patch.height(); ++i) writeOut(i, patch.left - box_.left, patch.right - box_.left);
  resolver_.cover({.moved = shape.moved, .scale = shape.scale, .rule = shape.rule, .box = DeviceRect::of(patch)},
                  rowValues(row) + (patch.left - box_.left), stride_);
}

// Of a chain's pixels, each of which changes the one on its right as well.
void CoverageBuffer::touchBlocks(int row) {
  std::uint64_t* const touched = rowMarks(row);
  std::uint64_t last = 0;
  for (int word = 0; word < words_; ++word) {
    const std::uint64_t pixels = touched[words_ + word] | touched[2 * words_ + word];
    if ((pixels | last) == 0) continue;
    const std::uint64_t both = pixels | pixels << 1 | last;
    last = pixels >> 63;
    constexpr std::uint64_t firstOfBlocks = 0x1111111111111111;
    touched[word] |= ((both | both >> 1 | both >> 2 | both >> 3) & firstOfBlocks) * firstBlock;
  }
}

// Turns the changes of a row into sums.
CoverageBuffer::Range CoverageBuffer::sumRow(int row) {
  touchBlocks(row);
  float* values = rowValues(row);
  const Float4 zero{};
  Float4 before{}, least{}, most{};
  forEachRun(row, [&](int block, int count) {
    float* const end = values + (block + count) * blockSize;
    for (float* four = values + block * blockSize; four < end; four += 4) {
      Float4 v;
      std::memcpy(&v, four, sizeof v);
      v += __builtin_shufflevector(zero, v, 0, 4, 5, 6);
      v += __builtin_shufflevector(zero, v, 0, 1, 4, 5);
      v += before;
      before = __builtin_shufflevector(v, v, 3, 3, 3, 3);
      least = smaller(least, v);
      most = larger(most, v);
      std::memcpy(four, &v, sizeof v);
    }
  });
  return {least, most};
}

}  // namespace tessaluna::backend::raster
