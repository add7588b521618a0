#include "tessaluna/backends/raster/CoverageBuffer.h"

namespace tessaluna::backend::raster {

namespace {

constexpr std::size_t mostPatches = 16;  // where there would be more, one is as good

// What it takes to resolve polygons there, roughly.
double costOf(const PixelRect& patch) { return (patch.width() + 3.0) * (patch.height() + 4.0); }

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
  words_ = (stride_ / blockSize + 63) / 64;
  rows_ = box.height();
  // Both stay all zero between uses: a row is cleared when it has been told.
  const std::size_t rows = std::size_t(box.height());
  return values_.prepare(rows * std::size_t(stride_)) && touched_.prepare(rows * std::size_t(words_)) &&
         overlaps_.prepare(rows);
}

void CoverageBuffer::add(const Shape& shape) {
  if (shape.liesInBox) return addWhole(shape.polygons);
  if (shape.moved == CGPoint{} && shape.scale == 1) {
    return shape.polygons.forEachEdge([this](CGPoint from, CGPoint to) { addEdge(from, to); });
  }
  const auto place = [&](CGPoint p) {
    return CGPoint{(p.x + shape.moved.x) * shape.scale, (p.y + shape.moved.y) * shape.scale};
  };
  shape.polygons.forEachEdge([&](CGPoint from, CGPoint to) { addEdge(place(from), place(to)); });
}

void CoverageBuffer::addWhole(const Polygons& polygons) {
  const double left = left_, top = top_;
  for (std::size_t i = 0; i < polygons.count(); ++i) {
    const std::span<const CGPoint> points = polygons.polygon(i);
    double x = points.back().x - left, y = points.back().y - top;
    for (const CGPoint& p : points) {
      const double toX = p.x - left, toY = p.y - top;
      if (y < toY) addInside(x, y, toX, toY, 1);
      else if (y > toY) addInside(toX, toY, x, y, -1);
      x = toX;
      y = toY;
    }
  }
}

// Makes the rows with overlaps anew.
void CoverageBuffer::addResolved(const Shape& shape, int firstRow) {
  sweepsSinceResolver_ = 0;
  const std::uint8_t* const overlaps = overlaps_.data();
  for (int row = firstRow; row < rows_; ++row) {
    if (overlaps[row]) clearRow(row);
  }
  resolver_.take(shape.polygons);
  resolver_.resolve({.moved = shape.moved,
                     .scale = shape.scale,
                     .rule = shape.rule,
                     .box = {-farthestPoint, double(box_.top + firstRow), double(box_.right), double(box_.bottom)},
                     .rows = std::span(overlaps + firstRow, std::size_t(rows_ - firstRow))},
                    [this](CGPoint from, CGPoint to) { addEdge(from, to); });
  for (int row = firstRow; row < rows_; ++row) {
    if (overlaps[row]) sumRow(row);
  }
}

void CoverageBuffer::addEdge(CGPoint from, CGPoint to) {
  // Downwards, in numbers of its own: points that change places go through memory, and this is called for every chord.
  const bool isDown = from.y < to.y;
  const float direction = isDown ? 1.0f : -1.0f;
  const double fromX = (isDown ? from.x : to.x) - left_, fromY = (isDown ? from.y : to.y) - top_;
  const double toX = (isDown ? to.x : from.x) - left_, toY = (isDown ? to.y : from.y) - top_;
  const double height = height_, width = width_;
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
  if (x0 <= 0 && x1 <= 0) return addUpright(0, y0, y1, direction);

  // The part left of the box covers as much as the same height of its left edge; the part right of it
  // nothing.
  const auto heightAt = [&](double x) { return std::min(std::max(y0, fromY + (x - fromX) / slope), y1); };
  const double atLeft = heightAt(0), atRight = heightAt(width);
  if (x0 < 0) {
    addUpright(0, y0, atLeft, direction);
    x0 = 0;
    y0 = atLeft;
  } else if (x1 < 0) {
    addUpright(0, atLeft, y1, direction);
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

inline void CoverageBuffer::Row::touch(int first, int last) {
  const int from = first / blockSize, to = last / blockSize;
  const std::uint64_t firstBits = ~std::uint64_t(0) << (from % 64), lastBits = ~std::uint64_t(0) >> (63 - to % 64);
  std::uint64_t* const word = touched + from / 64;
  const int others = to / 64 - from / 64;
  if (others == 0) {
    *word |= firstBits & lastBits;
    return;
  }
  *word |= firstBits;
  for (int i = 1; i < others; ++i) word[i] = ~std::uint64_t(0);
  word[others] |= lastBits;
}

// Of a side that stays in one pixel of a row: `middle` is how far from the pixel's left edge its middle lies.
inline void CoverageBuffer::Row::addToPixel(int column, float middle, float cover) {
  const float later = cover * middle;
  values[column] += cover - later;
  values[column + 1] += later;
  touch(column, column + 1);
}

void CoverageBuffer::addUpright(double x, double y0, double y1, float direction) {
  if (!(y0 < y1)) return;  // at the box's last edge there would be no row for it
  const int column = int(x), first = int(y0), last = lastRowOf(y1);
  const float middle = float(x - column);
  Row row = rowAt(first);
  double y = y0;
  for (int i = first; i < last; ++i, goDown(row)) {
    const double bottom = i + 1;
    row.addToPixel(column, middle, direction * float(bottom - y));
    y = bottom;
  }
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
  const auto addTo = [&](Place next, double bottom) {
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
  }
  addTo({x1, lastColumn}, y1);
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
  touch(left.column, right.column + 1);
}

// From the first row that shows an overlap, which is summed up, to the last one.
void CoverageBuffer::findOverlaps(int firstRow, bool hasPatches) {
  std::uint8_t* const overlaps = overlaps_.data();
  std::fill(overlaps, overlaps + rows_, std::uint8_t(0));
  overlaps[firstRow] = 2;
  Range before;
  for (int row = firstRow + 1; row < rows_; ++row) {
    const Range range = rangeOf(row, hasPatches);
    if (range.showsOverlap(before)) overlaps[row] = 2;
    before = range;
  }
  // The parts of an overlap in the rows next to these may have been too small to show.
  for (int row = 0; row < rows_; ++row) {
    const bool isNext = (row > 0 && overlaps[row - 1] == 2) || (row + 1 < rows_ && overlaps[row + 1] == 2);
    if (isNext && overlaps[row] == 0) overlaps[row] = 1;
  }
}

// The places where overlaps are expected as rectangles of whole pixels.
void CoverageBuffer::findPatches(const Shape& shape) {
  clearForReuse(patches_);
  for (const DeviceRect& place : shape.polygons.expectedOverlaps()) {
    PixelRect patch = place.moved(shape.moved.x, shape.moved.y).scaled(shape.scale).roundedOut().intersected(box_);
    if (patch.isEmpty()) continue;
    for (std::size_t i = patches_.size(); i-- > 0;) {
      const PixelRect both = patch.united(patches_[i]);
      if (costOf(both) > costOf(patch) + costOf(patches_[i])) continue;
      patch = both;
      patches_.erase(patches_.begin() + std::ptrdiff_t(i));
      i = patches_.size();  // it is larger now
    }
    if (patches_.size() < mostPatches) patches_.push_back(patch);
    else joinNearest(patch);
  }
}

void CoverageBuffer::joinNearest(const PixelRect& patch) {
  const auto more = [&](const PixelRect& other) { return costOf(patch.united(other)) - costOf(other); };
  const auto nearest = std::min_element(patches_.begin(), patches_.end(),
                                        [&](const PixelRect& a, const PixelRect& b) { return more(a) < more(b); });
  *nearest = patch.united(*nearest);
}

void CoverageBuffer::giveResolverBack() {
  resolver_ = {};
  sweepsSinceResolver_ = 0;
}

bool CoverageBuffer::replacePatches(const Shape& shape) {
  sweepsSinceResolver_ = 0;
  findPatches(shape);
  if (patches_.empty()) return false;
  std::uint8_t* const patched = patched_.prepare(std::size_t(rows_));
  if (!patched) return false;
  std::fill(patched, patched + rows_, std::uint8_t(0));
  for (const PixelRect& patch : patches_) {
    for (int y = patch.top; y < patch.bottom; ++y) {
      patched[y - box_.top] = 1;
      // What follows in the row counts from the pixel behind the patch.
      rowAt(y - box_.top).touch(patch.left - box_.left, patch.right - box_.left);
    }
  }
  Range range;
  for (int row = 0; row < rows_; ++row) {
    if (patched[row]) range = range.including(sumRow(row));
  }
  resolver_.take(shape.polygons);
  // Of the same sign as what lies beside them, which else would look like an overlap.
  for (const PixelRect& patch : patches_) replacePatch(shape, patch, range.isNegative() ? -1 : 1);
  return true;
}

void CoverageBuffer::replacePatch(const Shape& shape, const PixelRect& patch, float winding) {
  const int row = patch.top - box_.top, rows = patch.height();
  resolver_.cover({.moved = shape.moved,
                   .scale = shape.scale,
                   .rule = shape.rule,
                   .box = DeviceRect::of(patch),
                   .rows = std::span(patched_.data() + row, std::size_t(rows))},
                  {rowValues(row) + (patch.left - box_.left), stride_, winding});
  if (patch.right < box_.right) return;
  // What was summed up right of the box would look like an overlap.
  for (int i = row; i < row + rows; ++i) std::fill(rowValues(i) + box_.width(), rowValues(i) + stride_, 0.0f);
}

// Of a row with patches, which is summed up.
CoverageBuffer::Range CoverageBuffer::rangeOfSums(int row) {
  const float* const values = rowValues(row);
  Float4 least{}, most{};
  forEachRun(row, [&](int block, int count) {
    const float* const end = values + (block + count) * blockSize;
    for (const float* four = values + block * blockSize; four < end; four += 4) {
      Float4 v;
      std::memcpy(&v, four, sizeof v);
      least = smaller(least, v);
      most = larger(most, v);
    }
  });
  return {least, most};
}

// Turns the changes of a row into sums.
CoverageBuffer::Range CoverageBuffer::sumRow(int row) {
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

void CoverageBuffer::clearRow(int row) {
  float* const values = rowValues(row);
  forEachRun<Touched::Clear>(row, [values](int block, int count) { clearBlocks(values + block * blockSize, count); });
}

}  // namespace tessaluna::backend::raster
