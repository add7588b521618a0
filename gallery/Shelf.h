// Cards that scroll: as high as they need to be, or as there is room for.
#pragma once

#include <QScrollArea>

namespace gallery {

class Shelf : public QScrollArea {
 public:
  // Assistive clients show the name.
  Shelf(QWidget* cards, const QString& name);

 protected:
  void resizeEvent(QResizeEvent* event) override;
};

}  // namespace gallery
