#include "gallery/Ticker.h"

#include <utility>

#include "tessaluna/platform/backend/Backend.h"

namespace gallery {

using tessaluna::backend::Backend;

void Ticker::start(std::function<void(double)> tick) {
  tick_ = std::move(tick);
  if (const Backend* backend = Backend::current()) last_ = backend->now();
  waitForNext();
}

void Ticker::waitForNext() {
  constexpr double period = 0.1;
  Backend* backend = Backend::current();
  if (!backend) return;
  next_ = backend->timer(period, [this, backend] {
    const double now = backend->now();
    tick_(now - std::exchange(last_, now));
    waitForNext();
  });
}

}  // namespace gallery
