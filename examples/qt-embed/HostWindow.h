// The window of a Qt program. All of it is widgets, except for what it takes from the library: glyphs on its buttons, and two
// views in its layout.
#pragma once

#include <QLabel>
#include <QWidget>

class HostWindow : public QWidget {
 public:
  HostWindow();

  int track() const { return track_; }

 private:
  void goBy(int tracks);

  QLabel* title_;
  int track_ = 1;
};
