// A top-level widget with views in its layout, and a mouse on it.
#pragma once

#include <QHBoxLayout>

#include "tessaluna/backends/qt/QtViewWidget.h"
#include "tests/backends/qt/QtTest.h"

namespace tessaluna::backend::qt {

class EmbeddedViews : public QtTest {
 protected:
  EmbeddedViews() { new QHBoxLayout(&top); }

  void show() {
    top.show();
    top.activateWindow();
    settle();
  }

  QtViewWidget* embed(const tessaluna::platform::Ref<tessaluna::platform::NSView>& view) {
    auto* widget = new QtViewWidget(view);
    top.layout()->addWidget(widget);
    return widget;
  }

  template <class Button>
  tessaluna::platform::Ref<Button> makeButton() {
    const auto button = tessaluna::platform::make<Button>(tessaluna::platform::CGRect{0, 0, 24, 24});
    button->setTarget(clicks);
    button->setAction("clicked:");
    return button;
  }

  // A point of a widget, as its top-level window counts.
  static QPoint inTop(const QWidget& widget, QPoint point) { return widget.mapTo(widget.window(), point); }
  void press(QPoint point) { QTest::mousePress(top.windowHandle(), Qt::LeftButton, {}, point); }
  void move(QPoint point) {
    QTest::mouseMove(top.windowHandle(), point);
    settle();
  }
  void release(QPoint point) { QTest::mouseRelease(top.windowHandle(), Qt::LeftButton, {}, point); }

  tessaluna::platform::Ref<Clicks> clicks = tessaluna::platform::make<Clicks>();
  QWidget top;
};

}  // namespace tessaluna::backend::qt
