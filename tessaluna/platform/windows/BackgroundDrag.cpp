#include "tessaluna/platform/windows/BackgroundDrag.h"

#include <cmath>

#include "tessaluna/platform/views/NSView.h"
#include "tessaluna/platform/windows/NSWindow.h"

namespace tessaluna::platform {

namespace {

// A hand that only clicks is not that still.
constexpr CGFloat leastWay = 3;  // points

CGPoint pointer() { return backend::Backend::current()->mouseLocation(); }

}  // namespace

void BackgroundDrag::pressed(const NSView* view) {
  const bool mayBegin = window_.isMovableByWindowBackground() && (!view || view->mouseDownCanMoveWindow()) &&
                        backend::Backend::current() && window_.nativeWindow() && window_.nativeWindow()->isMovable();
  state_ = mayBegin ? State::MayBegin : State::Idle;
  if (!mayBegin) return;
  start_ = pointer();
  grabbed_ = window_.convertPointFromScreen(start_);
}

bool BackgroundDrag::dragged() {
  if (state_ == State::Idle || !backend::Backend::current()) return false;
  const CGPoint now = pointer();
  if (state_ == State::MayBegin) {
    if (std::hypot(now.x - start_.x, now.y - start_.y) < leastWay) return false;
    state_ = window_.nativeWindow() && window_.nativeWindow()->moveWithPointer() ? State::IsTheDesktops : State::Follows;
  }
  if (state_ == State::Follows) window_.setFrame({{now.x - grabbed_.x, now.y - grabbed_.y}, window_.frame().size}, false);
  return true;
}

}  // namespace tessaluna::platform
