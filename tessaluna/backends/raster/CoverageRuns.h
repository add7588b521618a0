// Coverage as a sink received it, which can be sent to another sink again, at any place.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "tessaluna/backends/raster/CoverageSink.h"
#include "tessaluna/backends/raster/PixelRect.h"

namespace tessaluna::backend::raster {

class CoverageRuns {
 public:
  // The longest side of a box, whose places are kept in 16 bits.
  static constexpr int maxSide = 1 << 14;

  void begin(const PixelRect& box) {
    box_ = box;
    runs_.clear();
    windings_.clear();
  }
  const PixelRect& box() const { return box_; }
  std::size_t bytes() const { return runs_.size() * sizeof(Run) + windings_.size() * sizeof(float); }

  // These make it a sink of a coverage buffer.
  void uniform(int x, int y, int count, float winding) { uniformRows({x, y, x + count, y + 1}, winding); }
  void varied(int x, int y, int count, const float* windings) { variedRows({x, y, x + count, y + 1}, windings); }
  void uniformRows(const PixelRect& box, float winding) {
    add(box, Kind::Uniform);
    windings_.push_back(winding);
  }
  void variedRows(const PixelRect& box, const float* windings) {
    add(box, Kind::Varied);
    windings_.insert(windings_.end(), windings, windings + box.width());
  }

  // Sends the same coverage to a sink, moved by `away`.
  template <class Sink>
  void sendTo(Sink& sink, PixelOffset away) const {
    const PixelOffset origin{box_.left + away.x, box_.top + away.y};
    const float* winding = windings_.data();
    for (const Run& run : runs_) {
      const PixelRect box = PixelRect{run.x, run.y, run.x + run.count, run.y + run.rows}.moved(origin);
      if (run.kind == Kind::Uniform) sink.uniformRows(box, *winding);
      else sink.variedRows(box, winding);
      winding += run.windingCount();
    }
  }

 private:
  enum class Kind : std::uint16_t { Uniform, Varied };
  struct Run {
    std::uint16_t x, y, count, rows;  // from the box's upper left corner
    Kind kind;
    int windingCount() const { return kind == Kind::Uniform ? 1 : count; }
  };
  void add(const PixelRect& box, Kind kind) {
    runs_.push_back({std::uint16_t(box.left - box_.left), std::uint16_t(box.top - box_.top), std::uint16_t(box.width()),
                     std::uint16_t(box.height()), kind});
  }
  PixelRect box_;
  std::vector<Run> runs_;
  std::vector<float> windings_;  // one for a uniform run, one per pixel for a varied one
};

}  // namespace tessaluna::backend::raster
