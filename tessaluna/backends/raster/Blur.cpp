#include "tessaluna/backends/raster/Blur.h"

#include <cmath>
#include <cstring>
#include <numeric>
#include <utility>

namespace tessaluna::backend::raster {

namespace {

// Below this a Gaussian at whole pixels is a single pixel.
constexpr double leastDeviation = 0.1;
// The deviation of a wide blur, in cells: this much wider than a cell, the blur hides how values are spread within one.
constexpr double deviationInCells = 4;

}  // namespace

int Blur::cellSize(double deviation) { return deviation < 2 * deviationInCells ? 1 : int(deviation / deviationInCells); }

// Beyond this distance a straight edge leaves less than a sixteenth of a step of 255.
int Blur::reach(double deviation) { return deviation < leastDeviation ? 0 : int(std::ceil(deviation * 3.5)); }

void Blur::makeKernel(Kernel& kernel, double deviation, double move) {
  // The value of a pixel comes from the pixel that lies `move` before it, and from that pixel's neighbours.
  // A move by a part of a pixel is a blend of two whole moves, which a narrow Gaussian alone would hardly follow.
  const double whole = std::floor(-move), part = -move - whole;
  const int reach = Blur::reach(deviation), last = int(std::ceil(-move)) + reach;
  kernel.first = int(whole) - reach;
  kernel.weights.clear();
  kernel.isSymmetric = part == 0;
  const auto at = [&](double x) { return reach > 0 ? std::exp(-0.5 * x * x / (deviation * deviation)) : double(x == 0); };
  const auto gaussian = [&](int i) { return at(i - whole) * (1 - part) + at(i - whole - 1) * part; };
  double sum = 0;
  for (int i = kernel.first; i <= last; ++i) sum += kernel.weights.emplace_back(float(gaussian(i)));
  for (float& weight : kernel.weights) weight = float(weight / sum);
}

bool Blur::begin(Plane& from, const PixelRect& box, const Style& style) {
  makeKernel(across_, style.deviation, style.dx);
  makeKernel(down_, style.deviation, style.dy);
  sums_.assign((across_.weights.size() + 2) / 4 * 4, 1.0f);
  std::partial_sum(across_.weights.rbegin(), across_.weights.rend() - 1, sums_.begin());
  const PixelRect middle{box.left, from.box().top, box.right, from.box().bottom};
  if (!rows_.begin(middle) || !padded_.prepare(std::size_t(box.width()) + 2 * sums_.size() + blockSize)) return false;
  row_ = box.top;
  done_ = 0;
  repeats_.assign(std::size_t(middle.height()) * std::size_t(inBlocks(middle.width()) / blockSize), 0);
  const std::size_t bytes = std::size_t(from.box().width()) * sizeof(float);
  for (int y = middle.top; y < middle.bottom; ++y) {
    const bool repeats = y > middle.top && std::memcmp(from.row(y), from.row(y - 1), bytes) == 0;
    if (repeats) std::copy_n(rows_.row(y - 1), middle.width(), rows_.row(y));
    else convolveAcross(from, y);
    if (y > middle.top) countRepeats(y, repeats);
  }
  return true;
}

bool Blur::convolve(Plane& from, Plane& to, const Style& style) {
  if (!begin(from, to.box(), style)) return false;
  for (int y = to.box().top; y < to.box().bottom; ++y) convolveDown(y, 0, to.box().width(), to.row(y));
  return true;
}

const float* Blur::valuesAt(int x, int y, int count) {
  const int left = x - rows_.box().left, right = left + count;
  if (std::exchange(row_, y) != y) done_ = 0;
  if (right > done_) {
    const int from = std::max(done_, left / blockSize * blockSize);
    done_ = inBlocks(right);
    convolveDown(y, from, right, padded_.data());
  }
  return padded_.data() + left;
}

Blur::Taps Blur::tapsOf(const Kernel& kernel, int from, int to) {
  Taps taps{std::span(kernel.weights).subspan(std::size_t(from), std::size_t(to - from))};
  const int middle = int(kernel.weights.size() / 2);
  if (!kernel.isSymmetric || middle < from || middle >= to) return taps;
  const int pairs = std::min(middle - from, to - 1 - middle);
  taps.pairs = std::size_t(pairs);
  taps.firstPair = std::size_t(middle - pairs - from);
  return taps;
}

// The sums of a block of values, over taps that lie `step` values apart.
inline void Blur::sumBlock(const float* from, std::ptrdiff_t step, const Taps& taps, float* out) {
  constexpr int fours = blockSize / 4;
  Float4 sums[fours] = {};
  const float *weight = taps.weights.data(), *const firstPair = weight + taps.firstPair,
              *const middle = firstPair + taps.pairs;
  const auto addOnes = [&](const float* end) {
    for (; weight < end; ++weight, from += step) {
      for (int i = 0; i < fours; ++i) sums[i] += fourOf(from + 4 * i) * splat(*weight);
    }
  };
  addOnes(firstPair);
  const float* mirrored = from + 2 * std::ptrdiff_t(taps.pairs) * step;
  for (; weight < middle; ++weight, from += step, mirrored -= step) {
    for (int i = 0; i < fours; ++i) sums[i] += (fourOf(from + 4 * i) + fourOf(mirrored + 4 * i)) * splat(*weight);
  }
  if (taps.pairs > 0) {
    addOnes(middle + 1);
    weight += taps.pairs;
    from += std::ptrdiff_t(taps.pairs) * step;
  }
  addOnes(taps.weights.data() + taps.weights.size());
  std::memcpy(out, sums, sizeof sums);
}

// Coverage changes in only a few places of a row, and each change spreads as the kernel's sums do.
void Blur::convolveAcross(Plane& from, int y) {
  const int width = rows_.box().width(), reach = int(sums_.size());
  // Where a change at the row's first pixel begins to show in the padded row.
  const int shift = from.box().left - across_.first - int(across_.weights.size()) + 1 - rows_.box().left + reach;
  float *const padded = padded_.data(), *const row = from.row(y);
  const int end = width + reach, count = from.box().width();
  int done = 0;     // values to which all changes so far have been added
  float level = 0;  // of the values after them
  const auto change = [&](int x, float value) {
    const int first = x + shift, last = std::min(first, end) + reach;
    if (last > done) std::fill(padded + done, padded + last, level);
    done = std::max(done, last);
    const Float4 by = splat(value - level);
    level = value;
    if (first < 0 || first >= end) return;
    for (int i = 0; i < reach; i += 4) {
      float* const four = padded + first + i;
      const Float4 values = fourOf(four) + fourOf(sums_.data() + i) * by;
      std::memcpy(four, &values, sizeof values);
    }
  };
  change(0, row[0]);
  for (int x = 1; x < count; x += 4) {
    const bool isFour = x + 4 <= count;
    if (isFour && !isAnySet(fourOf(row + x) != fourOf(row + x - 1))) continue;
    for (int i = x; i < (isFour ? x + 4 : count); ++i) {
      if (row[i] != row[i - 1]) change(i, row[i]);
    }
  }
  change(count, 0);
  if (done < end) std::fill(padded + done, padded + end, level);
  std::copy_n(padded + reach, width, rows_.row(y));
}

void Blur::countRepeats(int y, bool isCopy) {
  const int width = rows_.box().width();
  const float *const row = rows_.row(y), *const above = rows_.row(y - 1);
  const int* before = repeatsOf(y - 1);
  int* repeats = repeatsOf(y);
  for (int x = 0; x < width; x += blockSize, ++repeats, ++before) {
    const std::size_t bytes = std::size_t(std::min(blockSize, width - x)) * sizeof(float);
    if (isCopy || std::memcmp(row + x, above + x, bytes) == 0) *repeats = *before + 1;
  }
}

// The blocks from column `left`, where one begins, up to column `right`.
void Blur::convolveDown(int y, int left, int right, float* out) {
  const PixelRect& middle = rows_.box();
  const int first = std::max(y + down_.first, middle.top);
  const int last = std::min(y + down_.first + int(down_.weights.size()), middle.bottom);
  if (first >= last) return void(std::fill_n(out + left, inBlocks(right - left), 0.0f));
  const Taps taps = tapsOf(down_, first - y - down_.first, last - y - down_.first);
  const float* const above = rows_.row(first);
  const float all = std::accumulate(taps.weights.begin(), taps.weights.end(), 0.0f);
  const Taps once{.weights = {&all, 1}};
  const int* repeats = repeatsOf(last - 1) + left / blockSize;
  // Each row has room for whole blocks: what is written beyond its end is the next row's, which follows.
  for (int x = left; x < right; x += blockSize) {
    // Rows that repeat need only one multiplication.
    if (*repeats++ >= last - first - 1) sumBlock(above + x, middle.width(), once, out + x);
    else sumBlock(above + x, middle.width(), taps, out + x);
  }
}

bool Blur::apply(Plane& from, Plane& to, const Style& style) {
  const int cell = cellSize(style.deviation);
  if (cell == 1) return convolve(from, to, style);
  // Taking the mean over a cell and interpolating between the middles of cells are blurs themselves, of known variance.
  const double spread = style.deviation / cell;
  const double deviation = std::sqrt(spread * spread - 1.0 / 12 - 1.0 / 6);
  const DeviceRect seen{(to.box().left - style.dx) / cell - 2, (to.box().top - style.dy) / cell - 2,
                        (to.box().right - style.dx) / cell + 2, (to.box().bottom - style.dy) / cell + 2};
  if (!cells_.begin(seen.roundedOut()) || !convolve(from, cells_, {.deviation = deviation})) return false;
  return enlarge(cells_, to, cell, style);
}

// Each pixel lies between the middles of four cells and blends them.
bool Blur::enlarge(Plane& cells, Plane& to, int cell, const Style& style) {
  const auto place = [cell](int pixel, double move) { return (pixel + 0.5 - move) / cell - 0.5; };
  const int width = cells.box().width(), count = to.box().width();
  float* const between = padded_.prepare(std::size_t(width));
  Column* const columns = columns_.prepare(std::size_t(count));
  if (!between || !columns) return false;
  for (int x = 0; x < count; ++x) {
    const double column = place(to.box().left + x, style.dx), left = std::floor(column);
    columns[x] = {int(left) - cells.box().left, float(column - left)};
  }
  for (int y = to.box().top; y < to.box().bottom; ++y) {
    const double row = place(y, style.dy), above = std::floor(row);
    const float below = float(row - above);
    const float *upper = cells.row(int(above)), *lower = cells.row(int(above) + 1);
    for (int x = 0; x < width; ++x) between[x] = upper[x] + (lower[x] - upper[x]) * below;
    float* out = to.row(y);
    for (int x = 0; x < count; ++x) {
      const float* pair = between + columns[x].left;
      out[x] = pair[0] + (pair[1] - pair[0]) * columns[x].share;
    }
  }
  return true;
}

}  // namespace tessaluna::backend::raster
