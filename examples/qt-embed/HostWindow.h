// The window of some Qt program, all of it widgets but for what it takes from the library: glyphs on its buttons, and two
// views in its layout.
#pragma once

#include <QLabel>
#include <QWidget>

#include "tessaluna/platform/foundation/Reference.h"

class Listener;

class HostWindow : public QWidget {
 public:
  HostWindow();
  ~HostWindow() override;

  int track() const { return track_; }

 private:
  void goBy(int tracks);

  QLabel* title_;
  tessaluna::platform::Ref<Listener> listener_;  // a control does not keep its target
  int track_ = 1;
};
