// How much processor time something takes: other programs on the machine do not count, except for their effect on the
// caches. All threads count: QPainter spreads large fills over several.
//
// QPainter also leaves values in the upper halves of the vector registers, which slows down code that has no use for them.
// Nobody begins with those of another one.
#pragma once

#include <ctime>

#include "tessaluna/backends/raster/upperHalves.h"

namespace bench {

inline double cpuSeconds() {
  timespec now{};
  clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
  return double(now.tv_sec) + double(now.tv_nsec) * 1e-9;
}

// Seconds per run of the action: the mean of as many runs as fit into the given time, after one that is not counted.
template <class Action>
double secondsOf(Action action, double together) {
  tessaluna::backend::raster::clearUpperHalves();
  action();
  for (long count = 1;; count *= 4) {
    const double start = cpuSeconds();
    for (long i = 0; i < count; ++i) action();
    const double taken = cpuSeconds() - start;
    if (taken >= together / 2) return taken / double(count);
  }
}

}  // namespace bench
