#include "tessaluna/platform/backend/Backend.h"

#include <utility>

#include "tessaluna/platform/foundation/stopProgram.h"

namespace tessaluna::backend {

namespace {

Backend* living = nullptr;

}  // namespace

Backend::Backend() {
  if (living) platform::stopProgram("a second backend was made while a first one lives");
  living = this;
}

Backend::~Backend() { living = nullptr; }

Backend* Backend::current() { return living; }

Timer Backend::timer(double seconds, std::function<void()> block) {
  const auto held = std::make_shared<std::function<void()>>(std::move(block));
  callAfter(seconds, [weak = std::weak_ptr(held)] {
    if (const auto call = weak.lock()) (*call)();
  });
  return held;
}

}  // namespace tessaluna::backend
