// Computes how much of each pixel polygons cover.
//
// Polygons are cut at the borders between rows of pixels. What a monotone chain of sides has in a row is a part. The parts of
// a row are taken from the left, and winding numbers show which of them bound the inside. That needs their order, which is
// known of parts that lie beside each other and of a few that do not cross. Any others are given to an OverlapResolver, which
// finds the bounds among their pieces. What bounds the inside adds to each pixel that it crosses the change of covered area
// from the pixel's left neighbour; the sum from the left is the coverage.
#pragma once

#include <bit>
#include <cstdint>
#include <cstring>
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
  struct Shape {
    const Polygons& polygons;
    FillRule rule = FillRule::NonZero;
    CGPoint moved = {};
    double scale = 1;        // after moving
    bool liesInBox = false;  // without moving or scaling; false if that is unknown
    PixelOffset shown = {};  // added to the pixels that the sink receives
  };

  // Sends the coverage of the pixels in the box to the sink; the box is in the shape's space. When memory is short the sink
  // receives nothing or only the upper rows, and the result is false.
  template <class Sink>
  bool sweep(const Shape& shape, const PixelRect& box, Sink& sink);
  // The work of the last sweep's search for overlaps: how many sides go through each strip in which it looked.
  std::size_t sidesSearched() const { return sidesSearched_; }

 private:
  struct Span {
    int first, last;
  };
  // What a chain has in a row: a piece of one side, or several pieces.
  struct Part {
    Float4 bounds;              // left, top, right, bottom; heights from the row's upper edge
    std::uint32_t next;         // in the same row or, of a piece, in the same part; 0 at the end
    std::uint32_t pieces;       // the last one added, which leads to the others; 0 if it is one itself
    std::int32_t direction;     // 1 if it goes down, -1 if it goes up, 0 if it is level
    std::int32_t isRightwards;  // of a piece: whether it goes to the right on its way down
    float left() const { return bounds[0]; }
    float top() const { return bounds[1]; }
    float right() const { return bounds[2]; }
    float bottom() const { return bounds[3]; }
    bool isLevel() const { return top() == bottom(); }
    float above() const { return isRightwards ? left() : right(); }
    float below() const { return isRightwards ? right() : left(); }
  };
  class PiecesFromTop;
  struct RowStart {
    std::uint32_t first = 0;   // the part that was added last
    std::int32_t winding = 0;  // of chains that pass left of the box
  };
  // An upright side, in the rows that it goes through from top to bottom.
  struct Pillar {
    std::uint32_t part;
    int top, bottom;
  };
  // Each row is compared with all pillars, and for fewer rows a repeat is not worth its overhead.
  static constexpr std::size_t maxPillars = 32;
  static constexpr int minPillar = 4;  // rows
  // More parts, of 32 bytes each, are not kept at a time, unless one row has them: the box is divided. A processor's caches
  // hold about as many.
  static constexpr std::uint32_t maxParts = 1 << 16;

  // Parts from the left. A key has the bits of the part's left end, which are in the order of positive numbers, above its
  // index.
  using Order = std::span<const std::uint64_t>;
  static float leftOf(std::uint64_t key) { return std::bit_cast<float>(std::uint32_t(key >> 32)); }

  // How two parts lie to each other at the heights that they share.
  enum class Sides { LeftRight, RightLeft, Apart, Unknown };

  // Blocks of pixels that bounds cross.
  static constexpr int blockSize = 4;
  struct Run {
    int first, last;
    bool isCoveredBefore;  // left of them
  };
  // One row or several equal rows, before the sink receives their pixels.
  struct Rows {
    int first = 0, end = 0;
    std::size_t runCount = 0;
    bool isCoveredAfter = false;  // right of the last run
    WorkBuffer<Run> runs;
    WorkBuffer<float> changes;  // from a pixel's left neighbour; 0 between uses
    bool prepare(std::size_t room) {
      runCount = 0;
      isCoveredAfter = false;
      return runs.prepare(room) && changes.prepare(room);
    }
  };

  bool begin(const PixelRect& box, FillRule rule);
  void add(const Shape& shape, bool isWholeBox);
  void addEdge(CGPoint from, CGPoint to);
  void addInside(double x0, double y0, double x1, double y1, int direction);
  template <bool isRightwards>
  void addToRows(CGPoint from, CGPoint to, Span rows);
  void addBeside(double from, double to);
  void addSide(CGPoint from, CGPoint to);
  void addLevel(double y, double from, double to);
  void addPiece(int row, Float4 bounds, bool isLevel, bool isRightwards);
  void beginPart(int row, Float4 bounds, int direction, bool isRightwards);
  void extendPart(Float4 bounds, int direction, bool isRightwards);
  void follow(int direction);
  void leaveChain();
  bool reserve(int count);
  bool growTo(std::uint32_t needed);
  int endOfRepeat(int row);
  void findRuns(int row, Rows& rows);
  Order sortParts(int row);
  void sortMany(std::span<std::uint64_t> keys);
  void addBounds(const Part& part, float sign, float* changes);
  void addCluster(Order cluster, int winding, float* changes);
  bool addUncrossed(Order cluster, int winding, float* changes);
  bool hasLevelPiece(const Part& part);
  Sides sidesOf(const Part& a, const Part& b, bool mayTouch);
  static void addBound(float left, float right, float cover, float* changes);
  static const float* coverageOf(const Run& run, float* changes, float* coverage);
  bool isInside(int winding) const { return (winding & relevant_) != 0; }
  template <class Sink>
  void send(Rows& rows, Sink& sink);

  PixelRect box_;                                       // in the pixels that the sink receives
  double left_ = 0, top_ = 0, width_ = 0, height_ = 0;  // of the box in the shape's space
  int rowCount_ = 0;
  int relevant_ = ~0;            // a point is inside if any of these bits of its winding number is set
  WorkBuffer<RowStart> starts_;  // 0 between uses
  WorkBuffer<Part> parts_;       // and pieces; the first one is unused
  std::uint32_t partCount_ = 0, partRoom_ = 0;
  bool isFull_ = false;            // there are more parts than room for them
  int direction_ = 0;              // of the chain, 0 before its first side
  int rowOfChain_ = -1;            // where the chain arrived last; -1 if it has not been in a row
  std::uint32_t partOfChain_ = 0;  // in that row
  std::size_t mostInRow_ = 0;      // no row has more parts
  std::vector<Pillar> pillars_;
  WorkBuffer<std::uint64_t> order_;
  std::vector<std::uint64_t> unsorted_;
  std::vector<std::uint32_t> bucketEnds_;
  Rows rows_[2];
  WorkBuffer<float> coverage_;  // of a row
  OverlapResolver resolver_;
  std::size_t sidesSearched_ = 0;
};

