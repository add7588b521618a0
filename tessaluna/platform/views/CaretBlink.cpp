#include "tessaluna/platform/views/CaretBlink.h"

#include <utility>

#include "tessaluna/platform/backend/Backend.h"

namespace tessaluna::platform {

namespace {

constexpr double halfPeriod = 0.5;  // seconds

}  // namespace

void CaretBlink::start() {
  run_ = std::make_shared<int>();
  show(true);
  waitForNext();
}

void CaretBlink::stop() {
  run_ = nullptr;
  show(false);
}

void CaretBlink::show(bool isShown) {
  if (std::exchange(isShown_, isShown) != isShown && changed_) changed_();
}

void CaretBlink::waitForNext() {
  backend::Backend* backend = backend::Backend::current();
  if (!backend) return;
  backend->callAfter(halfPeriod, [this, run = std::weak_ptr(run_)] {
    if (run.expired()) return;
    show(!isShown_);
    waitForNext();
  });
}

}  // namespace tessaluna::platform
