#include "tessaluna/platform/views/CaretBlink.h"

#include "tessaluna/platform/backend/Backend.h"
#include "tessaluna/platform/time/durations.h"

namespace tessaluna::platform {

void CaretBlink::start() {
  show(true);
  waitForNext();
}

void CaretBlink::stop() {
  next_ = nullptr;
  show(false);
}

void CaretBlink::show(bool isShown) {
  if (std::exchange(isShown_, isShown) != isShown && changed_) changed_();
}

void CaretBlink::turn() {
  show(!isShown_);
  waitForNext();
}

void CaretBlink::waitForNext() {
  if (backend::Backend* backend = backend::Backend::current())
    next_ = backend->timer(caretBlinkHalfPeriod, [this] { turn(); });
}

}  // namespace tessaluna::platform