template <class Sink>
bool CoverageBuffer::sweep(const Shape& shape, const PixelRect& box, Sink& sink) {
  sidesSearched_ = 0;
  for (PixelRect part = box; part.top < box.bottom;) {
    if (!begin(part, shape.rule)) return false;
    add(shape, part == box);
    const int height = part.height();
    if (isFull_) {
      if (height == 1) return false;
      part.bottom = part.top + height / 2;
      continue;
    }
    box_ = part.moved(shape.shown);
    // The next row's changes are added before a row is summed: a processor waits where it reads at once what was stored one
    // by one.
    Rows *known = &rows_[0], *next = &rows_[1];
    for (int row = 0; row <= rowCount_; row = next->end, std::swap(known, next)) {
      findRuns(row, *next);
      send(*known, sink);
    }
    part = {box.left, part.bottom, box.right, std::min(part.bottom + height, box.bottom)};
  }
  return true;
}

template <class Sink>
inline void CoverageBuffer::send(Rows& rows, Sink& sink) {
  const int left = box_.left, width = box_.width(), y = box_.top + rows.first, bottom = box_.top + rows.end;
  const bool isRepeat = bottom > y + 1;
  int done = 0;
  const auto sendUniform = [&](int to) {
    if (done >= to) return;
    if (isRepeat) sink.uniformRows({left + done, y, left + to, bottom}, 1);
    else sink.uniform(left + done, y, to - done, 1);
  };
  float *const changes = rows.changes.data(), *const values = coverage_.data();
  const Run* const end = rows.runs.data() + rows.runCount;
  for (const Run* run = rows.runs.data(); run < end; ++run) {
    const int from = run->first * blockSize, to = std::min((run->last + 1) * blockSize, width);
    if (run->isCoveredBefore) sendUniform(from);
    const float* const coverage = coverageOf(*run, changes, values);
    if (isRepeat) sink.variedRows({left + from, y, left + to, bottom}, coverage);
    else sink.varied(left + from, y, to - from, coverage);
    done = to;
  }
  if (rows.isCoveredAfter) sendUniform(width);
}

// Turns the changes of a run into coverage.
inline const float* CoverageBuffer::coverageOf(const Run& run, float* changes, float* coverage) {
  const Float4 zero{};
  Float4 before = run.isCoveredBefore ? splat(1) : zero;
  const int first = run.first * blockSize, end = (run.last + 1) * blockSize;
  for (int i = first; i < end; i += blockSize) {
    Float4 v = fourOf(changes + i);
    std::memcpy(changes + i, &zero, sizeof zero);
    v += __builtin_shufflevector(zero, v, 0, 4, 5, 6);
    v += __builtin_shufflevector(zero, v, 0, 1, 4, 5);
    v += before;
    before = __builtin_shufflevector(v, v, 3, 3, 3, 3);
    std::memcpy(coverage + i, &v, sizeof v);
  }
  changes[end] = 0;
  return coverage + first;
}

}  // namespace tessaluna::backend::raster
