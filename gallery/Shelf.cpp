#include "gallery/Shelf.h"

#include <QLayout>
#include <QScrollBar>
#include <algorithm>

namespace gallery {

namespace {

constexpr int minHeight = 180;

}  // namespace

Shelf::Shelf(QWidget* cards, const QString& name) {
  setWidget(cards);
  setWidgetResizable(true);
  setFrameShape(NoFrame);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setMinimumHeight(minHeight);
  setAccessibleName(name);
  verticalScrollBar()->setAccessibleName(name);
  viewport()->setAutoFillBackground(false);
  cards->setAutoFillBackground(false);
}

void Shelf::resizeEvent(QResizeEvent* event) {
  QScrollArea::resizeEvent(event);
  const int wanted = widget()->layout()->heightForWidth(viewport()->width()) + height() - viewport()->height();
  setMaximumHeight(std::max(minimumHeight(), wanted));
  // The Tab key stops where there is something to scroll.
  setFocusPolicy(height() < wanted ? Qt::StrongFocus : Qt::NoFocus);
}

}  // namespace gallery
