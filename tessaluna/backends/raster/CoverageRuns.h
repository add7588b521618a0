// Coverage as a sink received it, to be passed on again, at any place.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "tessaluna/backends/raster/PixelRect.h"

namespace tessaluna::backend::raster {

class CoverageRuns {
 public:
  // For a box of no more than this a side.
  static constexpr int mostSide = 1 << 14;

  void begin(const PixelRect& box) {
    box_ = box;
    runs_.clear();
    windings_.clear();
  }
  const PixelRect& box() const { return box_; }
  std::size_t bytes() const { return runs_.size() * sizeof(Run) + windings_.size() * sizeof(float); }

  // A sink of a coverage buffer.
  void even(int x, int y, int count, float winding) {
    add(x, y, count, Kind::Even);
    windings_.push_back(winding);
  }
  void varied(int x, int y, int count, const float* windings) {
    add(x, y, count, Kind::Varied);
    windings_.insert(windings_.end(), windings, windings + count);
  }

  // The same calls in the same order, so many pixels away.
  template <class Sink>
  void tell(Sink& sink, PixelOffset away) const {
    const float* winding = windings_.data();
    const int left = box_.left + away.x, top = box_.top + away.y;
    for (const Run& run : runs_) {
      if (run.kind == Kind::Even) {
        sink.even(left + run.x, top + run.y, run.count, *winding++);
      } else {
        sink.varied(left + run.x, top + run.y, run.count, winding);
        winding += run.count;
      }
    }
  }

 private:
  enum class Kind : std::uint16_t { Even, Varied };
  struct Run {
    std::uint16_t x, y, count;  // from the box's upper left corner
    Kind kind;
  };
  void add(int x, int y, int count, Kind kind) {
    runs_.push_back({std::uint16_t(x - box_.left), std::uint16_t(y - box_.top), std::uint16_t(count), kind});
  }
  PixelRect box_;
  std::vector<Run> runs_;
  std::vector<float> windings_;  // one of an even run, else one of each pixel
};

}  // namespace tessaluna::backend::raster
