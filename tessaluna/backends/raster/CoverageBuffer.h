// Computes how much of each pixel polygons cover, from the exact areas under their sides.
//
// Every side adds to each pixel that it crosses the change of covered area from the pixel's left neighbour; the sum of a row
// from the left up to a pixel is then that pixel's winding number averaged over its area. One bit per block of four pixels
// notes where anything was added: between such blocks the sum does not change, and the row is not read pixel by pixel.
//
// That average is the coverage of a pixel through which at most one monotone chain of sides goes down and one goes up,
// whatever lies left of it: its windings are then all of one sign, or two neighbouring numbers. So chains are counted: one
// bit per pixel and direction, and one more where there are two chains of a direction. Those pixels are suspicious. So are
// pixels with one chain of each direction near rows whose sums show windings other than 0 and 1, because the two may cross.
// They may also cross near a tip, the point where one chain ends and the next begins, and where a chain turns sharply to the
// side. And two sides, one down and one up, overlap where both go through a pixel from its left edge to its right one, or both
// back. Long sides that stay within a row are searched for those. In a stroke of dashes all pixels are suspicious through which
// a chain of one dash goes down and one of another dash goes up, but they are searched only up to a limit. An OverlapResolver
// computes the coverage of suspicious pixels.
#pragma once

#include <bit>
#include <compare>
#include <cstdint>
#include <cstring>
#include <optional>
#include <span>
#include <vector>

#include "tessaluna/backends/raster/CoverageSink.h"
#include "tessaluna/backends/raster/Float4.h"
#include "tessaluna/backends/raster/OverlapResolver.h"
#include "tessaluna/backends/raster/Polygons.h"
#include "tessaluna/backends/raster/WorkBuffer.h"

namespace tessaluna::backend::raster {

class CoverageBuffer {
 public:
  struct Kind {
    FillRule rule = FillRule::NonZero;
    bool isStroke = false;  // whose windings never have the opposite sign
    bool isDashed = false;  // a stroke in which each polygon is one dash
  };
  struct Shape {
    const Polygons& polygons;
    Kind kind{};
    CGPoint moved = {};
    double scale = 1;        // after moving
    bool liesInBox = false;  // without moving or scaling; false if that is unknown
    PixelOffset shown = {};  // added to the pixels that the sink receives
  };

  // Sends the coverage of the pixels in the box to the sink; the box is in the shape's space. When memory is short the sink
  // receives nothing, and the result is false.
  template <class Sink>
  bool sweep(const Shape& shape, const PixelRect& box, Sink& sink);
  // The work of the last sweep's search for overlaps: how many sides go through each strip of each patch that was searched.
  std::size_t sidesSearched() const { return sidesSearched_; }

 private:
  static constexpr int blockSize = 4;
  // The range of a row's sums.
  struct Range {
    Float4 lowest{}, highest{};
    bool showsOverlap(const Range& before) const;
  };
  // The chain that is being added: the pixels that it crosses in its current row, which are not marked yet, and that row's
  // marks for its direction.
  struct Chain {
    std::uint64_t* marks = nullptr;  // null at its start
    int first = 0, last = 0;
  };

  // The points of a polygon where one chain ends and the next begins, with only level sides between them.
  struct Tip {
    std::size_t end, start;
  };

  // Pixels that one side crosses from edge to edge, all in one row. Those of one row lie together when sorted.
  struct Crossed {
    int row;
    bool isRightwards;
    int first, last;
    auto operator<=>(const Crossed&) const = default;
  };

  struct Place {
    float inPixel;  // from the left edge of its pixel
    int column;
  };
  // How much of a row's height a side covers: in the whole row, and while it crosses one pixel.
  struct Cover {
    float whole, perPixel;
  };

  // A row to which sides are added.
  struct Row {
    float* values;
    std::uint64_t* marks;
    void addToPixel(int column, float middle, float cover);
    void addToPixels(Place left, Place right, Cover cover);
  };

