// One turn of a list: some frames of scrolling, each turn from where the last one ended.
#pragma once

#include "bench/harness/cpuTime.h"
#include "bench/tracklist/ScrollingList.h"

namespace bench {

inline constexpr int trackCount = 10000;
inline constexpr int framesInTurn = 20;

// The CPU time of a frame in milliseconds, of all threads, as Qt paints in some of its own; on average over the turn.
inline double turn(ScrollingList& list, int firstFrame) {
  constexpr int step = 60;  // a row and a part: edges cut rows
  constexpr int way = trackCount * ScrollingList::rowHeight - ScrollingList::height;
  const double start = cpuSeconds();
  for (int frame = firstFrame; frame < firstFrame + framesInTurn; ++frame) list.showFrameAt(frame * step % way);
  return (cpuSeconds() - start) * 1e3 / framesInTurn;
}

}  // namespace bench
