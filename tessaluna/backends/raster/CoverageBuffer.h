// How much of each pixel polygons cover, from the exact areas under their sides.
//
// Every side adds to each pixel that it crosses the change of covered area from the pixel's left neighbour;
// the sum of a row from the left up to a pixel is then that pixel's winding number averaged over its area.
// One bit a block of four pixels notes where anything was added: between such blocks the sum stands still,
// and the row needs no look at pixels.
//
// That average is the coverage wherever windings are 0 and 1, or 0 and -1, as they are in nearly all artwork.
// Where a sum shows others, the polygons overlap; such rows, and those next to them, are made anew from polygons that
// an OverlapResolver has freed of overlaps. An overlap that fills no pixel may stay unseen: so polygons tell where
// they expect one, and the pixels there are replaced by what the resolver finds.
#pragma once

#include <bit>
#include <cstdint>
#include <cstring>
#include <vector>

#include "tessaluna/backends/raster/Float4.h"
#include "tessaluna/backends/raster/OverlapResolver.h"
#include "tessaluna/backends/raster/Polygons.h"
#include "tessaluna/backends/raster/WorkBuffer.h"

namespace tessaluna::backend::raster {

// Below this a pixel's 8-bit value cannot change; rounding leaves such rests where a sum should be 0.
inline constexpr float leastCoverage = 1.0f / 1024;

// Above this a pixel counts as all covered.
inline constexpr float fullCoverage = 1 - leastCoverage;

// The coverage of a pixel with this average winding.
inline float coverageOf(float winding) { return std::min(std::abs(winding), 1.0f); }

class CoverageBuffer {
 public:
  struct Shape {
    const Polygons& polygons;
    FillRule rule = FillRule::NonZero;
    CGPoint moved = {};
    double scale = 1;        // after moving
    bool liesInBox = false;  // as it is, neither moved nor scaled; else it may
    PixelOffset shown = {};  // by which what is told is moved
  };

  // Tells the coverage of the pixels in the box, which is in the shape's space, row by row from the top:
  //   sink.even(x, y, count, winding)     a run of pixels with one winding, none where it is 0
  //   sink.varied(x, y, count, windings)  a run of single ones, some of which may be 0
  // A pixel's coverage is the winding's amount, at most 1. When memory is short nothing is told, and the result
  // is false.
  template <class Sink>
  bool sweep(const Shape& shape, const PixelRect& box, Sink& sink);

 private:
  static constexpr int blockSize = 4;
  // What sums of a row and the row before it have shown.
  struct Range {
    Float4 least{}, most{};
    bool showsOverlap(const Range& before) const;
    Range including(const Range& other) const;
    bool isNegative() const;  // for the larger part
  };

  struct Place {
    double x;
    int column;  // that it is in
  };
  // How much of a row's height a side covers: on its way through the row, and while it goes over one pixel.
  struct Cover {
    float whole, perPixel;
  };

  // A row to which sides are added.
  struct Row {
    float* values;
    std::uint64_t* touched;
    void addToPixel(int column, float middle, float cover);
    void addToPixels(Place from, Place to, Cover cover);
    void touch(int first, int last);
  };

  bool begin(const PixelRect& box);
  void add(const Shape& shape);
  void addWhole(const Polygons& polygons);
  void addResolved(const Shape& shape, int firstRow);
  void addEdge(CGPoint from, CGPoint to);
  void addInside(double x0, double y0, double x1, double y1, float direction);
  void addUpright(double x, double y0, double y1, float direction);
  void findOverlaps(int firstRow, bool hasPatches);
  void findPatches(const Shape& shape);
  void joinNearest(const PixelRect& patch);
  bool replacePatches(const Shape& shape);  // false if there are none
  void replacePatch(const Shape& shape, const PixelRect& patch, float winding);
  void giveResolverBack();
  // Of a row, which is summed up unless it has been.
  Range rangeOf(int row, bool hasPatches) { return hasPatches && patched_.data()[row] ? rangeOfSums(row) : sumRow(row); }
  Range rangeOfSums(int row);
  Range sumRow(int row);
  void clearRow(int row);
  static void clearBlocks(float* values, int count);
  template <class Sink>
  void tellRow(int row, Sink& sink);

  float* rowValues(int row) { return values_.data() + std::size_t(row) * std::size_t(stride_); }
  std::uint64_t* rowTouched(int row) { return touched_.data() + std::size_t(row) * std::size_t(words_); }
  Row rowAt(int row) { return {rowValues(row), rowTouched(row)}; }
  void goDown(Row& row) const {
    row.values += stride_;
    row.touched += words_;
  }
  // Calls run(first, count) for the runs of touched blocks in a row, which do not go on from one word to the
  // next.
  enum class Touched { Keep, Clear };
  template <Touched after = Touched::Keep, class Function>
  void forEachRun(int row, Function run);

