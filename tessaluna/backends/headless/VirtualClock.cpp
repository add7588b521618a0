#include "tessaluna/backends/headless/VirtualClock.h"

#include <cmath>

#include "tessaluna/platform/foundation/stopProgram.h"

namespace tessaluna::backend::headless {

namespace {

std::int64_t nanoseconds(double seconds) {
  constexpr double farthest = 1e9;  // seconds; three decades are never in the way of a test
  if (!(seconds > 0)) return 0;
  return std::llround(std::fmin(seconds, farthest) * 1e9);
}

}  // namespace

void VirtualClock::callAfter(double seconds, std::function<void()> block) {
  blocks_.emplace(std::pair(now_ + nanoseconds(seconds), asked_++), std::move(block));
}

void VirtualClock::advance(double seconds, const std::function<void()>& momentEnds) {
  const Nanoseconds end = now_ + nanoseconds(seconds);
  while (true) {
    runDueBlocks();
    momentEnds();
    if (hasDueBlock()) continue;
    if (blocks_.empty() || blocks_.begin()->first.first > end) break;
    now_ = blocks_.begin()->first.first;
  }
  now_ = end;
}

void VirtualClock::runDueBlocks() {
  // A block that asks for itself again without delay would stop time forever, and a test with it.
  int left = 1'000'000;
  while (hasDueBlock()) {
    if (left-- == 0) platform::stopProgram("headless: a block asks for itself again and time does not pass");
    const auto node = blocks_.extract(blocks_.begin());
    node.mapped()();
  }
}

}  // namespace tessaluna::backend::headless
