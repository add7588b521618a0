#include "tessaluna/backends/qt/InputRelay.h"

#include <QApplication>
#include <QCursor>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPointer>
#include <QWheelEvent>
#include <algorithm>
#include <deque>
#include <optional>
#include <utility>

#include "tessaluna/backends/qt/ClickCounter.h"
#include "tessaluna/backends/qt/QtBackend.h"
#include "tessaluna/backends/qt/keyTranslation.h"
#include "tessaluna/backends/qt/screenSpace.h"
#include "tessaluna/platform/events/mouseButtons.h"
#include "tessaluna/platform/windows/NSApplication.h"
#include "tessaluna/platform/windows/NSWindow.h"

// Asks the object, and then the program's shortcuts; true if one of these took the key. Qt's test library calls it from its
// headers, so it is as stable as they are.
QT_BEGIN_NAMESPACE
Q_GUI_EXPORT bool qt_sendShortcutOverrideEvent(QObject*, ulong timestamp, int key, Qt::KeyboardModifiers,
                                               const QString& text, bool isAutoRepeat, ushort count);
QT_END_NAMESPACE

namespace tessaluna::backend::qt {

using namespace tessaluna::platform;
using enum NSEventType;

namespace {

// Widgets may outlive the backend.
CommandKey commandKey() { return Backend::current() ? QtBackend::current().commandKey() : CommandKey::Meta; }

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

// Shared by the calls that are running, so that the last of them ends it.
struct InputRelay::State {
  explicit State(WindowClient& client) : client(&client) {}

  WindowClient* client;  // null once it is going
  ClickCounter clicks;
  Qt::MouseButtons down;
  Taken taken = Taken::Yes;  // of the event that is being sent
  std::deque<int> claimed;   // keys whose presses are to come, in their order

  void claim(int key) {
    // A press may never come, where a filter of the program swallows it.
    constexpr std::size_t most = 64;
    if (claimed.size() == most) claimed.pop_front();
    claimed.push_back(key);
  }

  bool takeClaim(int key) {
    const auto found = std::find(claimed.begin(), claimed.end(), key);
    if (found == claimed.end()) return false;
    // Presses come in order: those before it come no more.
    claimed.erase(claimed.begin(), found + 1);
    return true;
  }

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

InputRelay::InputRelay(WindowClient& client) : state_(std::make_shared<State>(client)) {}

InputRelay::~InputRelay() { clientIsGoing(); }

void InputRelay::clientIsGoing() { state_->client = nullptr; }

void InputRelay::mouse(const QMouseEvent& event, QPointF place) {
  const std::shared_ptr<State> state = state_;
  NSEvent::Fields fields{.modifiers = modifierFlagsOf(event.modifiers(), commandKey())};
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

void InputRelay::endPresses() {
  const std::shared_ptr<State> state = state_;
  state->endLostPresses(Qt::NoButton);
}

void InputRelay::pointerCrossed(Crossing crossing, QPointF place) {
  const std::shared_ptr<State> state = state_;
  state->endLostPresses(QGuiApplication::mouseButtons());
  state->send({.type = crossing == Crossing::Entered ? MouseEntered : MouseExited,
               .modifiers = modifierFlagsOf(QGuiApplication::keyboardModifiers(), commandKey())},
              place);
}

Taken InputRelay::wheel(const QWheelEvent& event, QPointF place) {
  const std::shared_ptr<State> state = state_;
  return state->send({.type = ScrollWheel,
                      .modifiers = modifierFlagsOf(event.modifiers(), commandKey()),
                      .scrollingDelta = scrollingDeltaOf(event)},
                     place);
}

// Qt asks for shortcuts before it sends a press. Only the window's views can tell whether they take the key, and to ask them
// is to let them act: the window may be gone afterwards, which Qt survives at a press and not at its question. So every press
// is claimed, and the shortcuts are asked when no view has taken it.
Taken InputRelay::key(const QKeyEvent& event, QObject* parent) {
  const std::shared_ptr<State> state = state_;
  std::optional<NSEvent::Fields> fields = keyFieldsOf(event, commandKey());
  if (!fields) return Taken::No;
  const bool isKeyDown = fields->type == KeyDown;
  if (event.type() == QEvent::ShortcutOverride) {
    if (isKeyDown) state->claim(event.key());
    return isKeyDown ? Taken::Yes : Taken::No;
  }
  QObject nobody;
  const QPointer<QObject> next = parent ? parent : &nobody;
  const bool wasClaimed = isKeyDown && state->takeClaim(event.key());
  const Taken taken = state->send(std::move(*fields), {});
  // Nobody loses anything by seeing a release or a change of modifiers as well.
  if (!isKeyDown) return Taken::No;
  if (taken == Taken::Yes || !wasClaimed || !next || !state->client) return taken;
  return qt_sendShortcutOverrideEvent(next, event.timestamp(), event.key(), event.modifiers(), event.text(),
                                      event.isAutoRepeat(), static_cast<ushort>(event.count()))
             ? Taken::Yes
             : Taken::No;
}

void InputRelay::eventWasNotTaken() { state_->taken = Taken::No; }

}  // namespace tessaluna::backend::qt
