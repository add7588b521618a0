#include "tessaluna/backends/raster/ResampledAxis.h"

#include <algorithm>
#include <cmath>

#include "tessaluna/backends/raster/PixelRect.h"

namespace tessaluna::backend::raster {

namespace {

constexpr int allWeight = 0xffff;

}  // namespace

void ResampledAxis::begin(const Style& style) {
  copies_ = style.copies;
  const double perPlace = style.sourceLength / (style.end - style.start);  // source pixels, with their sign
  const double low = std::min(style.start, style.end), high = std::max(style.start, style.end);
  const double width = std::abs(perPlace) * style.reach;
  const bool shrinks = width > 1;
  // The most source pixels that such a part touches, rounded up to an even number.
  taps_ = shrinks ? (floorWithin(width, 1, style.pixels) + 3) / 2 * 2 : 2;
  const int count = style.high - style.low + 1;
  firsts_.assign(std::size_t(count), 0);
  weights_.assign(std::size_t(count) * std::size_t(taps_) * std::size_t(copies_), 0);
  for (int index = 0; index + 1 < count; ++index) {
    const double middle = style.low + index + 0.5, half = style.reach / 2;
    const double from = std::clamp(middle - half, low, high), to = std::clamp(middle + half, low, high);
    const double a = style.sourceStart + (from - style.start) * perPlace;
    const double b = style.sourceStart + (to - style.start) * perPlace;
    if (shrinks) average({std::min(a, b), std::max(a, b)}, style.pixels, index);
    else blend((a + b) * 0.5 - 0.5, style.pixels, index);
  }
}

int ResampledAxis::setFirst(int index, int wanted, int pixels) {
  const int first = std::clamp(wanted, 0, std::max(0, pixels - taps_));
  firsts_[std::size_t(index)] = first;
  return first;
}

void ResampledAxis::setWeight(int index, int tap, int weight) {
  const std::size_t at = (std::size_t(index) * std::size_t(taps_) + std::size_t(tap)) * std::size_t(copies_);
  std::fill_n(weights_.data() + at, copies_, std::uint16_t(weight));
}

void ResampledAxis::average(Part part, int pixels, int index) {
  const int last = pixels - 1;
  const int from = floorWithin(part.low, 0, last);
  const int end = std::min(floorWithin(std::ceil(part.high), from + 1, pixels), from + taps_);
  const int first = setFirst(index, from, pixels);
  const double low = std::max(part.low, double(from)), length = std::min(part.high, double(end)) - low;
  // Weights are differences of rounded sums, so that all of them together are exactly one.
  int before = 0;
  for (int i = from; i < end; ++i) {
    const double share = length > 0 ? std::clamp((i + 1 - low) / length, 0.0, 1.0) : 1;
    const int sum = i + 1 == end ? allWeight : int(share * allWeight + 0.5);
    setWeight(index, i - first, sum - before);
    before = sum;
  }
}

// Blends between the middles of two source pixels; beyond the outermost middle the outermost pixel continues.
void ResampledAxis::blend(double middle, int pixels, int index) {
  const int below = floorWithin(middle, 0, pixels - 1), first = setFirst(index, below, pixels);
  const int share = int(std::clamp(middle - below, 0.0, 1.0) * allWeight + 0.5);
  const bool isLast = below == pixels - 1;
  setWeight(index, below - first, isLast ? allWeight : allWeight - share);
  if (!isLast) setWeight(index, below + 1 - first, share);
}

}  // namespace tessaluna::backend::raster
