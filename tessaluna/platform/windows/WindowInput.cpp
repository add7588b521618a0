#include "tessaluna/platform/windows/WindowInput.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <utility>

#include "tessaluna/platform/events/NSTextInputClient.h"
#include "tessaluna/platform/events/keyFields.h"
#include "tessaluna/platform/events/mouseButtons.h"
#include "tessaluna/platform/events/takenPress.h"
#include "tessaluna/platform/foundation/AtEndOfScope.h"
#include "tessaluna/platform/text/unicode.h"
#include "tessaluna/platform/windows/NSApplication.h"
#include "tessaluna/platform/windows/NSWindow.h"

namespace tessaluna::platform {

using backend::CompositionInput;
using backend::KeyAnswer;
using backend::KeyInput;
using backend::PointerInput;
using backend::Taken;
using enum NSEventType;

namespace {

constexpr std::uint32_t bitOf(int button) { return button >= 0 && button < 32 ? std::uint32_t{1} << button : 0; }

// Of several that are down, the one that a drag is of, or that is to be released next.
constexpr int lowestButton(std::uint32_t buttons) { return std::countr_zero(buttons); }

// Null once the window is on its way out.
Ref<NSWindow> hold(NSWindow& window) { return std::static_pointer_cast<NSWindow>(window.weak_from_this().lock()); }

Ref<NSEvent> eventOf(NSEvent::Fields fields) {
  if (const backend::Backend* backend = backend::Backend::current()) fields.timestamp = backend->now();
  return make<NSEvent>(std::move(fields));
}

void sendThroughApplication(const Ref<NSEvent>& event) {
  if (!backend::Backend::current() || !NSApp) return;
  const Ref<NSApplication> application = NSApp;  // an event may be the one that ends it
  application->sendEvent(event);
}

}  // namespace

Taken WindowInput::send(NSEvent::Fields fields) {
  if (!NSApp) return Taken::No;
  fields.window = hold(window_);
  const Ref<NSEvent> event = eventOf(std::move(fields));
  const Taken outer = std::exchange(taken_, Taken::Yes);
  const NSEvent* const outerEvent = std::exchange(sent_, event.get());
  const AtEndOfScope end([&] {
    sent_ = outerEvent;
    taken_ = outer;
  });
  sendThroughApplication(event);
  return taken_;
}

CGPoint WindowInput::inBaseSpace(CGPoint place) const { return {place.x, window_.frame().size.height - place.y}; }

CGPoint WindowInput::onScreen(const PointerInput& input) const {
  return input.onScreen ? *input.onScreen : window_.convertPointToScreen(inBaseSpace(input.place));
}

void WindowInput::pointerMayRest() {
  if (const backend::Backend* backend = backend::Backend::current()) resting_ = backend->mouseLocation();
}

bool WindowInput::isAtRest(const PointerInput& input) {
  using enum PointerInput::What;
  if (!resting_ || input.what == Left) return false;
  const CGPoint place = onScreen(input);
  const bool hasMoved = std::abs(place.x - resting_->x) + std::abs(place.y - resting_->y) >= 1;
  if (!hasMoved && (input.what == Moved || input.what == Entered)) return true;
  resting_.reset();
  return false;
}

void WindowInput::pointer(const PointerInput& input) {
  const Ref<NSWindow> held = hold(window_);
  if (!held || isAtRest(input)) return;
  NSEvent::Fields fields{.location = inBaseSpace(input.place), .modifiers = input.modifiers, .buttonNumber = input.button};
  const std::uint32_t bit = bitOf(input.button);
  const bool isOfButton = input.what == PointerInput::What::Pressed || input.what == PointerInput::What::Released;
  if (isOfButton && bit == 0) return;
  switch (input.what) {
    case PointerInput::What::Pressed: {
      const Press press = pressOf(input);
      // Only the desktop's own clock shows that it is the same one.
      if (input.time && (down_ & bit) && press == last_) return;
      endPressesExcept(input.heldButtons & ~bit);
      down_ |= bit;
      fields.type = buttonEventType(input.button, PressPhase::Down);
      fields.clickCount = count(press);
      const std::uint32_t outer = std::exchange(sending_, sending_ | bit);
      const AtEndOfScope end([&] { sending_ = outer; });
      send(std::move(fields));
      return;
    }
    case PointerInput::What::Released:
      endPressesExcept(input.heldButtons | bit);
      if (!(down_ & bit)) return;
      down_ &= ~bit;
      fields.type = buttonEventType(input.button, PressPhase::Up);
      fields.clickCount = clicks_;
      break;
    case PointerInput::What::Moved:
      endPressesExcept(input.heldButtons);
      // A button that went down elsewhere drags nothing here.
      fields.type = MouseMoved;
      if (const std::uint32_t dragging = input.heldButtons & down_) {
        fields.buttonNumber = lowestButton(dragging);
        fields.type = buttonEventType(fields.buttonNumber, PressPhase::Dragged);
      }
      break;
    case PointerInput::What::Entered:
    case PointerInput::What::Left:
      endPressesExcept(input.heldButtons);
      fields.type = input.what == PointerInput::What::Entered ? MouseEntered : MouseExited;
      break;
  }
  send(std::move(fields));
}

void WindowInput::endPresses() {
  if (const Ref<NSWindow> held = hold(window_)) endPressesExcept(0);
}

bool WindowInput::hasEndedWhileSent(const NSEvent& press) const {
  return &press == sent_ && (sending_ & ~down_ & bitOf(press.buttonNumber()));
}

void WindowInput::eventWasReplaced(const NSEvent& event, const NSEvent& by) {
  if (sent_ == &event) sent_ = &by;
}

void WindowInput::endPressesExcept(std::uint32_t heldButtons) {
  while (const std::uint32_t lost = down_ & ~heldButtons) {
    const int button = lowestButton(lost);
    down_ &= ~bitOf(button);
    send({.type = buttonEventType(button, PressPhase::Up), .location = takenPressLocation, .buttonNumber = button});
  }
}

WindowInput::Press WindowInput::pressOf(const PointerInput& input) const {
  const backend::Backend* backend = backend::Backend::current();
  return {.button = input.button, .place = onScreen(input), .time = input.time ? *input.time : backend ? backend->now() : 0};
}

int WindowInput::count(const Press& press) {
  const backend::Backend* backend = backend::Backend::current();
  const backend::ClickLimits limits = backend ? backend->clickLimits() : backend::ClickLimits{};
  const double way = std::max(std::abs(press.place.x - last_.place.x), std::abs(press.place.y - last_.place.y));
  const bool continues = clicks_ > 0 && press.button == last_.button && press.time >= last_.time &&
                         press.time - last_.time <= limits.seconds && way <= limits.points;
  last_ = press;
  return clicks_ = continues ? clicks_ + 1 : 1;
}

Taken WindowInput::wheel(const backend::WheelInput& input) {
  constexpr CGFloat lineHeight = 16;  // points
  const Ref<NSWindow> held = hold(window_);
  if (!held) return Taken::No;
  const bool isInPoints = input.points != CGSize{};
  return send({.type = ScrollWheel,
               .location = inBaseSpace(input.place),
               .modifiers = input.modifiers,
               .scrollingDelta =
                   isInPoints ? input.points : CGSize{input.lines.width * lineHeight, input.lines.height * lineHeight}});
}

void WindowInput::claim(std::int64_t code) {
  // A press may never come, where a filter of the program swallows it.
  constexpr std::size_t maxClaims = 64;
  if (claimed_.size() == maxClaims) claimed_.pop_front();
  claimed_.push_back(code);
}

bool WindowInput::takeClaim(std::int64_t code) {
  const auto found = std::find(claimed_.begin(), claimed_.end(), code);
  if (found == claimed_.end()) return false;
  // Presses come in order: those before it come no more.
  claimed_.erase(claimed_.begin(), found + 1);
  return true;
}

KeyAnswer WindowInput::key(const KeyInput& input) {
  const Ref<NSWindow> held = hold(window_);
  std::optional<NSEvent::Fields> fields = held ? keyFieldsOf(input) : std::nullopt;
  if (!fields) return {};
  const bool isKeyDown = fields->type == KeyDown;
  if (input.what == KeyInput::What::Announced) {
    if (isKeyDown) claim(input.code);
    return {.taken = isKeyDown ? Taken::Yes : Taken::No};
  }
  const bool wasClaimed = isKeyDown && takeClaim(input.code);
  const Taken taken = send(std::move(*fields));
  // Nobody loses anything by seeing a release or a change of modifiers as well.
  if (!isKeyDown) return {};
  return {.taken = taken, .isGivenBack = wasClaimed && taken == Taken::No};
}

NSTextInputClient* WindowInput::text() const {
  auto* text = dynamic_cast<NSTextInputClient*>(window_.firstResponder());
  return text && text->acceptsTextInput() ? text : nullptr;
}

namespace {

// The text without what is being composed, which is at the caret.
backend::EditedText surroundingsOf(const NSTextInputClient& client) {
  backend::EditedText result;
  result.text = client.text();
  const NSRange selected = client.selectedRange(), marked = client.markedRange();
  result.anchor = selected.location;
  result.caret = selected.location + selected.length;
  if (client.hasMarkedText()) {
    result.text.erase(marked.location, marked.length);
    result.anchor = result.caret = marked.location;
  }
  return result;
}

}  // namespace

// What was decided goes first, and what is being composed then follows it.
void WindowInput::composition(const CompositionInput& input) {
  const Ref<NSWindow> held = hold(window_);
  NSTextInputClient* client = held ? text() : nullptr;
  if (!client) return;
  const Ref<NSResponder> heldText = refTo(*window_.firstResponder());
  const bool replaces = input.replaced && input.replaced->length > 0;
  if (!input.committed.empty() || replaces) {
    NSRange range = noRange;
    if (replaces) {
      // What is composed is taken out first; then the place is counted from the caret.
      if (client->hasMarkedText()) client->setMarkedText("", {0, 0}, noRange);
      const std::ptrdiff_t start = static_cast<std::ptrdiff_t>(surroundingsOf(*client).caret) + input.replaced->start;
      range = {static_cast<std::size_t>(std::max<std::ptrdiff_t>(0, start)), input.replaced->length};
    }
    client->insertText(input.committed, range);
  }
  // The text may have lost the keys over what was committed.
  if (text() != client || (input.composed.empty() && !client->hasMarkedText())) return;
  const std::size_t end = utf16FromUtf8(input.composed).size();
  client->setMarkedText(input.composed, {std::min(input.caret.value_or(end), end), 0}, noRange);
}

std::optional<backend::EditedText> WindowInput::editedText() const {
  const NSTextInputClient* client = text();
  if (!client) return std::nullopt;
  backend::EditedText result = surroundingsOf(*client);
  const auto placeOf = [&](std::size_t index) {
    CGRect rect = window_.convertRectFromScreen(client->firstRectForCharacterRange({index, 0}));
    rect.origin.y = window_.frame().size.height - CGRectGetMaxY(rect);
    return rect;
  };
  const NSRange selected = client->selectedRange();
  result.anchorPlace = placeOf(selected.location);
  result.caretPlace = placeOf(selected.location + selected.length);
  return result;
}

void sendPressElsewhere(CGPoint place, int button, std::uint32_t modifiers) {
  sendThroughApplication(eventOf({.type = buttonEventType(button, PressPhase::Down),
                                  .location = place,
                                  .modifiers = modifiers,
                                  .clickCount = 1,
                                  .buttonNumber = button}));
}

}  // namespace tessaluna::platform
