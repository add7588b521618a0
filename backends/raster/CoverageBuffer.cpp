#include "backends/raster/CoverageBuffer.h"

namespace backend::raster {

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
  firstRow_ = box.height();
  lastRow_ = -1;
  // Both stay all zero between uses: a row is cleared when it has been told.
  const std::size_t rows = std::size_t(box.height());
  return values_.prepare(rows * std::size_t(stride_)) && touched_.prepare(rows * std::size_t(words_)) &&
         overlaps_.prepare(rows);
}

void CoverageBuffer::add(const Shape& shape) {
  if (shape.moved == CGPoint{} && shape.scale == 1) {
    return shape.polygons.forEachEdge([this](CGPoint from, CGPoint to) { addEdge(from, to); });
  }
  const auto place = [&](CGPoint p) {
    return CGPoint{(p.x + shape.moved.x) * shape.scale, (p.y + shape.moved.y) * shape.scale};
  };
  shape.polygons.forEachEdge([&](CGPoint from, CGPoint to) { addEdge(place(from), place(to)); });
}

// Makes the rows with overlaps anew.
void CoverageBuffer::addResolved(const Shape& shape, int firstRow) {
  sweepsSinceResolver_ = 0;
  const std::uint8_t* const overlaps = overlaps_.data();
  const int first = firstRow, last = lastRow_;
  for (int row = first; row <= last; ++row) {
    if (overlaps[row]) clearRow(row);
  }
  resolver_.take(shape.polygons);
  resolver_.resolve({.moved = shape.moved,
                     .scale = shape.scale,
                     .rule = shape.rule,
                     .box = {-farthestPoint, double(box_.top + first), double(box_.right), double(box_.top + last + 1)},
                     .rows = std::span(overlaps + first, std::size_t(last - first + 1))},
                    [this](CGPoint from, CGPoint to) { addEdge(from, to); });
  for (int row = first; row <= last; ++row) {
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
  const bool isInside = fromY >= 0 && toY <= height && std::min(fromX, toX) >= 0 && std::max(fromX, toX) <= width;
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
  touched[from / 64] |= std::uint64_t(1) << (from % 64);
  for (int block = from + 1; block <= to; ++block) touched[block / 64] |= std::uint64_t(1) << (block % 64);
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
  firstRow_ = std::min(firstRow_, first);
  lastRow_ = std::max(lastRow_, last);
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
  int column = int(x0);
  const int lastColumn = int(x1);
  Row row = rowAt(first);
  // Most chords of a curve are shorter than a pixel.
  if (first == last && column == lastColumn) {
    firstRow_ = std::min(firstRow_, first);
    lastRow_ = std::max(lastRow_, last);
    return row.addToPixel(column, float((x0 + x1) * 0.5 - column), direction * float(y1 - y0));
  }
  const double slope = (x1 - x0) / (y1 - y0);
  if (!std::isfinite(slope)) return;  // as good as level
  if (slope == 0) return addUpright(x0, y0, y1, direction);
  firstRow_ = std::min(firstRow_, first);
  lastRow_ = std::max(lastRow_, last);
  const bool isInColumn = column == lastColumn;
  const float coverPerPixel = isInColumn ? 0 : direction * float(std::abs((y1 - y0) / (x1 - x0)));
  double x = x0, y = y0;
  for (int i = first; i < last; ++i, goDown(row)) {
    const double bottom = i + 1;
    // From the start every time, so that errors do not add up.
    const double next = x0 + (bottom - y0) * slope;
    const int nextColumn = isInColumn ? column : int(next);  // which rounding must not leave
    if (column == nextColumn) row.addToPixel(column, float((x + next) * 0.5 - column), direction * float(bottom - y));
    else row.addToPixels(x, next, coverPerPixel);
    x = next;
    y = bottom;
    column = nextColumn;
  }
  if (column == lastColumn) row.addToPixel(column, float((x + x1) * 0.5 - column), direction * float(y1 - y));
  else row.addToPixels(x, x1, coverPerPixel);
}

// Of a side that crosses several pixels of a row: it covers so much of the row's height while it goes over one of
// them.
void CoverageBuffer::Row::addToPixels(double from, double to, float coverPerPixel) {
  const double left = std::min(from, to), right = std::max(from, to);
  const int first = int(left), last = int(right);
  float* const value = values + first;
  // The area right of the side grows quadratically in its first and last pixel, linearly between. Each pixel
  // gets its area less what the pixels before it got.
  const int pixels = last - first;
  const float in = float(first + 1 - left), out = float(right - last);
  const float cover = coverPerPixel * float(right - left);
  float level = coverPerPixel * in;
  float before = 0.5f * level * in;
  value[0] += before;
  for (int i = 1; i < pixels; ++i) {
    const float here = level + 0.5f * coverPerPixel;
    value[i] += here - before;
    before = here;
    level += coverPerPixel;
  }
  const float lastArea = level + (cover - level) * (1 - 0.5f * out);
  value[pixels] += lastArea - before;
  value[pixels + 1] += cover - lastArea;
  touch(first, last + 1);
}

// From the first row that shows an overlap, which is summed up, to the last one.
void CoverageBuffer::findOverlaps(int firstRow) {
  std::uint8_t* const overlaps = overlaps_.data();
  std::fill(overlaps + firstRow_, overlaps + lastRow_ + 1, std::uint8_t(0));
  overlaps[firstRow] = 2;
  Range before;
  for (int row = firstRow + 1; row <= lastRow_; ++row) {
    const Range range = sumRow(row);
    if (range.showsOverlap(before)) overlaps[row] = 2;
    before = range;
  }
  // The parts of an overlap in the rows next to these may have been too small to show.
  for (int row = firstRow_; row <= lastRow_; ++row) {
    const bool isNext = (row > firstRow_ && overlaps[row - 1] == 2) || (row < lastRow_ && overlaps[row + 1] == 2);
    if (isNext && overlaps[row] == 0) overlaps[row] = 1;
  }
}

// The places where overlaps are expected as rectangles of whole pixels.
void CoverageBuffer::findPatches(const Shape& shape) {
  clearForReuse(patches_);
  const PixelRect rows{box_.left, box_.top + firstRow_, box_.right, box_.top + lastRow_ + 1};
  for (const DeviceRect& place : shape.polygons.expectedOverlaps()) {
    PixelRect patch = place.moved(shape.moved.x, shape.moved.y).scaled(shape.scale).roundedOut().intersected(rows);
    if (patch.isEmpty()) continue;
    for (std::size_t i = patches_.size(); i-- > 0;) {
      const PixelRect both = patch.united(patches_[i]);
      if (costOf(both) > costOf(patch) + costOf(patches_[i]) && patches_.size() < mostPatches) continue;
      patch = both;
      patches_.erase(patches_.begin() + std::ptrdiff_t(i));
      i = patches_.size();  // it is larger now
    }
    patches_.push_back(patch);
  }
}

void CoverageBuffer::giveResolverBack() {
  resolver_ = {};
  sweepsSinceResolver_ = 0;
}

void CoverageBuffer::replacePatches(const Shape& shape) {
  sweepsSinceResolver_ = 0;
  if (firstRow_ > lastRow_) return;
  findPatches(shape);
  std::uint8_t* const isSummed = overlaps_.data();
  std::fill(isSummed + firstRow_, isSummed + lastRow_ + 1, std::uint8_t(0));
  for (const PixelRect& patch : patches_) {
    for (int y = patch.top; y < patch.bottom; ++y) {
      isSummed[y - box_.top] = 1;
      // What follows in the row counts from the pixel behind the patch.
      rowAt(y - box_.top).touch(patch.left - box_.left, patch.right - box_.left);
    }
  }
  for (int row = firstRow_; row <= lastRow_; ++row) {
    if (isSummed[row]) sumRow(row);
  }
  if (!patches_.empty()) resolver_.take(shape.polygons);
  for (const PixelRect& patch : patches_) replacePatch(shape, patch);
}

void CoverageBuffer::replacePatch(const Shape& shape, const PixelRect& patch) {
  const int row = patch.top - box_.top, rows = patch.height();
  resolver_.cover({.moved = shape.moved,
                   .scale = shape.scale,
                   .rule = shape.rule,
                   .box = DeviceRect::of(patch),
                   .rows = std::span(overlaps_.data() + row, std::size_t(rows))},
                  {rowValues(row) + (patch.left - box_.left), stride_});
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
  forEachRun(row, [&](int block, int count) { clearBlocks(rowValues(row) + block * blockSize, count); });
  std::fill_n(rowTouched(row), words_, 0);
}

}  // namespace backend::raster
