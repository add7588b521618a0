// What both lists stand in, and when a frame of theirs is on the screen.
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

// A redraw takes a timer that asks for it, an update that it asks for, and the painting.
inline void letEventsHappen() {
  for (int i = 0; i < 3; ++i) QCoreApplication::processEvents();
}

}  // namespace bench
