#include "tessaluna/platform/windows/MouseDispatch.h"

#include "tessaluna/platform/events/mouseButtons.h"
#include "tessaluna/platform/views/NSView.h"
#include "tessaluna/platform/windows/NSWindow.h"

namespace tessaluna::platform {

namespace {

using Handler = void (NSResponder::*)(const Ref<NSEvent>&);

// By button and phase.
constexpr Handler handlers[3][3] = {
    {&NSResponder::mouseDown, &NSResponder::mouseDragged, &NSResponder::mouseUp},
    {&NSResponder::rightMouseDown, &NSResponder::rightMouseDragged, &NSResponder::rightMouseUp},
    {&NSResponder::otherMouseDown, &NSResponder::otherMouseDragged, &NSResponder::otherMouseUp}};

}  // namespace

void MouseDispatch::send(const Ref<NSEvent>& event) {
  switch (event->type()) {
    case NSEventType::ScrollWheel:
      if (const Ref<NSView> view = viewAt(*event)) view->scrollWheel(event);
      else window_.scrollWheel(event);
      break;
    // A backend tells with these, without an area, that the pointer has come into the window or gone.
    case NSEventType::MouseExited:
      if (!isButtonDown()) tracking_.pointerLeft(event);
      break;
    case NSEventType::MouseEntered:
    case NSEventType::MouseMoved: tracking_.pointerMoved(event, isButtonDown()); break;
    default: sendButton(event);
  }
}

void MouseDispatch::sendButton(const Ref<NSEvent>& event) {
  const std::optional<ButtonEvent> of = buttonEventOf(event->type());
  if (!of) return;
  const bool wasVisible = window_.isVisible();
  Press& press = pressed_[of->button];
  Ref<NSView> receiver = press.view.lock();
  switch (of->phase) {
    case PressPhase::Down:
      receiver = viewAt(*event);
      press = {.view = receiver, .isDown = true};
      if (receiver && of->button == 0 && receiver->acceptsFirstResponder()) window_.makeFirstResponder(receiver.get());
      break;
    case PressPhase::Dragged: tracking_.pointerMoved(event, true); break;
    case PressPhase::Up: press = {}; break;
  }
  if (receiver && receiver->window() == &window_) (receiver.get()->*handlers[of->button][int(of->phase)])(event);
  // Entries that the press held back come with its release, unless that has hidden the window.
  if (of->phase == PressPhase::Up && window_.isVisible() == wasVisible) tracking_.pointerMoved(event, isButtonDown());
}

void MouseDispatch::viewWillLeave(const NSView& view) {
  for (Press& press : pressed_)
    if (press.view.lock().get() == &view) press.view.reset();
}

Ref<NSView> MouseDispatch::viewAt(const NSEvent& event) const {
  NSView* hit = window_.contentView() ? window_.contentView()->hitTest(event.locationInWindow()) : nullptr;
  return hit ? refTo(*hit) : nullptr;
}

bool MouseDispatch::isButtonDown() const {
  return std::any_of(std::begin(pressed_), std::end(pressed_), [](const Press& press) { return press.isDown; });
}

}  // namespace tessaluna::platform
