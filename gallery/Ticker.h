// Lets the simulated time of a host pass with the backend's clock.
#pragma once

#include <functional>

#include "tessaluna/platform/backend/Timer.h"

namespace gallery {

class Ticker {
 public:
  // Called ten times a second with the seconds that have passed, until the ticker goes.
  void start(std::function<void(double seconds)> tick);

 private:
  void waitForNext();

  std::function<void(double)> tick_;
  tessaluna::backend::Timer next_;
  double last_ = 0;
};

}  // namespace gallery
