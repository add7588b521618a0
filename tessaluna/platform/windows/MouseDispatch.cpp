#include "tessaluna/platform/windows/MouseDispatch.h"

#include "tessaluna/platform/events/KeyboardAtPress.h"
#include "tessaluna/platform/events/mouseButtons.h"
#include "tessaluna/platform/events/takenPress.h"
#include "tessaluna/platform/views/NSView.h"
#include "tessaluna/platform/windows/NSWindow.h"
#include "tessaluna/platform/windows/WindowInput.h"

namespace tessaluna::platform {

namespace {

using Handler = void (NSResponder::*)(const Ref<NSEvent>&);

// By button and phase.
constexpr Handler handlers[3][3] = {
    {&NSResponder::mouseDown, &NSResponder::mouseDragged, &NSResponder::mouseUp},
    {&NSResponder::rightMouseDown, &NSResponder::rightMouseDragged, &NSResponder::rightMouseUp},
    {&NSResponder::otherMouseDown, &NSResponder::otherMouseDragged, &NSResponder::otherMouseUp}};

// While one of these lives, what a view does not take goes no farther than to those that leave the window with it: whoever
// stays has not been pressed.
class ChainEndsWithLeavers {
 public:
  explicit ChainEndsWithLeavers(NSView& view) : top_(refTo(view)) {
    // Views that leave together do so from the top.
    for (NSView* above = view.superview(); above && !above->window(); above = above->superview()) {
      const Ref<NSObject> held = above->weak_from_this().lock();  // null if the views leave because it is being destroyed
      if (!held) break;
      top_ = refTo(*above);
    }
    earlier_ = top_->NSResponder::nextResponder();
    top_->setNextResponder(end_.get());
  }
  ~ChainEndsWithLeavers() { top_->setNextResponder(earlier_); }
  ChainEndsWithLeavers(const ChainEndsWithLeavers&) = delete;
  ChainEndsWithLeavers& operator=(const ChainEndsWithLeavers&) = delete;

 private:
  Ref<NSView> top_;
  NSResponder* earlier_;
  const Ref<NSResponder> end_ = make<NSResponder>();
};

bool takesKeyboard(NSView* pressed) {
  const auto* chooser = dynamic_cast<const KeyboardAtPress*>(pressed);
  return pressed && pressed->acceptsFirstResponder() && (!chooser || chooser->takesKeyboardAtPress());
}

}  // namespace

void MouseDispatch::send(const Ref<NSEvent>& event) {
  switch (event->type()) {
    case NSEventType::ScrollWheel:
      tracking_.pointerIsAt(event->locationInWindow());
      if (const Ref<NSView> view = viewAt(*event)) view->scrollWheel(event);
      else window_.scrollWheel(event);
      break;
    // A backend reports with these, without an area, that the pointer has entered or left the window.
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
  // A release that was lost comes from outside of everything: what the pointer is in is exited first, as in a drag to there.
  if (of->phase == PressPhase::Up && wasVisible && endsTakenPress(*event))
    tracking_.pointerMoved(event, /*isButtonDown=*/true);
  Press& press = pressed_[of->button];
  Ref<NSView> receiver = press.view.lock();
  switch (of->phase) {
    case PressPhase::Down: {
      // Whoever is notified on the way may hide the window, and the release comes right then. No press may follow it.
      const auto hasEnded = [&] { return window_.windowClient().input().hasEndedWhileSent(*event); };
      if (hasEnded()) return;
      tracking_.sendOwedExits(event);
      if (hasEnded()) return;
      tracking_.pointerIsAt(event->locationInWindow());
      tracking_.crossScrolledContent(/*isButtonDown=*/true);
      if (hasEnded()) return;
      receiver = viewAt(*event);
      if (of->button == 0) backgroundDrag_.pressed(receiver.get());
      press = {};
      press.isDown = true;
      tracking_.hideToolTip();
      if (of->button == 0 && takesKeyboard(receiver.get())) window_.makeFirstResponder(receiver.get());
      if (hasEnded()) return;
      if (receiver && receiver->window() == &window_) press.view = receiver;
      break;
    }
    case PressPhase::Dragged:
      if (of->button == 0 && backgroundDrag_.dragged()) return endPress(of->button);
      tracking_.pointerMoved(event, true);
      break;
    case PressPhase::Up:
      if (of->button == 0) backgroundDrag_.released();
      if (receiver && !window_.isVisible()) {
        // The window went while the button was down: as for a view that leaves.
        press.isDown = false;
        const ChainEndsWithLeavers scope(*receiver);
        return endPress(of->button);
      }
      press = {};
      break;
  }
  if (receiver && receiver->window() == &window_) (receiver.get()->*handlers[of->button][int(of->phase)])(event);
  // Entries that the press delayed come with its release, unless that has hidden the window.
  if (of->phase == PressPhase::Up && window_.isVisible() == wasVisible) tracking_.pointerMoved(event, isButtonDown());
}

void MouseDispatch::contentWasScrolled(NSView& content) {
  if (!window_.nativeWindow() || !tracking_.contentWasScrolled(content)) return;
  window_.nativeWindow()->callAtNextFrame([this, weak = WeakRef<NSWindow>(refTo(window_))] {
    if (const Ref<NSWindow> held = weak.lock()) tracking_.crossScrolledContent(isButtonDown());
  });
}

void MouseDispatch::viewWillLeave(NSView& view) {
  for (int button = 0; button < 3; ++button)
    if (pressed_[button].view.lock().get() == &view) {
      const ChainEndsWithLeavers scope(view);
      endPress(button);
    }
  tracking_.viewWillLeave(view);
}

void MouseDispatch::endPress(int button) {
  const Ref<NSView> view = pressed_[button].view.lock();
  pressed_[button].view.reset();
  if (!view) return;
  const backend::Backend* backend = backend::Backend::current();
  NSEvent::Fields fields{.type = NSEventType::MouseExited,
                         .location = takenPressLocation,
                         .timestamp = backend ? backend->now() : 0,
                         .window = std::static_pointer_cast<NSWindow>(window_.weak_from_this().lock()),
                         .buttonNumber = button};
  tracking_.wasExited(*view);
  view->mouseExited(make<NSEvent>(fields));
  fields.type = buttonEventType(button, PressPhase::Up);
  (view.get()->*handlers[button][int(PressPhase::Up)])(make<NSEvent>(fields));
}

Ref<NSView> MouseDispatch::viewAt(const NSEvent& event) const {
  NSView* hit = window_.contentView() ? window_.contentView()->hitTest(event.locationInWindow()) : nullptr;
  return hit ? refTo(*hit) : nullptr;
}

bool MouseDispatch::isButtonDown() const {
  return std::any_of(std::begin(pressed_), std::end(pressed_), [](const Press& press) { return press.isDown; });
}

}  // namespace tessaluna::platform
