#include "tessaluna/backends/qt/InputRelay.h"

#include <QApplication>
#include <QCursor>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QWheelEvent>
#include <utility>

#include "tessaluna/backends/qt/ClickCounter.h"
#include "tessaluna/backends/qt/keyTranslation.h"
#include "tessaluna/backends/qt/screenSpace.h"
#include "tessaluna/platform/events/mouseButtons.h"
#include "tessaluna/platform/windows/NSApplication.h"
#include "tessaluna/platform/windows/NSWindow.h"

namespace tessaluna::backend::qt {

using namespace tessaluna::platform;
using enum NSEventType;

namespace {

// Of several that are down, the one that a drag counts for.
Qt::MouseButton leadingButton(Qt::MouseButtons buttons) {
  for (unsigned bit = 1; bit <= Qt::MaxMouseButton && bit; bit <<= 1)
    if (buttons.testFlag(static_cast<Qt::MouseButton>(bit))) return static_cast<Qt::MouseButton>(bit);
  return Qt::NoButton;
}

CGSize scrollingDeltaOf(const QWheelEvent& event) {
  // A notch of the wheel is 120 of Qt's units.
  constexpr double notch = 120, lineHeight = 16;  // points
  if (!event.pixelDelta().isNull()) return {double(event.pixelDelta().x()), double(event.pixelDelta().y())};
  const double pointsOfUnit = QApplication::wheelScrollLines() * lineHeight / notch;
  return {event.angleDelta().x() * pointsOfUnit, event.angleDelta().y() * pointsOfUnit};
}

}  // namespace

void KeysSentEarly::sent(const QKeyEvent& event, Taken taken) {
  // A press may never come, where a shortcut took the key or a widget the focus.
  constexpr std::size_t most = 64;
  std::erase_if(keys_, [&](const Key& key) { return key.key == event.key() && key.taken == Taken::No; });
  if (keys_.size() == most) keys_.erase(keys_.begin());
  keys_.push_back({event.key(), event.timestamp(), taken});
}

std::vector<KeysSentEarly::Key>::const_iterator KeysSentEarly::find(const QKeyEvent& event) const {
  return std::find_if(keys_.begin(), keys_.end(), [&](const Key& key) {
    return key.key == event.key() && (event.timestamp() == key.time || event.timestamp() == 0);
  });
}

bool KeysSentEarly::wasTaken(const QKeyEvent& event) const {
  const auto found = find(event);
  return found != keys_.end() && found->taken == Taken::Yes;
}

std::optional<Taken> KeysSentEarly::resultOf(const QKeyEvent& event) {
  const auto found = find(event);
  if (found == keys_.end()) return std::nullopt;
  const Taken taken = found->taken;
  // Presses come in order: those before it come no more.
  keys_.erase(keys_.begin(), found + 1);
  return taken;
}

// Shared by the calls that are running, so that the last of them ends it.
struct InputRelay::State {
  State(WindowClient& client, KeysSentEarly& keysSentEarly) : client(&client), keysSentEarly(keysSentEarly) {}

  WindowClient* client;  // absent once it is going
  KeysSentEarly& keysSentEarly;
  ClickCounter clicks;
  Qt::MouseButtons down;
  Taken taken = Taken::Yes;  // of the event that is being sent

  Taken send(NSEvent::Fields fields, QPointF place) {
    fields.window = client ? client->eventWindow() : nullptr;
    const Backend* backend = Backend::current();
    if (!fields.window || !backend || !NSApp) return Taken::No;
    fields.timestamp = backend->now();
    fields.location = {place.x(), fields.window->frame().size.height - place.y()};
    const Ref<NSApplication> application = NSApp;
    const Taken outer = std::exchange(taken, Taken::Yes);
    application->sendEvent(make<NSEvent>(std::move(fields)));
    return std::exchange(taken, outer);
  }