  enum class Touched { Keep, Clear };  // what happens to a row's values after they are read
  // The part of an upright side that goes through whole rows, through all of them in the same way.
  struct Pillar {
    Place at;
    float direction;
    int top, bottom;
  };
  // Each row is compared with all pillars, and for fewer rows a repeat is not worth its overhead.
  static constexpr std::size_t maxPillars = 32;
  static constexpr int minPillar = 4;  // rows
  // Rows that all equal the first one. Sides were added only to that one.
  struct Repeat {
    int first, end;
  };

  bool begin(const PixelRect& box);
  void add(const Shape& shape);
  void addWhole(const Shape& shape);
  void addEdge(CGPoint from, CGPoint to);
  void addInside(double x0, double y0, double x1, double y1, float direction);
  static Place placeOf(double x);
  void addUpright(Place at, double y0, double y1, float direction);
  void addWholeRow(Row row, Place at, float direction);
  template <bool isRightwards>
  void addToRows(double x0, double y0, double x1, double y1, int first, int last, float direction);
  void passRows(const Chain& highest, const Chain& lowest, float direction);
  void endPolygon();
  void noteShared(std::span<const CGPoint> dash, const Shape& shape);
  void placePillars();
  void noteSharedPillars();
  void addPillars(int row);
  int firstTouched(int row, int end);
  void writeRepeats(int firstRow);
  void addBeside(double y0, double y1, float direction);
  std::ptrdiff_t kindOf(float direction) const { return direction > 0 ? words_ : 2 * words_; }
  std::uint64_t* marksOf(const Row& row, float direction) const { return row.marks + kindOf(direction); }
  void stayIn(std::uint64_t* marks, int first, int last);
  void leaveRow();
  void mark(std::uint64_t* marks, int first, int last);
  void markWords(std::uint64_t* marks, int first, int last);
  void markLevel(double y, double from, double to);
  void noteTwice(std::uint64_t* at, std::uint64_t bits);
  void noteCrossed(int row, int left, int right, bool isRightwards);
  void findCrossedTwice();
  void findCrossedTips(const Shape& shape);
  void noteTip(std::span<const CGPoint> points, std::size_t end, const Shape& shape);
  CGPoint placed(CGPoint p, const Shape& shape) const;
  static std::optional<CGPoint> crossingNearTip(std::span<const CGPoint> points, Tip tip, double reach);
  void noteCrossedTip(CGPoint tip, CGPoint crossing);
  void noteSpike(CGPoint p);
  void correctFrom(int firstRow, Range before, const Shape& shape);
  void fold(int row);
  double costOf(const PixelRect& patch) const;
  void findPatches(int firstRow, const Polygons& polygons);
  void addPatch(PixelRect patch);
  void writeOut(int row, int first, int last);
  void replacePatch(const Shape& shape, const PixelRect& patch);
  void giveResolverBack();
  Range sumRow(int row);
  static void clearBlocks(float* values, int count);
  // Calls visit(word, bits) for the pixels from first to last.
  template <class Function>
  static void forEachWord(int first, int last, Function visit) {
    for (int word = first / 64; word <= last / 64; ++word) {
      std::uint64_t bits = ~std::uint64_t(0);
      if (word == first / 64) bits <<= first % 64;
      if (word == last / 64) bits &= ~std::uint64_t(0) >> (63 - last % 64);
      visit(word, bits);
    }
  }
  template <class Function>
  static void forEachRunOf(std::uint64_t bits, Function run);
  template <class Sink>
  void sendRow(int row, Sink& sink);
  template <class Sink>
  void sendRows(const Repeat& rows, Sink& sink) {
    if (rows.first + 1 == rows.end) sendRow(rows.first, sink);
    else if (rows.first < rows.end) sendRepeat(rows, sink);
  }
  template <class Sink>
  void sendRepeat(const Repeat& rows, Sink& sink);
  template <class Uniform, class Varied>
  void forEachPart(int row, Uniform uniform, Varied varied);

