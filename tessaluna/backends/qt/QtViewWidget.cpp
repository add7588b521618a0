#include "tessaluna/backends/qt/QtViewWidget.h"

#include <QFocusEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <cmath>

#include "tessaluna/backends/qt/EmbeddingHosts.h"
#include "tessaluna/backends/qt/QtBackend.h"
#include "tessaluna/backends/qt/textInput.h"
#include "tessaluna/platform/views/NSView.h"
#include "tessaluna/platform/windows/NSWindow.h"

namespace tessaluna::backend::qt {

using namespace tessaluna::platform;

namespace {

int wholePoints(CGFloat length) { return static_cast<int>(std::ceil(std::fmin(length, QWIDGETSIZE_MAX))); }

}  // namespace

QtViewWidget::QtViewWidget(Ref<NSView> view, QWidget* parent)
    : QWidget(parent), view_(std::move(view)), firstSize_(view_->frame().size) {
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

QSize QtViewWidget::sizeHint() const {
  const CGSize intrinsic = view_->intrinsicContentSize();
  return {wholePoints(intrinsic.width >= 0 ? intrinsic.width : firstSize_.width),
          wholePoints(intrinsic.height >= 0 ? intrinsic.height : firstSize_.height)};
}

QSize QtViewWidget::minimumSizeHint() const {
  const CGSize intrinsic = view_->intrinsicContentSize();
  return {wholePoints(std::fmax(intrinsic.width, 0)), wholePoints(std::fmax(intrinsic.height, 0))};
}

// What an event calls may delete the widget: nothing of it is touched afterwards.
bool QtViewWidget::event(QEvent* event) {
  switch (event->type()) {
    case QEvent::Show:
      // Its top-level widget may be another one than at the last showing.
      enterHost();
      return QWidget::event(event);
    default: break;
  }
  if (!host_) return QWidget::event(event);
  const auto inTopLevel = [this](QPointF place) { return mapTo(&host_->topLevel(), place); };
  switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseMove: {
      const auto& mouse = static_cast<const QMouseEvent&>(*event);
      event->accept();
      host_->relay().mouse(mouse, inTopLevel(mouse.position()));
      return true;
    }
    case QEvent::Enter:
      host_->relay().pointerCrossed(Crossing::Entered, inTopLevel(static_cast<QEnterEvent*>(event)->position()));
      return true;
    case QEvent::Leave:
      host_->relay().pointerCrossed(Crossing::Left, inTopLevel(mapFromGlobal(QPointF(QCursor::pos()))));
      return true;
    case QEvent::Wheel: {
      const auto& wheel = static_cast<const QWheelEvent&>(*event);
      event->setAccepted(host_->relay().wheel(wheel, inTopLevel(wheel.position())) == Taken::Yes);
      return true;
    }
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::ShortcutOverride:
      event->setAccepted(host_->relay().key(static_cast<const QKeyEvent&>(*event)) == Taken::Yes);
      return true;
    case QEvent::InputMethodQuery:
      answerInputMethod(static_cast<QInputMethodQueryEvent&>(*event), host_->window(),
                        mapTo(&host_->topLevel(), QPoint(0, 0)));
      return true;
    case QEvent::InputMethod:
      event->accept();
      sendToText(static_cast<const QInputMethodEvent&>(*event), *refTo(host_->window()));
      return true;
    default: return QWidget::event(event);
  }
}

void QtViewWidget::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  if (host_) host_->paintWidget(*this, painter);
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
      updateGeometry();
      break;
    default: break;
  }
}

}  // namespace tessaluna::backend::qt