  // Qt keeps a release back from a widget that was hidden under the press, or behind a dialog that the press opened. For
  // the views it then happens outside of everything.
  void endLostPresses(Qt::MouseButtons stillDown) {
    constexpr QPointF outside(-1e6, -1e6);
    while (const Qt::MouseButton button = leadingButton(down & ~stillDown)) {
      down &= ~Qt::MouseButtons(button);
      const int number = buttonNumberOf(button);
      send({.type = buttonEventType(number, PressPhase::Up), .buttonNumber = number}, outside);
    }
  }
};

InputRelay::InputRelay(WindowClient& client, KeysSentEarly& keysSentEarly)
    : state_(std::make_shared<State>(client, keysSentEarly)) {}

InputRelay::~InputRelay() { clientIsGoing(); }

void InputRelay::clientIsGoing() { state_->client = nullptr; }

void InputRelay::mouse(const QMouseEvent& event, QPointF place) {
  const std::shared_ptr<State> state = state_;
  NSEvent::Fields fields{.modifiers = modifierFlagsOf(event.modifiers())};
  switch (event.type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
      // Qt tells a double click in place of the second press, or after it.
      if (event.type() == QEvent::MouseButtonDblClick && state->down.testFlag(event.button())) return;
      state->endLostPresses(event.buttons() & ~Qt::MouseButtons(event.button()));
      state->down |= event.button();
      fields.buttonNumber = buttonNumberOf(event.button());
      fields.type = buttonEventType(fields.buttonNumber, PressPhase::Down);
      fields.clickCount =
          state->clicks.press({.button = event.button(), .place = event.globalPosition(), .time = event.timestamp()});
      break;
    case QEvent::MouseButtonRelease:
      if (!state->down.testFlag(event.button())) return;
      state->down &= ~Qt::MouseButtons(event.button());
      fields.buttonNumber = buttonNumberOf(event.button());
      fields.type = buttonEventType(fields.buttonNumber, PressPhase::Up);
      fields.clickCount = state->clicks.count();
      break;
    default:
      state->endLostPresses(event.buttons());
      // A button that went down elsewhere drags nothing here.
      if (const Qt::MouseButton button = leadingButton(event.buttons() & state->down)) {
        fields.buttonNumber = buttonNumberOf(button);
        fields.type = buttonEventType(fields.buttonNumber, PressPhase::Dragged);
      } else {
        fields.type = MouseMoved;
      }
  }
  state->send(std::move(fields), place);
}

void InputRelay::pointerCrossed(Crossing crossing, QPointF place) {
  const std::shared_ptr<State> state = state_;
  state->endLostPresses(QGuiApplication::mouseButtons());
  state->send({.type = crossing == Crossing::Entered ? MouseEntered : MouseExited,
               .modifiers = modifierFlagsOf(QGuiApplication::keyboardModifiers())},
              place);
}

Taken InputRelay::wheel(const QWheelEvent& event, QPointF place) {
  const std::shared_ptr<State> state = state_;
  return state->send(
      {.type = ScrollWheel, .modifiers = modifierFlagsOf(event.modifiers()), .scrollingDelta = scrollingDeltaOf(event)},
      place);
}

Taken InputRelay::key(const QKeyEvent& event) {
  const std::shared_ptr<State> state = state_;
  if (event.type() == QEvent::KeyPress)
    if (const std::optional<Taken> early = state->keysSentEarly.resultOf(event)) return *early;
  std::optional<NSEvent::Fields> fields = keyFieldsOf(event);
  if (!fields) return Taken::No;
  const bool isKeyDown = fields->type == KeyDown;
  const Taken taken = state->send(std::move(*fields), {});
  // Nobody loses anything by seeing a release or a change of modifiers as well.
  const Taken result = isKeyDown ? taken : Taken::No;
  if (event.type() == QEvent::ShortcutOverride) state->keysSentEarly.sent(event, result);
  return result;
}

void InputRelay::eventWasNotTaken() { state_->taken = Taken::No; }

}  // namespace tessaluna::backend::qt
