// The Gaussian blur of shadows, on a plane of single values.
#pragma once

#include <algorithm>
#include <cstdint>
#include <span>
#include <vector>

#include "tessaluna/backends/raster/Plane.h"

namespace tessaluna::backend::raster {

class Blur {
 public:
  struct Style {
    double deviation = 0;
    double dx = 0, dy = 0;  // by which values are moved
  };

  // How far, in pixels, a blur of this deviation visibly spreads a value.
  static int reach(double deviation);
  // A wide blur takes its values from square cells, which hold the mean of their pixels. This is the side of a cell in
  // pixels. Cell (0, 0) begins at pixel (0, 0).
  static int cellSize(double deviation);

  // Fills the box of `to`, which has been begun, with the values of `from`, moved and blurred. The weights are those of the
  // Gaussian at whole pixels; their sum is 1. `from` holds cells when cells are larger than a pixel. False when memory is
  // short.
  bool apply(Plane& from, Plane& to, const Style& style);

  // The same values, but only where they are asked for; cells must be pixels. `from` is needed no longer after begin().
  bool begin(Plane& from, const PixelRect& box, const Style& style);
  // Valid until the next call. Rows may come in any order; calls that follow each other in one row must go from its left.
  const float* valuesAt(int x, int y, int count);

 private:
  // Values are summed in blocks of this many.
  static constexpr int blockSize = Plane::blockSize;
  // The weights of the neighbours at offsets first...first + size - 1, for one direction.
  struct Kernel {
    int first = 0;
    std::vector<float> weights;
    bool isSymmetric = false;
  };
  // Some neighbouring weights of a kernel. Weights that mirror each other are multiplied once: `pairs` of them, from
  // `firstPair` on.
  struct Taps {
    std::span<const float> weights;
    std::size_t firstPair = 0, pairs = 0;
  };

  // The place of a pixel between two cells.
  struct Column {
    int left;
    float share;  // of the cell to the right
  };

  static int inBlocks(int count) { return (count + blockSize - 1) / blockSize * blockSize; }
  static Taps tapsOf(const Kernel& kernel, int from, int to);
  static void sumBlock(const float* from, std::ptrdiff_t step, const Taps& taps, float* out);
  void convolveAcross(Plane& from, int y);
  void countRepeats(int y, bool isCopy);
  int* repeatsOf(int y) { return repeats_.data() + (y - rows_.box().top) * (inBlocks(rows_.box().width()) / blockSize); }
  void convolveDown(int y, int left, int right, float* out);
  static void makeKernel(Kernel& kernel, double deviation, double move);
  bool convolve(Plane& from, Plane& to, const Style& style);
  bool enlarge(Plane& cells, Plane& to, int cell, const Style& style);

  Kernel across_, down_;
  std::vector<float> sums_;  // of the last weight across, the last two and so on; padded with ones
  Plane rows_, cells_;
  WorkBuffer<float> padded_;
  WorkBuffer<Column> columns_;
  int row_ = 0, done_ = 0;    // how many columns of this row valuesAt() has in padded_
  std::vector<int> repeats_;  // for each block of each row: how many rows above it hold the same values
};

}  // namespace tessaluna::backend::raster
