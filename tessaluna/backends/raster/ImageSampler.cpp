#include "tessaluna/backends/raster/ImageSampler.h"

#include <bit>
#include <cmath>

namespace tessaluna::backend::raster {

namespace {

// A turned image is averaged to this many samples per device pixel and direction, each as wide as a whole pixel. The blend
// between fewer samples would blur; more samples would not be visible.
constexpr double samplesPerPixel = 2;

// The channels of two neighbours, with eight bits after the point.
Short8 twoTexels(const std::uint32_t* pixels) {
  Long2 both{};
  std::memcpy(&both, pixels, 8);
  return interleavedBytes(Long2{}, both);
}

// What was truncated from so many products: half a step for each.
Short8 cutOff(int products) { return Short8{} + std::uint16_t(std::min(products / 2, 64)); }

Short8 load(const void* from) {
  Short8 eight;
  std::memcpy(&eight, from, sizeof eight);
  return eight;
}

void store(Short8 eight, void* to) { std::memcpy(to, &eight, sizeof eight); }

Short8 twoTexels(const std::uint64_t* channels) { return load(channels); }

Short8 lowerHalves(Short8 a, Short8 b) { return __builtin_shufflevector(a, b, 0, 1, 2, 3, 8, 9, 10, 11); }
Short8 upperHalves(Short8 a, Short8 b) { return __builtin_shufflevector(a, b, 4, 5, 6, 7, 12, 13, 14, 15); }

}  // namespace

bool ImageSampler::begin(const ImagePixels& image, CGRect source, const CGAffineTransform& toDevice, const PixelRect& box) {
  texels_ = {image.argb.data(), image.width, image.height};
  isOpaque_ = image.isOpaque || findOpaque(source);
  if (beginCopied(source, toDevice)) return true;
  if (toDevice.b != 0 || toDevice.c != 0) return beginTurned(source, toDevice, box);
  way_ = Way::Upright;
  left_ = box.left;
  top_ = box.top;
  const CGPoint first = toDevice.apply(source.origin);
  const CGPoint last = toDevice.apply({CGRectGetMaxX(source), CGRectGetMaxY(source)});
  return beginUpright(source, {first.x, first.y, last.x, last.y}, box, {1, 1});
}

bool ImageSampler::findOpaque(CGRect source) {
  const int top = floorWithin(CGRectGetMinY(source) - 1, 0, texels_.height - 1);
  const int bottom = floorWithin(CGRectGetMaxY(source) + 2, top + 1, texels_.height);
  const int left = floorWithin(CGRectGetMinX(source) - 1, 0, texels_.width - 1);
  const int right = floorWithin(CGRectGetMaxX(source) + 2, left + 1, texels_.width);
  for (int y = top; y < bottom; ++y) {
    const std::uint32_t* pixels = texels_.row(y) + left;
    std::uint32_t all = 0xff000000;
    for (int i = 0; i < right - left; ++i) all &= pixels[i];
    if (all != 0xff000000) return false;
  }
  return true;
}

bool ImageSampler::beginCopied(CGRect source, const CGAffineTransform& t) {
  const CGPoint last = t.apply({CGRectGetMaxX(source), CGRectGetMaxY(source)});
  const CGPoint first = t.apply(source.origin);
  const bool isCopied =
      t.b == 0 && t.c == 0 && isNearlyWhole(source.origin.x) && isNearlyWhole(source.origin.y) && isNearlyWhole(first.x) &&
      isNearlyWhole(first.y) && std::abs(last.x - first.x - source.size.width) < nearlyWhole &&
      std::abs(last.y - first.y - source.size.height) < nearlyWhole && source.origin.x >= 0 && source.origin.y >= 0 &&
      CGRectGetMaxX(source) <= texels_.width && CGRectGetMaxY(source) <= texels_.height;
  if (!isCopied) return false;
  way_ = Way::Copied;
  left_ = int(std::round(first.x - source.origin.x));
  top_ = int(std::round(first.y - source.origin.y));
  return true;
}

// Shows the source in a place, whose sides are reversed if the image is. A sample averages a part of the place of this reach.
bool ImageSampler::beginUpright(CGRect source, const DeviceRect& place, const PixelRect& box, CGSize reach) {
  across_.begin({.sourceStart = source.origin.x,
                 .sourceLength = source.size.width,
                 .pixels = texels_.width,
                 .start = place.left,
                 .end = place.right,
                 .low = box.left,
                 .high = box.right,
                 .reach = reach.width});
  down_.begin({.sourceStart = source.origin.y,
               .sourceLength = source.size.height,
               .pixels = texels_.height,
               .start = place.top,
               .end = place.bottom,
               .low = box.top,
               .high = box.bottom,
               .reach = reach.height,
               .copies = 1});
  columns_ = box.width();
  averagesRows_ = down_.taps() > 2;
  std::fill_n(rowsMadeFrom_, 2, -1);
  // Columns are processed in pairs and read in fours.
  const bool hasRows = rows_.prepare(2 * std::size_t(columns_ + 4)) != nullptr;
  const std::size_t width = std::size_t(std::max(texels_.width, across_.taps()));
  if (averagesRows_) {
    std::uint64_t* averages = averages_.prepare(width + 4);
    if (averages) std::fill_n(averages, width + 4, 0u);
    return hasRows && averages;
  }
  if (texels_.width >= across_.taps()) return hasRows;
  std::uint32_t* line = line_.prepare(width);
  if (line) std::fill_n(line, width, 0u);
  return hasRows && line;
}

bool ImageSampler::beginTurned(CGRect source, const CGAffineTransform& t, const PixelRect& box) {
  const std::optional<CGAffineTransform> back = t.inverted();
  if (!back) return false;
  toTexels_ = *back;
  const double across = std::hypot(t.a, t.b), down = std::hypot(t.c, t.d);  // device pixels per source pixel
  if (across < 1 || down < 1 || texels_.width < 2) {
    // The visible part of the source, with a margin from which its edges are blended.
    const CGRect shown =
        back->applyToRect({{double(box.left), double(box.top)}, {double(box.width()), double(box.height())}});
    const double x = std::clamp(CGRectGetMinX(shown) - 2 / across, CGRectGetMinX(source), CGRectGetMaxX(source));
    const double y = std::clamp(CGRectGetMinY(shown) - 2 / down, CGRectGetMinY(source), CGRectGetMaxY(source));
    const double width = std::clamp(CGRectGetMaxX(shown) + 2 / across, x, CGRectGetMaxX(source)) - x;
    const double height = std::clamp(CGRectGetMaxY(shown) + 2 / down, y, CGRectGetMaxY(source)) - y;
    const double acrossSamples = std::min(1.0, across * samplesPerPixel),
                 downSamples = std::min(1.0, down * samplesPerPixel);
    const int columns = floorWithin(std::ceil(width * acrossSamples), 2, 1 << 16);
    const int rows = floorWithin(std::ceil(height * downSamples), 1, 1 << 16);
    const CGSize reach{std::max(1.0, columns / (width * across)), std::max(1.0, rows / (height * down))};
    const PixelRect samples{0, 0, columns, rows};
    const bool isReady = beginUpright({{x, y}, {width, height}}, DeviceRect::of(samples), samples, reach);
    std::uint32_t* averaged = isReady ? averaged_.prepare(std::size_t(columns) * std::size_t(rows)) : nullptr;
    if (!averaged) return false;
    way_ = Way::Upright;
    left_ = top_ = 0;
    for (int row = 0; row < rows; ++row) writePixels(0, row, columns, averaged + std::size_t(row) * std::size_t(columns));
    toTexels_ = toTexels_.then({columns / width, 0, 0, rows / height, -x * columns / width, -y * rows / height});
    texels_ = {averaged, columns, rows};
  }
  way_ = Way::Turned;
  return true;
}

template <int fixedPairs, class Texel>
void ImageSampler::resampleAcrossBy(const Texel* line, std::uint64_t* out) const {
  const int pairs = fixedPairs ? fixedPairs : across_.taps() / 2;
  const auto sumAt = [&](int column) {
    const Texel* pixels = line + across_.first(column);
    const std::uint16_t* weights = across_.weights(column);
    Short8 sum{};
    for (int i = 0; i < pairs; ++i) sum += highHalf(twoTexels(pixels + 2 * i), load(weights + 8 * i));
    return sum;
  };
  const Short8 lost = cutOff(2 * pairs);
  for (int column = 0; column < columns_; column += 2) {
    const Short8 one = sumAt(column), other = sumAt(column + 1);
    const Short8 both = lowerHalves(one, other) + upperHalves(one, other) + lost;
    store(both, out + column);
  }
}

template <class Texel>
void ImageSampler::resampleAcross(const Texel* line, std::uint64_t* out) const {
  switch (across_.taps()) {
    case 2: return resampleAcrossBy<1>(line, out);
    case 4: return resampleAcrossBy<2>(line, out);
    case 6: return resampleAcrossBy<3>(line, out);
    case 8: return resampleAcrossBy<4>(line, out);
    default: return resampleAcrossBy<0>(line, out);
  }
}

// Two consecutive rows are kept; a new one replaces the one that is no longer needed.
const std::uint64_t* ImageSampler::resampledRow(int sourceRow) {
  const int place = sourceRow % 2;
  std::uint64_t* row = rows_.data() + std::size_t(place) * std::size_t(columns_ + 4);
  if (rowsMadeFrom_[place] == sourceRow) return row;
  rowsMadeFrom_[place] = sourceRow;
  const std::uint32_t* line = texels_.row(std::min(sourceRow, texels_.height - 1));
  if (texels_.width < across_.taps()) line = std::copy_n(line, texels_.width, line_.data()) - texels_.width;
  resampleAcross(line, row);
  return row;
}

ImageSampler::RowsToAverage ImageSampler::rowsUnder(int y) const {
  const auto weightOf = [weights = down_.weights(y)](int tap) { return int(weights[tap]); };
  int first = 0, last = down_.taps() - 1;
  while (first < last && weightOf(first) == 0) ++first;
  while (first < last && weightOf(last) == 0) --last;
  RowsToAverage rows;
  rows.first = texels_.row(down_.first(y) + first);
  rows.count = last - first + 1;
  rows.weightOfFirst = Short8{} + std::uint16_t(weightOf(first));
  rows.weightOfLast = Short8{} + std::uint16_t(weightOf(last));
  if (rows.count <= 2) return rows;
  // The weight is scaled up as far as 16 bits allow.
  const unsigned between = unsigned(rows.count - 2), all = 0xffff;
  rows.shift = std::min(int(std::bit_width(between)) - 1, 8);
  const unsigned weight = all - unsigned(weightOf(first) + weightOf(last));
  const auto each = std::uint16_t((weight << rows.shift) / between);
  rows.between = Short8{} + each;
  return rows;
}

// Makes a row of the box from the averages of columns.
const std::uint64_t* ImageSampler::averagedRow(int y) {
  if (rowsMadeFrom_[0] == y) return rows_.data();
  rowsMadeFrom_[0] = y;
  const int one = across_.first(0), other = across_.first(columns_ - 1);
  int x = std::min(one, other);
  const int end = std::min(std::max(one, other) + across_.taps(), texels_.width);
  const RowsToAverage rows = rowsUnder(y);
  for (; x + 8 <= end; x += 8) averageDown<2>(rows, x);
  for (; x < end; x += 4) averageDown<1>(rows, x);
  resampleAcross(averages_.data(), rows_.data());
  return rows_.data();
}

// Averages this many columns.
template <int fours>
inline void ImageSampler::averageDown(const RowsToAverage& rows, int x) {
  const std::uint32_t* pixels = rows.first + x;
  const std::size_t step = std::size_t(texels_.width);
  const int inRow = texels_.width - x;  // used by a single four, the last one of a row
  const auto fourAt = [&](int i) {
    if (fours > 1 || inRow >= 4) return loadFour(pixels + 4 * i);
    std::uint32_t some[4] = {};
    std::copy_n(pixels, inRow, some);
    return loadFour(some);
  };
  FourInks sums[fours];
  const Short8 lost = cutOff(3);
  for (FourInks& sum : sums) sum = {lost, lost};
  const auto addTo = [](FourInks& sum, const FourInks& inks) { sum = {sum.even + inks.even, sum.odd + inks.odd}; };
  for (int i = 0; i < fours; ++i) addTo(sums[i], lessened(inksOf(fourAt(i)), rows.weightOfFirst));

  constexpr int maxRowsOfSum = 257;  // of bytes: 257 times 255 is the largest number of 16 bits
  for (int left = rows.count - 2; left > 0; left -= maxRowsOfSum) {
    FourInks bytes[fours] = {};
    for (int row = std::min(left, maxRowsOfSum); row > 0; --row) {
      pixels += step;
      for (int i = 0; i < fours; ++i) {
        const Short8 four = fourAt(i);
        addTo(bytes[i], {four & 0xff, four >> 8});
      }
    }
    const auto weighted = [&rows](Short8 sum) {
      // In two steps: together they may be as many as the number has bits.
      return highHalf(sum, rows.between) << (8 - rows.shift) | sum * rows.between >> 8 >> rows.shift;
    };
    for (int i = 0; i < fours; ++i) addTo(sums[i], {weighted(bytes[i].even), weighted(bytes[i].odd)});
  }
  if (rows.count > 1) {
    pixels += step;
    for (int i = 0; i < fours; ++i) addTo(sums[i], lessened(inksOf(fourAt(i)), rows.weightOfLast));
  }
  for (int i = 0; i < fours; ++i) {
    const Short8 even = sums[i].even, odd = sums[i].odd;
    std::uint64_t* const out = averages_.data() + x + 4 * i;
    store(__builtin_shufflevector(even, odd, 0, 8, 1, 9, 2, 10, 3, 11), out);
    store(__builtin_shufflevector(even, odd, 4, 12, 5, 13, 6, 14, 7, 15), out + 2);
  }
}

template <class Write>
void ImageSampler::forEachFourUpright(int x, int y, int count, Write write) {
  if (averagesRows_) {
    const std::uint64_t* row = averagedRow(y - top_) + (x - left_);
    for (int i = 0; i < count; i += 4) write(i, FourTexels{load(row + i), load(row + i + 2)});
    return;
  }
  const int first = down_.first(y - top_);
  const std::uint16_t* const weights = down_.weights(y - top_);
  const std::uint64_t *upper = resampledRow(first) + (x - left_), *lower = resampledRow(first + 1) + (x - left_);
  const Short8 upperWeight = Short8{} + weights[0], lowerWeight = Short8{} + weights[1], lost = cutOff(2);
  for (int i = 0; i < count; i += 4) {
    write(i, FourTexels{highHalf(load(upper + i), upperWeight) + highHalf(load(lower + i), lowerWeight) + lost,
                        highHalf(load(upper + i + 2), upperWeight) + highHalf(load(lower + i + 2), lowerWeight) + lost});
  }
}

template <class Write>
void ImageSampler::forEachFourTurned(int x, int y, int count, Write write) const {
  const CGPoint first = toTexels_.apply({x + 0.5, y + 0.5});
  const Double2 start{first.x - 0.5, first.y - 0.5}, step{toTexels_.a, toTexels_.b};
  const Double2 none{}, last{double(texels_.width - 1), double(texels_.height - 1)};
  const int lastPair = texels_.width - 2, lastRow = texels_.height - 1;
  // The left and the right neighbour, each blended from those above and below, and weighted.
  const auto pairAt = [&](int index) {
    Double2 at = start + step * double(index);
    at = at > none ? at : none;
    at = at < last ? at : last;
    const int column = std::min(int(at[0]), lastPair), row = int(at[1]);
    const std::uint16_t right = std::uint16_t((at[0] - column) * 65535), lower = std::uint16_t((at[1] - row) * 65535);
    const std::uint32_t* pixels = texels_.row(row) + column;
    const Short8 above = twoTexels(pixels), below = twoTexels(row < lastRow ? pixels + texels_.width : pixels);
    const Short8 lowerWeight = Short8{} + lower;
    const std::uint16_t left = std::uint16_t(~right);
    const Short8 weights{left, left, left, left, right, right, right, right};
    return highHalf(highHalf(above, ~lowerWeight) + highHalf(below, lowerWeight), weights);
  };
  const auto twoAt = [&](int index) {
    const Short8 one = pairAt(index), other = pairAt(index + 1);
    return lowerHalves(one, other) + upperHalves(one, other) + cutOff(4);
  };
  for (int i = 0; i < count; i += 4) write(i, FourTexels{twoAt(i), twoAt(i + 2)});
}

template <class Write>
void ImageSampler::forEachFourTexels(int x, int y, int count, Write write) {
  if (way_ == Way::Upright) forEachFourUpright(x, y, count, write);
  else forEachFourTurned(x, y, count, write);
}

void ImageSampler::writePixels(int x, int y, int count, std::uint32_t* pixels) {
  if (way_ == Way::Copied) {
    std::memcpy(pixels, texels_.row(y - top_) + (x - left_), std::size_t(count) * 4);
    return;
  }
  constexpr std::uint16_t half = 0x80;
  forEachFourTexels(x, y, count, [&](int index, const FourTexels& four) {
    const Short8 packed = packedBytes((four.left + half) >> 8, (four.right + half) >> 8);
    if (index + 4 <= count) return storeFour(packed, pixels + index);
    std::memcpy(pixels + index, &packed, std::size_t(count - index) * 4);
  });
}

void ImageSampler::writeRows(const PixelRect& box, std::uint32_t* pixels, std::size_t stride) {
  if (way_ != Way::Copied) return RowSource::writeRows(box, pixels, stride);
  const std::uint32_t* from = texels_.row(box.top - top_) + (box.left - left_);
  const std::size_t bytes = std::size_t(box.width()) * sizeof(*pixels);
  for (int rows = box.height(); rows > 0; --rows, from += texels_.width, pixels = rowAfter(pixels, stride))
    std::memcpy(pixels, from, bytes);
}

void ImageSampler::writeInks(int x, int y, int count, InkRow& row) {
  if (way_ == Way::Copied) {
    const std::uint32_t* from = texels_.row(y - top_) + (x - left_);
    const int whole = count / 4 * 4;
    for (int i = 0; i < whole; i += 4) row.set(i, inksOf(loadFour(from + i)));
    if (whole == count) return;
    std::uint32_t last[4] = {};
    std::copy_n(from + whole, count - whole, last);
    return row.set(whole, inksOf(loadFour(last)));
  }
  forEachFourTexels(x, y, count, [&](int index, const FourTexels& four) {
    const Int4 left = reinterpret_cast<Int4>(four.left), right = reinterpret_cast<Int4>(four.right);
    const Int4 blueAndGreen = __builtin_shufflevector(left, right, 0, 2, 4, 6);
    const Int4 redAndAlpha = __builtin_shufflevector(left, right, 1, 3, 5, 7);
    const Int4 green = reinterpret_cast<Int4>(reinterpret_cast<Uint4>(blueAndGreen) >> 16);
    row.set(index, {halves((blueAndGreen & 0xffff) | redAndAlpha << 16), halves(green | (redAndAlpha & int(0xffff0000)))});
  });
}

}  // namespace tessaluna::backend::raster