  float* rowValues(int row) { return values_.data() + std::size_t(row) * std::size_t(stride_); }
  std::uint64_t* rowMarks(int row) { return marks_.data() + std::size_t(row) * std::size_t(4 * words_); }
  Row rowAt(int row) { return {rowValues(row), rowMarks(row)}; }
  void goDown(Row& row) const {
    row.values += stride_;
    row.marks += 4 * words_;
  }
  // Calls run(first, count) for the runs of pixels in touched blocks of a row. A run ends at the end of a word.
  template <Touched after = Touched::Keep, class Function>
  void forEachRun(int row, Function run);

  PixelRect box_;
  int sinkLeft_ = 0, sinkTop_ = 0;                      // of the box, in the pixels that the sink receives
  double left_ = 0, top_ = 0, width_ = 0, height_ = 0;  // of the box
  int rows_ = 0;
  // Values per row: the width in whole blocks, and one more block for what falls right of the last pixel.
  int stride_ = 0;
  WorkBuffer<float> values_;
  // One bit per pixel, in four kinds of marks per row: all pixels of a touched block, set when the row is summed; pixels
  // with a chain that goes down; with one that goes up; with two chains of one direction.
  WorkBuffer<std::uint64_t> marks_;
  int words_ = 0;        // per row and kind
  float direction_ = 1;  // of the side that was added last: 1 down, -1 up
  Chain chain_;
  std::vector<Pillar> pillars_;
  std::vector<Repeat> repeats_;  // from the top
  std::vector<Crossed> crossed_;
  int firstTwice_ = 0;                  // the first row with two chains of a direction in a pixel
  WorkBuffer<std::uint8_t> isOverlap_;  // one per row: 1 where sums show an overlap
  OverlapResolver resolver_;            // keeps its memory for so many sweeps: a huge tangle needs much of it
  static constexpr int sweepsOfResolver = 1000;
  int sweeps_ = 0;                  // with the current resolver
  std::vector<PixelRect> patches_;  // within the box
  double costOfPatch_ = 0;          // of each patch, whatever its size
  std::size_t sidesSearched_ = 0;
  std::size_t wordsShared_ = 0;  // searched for what dashes share
};

inline bool CoverageBuffer::Range::showsOverlap(const Range& before) const {
  const Float4 low = smaller(lowest, before.lowest), high = larger(highest, before.highest);
  const Float4 one = splat(1 + leastCoverage), none = splat(leastCoverage);
  return isAnySet((high > one) | (low < -one)) || (isAnySet(high > none) && isAnySet(low < -none));
}

template <class Sink>
bool CoverageBuffer::sweep(const Shape& shape, const PixelRect& box, Sink& sink) {
  if (!begin(box)) return false;
  sinkLeft_ = box.left + shape.shown.x;
  sinkTop_ = box.top + shape.shown.y;
  add(shape);
  if (++sweeps_ == sweepsOfResolver) giveResolverBack();
  if (shape.kind.isDashed) noteSharedPillars();
  placePillars();
  if (crossed_.size() > 1) findCrossedTwice();
  if (!shape.kind.isStroke) findCrossedTips(shape);
  // The sink receives a row only after the next row is known: the row's own part of an overlap may be too small to show.
  Repeat pending{0, 0};  // the rows that the sink receives next
  std::size_t next = 0;
  const auto rowsFrom = [&](int row) {
    return next < repeats_.size() && repeats_[next].first == row ? repeats_[next++] : Repeat{row, row + 1};
  };
  Range before;
  for (Repeat rows = rowsFrom(0); rows.first < rows_; rows = rowsFrom(rows.end)) {
    const Range range = sumRow(rows.first);
    if (rows.first >= firstTwice_ || range.showsOverlap(before)) {
      isOverlap_.data()[rows.first] = range.showsOverlap(before);
      // The row before may be part of the overlap.
      const bool isCopy = pending.first + 1 < pending.end;
      if (isCopy) --pending.end;
      writeRepeats(pending.end);
      if (isCopy) sumRow(pending.end);
      correctFrom(rows.first, range, shape);
      sendRows(pending, sink);
      for (int row = pending.end; row < rows_; ++row) sendRow(row, sink);
      return true;
    }
    before = range;
    sendRows(pending, sink);
    pending = rows;
  }
  sendRows(pending, sink);
  return true;
}

template <class Function>
inline void CoverageBuffer::forEachRunOf(std::uint64_t bits, Function run) {
  while (bits != 0) {
    const int first = std::countr_zero(bits);
    const std::uint64_t others = bits & (bits + (std::uint64_t(1) << first));  // the carry of the sum clears the run
    run(first, std::countr_one(bits >> first));
    bits = others;
  }
}

template <CoverageBuffer::Touched after, class Function>
inline void CoverageBuffer::forEachRun(int row, Function run) {
  std::uint64_t* words = rowMarks(row);
  for (int word = 0; word < words_; ++word) {
    const std::uint64_t bits = words[word];
    if (bits == 0) continue;
    if constexpr (after == Touched::Clear) {
      for (int kind = 0; kind < 4; ++kind) words[kind * words_ + word] = 0;
    }
    forEachRunOf(bits, [&](int first, int count) { run(word * 64 + first, count); });
  }
}

// Calls uniform(x, count, winding) and varied(x, count, windings) for the runs of a row, whose sums are known, and clears it.
template <class Uniform, class Varied>
inline void CoverageBuffer::forEachPart(int row, Uniform uniform, Varied varied) {
  const int width = box_.width();
  float* const values = rowValues(row);
  int done = 0;       // pixels that were sent to the sink
  float winding = 0;  // of the last one
  const auto sendUniform = [&](int end) {
    if (done < end && std::abs(winding) > leastCoverage) uniform(done, end - done, winding);
  };
  forEachRun<Touched::Clear>(row, [&](int x, int count) {
    sendUniform(std::min(x, width));
    if (x < width) varied(x, std::min(count, width - x), values + x);
    done = x + count;
    winding = values[done - 1];
    clearBlocks(values + x, count);
  });
  sendUniform(width);
}

template <class Sink>
void CoverageBuffer::sendRow(int row, Sink& sink) {
  const int left = sinkLeft_, y = sinkTop_ + row;
  forEachPart(
      row, [&](int x, int count, float winding) { sink.uniform(left + x, y, count, winding); },
      [&](int x, int count, const float* windings) { sink.varied(left + x, y, count, windings); });
}

template <class Sink>
void CoverageBuffer::sendRepeat(const Repeat& rows, Sink& sink) {
  const int left = sinkLeft_, top = sinkTop_ + rows.first, bottom = sinkTop_ + rows.end;
  forEachPart(
      rows.first,
      [&](int x, int count, float winding) {
        sink.uniformRows({left + x, top, left + x + count, bottom}, winding);
      },
      [&](int x, int count, const float* windings) {
        sink.variedRows({left + x, top, left + x + count, bottom}, windings);
      });
}

// Notes the pixels that the chain crosses in a row. It may already be in that row; its pixels in a row are contiguous.
inline void CoverageBuffer::stayIn(std::uint64_t* marks, int first, int last) {
  if (marks == chain_.marks) {
    chain_.first = std::min(chain_.first, first);
    chain_.last = std::max(chain_.last, last);
    return;
  }
  leaveRow();
  chain_ = {marks, first, last};
}

// The chain does not return to its row.
inline void CoverageBuffer::leaveRow() {
  if (chain_.marks) mark(chain_.marks, chain_.first, chain_.last);
}

// Marks the pixels of a row that a chain crosses.
inline void CoverageBuffer::mark(std::uint64_t* marks, int first, int last) {
  const unsigned from = unsigned(first), to = unsigned(last), word = from / 64;
  if (word != to / 64) [[unlikely]]
    return markWords(marks, first, last);
  const std::uint64_t bits = ~std::uint64_t(0) << from % 64 & ~std::uint64_t(0) >> (63 - to % 64);
  const std::uint64_t before = marks[word];
  marks[word] = before | bits;
  if ((before & bits) != 0) [[unlikely]]
    noteTwice(marks + word, before & bits);
}

inline void CoverageBuffer::clearBlocks(float* values, int count) {
  const Float4 zero{};
  for (; count > 0; count -= blockSize, values += blockSize) std::memcpy(values, &zero, sizeof zero);
}

}  // namespace tessaluna::backend::raster
