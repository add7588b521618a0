// What both lists stand in, and when a frame of theirs is on the screen.
#pragma once

#include <QCoreApplication>
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

// A redraw takes a timer that asks for it, an update that it asks for, and the painting.
inline void letEventsHappen() {
  for (int i = 0; i < 3; ++i) QCoreApplication::processEvents();
}

}  // namespace bench
