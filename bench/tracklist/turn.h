// One turn of a list: some frames of scrolling. Each turn starts where the last one ended.
#pragma once

#include "bench/harness/cpuTime.h"
#include "bench/tracklist/ScrollingList.h"

namespace bench {

inline constexpr int trackCount = 10000;
inline constexpr int framesInTurn = 20;

// The mean CPU time per frame over the turn, in milliseconds. It includes all threads, since Qt also paints in threads of
// its own.
inline double turn(ScrollingList& list, int firstFrame) {
  constexpr int step = 60;  // more than a row, so that edges cut rows
  constexpr int way = trackCount * ScrollingList::rowHeight - ScrollingList::height;
  const double start = cpuSeconds();
  for (int frame = firstFrame; frame < firstFrame + framesInTurn; ++frame) list.showFrameAt(frame * step % way);
  return (cpuSeconds() - start) * 1e3 / framesInTurn;
}

}  // namespace bench
