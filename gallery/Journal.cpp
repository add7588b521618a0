#include "gallery/Journal.h"

#include <QPainter>
#include <utility>

namespace gallery {

Journal::Journal() {
  setObjectName("journal");
  setAccessibleName("Reported");
  setFocusPolicy(Qt::NoFocus);
  setSelectionMode(QAbstractItemView::NoSelection);
}

void Journal::add(const std::string& line) {
  constexpr int maxLines = 200;
  insertItem(0, QString("%1   %2").arg(++count_).arg(QString::fromStdString(line)));
  if (count() > maxLines) delete takeItem(maxLines);
  // For who scrolls with keys; an empty one is passed over.
  setFocusPolicy(Qt::TabFocus);
}

void Journal::paintEvent(QPaintEvent* event) {
  QListWidget::paintEvent(event);
  if (count() > 0) return;
  QPainter painter(viewport());
  painter.setPen(palette().color(QPalette::PlaceholderText));
  painter.drawText(viewport()->rect(), Qt::AlignCenter, "Nothing yet");
}

Report Journal::addingTo(Report next) {
  return [this, next = std::move(next)](const std::string& what) {
    add(what);
    next(what);
  };
}

}  // namespace gallery
