#include "tessaluna/backends/qt/inputEvents.h"

#include <QApplication>
#include <QCursor>
#include <QInputMethod>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPointer>
#include <QStringView>
#include <QWheelEvent>
#include <algorithm>
#include <cmath>
#include <utility>

#include "tessaluna/backends/qt/QtBackend.h"
#include "tessaluna/backends/qt/keyTranslation.h"
#include "tessaluna/backends/qt/screenSpace.h"
#include "tessaluna/platform/windows/WindowInput.h"

// Asks the object, and then the program's shortcuts; true if one of these took the key. Qt's test library calls it from its
// headers, so it is as stable as they are.
QT_BEGIN_NAMESPACE
Q_GUI_EXPORT bool qt_sendShortcutOverrideEvent(QObject*, ulong timestamp, int key, Qt::KeyboardModifiers,
                                               const QString& text, bool isAutoRepeat, ushort count);
QT_END_NAMESPACE

namespace tessaluna::backend::qt {

using namespace tessaluna::platform;
using What = PointerInput::What;

namespace {

// Widgets may outlive the backend.
CommandKey commandKey() { return Backend::current() ? QtBackend::current().commandKey() : CommandKey::Meta; }

CGPoint pointOf(QPointF point) { return {point.x(), point.y()}; }

// Qt rounds the place of a mouse event to whole points where it hands it to a widget, and keeps it exact in the top-level one.
// An event that a program has made up need not know where it is there.
QPointF exactPlace(const QMouseEvent& event, QPointF inContent) {
  constexpr double maxRounded = 0.5 + 1e-9;
  const QPointF difference = event.scenePosition() - inContent;
  const bool isSame = std::max(std::abs(difference.x()), std::abs(difference.y())) <= maxRounded;
  return isSame ? event.scenePosition() : inContent;
}

PointerInput pointerInputOf(const QMouseEvent& event, QPointF place) {
  PointerInput input{.place = pointOf(place),
                     .onScreen = pointOnScreen(event.globalPosition()),
                     .heldButtons = buttonBitsOf(event.buttons()),
                     .modifiers = modifierFlagsOf(event.modifiers(), commandKey()),
                     .time = static_cast<double>(event.timestamp()) / 1000};
  if (event.type() == QEvent::MouseMove) return input;
  input.what = event.type() == QEvent::MouseButtonRelease ? What::Released : What::Pressed;
  input.button = buttonNumberOf(event.button());
  return input;
}

WheelInput wheelInputOf(const QWheelEvent& event, QPointF place) {
  constexpr double notch = 120;  // of Qt's units
  const double lines = QApplication::wheelScrollLines() / notch;
  // On X11 these are units of the device's driver, for the wheel of a mouse as well.
  const QPoint points = QGuiApplication::platformName() == "xcb" ? QPoint() : event.pixelDelta();
  return {.place = pointOf(place),
          .points = {double(points.x()), double(points.y())},
          .lines = {event.angleDelta().x() * lines, event.angleDelta().y() * lines},
          .modifiers = modifierFlagsOf(event.modifiers(), commandKey())};
}

CompositionInput compositionOf(const QInputMethodEvent& event) {
  CompositionInput step{.committed = event.commitString().toStdString(), .composed = event.preeditString().toStdString()};
  if (event.replacementLength() > 0)
    step.replaced = {event.replacementStart(), static_cast<std::size_t>(event.replacementLength())};
  for (const QInputMethodEvent::Attribute& attribute : event.attributes())
    if (attribute.type == QInputMethodEvent::Cursor && attribute.start >= 0)
      step.caret = static_cast<std::size_t>(attribute.start);
  return step;
}

// After a reset some input methods commit what a text has given up once more, into whatever has the caret by then.
class RepeatedCommits {
 public:
  // The input method is about to be reset.
  void expect() {
    if (!composed_.isEmpty()) expected_ = std::exchange(composed_, {});
  }
  void forget() { expected_.clear(); }
  // Asked of each event in order: only the first one after a reset that is not empty can be such a commit.
  bool isRepeated(const QInputMethodEvent& event) {
    composed_ = event.preeditString();
    if (composed_.isEmpty() && event.commitString().isEmpty()) return false;
    const QString expected = std::exchange(expected_, {});
    return composed_.isEmpty() && !expected.isEmpty() && event.commitString() == expected;
  }

