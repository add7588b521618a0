#include "gallery/FlowLayout.h"

#include <algorithm>

namespace gallery {

namespace {

constexpr int gap = 12;

}  // namespace

FlowLayout::FlowLayout(QWidget* parent) : QLayout(parent) { setContentsMargins(0, 0, 0, 0); }

FlowLayout::~FlowLayout() {
  for (QLayoutItem* item : items_) delete item;
}

void FlowLayout::addItem(QLayoutItem* item) { items_.push_back(item); }

QLayoutItem* FlowLayout::itemAt(int index) const {
  return index >= 0 && index < count() ? items_[static_cast<std::size_t>(index)] : nullptr;
}

QLayoutItem* FlowLayout::takeAt(int index) {
  QLayoutItem* item = itemAt(index);
  if (item) items_.erase(items_.begin() + index);
  return item;
}

template <class Visit>
int FlowLayout::arrange(const QRect& place, Visit visit) const {
  int y = place.y();
  for (std::size_t first = 0; first < items_.size();) {
    // A row: as many as fit, at least one.
    std::size_t end = first;
    int width = 0, height = 0;
    for (; end < items_.size(); ++end) {
      const QSize size = items_[end]->sizeHint();
      if (end > first && width + gap + size.width() > place.width()) break;
      width += size.width() + (end > first ? gap : 0);
      height = std::max(height, size.height());
    }
    int x = place.x();
    for (; first < end; ++first) {
      visit(*items_[first], QRect(x, y, items_[first]->sizeHint().width(), height));
      x += items_[first]->sizeHint().width() + gap;
    }
    y += height + (end < items_.size() ? gap : 0);
  }
  return y - place.y();
}

int FlowLayout::heightForWidth(int width) const {
  return arrange({0, 0, width, 0}, [](QLayoutItem&, const QRect&) {});
}

QSize FlowLayout::minimumSize() const {
  QSize size;
  for (QLayoutItem* item : items_) size = size.expandedTo(item->sizeHint());
  return size;
}

void FlowLayout::setGeometry(const QRect& place) {
  QLayout::setGeometry(place);
  arrange(place, [](QLayoutItem& item, const QRect& where) { item.setGeometry(where); });
}

}  // namespace gallery
