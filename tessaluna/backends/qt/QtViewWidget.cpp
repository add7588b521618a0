#include "tessaluna/backends/qt/QtViewWidget.h"

#include <QFocusEvent>
#include <QMouseEvent>
#include <QPainter>
#include <cmath>
#include <utility>

#include "tessaluna/backends/qt/EmbeddingHosts.h"
#include "tessaluna/backends/qt/QtBackend.h"
#include "tessaluna/backends/qt/inputEvents.h"
#include "tessaluna/platform/foundation/stopProgram.h"
#include "tessaluna/platform/views/NSView.h"
#include "tessaluna/platform/windows/NSWindow.h"
#include "tessaluna/platform/windows/WindowInput.h"

namespace tessaluna::backend::qt {

using namespace tessaluna::platform;

namespace {

int wholePoints(CGFloat length) { return static_cast<int>(std::ceil(std::fmin(length, QWIDGETSIZE_MAX))); }

Ref<NSView> required(Ref<NSView> view) {
  if (!view) stopProgram("QtViewWidget: made without a view");
  return view;
}

// A line to write in takes the room beside it, as Qt's own does.
QSizePolicy policyOf(const NSView& view) {
  const CGSize intrinsic = view.intrinsicContentSize();
  const bool hasWidth = intrinsic.width >= 0, hasHeight = intrinsic.height >= 0;
  return {!hasWidth && hasHeight ? QSizePolicy::Expanding : QSizePolicy::Preferred,
          hasHeight ? QSizePolicy::Fixed : QSizePolicy::Preferred};
}

}  // namespace

QtViewWidget::QtViewWidget(Ref<NSView> view, QWidget* parent)
    : QWidget(parent), view_(required(std::move(view))), ownPolicy_(policyOf(*view_)) {
  setSizePolicy(ownPolicy_);
  setFocusPolicy(Qt::TabFocus);  // a press moves the first responder, and Qt's focus follows that
  setMouseTracking(true);
  setContextMenuPolicy(Qt::PreventContextMenu);  // the right button is an event like the others
}

QtViewWidget::~QtViewWidget() { leaveHost(); }

void QtViewWidget::enterHost() {
  EmbeddingHost& host = QtBackend::current().hosts().hostOf(*window());
  if (host_ == &host) return;
  leaveHost();
  host_ = &host;
  host.add(*this);
}

void QtViewWidget::leaveHost() {
  if (host_) host_->remove(*this);
  host_ = nullptr;
}

// Null as well while the widget is below another top-level widget and has not been shown there.
EmbeddingHost* QtViewWidget::hostHere() const { return host_ && &host_->topLevel() == window() ? host_ : nullptr; }

QSize QtViewWidget::sizeHint() const {
  const CGSize fitting = view_->fittingSize();
  return {wholePoints(fitting.width), wholePoints(fitting.height)};
}

QSize QtViewWidget::minimumSizeHint() const {
  const CGSize intrinsic = view_->intrinsicContentSize();
  return {wholePoints(std::fmax(intrinsic.width, 0)), wholePoints(std::fmax(intrinsic.height, 0))};
}

void QtViewWidget::sizeMayHaveChanged() {
  const QSizePolicy before = std::exchange(ownPolicy_, policyOf(*view_));
  if (sizePolicy() == before) setSizePolicy(ownPolicy_);
  updateGeometry();
}

// Qt sends a disabled widget neither the end of a press nor the pointer's leaving.
void QtViewWidget::enabledDidChange() {
  if (!host_) return;
  const QPointer<QtViewWidget> held = this;
  const bool isOn = isEnabled();
  if (!isOn && std::exchange(isPressed_, false)) host_->input().endPresses();
  if (held && hostHere() && underMouse())
    host_->input().pointer(crossingOf(isOn ? PointerInput::What::Entered : PointerInput::What::Left,
                                      mapTo(&host_->topLevel(), mapFromGlobal(QPointF(QCursor::pos())))));
  if (held && host_) host_->enabledChanged(*this);
}

// What an event calls may delete the widget: nothing of it is touched afterwards.
bool QtViewWidget::event(QEvent* event) {
  switch (event->type()) {
    case QEvent::Show: {
      // Its top-level widget may be another one than at the last showing.
      const QPointer<QtViewWidget> held = this;
      enterHost();
      return !held || QWidget::event(event);
    }
    default: break;
  }
  if (!hostHere() || !isEnabled() || !isInput(event->type())) return QWidget::event(event);
  if (const auto* mouse = dynamic_cast<const QMouseEvent*>(event)) isPressed_ = mouse->buttons() != Qt::NoButton;
  const InputReceiver receiver{.input = host_->input(),
                               .origin = QPointF(mapTo(&host_->topLevel(), QPoint(0, 0))),
                               .onScreen = QPointF(mapToGlobal(QPoint(0, 0))),
                               .parent = isWindow() ? nullptr : parentWidget()};
  const bool isPress = event->type() == QEvent::MouseButtonPress;
  const QPointer<QtViewWidget> held = this;
  const bool isDone = sendInput(*event, receiver);
  // In a window at rest Qt has given the focus to a widget around this one, even if the view has the keyboard already.
  if (isPress && held && host_) host_->followFirstResponder();
  return isDone || QWidget::event(event);
}

// Of a widget with the focus, what Qt's scroll areas bring into sight.
QVariant QtViewWidget::inputMethodQuery(Qt::InputMethodQuery query) const {
  const QRect place = host_ && query == Qt::ImCursorRectangle ? host_->placeOfKeyboard(*this) : QRect();
  return place.isEmpty() ? QWidget::inputMethodQuery(query) : QVariant(place);
}

void QtViewWidget::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  if (EmbeddingHost* host = hostHere()) host->paintWidget(*this, painter);
}

void QtViewWidget::focusInEvent(QFocusEvent* event) {
  if (host_) host_->focusEntered(*this, event->reason());
}

void QtViewWidget::focusOutEvent(QFocusEvent* event) {
  if (host_) host_->focusLeft(*this, event->reason());
}

void QtViewWidget::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  switch (event->type()) {
    case QEvent::PaletteChange:
    case QEvent::FontChange:
    case QEvent::StyleChange:
      view_->setNeedsDisplay(true);
      sizeMayHaveChanged();
      break;
    case QEvent::EnabledChange: enabledDidChange(); break;
    default: break;
  }
}

}  // namespace tessaluna::backend::qt
