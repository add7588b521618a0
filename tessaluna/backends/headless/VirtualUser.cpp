#include "tessaluna/backends/headless/VirtualUser.h"

#include <cmath>

#include "tessaluna/platform/events/NSTextInputClient.h"
#include "tessaluna/platform/events/mouseButtons.h"
#include "tessaluna/platform/text/unicode.h"
#include "tessaluna/platform/windows/NSApplication.h"
#include "tessaluna/platform/windows/NSWindow.h"

namespace tessaluna::backend::headless {

using namespace tessaluna::platform;
using enum NSEventType;

namespace {

constexpr double longestDoubleClick = 0.5;  // seconds
constexpr double widestDoubleClick = 4;     // points

NSTextInputClient* textWithKeys() {
  const Ref<NSWindow> window = NSApp ? NSApp->keyWindow() : nullptr;
  auto* text = window ? dynamic_cast<NSTextInputClient*>(window->firstResponder()) : nullptr;
  return text && text->acceptsTextInput() ? text : nullptr;
}

}  // namespace

void VirtualUser::send(NSEvent::Fields fields) {
  if (!NSApp) stopProgram("headless: a user without NSApp");
  fields.timestamp = desktop_.now();
  if (fields.window) {
    switch (fields.type) {
      case KeyDown:
      case KeyUp: break;
      default: desktop_.setMouseLocation(fields.window->convertPointToScreen(fields.location));
    }
  }
  const Ref<NSApplication> application = NSApp;  // an event may be the one that ends it
  application->sendEvent(make<NSEvent>(std::move(fields)));
}

void VirtualUser::press(NSWindow& window, CGPoint point, PressOptions options) {
  const bool goesOn = last_.window.lock().get() == &window && last_.options.button == options.button &&
                      desktop_.now() - last_.time <= longestDoubleClick &&
                      std::hypot(point.x - last_.point.x, point.y - last_.point.y) <= widestDoubleClick;
  last_ = {.window = refTo(window),
           .point = point,
           .options = options,
           .time = desktop_.now(),
           .clickCount = goesOn ? last_.clickCount + 1 : 1};
  isDown_ = true;
  HeadlessWindow& native = HeadlessWindow::of(window);
  native.raise();
  native.requestKey();
  send({.type = buttonEventType(options.button, PressPhase::Down),
        .location = point,
        .modifiers = options.modifiers,
        .window = refTo(window),
        .clickCount = last_.clickCount,
        .buttonNumber = options.button});
}

void VirtualUser::dragTo(CGPoint point) {
  const Ref<NSWindow> window = last_.window.lock();
  if (!isDown_ || !window) return;
  last_.point = point;
  send({.type = buttonEventType(last_.options.button, PressPhase::Dragged),
        .location = point,
        .modifiers = last_.options.modifiers,
        .window = window,
        .buttonNumber = last_.options.button});
}

void VirtualUser::release() {
  const Ref<NSWindow> window = last_.window.lock();
  const bool wasDown = std::exchange(isDown_, false);
  if (!wasDown || !window) return;
  send({.type = buttonEventType(last_.options.button, PressPhase::Up),
        .location = last_.point,
        .modifiers = last_.options.modifiers,
        .window = window,
        .clickCount = last_.clickCount,
        .buttonNumber = last_.options.button});
}

void VirtualUser::click(NSWindow& window, CGPoint point, PressOptions options) {
  press(window, point, options);
  release();
}

void VirtualUser::pressElsewhere(CGPoint screenPoint) {
  desktop_.setMouseLocation(screenPoint);
  send({.type = LeftMouseDown, .location = screenPoint, .clickCount = 1});
}

void VirtualUser::moveTo(NSWindow& window, CGPoint point) {
  send({.type = MouseMoved, .location = point, .window = refTo(window)});
}

void VirtualUser::leave(NSWindow& window) {
  constexpr CGPoint outside{-1, -1};
  send({.type = MouseExited, .location = outside, .window = refTo(window)});
}

void VirtualUser::scroll(NSWindow& window, CGPoint point, CGSize delta) {
  send({.type = ScrollWheel, .location = point, .window = refTo(window), .scrollingDelta = delta});
}

void VirtualUser::keyDown(const std::string& characters, std::uint32_t modifiers) {
  send({.type = KeyDown,
        .modifiers = modifiers,
        .window = NSApp ? NSApp->keyWindow() : nullptr,
        .characters = characters,
        .charactersIgnoringModifiers = characters});
}

void VirtualUser::keyUp(const std::string& characters, std::uint32_t modifiers) {
  send({.type = KeyUp,
        .modifiers = modifiers,
        .window = NSApp ? NSApp->keyWindow() : nullptr,
        .characters = characters,
        .charactersIgnoringModifiers = characters});
}

void VirtualUser::pressKey(const std::string& characters, std::uint32_t modifiers) {
  keyDown(characters, modifiers);
  keyUp(characters, modifiers);
}

void VirtualUser::pressKey(char32_t functionKey, std::uint32_t modifiers) {
  pressKey(utf8FromScalar(functionKey), modifiers);
}

void VirtualUser::compose(std::string_view text) {
  if (NSTextInputClient* client = textWithKeys()) client->setMarkedText(text, {utf16FromUtf8(text).size(), 0}, noRange);
}

void VirtualUser::commit(std::string_view text) {
  if (NSTextInputClient* client = textWithKeys()) client->insertText(text, noRange);
}

void VirtualUser::type(std::string_view text) {
  while (!text.empty()) {
    const std::string key = utf8FromScalar(firstScalar(text));
    text.remove_prefix(std::min(key.size(), text.size()));
    pressKey(key);
  }
}

}  // namespace tessaluna::backend::headless
