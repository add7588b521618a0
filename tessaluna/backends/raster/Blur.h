// The Gaussian blur of shadows. It is a sink of a coverage buffer, which receives the values first and is then asked for
// blurred ones.
//
// Values change in only a few places of a row, and each change spreads as sums of weights do. The same holds from row to row,
// in each column of blocks on its own: a blurred row is blurred downward only as far as blocks differ from those above them.
#pragma once

#include <cstdint>
#include <vector>

#include "tessaluna/backends/raster/CoverageSink.h"
#include "tessaluna/backends/raster/WorkBuffer.h"

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

  // Begins a blur of values in the box `from`, of cells if these are larger than a pixel; blurred ones will be asked for in
  // the box `to`, which must not be empty. The weights are those of the Gaussian at whole pixels; their sum is 1. False when
  // memory is short.
  bool begin(const PixelRect& from, const PixelRect& to, const Style& style);

  // These receive the values. Rows come from the top, and the runs of a row from the left.
  void uniform(int x, int y, int count, float winding) { uniformRows({x, y, x + count, y + 1}, winding); }
  void varied(int x, int y, int count, const float* windings) { variedRows({x, y, x + count, y + 1}, windings); }
  void uniformRows(const PixelRect& box, float winding);
  void variedRows(const PixelRect& box, const float* windings);

  // Must be called after the last value. False when memory is short.
  bool end();

  // Values of a row, which are those of all rows down to `bottom` as well.
  struct Rows {
    const float* values;
    int bottom;
  };
  // Valid until the next call. Rows may come in any order; calls that follow each other in one row must go from its left.
  Rows rowsAt(int x, int y, int count);

 private:
  static constexpr int blockSize = 16;

  // For one direction: the neighbours at offsets first...first + count - 1 have weights.
  struct Kernel {
    double deviation = -1, move = 0;
    int first = 0, count = 0;
    std::vector<float> sums;  // of the last weight, the last two and so on; padded with ones
  };
  // Blocks one below the other, without those that repeat the block above them. The first one is empty.
  struct Column {
    int count = 0;
    int first = 0;  // where the last search ended
  };
  // The place of a pixel between two cells.
  struct Place {
    int left;
    float share;  // of the cell to the right
  };

  static void makeKernel(Kernel& kernel, double deviation, double move);
  bool beginCells(const PixelRect& to, int cell, const Style& style);
  void beginRun(const PixelRect& box);
  void change(int x, float value);
  void finishRow();
  void addRow(const float* values, int y);
  int blurDown(int column, int y, float* out);
  void blendCells(int y);
  float* block(int column, int index) { return blocks_.data() + (column * perColumn_ + index) * blockSize; }
  int* tops(int column) { return tops_.data() + column * perColumn_; }

  Kernel across_, down_;
  PixelRect to_;
  std::vector<Column> columns_;
  std::ptrdiff_t perColumn_ = 0;  // room for blocks
  WorkBuffer<float> blocks_;
  WorkBuffer<int> tops_;  // the first row of each block; after the last block a row that is never reached

  // The rows that are being received.
  int top_ = 0, bottom_ = 0;
  int runEnd_ = 0;
  int done_ = 0;     // values of the row to which all changes so far have been added
  float level_ = 0;  // of the values after them
  WorkBuffer<float> received_;

  // The rows that were asked for last.
  int row_ = 0, repeatEnd_ = 0;
  int doneColumns_ = 0;
  WorkBuffer<float> blurred_;

  int cell_ = 1;
  Style style_;
  PixelRect pixels_;
  std::vector<Place> places_;
  WorkBuffer<float> cells_, between_;
};

}  // namespace tessaluna::backend::raster
