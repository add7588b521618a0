// Advances the simulated time of a host with the backend's clock.
#pragma once

#include <functional>

#include "tessaluna/platform/backend/Timer.h"

namespace gallery {

class Ticker {
 public:
  // Calls the function ten times per second with the seconds that have passed, until the ticker is destroyed.
  void start(std::function<void(double seconds)> tick);

 private:
  void waitForNext();

  std::function<void(double)> tick_;
  tessaluna::backend::Timer next_;
  double last_ = 0;
};

}  // namespace gallery
