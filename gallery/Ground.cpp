#include "gallery/Ground.h"

#include <QHBoxLayout>
#include <QPainter>

namespace gallery {

namespace {

constexpr int radius = 7, margin = 14, checkSize = 8;

const QBrush& checkeredBrush() {
  static const QBrush brush = [] {
    QImage tile(2 * checkSize, 2 * checkSize, QImage::Format_RGB32);
    tile.fill(Qt::white);
    QPainter painter(&tile);
    painter.fillRect(0, 0, checkSize, checkSize, QColor(0xe4e4e9));
    painter.fillRect(checkSize, checkSize, checkSize, checkSize, QColor(0xe4e4e9));
    return QBrush(tile);
  }();
  return brush;
}

QBrush brushOf(GroundKind kind) {
  switch (kind) {
    case GroundKind::Light: return QColor(0xf7f7f9);
    case GroundKind::Dark: return QColor(0x25262b);
    case GroundKind::Checkered: break;
  }
  return checkeredBrush();
}

}  // namespace

Ground::Ground(QWidget* content) {
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(margin, margin, margin, margin);
  row->addWidget(content, 0, Qt::AlignCenter);
}

void Ground::setKind(GroundKind kind) {
  if (kind == kind_) return;
  kind_ = kind;
  update();
}

void Ground::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(Qt::NoPen);
  painter.setBrush(brushOf(kind_));
  painter.drawRoundedRect(rect(), radius, radius);
}

}  // namespace gallery
