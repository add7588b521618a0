#include "tessaluna/backends/headless/VirtualUser.h"

#include "tessaluna/platform/events/keyFields.h"
#include "tessaluna/platform/text/unicode.h"
#include "tessaluna/platform/windows/NSApplication.h"
#include "tessaluna/platform/windows/NSWindow.h"
#include "tessaluna/platform/windows/WindowInput.h"

namespace tessaluna::backend::headless {

using namespace tessaluna::platform;
using What = PointerInput::What;

namespace {

void requireApplication() {
  if (!NSApp) stopProgram("headless: a user without NSApp");
}

// As a native window counts, from the upper left corner.
CGPoint placeIn(const NSWindow& window, CGPoint point) { return {point.x, window.frame().size.height - point.y}; }

}  // namespace

void VirtualUser::sendPointer(NSWindow& window, CGPoint point, PointerInput input) {
  requireApplication();
  const CGPoint screenPoint = window.convertPointToScreen(point);
  desktop_.setMouseLocation(screenPoint);
  input.place = placeIn(window, point);
  input.onScreen = screenPoint;
  input.modifiers = last_.options.modifiers;
  if (isDown_) input.heldButtons = 1u << last_.options.button;
  HeadlessWindow::of(window).input().pointer(input);
}

void VirtualUser::press(NSWindow& window, CGPoint point, PressOptions options) {
  last_ = {.window = refTo(window), .point = point, .options = options};
  isDown_ = true;
  HeadlessWindow& native = HeadlessWindow::of(window);
  native.raise();
  native.requestKey();
  sendPointer(window, point, {.what = What::Pressed, .place = {}, .button = options.button});
}

void VirtualUser::dragTo(CGPoint point) {
  const Ref<NSWindow> window = last_.window.lock();
  if (!isDown_ || !window) return;
  last_.point = point;
  sendPointer(*window, point, {.what = What::Moved, .place = {}});
}

void VirtualUser::release() {
  const Ref<NSWindow> window = last_.window.lock();
  const bool wasDown = std::exchange(isDown_, false);
  if (!wasDown || !window) return;
  sendPointer(*window, last_.point, {.what = What::Released, .place = {}, .button = last_.options.button});
  last_.options.modifiers = 0;
}

void VirtualUser::click(NSWindow& window, CGPoint point, PressOptions options) {
  press(window, point, options);
  release();
}

void VirtualUser::pressElsewhere(CGPoint screenPoint) {
  requireApplication();
  desktop_.setMouseLocation(screenPoint);
  sendPressElsewhere(screenPoint, 0, 0);
}

void VirtualUser::moveTo(NSWindow& window, CGPoint point) { sendPointer(window, point, {.what = What::Moved, .place = {}}); }

void VirtualUser::leave(NSWindow& window) { sendPointer(window, {-1, -1}, {.what = What::Left, .place = {}}); }

void VirtualUser::scroll(NSWindow& window, CGPoint point, CGSize delta) {
  requireApplication();
  desktop_.setMouseLocation(window.convertPointToScreen(point));
  HeadlessWindow& native = HeadlessWindow::of(window);
  const Ref<NSWindow> held = refTo(window);
  if (native.input().wheel({.place = placeIn(window, point), .points = delta, .lines = {}}) == Taken::No)
    native.noteNotTaken();
}

void VirtualUser::sendKey(KeyInput::What what, const std::string& characters, std::uint32_t modifiers) {
  requireApplication();
  const NamedKey key = keyOfCharacter(firstScalar(characters));
  KeyInput input{.what = what, .name = key.name, .functionNumber = key.functionNumber, .modifiers = modifiers};
  if (key == NamedKey{}) input.text = input.letter = characters;
  if (const Ref<NSWindow> window = NSApp->keyWindow()) {
    HeadlessWindow& native = HeadlessWindow::of(*window);
    const bool isTaken = native.input().key(input).taken == Taken::Yes;
    if (what == KeyInput::What::Pressed && !isTaken) native.noteNotTaken();
  } else if (std::optional<NSEvent::Fields> fields = keyFieldsOf(input)) {
    fields->timestamp = desktop_.now();
    Ref<NSApplication>(NSApp)->sendEvent(make<NSEvent>(std::move(*fields)));
  }
}

void VirtualUser::keyDown(const std::string& characters, std::uint32_t modifiers) {
  sendKey(KeyInput::What::Pressed, characters, modifiers);
}

void VirtualUser::keyUp(const std::string& characters, std::uint32_t modifiers) {
  sendKey(KeyInput::What::Released, characters, modifiers);
}

void VirtualUser::pressKey(const std::string& characters, std::uint32_t modifiers) {
  keyDown(characters, modifiers);
  keyUp(characters, modifiers);
}

void VirtualUser::pressKey(char32_t functionKey, std::uint32_t modifiers) {
  pressKey(utf8FromScalar(functionKey), modifiers);
}

void VirtualUser::sendComposition(const CompositionInput& step) {
  if (const Ref<NSWindow> window = NSApp ? NSApp->keyWindow() : nullptr)
    HeadlessWindow::of(*window).input().composition(step);
}

void VirtualUser::compose(std::string_view text) { sendComposition({.composed = std::string(text)}); }
void VirtualUser::commit(std::string_view text) { sendComposition({.committed = std::string(text)}); }

void VirtualUser::type(std::string_view text) {
  while (!text.empty()) {
    const std::string key = utf8FromScalar(firstScalar(text));
    text.remove_prefix(std::min(key.size(), text.size()));
    pressKey(key);
  }
}

}  // namespace tessaluna::backend::headless
