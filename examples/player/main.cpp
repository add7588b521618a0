// A small player. `player --picture FILE.png [--dark]` plays the second song by a double click, writes a picture of the window,
// and exits: with 0 if that song plays.
#include <QApplication>
#include <QMouseEvent>
#include <QPixmap>

#include "PlayerWindow.h"
#include "tessaluna/backends/qt/QtBackend.h"
#include "tessaluna/backends/qt/QtViewWidget.h"
#include "tessaluna/platform/windows/NSApplication.h"

namespace {

void send(QWidget& widget, QEvent::Type type, QPoint place) {
  const Qt::MouseButtons down = type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::LeftButton;
  QMouseEvent event(type, place, widget.mapToGlobal(place), Qt::LeftButton, down, Qt::NoModifier);
  QApplication::sendEvent(&widget, &event);
}

int writePicture(PlayerWindow& window, const QString& file) {
  QApplication::processEvents();
  // The widest view that is high enough for several rows.
  QWidget* tracks = nullptr;
  for (QWidget* widget : window.findChildren<QWidget*>())
    if (dynamic_cast<tessaluna::backend::qt::QtViewWidget*>(widget) && widget->height() > 200) tracks = widget;
  if (!tracks) return 1;
  const QPoint secondRow(200, 100);
  for (const QEvent::Type press : {QEvent::MouseButtonPress, QEvent::MouseButtonDblClick}) {
    send(*tracks, press, secondRow);
    send(*tracks, QEvent::MouseButtonRelease, secondRow);
  }
  QApplication::processEvents();
  return window.queue().current == 1 && window.grab().save(file) ? 0 : 1;
}

}  // namespace

int main(int argc, char** argv) {
  QApplication qt(argc, argv);
  tessaluna::backend::qt::QtBackend desktop;
  const auto application = tessaluna::platform::NSApplication::sharedApplication();

  PlayerWindow window;
  window.resize(900, 520);
  window.show();
  const QStringList arguments = QApplication::arguments();
  window.setDark(arguments.contains("--dark"));
  const auto picture = arguments.indexOf("--picture");
  if (picture > 0 && picture + 1 < arguments.size()) return writePicture(window, arguments[picture + 1]);
  return QApplication::exec();
}
