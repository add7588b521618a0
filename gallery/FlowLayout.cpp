#include "gallery/FlowLayout.h"

#include <algorithm>

namespace gallery {

FlowLayout::FlowLayout(int spacing) {
  setSpacing(spacing);
  setContentsMargins(0, 0, 0, 0);
}

FlowLayout::~FlowLayout() {
  for (QLayoutItem* item : items_) delete item;
}

void FlowLayout::addItem(QLayoutItem* item) { items_.push_back(item); }
int FlowLayout::count() const { return static_cast<int>(items_.size()); }
QLayoutItem* FlowLayout::itemAt(int index) const {
  return index >= 0 && index < count() ? items_[index] : nullptr;
}

QLayoutItem* FlowLayout::takeAt(int index) {
  QLayoutItem* item = itemAt(index);
  if (item) items_.erase(items_.begin() + index);
  return item;
}

int FlowLayout::heightForWidth(int width) const { return layOut({0, 0, width, 0}, Moving::No); }

QSize FlowLayout::minimumSize() const {
  QSize size;
  for (const QLayoutItem* item : items_) size = size.expandedTo(item->minimumSize());
  return size;
}

void FlowLayout::setGeometry(const QRect& rect) {
  QLayout::setGeometry(rect);
  layOut(rect, Moving::Yes);
}

int FlowLayout::layOut(const QRect& rect, Moving moving) const {
  int x = rect.x(), y = rect.y(), lineHeight = 0;
  for (QLayoutItem* item : items_) {
    const QSize size = item->sizeHint();
    if (x > rect.x() && x + size.width() > rect.x() + rect.width()) {
      x = rect.x();
      y += lineHeight + spacing();
      lineHeight = 0;
    }
    if (moving == Moving::Yes) item->setGeometry({{x, y}, size});
    x += size.width() + spacing();
    lineHeight = std::max(lineHeight, size.height());
  }
  return y + lineHeight - rect.y();
}

}  // namespace gallery
