// How much of each pixel polygons cover, from the exact areas under their sides.
//
// Every side adds to each pixel that it crosses the change of covered area from the pixel's left neighbour;
// the sum of a row from the left up to a pixel is then that pixel's winding number averaged over its area.
// One bit a block of eight pixels notes where anything was added: between such blocks the sum stands still,
// and the row needs no look at pixels.
//
// The average is the coverage wherever a pixel holds windings of 0 and 1 (or -1) only; OverlapResolver makes
// such polygons of others.
#pragma once

#include <bit>
#include <cstdint>

#include "backends/raster/Polygons.h"
#include "backends/raster/WorkBuffer.h"

namespace backend::raster {

class CoverageBuffer {
 public:
  // What follows is added within this box. False when memory is short: then nothing may be added.
  bool begin(const PixelRect& box);

  void add(const Polygons& polygons, CGPoint moved = {});
  void addEdge(CGPoint from, CGPoint to);

  // Tells the coverage of all rows, from the top, and empties the buffer:
  //   sink.even(x, y, count, coverage)     a run of pixels covered alike; none for no coverage
  //   sink.varied(x, y, count, coverages)  a run of single values, some of which may be 0
  template <class Sink>
  void sweep(Sink& sink);

 private:
  static constexpr int blockSize = 8;
  // Below this a pixel's 8-bit value cannot change; rounding leaves such rests where a sum should be 0.
  static constexpr float leastCoverage = 1.0f / 1024;

  void addClipped(double x0, double y0, double x1, double y1, double slope, float direction);
  void addUpright(double x, double y0, double y1, float direction);
  void addToRow(int row, double x0, double x1, float cover);
  void touch(int row, int first, int last);
  float sumBlocks(float* values, int blocks, float sum);

  PixelRect box_;
  int stride_ =
      0;  // values a row: the width in whole blocks and one more, for what falls right of the last pixel
  int words_ = 0;  // of touched bits a row
  int firstRow_ = 0, lastRow_ = -1;
  WorkBuffer<float> values_;
  WorkBuffer<std::uint64_t> touched_;
  WorkBuffer<float> coverages_;
};

template <class Sink>
void CoverageBuffer::sweep(Sink& sink) {
  const int width = box_.width();
  for (int row = firstRow_; row <= lastRow_; ++row) {
    std::uint64_t* words = touched_.data() + std::size_t(row) * std::size_t(words_);
    float* values = values_.data() + std::size_t(row) * std::size_t(stride_);
    const int y = box_.top + row;
    float sum = 0;
    int done = 0;  // pixels told
    for (int word = 0; word < words_; ++word) {
      std::uint64_t bits = words[word];
      words[word] = 0;
      while (bits) {
        const int first = std::countr_zero(bits);
        const int blocks = std::countr_one(bits >> first);
        const int x = (word * 64 + first) * blockSize;
        const float even = std::min(std::abs(sum), 1.0f);
        if (x > done && done < width && even > leastCoverage) {
          sink.even(box_.left + done, y, std::min(x, width) - done, even);
        }
        sum = sumBlocks(values + x, blocks, sum);
        if (x < width)
          sink.varied(box_.left + x, y, std::min(blocks * blockSize, width - x), coverages_.data());
        done = x + blocks * blockSize;
        bits = blocks == 64 ? 0 : bits & ~(((std::uint64_t(1) << blocks) - 1) << first);
      }
    }
    const float even = std::min(std::abs(sum), 1.0f);
    if (done < width && even > leastCoverage) sink.even(box_.left + done, y, width - done, even);
  }
  firstRow_ = 0;
  lastRow_ = -1;
}

}  // namespace backend::raster