 private:
  QString composed_;
  QString expected_;
};
RepeatedCommits repeatedCommits;

void sendComposition(const QInputMethodEvent& event, WindowInput& input) {
  if (!repeatedCommits.isRepeated(event)) input.composition(compositionOf(event));
}

QVariant answer(Qt::InputMethodQuery query, const std::optional<EditedText>& text, QPointF origin) {
  if (query == Qt::ImEnabled) return text.has_value();
  if (!text) return {};
  const auto place = [&](CGRect rect) {
    return QRectF(rect.origin.x, rect.origin.y, rect.size.width, rect.size.height).translated(-origin);
  };
  switch (query) {
    case Qt::ImCursorRectangle: return place(text->caretPlace);
    case Qt::ImAnchorRectangle: return place(text->anchorPlace);
    case Qt::ImSurroundingText: return QStringView(text->text).toString();
    case Qt::ImCursorPosition: return static_cast<int>(text->caret);
    case Qt::ImAnchorPosition: return static_cast<int>(text->anchor);
    case Qt::ImCurrentSelection:
      return QStringView(std::u16string_view(text->text).substr(text->anchor, text->caret - text->anchor)).toString();
    case Qt::ImHints: return static_cast<int>(Qt::ImhNone);
    default: return {};
  }
}

void answerInputMethod(QInputMethodQueryEvent& query, const InputReceiver& receiver) {
  const std::optional<EditedText> text = receiver.input.editedText();
  for (unsigned bit = 1; bit != 0; bit <<= 1) {
    const auto one = static_cast<Qt::InputMethodQuery>(bit);
    if (query.queries().testFlag(one)) query.setValue(one, answer(one, text, receiver.origin));
  }
}

// Qt asks for shortcuts before it sends a press: that is an announcement. What the window gives back they are asked for now.
bool sendKey(const QKeyEvent& event, const InputReceiver& receiver) {
  if (event.type() == QEvent::KeyPress) repeatedCommits.forget();
  QObject nobody;
  const QPointer<QObject> next = receiver.parent ? receiver.parent : &nobody;
  const KeyAnswer answer = receiver.input.key(keyInputOf(event, commandKey()));
  if (!answer.isGivenBack || !next) return answer.taken == Taken::Yes;
  return qt_sendShortcutOverrideEvent(next, event.timestamp(), event.key(), event.modifiers(), event.text(),
                                      event.isAutoRepeat(), static_cast<ushort>(event.count()));
}

}  // namespace

PointerInput crossingOf(What what, QPointF place) {
  return {.what = what,
          .place = pointOf(place),
          .heldButtons = buttonBitsOf(QGuiApplication::mouseButtons()),
          .modifiers = modifierFlagsOf(QGuiApplication::keyboardModifiers(), commandKey())};
}

bool isInput(QEvent::Type type) {
  switch (type) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseMove:
    case QEvent::Enter:
    case QEvent::Leave:
    case QEvent::Wheel:
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::ShortcutOverride:
    case QEvent::InputMethod:
    case QEvent::InputMethodQuery: return true;
    default: return false;
  }
}

bool sendInput(QEvent& event, const InputReceiver& receiver) {
  bool isTaken = true;
  switch (event.type()) {
    // Qt reports a double click in place of the second press, or after it.
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseMove: {
      const auto& mouse = static_cast<const QMouseEvent&>(event);
      receiver.input.pointer(pointerInputOf(mouse, exactPlace(mouse, mouse.position() + receiver.origin)));
      break;
    }
    case QEvent::Enter: {
      const auto& enter = static_cast<const QEnterEvent&>(event);
      PointerInput crossing = crossingOf(What::Entered, enter.position() + receiver.origin);
      crossing.onScreen = pointOnScreen(enter.globalPosition());
      receiver.input.pointer(crossing);
      break;
    }
    case QEvent::Leave:
      receiver.input.pointer(crossingOf(What::Left, QCursor::pos() - receiver.onScreen + receiver.origin));
      break;
    case QEvent::Wheel: {
      const auto& wheel = static_cast<const QWheelEvent&>(event);
      isTaken = receiver.input.wheel(wheelInputOf(wheel, wheel.position() + receiver.origin)) == Taken::Yes;
      break;
    }
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::ShortcutOverride: isTaken = sendKey(static_cast<const QKeyEvent&>(event), receiver); break;
    case QEvent::InputMethod: sendComposition(static_cast<const QInputMethodEvent&>(event), receiver.input); break;
    case QEvent::InputMethodQuery: answerInputMethod(static_cast<QInputMethodQueryEvent&>(event), receiver); break;
    default: return false;
  }
  event.setAccepted(isTaken);
  return true;
}

void notifyInputMethodOfChange() { QGuiApplication::inputMethod()->update(Qt::ImQueryAll); }

void resetInputMethod() {
  repeatedCommits.expect();
  QGuiApplication::inputMethod()->reset();
}

}  // namespace tessaluna::backend::qt
