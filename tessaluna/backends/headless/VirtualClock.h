// Time that passes only when a test lets it. It counts whole nanoseconds, so that ten steps of 0.1 seconds are one
// second exactly.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <utility>

#include "tessaluna/platform/foundation/languageVersion.h"

namespace tessaluna::backend::headless {

class VirtualClock {
 public:
  double now() const { return static_cast<double>(now_) * 1e-9; }  // seconds since the clock was made

  // A delay that is negative or no number counts as none.
  void callAfter(double seconds, std::function<void()> block);

  // Runs all blocks that fall due, in the order of their times and then of their asking, those asked for meanwhile too.
  // `momentEnds` is called whenever the blocks of one moment are through, and at least once; it may ask for more.
  void advance(double seconds, const std::function<void()>& momentEnds);

 private:
  using Nanoseconds = std::int64_t;
  bool hasDueBlock() const { return !blocks_.empty() && blocks_.begin()->first.first <= now_; }
  void runDueBlocks();

  Nanoseconds now_ = 0;
  std::uint64_t asked_ = 0;
  std::map<std::pair<Nanoseconds, std::uint64_t>, std::function<void()>> blocks_;  // by time and order of asking
};

}  // namespace tessaluna::backend::headless
