// The gallery's own look: a quiet window around the library's controls, in the colors of a palette. It follows the application's
// palette when that changes, and lasts until the object is destroyed.
#pragma once

#include <QApplication>

namespace gallery {

enum class Theme { Desktop, Light, Dark };

class Look : public QObject {
 public:
  Look(QApplication& application, Theme theme);
  ~Look() override { application_.setStyleSheet({}); }

  bool eventFilter(QObject* receiver, QEvent* event) override;

 private:
  void update();

  QApplication& application_;
};

}  // namespace gallery
