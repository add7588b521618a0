// The window's part in typing: who gets the keys, where the Tab key goes, and the field editor.
#include "tessaluna/platform/events/NSEvent.h"
#include "tessaluna/platform/events/keyBindings.h"
#include "tessaluna/platform/menus/NSMenu.h"
#include "tessaluna/platform/views/KeyboardWhileHidden.h"
#include "tessaluna/platform/views/NSTextView.h"
#include "tessaluna/platform/windows/NSApplication.h"
#include "tessaluna/platform/windows/NSWindow.h"
#include "tessaluna/platform/windows/WindowInput.h"
#include "tessaluna/platform/windows/keyViews.h"

namespace tessaluna::platform {

bool NSWindow::makeFirstResponder(NSResponder* responder) {
  NSResponder* wanted = responder ? responder : this;
  if (wanted == firstResponder_) return true;
  // A window does not notice when a view of another window is released.
  const auto* view = dynamic_cast<const NSView*>(wanted);
  const bool wasHidden = view && isHiddenFromKeyboard(*view);  // as its program wants it
  const auto hasGone = [&] { return view && (view->window() != this || (!wasHidden && isHiddenFromKeyboard(*view))); };
  if (hasGone()) return false;
  const Ref<NSResponder> held = refTo(*wanted);
  // One that takes the keys back whenever they go keeps them.
  constexpr int maxAsked = 3;
  for (int asked = 0; firstResponder_ != this; ++asked) {
    if (asked == maxAsked) return false;
    const Ref<NSResponder> earlier = refTo(*firstResponder_);
    const std::size_t changes = firstResponderChanges_;
    if (!earlier->resignFirstResponder()) return false;
    // Whoever was notified of the end may have made another one the first responder: that one is asked as well.
    if (firstResponderChanges_ == changes) setFirstResponder(*this);
  }
  if (wanted == this) return true;
  // Whoever is notified may take the view away, or hide it.
  if (hasGone() || !wanted->acceptsFirstResponder() || !wanted->becomeFirstResponder()) return false;
  if (hasGone()) {
    // It believes that it has the keys.
    wanted->resignFirstResponder();
    return false;
  }
  // A text field has given the status on to its editor by now.
  if (firstResponder_ == this) setFirstResponder(*wanted);
  // A control's element is its cell.
  NSAccessibilityPostNotification(NSAccessibilityUnignoredDescendant(held),
                                  NSAccessibilityFocusedUIElementChangedNotification);
  return true;
}

void NSWindow::setFirstResponder(NSResponder& responder) {
  firstResponder_ = &responder;
  ++firstResponderChanges_;
  focusRing_.firstResponderDidChange();
  scheduleDisplay();
  if (native_) native_->firstResponderDidChange();
  // A view that has the keys reports itself once it knows what to do with them.
  if (firstResponder_ == this)
    NSAccessibilityPostNotification(weak_from_this().lock(), NSAccessibilityFocusedUIElementChangedNotification);
}

bool NSWindow::selectKeyViewWithin(NSView& view, backend::FocusStep step, FocusRing::Cause cause) {
  const Ref<NSObject> held = weak_from_this().lock();
  const FocusRing::CauseScope scope(focusRing_, cause);
  const std::ptrdiff_t direction = step == backend::FocusStep::Next ? 1 : -1;
  const std::vector<Ref<NSView>> views = keyViewsWithin(view);
  const auto count = static_cast<std::ptrdiff_t>(views.size());
  std::ptrdiff_t now = direction > 0 ? -1 : count;
  // A field is edited in a view inside of it.
  const auto* first = dynamic_cast<const NSView*>(firstResponder_);
  for (std::ptrdiff_t i = 0; i < count; ++i)
    if (first && first->isDescendantOf(views[i].get())) now = i;
  std::ptrdiff_t next = now + direction;
  // The Tab key stops at none of them, as at one that is hidden: it continues from between those around it.
  if (first && (now < 0 || now == count || first->isHiddenOrHasHiddenAncestor()))
    if (const std::optional<std::size_t> place = placeAmongKeyViewsWithin(view, *first))
      next = static_cast<std::ptrdiff_t>(*place) - (direction > 0 ? 0 : 1);
  for (; next >= 0 && next < count; next += direction)
    if (makeFirstResponder(views[next].get())) return true;
  return false;
}

bool NSWindow::selectNextKeyView() { return contentView_ && selectKeyViewWithin(*contentView_, backend::FocusStep::Next); }

bool NSWindow::selectPreviousKeyView() {
  return contentView_ && selectKeyViewWithin(*contentView_, backend::FocusStep::Previous);
}

namespace {

std::optional<backend::FocusStep> focusStepOf(const NSEvent& event) {
  if (event.modifierFlags() & (NSEventModifierFlagControl | NSEventModifierFlagOption | NSEventModifierFlagCommand))
    return std::nullopt;
  if (event.characters() == NSBackTabCharacter) return backend::FocusStep::Previous;
  if (event.characters() != NSTabCharacter) return std::nullopt;
  return event.modifierFlags() & NSEventModifierFlagShift ? backend::FocusStep::Previous : backend::FocusStep::Next;
}

}  // namespace

void NSWindow::moveKeyView(backend::FocusStep step) {
  if ((native_ && native_->moveFocus(step)) || !contentView_ || selectKeyViewWithin(*contentView_, step)) return;
  if (makeFirstResponder(nullptr)) selectKeyViewWithin(*contentView_, step);
}

Ref<NSText> NSWindow::fieldEditor(bool createFlag, NSObject*) {
  if (!fieldEditor_ && createFlag) {
    fieldEditor_ = make<NSTextView>(CGRect{});
    fieldEditor_->setFieldEditor(true);
  }
  return fieldEditor_;
}

void NSWindow::endEditingFor(NSObject* object) {
  const Ref<NSText> editor = fieldEditor_;
  if (!editor || !editor->delegate() || (object && dynamic_cast<NSObject*>(editor->delegate().get()) != object)) return;
  const std::size_t changes = firstResponderChanges_;
  editor->endEditing();
  // Whoever was notified of the end may have begun to edit the next field, in the same editor.
  if (firstResponder_ == editor.get() && firstResponderChanges_ == changes) setFirstResponder(*this);
}

void NSWindow::keyDown(const Ref<NSEvent>& event) {
  if (const std::optional<backend::FocusStep> step = focusStepOf(*event)) {
    moveKeyView(*step);
  } else if (nextResponder()) {
    NSResponder::keyDown(event);
  } else {
    input_->eventWasNotTaken();
  }
}

namespace {

// Return goes to a text that is written before it presses a button: it begins a line, or ends a field, which passes on what no
// action of its own takes.
bool isReturnInText(const NSResponder& first, const NSEvent& keyDown) {
  const auto* text = dynamic_cast<const NSTextView*>(&first);
  return text && text->isEditable() && commandForKey(keyDown) == "insertNewline:";
}

// A key that is held chooses once.
bool isTakenByMainMenu(const Ref<NSEvent>& keyDown) {
  const Ref<NSMenu> menu = NSApp ? NSApp->mainMenu() : nullptr;
  if (!menu) return false;
  return keyDown->isARepeat() ? menu->itemForKeyEquivalent(*keyDown) != nullptr : menu->performKeyEquivalent(keyDown);
}

}  // namespace

void NSWindow::dispatchKey(const Ref<NSEvent>& event) {
  const Ref<NSResponder> receiver = refTo(*firstResponder_);
  switch (event->type()) {
    case NSEventType::KeyDown:
      if (!isReturnInText(*receiver, *event)) {
        if (contentView_ && Ref<NSView>(contentView_)->performKeyEquivalent(event)) return;
        if (isTakenByMainMenu(event)) return;
      }
      receiver->keyDown(event);
      break;
    case NSEventType::KeyUp: receiver->keyUp(event); break;
    default: receiver->flagsChanged(event);
  }
}

}  // namespace tessaluna::platform
