// What stands behind a glyph: a light, a dark or, as in picture editors, a checkered ground. Widgets put upon it lie in its
// middle.
#pragma once

#include <QFrame>

namespace gallery {

enum class GroundKind { Light, Dark, Checkered };

class Ground : public QFrame {
 public:
  explicit Ground(QWidget* content);

  GroundKind kind() const { return kind_; }
  void setKind(GroundKind kind);

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  GroundKind kind_ = GroundKind::Light;
};

}  // namespace gallery
