// The coverage of small shapes that are drawn again and again: icons, the outlines of buttons, lines.
//
// What decides it is the key: points, verbs, fill rule or pen, and the transform but for a move by whole pixels. A shape is kept
// when it is seen for the second time, so that what never comes back costs no more than a look. Bounded; what has not been drawn
// for a number of operations is given back.
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <span>
#include <vector>

#include "tessaluna/backends/raster/CoverageRuns.h"
#include "tessaluna/platform/backend/Canvas.h"

namespace tessaluna::backend::raster {

// A transform as a move by whole pixels behind the rest. Moves by less than can be seen are left out, so that what moves by
// whole points in a sum that rounds stays the same shape.
struct PixelPlacement {
  CGAffineTransform rest;
  PixelOffset moved;
  explicit PixelPlacement(const CGAffineTransform& transform);
  // False where the move has no whole pixels.
  static bool isPossible(const CGAffineTransform& transform);
};

struct KeptShape {
  CoverageRuns coverage;
  // What was made of it: all, or what lies in a clip that cuts it. Where it is shown now, the same would be made if this is so.
  bool isWhole = true;
  PixelRect clip;
  bool fits(const PixelRect& now) const { return isWhole ? now.contains(coverage.box()) : now == clip; }
};

class ShapeCache {
 public:
  class Key {
   public:
    // Filled, or stroked with a pen where there is one. Keeps references to both.
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
  // Paths with more points are not looked for.
  static constexpr std::size_t maxPoints = 2048;
  static constexpr std::uint32_t operationsKept = 20000;

  struct Sight {
    const KeptShape* kept = nullptr;  // until the next look
    bool isSecond = false;            // it has been seen, and may be kept
  };
  // One operation more, within a clip.
  Sight look(const Key& key, const PixelRect& clip);
  // Right after a look that was the second sight. What is too large is not kept.
  void keep(const Key& key, const KeptShape& shape);
  std::size_t bytes() const { return bytes_; }

 private:
  // Together, and of one shape's coverage.
  static constexpr std::size_t maxBytes = std::size_t{8} << 20, maxBytesOfShape = std::size_t{256} << 10;
  // A hash may be in any slot of its set.
  static constexpr std::size_t slotsOfSet = 4, slotCount = 2048;

  struct Entry {
    KeptShape shape;
    std::vector<CGPoint> points;
    std::vector<PathVerb> verbs;
    std::vector<double> dash;
    std::array<double, Key::numberCount> numbers;
    std::size_t bytes = 0;
    PixelRect otherClip;  // in which it was seen last, of those that it does not fit
    Entry(const Key& key, const KeptShape& shape);
    bool isOf(const Key& key) const;
  };
  struct Slot {
    std::uint64_t hash = 0;      // 0: unused
    std::uint32_t lastUsed = 0;  // by operations
    bool isTooLarge = false;     // to be kept
    std::unique_ptr<Entry> entry;
  };
  Slot* setOf(std::uint64_t hash) { return slots_.get() + hash % (slotCount / slotsOfSet) * slotsOfSet; }
  Sight lookAt(Slot& slot, const Key& key, const PixelRect& clip);
  bool isOld(const Slot& slot) const { return now_ - slot.lastUsed > operationsKept; }
  void giveBack(Slot& slot);

  std::unique_ptr<Slot[]> slots_;
  std::uint32_t now_ = 0;  // operations so far
  std::size_t hand_ = 0;   // the slot that is checked for its age next
  std::size_t bytes_ = 0;  // of entries
};

}  // namespace tessaluna::backend::raster
