#include "tessaluna/platform/backend/Backend.h"

#include <utility>

#include "tessaluna/platform/foundation/stopProgram.h"

namespace tessaluna::backend {

namespace {

Backend* living = nullptr;

}  // namespace

std::optional<Screen> screenShowing(CGRect rect, const std::vector<Screen>& screens) {
  const Screen* found = nullptr;
  double most = 0;
  for (const Screen& screen : screens) {
    const CGRect shown = platform::NSIntersectionRect(rect, screen.frame);
    const double area = shown.size.width * shown.size.height;
    // What has no area is where its middle is.
    const bool hasMiddle =
        platform::NSIsEmptyRect(rect) && platform::NSPointInRect({CGRectGetMidX(rect), CGRectGetMidY(rect)}, screen.frame);
    if (area <= most && !(hasMiddle && !found)) continue;
    found = &screen;
    most = area;
  }
  return found ? std::optional(*found) : std::nullopt;
}

Backend::Backend() {
  if (living) platform::stopProgram("a second backend was made while the first one exists");
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
