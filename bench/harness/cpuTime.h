// How long something takes, by the time that this program had processors: what else runs on the machine does not count,
// except by what it leaves in the caches. All threads count: QPainter spreads large fills over several.
#pragma once

#include <ctime>

namespace bench {

inline double cpuSeconds() {
  timespec now{};
  clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
  return double(now.tv_sec) + double(now.tv_nsec) * 1e-9;
}

// Seconds for one run of the action: the mean of as many as take the given time together, after one that is not counted.
template <class Action>
double secondsOf(Action action, double together) {
  action();
  for (long count = 1;; count *= 4) {
    const double start = cpuSeconds();
    for (long i = 0; i < count; ++i) action();
    const double taken = cpuSeconds() - start;
    if (taken >= together / 2) return taken / double(count);
  }
}

}  // namespace bench