  PixelRect box_;
  int toldLeft_ = 0, toldTop_ = 0;                      // of the box, where it is told
  double left_ = 0, top_ = 0, width_ = 0, height_ = 0;  // of the box
  int rows_ = 0;
  // Values a row: the width in whole blocks, and one more block for what falls right of the last pixel.
  int stride_ = 0;
  int words_ = 0;  // of touched bits a row
  WorkBuffer<float> values_;
  WorkBuffer<std::uint64_t> touched_;
  // One a row. Overlaps: 2 where they show, 1 next to such a row. Patched: not 0 where pixels were replaced.
  WorkBuffer<std::uint8_t> overlaps_, patched_;
  OverlapResolver resolver_;  // keeps its memory while it is wanted now and then
  static constexpr int sweepsWithResolver = 1000;
  int sweepsSinceResolver_ = 0;
  std::vector<PixelRect> patches_;  // within the box
};

inline CoverageBuffer::Range CoverageBuffer::Range::including(const Range& other) const {
  return {smaller(least, other.least), larger(most, other.most)};
}

inline bool CoverageBuffer::Range::isNegative() const {
  return std::min(std::min(least[0], least[1]), std::min(least[2], least[3])) <
         -std::max(std::max(most[0], most[1]), std::max(most[2], most[3]));
}

inline bool CoverageBuffer::Range::showsOverlap(const Range& before) const {
  const auto [low, high] = including(before);
  const Float4 one = splat(1 + leastCoverage), none = splat(leastCoverage);
  return isAnySet((high > one) | (low < -one)) || (isAnySet(high > none) && isAnySet(low < -none));
}

template <class Sink>
bool CoverageBuffer::sweep(const Shape& shape, const PixelRect& box, Sink& sink) {
  if (!begin(box)) return false;
  toldLeft_ = box.left + shape.shown.x;
  toldTop_ = box.top + shape.shown.y;
  add(shape);
  const bool hasPatches = !shape.polygons.expectedOverlaps().empty() && replacePatches(shape);
  if (!hasPatches && ++sweepsSinceResolver_ == sweepsWithResolver) giveResolverBack();
  // A row is told when the next one has been looked at: its own part of an overlap may have been too small to show.
  int told = 0;
  Range before;
  for (int row = 0; row < rows_; ++row) {
    const Range range = rangeOf(row, hasPatches);
    if (range.showsOverlap(before)) {
      findOverlaps(row, hasPatches);
      addResolved(shape, told);
      break;
    }
    before = range;
    if (row > told) tellRow(told++, sink);
  }
  while (told < rows_) tellRow(told++, sink);
  return true;
}

template <CoverageBuffer::Touched after, class Function>
inline void CoverageBuffer::forEachRun(int row, Function run) {
  std::uint64_t* words = rowTouched(row);
  for (int word = 0; word < words_; ++word) {
    std::uint64_t bits = words[word];
    if constexpr (after == Touched::Clear) words[word] = 0;
    while (bits != 0) {
      const int first = std::countr_zero(bits);
      const std::uint64_t others = bits & (bits + (std::uint64_t(1) << first));  // the sum carries over the run
      run(word * 64 + first, std::countr_one(bits >> first));
      bits = others;
    }
  }
}

template <class Sink>
void CoverageBuffer::tellRow(int row, Sink& sink) {
  const int width = box_.width(), left = toldLeft_, y = toldTop_ + row;
  float* const values = rowValues(row);
  int done = 0;       // pixels told
  float winding = 0;  // of the last of them
  const auto tellEven = [&](int end) {
    if (done < end && std::abs(winding) > leastCoverage) sink.even(left + done, y, end - done, winding);
  };
  forEachRun<Touched::Clear>(row, [&](int block, int count) {
    const int x = block * blockSize;
    tellEven(std::min(x, width));
    if (x < width) sink.varied(left + x, y, std::min(count * blockSize, width - x), values + x);
    done = x + count * blockSize;
    winding = values[done - 1];
    clearBlocks(values + x, count);
  });
  tellEven(width);
}

inline void CoverageBuffer::clearBlocks(float* values, int count) {
  const Float4 zero{};
  for (; count > 0; --count, values += blockSize) std::memcpy(values, &zero, sizeof zero);
}

}  // namespace tessaluna::backend::raster
