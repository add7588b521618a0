// Views and glyphs of the library in a Qt program. `qt-embed --picture FILE.png` clicks once on the view that goes to the
// next track, writes a picture of the window, and exits: with 0 if the click had its effect.
#include <QApplication>
#include <QMouseEvent>
#include <QPixmap>

#include "HostWindow.h"
#include "tessaluna/backends/qt/QtBackend.h"
#include "tessaluna/backends/qt/QtViewWidget.h"
#include "tessaluna/platform/graphics/NeutralAxis.h"
#include "tessaluna/platform/windows/NSApplication.h"

namespace {

void click(QWidget& widget) {
  const QPoint place = widget.rect().center();
  for (const QEvent::Type type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
    const Qt::MouseButtons down = type == QEvent::MouseButtonPress ? Qt::LeftButton : Qt::NoButton;
    QMouseEvent event(type, place, widget.mapToGlobal(place), Qt::LeftButton, down, Qt::NoModifier);
    QApplication::sendEvent(&widget, &event);
  }
}

int writePicture(HostWindow& window, const QString& file) {
  QApplication::processEvents();
  QWidget* last = nullptr;
  for (QWidget* widget : window.findChildren<QWidget*>())
    if (dynamic_cast<tessaluna::backend::qt::QtViewWidget*>(widget)) last = widget;
  if (!last) return 1;
  click(*last);
  QApplication::processEvents();
  return window.track() == 2 && window.grab().save(file) ? 0 : 1;
}

}  // namespace

int main(int argc, char** argv) {
  QApplication qt(argc, argv);
  tessaluna::backend::qt::QtBackend desktop;
  const auto application = tessaluna::platform::NSApplication::sharedApplication();
  tessaluna::platform::setNeutralsFollowPalette(true);

  HostWindow window;
  window.show();
  const QStringList arguments = QApplication::arguments();
  if (arguments.size() == 3 && arguments[1] == "--picture") return writePicture(window, arguments[2]);
  return QApplication::exec();
}
