// The coverage of small shapes that are drawn again and again: icons, the outlines of buttons, lines.
//
// The key consists of everything that coverage depends on: points, verbs, fill rule or pen, and the transform except for a
// move by whole pixels. A shape is kept when it is seen for the second time, so that a shape that never returns costs no
// more than a look. The cache is bounded; it frees shapes that have not been drawn for a number of operations.
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <span>
#include <vector>

#include "tessaluna/backends/raster/CoverageRuns.h"
#include "tessaluna/platform/backend/Canvas.h"

namespace tessaluna::backend::raster {

// Splits a transform into the rest and, after it, a move by whole pixels. Moves too small to be visible are dropped, so that
// a shape that is moved by whole points stays the same shape although sums round.
struct PixelPlacement {
  CGAffineTransform rest;
  PixelOffset moved;
  explicit PixelPlacement(const CGAffineTransform& transform);
  // False if the move is too large to be counted in whole pixels.
  static bool isPossible(const CGAffineTransform& transform);
};

struct KeptShape {
  CoverageRuns coverage;
  // Whether the coverage is that of the whole shape or only of the part in a clip that cuts it.
  bool isWhole = true;
  PixelRect clip;
  // True if the same coverage would be computed for this clip.
  bool fits(const PixelRect& now) const { return isWhole ? now.contains(coverage.box()) : now == clip; }
};

class ShapeCache {
 public:
  class Key {
   public:
    // The path is filled, or stroked if there is a pen. The key keeps references to both.
    Key(const Path& path, FillRule rule, const StrokeStyle* pen, const CGAffineTransform& transform);
    std::uint64_t hash() const { return hash_; }

   private:
    friend class ShapeCache;
    static constexpr std::size_t numberCount = 10;
    const Path& path_;
    std::span<const double> dash_;
    std::array<double, numberCount> numbers_{};  // of transform, rule and pen
    std::uint64_t hash_;
  };
  // Paths with more points are not looked up: they show data, as a graph does, and seldom return unchanged.
  static constexpr std::size_t maxPoints = 2048;
  // A shape outlives this many operations without being drawn: two hundred redraws of a window with a hundred shapes.
  static constexpr std::uint32_t operationsKept = 20000;

  struct Sight {
    const KeptShape* kept = nullptr;  // until the next look
    bool isSecond = false;            // it has been seen before, and may be kept
  };
  // Looks a shape up within a clip, and counts one more operation.
  Sight look(const Key& key, const PixelRect& clip);
  // Called right after a look that was the second sight. A shape that is too large is not kept.
  void keep(const Key& key, const KeptShape& shape);
  std::size_t bytes() const { return bytes_; }

 private:
  // The limits of all entries together and of one entry, so that a few large shapes do not fill the cache.
  static constexpr std::size_t maxBytes = std::size_t{8} << 20, maxBytesOfShape = std::size_t{256} << 10;
  // A hash may be in any slot of its set of slots, which are compared one by one.
  static constexpr std::size_t slotsOfSet = 4, slotCount = 2048;

  struct Entry {
    KeptShape shape;
    std::vector<CGPoint> points;
    std::vector<PathVerb> verbs;
    std::vector<double> dash;
    std::array<double, Key::numberCount> numbers;
    std::size_t bytes = 0;
    PixelRect otherClip;  // the last clip in which it was seen and which it does not fit
    Entry(const Key& key, const KeptShape& shape);
    bool isOf(const Key& key) const;
  };
  struct Slot {
    std::uint64_t hash = 0;      // 0: unused
    std::uint32_t lastUsed = 0;  // in operations
    bool isTooLarge = false;     // to be kept
    std::unique_ptr<Entry> entry;
  };
  Slot* setOf(std::uint64_t hash) { return slots_.get() + hash % (slotCount / slotsOfSet) * slotsOfSet; }
  Sight lookAt(Slot& slot, const Key& key, const PixelRect& clip);
  bool isOld(const Slot& slot) const { return now_ - slot.lastUsed > operationsKept; }

  std::unique_ptr<Slot[]> slots_;
  std::uint32_t now_ = 0;  // operations so far
  std::size_t hand_ = 0;   // the slot that is checked for its age next
  std::size_t bytes_ = 0;  // of entries
};

}  // namespace tessaluna::backend::raster
