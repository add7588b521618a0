#include "tessaluna/backends/raster/Blur.h"

#include <climits>
#include <cmath>
#include <cstring>
#include <utility>

namespace tessaluna::backend::raster {

namespace {

// Below this a Gaussian at whole pixels is a single pixel.
constexpr double leastDeviation = 0.1;
// The deviation of a wide blur, in cells: this much wider than a cell, the blur hides how values are spread within one.
constexpr double deviationInCells = 4;

constexpr int neverReached = INT_MAX;

}  // namespace

int Blur::cellSize(double deviation) { return deviation < 2 * deviationInCells ? 1 : int(deviation / deviationInCells); }

// Beyond this distance a straight edge leaves less than a sixteenth of a step of 255.
int Blur::reach(double deviation) { return deviation < leastDeviation ? 0 : int(std::ceil(deviation * 3.5)); }

void Blur::makeKernel(Kernel& kernel, double deviation, double move) {
  if (kernel.deviation == deviation && kernel.move == move) return;
  kernel.deviation = deviation;
  kernel.move = move;
  // The value of a pixel comes from the pixel that lies `move` before it, and from that pixel's neighbours.
  // A move by a part of a pixel is a blend of two whole moves, which a narrow Gaussian alone would hardly follow.
  const double whole = std::floor(-move), part = -move - whole;
  const int reach = Blur::reach(deviation), last = int(std::ceil(-move)) + reach;
  kernel.first = int(whole) - reach;
  kernel.count = last + 1 - kernel.first;
  const auto at = [&](double x) { return reach > 0 ? std::exp(-0.5 * x * x / (deviation * deviation)) : double(x == 0); };
  std::vector<double> sums;
  double sum = 0;
  for (int i = last; i >= kernel.first; --i) sums.push_back(sum += at(i - whole) * (1 - part) + at(i - whole - 1) * part);
  kernel.sums.assign((sums.size() + 3) / 4 * 4, 1.0f);
  std::transform(sums.begin(), sums.end(), kernel.sums.begin(), [sum](double part) { return float(part / sum); });
}

bool Blur::begin(const PixelRect& from, const PixelRect& to, const Style& style) {
  pixels_ = to_ = to;
  style_ = style;
  cell_ = cellSize(style.deviation);
  Style inCells = style;
  if (cell_ > 1) {
    // Taking the mean over a cell and interpolating between the middles of cells are blurs themselves, of known variance.
    const double spread = style.deviation / cell_;
    inCells = {.deviation = std::sqrt(spread * spread - 1.0 / 12 - 1.0 / 6)};
    to_ = DeviceRect::of(to).moved(-style.dx, -style.dy).scaled(1.0 / cell_).grown(2).roundedOut();
  }
  makeKernel(across_, inCells.deviation, inCells.dx);
  makeKernel(down_, inCells.deviation, inCells.dy);

  columns_.assign(std::size_t(to_.width() + blockSize - 1) / blockSize, {});
  const std::size_t width = columns_.size() * blockSize;
  // An empty block before all rows, one after them, and the row that is never reached. Columns an even number of blocks
  // apart would share places in a processor's cache.
  perColumn_ = (std::ptrdiff_t(from.height()) + 3) | 1;
  const std::size_t room = columns_.size() * std::size_t(perColumn_);
  if (!blocks_.prepare(room * blockSize) || !tops_.prepare(room) ||
      !blurred_.prepare(std::max(width, std::size_t(to.width()))) || !received_.prepare(width + 2 * across_.sums.size()))
    return false;
  for (int column = 0; column < int(columns_.size()); ++column) {
    std::fill_n(block(column, 0), blockSize, 0.0f);
    columns_[std::size_t(column)].count = 1;
    tops(column)[0] = INT_MIN;
    tops(column)[1] = neverReached;
  }
  top_ = bottom_ = from.top;
  runEnd_ = from.left;
  done_ = 0;
  level_ = 0;
  row_ = neverReached;
  return true;
}

inline void Blur::beginRun(const PixelRect& box) {
  if (box.top >= bottom_) {
    finishRow();
    // Rows that have no values.
    if (box.top > bottom_) addRow(nullptr, bottom_);
    top_ = box.top;
    bottom_ = box.bottom;
  } else if (box.left > runEnd_ && level_ != 0) {
    change(runEnd_, 0);
  }
  runEnd_ = box.right;
}

void Blur::uniformRows(const PixelRect& box, float winding) {
  beginRun(box);
  if (const float value = coverageOf(winding); value != level_) change(box.left, value);
}

void Blur::variedRows(const PixelRect& box, const float* windings) {
  beginRun(box);
  for (int i = 0; i < box.width(); ++i) {
    if (const float value = coverageOf(windings[i]); value != level_) change(box.left + i, value);
  }
}

// Values of this row change at column x.
void Blur::change(int x, float value) {
  // Before the row's first value there is room for the sums.
  const int reach = int(across_.sums.size()), end = int(columns_.size()) * blockSize + reach;
  const int first = x - across_.first - across_.count + 1 - to_.left + reach, last = std::min(first, end) + reach;
  float* const values = received_.data();
  if (last > done_) {
    std::fill(values + done_, values + last, level_);
    done_ = last;
  }
  const Float4 by = splat(value - level_);
  level_ = value;
  if (first < 0 || first >= end) return;
  for (int i = 0; i < reach; i += 4) {
    const Float4 four = fourOf(values + first + i) + fourOf(across_.sums.data() + i) * by;
    std::memcpy(values + first + i, &four, sizeof four);
  }
}

void Blur::finishRow() {
  if (bottom_ == top_) return;
  if (level_ != 0) change(runEnd_, 0);
  const int reach = int(across_.sums.size()), end = int(columns_.size()) * blockSize + reach;
  float* const values = received_.data();
  if (done_ < end) std::fill(values + done_, values + end, 0.0f);
  done_ = 0;
  addRow(values + reach, top_);
}

// Null means a row of zeros.
void Blur::addRow(const float* values, int y) {
  constexpr std::size_t fours = blockSize / 4;
  for (int i = 0; i < int(columns_.size()); ++i) {
    Column& column = columns_[std::size_t(i)];
    Float4 added[fours] = {}, last[fours];
    if (values) std::memcpy(added, values + i * blockSize, sizeof added);
    std::memcpy(last, block(i, column.count - 1), sizeof last);
    Int4 differences{};
    for (std::size_t four = 0; four < fours; ++four) differences |= added[four] != last[four];
    if (!isAnySet(differences)) continue;
    std::memcpy(block(i, column.count), added, sizeof added);
    tops(i)[column.count++] = y;
    tops(i)[column.count] = neverReached;
  }
}

bool Blur::end() {
  finishRow();
  addRow(nullptr, bottom_);
  if (cell_ == 1) return true;
  const int width = int(columns_.size()) * blockSize;
  if (!cells_.prepare(std::size_t(width) * std::size_t(to_.height())) || !between_.prepare(std::size_t(width))) return false;
  float* out = cells_.data();
  for (int y = to_.top; y < to_.bottom; ++y) {
    for (int column = 0; column < int(columns_.size()); ++column, out += blockSize) blurDown(column, y, out);
  }
  places_.clear();
  for (int x = pixels_.left; x < pixels_.right; ++x) {
    const double place = (x + 0.5 - style_.dx) / cell_ - 0.5, left = std::floor(place);
    places_.push_back({int(left) - to_.left, float(place - left)});
  }
  return true;
}

// Writes a block of blurred values and returns the row down to which they stay the same.
int Blur::blurDown(int column, int y, float* out) {
  const int* const tops = this->tops(column);
  const int low = y + down_.first, high = low + down_.count;
  int& first = columns_[std::size_t(column)].first;
  if (tops[first] > low) first = 0;
  while (tops[first + 1] <= low) ++first;
  const float* values = block(column, first);
  if (tops[first + 1] >= high) {
    std::memcpy(out, values, blockSize * sizeof(float));
    return tops[first + 1] == neverReached ? neverReached : tops[first + 1] - high + y + 1;
  }
  constexpr std::size_t fours = blockSize / 4;
  Float4 sums[fours] = {};
  float before = 1;
  for (const int* next = tops + first + 1;; ++next, values += blockSize) {
    const bool isLast = *next >= high;
    const float after = isLast ? 0 : down_.sums[std::size_t(high - 1 - *next)];
    for (std::size_t i = 0; i < fours; ++i) sums[i] += fourOf(values + 4 * i) * splat(before - after);
    if (isLast) break;
    before = after;
  }
  std::memcpy(out, sums, sizeof sums);
  return y + 1;
}

Blur::Rows Blur::rowsAt(int x, int y, int count) {
  const int left = x - pixels_.left, right = left + count;
  const bool isNew = std::exchange(row_, y) != y;
  float* const out = blurred_.data();
  if (cell_ > 1) {
    if (isNew) blendCells(y);
    for (int i = left; i < right; ++i) {
      const float* pair = between_.data() + places_[std::size_t(i)].left;
      out[i] = pair[0] + (pair[1] - pair[0]) * places_[std::size_t(i)].share;
    }
    return {out + left, y + 1};
  }
  if (isNew) {
    doneColumns_ = 0;
    repeatEnd_ = neverReached;
  }
  int column = std::max(doneColumns_, left / blockSize);
  for (; column * blockSize < right; ++column)
    repeatEnd_ = std::min(repeatEnd_, blurDown(column, y, out + column * blockSize));
  doneColumns_ = column;
  return {out + left, repeatEnd_};
}

// A row of pixels lies between the middles of two rows of cells.
void Blur::blendCells(int y) {
  const double place = (y + 0.5 - style_.dy) / cell_ - 0.5, above = std::floor(place);
  const float share = float(place - above);
  const int width = int(columns_.size()) * blockSize;
  const float* const upper = cells_.data() + std::ptrdiff_t(int(above) - to_.top) * width;
  for (int i = 0; i < width; ++i) between_.data()[i] = upper[i] + (upper[i + width] - upper[i]) * share;
}

}  // namespace tessaluna::backend::raster
