// The window that both lists are in, and how they wait for a frame to be on the screen.
#pragma once

#include <QCoreApplication>
#include <QEvent>
#include <QPalette>
#include <QWidget>

#include "bench/tracklist/ScrollingList.h"

namespace bench {

inline void dressWindow(QWidget& window) {
  QPalette palette = window.palette();
  palette.setColor(QPalette::Window, QColor(0xd8, 0xda, 0xe0));
  palette.setColor(QPalette::Base, QColor(0xd8, 0xda, 0xe0));
  window.setPalette(palette);
  window.setAutoFillBackground(true);
  window.resize(ScrollingList::width, ScrollingList::height);
}

// Counts how often a widget was painted: a list that skipped a frame, or painted one twice, has not been measured.
class PaintCount : public QObject {
 public:
  void watch(QWidget& widget) { widget.installEventFilter(this); }
  bool eventFilter(QObject*, QEvent* event) override {
    if (event->type() == QEvent::Paint) ++count;
    return false;
  }
  int count = 0;
};

// A redraw takes three steps: a timer requests it, the request causes an update, and the update paints.
inline void letEventsHappen() {
  for (int i = 0; i < 3; ++i) QCoreApplication::processEvents();
}

}  // namespace bench
