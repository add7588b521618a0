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
  // The longest side of a box.
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
    for (auto run = runs_.begin(); run < runs_.end();) {
      if constexpr (TakesRows<Sink>) {
        const PixelRect box = PixelRect{run->x, run->y, run->x + run->count, run->y + run->rows}.moved(origin);
        if (run->kind == Kind::Uniform) sink.uniformRows(box, *winding);
        else sink.variedRows(box, winding);
        winding += run++->windingCount();
      } else {
        // This sink needs all of a row before the next one, also where rows share their runs.
        auto end = run;
        const float* next = winding;
        while (end < runs_.end() && end->y == run->y) next += end++->windingCount();
        for (int y = origin.y + run->y, bottom = y + run->rows; y < bottom; ++y) {
          const float* at = winding;
          for (auto one = run; one < end; ++one) {
            if (one->kind == Kind::Uniform) sink.uniform(origin.x + one->x, y, one->count, *at);
            else sink.varied(origin.x + one->x, y, one->count, at);
            at += one->windingCount();
          }
        }
        run = end;
        winding = next;
      }
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
